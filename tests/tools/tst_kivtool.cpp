#include "HtmlCheck.h"
#include "KivtoolRun.h"
#include "TestXml.h"

#include <QDate>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kModule = QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml");
const QString kIC = QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml");
const QString kESI = QStringLiteral(KIVCORE_EXAMPLES_DIR "/esi/kiv-vendor-esi.xml");

using Run = KivtoolRun;

/// An ESI file of vendor 2 with the given devices.
QByteArray esi(const QList<QByteArrayList>& devices) // product code, revision, name
{
    QByteArray xml = "<EtherCATInfo><Vendor><Id>2</Id><Name>Maker</Name></Vendor><Descriptions><Devices>";
    for (const QByteArrayList& d : devices)
        xml += "<Device><Type ProductCode=\"" + d.at(0) + "\" RevisionNo=\"" + d.at(1) + "\">T-" + d.at(0)
            + "</Type><Name LcId=\"1033\">" + d.at(2) + "</Name><GroupType>G</GroupType></Device>";
    return xml + "</Devices></Descriptions></EtherCATInfo>\n";
}

} // namespace

class TestKivtool : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void errors_data();
    void errors();
    void outputIsTheReference_data();
    void outputIsTheReference();
    void htmlIsACompleteDocument_data();
    void htmlIsACompleteDocument();
    void manualTypesets_data();
    void manualTypesets();
    void manualWithoutPdflatexNamesThePackage();
    void help_data();
    void help();
    void manPageRenders();
    void outputThatCannotBeWritten();
    void failedRunLeavesOutputAlone();
    void standardInput_data();
    void standardInput();
    void esiFindJson();
    void esiFindText();
    void jsonDevice();

private:
    QTemporaryDir m_dir;
    QString m_folder; // of ESI files, indexed into m_db
    QString m_db;
};

void TestKivtool::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_folder = QDir(m_dir.path()).canonicalPath() + QStringLiteral("/esi");
    m_db = m_dir.filePath(QStringLiteral("catalog.sqlite"));
    QVERIFY(TestXml::writeFile(
        m_folder + "/a.xml", esi({{"#x0C8E3052", "#x00100000", "Input 1"}, {"#x0C8E3052", "#x00130000", "Input 3"}})));
    QVERIFY(TestXml::writeFile(m_folder + "/b c.xml", esi({{"#x0C8E3052", "#x00120000", "Input 2"}})));
    const Run run = runKivtool({"esi", "index", m_folder, "--db", m_db});
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.out.startsWith("catalog: " + m_db
                 + "\nfiles: 2 (read 2, unchanged 0, removed 0, not ESI 0)\n"
                   "devices: 3\nread: "),
        qPrintable(run.out));
    QVERIFY(run.out.endsWith(" MB/s)\nfailures: 0\n"));
}

