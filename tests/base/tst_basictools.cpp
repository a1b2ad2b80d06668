#include "LogCapture.h"

#include "base/BasicTools.h"

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

// Helpers with several results write them into one text, so that every case is a row of one table.
namespace {

const QString G(QChar(0x2006)); // digit group separator

QString grouped(const QStringList& groups)
{
    return groups.join(G);
}

QString range(double min, double max)
{
    return QString::number(min, 'f', 0) + ".." + QString::number(max, 'f', 0);
}

// Both overloads; "?" marks a return value other than the new max.
QString limits(int bits, bool isSigned)
{
    qint64 lo = 7, hi = 7;
    double dlo = 7, dhi = 7;
    const qint64 returned = BasicTools::valLimit(lo, hi, quint8(bits), isSigned);
    const double dreturned = BasicTools::valLimit(dlo, dhi, quint8(bits), isSigned);
    return range(lo, hi) + " " + range(dlo, dhi) + (returned == hi && dreturned == dhi ? "" : "?");
}

QString filtered(qint64 acc, int input, int previous, int shift, int fraction)
{
    const int result = BasicTools::getFilteredInt(&acc, input, previous, quint8(shift), quint8(fraction));
    return QString::number(result) + " acc " + QString::number(acc);
}

QString axis(double min, double max)
{
    quint32 ticks = 99;
    BasicTools::adjustLinearAxis(min, max, ticks);
    return QString::number(min) + ".." + QString::number(max) + " / " + QString::number(ticks);
}

QString intAxis(int min, int max, bool log)
{
    if (log) {
        BasicTools::adjustLog10Axis(min, max);
        return range(min, max);
    }
    const int returned = BasicTools::adjustLinearAxis(min, max);
    return range(min, max) + (returned == max ? "" : "?");
}

// The rewritten identifier, " +" when characters outside the word class remain; charset -1: the C header form.
QString fit(QString s, int charset, bool fix)
{
    const bool outside
        = charset < 0 ? BasicTools::fitCharsetCHeader(&s, fix) : BasicTools::fitCharset(&s, quint32(charset), fix);
    return outside ? s + " +" : s;
}

QString firmware(QString bl, const QString& fw, quint32 version)
{
    LogCapture log;
    const QString text = BasicTools::matchFirmwareVersion(bl, fw, version);
    return text + " | " + bl;
}

// mdToHtml() of a file holding `text` (no file for a null array); "(open)" marks a file left open.
QString markdown(const QByteArray& text)
{
    QTemporaryDir dir;
    QFile file(dir.filePath("help.md"));
    if (!text.isNull() && file.open(QIODevice::WriteOnly)) {
        file.write(text);
        file.close();
    }
    const QString html = BasicTools::mdToHtml(&file);
    return file.isOpen() ? html + "(open)" : html;
}

QPixmap filled(int w, int h, const QColor& color)
{
    QPixmap pixmap(w, h);
    pixmap.fill(color);
    return pixmap;
}

QRgb pixelAt(const QPixmap& pixmap, int x, int y)
{
    return pixmap.toImage().convertToFormat(QImage::Format_ARGB32).pixel(x, y);
}

} // namespace

class TestBasicTools : public QObject
{
    Q_OBJECT
private slots:
    void texts_data();
    void texts();
    void firmwareVersionLog();
    void copyAndRemoveInWorkingDirectory();
    void exportPng();
    void pixmaps();
};

