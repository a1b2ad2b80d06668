#include "LogCapture.h"

#include "base/BasicTools.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

namespace {

const QString G(QChar(0x2006)); // digit group separator

QString grouped(const QStringList& groups)
{
    return groups.join(G);
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
    void formats_data();
    void formats();
    void valueStr_data();
    void valueStr();
    void valLimit_data();
    void valLimit();
    void getFilteredInt_data();
    void getFilteredInt();
    void adjustLinearAxis_data();
    void adjustLinearAxis();
    void adjustIntegerAxes();
    void fitCharset_data();
    void fitCharset();
    void matchFirmwareVersion_data();
    void matchFirmwareVersion();
    void stringHtmlMatch_data();
    void stringHtmlMatch();
    void mdToHtml_data();
    void mdToHtml();
    void mdToHtmlMissingFile();
    void copyAndRemoveInWorkingDirectory();
    void exportPng();
    void pixmapComposition();
    void pixmapToHtmlAndImageData();
};

void TestBasicTools::formats_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    const double inf = std::numeric_limits<double>::infinity();
    auto row = [](const char* name, const QString& actual, const QString& expected) {
        QTest::newRow(name) << actual << expected;
    };
    row("hex never truncates", BasicTools::iToHex(quint32(0xABC), 2, ""), "ABC");
    row("hex 8 bit padded", BasicTools::iToHex(quint8(5), 2, "0x"), "0x05");
    row("hex 8 bit 4 digits", BasicTools::iToHex(quint8(0x1A), 4, "0x"), "0x001A");
    row("hex 16 bit", BasicTools::iToHex(quint16(0xbeef), 0, "#"), "#BEEF");
    row("hex 64 bit", BasicTools::iToHex(quint64(0x123456789abcdef0ULL), 20, ""), "0000123456789ABCDEF0");
    row("hex negative", BasicTools::iToHex(qint64(-1), 2, ""), "FFFFFFFFFFFFFFFF");
    row("int zero fill", BasicTools::iToInt(3, 4, "", '0'), "0003");
    row("int negative", BasicTools::iToInt(-5, 4, "n", ' '), "n  -5");
    row("int wider than width", BasicTools::iToInt(12345, 2, "", '0'), "12345");
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
    row("group unsigned max", BasicTools::uint64InsertDot(~quint64(0)),
        grouped({"18", "446", "744", "073", "709", "551", "615"}));
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
    row("max", QString::number(BasicTools::max({3, 9, 4})), "9");
    row("max of nothing", QString::number(BasicTools::max({})), "0");
    row("indents", BasicTools::generateIndents(3), "   ");
    row("no indents", BasicTools::generateIndents(-2), "");
    row("pad 0x odd", BasicTools::hexPadding("0xABC"), "0x0ABC");
    row("pad 0x even", BasicTools::hexPadding("0xAB"), "0xAB");
    row("pad even", BasicTools::hexPadding("ABCD"), "ABCD");
    row("pad odd", BasicTools::hexPadding("ABC"), "0ABC");
    row("pad upper X is no prefix", BasicTools::hexPadding("0XABC"), "00XABC");
    row("simple body", BasicTools::htmlSimpleBody(nullptr), "<html>%0</span></html");
    row("full html", BasicTools::textToFullHtml("hi %1", QColor(0x12, 0x34, 0x56)),
        "<html><span style=\" color:#123456;\">hi %1</span></html>");
}