void TestKivtool::errors_data()
{
    QTest::addColumn<QByteArray>("content"); // empty: the file does not exist; "IC": the example IC
    QTest::addColumn<QStringList>("arguments"); // FILE stands for the file, DB and DIR for the ESI catalog and folder
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message"); // a regular expression; FILE and DIR stand for the paths
    struct Row
    {
        const char* name;
        QByteArray content;
        const char* arguments; // separated by single blanks
        int exitCode;
        const char* message;
    };
    const Row rows[] = {
        {"missing file", "", "info FILE", 2, "^kivtool: cannot open FILE: No such file or directory\n$"},
        {"broken XML", "<product_module>\n  <axis_parameters></product_module>\n", "dump FILE", 1,
            "^kivtool: FILE:2:.*: malformed XML: "},
        {"empty file", " ", "info FILE", 1, "^kivtool: FILE:1:"},
        {"foreign root", "<svg/>", "info FILE", 1,
            "root element \"svg\" .*accepted: product_module, product_ic, EtherCATInfo"},
        {"comment before root", "<?xml version=\"1.0\"?>\n<!-- c -->\n<product_ic/>", "info FILE", 1,
            "comment, DOCTYPE"},
        {"unknown command", "<product_ic/>", "print FILE", 2, "unknown command \"print\""},
        {"latex without fragment", "<product_ic/>", "latex FILE", 2,
            "needs --fragment <name>; this file offers: regmap, "},
        {"unknown fragment", "<product_ic/>", "latex FILE --fragment axis", 2, "an IC has no fragment \"axis\""},
        {"missing bank", "<product_module/>", "latex FILE --fragment global 7", 2,
            "no global parameter bank \"7\" \\(banks: none\\)"},
        {"bank not given", "<product_module/>", "latex FILE --fragment global", 2,
            "^kivtool: the fragment global needs a BANK number \\(banks: none\\)\n$"},
        {"fragment without name", "<product_ic/>", "latex FILE --fragment", 2,
            "^kivtool: option --fragment needs a value <name>\nTry 'kivtool help "
            "latex'.\n$"},
        {"unknown option", "<product_ic/>", "--bogus info FILE", 2,
            "^kivtool: unknown option --bogus\nTry 'kivtool --help'.\n$"},
        {"option of another command", "<product_ic/>", "info FILE --pdf", 2,
            "^kivtool: the info command has no option --pdf\nTry 'kivtool help info'.\n$"},
        {"file name with format markers", "", "info FILE%2%1", 2, "^kivtool: cannot open FILE%2%1: No such file"},
        {"output folder missing", "<product_ic/>", "info FILE -o /nonexistent/folder/out.txt", 2,
            "^kivtool: cannot write /nonexistent/folder/out.txt: "},
        {"plain html of ESI", "<EtherCATInfo/>", "html FILE --plain", 1, "an ESI file has no HTML page"},
        {"decode without a pair", "IC", "decode FILE", 2,
            "^kivtool: decode needs a F.LE and REG=VALUE\nTry 'kivtool help decode'.\n$"},
        {"decode, no =", "IC", "decode FILE BRG_SELECT", 2, "^kivtool: decode expects REG=VALUE, not \"BRG_SELECT\"\n"},
        {"decode, unknown register", "IC", "decode FILE BRG_SELECT=1 BRG_SELEKT=1", 1,
            "^kivtool: no register \"BRG_SELEKT\"; nearest: BRG_SELECT, BRG_DECAY, BRG_HOLD\n$"},
        {"decode, free address", "IC", "decode FILE 0x30=1", 1, "^kivtool: no register at address 0x30\n$"},
        {"decode, value too wide", "IC", "decode FILE BRG_SELECT=0x100", 1,
            "^kivtool: BRG_SELECT: 0x100 does not fit the register's 8 bits\n$"},
        {"decode, not a number", "IC", "decode FILE BRG_SELECT=high", 1,
            "^kivtool: BRG_SELECT: \"high\" is not a number\n$"},
        {"decode of a module", "<product_module/>", "decode FILE A=1", 1,
            "^kivtool: FILE: decode needs an IC file \\(root product_ic\\); this is a module file"},
        {"encode of ESI", "<EtherCATInfo/>", "encode FILE A", 1,
            "^kivtool: FILE: encode needs an IC file \\(root product_ic\\); this is an ESI file, "
            "which has no registers\n$"},
        {"encode without REG", "IC", "encode FILE", 2, "^kivtool: encode needs a F.LE and REG\n"},
        {"encode, unknown field", "IC", "encode FILE GLD_MODE speed=1", 1,
            "^kivtool: GLD_MODE has no field \"speed\" \\(fields: glide_mode, s_curve, "
            "wait_sync\\)\n$"},
        {"encode, read-only", "IC", "encode FILE SYS_PINS lvl_pul=1", 1,
            "^kivtool: SYS_PINS.lvl_pul is read-only \\(access R\\): not written "
            "\\(--force writes it anyway\\)\n$"},
        {"encode, too wide", "IC", "encode FILE BRG_DECAY t_slow=32 --context BRG_SELECT=1", 1,
            "^kivtool: BRG_DECAY.t_slow: 32 does not fit the field's 5 bits \\(allowed 0 to 31\\)\n$"},
        {"encode, field of the other variant", "IC", "encode FILE BRG_DECAY mix_ratio=1 --context BRG_SELECT=2", 1,
            "^kivtool: BRG_DECAY: field mix_ratio belongs to variant \"Mixed decay\", which needs BRG_SELECT bits 0-1 "
            "\\(decay_kind\\) = 0; "},
        {"encode, bad base", "IC", "encode FILE GLD_MODE --base 0x1FF", 1,
            "^kivtool: --base: GLD_MODE: 0x1FF does not fit the register's 8 bits\n$"},
        {"encode, bad context", "IC", "encode FILE GLD_MODE --context BRG_SELECT", 2,
            "^kivtool: --context expects REG=VALUE, not \"BRG_SELECT\"\n"},
        {"check, unknown id", "IC", "check --disable KIV999 FILE", 2, "^kivtool: --disable: no check \"KIV999\""},
        {"check, missing file", "", "check FILE", 2, "^kivtool: cannot open FILE: "},
        {"check, two forms", "IC", "check --json --sarif FILE", 2, "^kivtool: --json and --sarif exclude each other"},
        {"esi without subcommand", "", "esi", 2, "^kivtool: esi needs a subcommand"},
        {"esi, unknown subcommand", "", "esi sort", 2, "^kivtool: no esi subcommand \"sort\""},
        {"esi index without folder", "", "esi index --db DB", 2, "^kivtool: esi index needs a folder"},
        {"esi, option of another subcommand", "", "esi list --nearest --db DB", 2,
            "^kivtool: esi list has no option --nearest"},
        {"esi, bad number", "", "esi find --vendor two --db DB", 2, "^kivtool: --vendor needs a number"},
        {"esi, nearest without revision", "", "esi find --vendor 2 --product 1 --nearest --db DB", 2,
            "^kivtool: --nearest needs --vendor, --product and --revision"},
        {"esi, no match", "", "esi find --vendor 3 --db DB", 1, "^kivtool: no device matches"},
        {"esi, missing catalog", "", "esi list --db DIR/none.sqlite", 2,
            "^kivtool: DIR/none.sqlite: no ESI catalog there"},
        {"esi, not a catalog", "", "esi list --db DIR/a.xml", 2, "^kivtool: DIR/a.xml: not an ESI catalog"},
        {"esi, folder missing", "", "esi index DIR/none --db DB", 2, "^kivtool: DIR/none: no such folder"},
        {"json device out of range", "", "json DIR/a.xml --device 2", 1,
            "^kivtool: DIR/a.xml: no device 2 \\(the file has 2 devices, from 0\\)"},
        {"json device not a number", "", "json DIR/a.xml --device x", 2, "^kivtool: --device needs a position"},
    };
    const QByteArray ic = TestXml::readFile(kIC);
    for (const Row& row : rows) {
        QTest::newRow(row.name) << (row.content == "IC" ? ic : row.content)
                                << QString::fromLatin1(row.arguments).split(QLatin1Char(' ')) << row.exitCode
                                << QString::fromUtf8(row.message);
    }
}

