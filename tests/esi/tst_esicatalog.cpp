#include "TestXml.h"

#include "esi/EsiCatalog.h"
#include "esi/EsiCatalogReader.h"

#include <QBuffer>
#include <QDir>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Each device as "#position vendor/product/revision type 'T' name 'N' group 'G'/'group name'", one a line.
QString describe(const QVector<EsiDeviceIdentity>& devices)
{
    QStringList lines;
    for (const EsiDeviceIdentity& d : devices)
        lines << QStringLiteral("#%1 %2/%3/%4 type '%5' name '%6' group '%7'/'%8'")
                     .arg(QString::number(d.position), QString::number(d.vendorId, 16),
                         QString::number(d.productCode, 16), QString::number(d.revision, 16), d.type, d.name, d.group,
                         d.groupName);
    return lines.join(QLatin1Char('\n'));
}

QByteArray esi(const QByteArray& devices, const QByteArray& vendorId = "#x00000A7C")
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<EtherCATInfo>\n<Vendor><Id>" + vendorId
        + "</Id><Name>Kivgen Devices</Name></Vendor>\n<Descriptions>\n<Groups><Group><Type>Drv</Type>"
          "<Name LcId=\"1031\">Antriebe</Name><Name LcId=\"1033\">Drives</Name></Group></Groups>\n<Devices>\n"
        + devices + "</Devices>\n</Descriptions>\n</EtherCATInfo>\n";
}

QByteArray device(const QByteArray& product, const QByteArray& revision, const QByteArray& name = "KG drive")
{
    return "<Device><Type ProductCode=\"" + product + "\" RevisionNo=\"" + revision + "\">KG-" + product
        + "</Type><Name LcId=\"1033\">" + name + "</Name><GroupType>Drv</GroupType></Device>\n";
}

/// A scan's counts in one line: found, read, unchanged, removed, not ESI, devices, failures.
QString counts(const EsiScanResult& r)
{
    QStringList numbers;
    for (int n :
        {r.filesFound, r.filesRead, r.filesUnchanged, r.filesRemoved, r.filesNotEsi, r.devices, int(r.failures.size())})
        numbers << QString::number(n);
    return numbers.join(QLatin1Char(' '));
}

/// Moves a file's modification time, so that a rewrite of the same size within a second is still seen.
void touch(const QString& path, int secondsAhead)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(secondsAhead), QFileDevice::FileModificationTime));
}

} // namespace

class TestEsiCatalog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void reader_data();
    void reader();
    void language();
    void numbers_data();
    void numbers();
    void folder();
    void nearest_data();
    void nearest();
    void refusals_data();
    void refusals();
    void locked();
    void cannotOpen();

private:
    QTemporaryDir m_dir;
};

void TestEsiCatalog::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QStandardPaths::setTestModeEnabled(true);
}