void TestBasicTools::formats()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void TestBasicTools::valueStr_data()
{
    QTest::addColumn<quint64>("mask");
    QTest::addColumn<qint64>("value");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<QString>("expected");
    QTest::newRow("unsigned") << quint64(0xFF) << qint64(0x80) << false << "128";
    QTest::newRow("unsigned minus one") << quint64(0xFF) << qint64(-1) << false
                                        << grouped({"18", "446", "744", "073", "709", "551", "615"});
    QTest::newRow("signed positive") << quint64(0xFF) << qint64(0x7F) << true << "127";
    // The sign bit is decoded by addition: 0x80 gives 0 + 0x7F + 1.
    QTest::newRow("signed sign bit") << quint64(0xFF) << qint64(0x80) << true << "128";
    QTest::newRow("signed all set") << quint64(0xFF) << qint64(0xFF) << true << "255";
    QTest::newRow("signed shifted mask") << quint64(0xF0) << qint64(0x80) << true << "121";
    QTest::newRow("signed 16") << quint64(0xFFFF) << qint64(0x8001) << true << grouped({"32", "769"});
    QTest::newRow("signed 64") << ~quint64(0) << qint64(-1234) << true << grouped({"-1", "234"});
}

void TestBasicTools::valueStr()
{
    QFETCH(quint64, mask);
    QFETCH(qint64, value);
    QFETCH(bool, isSigned);
    QFETCH(QString, expected);
    QCOMPARE(BasicTools::valueStr(mask, value, isSigned), expected);
}

void TestBasicTools::valLimit_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<qint64>("min");
    QTest::addColumn<qint64>("max");
    QTest::addColumn<double>("dmin");
    QTest::addColumn<double>("dmax");
    const double two64 = 18446744073709551616.0;
    QTest::newRow("zero bits") << 0 << true << qint64(0) << qint64(-1) << 0.0 << two64;
    QTest::newRow("signed 1") << 1 << true << qint64(-1) << qint64(0) << -1.0 << 0.0;
    QTest::newRow("signed 8") << 8 << true << qint64(-128) << qint64(127) << -128.0 << 127.0;
    QTest::newRow("signed 32") << 32 << true << qint64(-2147483648LL) << qint64(2147483647) << -2147483648.0
                               << 2147483647.0;
    QTest::newRow("signed 40") << 40 << true << qint64(0) << qint64(-1) << 0.0 << -1.0;
    QTest::newRow("signed 63") << 63 << true << qint64(0) << qint64(-1) << 0.0 << -1.0;
    QTest::newRow("signed 64") << 64 << true << qint64(-1) << qint64(0) << -1.0 << 0.0;
    QTest::newRow("unsigned 8") << 8 << false << qint64(0) << qint64(255) << 0.0 << 255.0;
    QTest::newRow("unsigned 31") << 31 << false << qint64(0) << qint64(2147483647) << 0.0 << 2147483647.0;
    QTest::newRow("unsigned 32") << 32 << false << qint64(0) << qint64(4294967295LL) << 0.0 << 4294967295.0;
    QTest::newRow("unsigned 40") << 40 << false << qint64(0) << qint64(-1) << 0.0 << two64;
}

void TestBasicTools::valLimit()
{
    QFETCH(int, bits);
    QFETCH(bool, isSigned);
    QFETCH(qint64, min);
    QFETCH(qint64, max);
    QFETCH(double, dmin);
    QFETCH(double, dmax);
    qint64 lo = 7, hi = 7;
    QCOMPARE(BasicTools::valLimit(lo, hi, quint8(bits), isSigned), max);
    QCOMPARE(lo, min);
    QCOMPARE(hi, max);
    double dlo = 7, dhi = 7;
    QCOMPARE(BasicTools::valLimit(dlo, dhi, quint8(bits), isSigned), dmax);
    QCOMPARE(dlo, dmin);
    QCOMPARE(dhi, dmax);
}

