#include "TestXml.h"

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

QString utf8(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

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
        {"IC texts holding markup", icMarkup, {"html", "FILE", "-o", "OUT/page.html"}, 0, "page.html",
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
            {"html", "FILE", "-o", "OUT/page.html"}, 0, "page.html",
            {"<title>&lt;script&gt;alert\\(1\\)&lt;/script&gt;</title>",
                "<td>&lt;img src=x onerror=alert\\(2\\)&gt;</td>", "<td>&lt;iframe&gt; a&amp;b</td>", policy},
            {"<(script|img|iframe)[ >]"}},
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
    QFile file(input);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(hostile.content);
    file.close();
    const QString out = dir.filePath(QStringLiteral("out"));
    QVERIFY(QDir().mkpath(out));
    QStringList arguments = hostile.arguments;
    arguments.replaceInStrings(QStringLiteral("FILE"), input);
    arguments.replaceInStrings(QStringLiteral("OUT"), out);

    std::unique_ptr<QProcess> process(start(arguments, hostile.terminal));
    QVERIFY2(process->waitForFinished(120000), "kivtool did not finish in two minutes");
    const QString err = utf8(process->readAllStandardError());
    QCOMPARE(process->exitStatus(), QProcess::NormalExit);
    QVERIFY2(process->exitCode() == hostile.exitCode, qPrintable(err));
    QString checked;
    if (hostile.checked == QLatin1String("stdout"))
        checked = utf8(process->readAllStandardOutput());
    else if (hostile.checked == QLatin1String("stderr"))
        checked = err;
    else if (hostile.checked.endsWith(QLatin1String(".pdf")))
        checked = utf8(textOfPdf(QDir(out).filePath(hostile.checked)));
    else
        checked = utf8(TestXml::readFile(QDir(out).filePath(hostile.checked)));
    for (const QString& pattern : hostile.mustMatch)
        QVERIFY2(QRegularExpression(pattern).match(checked).hasMatch(),
            qPrintable(pattern + QLatin1String(" not in:\n") + checked.left(2000)));
    for (const QString& pattern : hostile.mustNotMatch)
        QVERIFY2(!QRegularExpression(pattern).match(checked).hasMatch(),
            qPrintable(pattern + QLatin1String(" in:\n") + checked.left(2000)));
}

QTEST_GUILESS_MAIN(TestHostile)
#include "tst_hostile.moc"