void TestKivtool::errors()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, message);
    const QString path = m_dir.filePath(QStringLiteral("input-%1.xml").arg(QTest::currentDataTag()).replace(' ', '-'));
    if (!content.isEmpty())
        QVERIFY(TestXml::writeFile(path, content));
    arguments.replaceInStrings(QStringLiteral("DB"), m_db).replaceInStrings(QStringLiteral("DIR"), m_folder);
    const Run run = runKivtool(arguments.replaceInStrings(QStringLiteral("FILE"), path));
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY(run.out.isEmpty());
    message.replace(QStringLiteral("DIR"), QRegularExpression::escape(m_folder));
    const QRegularExpression expected(message.replace(QStringLiteral("FILE"), QRegularExpression::escape(path)));
    QVERIFY2(expected.match(run.err).hasMatch(), qPrintable(run.err));
}

void TestKivtool::outputIsTheReference_data()
{
    QTest::addColumn<QString>("arguments"); // MODULE, IC and ESI stand for the examples
    QTest::addColumn<QString>("reference"); // below tests/data; those in tools/ are kivtool's own texts
    const char* const rows[][2] = {
        {"dump MODULE", "reference/module/debug.txt"},
        {"dump IC", "reference/ic/debug.txt"},
        {"json MODULE", "reference/module/module.json"},
        {"json IC", "reference/ic/ic.json"},
        {"json ESI", "reference/esi/esi.json"},
        {"latex MODULE --fragment header", "reference/module/header.tex"},
        {"latex MODULE --fragment axis", "reference/module/axis.tex"},
        {"latex MODULE --fragment global 2", "reference/module/bank-1.tex"}, // bank 2 is the second bank
        {"latex MODULE --fragment ios analog-inputs", "reference/module/io-1.tex"},
        {"latex MODULE --fragment ios 3", "reference/module/io-3.tex"},
        {"latex IC --fragment regmap", "reference/ic/regmap.tex"},
        {"latex IC --fragment regmap-defaults", "reference/ic/regmap-defaults.tex"},
        {"latex IC --fragment overview", "reference/ic/overview.tex"},
        {"header MODULE", "tools/header-module.h.txt"},
        {"info MODULE", "tools/info-module.txt"},
        {"info IC", "tools/info-ic.txt"},
        {"info ESI", "tools/info-esi.txt"},
        {"encode IC BRG_DECAY t_slow=10 blank=2 --context BRG_SELECT=2", "tools/encode.txt"},
        {"encode IC BRG_DECAY t_slow=10 blank=2 --context BRG_SELECT=2 --json", "tools/encode.json"},
        {"encode IC GLD_MODE glide_mode=park --base 0x08 --all-bases", "tools/encode-all-bases.txt"},
        {"decode IC BRG_SELECT=0x21 BRG_LOOP=0x1234", "tools/decode.txt"},
        {"decode IC BRG_SELECT=0x21 BRG_LOOP=0x1234 --json", "tools/decode.json"},
        {"decode IC BRG_LOOP=0x1234", "tools/decode-undecided.txt"}, // the selector is not known
        {"decode IC BRG_LOOP=0x1234 --json", "tools/decode-undecided.json"},
    };
    for (const auto& row : rows)
        QTest::newRow(row[0]) << QString::fromLatin1(row[0]) << QString::fromLatin1(row[1]);
}