void TestBasicTools::getFilteredInt_data()
{
    QTest::addColumn<qint64>("acc");
    QTest::addColumn<int>("input");
    QTest::addColumn<int>("previous");
    QTest::addColumn<int>("shift");
    QTest::addColumn<int>("fraction");
    QTest::addColumn<qint64>("newAcc");
    QTest::addColumn<int>("result");
    QTest::newRow("first step") << qint64(0) << 100 << 0 << 2 << 4 << qint64(400) << 25;
    QTest::newRow("second step") << qint64(400) << 100 << 25 << 2 << 4 << qint64(700) << 43;
    QTest::newRow("negative") << qint64(0) << -100 << 0 << 2 << 4 << qint64(-400) << -25;
    // shift > fraction: the shift count wraps modulo 32 and bits leave the 32-bit word.
    QTest::newRow("wrapped shift") << qint64(0) << 1 << 0 << 4 << 2 << qint64(1) * (1 << 30) << (1 << 28);
    QTest::newRow("sign extended") << qint64(0) << 3 << 0 << 4 << 2 << qint64(-(1 << 30)) << -(1 << 28);
    QTest::newRow("lost bits") << qint64(5) << 4 << 0 << 4 << 2 << qint64(5) << 1;
}

void TestBasicTools::getFilteredInt()
{
    QFETCH(qint64, acc);
    QFETCH(int, input);
    QFETCH(int, previous);
    QFETCH(int, shift);
    QFETCH(int, fraction);
    QFETCH(qint64, newAcc);
    QFETCH(int, result);
    QCOMPARE(BasicTools::getFilteredInt(&acc, input, previous, quint8(shift), quint8(fraction)), result);
    QCOMPARE(acc, newAcc);
    QCOMPARE(BasicTools::getFilteredInt(nullptr, input, previous, 1, 1), input);
}

void TestBasicTools::adjustLinearAxis_data()
{
    QTest::addColumn<double>("min");
    QTest::addColumn<double>("max");
    QTest::addColumn<double>("newMin");
    QTest::addColumn<double>("newMax");
    QTest::addColumn<quint32>("ticks");
    QTest::newRow("0..100 step 20") << 0.0 << 100.0 << 0.0 << 100.0 << 5u;
    QTest::newRow("0..10 step 2") << 0.0 << 10.0 << 0.0 << 10.0 << 5u;
    QTest::newRow("outward step 2") << -3.0 << 7.5 << -4.0 << 8.0 << 6u;
    QTest::newRow("step 0.5") << 0.0 << 3.0 << 0.0 << 3.0 << 6u;
    QTest::newRow("step 200") << 10.0 << 990.0 << 0.0 << 1000.0 << 5u;
    QTest::newRow("step 5") << 0.0 << 30.0 << 0.0 << 30.0 << 6u;
    QTest::newRow("step 1") << 0.0 << 7.0 << 0.0 << 7.0 << 7u;
    QTest::newRow("empty range") << 5.0 << 5.0 << 5.0 << 5.0 << 0u;
}

void TestBasicTools::adjustLinearAxis()
{
    QFETCH(double, min);
    QFETCH(double, max);
    QFETCH(double, newMin);
    QFETCH(double, newMax);
    QFETCH(quint32, ticks);
    quint32 t = 99;
    BasicTools::adjustLinearAxis(min, max, t);
    QCOMPARE(min, newMin);
    QCOMPARE(max, newMax);
    QCOMPARE(t, ticks);
}

void TestBasicTools::adjustIntegerAxes()
{
    int min = -3, max = 7;
    QCOMPARE(BasicTools::adjustLinearAxis(min, max), 8);
    QCOMPARE(min, -4);
    QCOMPARE(max, 8);
    min = 3;
    max = 450;
    BasicTools::adjustLog10Axis(min, max);
    QCOMPARE(min, 1);
    QCOMPARE(max, 1000);
    min = 10;
    max = 100;
    BasicTools::adjustLog10Axis(min, max);
    QCOMPARE(min, 10);
    QCOMPARE(max, 100);
    min = 0; // no logarithm: left as it is
    max = 5;
    BasicTools::adjustLog10Axis(min, max);
    QCOMPARE(min, 0);
    QCOMPARE(max, 10);
}

