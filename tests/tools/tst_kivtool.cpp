#include "LogCapture.h"
#include "TestXml.h"

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"
#include "ic/IcJson.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlValueRegister.h"
#include "product/KIVXmlParser.h"
#include "product/ModuleJson.h"
#include "product/XmlAxisParameter.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlGlobalParameter.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlProductModule.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kModule = QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml");
const QString kIC = QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml");
const QString kESI = QStringLiteral(KIVCORE_EXAMPLES_DIR "/esi/kiv-vendor-esi.xml");

/// Keeps embedded NUL characters, which debug texts may hold (option bits written as a character).
QString utf8(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

struct Run
{
    int exitCode = -1;
    QString out;
    QString err;
};

Run kivtool(
    const QStringList& arguments, const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KIVTOOL_PATH), arguments);
    Run run;
    if (!process.waitForFinished(120000))
        return run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = utf8(process.readAllStandardOutput());
    run.err = utf8(process.readAllStandardError());
    return run;
}

/// Parses an example with the library itself; a module's pin map is freed with it.
struct Parsed
{
    explicit Parsed(const QString& path)
    {
        const LogCapture quiet; // what the parser skips is not under test here
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            product.reset(KIVXmlParser::parseProduct(&file));
    }
    ~Parsed()
    {
        if (auto* module = qobject_cast<XmlProductModule*>(product.get()))
            delete module->getPinMap();
    }
    XmlProductModule* module() const { return qobject_cast<XmlProductModule*>(product.get()); }
    XmlProductIC* ic() const { return qobject_cast<XmlProductIC*>(product.get()); }
    std::unique_ptr<XmlProductInterface> product;
};

/// Names of open tags left unclosed or closed out of order; HTML's void elements need no end tag.
QStringList unbalancedTags(const QString& html)
{
    static const QStringList voidElements {"br", "meta", "hr", "img", "input", "link", "col"};
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-zA-Z][a-zA-Z0-9]*)[^>]*?(/?)>"));
    QStringList open;
    QStringList problems;
    for (auto match = tag.globalMatch(html); match.hasNext();) {
        const QRegularExpressionMatch m = match.next();
        const QString name = m.captured(2).toLower();
        if (voidElements.contains(name) || !m.captured(3).isEmpty())
            continue;
        if (m.captured(1).isEmpty())
            open << name;
        else if (!open.isEmpty() && open.last() == name)
            open.removeLast();
        else
            problems << QLatin1Char('/') + name;
    }
    return problems + open;
}

} // namespace

class TestKivtool : public QObject
{
    Q_OBJECT
private slots:
    void errors_data();
    void errors();
    void summary_data();
    void summary();
    void dumpIsTheDebugText_data();
    void dumpIsTheDebugText();
    void fragmentsAreTheModelsOwn_data();
    void fragmentsAreTheModelsOwn();
    void htmlIsACompleteDocument_data();
    void htmlIsACompleteDocument();
    void jsonIsTheExport_data();
    void jsonIsTheExport();
    void manualTypesets_data();
    void manualTypesets();
    void manualWithoutPdflatexNamesThePackage();

private:
    QTemporaryDir m_dir;
};

