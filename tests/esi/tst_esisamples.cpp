#include "EsiTest.h"
#include "LogCapture.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlParser.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"

#include <QDir>
#include <QFile>
#include <QXmlStreamReader>
#include <QtTest>

#include <memory>

namespace {

QString samplesDir()
{
    return QDir::cleanPath(QStringLiteral(KIVCORE_ESI_SAMPLES_DIR));
}

struct ExpectedDevice
{
    QString productCode;
    QString revisionNo;
    QString englishName; ///< the device's own "Name" child with LcId 1033 or none
    bool walksNamedSection = false; ///< it has an unlisted child with "Name" descendants, such as "Slots"
    QString lastWalkedName; ///< the last English "Name" inside such sections
};

struct Expected
{
    QString root;
    QString vendorId;
    QList<ExpectedDevice> devices;
};

bool isEnglish(const QXmlStreamReader& reader)
{
    const QXmlStreamAttributes attributes = reader.attributes();
    return !attributes.hasAttribute("LcId") || attributes.value("LcId") == QLatin1String("1033");
}

// An independent count with a plain reader: the path of open elements tells where each element lies.
Expected readExpected(const QString& path)
{
    Expected expected;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return expected;
    // Children of a device that the parser walks through instead of skipping or parsing.
    static const QStringList listed {"Type", "HideType", "Name", "URL", "Info", "GroupType", "Profile", "Fmmu", "Sm",
        "RxPdo", "TxPdo", "Mailbox", "Dc", "Eeprom", "ImageData16x14"};
    QXmlStreamReader reader(&file);
    QStringList open;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        if (token == QXmlStreamReader::EndElement) {
            open.removeLast();
            continue;
        }
        if (token != QXmlStreamReader::StartElement)
            continue;
        const QString name = reader.name().toString();
        if (open.isEmpty())
            expected.root = name;
        open << name;
        const QString parentPath = open.mid(0, open.size() - 1).join('/');
        if (parentPath == "EtherCATInfo/Vendor" && name == "Id") {
            expected.vendorId = reader.readElementText();
            open.removeLast();
        } else if (parentPath == "EtherCATInfo/Descriptions/Devices" && name == "Device") {
            expected.devices.append(ExpectedDevice());
        } else if (parentPath == "EtherCATInfo/Descriptions/Devices/Device") {
            ExpectedDevice& device = expected.devices.last();
            if (name == "Type") {
                device.productCode = reader.attributes().value("ProductCode").toString();
                device.revisionNo = reader.attributes().value("RevisionNo").toString();
            } else if (name == "Name" && isEnglish(reader)) {
                device.englishName = reader.readElementText();
                open.removeLast();
            }
        } else if (parentPath.startsWith("EtherCATInfo/Descriptions/Devices/Device/") && name == "Name"
            && !listed.contains(open.at(4)) && isEnglish(reader)) {
            ExpectedDevice& device = expected.devices.last();
            device.walksNamedSection = true;
            device.lastWalkedName = reader.readElementText();
            open.removeLast();
        }
    }
    return expected;
}

quint32 hexNumber(const QString& text)
{
    return text.mid(2).toUInt(nullptr, 16);
}

} // namespace

class TestEsiSamples : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void realFile_data();
    void realFile();
};

void TestEsiSamples::initTestCase()
{
    if (!QDir(samplesDir()).exists())
        QSKIP(qPrintable("no ESI samples at " + samplesDir() + "; the real-file checks need that folder"));
}

void TestEsiSamples::realFile_data()
{
    QTest::addColumn<QString>("path");
    const QStringList files = QDir(samplesDir()).entryList({"*.xml"}, QDir::Files, QDir::Name);
    QVERIFY(!files.isEmpty());
    for (const QString& name : files)
        QTest::newRow(qPrintable(name)) << QDir(samplesDir()).filePath(name);
}

void TestEsiSamples::realFile()
{
    QFETCH(QString, path);
    const Expected expected = readExpected(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    LogCapture log;
    const std::unique_ptr<XmlEtherCATInfo> info(ESIXmlParser::parseInfo(&file));

    if (expected.root != "EtherCATInfo") {
        QVERIFY(!info);
        QCOMPARE(log.matching("Unknown root node type!").value(0),
            QString("ESIXmlParser::parseInfo() Unknown root node type! \"%1\"").arg(expected.root));
        return;
    }
    QVERIFY(info);
    QVERIFY(info->getVendor());
    QCOMPARE(info->getVendor()->getId(), expected.vendorId);
    const quint32 vendorId
        = expected.vendorId.startsWith("#x") ? hexNumber(expected.vendorId) : expected.vendorId.toUInt(nullptr, 10);
    QCOMPARE(info->getVendor()->id(), vendorId);

    QList<const ESIXmlDevice*> devices;
    for (const ESIXmlDescriptions* descriptions : info->getDescriptions()) {
        for (const ESIXmlDevice* device : descriptions->getDevices())
            devices << device;
    }
    QCOMPARE(devices.size(), expected.devices.size());
    for (int i = 0; i < devices.size(); ++i) {
        const ESIXmlDevice* device = devices.at(i);
        const ExpectedDevice& want = expected.devices.at(i);
        QCOMPARE(device->getProductCodeText(), want.productCode);
        QCOMPARE(device->getRevisionNoText(), want.revisionNo);
        QVERIFY(want.productCode.startsWith("#x"));
        QCOMPARE(device->getProductCode(), hexNumber(want.productCode));
        // Only "#x" texts are numbers to the getter; decimal revisions (NI9144: "1".."4") lose two digits.
        if (want.revisionNo.startsWith("#x"))
            QCOMPARE(device->getRevisionNo(), hexNumber(want.revisionNo));
        // Unlisted device children such as "Slots" are walked, not skipped: their English names are met
        // after the device's own and replace it.
        QCOMPARE(device->getName(), want.walksNamedSection ? want.lastWalkedName : want.englishName);
    }
}

QTEST_GUILESS_MAIN(TestEsiSamples)
#include "tst_esisamples.moc"