/// Each command writes the model's own text, as the reference files hold it, with a final line break. After a
/// deliberate change of kivtool's own texts, KIVCORE_UPDATE_REFERENCES=1 tst_kivtool outputIsTheReference
/// rewrites the files in tests/data/tools; review their diff before committing.
void TestKivtool::outputIsTheReference()
{
    QFETCH(QString, arguments);
    QFETCH(QString, reference);
    const QHash<QString, QString> examples {{"MODULE", kModule}, {"IC", kIC}, {"ESI", kESI}};
    QStringList list = arguments.split(QLatin1Char(' '));
    for (QString& argument : list)
        argument = examples.value(argument, argument);
    Run run = runKivtool(list);
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
    for (auto it = examples.cbegin(); it != examples.cend(); ++it)
        run.out.replace(it.value(), it.key());
    // The header carries today's date; the reference holds a placeholder in its place.
    const QString today = QLocale::system().toString(QDate::currentDate(), QStringLiteral("yyyy-MMM-d")).toUpper();
    run.out.replace(today, QLatin1String("@TODAY@"));
    const QString path = QStringLiteral(KIVCORE_TEST_DATA_DIR "/") + reference;
    if (qEnvironmentVariableIsSet("KIVCORE_UPDATE_REFERENCES") && reference.startsWith(QLatin1String("tools/")))
        QVERIFY(TestXml::writeFile(path, run.out.toUtf8()));
    QString expected = fromUtf8Whole(TestXml::readFile(path));
    QVERIFY(!expected.isEmpty());
    if (!expected.endsWith(QLatin1Char('\n'))) // the library's texts; kivtool ends the last line
        expected += QLatin1Char('\n');
    KIV_COMPARE_TEXT(run.out, expected);
}

void TestKivtool::htmlIsACompleteDocument_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("module") << kModule;
    QTest::newRow("IC") << kIC;
}