void TestKivtool::errors_data()
{
    QTest::addColumn<QByteArray>("content"); // empty: the file does not exist
    QTest::addColumn<QStringList>("arguments"); // FILE stands for the file
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // a regular expression; FILE stands for the path

    QTest::newRow("missing file") << QByteArray() << QStringList {"info", "FILE"} << 2
                                  << "^kivtool: cannot open FILE: No such file or directory\n$";
    QTest::newRow("broken XML") << QByteArray("<product_module>\n  <axis_parameters></product_module>\n")
                                << QStringList {"dump", "FILE"} << 1 << "^kivtool: FILE:2:.*: malformed XML: ";
    QTest::newRow("empty file") << QByteArray(" ") << QStringList {"info", "FILE"} << 1 << "^kivtool: FILE:1:";
    QTest::newRow("foreign root") << QByteArray("<svg/>") << QStringList {"info", "FILE"} << 1
                                  << "root element \"svg\" .*accepted: product_module, product_ic, EtherCATInfo";
    QTest::newRow("comment before root") << QByteArray("<?xml version=\"1.0\"?>\n<!-- c -->\n<product_ic/>")
                                         << QStringList {"info", "FILE"} << 1 << "comment, DOCTYPE";
    QTest::newRow("unknown command") << QByteArray("<product_ic/>") << QStringList {"print", "FILE"} << 2
                                     << "unknown command \"print\"";
    QTest::newRow("latex without fragment") << QByteArray("<product_ic/>") << QStringList {"latex", "FILE"} << 2
                                            << "needs --fragment NAME; this file offers: regmap, ";
    QTest::newRow("unknown fragment") << QByteArray("<product_ic/>")
                                      << QStringList {"latex", "FILE", "--fragment", "axis"} << 1
                                      << "an IC has no fragment \"axis\"";
    QTest::newRow("missing bank") << QByteArray("<product_module/>")
                                  << QStringList {"latex", "FILE", "--fragment", "global", "7"} << 1
                                  << "no global parameter bank \"7\" \\(banks: none\\)";
    QTest::newRow("html of ESI") << QByteArray("<EtherCATInfo/>") << QStringList {"html", "FILE"} << 1
                                 << "an ESI file has no HTML page";
}

void TestKivtool::errors()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const QString path = m_dir.filePath(QStringLiteral("input-%1.xml").arg(QTest::currentDataTag()).replace(' ', '-'));
    if (!content.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    arguments.replaceInStrings(QStringLiteral("FILE"), path);
    const Run run = kivtool(arguments);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY(run.out.isEmpty());
    const QRegularExpression expected(message.replace(QStringLiteral("FILE"), QRegularExpression::escape(path)));
    QVERIFY2(expected.match(run.err).hasMatch(), qPrintable(run.err));
}

void TestKivtool::summary_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("module") << kModule
                            << QStringList {"Kind:                  module", "Name:                  KIVM-2042",
                                   "Axis parameters:       57 (axis 1)", "Global parameters:     10 (bank 2)",
                                   "CANopen objects:       9", "Drive configurations:  2"};
    QTest::newRow("IC") << kIC
                        << QStringList {"Kind:                  IC", "Registers:             46",
                               "Register groups:       6", "Pins:                  17 (QFN36)",
                               "Database:              R_Sense 110, V_SRTL 180, V_SRTH 325, offset 1"};
    QTest::newRow("ESI") << kESI
                         << QStringList {"Kind:                  ESI", "Devices:               2",
                                "  KIV-1401 Stepper drive, 1 axis  product code 0x00010401  revision 0x00020003  "
                                "objects 3"};
}

void TestKivtool::summary()
{
    QFETCH(QString, file);
    QFETCH(QStringList, lines);
    const Run run = kivtool({QStringLiteral("info"), file});
    QCOMPARE(run.exitCode, 0);
    const QStringList output = run.out.split(QLatin1Char('\n'));
    for (const QString& line : qAsConst(lines))
        QVERIFY2(output.contains(line), qPrintable(line + QLatin1String(" missing from:\n") + run.out));
}

void TestKivtool::dumpIsTheDebugText_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("module") << kModule;
    QTest::newRow("IC") << kIC;
}

void TestKivtool::dumpIsTheDebugText()
{
    QFETCH(QString, file);
    const Parsed parsed(file);
    QVERIFY(parsed.product);
    const QString expected = parsed.module() ? parsed.module()->toString() : parsed.ic()->toString();
    const Run run = kivtool({QStringLiteral("dump"), file});
    QCOMPARE(run.exitCode, 0);
    KIV_COMPARE_TEXT(run.out, expected + QLatin1Char('\n'));
}