void TestEsiCatalog::reader_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("expected"); ///< describe() of the devices, or the error message
    QTest::newRow("hex and decimal") << esi(device(
        "#x0C8E3052", "1179648")) << "#0 a7c/c8e3052/120000 type 'KG-#x0C8E3052' name 'KG drive' group 'Drv'/'Drives'";
    QTest::newRow("decimal vendor above 2^31")
        << esi(device("1", "2"), "3502166480") << "#0 d0bed1d0/1/2 type 'KG-1' name 'KG drive' group 'Drv'/'Drives'";
    QTest::newRow("UTF-8 BOM") << "\xEF\xBB\xBF" + esi(device("#x1", "#x2", "Ger\xC3\xA4t"))
                               << "#0 a7c/1/2 type 'KG-#x1' name 'Gerät' group 'Drv'/'Drives'";
    QByteArray latin1 = esi(device("#x1", "#x2", "Ger\xE4t"));
    latin1.replace("UTF-8", "ISO-8859-1");
    QTest::newRow("Latin-1") << latin1 << "#0 a7c/1/2 type 'KG-#x1' name 'Gerät' group 'Drv'/'Drives'";
    QTest::newRow("German only") << esi("<Device><Type ProductCode=\"#x1\" RevisionNo=\"#x2\">T</Type>"
                                        "<Name LcId=\"1031\">Antrieb</Name><Name LcId=\"2052\">X</Name></Device>")
                                 << "#0 a7c/1/2 type 'T' name 'Antrieb' group ''/''";
    QTest::newRow("slots and nested names")
        << esi("<Device><Type ProductCode=\"#x1\" RevisionNo=\"#x2\">T</Type><Name LcId=\"1033\"><![CDATA[Coupler "
               "&]]> one</Name><Slots><Slot><Name LcId=\"1033\">Slot 1</Name></Slot></Slots>"
               "<Profile><Dictionary><Objects><Object><Name>Obj</Name></Object></Objects></Dictionary></Profile>"
               "<Device><Name>inner</Name></Device></Device>")
        << "#0 a7c/1/2 type 'T' name 'Coupler & one' group ''/''";
    QTest::newRow("absent numbers are 0")
        << esi("<Device><Type>T</Type></Device>" + device("#x5", "#x6"))
        << "#0 a7c/0/0 type 'T' name '' group ''/''\n#1 a7c/5/6 type 'KG-#x5' name 'KG drive' group 'Drv'/'Drives'";
    QTest::newRow("not ESI") << QByteArray("<?xml version=\"1.0\"?>\n<EtherCATModule><Vendor/></EtherCATModule>")
                             << "f.xml:2:16: root element \"EtherCATModule\" is not \"EtherCATInfo\"";
    QTest::newRow("revision above 32 bits")
        << esi(device("#x1", "4294967296"))
        << "f.xml:7:56: revision number \"4294967296\" is not a number (#x hexadecimal or decimal, at most 32 bits)";
    QTest::newRow("bad product code") << esi(device("#xZZ",
        "1")) << "f.xml:7:48: product code \"#xZZ\" is not a number (#x hexadecimal or decimal, at most 32 bits)";
    QTest::newRow("device without type") << esi(device("#x1", "1") + "<Device><Name>x</Name></Device>")
                                         << "f.xml:8:8: device 1 has no \"Type\"";
    QTest::newRow("truncated") << esi(device("#x1", "1")).left(200) << "f.xml:5:67: Premature end of document.";
    QTest::newRow("cut after the root") << esi(device("#x1", "1")) + "<junk>"
                                        << "f.xml:11:6: Extra content at end of document.";
    QTest::newRow("no vendor") << QByteArray("<EtherCATInfo><Descriptions><Devices><Device><Type>T</Type></Device>"
                                             "</Devices></Descriptions></EtherCATInfo>")
                               << "f.xml:1:108: no vendor id (\"Vendor\"/\"Id\")";
}

/// Identities as ESI files mean them; a file that cannot be read whole yields its reason and no device.
void TestEsiCatalog::reader()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, expected);
    QBuffer buffer(&xml);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    EsiCatalogReader reader;
    const bool ok = reader.read(&buffer, QStringLiteral("f.xml"));
    QCOMPARE(ok ? describe(reader.devices()) : reader.errorMessage(), expected);
    QVERIFY(ok || reader.devices().isEmpty());
}

/// The reader's language comes first; without it, English; the vendor's name follows the same order.
void TestEsiCatalog::language()
{
    QByteArray xml = esi("<Device><Type>T</Type><Name LcId=\"1033\">drive</Name><Name LcId=\"1031\">Antrieb</Name>"
                         "<GroupType>Drv</GroupType></Device>");
    QBuffer buffer(&xml);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    EsiCatalogReader german(1031);
    QVERIFY(german.read(&buffer, QStringLiteral("f.xml")));
    QCOMPARE(german.devices().first().name, QStringLiteral("Antrieb"));
    QCOMPARE(german.devices().first().groupName, QStringLiteral("Antriebe"));
    QCOMPARE(german.devices().first().names, QStringList({QStringLiteral("drive"), QStringLiteral("Antrieb")}));
    buffer.seek(0);
    EsiCatalogReader french(1036);
    QVERIFY(french.read(&buffer, QStringLiteral("f.xml")));
    QCOMPARE(french.devices().first().name, QStringLiteral("drive"));
    QCOMPARE(french.devices().first().vendorName, QStringLiteral("Kivgen Devices"));
}

