#include "LogCapture.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlParser.h"
#include "esi/ESIXmlVendor.h"
#include "esi/EsiCatalogReader.h"
#include "esi/XmlEtherCATInfo.h"

#include <QDir>
#include <QDomDocument>
#include <QFile>
#include <QtTest>

#include <memory>

// The real ESI files of ../shared/esi-samples, read by the model and by the catalog reader, against an
// independent reading of each file with a DOM.

namespace {

/// What the model keeps of a device: the raw number texts and the last English name it meets.
struct ModelDevice
{
    QString productCode;
    QString revisionNo;
    QString name;
};

struct Reference
{
    QString root;
    QString vendorId; ///< the "Vendor"/"Id" text as written
    QVector<EsiDeviceIdentity> devices; ///< what the catalog must list
    QVector<ModelDevice> model;
};

/// "#x" hexadecimal or decimal, as the catalog reads ESI numbers.
quint32 referenceNumber(QString text)
{
    text = text.trimmed();
    return quint32(text.startsWith(QLatin1String("#x")) ? text.mid(2).toULongLong(nullptr, 16) : text.toULongLong());
}

QList<QDomElement> children(const QDomElement& parent, const QString& name = QString())
{
    QList<QDomElement> list;
    for (QDomElement child = parent.firstChildElement(name); !child.isNull(); child = child.nextSiblingElement(name))
        list << child;
    return list;
}

bool isEnglish(const QDomElement& name)
{
    return !name.hasAttribute(QStringLiteral("LcId"))
        || name.attribute(QStringLiteral("LcId")) == QLatin1String("1033");
}

/// The catalog's name: 1033, then no LcId, then the first one.
QString catalogName(const QDomElement& owner, QStringList* all = nullptr)
{
    QString english, unmarked, first;
    bool hasEnglish = false, hasUnmarked = false;
    for (const QDomElement& name : children(owner, QStringLiteral("Name"))) {
        const QString text = name.text().trimmed();
        if (all)
            *all << text;
        if (first.isNull())
            first = text;
        if (name.attribute(QStringLiteral("LcId")) == QLatin1String("1033") && !hasEnglish) {
            english = text;
            hasEnglish = true;
        }
        if (!name.hasAttribute(QStringLiteral("LcId")) && !hasUnmarked) {
            unmarked = text;
            hasUnmarked = true;
        }
    }
    return hasEnglish ? english : hasUnmarked ? unmarked : first;
}

/// The model's name: the device's children that it neither parses nor skips are walked, so English names
/// inside them (such as "Slots") are met too; the last one met wins.
QString modelName(const QDomElement& device)
{
    static const QStringList listed {"Type", "HideType", "Name", "URL", "Info", "GroupType", "Profile", "Fmmu", "Sm",
        "RxPdo", "TxPdo", "Mailbox", "Dc", "Eeprom", "ImageData16x14"};
    QString name;
    for (const QDomElement& child : children(device)) {
        if (child.tagName() == QLatin1String("Name") && isEnglish(child))
            name = child.text();
        if (listed.contains(child.tagName()))
            continue;
        const QDomNodeList inner = child.elementsByTagName(QStringLiteral("Name"));
        for (int i = 0; i < inner.size(); ++i) {
            if (isEnglish(inner.at(i).toElement()))
                name = inner.at(i).toElement().text();
        }
    }
    return name;
}

Reference readReference(const QString& path)
{
    Reference reference;
    QFile file(path);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file))
        return reference;
    const QDomElement root = document.documentElement();
    reference.root = root.tagName();
    const QDomElement vendor = root.firstChildElement(QStringLiteral("Vendor"));
    reference.vendorId = vendor.firstChildElement(QStringLiteral("Id")).text();
    const quint32 vendorId = referenceNumber(reference.vendorId);
    QHash<QString, QString> groups;
    for (const QDomElement& descriptions : children(root, QStringLiteral("Descriptions"))) {
        for (const QDomElement& group :
            children(descriptions.firstChildElement(QStringLiteral("Groups")), QStringLiteral("Group"))) {
            const QString type = group.firstChildElement(QStringLiteral("Type")).text().trimmed();
            if (!groups.contains(type))
                groups.insert(type, catalogName(group));
        }
        for (const QDomElement& element :
            children(descriptions.firstChildElement(QStringLiteral("Devices")), QStringLiteral("Device"))) {
            EsiDeviceIdentity device;
            device.vendorId = vendorId;
            device.vendorName = catalogName(vendor);
            const QDomElement type = element.firstChildElement(QStringLiteral("Type"));
            device.productCode = referenceNumber(type.attribute(QStringLiteral("ProductCode")));
            device.revision = referenceNumber(type.attribute(QStringLiteral("RevisionNo")));
            device.type = type.text().trimmed();
            device.name = catalogName(element, &device.names);
            device.group = element.firstChildElement(QStringLiteral("GroupType")).text().trimmed();
            device.file = path;
            device.position = reference.devices.size();
            reference.devices << device;
            reference.model << ModelDevice {type.attribute(QStringLiteral("ProductCode")),
                type.attribute(QStringLiteral("RevisionNo")), modelName(element)};
        }
    }
    for (EsiDeviceIdentity& device : reference.devices)
        device.groupName = groups.value(device.group);
    return reference;
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
    if (!QDir(QStringLiteral(KIVCORE_ESI_SAMPLES_DIR)).exists())
        QSKIP("no ESI samples at " KIVCORE_ESI_SAMPLES_DIR "; the real-file checks need that folder");
}