void TestKivtool::htmlIsACompleteDocument()
{
    QFETCH(QString, file);
    const QString out = m_dir.filePath(QString::fromLatin1(QTest::currentDataTag()).replace(' ', '-') + ".html");
    const Run run = runKivtool({"html", file, "--plain", "-o", out});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.out.isEmpty());
    const QString html = fromUtf8Whole(TestXml::readFile(out));
    QVERIFY(html.startsWith(QLatin1String("<!DOCTYPE html>\n<html")));
    QVERIFY(html.contains(QLatin1String("<meta charset=\"utf-8\">")));
    QCOMPARE(HtmlCheck::problem(html, !file.endsWith(QLatin1String("ic-example.xml"))), QString());
}

void TestKivtool::manualTypesets_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("phrases"); // headings, and the first and last parameter or register names
    QTest::newRow("module") << kModule
                            << QStringList {"Axis 1 Parameters of the KIVD-4307 Module", "Global parameters",
                                   "CANopen objects", "Goal position", "Decay register", "Table key",
                                   "Scratch word #9"};
    QTest::newRow("IC") << kIC
                        << QStringList {"KIV5Q7", "Register map", "Register defaults", "SYS_MODE", "MON_STEP_TIME"};
}

void TestKivtool::manualTypesets()
{
    QFETCH(QString, file);
    QFETCH(QStringList, phrases);
    if (QStandardPaths::findExecutable(QStringLiteral("pdflatex")).isEmpty()
        || QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty())
        QSKIP("pdflatex or pdftotext is not installed (make test installs both)");
    const QString dir = m_dir.filePath(QStringLiteral("manual-%1").arg(QTest::currentDataTag()));
    const Run run = runKivtool({"manual", file, "-o", dir, "--pdf"});
    QVERIFY2(run.exitCode == 0, qPrintable(run.err));
    const QStringList written = run.out.trimmed().split(QLatin1Char('\n'));
    QCOMPARE(written.size(), 2);
    QVERIFY(written.last().endsWith(QLatin1String(".pdf")));
    // -raw keeps the drawing order, so a name wrapped inside its table cell stays in one piece.
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {QStringLiteral("-raw"), written.last(), QStringLiteral("-")});
    QVERIFY(pdftotext.waitForFinished(60000));
    const QString text = fromUtf8Whole(pdftotext.readAllStandardOutput()).simplified();
    for (const QString& phrase : qAsConst(phrases))
        QVERIFY2(text.contains(phrase), qPrintable(phrase));
}

void TestKivtool::manualWithoutPdflatexNamesThePackage()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"), m_dir.filePath(QStringLiteral("no-programs-here")));
    const QString dir = m_dir.filePath(QStringLiteral("manual-without-pdflatex"));
    const Run run = runKivtool({"manual", kIC, "-o", dir, "--pdf"}, environment);
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.err.startsWith(QLatin1String("kivtool: pdflatex not found; install it with 'apt-get install "
                                              "texlive-latex-base")),
        qPrintable(run.err));
    // The LaTeX source is written before typesetting is tried.
    QVERIFY(QFile::exists(dir + QLatin1String("/kiv-ic-example.tex")));
}

void TestKivtool::help_data()
{
    QTest::addColumn<QString>("usage");
    QTest::addColumn<QString>("example");
    const char* const rows[][3] = {
        {"info", "info FILE [-o <path>]", "kivtool info examples/"},
        {"dump", "dump FILE [-o <path>]", "kivtool dump examples/"},
        {"html", "html FILE [--plain] [-o <path>]", "kivtool html examples/"},
        {"latex", "latex FILE --fragment <name> [ARG] [-o <path>]", "--fragment global 2"},
        {"manual", "manual FILE -o <dir> [--pdf]", "-o manual --pdf"},
        {"json", "json FILE [-o <path>]", "kivtool json examples/"},
        {"decode", "decode FILE REG=VALUE... [--json] [--candidates]", "BRG_SELECT=0x21 BRG_DECAY="},
        {"encode",
            "encode FILE REG FIELD=VALUE... [--base <value>] [--context REG=VALUE]... [--force] [--json] "
            "[--all-bases]",
            "--context BRG_SELECT=2"},
        {"esi", "esi index|find|list [DIR] [--db <file>] ...", "kivtool esi index "},
    };
    for (const auto& row : rows) // the data tag is the command
        QTest::newRow(row[0]) << QString::fromLatin1(row[1]) << QString::fromLatin1(row[2]);
}