void TestEsiCatalog::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<quint32>("value");
    QTest::newRow("#x") << "#x0C8E3052" << true << 0x0C8E3052u;
    QTest::newRow("#X lower digits") << "#Xff" << true << 0xFFu;
    QTest::newRow("0x") << "0x10" << true << 16u;
    QTest::newRow("decimal") << " 1179648 " << true << 1179648u;
    QTest::newRow("leading zeros") << "#x0000000000000001" << true << 1u;
    QTest::newRow("max") << "4294967295" << true << 0xFFFFFFFFu;
    QTest::newRow("max hex") << "#xFFFFFFFF" << true << 0xFFFFFFFFu;
    QTest::newRow("above") << "#x100000000" << false << 0u;
    QTest::newRow("hex digits without prefix") << "1A" << false << 0u;
    QTest::newRow("sign") << "-1" << false << 0u;
    QTest::newRow("plus") << "+1" << false << 0u;
    QTest::newRow("prefix only") << "#x" << false << 0u;
    QTest::newRow("empty") << "" << false << 0u;
}

void TestEsiCatalog::numbers()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(quint32, value);
    quint32 read = 0;
    QCOMPARE(EsiCatalogReader::parseNumber(text, &read), ok);
    QCOMPARE(read, value);
}

/// A folder with duplicates across files, a broken file in the middle and a foreign XML file; then a
/// touched file is read again alone and a deleted one disappears with its devices.
void TestEsiCatalog::folder()
{
    const QString root = m_dir.filePath(QStringLiteral("folder"));
    QVERIFY(TestXml::writeFile(root + "/a.xml", esi(device("#x10", "#x1") + device("#x11", "#x1"))));
    QVERIFY(TestXml::writeFile(root + "/m/broken.xml", esi(device("#x12", "#x1")).left(150)));
    QVERIFY(TestXml::writeFile(root + "/m/other.xml", "<product_ic/>"));
    QVERIFY(TestXml::writeFile(root + "/z/b.XML", esi(device("#x10", "#x1", "same identity"))));
    QVERIFY(TestXml::writeFile(root + "/z/notes.txt", "not read"));
    EsiCatalog catalog;
    QVERIFY(catalog.open(m_dir.filePath(QStringLiteral("cache/catalog.sqlite"))));
    catalog.setThreadCount(2);
    EsiScanResult result;
    QVERIFY2(catalog.index(root, &result), qPrintable(catalog.errorString()));
    QCOMPARE(counts(result), QStringLiteral("4 4 0 0 1 3 1"));
    const QString canonical = QFileInfo(root).canonicalFilePath();
    QCOMPARE(result.failures.first().file, canonical + "/m/broken.xml");
    QCOMPARE(result.failures.first().reason, QStringLiteral("Premature end of document."));
    QCOMPARE(result.failures.first().line, 5);

    EsiCatalogQuery query;
    query.vendorId = 0xA7C;
    query.productCode = 0x10;
    QVector<EsiDeviceIdentity> found = catalog.find(query);
    QCOMPARE(found.size(), 2);
    QCOMPARE(found.at(0).file, canonical + "/a.xml");
    QCOMPARE(found.at(1).file, canonical + "/z/b.XML");
    QCOMPARE(found.at(1).name, QStringLiteral("same identity"));
    EsiCatalogReader direct;
    QVERIFY(direct.read(canonical + "/a.xml"));
    QCOMPARE(found.at(0), direct.devices().first());
    query = EsiCatalogQuery();
    query.text = QStringLiteral("SAME IDENT");
    QCOMPARE(catalog.find(query).size(), 1);

    // Unchanged: nothing read. Touched: only that file.
    QVERIFY(catalog.index(root, &result));
    QCOMPARE(counts(result), QStringLiteral("4 0 4 0 1 3 1"));
    QVERIFY(result.failures.first().fromEarlierScan);
    QVERIFY(TestXml::writeFile(root + "/z/b.XML", esi(device("#x10", "#x1", "renamed entry"))));
    touch(root + "/z/b.XML", 10);
    QVERIFY(catalog.index(root, &result));
    QCOMPARE(counts(result), QStringLiteral("4 1 3 0 1 3 1"));
    query.text = QStringLiteral("renamed");
    QCOMPARE(catalog.find(query).size(), 1);

    QVERIFY(QFile::remove(root + "/a.xml"));
    QVERIFY(catalog.index(root, &result));
    QCOMPARE(counts(result), QStringLiteral("3 0 3 1 1 1 1"));
    query = EsiCatalogQuery();
    query.vendorId = 0xA7C;
    QCOMPARE(catalog.find(query).size(), 1);
}