void TestBasicTools::texts_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    const double inf = std::numeric_limits<double>::infinity();
    const QString max64 = grouped({"18", "446", "744", "073", "709", "551", "615"});
    const QColor red(Qt::red);
    auto row = [](const char* name, const QString& actual, const QString& expected) {
        QTest::newRow(name) << actual << expected;
    };
    row("hex never truncates", BasicTools::iToHex(quint32(0xABC), 2, ""), "ABC");
    row("hex 8 bit padded", BasicTools::iToHex(quint8(5), 2, "0x"), "0x05");
    row("hex 16 bit", BasicTools::iToHex(quint16(0xbeef), 0, "#"), "#BEEF");
    row("hex 64 bit", BasicTools::iToHex(quint64(0x123456789abcdef0ULL), 20, ""), "0000123456789ABCDEF0");
    row("hex negative", BasicTools::iToHex(qint64(-1), 2, ""), "FFFFFFFFFFFFFFFF");
    row("int zero fill", BasicTools::iToInt(3, 4, "", '0'), "0003");
    row("int negative", BasicTools::iToInt(-5, 4, "n", ' '), "n  -5");
    row("uint blanks", BasicTools::iToUint(42, 5, "n="), "n=   42");
    row("bin 8", BasicTools::iToBin(quint8(0x5A)), "0101:1010");
    row("bin 16", BasicTools::iToBin(quint16(0x1234)), "0001:0010|0011:0100");
    row("bin 32", BasicTools::iToBin(quint32(0x12345678)), "0001:0010|0011:0100 | 0101:0110|0111:1000");
    row("bin 64 repeats bits 16..31", BasicTools::iToBin(quint64(0x0123456789ABCDEFULL)),
        "0100:0101|0110:0111 | 1000:1001|1010:1011 | 1000:1001|1010:1011 | 1100:1101|1110:1111");
    const QList<QPair<quint32, const char*>> ordinals
        = {{0, "1st"}, {1, "2nd"}, {2, "3rd"}, {3, "4th"}, {10, "11th"}, {11, "12th"}, {12, "13th"}, {20, "21st"},
            {21, "22nd"}, {22, "23rd"}, {111, "112th"}, {112, "113th"}, {4294967295u, "4294967296th"}};
    for (const auto& o : ordinals)
        QTest::addRow("ordinal %u", o.first) << BasicTools::itoOrdinal(o.first) << QString(o.second);
    row("group 123", BasicTools::int64InsertDot(123), "123");
    row("group 1234567", BasicTools::int64InsertDot(1234567), grouped({"1", "234", "567"}));
    row("group minus counts", BasicTools::int64InsertDot(-123456), grouped({"-", "123", "456"}));
    row("group minus 3 digits", BasicTools::int64InsertDot(-123), grouped({"-", "123"}));
    row("group unsigned max", BasicTools::uint64InsertDot(~quint64(0)), max64);
    row("real rounds to grouped", BasicTools::intInsertDot(1234.4, 1), grouped({"1", "234"}));
    row("real negative half", BasicTools::intInsertDot(-12.5, 0), "-13");
    row("real small", BasicTools::intInsertDot(9.25, 1), QString::number(9.25, 'f', 1));
    row("real precision 3", BasicTools::intInsertDot(12.3456, 3), "12.346");
    row("real g format", BasicTools::intInsertDot(12345.678, -3), "1.23e+04");
    row("real inf", BasicTools::intInsertDot(-inf, 2), "inf");
    row("real nan", BasicTools::intInsertDot(std::nan(""), 2), "nan");
    row("range narrow", BasicTools::intInsertDot(1234.5678, 0, 10, 2), "1234.57");
    row("range wide", BasicTools::intInsertDot(-1234.5, -100, 100, 1), grouped({"-1", "235"}));
    row("range inf", BasicTools::intInsertDot(inf, 0, 10, 2), "inf");
    row("range wide, below one", BasicTools::intInsertDot(0.4, -100, 100, 1), "0");
    row("value unsigned", BasicTools::valueStr(0xFF, 0x80, false), "128");
    row("value unsigned minus one", BasicTools::valueStr(0xFF, -1, false), max64);
    row("value signed positive", BasicTools::valueStr(0xFF, 0x7F, true), "127");
    // The sign bit is decoded by addition: 0x80 gives 0 + 0x7F + 1.
    row("value sign bit", BasicTools::valueStr(0xFF, 0x80, true), "128");
    row("value all set", BasicTools::valueStr(0xFF, 0xFF, true), "255");
    row("value shifted mask", BasicTools::valueStr(0xF0, 0x80, true), "121");
    row("value signed 16", BasicTools::valueStr(0xFFFF, 0x8001, true), grouped({"32", "769"}));
    row("value signed 64", BasicTools::valueStr(~quint64(0), -1234, true), grouped({"-1", "234"}));
    row("max", QString::number(BasicTools::max({3, 9, 4})), "9");
    row("max of nothing", QString::number(BasicTools::max({})), "0");
    row("indents", BasicTools::generateIndents(3), "   ");
    row("no indents", BasicTools::generateIndents(-2), "");
    row("pad 0x odd", BasicTools::hexPadding("0xABC"), "0x0ABC");
    row("pad 0x even", BasicTools::hexPadding("0xAB"), "0xAB");
    row("pad even", BasicTools::hexPadding("ABCD"), "ABCD");
    row("pad odd", BasicTools::hexPadding("ABC"), "0ABC");
    row("pad upper X is no prefix", BasicTools::hexPadding("0XABC"), "00XABC");

    row("limit zero bits", limits(0, true), "0..-1 0..18446744073709551616");
    row("limit signed 1", limits(1, true), "-1..0 -1..0");
    row("limit signed 8", limits(8, true), "-128..127 -128..127");
    row("limit signed 32", limits(32, true), "-2147483648..2147483647 -2147483648..2147483647");
    row("limit signed 40", limits(40, true), "0..-1 0..-1");
    row("limit signed 63", limits(63, true), "0..-1 0..-1");
    row("limit signed 64", limits(64, true), "-1..0 -1..0");
    row("limit unsigned 8", limits(8, false), "0..255 0..255");
    row("limit unsigned 31", limits(31, false), "0..2147483647 0..2147483647");
    row("limit unsigned 32", limits(32, false), "0..4294967295 0..4294967295");
    row("limit unsigned 40", limits(40, false), "0..-1 0..18446744073709551616");
    row("filter first step", filtered(0, 100, 0, 2, 4), "25 acc 400");
    row("filter second step", filtered(400, 100, 25, 2, 4), "43 acc 700");
    row("filter negative", filtered(0, -100, 0, 2, 4), "-25 acc -400");
    // shift > fraction: the shift count wraps modulo 32 and bits leave the 32-bit word.
    row("filter wrapped shift", filtered(0, 1, 0, 4, 2), "268435456 acc 1073741824");
    row("filter sign extended", filtered(0, 3, 0, 4, 2), "-268435456 acc -1073741824");
    row("filter lost bits", filtered(5, 4, 0, 4, 2), "1 acc 5");
    row("filter fraction 64 keeps the sign only", filtered(0, 100, 0, 60, 64), "0 acc 1600");
    row("filter without accumulator", QString::number(BasicTools::getFilteredInt(nullptr, 7, 0, 1, 1)), "7");
    row("axis step 20", axis(0, 100), "0..100 / 5");
    row("axis step 2", axis(0, 10), "0..10 / 5");
    row("axis outward", axis(-3, 7.5), "-4..8 / 6");
    row("axis step 0.5", axis(0, 3), "0..3 / 6");
    row("axis step 200", axis(10, 990), "0..1000 / 5");
    row("axis step 5", axis(0, 30), "0..30 / 6");
    row("axis step 1", axis(0, 7), "0..7 / 7");
    row("axis empty", axis(5, 5), "5..5 / 0");
    row("int axis", intAxis(-3, 7, false), "-4..8");
    row("log axis", intAxis(3, 450, true), "1..1000");
    row("log axis exact", intAxis(10, 100, true), "10..100");
    row("log axis from zero", intAxis(0, 5, true), "0..10");

    row("fit index", fit("Reg [3]", 0, true), "Reg__3");
    row("fit kept when not fixing", fit("a-b", 0, false), "a-b +");
    row("fit removed when fixing", fit("a-b", 1, true), "ab +");
    row("fit range", fit("CH[0..3]", 0, true), "CH_ALL");
    row("fit two indices", fit("A[1] B[2]", 0, true), "A1_B2 +");
    row("fit two indices unfixed", fit("A[1] B[2]", 0, false), "A[1]_B[2] +");
    row("fit other charset", fit("x y", 2, true), "x y");
    row("fit C header", fit("A[1] B[2]", -1, false), "A[1]_B[2] +");
    row("fit nothing", QVariant(BasicTools::fitCharset(nullptr, 0, true)).toString(), "false");
    row("firmware", firmware(QString(), "1240V3.12", 0x030C), "V 3.12 | 1240");
    row("firmware version 0", firmware(QString(), "1240V3.12", 0), "V 0.00 | 1240");
    row("firmware too short", firmware(QString(), "1240", 0x030C), " | 1240");
    row("firmware other product", firmware("1241v", "1240V3.12", 0x030C), " | 1241");
    row("firmware bad character", firmware(QString(), "1240V3.x2", 0x030C), " | 1240");
    row("firmware not latin-1", firmware(QString(), QString("1240V3.1") + QChar(0x0663), 0x030C), " | 1240");
    row("firmware bootloader", firmware(QString(), "1240b1.05", 0x0105), "Bootloader V1.05 | 1240");
    row("firmware c inside", firmware(QString(), "1240C1.05", 0x0105), "C 1.05 | 1240");
    row("firmware leading c", firmware(QString(), "c1240V1.05", 0x0105), "V 1.05 | C1240");
    row("firmware signed minor", firmware(QString(), "1240V1.00", 0x0180), "V 1.0-128 | 1240");
    row("firmware signed major", firmware(QString(), "1240V1.00", 0xFF0A), "V -1.10 | 1240");

    row("simple body", BasicTools::htmlSimpleBody(nullptr), "<html>%0</span></html");
    row("full html", BasicTools::textToFullHtml("hi %1", QColor(0x12, 0x34, 0x56)),
        "<html><span style=\" color:#123456;\">hi %1</span></html>");
    row("match equal", BasicTools::stringHtmlMatch("abc", "abc", red, true), "abc");
    row("match colour", BasicTools::stringHtmlMatch("abc", "axc", red, false),
        R"(a<span style="color:#ff0000">x</span>c)");
    row("match colour bold", BasicTools::stringHtmlMatch("abcd", "axyd", red, true),
        R"(a<span style="color:#ff0000"><b>xy</span></b>d)");
    row("match bold only", BasicTools::stringHtmlMatch("abc", "axc", QColor(), true), "a<b>x</b>c");
    row("match open at end", BasicTools::stringHtmlMatch("abc", "abx", Qt::blue, false),
        R"(ab<span style="color:#0000ff">x</span>)");
    row("match longer b", BasicTools::stringHtmlMatch("ab", "abcd", red, true),
        R"(ab<span style="color:#ff7f7f"><b>cd</b></span>)");
    row("match not escaped", BasicTools::stringHtmlMatch("", "<i>", QColor(), false), "<i>");
    row("match shorter b", BasicTools::stringHtmlMatch("abcd", "xb", QColor(), true), "<b>x</b>b");
    row("md list then text", markdown("* a\n* b\ntext\n"), "<ul><li>  a</li><li>  b</li>text</ui>");
    row("md list at end", markdown("* a\n* b"), "<ul><li>  a</li><li>  b</li></ui>");
    row("md headings", markdown("# T\n## S\n### U\nplain\n"), "<h1> T</h1><h2> S</h2><h3> U</h3>plain");
    row("md list broken by heading", markdown("* a\n#H\n* b\n"),
        "<ul><li>  a</li><h1>H</h1></ui><ul><li>  b</li></ui>");
    row("md star without blank", markdown("*a\n"), "*a");
    row("md empty file", markdown(""), "");
    row("md missing file", markdown(QByteArray()), "");
    row("md no file", BasicTools::mdToHtml(nullptr), "");
}

void TestBasicTools::texts()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void TestBasicTools::firmwareVersionLog()
{
    LogCapture log;
    QString bl = "c1240";
    BasicTools::matchFirmwareVersion(bl, "C1240V1.05", 5);
    const QString head = "static QString BasicTools::matchFirmwareVersion(QString&, const QString&, quint32) firmware "
                         "version (%1): size 10 BlVersion: \"%2\" FwVersion: \"C1240V1.05\" Version: \"0x05\"";
    QCOMPARE(log.texts(), QStringList({head.arg("1", "c1240"), head.arg("2", "C1240")}));
}

void TestBasicTools::copyAndRemoveInWorkingDirectory()
{
    QTemporaryDir work, source;
    const QString oldCurrent = QDir::currentPath();
    QVERIFY(QDir::setCurrent(work.path()));
    const QString src = source.filePath("data.bin");
    QFile in(src);
    QVERIFY(in.open(QIODevice::WriteOnly));
    in.write("payload");
    in.close();
    const QString dst = QDir::currentPath() + "/data.bin";

    LogCapture log;
    QCOMPARE(BasicTools::copyToTemp(src, QString()), dst);
    QCOMPARE(QFileInfo(dst).size(), qint64(7));
    QCOMPARE(QFile::permissions(dst) & QFileDevice::Permissions(0x7077), QFileDevice::WriteOwner);
    // An existing copy is kept.
    QVERIFY(in.open(QIODevice::WriteOnly));
    in.write("longer payload");
    in.close();
    QCOMPARE(BasicTools::copyToTemp(src, "data.bin"), dst);
    QCOMPARE(QFileInfo(dst).size(), qint64(7));
    const QString line = QString("\"%1\" true \"%2\" ").arg(src, dst);
    QCOMPARE(log.texts(), QStringList({line + "false", line + "true"}));

    QVERIFY(BasicTools::removeFromTemp("data.bin"));
    QVERIFY(!QFile::exists(dst));
    QVERIFY(!BasicTools::removeFromTemp("data.bin"));
    QDir::setCurrent(oldCurrent);
}

void TestBasicTools::exportPng()
{
    QTemporaryDir dir;
    QWidget widget;
    widget.resize(40, 30);
    const QString result = BasicTools::ExportPNG(&widget, dir.filePath("shot_"));
    const QString head = "Print content to Clipboard and\nto png in temporary path:\n" + dir.path() + "\n";
    QVERIFY2(result.startsWith(head), qPrintable(result));
    const QString fileName = result.mid(head.size());
    QVERIFY(QRegularExpression(
        "^" + QRegularExpression::escape(dir.filePath("shot_")) + R"(\d{4}-\d\d-\d\dT\d\d_\d\d_\d\d\.png$)")
                .match(fileName)
                .hasMatch());
    QCOMPARE(QImage(fileName).size(), QSize(40, 30));
    QCOMPARE(QApplication::clipboard()->pixmap().size(), QSize(40, 30));

    const QString failed = BasicTools::ExportPNG(&widget, dir.filePath("missing/shot_"));
    QVERIFY2(failed.startsWith("Cannot open " + dir.filePath("missing/shot_")), qPrintable(failed));
    QVERIFY2(failed.endsWith(".png - " + dir.filePath("missing")), qPrintable(failed));
    QCOMPARE(BasicTools::ExportPNG(nullptr, "x"), QString("error"));
}

void TestBasicTools::pixmaps()
{
    // The badge goes to the bottom-right corner.
    const QPixmap badge = BasicTools::addPixmapToPixmap(filled(10, 10, Qt::white), filled(3, 3, Qt::red));
    QCOMPARE(pixelAt(badge, 7, 7), qRgb(255, 0, 0));
    QCOMPARE(pixelAt(badge, 6, 6), qRgb(255, 255, 255));

    // The picture is drawn over the background from the top-left corner, scaled to the size asked for.
    const QString head = "<img src=\"data:image/png;base64,";
    const QString html = BasicTools::setPixmapToHtml(filled(4, 2, Qt::transparent), QColor(Qt::red), QSize(8, 4));
    QVERIFY(html.startsWith(head) && html.endsWith("\" width=\"8\" height=\"4\">"));
    const QPixmap embedded = BasicTools::pixmapFromImageData(html.mid(head.size()).section('"', 0, 0).toLatin1());
    QCOMPARE(pixelAt(embedded, 7, 3), qRgb(255, 0, 0));
    const QString opaque = BasicTools::setPixmapToHtml(filled(4, 2, Qt::blue), QColor(Qt::red));
    QCOMPARE(pixelAt(BasicTools::pixmapFromImageData(opaque.mid(head.size()).section('"', 0, 0).toLatin1()), 0, 0),
        qRgb(0, 0, 255));
    QVERIFY(opaque.endsWith("\" width=\"4\" height=\"2\">"));
    QVERIFY(BasicTools::setPixmapToHtml(filled(4, 2, Qt::blue), QSize(2, 1)).endsWith("\" width=\"2\" height=\"1\">"));
    QCOMPARE(BasicTools::setPixmapToHtml(QPixmap(), QSize(2, 1)), QString());
    QVERIFY(BasicTools::pixmapFromImageData("not an image").isNull());
    QVERIFY(BasicTools::pixmapToImageData(QImage()).isEmpty());

    if (QFontDatabase().families().isEmpty())
        QSKIP("no fonts to draw text with");
    // Text drawn onto a pixmap, upright and turned, leaves dark pixels on the white ground.
    const QImage white = filled(60, 30, Qt::white).toImage();
    QVERIFY(BasicTools::addTextToPixmap(filled(60, 30, Qt::white), "X", Qt::black).toImage() != white);
    const QPixmap turned = BasicTools::addTextToPixmapRotate(filled(30, 80, Qt::white), "Text", Qt::black, QFont());
    QVERIFY(turned.toImage() != filled(30, 80, Qt::white).toImage());
    // Room for the text beside or below the picture; what the text leaves free stays transparent.
    const QPixmap beside
        = BasicTools::addTextToPixmapAdjust(filled(10, 200, Qt::red), "x", Qt::black, Qt::Horizontal, QFont());
    QCOMPARE(beside.height(), 200);
    QCOMPARE(pixelAt(beside, 9, 0), qRgb(255, 0, 0));
    QCOMPARE(pixelAt(beside, beside.width() - 1, 0), qRgba(0, 0, 0, 0));
    QVERIFY(beside.toImage()
        != BasicTools::addTextToPixmapAdjust(filled(10, 200, Qt::red), "x", Qt::transparent, Qt::Horizontal, QFont())
               .toImage());
    const QPixmap below
        = BasicTools::addTextToPixmapAdjust(filled(200, 10, Qt::red), "x", Qt::black, Qt::Vertical, QFont());
    QCOMPARE(below.width(), 200);
    QCOMPARE(pixelAt(below, 0, 9), qRgb(255, 0, 0));
    QCOMPARE(pixelAt(below, 0, below.height() - 1), qRgba(0, 0, 0, 0));
}

QTEST_MAIN(TestBasicTools)
#include "tst_basictools.moc"