/// "kivtool help X" and "kivtool X --help" give the same text: usage, options with agreeing placeholders,
/// an example; the general help lists the command.
void TestKivtool::help()
{
    const QString command = QString::fromLatin1(QTest::currentDataTag());
    QFETCH(QString, usage);
    QFETCH(QString, example);
    const Run viaHelp = runKivtool({"help", command});
    const Run viaOption = runKivtool({command, "--help"});
    QCOMPARE(viaHelp.exitCode, 0);
    QCOMPARE(viaOption.exitCode, 0);
    QCOMPARE(viaOption.out, viaHelp.out);
    QVERIFY2(viaHelp.out.startsWith(QLatin1String("Usage: kivtool ") + usage + QLatin1String("\n\n")),
        qPrintable(viaHelp.out));
    QVERIFY(viaHelp.out.contains(QLatin1String("\nExample:\n  ")));
    QVERIFY(viaHelp.out.contains(example));
    static const QRegularExpression placeholder(
        QStringLiteral("--output <(\\w+)> +Write (to|the manual into the folder) <(\\w+)>"));
    const QRegularExpressionMatch output = placeholder.match(viaHelp.out);
    if (output.hasMatch())
        QCOMPARE(output.captured(3), output.captured(1));
    const Run general = runKivtool({"--help"});
    QCOMPARE(general.exitCode, 0);
    QVERIFY(general.out.startsWith(QLatin1String("Usage: kivtool COMMAND FILE [OPTIONS]\n")));
    QVERIFY(general.out.contains(QLatin1String("\n  ") + usage + QLatin1Char(' '))
        || general.out.contains(QLatin1String("\n  ") + usage + QLatin1Char('\n')));
    const QString page = fromUtf8Whole(TestXml::readFile(QStringLiteral(KIVTOOL_MAN_PAGE)));
    QVERIFY2(page.contains(QLatin1String(".BI \"") + command + QLatin1Char(' ')), "missing from the manual page");
}

void TestKivtool::manPageRenders()
{
    if (QStandardPaths::findExecutable(QStringLiteral("man")).isEmpty())
        QSKIP("man is not installed (make test installs man-db)");
    QProcess man;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("MANWIDTH"), QStringLiteral("80"));
    man.setProcessEnvironment(environment);
    man.start(
        QStringLiteral("man"), {QStringLiteral("--warnings"), QStringLiteral("-l"), QStringLiteral(KIVTOOL_MAN_PAGE)});
    QVERIFY(man.waitForFinished(60000));
    QCOMPARE(man.exitCode(), 0);
    QCOMPARE(fromUtf8Whole(man.readAllStandardError()), QString());
    const QString text = fromUtf8Whole(man.readAllStandardOutput());
    for (const char* heading : {"SYNOPSIS", "COMMANDS", "OPTIONS", "EXIT STATUS", "EXAMPLES"})
        QVERIFY2(text.contains(QLatin1String(heading)), heading);
}

/// A full disk is an error: exit 2 with the reason, whatever the size of the text.
void TestKivtool::outputThatCannotBeWritten()
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(KIVTOOL_PATH), {QStringLiteral("info"), kESI});
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(fromUtf8Whole(process.readAllStandardError()),
        QStringLiteral("kivtool: cannot write standard output: No space left on device\n"));
    const Run toFile = runKivtool({"json", kESI, "-o", "/dev/full"});
    QCOMPARE(toFile.exitCode, 2);
    QCOMPARE(toFile.err, QStringLiteral("kivtool: cannot write /dev/full: No space left on device\n"));
}

