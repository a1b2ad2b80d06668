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
    return {
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