void TestKivtool::fragmentsAreTheModelsOwn_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("fragment");
    QTest::newRow("header") << kModule << QStringList {"header"};
    QTest::newRow("axis") << kModule << QStringList {"axis"};
    QTest::newRow("bank 2 is the second bank") << kModule << QStringList {"global", "2"};
    QTest::newRow("analog inputs") << kModule << QStringList {"ios", "analog-inputs"};
    QTest::newRow("GIO outputs by number") << kModule << QStringList {"ios", "3"};
    QTest::newRow("regmap") << kIC << QStringList {"regmap"};
    QTest::newRow("regmap-defaults") << kIC << QStringList {"regmap-defaults"};
    QTest::newRow("overview") << kIC << QStringList {"overview"};
}

void TestKivtool::fragmentsAreTheModelsOwn()
{
    QFETCH(QString, file);
    QFETCH(QStringList, fragment);
    const Parsed parsed(file);
    QVERIFY(parsed.product);
    QString expected;
    const QString name = fragment.first();
    if (XmlProductModule* module = parsed.module()) {
        if (name == QLatin1String("header"))
            expected = module->toLaTeXHeader();
        else if (name == QLatin1String("axis"))
            expected = module->toLaTeXAxisParam();
        else if (name == QLatin1String("global"))
            expected = module->toLaTeXGlobalParamBank(1);
        else
            expected = module->toLaTeXIOs(fragment.last() == QLatin1String("3") ? 3 : 1);
    } else if (name == QLatin1String("regmap")) {
        expected = parsed.ic()->toLaTeXRegisterMap();
    } else if (name == QLatin1String("regmap-defaults")) {
        expected = parsed.ic()->toLaTeXRegisterMapDefaults();
    } else {
        expected = parsed.ic()->toLaTeXRegisterOverview();
    }
    QVERIFY(!expected.isEmpty());
    QStringList arguments {QStringLiteral("latex"), file, QStringLiteral("--fragment"), name};
    arguments += fragment.mid(1);
    const Run run = kivtool(arguments);
    QCOMPARE(run.exitCode, 0);
    KIV_COMPARE_TEXT(run.out, expected.endsWith(QLatin1Char('\n')) ? expected : expected + QLatin1Char('\n'));
}

void TestKivtool::htmlIsACompleteDocument_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("title");
    QTest::newRow("module") << kModule << "KIVM-2042";
    QTest::newRow("IC") << kIC << "KIV2130";
    QTest::newRow("module with markup in names")
        << QStringLiteral(KIVCORE_TEST_DATA_DIR "/tools/markup-names.xml") << "A&lt;B&gt; &amp; C";
}

void TestKivtool::htmlIsACompleteDocument()
{
    QFETCH(QString, file);
    QFETCH(QString, title);
    const QString out = m_dir.filePath(QString::fromLatin1(QTest::currentDataTag()).replace(' ', '-') + ".html");
    const Run run = kivtool({QStringLiteral("html"), file, QStringLiteral("-o"), out});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.out.isEmpty());
    const QString html = utf8(TestXml::readFile(out));
    QVERIFY(html.startsWith(QLatin1String("<!DOCTYPE html>\n<html")));
    QVERIFY(html.contains(QLatin1String("<meta charset=\"utf-8\">")));
    QVERIFY(html.contains(QLatin1String("<title>") + title + QLatin1String("</title>")));
    QCOMPARE(unbalancedTags(html), QStringList());
    QVERIFY(!html.contains(QLatin1String("<script>")));
}

void TestKivtool::jsonIsTheExport_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("ESI") << kESI;
    QTest::newRow("module") << kModule;
    QTest::newRow("IC") << kIC;
}

