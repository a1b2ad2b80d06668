#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlDictionary.h"
#include "esi/ESIXmlDictionaryObject.h"
#include "esi/ESIXmlObjectInfo.h"
#include "esi/ESIXmlProfile.h"
#include "esi/ESIXmlSubItem.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

class TestEsiModel : public QObject
{
    Q_OBJECT
private slots:
    void vendorId_data();
    void vendorId();
    void productCodeAndRevision_data();
    void productCodeAndRevision();
    void objectIndex_data();
    void objectIndex();
    void infoWithoutVendor();
    void nullDescriptionsPrintNull();
    void replacingSettersFreeTheOldChild();
};

void TestEsiModel::vendorId_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("expected");
    QTest::newRow("decimal") << "1234" << 1234u;
    QTest::newRow("hex") << "#x000004D2" << 1234u;
    QTest::newRow("zero drops two characters") << "0" << 0u;
    QTest::newRow("leading zero is not decimal") << "0100" << 0u; // "00" read as hex
    QTest::newRow("above int32") << "3502166480" << 3502166480u;
    QTest::newRow("hex above int32") << "#xD0BE0CD0" << 0xD0BE0CD0u;
    QTest::newRow("lower-case hex") << "#x00000b95" << 0xb95u;
    QTest::newRow("too wide for 32 bits") << "4294967296" << 0u;
    QTest::newRow("empty") << "" << 0u;
    QTest::newRow("prefix not checked") << "0x10" << 16u;
}

void TestEsiModel::vendorId()
{
    QFETCH(QString, text);
    QFETCH(quint32, expected);
    ESIXmlVendor vendor;
    vendor.setId(text);
    QCOMPARE(vendor.id(), expected);
    QJsonObject json;
    vendor.toJson(json);
    QCOMPARE(json.value("VID").toDouble(), double(expected));
}

void TestEsiModel::productCodeAndRevision_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint32>("expected");
    QTest::newRow("hex") << "#x00010401" << 0x10401u;
    QTest::newRow("all bits") << "#xFFFFFFFF" << 0xFFFFFFFFu;
    QTest::newRow("one decimal digit") << "1" << 0u;
    QTest::newRow("decimal keeps tail as hex") << "123" << 3u;
    QTest::newRow("empty") << "" << 0u;
    QTest::newRow("not hex") << "#xG1" << 0u;
}

void TestEsiModel::productCodeAndRevision()
{
    QFETCH(QString, text);
    QFETCH(quint32, expected);
    ESIXmlDevice device;
    device.setProductCode(text);
    device.setRevisionNo(text);
    QCOMPARE(device.getProductCode(), expected);
    QCOMPARE(device.getRevisionNo(), expected);
    QCOMPARE(device.getProductCodeText(), text);
    QJsonObject json;
    device.toJson(json);
    QCOMPARE(json.value("ProductCode").toDouble(), double(expected));
    QCOMPARE(json.value("RevisionNo").toDouble(), double(expected));
}

void TestEsiModel::objectIndex_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("hex") << "#x1A00" << 6656;
    QTest::newRow("only four digits") << "#x1A0012" << 6656;
    QTest::newRow("short") << "#x10" << 16;
    QTest::newRow("decimal") << "4096" << 150; // "96" read as hex
    QTest::newRow("empty") << "" << 0;
}

void TestEsiModel::objectIndex()
{
    QFETCH(QString, text);
    QFETCH(int, expected);
    ESIXmlDictionaryObject object;
    object.setIndex(text);
    QCOMPARE(object.getIndex(), expected);
    QJsonObject json;
    object.toJson(json);
    QCOMPARE(json.value("Index").toInt(-1), expected);
}

void TestEsiModel::infoWithoutVendor()
{
    XmlEtherCATInfo info;
    info.appendDescriptions(new ESIXmlDescriptions);
    QCOMPARE(info.toString(), QString("\tEtherCATInfo\n{\n\tNULL\n\tDescriptions\n\t{\n\t}\n}"));
    QJsonObject json;
    info.toJson(json);
    const QJsonObject expected {{"EtherCATInfo", QJsonArray {QJsonObject {{"Descriptions", QJsonArray()}}}}};
    QCOMPARE(json, expected);
}

void TestEsiModel::nullDescriptionsPrintNull()
{
    XmlEtherCATInfo info;
    auto* vendor = new ESIXmlVendor;
    vendor->setId("2");
    vendor->setImageData16x14("0A0B");
    info.setVendor(vendor);
    info.appendDescriptions(nullptr);
    QCOMPARE(info.toString(),
        QString("\tEtherCATInfo\n{\n\tVendor\n\t{\n\t\tId: 2\n\t\tName: \n\t\tComment: \n\t}\n\tNULL\n}"));
    QJsonObject json;
    info.toJson(json);
    QCOMPARE(json, (QJsonObject {{"EtherCATInfo", QJsonArray()}, {"VID", 2}, {"Icon", "0A0B"}}));
}

void TestEsiModel::replacingSettersFreeTheOldChild()
{
    // Leak-free under the sanitizers only when each setter frees what it replaces.
    XmlEtherCATInfo info;
    info.setVendor(new ESIXmlVendor);
    info.setVendor(new ESIXmlVendor);
    info.setVendor(info.getVendor());
    info.setDescriptions({new ESIXmlDescriptions});
    info.setDescriptions({new ESIXmlDescriptions, new ESIXmlDescriptions});
    QCOMPARE(info.getDescriptions().size(), 2);
    ESIXmlProfile profile;
    profile.setDictionary(new ESIXmlDictionary);
    profile.setDictionary(new ESIXmlDictionary);
    ESIXmlDictionaryObject object;
    object.setInfo(new ESIXmlObjectInfo);
    object.setInfo(new ESIXmlObjectInfo);
    QVERIFY(object.getInfo());
}

QTEST_GUILESS_MAIN(TestEsiModel)
#include "tst_esimodel.moc"