/// An -o file is replaced only by a complete result; a failed run leaves it and no temporary file behind.
void TestKivtool::failedRunLeavesOutputAlone()
{
    QTemporaryDir dir;
    const QString out = dir.filePath(QStringLiteral("page.html"));
    const QString broken = dir.filePath(QStringLiteral("broken.xml"));
    QVERIFY(TestXml::writeFile(broken, "<product_ic><desc>cut"));
    QVERIFY(TestXml::writeFile(out, "previous page"));
    QCOMPARE(runKivtool({"html", broken, "-o", out}).exitCode, 1);
    QCOMPARE(TestXml::readFile(out), QByteArray("previous page"));
    QCOMPARE(runKivtool({"html", kIC, "-o", out}).exitCode, 0);
    QVERIFY(TestXml::readFile(out).startsWith("<!DOCTYPE html>"));
    QCOMPARE(QDir(dir.path()).entryList(QDir::Files), QStringList({"broken.xml", "page.html"}));
}

void TestKivtool::standardInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("dash") << QStringList {"info", "-"};
    QTest::newRow("/dev/stdin") << QStringList {"info", "/dev/stdin"};
}

/// Input from a pipe is read once: the root is told from it and the same bytes are parsed.
void TestKivtool::standardInput()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    QProcess cat;
    cat.setStandardOutputProcess(&process);
    cat.start(QStringLiteral("cat"), {kESI});
    process.start(QStringLiteral(KIVTOOL_PATH), arguments);
    QVERIFY(process.waitForFinished(60000));
    cat.waitForFinished();
    QCOMPARE(fromUtf8Whole(process.readAllStandardError()), QString());
    QCOMPARE(process.exitCode(), 0);
    const QString out = fromUtf8Whole(process.readAllStandardOutput());
    QVERIFY2(
        out.contains(QLatin1String("\nKind:                  ESI\nVendor:                Kivotronic Example GmbH")),
        qPrintable(out));
}

/// --json: one object per device with numbers as numbers; --nearest says on stderr what it took.
void TestKivtool::esiFindJson()
{
    const Run run = runKivtool({"esi", "find", "--db", m_db, "--vendor", "#x2", "--product", "0x0C8E3052", "--revision",
        "1179649", "--nearest", "--json"});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.err, QStringLiteral("kivtool: no revision 0x00120001; nearest: 0x00120000 (the highest below)\n"));
    const QJsonArray array = QJsonDocument::fromJson(run.out.toUtf8()).array();
    QCOMPARE(array.size(), 1);
    const QJsonObject expected {{"vendorId", 2}, {"vendorName", "Maker"}, {"productCode", 0x0C8E3052},
        {"revision", 0x00120000}, {"type", "T-#x0C8E3052"}, {"name", "Input 2"}, {"names", QJsonArray {"Input 2"}},
        {"group", "G"}, {"groupName", ""}, {"file", m_folder + "/b c.xml"}, {"position", 0}, {"nearest", true}};
    QCOMPARE(array.first().toObject(), expected);

    const Run list = runKivtool({"esi", "list", "--db", m_db, "--vendor", "2", "--json"});
    QCOMPARE(list.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(list.out.toUtf8()).array().size(), 3);
}

/// The text form names the file and position so that the device can be shown whole.
void TestKivtool::esiFindText()
{
    const Run run = runKivtool({"esi", "find", "--db", m_db, "--name", "input 2"});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out,
        "0x00000002 0x0C8E3052 0x00120000  T-#x0C8E3052  Input 2  [G]\n    kivtool json '" + m_folder
            + "/b c.xml' --device 0\n");
}

/// json --device N writes that device alone, in the envelope of the whole file's export.
void TestKivtool::jsonDevice()
{
    const Run run = runKivtool({"json", m_folder + "/a.xml", "--device", "1"});
    QCOMPARE(run.exitCode, 0);
    const QJsonObject json = QJsonDocument::fromJson(run.out.toUtf8()).object();
    QCOMPARE(json.value("VID").toInt(), 2);
    const QJsonArray devices = json.value("EtherCATInfo").toArray().first().toObject().value("Descriptions").toArray();
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices.first().toObject().value("RevisionNo").toInt(), 0x00130000);
}

QTEST_GUILESS_MAIN(TestKivtool)
#include "tst_kivtool.moc"