void TestKivtool::jsonIsTheExport()
{
    QFETCH(QString, file);
    QJsonObject expected;
    if (file == kESI) {
        const LogCapture quiet;
        QFile input(kESI);
        QVERIFY(input.open(QIODevice::ReadOnly));
        std::unique_ptr<XmlEtherCATInfo> info(ESIXmlParser::parseInfo(&input));
        QVERIFY(info);
        info->toJson(expected);
    } else {
        const Parsed parsed(file);
        QVERIFY(parsed.product);
        expected = parsed.module() ? ModuleJson::toJson(parsed.module()) : IcJson::toJson(parsed.ic());
    }
    QVERIFY(!expected.isEmpty());
    const Run run = kivtool({QStringLiteral("json"), file});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.err.isEmpty());
    QCOMPARE(QJsonDocument::fromJson(run.out.toUtf8()).object(), expected);
    QVERIFY(run.out.contains(QLatin1String("\n    \""))); // pretty-printed
}

void TestKivtool::manualTypesets_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("headings");
    QTest::newRow("module") << kModule
                            << QStringList {
                                   "Axis 1 Parameters of the KIVM-2042 Module", "Global parameters", "CANopen objects"};
    QTest::newRow("IC") << kIC << QStringList {"KIV2130", "Register map", "Register defaults"};
}

/// Every parameter name of a module, or every register name of an IC: the manual must show them all.
QStringList namesOf(const Parsed& parsed)
{
    QStringList names;
    if (XmlProductModule* module = parsed.module()) {
        for (XmlAxisParameters* block : qAsConst(*module->getAxisParameters())) {
            for (XmlAxisParameter* parameter : qAsConst(*block->getAxisParameter()))
                names << parameter->name();
        }
        for (XmlGlobalParameters* bank : qAsConst(*module->getGlobalParameters())) {
            for (XmlGlobalParameter* parameter : qAsConst(*bank->getGlobalParameter()))
                names << parameter->name();
        }
    } else {
        for (XmlValueRegister* reg : qAsConst(*parsed.ic()->registerSet()->getRegisters()))
            names << reg->name();
    }
    return names;
}

void TestKivtool::manualTypesets()
{
    QFETCH(QString, file);
    QFETCH(QStringList, headings);
    if (QStandardPaths::findExecutable(QStringLiteral("pdflatex")).isEmpty()
        || QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdflatex or pdftotext is not installed (make test installs both)");
    const QString dir = m_dir.filePath(QStringLiteral("manual-%1").arg(QTest::currentDataTag()));
    const Run run = kivtool({QStringLiteral("manual"), file, QStringLiteral("-o"), dir, QStringLiteral("--pdf")});
    QVERIFY2(run.exitCode == 0, qPrintable(run.err));
    const QStringList written = run.out.trimmed().split(QLatin1Char('\n'));
    QCOMPARE(written.size(), 2);
    QVERIFY(written.last().endsWith(QLatin1String(".pdf")));
    // -raw keeps the drawing order, so a name wrapped inside its table cell stays in one piece.
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), written.last(), QStringLiteral("-")});
    QVERIFY(pdftotext.waitForFinished(60000));
    const QString text = utf8(pdftotext.readAllStandardOutput()).simplified();
    const Parsed parsed(file);
    const QStringList names = namesOf(parsed);
    QVERIFY(names.size() > 40);
    for (const QString& phrase : headings + names)
        QVERIFY2(text.contains(phrase), qPrintable(phrase));
}

void TestKivtool::manualWithoutPdflatexNamesThePackage()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), m_dir.filePath(QStringLiteral("no-programs-here")));
    const QString dir = m_dir.filePath(QStringLiteral("manual-without-pdflatex"));
    const Run run
        = kivtool({QStringLiteral("manual"), kIC, QStringLiteral("-o"), dir, QStringLiteral("--pdf")}, environment);
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.startsWith(QLatin1String("kivtool: pdflatex not found; install it with 'apt-get install "
                                              "texlive-latex-base")),
        qPrintable(run.err));
    // The LaTeX source is written before typesetting is tried.
    QVERIFY(QFile::exists(dir + QLatin1String("/kiv-ic-example.tex")));
}

QTEST_GUILESS_MAIN(TestKivtool)
#include "tst_kivtool.moc"