void TestBasicTools::fitCharset_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<int>("charset");
    QTest::addColumn<bool>("fix");
    QTest::addColumn<QString>("output");
    QTest::addColumn<bool>("result");
    QTest::newRow("index") << "Reg [3]" << 0 << true << "Reg__3" << false;
    QTest::newRow("kept when not fixing") << "a-b" << 0 << false << "a-b" << true;
    QTest::newRow("removed when fixing") << "a-b" << 1 << true << "ab" << true;
    QTest::newRow("range") << "CH[0..3]" << 0 << true << "CH_ALL" << false;
    QTest::newRow("two indices") << "A[1] B[2]" << 0 << true << "A1_B2" << true;
    QTest::newRow("two indices unfixed") << "A[1] B[2]" << 0 << false << "A[1]_B[2]" << true;
    QTest::newRow("other charset") << "x y" << 2 << true << "x y" << false;
}

void TestBasicTools::fitCharset()
{
    QFETCH(QString, input);
    QFETCH(int, charset);
    QFETCH(bool, fix);
    QFETCH(QString, output);
    QFETCH(bool, result);
    QString s = input;
    QCOMPARE(BasicTools::fitCharset(&s, quint32(charset), fix), result);
    QCOMPARE(s, output);
    if (charset == 0) {
        s = input;
        QCOMPARE(BasicTools::fitCharsetCHeader(&s, fix), result);
        QCOMPARE(s, output);
    }
    QCOMPARE(BasicTools::fitCharset(nullptr, 0, fix), false);
}

void TestBasicTools::matchFirmwareVersion_data()
{
    QTest::addColumn<QString>("bl");
    QTest::addColumn<QString>("fw");
    QTest::addColumn<quint32>("version");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("newBl");
    const auto row
        = [](const char* name, const QString& bl, const QString& fw, quint32 version, const char* expected,
              const char* newBl) { QTest::newRow(name) << bl << fw << version << QString(expected) << QString(newBl); };
    row("plain", QString(), "1240V3.12", 0x030C, "V 3.12", "1240");
    row("version 0", QString(), "1240V3.12", 0, "V 0.00", "1240");
    row("too short", QString(), "1240", 0x030C, "", "1240");
    row("other product", "1241v", "1240V3.12", 0x030C, "", "1241");
    row("bad character", QString(), "1240V3.x2", 0x030C, "", "1240");
    row("not latin-1", QString(), QString("1240V3.1") + QChar(0x0663), 0x030C, "", "1240");
    row("bootloader", QString(), "1240b1.05", 0x0105, "Bootloader V1.05", "1240");
    row("c inside", QString(), "1240C1.05", 0x0105, "C 1.05", "1240");
    row("leading c", QString(), "c1240V1.05", 0x0105, "V 1.05", "C1240");
    row("signed minor", QString(), "1240V1.00", 0x0180, "V 1.0-128", "1240");
    row("signed major", QString(), "1240V1.00", 0xFF0A, "V -1.10", "1240");
}

void TestBasicTools::matchFirmwareVersion()
{
    QFETCH(QString, bl);
    QFETCH(QString, fw);
    QFETCH(quint32, version);
    QFETCH(QString, expected);
    QFETCH(QString, newBl);
    LogCapture log;
    QCOMPARE(BasicTools::matchFirmwareVersion(bl, fw, version), expected);
    QCOMPARE(bl, newBl);
}