void TestEsiCatalog::nearest_data()
{
    QTest::addColumn<quint32>("vendor");
    QTest::addColumn<quint32>("product");
    QTest::addColumn<quint32>("revision");
    QTest::addColumn<QString>("found"); ///< vendor/product/revision of what was found
    QTest::addColumn<bool>("substituted");
    QTest::newRow("exact") << 1u << 10u << 3u << "1/10/3" << false;
    QTest::newRow("highest below") << 1u << 10u << 4u << "1/10/3" << true;
    QTest::newRow("above all") << 1u << 10u << 9u << "1/10/5" << true;
    QTest::newRow("lowest above") << 2u << 10u << 1u << "2/10/4" << true;
    QTest::newRow("own product only") << 1u << 11u << 9u << "1/11/4" << true;
    QTest::newRow("exact under another vendor only") << 1u << 13u << 4u << "" << false;
    QTest::newRow("unknown vendor") << 3u << 10u << 4u << "" << false;
}

/// --nearest stays with the vendor and product asked, even when other ones hold the exact revision.
void TestEsiCatalog::nearest()
{
    QFETCH(quint32, vendor);
    QFETCH(quint32, product);
    QFETCH(quint32, revision);
    QFETCH(QString, found);
    QFETCH(bool, substituted);
    const QString root = m_dir.filePath(QStringLiteral("nearest"));
    if (!QFile::exists(root)) {
        QVERIFY(TestXml::writeFile(
            root + "/v1.xml", esi(device("10", "1") + device("10", "3") + device("10", "5") + device("11", "4"), "1")));
        QVERIFY(TestXml::writeFile(root + "/v2.xml", esi(device("10", "4") + device("13", "4"), "2")));
    }
    EsiCatalog catalog;
    QVERIFY(catalog.open(m_dir.filePath(QStringLiteral("nearest.sqlite"))));
    QVERIFY(catalog.index(root, nullptr));
    EsiCatalogQuery query;
    query.vendorId = vendor;
    query.productCode = product;
    query.revision = revision;
    query.nearest = true;
    bool wasSubstituted = !substituted;
    QStringList ids;
    for (const EsiDeviceIdentity& d : catalog.find(query, &wasSubstituted))
        ids << QString::number(d.vendorId) + '/' + QString::number(d.productCode) + '/' + QString::number(d.revision);
    QCOMPARE(ids.join(' '), found);
    QCOMPARE(wasSubstituted, substituted);
}