void TestEsiSamples::realFile_data()
{
    QTest::addColumn<QString>("path");
    const QDir dir(QStringLiteral(KIVCORE_ESI_SAMPLES_DIR));
    const QStringList files = dir.entryList({"*.xml"}, QDir::Files, QDir::Name);
    QVERIFY(!files.isEmpty());
    for (const QString& name : files)
        QTest::newRow(qPrintable(name)) << dir.filePath(name);
}

void TestEsiSamples::realFile()
{
    QFETCH(QString, path);
    const Reference expected = readReference(path);
    EsiCatalogReader reader;
    const bool read = reader.read(path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    LogCapture log;
    const std::unique_ptr<XmlEtherCATInfo> info(ESIXmlParser::parseInfo(&file));

    if (expected.root != "EtherCATInfo") {
        QVERIFY(!read);
        QCOMPARE(reader.status(), EsiCatalogReader::Status::NotEsi);
        QVERIFY(reader.devices().isEmpty());
        QVERIFY(!info);
        QCOMPARE(log.matching("Unknown root node type!").value(0),
            "ESIXmlParser::parseInfo() Unknown root node type! \"" + expected.root + '"');
        return;
    }
    QVERIFY2(read, qPrintable(reader.errorMessage()));
    QVERIFY(!expected.devices.isEmpty());
    QCOMPARE(reader.devices(), expected.devices);

    QVERIFY(info && info->getVendor());
    QCOMPARE(info->getVendor()->getId(), expected.vendorId);
    QCOMPARE(info->getVendor()->id(), expected.devices.first().vendorId);
    QList<ESIXmlDevice*> devices;
    for (const ESIXmlDescriptions* descriptions : info->getDescriptions())
        devices << descriptions->getDevices();
    QCOMPARE(devices.size(), expected.model.size());
    for (int i = 0; i < devices.size(); ++i) {
        const ModelDevice& want = expected.model.at(i);
        QCOMPARE(devices.at(i)->getProductCodeText(), want.productCode);
        QCOMPARE(devices.at(i)->getRevisionNoText(), want.revisionNo);
        // Only "#x" texts are numbers to the model; decimal revisions (read otherwise) are in tst_esimodel.
        if (want.productCode.startsWith("#x"))
            QCOMPARE(devices.at(i)->getProductCode(), expected.devices.at(i).productCode);
        if (want.revisionNo.startsWith("#x"))
            QCOMPARE(devices.at(i)->getRevisionNo(), expected.devices.at(i).revision);
        QCOMPARE(devices.at(i)->getName(), want.name);
    }
}

QTEST_GUILESS_MAIN(TestEsiSamples)
#include "tst_esisamples.moc"