void TestBasicTools::stringHtmlMatch_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<QColor>("color");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<QString>("expected");
    const auto row
        = [](const char* name, const char* a, const char* b, const QColor& color, bool bold, const char* expected) {
              QTest::newRow(name) << QString(a) << QString(b) << color << bold << QString(expected);
          };
    const QColor red(Qt::red);
    row("equal", "abc", "abc", red, true, "abc");
    row("colour", "abc", "axc", red, false, R"(a<span style="color:#ff0000">x</span>c)");
    row("colour bold", "abcd", "axyd", red, true, R"(a<span style="color:#ff0000"><b>xy</span></b>d)");
    row("bold only", "abc", "axc", QColor(), true, "a<b>x</b>c");
    row("open at end", "abc", "abx", QColor(Qt::blue), false, R"(ab<span style="color:#0000ff">x</span>)");
    row("longer b", "ab", "abcd", red, true, R"(ab<span style="color:#ff7f7f"><b>cd</b></span>)");
    row("not escaped", "", "<i>", QColor(), false, "<i>");
    row("shorter b", "abcd", "xb", QColor(), true, "<b>x</b>b");
}

void TestBasicTools::stringHtmlMatch()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(QColor, color);
    QFETCH(bool, bold);
    QFETCH(QString, expected);
    QCOMPARE(BasicTools::stringHtmlMatch(a, b, color, bold), expected);
}

void TestBasicTools::mdToHtml_data()
{
    QTest::addColumn<QByteArray>("markdown");
    QTest::addColumn<QString>("expected");
    QTest::newRow("list then text") << QByteArray("* a\n* b\ntext\n") << "<ul><li>  a</li><li>  b</li>text</ui>";
    QTest::newRow("list at end") << QByteArray("* a\n* b") << "<ul><li>  a</li><li>  b</li></ui>";
    QTest::newRow("headings") << QByteArray("# T\n## S\n### U\nplain\n") << "<h1> T</h1><h2> S</h2><h3> U</h3>plain";
    QTest::newRow("list broken by heading")
        << QByteArray("* a\n#H\n* b\n") << "<ul><li>  a</li><h1>H</h1></ui><ul><li>  b</li></ui>";
    QTest::newRow("star without blank") << QByteArray("*a\n") << "*a";
}

void TestBasicTools::mdToHtml()
{
    QFETCH(QByteArray, markdown);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    QFile file(dir.filePath("help.md"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(markdown);
    file.close();
    QCOMPARE(BasicTools::mdToHtml(&file), expected);
    QVERIFY(!file.isOpen());
}

void TestBasicTools::mdToHtmlMissingFile()
{
    QTemporaryDir dir;
    QFile empty(dir.filePath("empty.md"));
    QVERIFY(empty.open(QIODevice::WriteOnly));
    empty.close();
    QCOMPARE(BasicTools::mdToHtml(&empty), QString());
    QFile missing(dir.filePath("missing.md"));
    QCOMPARE(BasicTools::mdToHtml(&missing), QString());
    QCOMPARE(BasicTools::mdToHtml(nullptr), QString());
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
    QCOMPARE(log.texts(), QStringList({QString("\"%1\" true \"%2\" false").arg(src, dst)}));
    QFile copy(dst);
    QVERIFY(copy.exists());
    QCOMPARE(copy.size(), qint64(7));
    const QFileDevice::Permissions ownerGroupOther(0x7077);
    QCOMPARE(copy.permissions() & ownerGroupOther, QFileDevice::WriteOwner);

    // An existing copy is kept.
    QVERIFY(in.open(QIODevice::WriteOnly));
    in.write("longer payload");
    in.close();
    log.clear();
    QCOMPARE(BasicTools::copyToTemp(src, "data.bin"), dst);
    QCOMPARE(log.texts(), QStringList({QString("\"%1\" true \"%2\" true").arg(src, dst)}));
    QCOMPARE(QFileInfo(dst).size(), qint64(7));

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
    widget.setStyleSheet("background: #00ff00");
    const QString result = BasicTools::ExportPNG(&widget, dir.filePath("shot_"));
    const QString head = "Print content to Clipboard and\nto png in temporary path:\n" + dir.path() + "\n";
    QVERIFY2(result.startsWith(head), qPrintable(result));
    const QString fileName = result.mid(head.size());
    QVERIFY(QRegularExpression(
        "^" + QRegularExpression::escape(dir.filePath("shot_")) + R"(\d{4}-\d\d-\d\dT\d\d_\d\d_\d\d\.png$)")
                .match(fileName)
                .hasMatch());
    const QImage saved(fileName);
    QCOMPARE(saved.size(), QSize(40, 30));
    QCOMPARE(QApplication::clipboard()->pixmap().size(), QSize(40, 30));

    const QString failed = BasicTools::ExportPNG(&widget, dir.filePath("missing/shot_"));
    QVERIFY2(failed.startsWith("Cannot open " + dir.filePath("missing/shot_")), qPrintable(failed));
    QVERIFY2(failed.endsWith(".png - " + dir.filePath("missing")), qPrintable(failed));
    QCOMPARE(BasicTools::ExportPNG(nullptr, "x"), QString("error"));
}

void TestBasicTools::pixmapComposition()
{
    // The badge goes to the bottom-right corner.
    const QPixmap badge = BasicTools::addPixmapToPixmap(filled(10, 10, Qt::white), filled(3, 3, Qt::red));
    QCOMPARE(badge.size(), QSize(10, 10));
    QCOMPARE(pixelAt(badge, 9, 9), qRgb(255, 0, 0));
    QCOMPARE(pixelAt(badge, 7, 7), qRgb(255, 0, 0));
    QCOMPARE(pixelAt(badge, 6, 6), qRgb(255, 255, 255));
    if (QFontDatabase().families().isEmpty())
        QSKIP("no fonts to draw text with");
    // Text drawn onto a pixmap, upright and turned, leaves dark pixels on the white ground.
    for (const QPixmap& text : {BasicTools::addTextToPixmap(filled(60, 30, Qt::white), "X", Qt::black),
             BasicTools::addTextToPixmapRotate(filled(30, 80, Qt::white), "Text", Qt::black, QFont())}) {
        const QImage image = text.toImage().convertToFormat(QImage::Format_ARGB32);
        QVERIFY(
            image != filled(text.width(), text.height(), Qt::white).toImage().convertToFormat(QImage::Format_ARGB32));
    }
}

void TestBasicTools::pixmapToHtmlAndImageData()
{
    QPixmap transparent(4, 2);
    transparent.fill(Qt::transparent);
    const QString html = BasicTools::setPixmapToHtml(transparent, QColor(Qt::red), QSize(8, 4));
    const QString head = "<img src=\"data:image/png;base64,";
    const QString tail = "\" width=\"8\" height=\"4\">";
    QVERIFY(html.startsWith(head));
    QVERIFY(html.endsWith(tail));
    const QPixmap embedded
        = BasicTools::pixmapFromImageData(html.mid(head.size(), html.size() - head.size() - tail.size()).toLatin1());
    QCOMPARE(embedded.size(), QSize(8, 4));
    // An opaque picture covers the background from the top-left corner on.
    const QString opaque = BasicTools::setPixmapToHtml(filled(4, 2, Qt::blue), QColor(Qt::red));
    QCOMPARE(pixelAt(BasicTools::pixmapFromImageData(
                         opaque.mid(head.size(), opaque.indexOf('"', head.size()) - head.size()).toLatin1()),
                 0, 0),
        qRgb(0, 0, 255));
    QCOMPARE(pixelAt(embedded, 7, 3), qRgb(255, 0, 0));
    QVERIFY(BasicTools::setPixmapToHtml(transparent, QColor(Qt::red)).endsWith("\" width=\"4\" height=\"2\">"));
    QVERIFY(BasicTools::setPixmapToHtml(transparent, QSize(2, 1)).endsWith("\" width=\"2\" height=\"1\">"));
    QCOMPARE(BasicTools::setPixmapToHtml(QPixmap(), QSize(2, 1)), QString());

    const QImage image = filled(3, 2, Qt::blue).toImage();
    const QPixmap back = BasicTools::pixmapFromImageData(BasicTools::pixmapToImageData(image));
    QCOMPARE(back.size(), QSize(3, 2));
    QCOMPARE(pixelAt(back, 2, 1), qRgb(0, 0, 255));
    QVERIFY(BasicTools::pixmapFromImageData("not an image").isNull());
    QVERIFY(BasicTools::pixmapToImageData(QImage()).isEmpty());
}

QTEST_MAIN(TestBasicTools)
#include "tst_basictools.moc"