void TestEsiCatalog::refusals_data()
{
    QTest::addColumn<QByteArray>("setup"); ///< SQL run on a fresh database first, or the file's bytes
    QTest::addColumn<bool>("isSql");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("message");
    QTest::newRow("another program's database")
        << QByteArray("CREATE TABLE notes(text TEXT)") << true << int(EsiCatalog::Error::NotCatalog)
        << ": not an ESI catalog (another program's database); choose another --db file";
    QTest::newRow("newer") << QByteArray("PRAGMA application_id = 1263097413; PRAGMA user_version = 2") << true
                           << int(EsiCatalog::Error::Newer)
                           << ": written by a newer version (catalog layout 2, this one reads up to 1); use that "
                              "version or another --db file";
    QTest::newRow("not a database") << QByteArray(2048, 'x') << false << int(EsiCatalog::Error::NotCatalog)
                                    << ": not an ESI catalog (not an SQLite database)";
}

/// A database that is not ours, or from a newer version, is refused and left as it was.
void TestEsiCatalog::refusals()
{
    QFETCH(QByteArray, setup);
    QFETCH(bool, isSql);
    QFETCH(int, error);
    QFETCH(QString, message);
    const QString path = m_dir.filePath(QStringLiteral("refusal-") + QTest::currentDataTag() + ".sqlite");
    if (isSql) {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("setup"));
            database.setDatabaseName(path);
            QVERIFY(database.open());
            for (const QByteArray& statement : setup.split(';'))
                QVERIFY(QSqlQuery(database).exec(QString::fromUtf8(statement)));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("setup"));
    } else {
        QVERIFY(TestXml::writeFile(path, setup));
    }
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    file.close();
    EsiCatalog catalog;
    QVERIFY(!catalog.open(path));
    QCOMPARE(int(catalog.error()), error);
    QCOMPARE(catalog.errorString(), path + message);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), bytes);
}

/// A catalog held by another writer: the scan waits for the busy timeout, then says so and writes nothing.
void TestEsiCatalog::locked()
{
    const QString root = m_dir.filePath(QStringLiteral("locked"));
    QVERIFY(TestXml::writeFile(root + "/a.xml", esi(device("#x1", "#x1"))));
    const QString path = m_dir.filePath(QStringLiteral("locked.sqlite"));
    {
        EsiCatalog create;
        QVERIFY(create.open(path));
    }
    {
        QSqlDatabase other = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
        other.setDatabaseName(path);
        QVERIFY(other.open());
        QVERIFY(QSqlQuery(other).exec(QStringLiteral("BEGIN EXCLUSIVE")));
        EsiCatalog catalog;
        catalog.setBusyTimeout(100);
        EsiScanResult result;
        const bool opened = catalog.open(path);
        QVERIFY(!opened || !catalog.index(root, &result));
        QCOMPARE(catalog.error(), EsiCatalog::Error::Locked);
        QCOMPARE(catalog.errorString(),
            path
                + QStringLiteral(": the database is locked by another program (waited 100 ms); try again when it is "
                                 "done"));
        QVERIFY(QSqlQuery(other).exec(QStringLiteral("ROLLBACK")));
        other.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("other"));
    EsiCatalog catalog;
    QVERIFY(catalog.open(path));
    QVERIFY(catalog.find(EsiCatalogQuery()).isEmpty());
    QVERIFY(catalog.index(root, nullptr));
    QCOMPARE(catalog.find(EsiCatalogQuery()).size(), 1);
}

/// A path the database cannot open (a folder): the message names the path and the database's reason.
void TestEsiCatalog::cannotOpen()
{
    EsiCatalog catalog;
    QVERIFY(!catalog.open(m_dir.path()));
    QCOMPARE(catalog.error(), EsiCatalog::Error::CannotOpen);
    QVERIFY2(catalog.errorString().startsWith(m_dir.path() + QStringLiteral(": ")), qPrintable(catalog.errorString()));
}

QTEST_GUILESS_MAIN(TestEsiCatalog)
#include "tst_esicatalog.moc"
