#include "KivtoolRun.h"
#include "TestXml.h"

#include <QCryptographicHash>
#include <QDir>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

// Files made to harm: each row is a small hand-made file, a kivtool command line, the exit status it must
// give and what its output must (and must not) hold. Nothing a file holds may run, leak, crash or stall.
class TestHostile : public QObject
{
    Q_OBJECT
private slots:
    void hostileFiles_data();
    void hostileFiles();
    void referencePageAllowsItsOwnScript();
};

namespace {

struct Row
{
    const char* name;
    QByteArray content;
    QStringList arguments; ///< FILE: the input file; OUT: a scratch folder for outputs
    int exitCode;
    QString checked; ///< "stdout", "stderr", or a file below OUT (a PDF is read with pdftotext)
    QStringList mustMatch; ///< regular expressions
    QStringList mustNotMatch;
    QString fileName = QStringLiteral("input.xml");
    bool terminal = false; ///< standard output is a terminal
};

/// Runs kivtool; with `terminal`, under script(1), which gives it a pseudo-terminal as standard output.
QProcess* start(const QStringList& arguments, bool terminal)
{
    auto* process = new QProcess;
    if (terminal) {
        QStringList quoted;
        for (const QString& argument : arguments)
            quoted << QLatin1Char('\'') + QString(argument).replace(QLatin1Char('\''), QLatin1String("'\\''"))
                    + QLatin1Char('\'');
        process->start(QStringLiteral("script"),
            {QStringLiteral("-qec"), QStringLiteral(KIVTOOL_PATH " ") + quoted.join(QLatin1Char(' ')),
                QStringLiteral("/dev/null")});
    } else {
        process->start(QStringLiteral(KIVTOOL_PATH), arguments);
    }
    process->closeWriteChannel();
    return process;
}

QByteArray textOfPdf(const QString& path)
{
    QProcess pdftotext;
    pdftotext.start(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
    pdftotext.waitForFinished(60000);
    return pdftotext.readAllStandardOutput();
}

QList<Row> rows()
{
    const QByteArray esiHead = "<EtherCATInfo><Vendor><Id>#x2</Id><Name>";
    const QByteArray esiTail = "</Name></Vendor><Descriptions><Devices><Device><Type ProductCode=\"#x1234\" "
                               "RevisionNo=\"#x10\">T</Type><Name LcId=\"1033\">D</Name></Device></Devices>"
                               "</Descriptions></EtherCATInfo>";
    // A register in an IC; the address attribute stands on line 3, its tag at column 5.
    const auto registerWith = [](const QByteArray& attributes) {
        return "<product_ic name=\"A\">\n  <register_set name=\"S\">\n    <value_register " + attributes
            + " name=\"R\"/>\n  </register_set>\n</product_ic>\n";
    };
    // A minimal ESI file with the vendor id and the device type on lines of their own; its revision "0" lacks
    // the "#x" but means 0, so it is not reported.
    const auto esiWith = [](const QByteArray& vendorId, const QByteArray& productCode) {
        return "<EtherCATInfo>\n<Vendor>\n  <Id>" + vendorId + "</Id>\n</Vendor>\n<Descriptions><Devices><Device>\n"
            + "  <Type ProductCode=\"" + productCode + "\" RevisionNo=\"0\">T</Type>\n"
            + "</Device></Devices></Descriptions>\n</EtherCATInfo>\n";
    };
    QByteArray longFile = "<product_ic name=\"A\">\n";
    for (int line = 2; line < 5003; ++line)
        longFile += "<desc>filler</desc>\n";
    longFile += "<desc>bad \xE9 byte</desc>\n</product_ic>\n";
    const QString audit = QStringLiteral("(?m)^kivtool: \\S*input\\.xml:");
    // An IC whose texts are markup at every level of its page: header, register, field, value descriptors.
    const QByteArray icMarkup
        = "<product_ic name=\"&lt;script&gt;alert(1)&lt;/script&gt;\" version=\"&lt;img src=x onerror=alert(2)&gt;\">"
          "<desc>&lt;iframe src=\"javascript:alert(3)\"&gt;</desc><register_set>"
          "<value_register address=\"1\" name=\"&lt;b&gt;R&lt;/b&gt;\"><register_variant name=\"DEFAULT\">"
          "<value_register_field name=\"f\" shift=\"0\" mask=\"1\" desc_short=\"A &amp; B\">"
          "<value_choice access=\"&lt;rw&gt;\"><choice_element value=\"1\" desc_short=\"&lt;em&gt;C &amp; D\"/>"
          "</value_choice></value_register_field><value_register_field name=\"s\" shift=\"1\" mask=\"2\">"
          "<value_signed unit=\"&lt;u&gt;\"/></value_register_field></register_variant></value_register>"
          "</register_set></product_ic>";
    const QString policy = QStringLiteral("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none';");
    const QString scriptPolicy
        = QStringLiteral("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src "
                         "'none'; style-src 'unsafe-inline'; script-src 'sha256-[A-Za-z0-9+/]{43}='; "
                         "img-src data:; base-uri 'none'; form-action 'none'\">");
    // Typeset, each must show as written; run as commands they read a file, run a shell, loop for ever or
    // break the document. A character no font has shows as "?".
    const QByteArray specials
        = "\\input{/etc/hostname} \\write18{touch pwned} \\def\\x{\\x}\\x }{ % $ # ~ ^ \\ _ &amp; \u2603";
    const QString specialsShown = QStringLiteral("\\\\input\\{/etc/hostname\\} \\\\write18\\{touch pwned\\} "
                                                 "\\\\def\\\\x\\{\\\\x\\}\\\\x \\}\\{ % \\$ # ~ \\^ \\\\ _ & \\?");
    const QByteArray icSpecials = "<product_ic name=\"S\"><desc>" + specials
        + "</desc><register_set><value_register address=\"1\" name=\"R\"><register_variant name=\"DEFAULT\">"
          "<value_register_field name=\"f\" shift=\"0\" mask=\"1\" desc_short=\""
        + specials
        + "\"><value_bool access=\"rw\"/></value_register_field></register_variant></value_register>"
          "</register_set></product_ic>";
    // Read as a command, the description would show this machine's name on a line of its own.
    QString hostName = QString::fromLatin1(TestXml::readFile(QStringLiteral("/etc/hostname")).trimmed());
    if (hostName.isEmpty())
        hostName = QStringLiteral("no host name");
    return {
        {"verbose: address beyond 32 bits", registerWith("address=\"0xFFFFFFFFFF\""), {"info", "--verbose", "FILE"}, 0,
            "stderr",
            {audit
                + "3:5: value_register: address \"0xFFFFFFFFFF\" is not a number the parser reads \\(it becomes "
                  "0\\)$"},
            {}},
        {"verbose: negative unsigned address", registerWith("address=\"-5\" size=\"8\""), {"info", "--verbose", "FILE"},
            0, "stderr",
            {audit + "3:5: value_register: address \"-5\" is not a number the parser reads \\(it becomes 0\\)$"},
            {"size"}},
        {"without verbose nothing is said", registerWith("address=\"0xFFFFFFFFFF\""), {"info", "FILE"}, 0, "stderr", {},
            {"\\S"}},
        {"verbose: product code after a blank", esiWith("#x2", " #x00001234"), {"info", "--verbose", "FILE"}, 0,
            "stderr",
            {audit + "6:3: Type: ProductCode \" #x00001234\" is not a number the parser reads \\(it becomes 0\\)$"},
            {"RevisionNo", "Id:"}},
        {"verbose: vendor id on an indented line", esiWith("\n    #x2", "#x1234"), {"info", "--verbose", "FILE"}, 0,
            "stderr", {audit + "3:3: Id: text \"\\\\n    #x2\" is not a number the parser reads \\(it becomes 0\\)$"},
            {"ProductCode"}},
        {"verbose: content after the root element", "<product_ic name=\"A\">\n</product_ic>\n<product_ic/>\n",
            {"info", "--verbose", "FILE"}, 0, "stderr",
            {audit
                + "3:13: content after the root element's end tag is ignored \\(Extra content at end of "
                  "document\\.\\)$"},
            {}},
        // The IC ends at the inner end tag, and the parser stops at the next one: the broken rest goes unread.
        {"verbose: XML that breaks after the product",
            "<product_ic name=\"A\">\n<x><product_ic/></x>\n<y></product_ic>\n", {"info", "--verbose", "FILE"}, 0,
            "stderr", {audit + "3:\\d+: the XML breaks here and the parser ignores the rest \\("}, {"after the root"}},
        {"verbose: field mask above bit 31",
            "<product_ic name=\"A\">\n<register_set name=\"S\">\n<value_register address=\"0x10\" name=\"R\">\n"
            "<register_variant name=\"V\">\n  <value_register_field name=\"F\" shift=\"32\" mask=\"300000000\"/>\n"
            "</register_variant>\n</value_register>\n</register_set>\n</product_ic>\n",
            {"info", "--verbose", "FILE"}, 0, "stderr",
            {audit
                + "5:3: value_register_field: mask \"300000000\" has bits above bit 31 \\(labelled by its low 32 bits "
                  "in "
                  "the register map\\)$"},
            {"shift"}},
        {"verbose: parameter type kept in 8 bits",
            "<product_module>\n<axis_parameters axis=\"0\">\n<axis_parameter type=\"300\" name=\"P\"/>\n"
            "</axis_parameters>\n</product_module>\n",
            {"info", "--verbose", "FILE"}, 0, "stderr",
            {audit + "3:1: axis_parameter: type \"300\" keeps only its low 8 bits \\(it becomes 44\\)$"}, {"axis \""}},
        {"bad byte deep in a long file", longFile, {"info", "FILE"}, 1, "stderr",
            {"^kivtool: \\S*input\\.xml:5003:11: malformed XML: .*encoded"}, {}},
        {"bad first byte", "\xE9<product_ic/>\n", {"info", "FILE"}, 1, "stderr",
            {"^kivtool: \\S*input\\.xml:1:1: malformed XML: .*encoded"}, {}},
        {"encoded surrogate", "<product_ic name=\"A\">\n<desc>a\xED\xA0\x80</desc>\n</product_ic>\n", {"info", "FILE"},
            1, "stderr", {"^kivtool: \\S*input\\.xml:2:8: malformed XML: .*encoded"}, {}},
        {"declared ISO-8859-1",
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<product_ic name=\"A\">\n<desc>caf\xE9</desc>\n"
            "</product_ic>\n",
            {"dump", "--verbose", "FILE"}, 0, "stdout", {QStringLiteral("\nDescription\\[0\\]: caf\u00E9\n")}, {}},
        {"IC texts holding markup", icMarkup, {"html", "FILE", "--plain", "-o", "OUT/page.html"}, 0, "page.html",
            {"<title>&lt;script&gt;alert\\(1\\)&lt;/script&gt;</title>",
                "<h3>&lt;script&gt;alert\\(1\\)&lt;/script&gt;</h3>",
                "Version: &lt;img src=x onerror=alert\\(2\\)&gt;\n",
                "\n&lt;iframe src=&quot;javascript:alert\\(3\\)&quot;&gt;<br>", ">&lt;b&gt;R&lt;/b&gt;</td>",
                "<td>A &amp; B</td>", "access: &lt;rw&gt;\\)", "desc_short: &lt;em&gt;C &amp; D,",
                "unit: \\[&lt;u&gt;\\], access: , options: \\\\x00\\)", "Access:</td>\n<td>RW\\(3\\)", policy},
            {"<(script|img|iframe|b|em|u)[ >]", "&amp;amp;", "\\\\x26", "[\\x00-\\x08\\x0B\\x0C\\x0E-\\x1F]"}},
        {"module texts holding markup",
            "<product_module><name>&lt;script&gt;alert(1)&lt;/script&gt;</name><axis_parameters axis=\"0\">"
            "<axis_parameter type=\"1\" name=\"&lt;img src=x onerror=alert(2)&gt;\"><desc>&lt;iframe&gt; a\\x26b</desc>"
            "</axis_parameter></axis_parameters></product_module>",
            {"html", "FILE", "--plain", "-o", "OUT/page.html"}, 0, "page.html",
            {"<title>&lt;script&gt;alert\\(1\\)&lt;/script&gt;</title>",
                "<td>&lt;img src=x onerror=alert\\(2\\)&gt;</td>", "<td>&lt;iframe&gt; a&amp;b</td>", policy},
            {"<(script|img|iframe)[ >]"}},
        // The reference page carries the texts as JSON, where "<" is \u003c: no text closes its element.
        {"IC texts holding markup, reference page", icMarkup, {"html", "FILE", "-o", "OUT/page.html"}, 0, "page.html",
            {"<title>&lt;script&gt;alert\\(1\\)&lt;/script&gt;</title>", scriptPolicy,
                "\"name\":\"\\\\u003cscript>alert\\(1\\)\\\\u003c/script>\"",
                "\"version\":\"\\\\u003cimg src=x onerror=alert\\(2\\)>\"", "\"name\":\"\\\\u003cb>R\\\\u003c/b>\"",
                "\"descShort\":\"\\\\u003cem>C \\\\\\\\x26 D\""},
            {"<(img|iframe|b|em|u)[ >]", "<script>alert", "</script>[\\s\\S]*</script>[\\s\\S]*</script>"}},
        {"ESI file, reference page", esiHead + "&lt;/script&gt;" + esiTail, {"html", "FILE", "-o", "OUT/page.html"}, 0,
            "page.html", {scriptPolicy, "<body data-kind=\"esi\">", "\"ProductCode\":4660"},
            {"</script>[\\s\\S]*</script>[\\s\\S]*</script>"}},
        {"register description reading a file into the manual",
            "<product_ic name=\"H\"><register_set><value_register address=\"1\" name=\"R\"><register_variant "
            "name=\"DEFAULT\"><value_register_field name=\"f\" shift=\"0\" mask=\"1\" "
            "desc_short=\"\\input{/etc/hostname}\">"
            "<value_unsigned/></value_register_field></register_variant></value_register></register_set></product_ic>",
            {"manual", "FILE", "-o", "OUT", "--pdf"}, 0, "input.pdf",
            {"u1\\(0:0\\)\\s+\\\\input\\{/etc/hostname\\}\\s+Register defaults"},
            {"(?m)^" + QRegularExpression::escape(hostName) + "$"}},
        {"LaTeX specials in IC texts", icSpecials, {"manual", "FILE", "-o", "OUT", "--pdf"}, 0, "input.pdf",
            {"\n" + specialsShown + "\n"}, {}},
        {"file name that reads as an option", "<product_ic name=\"Dash\"/>", {"manual", "FILE", "-o", "OUT", "--pdf"},
            0, "-dash.pdf", {"Dash"}, {}, QStringLiteral("-dash.xml")},
        {"file name pdflatex cannot read", "<product_ic name=\"Percent\"/>", {"manual", "FILE", "-o", "OUT", "--pdf"},
            0, "a_b_c.pdf", {"Percent"}, {}, QStringLiteral("a%b~c.xml")},
        {"vendor name holding format markers", esiHead + "Evil %1 Corp %2" + esiTail, {"info", "FILE"}, 0, "stdout",
            {"\nVendor: +Evil %1 Corp %2 \\(id 2\\)\n", "product code 0x00001234  revision 0x00000010"}, {}},
        {"file name holding format markers", "<product_ic><desc>", {"info", "FILE"}, 1, "stderr",
            {"^kivtool: \\S*bad%2name.xml:1:18: malformed XML: "}, {}, QStringLiteral("bad%2name.xml")},
        {"control characters to a terminal",
            "<product_ic name=\"A\"><desc>\\u001b]0;PWNED\\u0007\\u001b[2J</desc></product_ic>", {"dump", "FILE"}, 0,
            "stdout", {"\\\\x1B\\]0;PWNED\\\\x07\\\\x1B\\[2J"}, {"\x1b", "\x07"}, QStringLiteral("input.xml"), true},
        {"control characters to a file stay the library's bytes",
            "<product_ic name=\"A\"><desc>\\u001b[2J</desc></product_ic>", {"dump", "FILE", "-o", "OUT/dump.txt"}, 0,
            "dump.txt", {"\x1b\\[2J"}, {}},
    };
}

} // namespace

void TestHostile::hostileFiles_data()
{
    QTest::addColumn<int>("row");
    const QList<Row> all = rows();
    for (int index = 0; index < all.size(); ++index)
        QTest::newRow(all.at(index).name) << index;
}

void TestHostile::hostileFiles()
{
    QFETCH(int, row);
    const Row hostile = rows().at(row);
    if (hostile.terminal && QStandardPaths::findExecutable(QStringLiteral("script")).isEmpty())
        QSKIP("script(1) is not installed (util-linux)");
    if (hostile.checked.endsWith(QLatin1String(".pdf"))
        && (QStandardPaths::findExecutable(QStringLiteral("pdflatex")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("pdftotext")).isEmpty()))
        QSKIP("pdflatex or pdftotext is not installed (make test installs both)");
    QTemporaryDir dir;
    const QString input = dir.filePath(hostile.fileName);
    QVERIFY(TestXml::writeFile(input, hostile.content));
    const QString out = dir.filePath(QStringLiteral("out"));
    QVERIFY(QDir().mkpath(out));
    QStringList arguments = hostile.arguments;
    arguments.replaceInStrings(QStringLiteral("FILE"), input);
    arguments.replaceInStrings(QStringLiteral("OUT"), out);

    std::unique_ptr<QProcess> process(start(arguments, hostile.terminal));
    QVERIFY2(process->waitForFinished(120000), "kivtool did not finish in two minutes");
    const QString err = fromUtf8Whole(process->readAllStandardError());
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QVERIFY2(process->exitCode() == hostile.exitCode, qPrintable(err));
    QString checked;
    if (hostile.checked == QLatin1String("stdout"))
        checked = fromUtf8Whole(process->readAllStandardOutput());
    else if (hostile.checked == QLatin1String("stderr"))
        checked = err;
    else if (hostile.checked.endsWith(QLatin1String(".pdf")))
        checked = fromUtf8Whole(textOfPdf(QDir(out).filePath(hostile.checked)));
    else
        checked = fromUtf8Whole(TestXml::readFile(QDir(out).filePath(hostile.checked)));
    for (const QString& pattern : hostile.mustMatch)
        QVERIFY2(QRegularExpression(pattern).match(checked).hasMatch(),
            qPrintable(pattern + QLatin1String(" not in:\n") + checked.left(2000)));
    for (const QString& pattern : hostile.mustNotMatch)
        QVERIFY2(!QRegularExpression(pattern).match(checked).hasMatch(),
            qPrintable(pattern + QLatin1String(" in:\n") + checked.left(2000)));
}

/// The policy's hash is the SHA-256 of the exact script text, the only script the page runs; the model
/// element holds no "<" at all.
void TestHostile::referencePageAllowsItsOwnScript()
{
    QTemporaryDir dir;
    const QString input = dir.filePath(QStringLiteral("input.xml"));
    QVERIFY(TestXml::writeFile(input, "<product_ic name=\"&lt;/script&gt;\"><desc>&lt;!--</desc></product_ic>"));
    const QString out = dir.filePath(QStringLiteral("page.html"));
    QCOMPARE(runKivtool({"html", input, "-o", out}).exitCode, 0);
    const QByteArray page = TestXml::readFile(out);
    const int model = page.indexOf("<script type=\"application/json\" id=\"model\">");
    const int modelEnd = page.indexOf("</script>", model);
    const int script = page.indexOf("<script>", modelEnd);
    const int scriptEnd = page.lastIndexOf("</script>");
    QVERIFY(model > 0 && modelEnd > model && script > modelEnd && scriptEnd > script);
    const QByteArray json = page.mid(model + 44, modelEnd - model - 44);
    QVERIFY2(!json.contains('<'), json.constData());
    QVERIFY(json.contains("\"name\":\"\\u003c/script>\""));
    const QByteArray hash
        = QCryptographicHash::hash(page.mid(script + 8, scriptEnd - script - 8), QCryptographicHash::Sha256).toBase64();
    QVERIFY(page.contains("script-src 'sha256-" + hash + "'"));
    QCOMPARE(page.count("<script"), 2);
}

QTEST_GUILESS_MAIN(TestHostile)
#include "tst_hostile.moc"
