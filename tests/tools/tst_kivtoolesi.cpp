// kivtool esi index|find|list and json --device, run as users run them: exit status, stdout, stderr.

#include "KivtoolRun.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

namespace {

using Run = KivtoolRun;
Run kivtool(const QStringList& arguments)
{
    return runKivtool(arguments);
}

QByteArray device(const char* product, const char* revision, const char* name)
{
    return QByteArray("<Device><Type ProductCode=\"") + product + "\" RevisionNo=\"" + revision + "\">T-" + product
        + "</Type><Name LcId=\"1033\">" + name + "</Name><GroupType>G</GroupType></Device>";
}

QByteArray esi(const QByteArray& devices)
{
    return "<EtherCATInfo><Vendor><Id>2</Id><Name>Maker</Name></Vendor><Descriptions><Devices>" + devices
        + "</Devices></Descriptions></EtherCATInfo>\n";
}

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

class TestKivtoolEsi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void exitCodes_data();
    void exitCodes();
    void findJson();
    void findText();
    void jsonDevice();

private:
    QTemporaryDir m_dir;
    QString m_folder;
    QString m_db;
};

void TestKivtoolEsi::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_folder = QDir(m_dir.path()).canonicalPath() + QStringLiteral("/esi");
    m_db = m_dir.filePath(QStringLiteral("catalog.sqlite"));
    QVERIFY(writeFile(m_folder + "/a.xml",
        esi(device("#x0C8E3052", "#x00100000", "Input 1") + device("#x0C8E3052", "#x00130000", "Input 3"))));
    QVERIFY(writeFile(m_folder + "/b c.xml", esi(device("#x0C8E3052", "#x00120000", "Input 2"))));
    const Run run = kivtool({"esi", "index", m_folder, "--db", m_db});
    QCOMPARE(run.err, QString());
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.out.startsWith("catalog: " + m_db
                 + "\nfiles: 2 (read 2, unchanged 0, removed 0, not ESI 0)\n"
                   "devices: 3\nread: "),
        qPrintable(run.out));
    QVERIFY(run.out.endsWith(" MB/s)\nfailures: 0\n"));
}

void TestKivtoolEsi::exitCodes_data()
{
    QTest::addColumn<QStringList>("arguments"); ///< DB and DIR stand for the test's catalog and folder
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("err"); ///< the start of stderr
    QTest::newRow("no subcommand") << QStringList {"esi"} << 2 << "kivtool: esi needs a subcommand";
    QTest::newRow("unknown subcommand") << QStringList {"esi", "sort"} << 2 << "kivtool: no esi subcommand \"sort\"";
    QTest::newRow("index without folder")
        << QStringList {"esi", "index", "--db", "DB"} << 2 << "kivtool: esi index needs a folder";
    QTest::newRow("option of another subcommand")
        << QStringList {"esi", "list", "--nearest", "--db", "DB"} << 2 << "kivtool: esi list has no option --nearest";
    QTest::newRow("bad number") << QStringList {"esi", "find", "--vendor", "two", "--db", "DB"} << 2
                                << "kivtool: --vendor needs a number";
    QTest::newRow("nearest without revision") << QStringList {"esi", "find", "--vendor", "2", "--product", "1",
        "--nearest", "--db", "DB"} << 2 << "kivtool: --nearest needs --vendor, --product and --revision";
    QTest::newRow("no match") << QStringList {"esi", "find", "--vendor", "3", "--db", "DB"} << 1
                              << "kivtool: no device matches";
    QTest::newRow("missing catalog") << QStringList {"esi", "list", "--db", "DIR/none.sqlite"} << 2
                                     << "kivtool: DIR/none.sqlite: no ESI catalog there";
    QTest::newRow("not a catalog") << QStringList {"esi", "list", "--db", "DIR/a.xml"} << 2
                                   << "kivtool: DIR/a.xml: not an ESI catalog";
    QTest::newRow("folder missing") << QStringList {"esi", "index", "DIR/none", "--db", "DB"} << 2
                                    << "kivtool: DIR/none: no such folder";
    QTest::newRow("json device out of range") << QStringList {"json", "DIR/a.xml", "--device", "2"} << 1
                                              << "kivtool: DIR/a.xml: no device 2 (the file has 2 devices, from 0)";
    QTest::newRow("json device not a number")
        << QStringList {"json", "DIR/a.xml", "--device", "x"} << 2 << "kivtool: --device needs a position";
}

void TestKivtoolEsi::exitCodes()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QString, err);
    for (QString& argument : arguments)
        argument.replace(QLatin1String("DB"), m_db).replace(QLatin1String("DIR"), m_folder);
    err.replace(QLatin1String("DIR"), m_folder);
    const Run run = kivtool(arguments);
    QCOMPARE(run.exitCode, exitCode);
    QVERIFY2(run.err.startsWith(err), qPrintable(run.err));
}

/// --json: one object per device with numbers as numbers; --nearest says on stderr what it took.
void TestKivtoolEsi::findJson()
{
    const Run run = kivtool({"esi", "find", "--db", m_db, "--vendor", "#x2", "--product", "0x0C8E3052", "--revision",
        "1179649", "--nearest", "--json"});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.err, QStringLiteral("kivtool: no revision 0x00120001; nearest: 0x00120000 (the highest below)\n"));
    const QJsonArray array = QJsonDocument::fromJson(run.out.toUtf8()).array();
    QCOMPARE(array.size(), 1);
    const QJsonObject expected {{"vendorId", 2}, {"vendorName", "Maker"}, {"productCode", 0x0C8E3052},
        {"revision", 0x00120000}, {"type", "T-#x0C8E3052"}, {"name", "Input 2"}, {"names", QJsonArray {"Input 2"}},
        {"group", "G"}, {"groupName", ""}, {"file", m_folder + "/b c.xml"}, {"position", 0}, {"nearest", true}};
    QCOMPARE(array.first().toObject(), expected);

    const Run list = kivtool({"esi", "list", "--db", m_db, "--vendor", "2", "--json"});
    QCOMPARE(list.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(list.out.toUtf8()).array().size(), 3);
}

/// The text form names the file and position so that the device can be shown whole.
void TestKivtoolEsi::findText()
{
    const Run run = kivtool({"esi", "find", "--db", m_db, "--name", "input 2"});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.out,
        "0x00000002 0x0C8E3052 0x00120000  T-#x0C8E3052  Input 2  [G]\n    kivtool json '" + m_folder
            + "/b c.xml' --device 0\n");
}

/// json --device N writes that device alone, in the envelope of the whole file's export.
void TestKivtoolEsi::jsonDevice()
{
    const Run run = kivtool({"json", m_folder + "/a.xml", "--device", "1"});
    QCOMPARE(run.exitCode, 0);
    const QJsonObject json = QJsonDocument::fromJson(run.out.toUtf8()).object();
    QCOMPARE(json.value("VID").toInt(), 2);
    const QJsonArray devices = json.value("EtherCATInfo").toArray().first().toObject().value("Descriptions").toArray();
    QCOMPARE(devices.size(), 1);
    QCOMPARE(devices.first().toObject().value("RevisionNo").toInt(), 0x00130000);
}

QTEST_GUILESS_MAIN(TestKivtoolEsi)
#include "tst_kivtoolesi.moc"
