#include "LogCapture.h"
#include "TestXml.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlDictionary.h"
#include "esi/ESIXmlDictionaryObject.h"
#include "esi/ESIXmlGroup.h"
#include "esi/ESIXmlObjectInfo.h"
#include "esi/ESIXmlParser.h"
#include "esi/ESIXmlProfile.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryFile>
#include <QtTest>

// The ESI model and its parser: number readings at their limits, names, skips and the exact debug lines.
// Whole debug texts and JSON are in tst_references, the real files in tst_esisamples.

namespace {

/// Parses `xml` through a temporary file, as callers do with real files. `fileLine` receives the text of
/// the parser's first debug line (its short name and the file object).
std::unique_ptr<XmlEtherCATInfo> parse(const QByteArray& xml, QString* fileLine = nullptr)
{
    QTemporaryFile file;
    if (!file.open())
        return nullptr;
    file.write(xml);
    file.seek(0);
    if (fileLine) {
        fileLine->clear();
        QDebug(fileLine) << "ESIXmlParser::parseInfo()" << static_cast<QFile*>(&file);
        *fileLine = fileLine->trimmed();
    }
    return std::unique_ptr<XmlEtherCATInfo>(ESIXmlParser::parseInfo(&file));
}

const QByteArray smallFile = TestXml::readFile(QStringLiteral(KIVCORE_TEST_DATA_DIR "/reference/inputs/esi-small.xml"));

QByteArray deviceFile(const QByteArray& deviceBody)
{
    return "<EtherCATInfo><Descriptions><Devices><Device>" + deviceBody
        + "</Device></Devices></Descriptions></EtherCATInfo>";
}

const ESIXmlDevice* firstDevice(const XmlEtherCATInfo* info)
{
    if (!info || info->getDescriptions().isEmpty() || info->getDescriptions().first()->getDevices().isEmpty())
        return nullptr;
    return info->getDescriptions().first()->getDevices().first();
}

/// What a parse kept, in one line: "vendor id|first device's type|name|group type", or "null".
QString summary(const XmlEtherCATInfo* info)
{
    if (!info)
        return QStringLiteral("null");
    const ESIXmlDevice* device = firstDevice(info);
    return (info->getVendor() ? info->getVendor()->getId() : QStringLiteral("-")) + QLatin1Char('|')
        + (device ? device->getType() + QLatin1Char('|') + device->getName() + QLatin1Char('|') + device->getGroupType()
                  : QString());
}

} // namespace

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
    void englishName_data();
    void englishName();
    void childText_data();
    void childText();
    void defaultValue_data();
    void defaultValue();
    void log_data();
    void log();
    void largePdoSectionsLeaveNoTrace();
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

void TestEsiModel::englishName_data()
{
    QTest::addColumn<QByteArray>("names");
    QTest::addColumn<QString>("expected");
    QTest::newRow("English among three") << QByteArray(R"(<Name LcId="1031">de</Name><Name LcId="1033">en</Name>)"
                                                       R"(<Name LcId="1036">fr</Name>)")
                                         << "en";
    QTest::newRow("no LcId") << QByteArray(R"(<Name LcId="1031">de</Name><Name>plain</Name>)") << "plain";
    QTest::newRow("last English wins") << QByteArray(R"(<Name>one</Name><Name LcId="1033">two</Name>)") << "two";
    QTest::newRow("no English") << QByteArray(R"(<Name LcId="1031">de</Name><Name LcId="2052">zh</Name>)") << "";
    QTest::newRow("empty LcId is not English") << QByteArray(R"(<Name LcId="">x</Name>)") << "";
    QTest::newRow("attribute name case") << QByteArray(R"(<Name lcid="1031">x</Name>)") << "x";
}

void TestEsiModel::englishName()
{
    QFETCH(QByteArray, names);
    QFETCH(QString, expected);
    LogCapture log;
    const auto info = parse("<EtherCATInfo><Descriptions><Groups><Group>" + names + "</Group></Groups><Devices><Device>"
        + names + "</Device></Devices></Descriptions></EtherCATInfo>");
    QVERIFY(info);
    QCOMPARE(info->getDescriptions().first()->getGroups().first()->getName(), expected);
    QCOMPARE(firstDevice(info.get())->getName(), expected);
}

void TestEsiModel::childText_data()
{
    QTest::addColumn<QByteArray>("vendor");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QByteArray("<Name>V</Name>") << "V";
    QTest::newRow("entity") << QByteArray("<Name>A &amp; B</Name>") << "A & B";
    QTest::newRow("CDATA") << QByteArray("<Name><![CDATA[A&B]]></Name>") << "A&B";
    QTest::newRow("comment first") << QByteArray("<Name><!--c-->V</Name>") << "c";
    QTest::newRow("empty") << QByteArray("<Name/><Comment>x</Comment>") << "";
    QTest::newRow("child element first") << QByteArray("<Name><b>V</b></Name>") << "";
    QTest::newRow("other case") << QByteArray("<name>V</name>") << "";
}

void TestEsiModel::childText()
{
    QFETCH(QByteArray, vendor);
    QFETCH(QString, expected);
    LogCapture log;
    const auto info = parse("<EtherCATInfo><Vendor>" + vendor + "</Vendor></EtherCATInfo>");
    QVERIFY(info);
    QVERIFY(info->getVendor());
    QCOMPARE(info->getVendor()->getName(), expected);
}

void TestEsiModel::defaultValue_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("expected");
    QTest::newRow("hex") << QByteArray("#x00000010") << 16;
    QTest::newRow("low 32 bits kept") << QByteArray("#x123456789") << 0x23456789;
    QTest::newRow("all ones") << QByteArray("#xFFFFFFFF") << -1;
    QTest::newRow("decimal text") << QByteArray("16") << 0;
    QTest::newRow("not a number") << QByteArray("#xZZ") << 0;
    QTest::newRow("too wide for 64 bits") << QByteArray("#x1FFFFFFFFFFFFFFFF") << 0;
}

void TestEsiModel::defaultValue()
{
    QFETCH(QByteArray, text);
    QFETCH(int, expected);
    TestXml::Reader reader("<Info><DefaultValue>" + text + "</DefaultValue></Info>");
    const std::unique_ptr<ESIXmlObjectInfo> info(ESIXmlParser::parseObjectInfo(reader));
    QVERIFY(info);
    QCOMPARE(info->getDefaultValue(), expected);
}

/// What each parse keeps and the exact debug lines it writes after the file line.
void TestEsiModel::log_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("kept"); ///< summary()
    QTest::addColumn<QStringList>("messages");
    const QString device = "ESIXmlParser::parseDevice() parseDevice: \"%1\"";
    const QString root = "ESIXmlParser::parseInfo() ";
    // The root, its end tag included, is consumed by the element parsers: only the file line is written.
    QTest::newRow("small file") << smallFile << "#x000004D2|T1|Dev|" << QStringList();
    QTest::newRow("device: descendants met") << deviceFile(R"(<Slots> <Type ProductCode="#x5">X</Type></Slots>)")
                                             << "-|X||" << QStringList {device.arg("Slots")};
    QTest::newRow("device: token after unknown dropped")
        << deviceFile(R"(<Slots><Type ProductCode="#x5">X</Type></Slots>)") << "-|||"
        << QStringList {device.arg("Slots")};
    QTest::newRow("device: nested unknowns") << deviceFile("<ESC>\n<Reg0400>1</Reg0400></ESC>") << "-|||"
                                             << QStringList {device.arg("ESC"), device.arg("Reg0400")};
    // The inner </Info> ends the skip, so the name inside the outer Info is taken.
    QTest::newRow("device: skips count no nesting")
        << deviceFile("<Name>Right</Name><Info><Info>x</Info><Name>Inner</Name></Info><GroupType>g</GroupType>")
        << "-||Inner|g" << QStringList();
    QTest::newRow("descriptions") << QByteArray("<EtherCATInfo><Descriptions><Modules><Module/></Modules>"
                                                "</Descriptions></EtherCATInfo>")
                                  << "-|"
                                  << QStringList {"ESIXmlParser::parseDescriptions() parseDescriptions: \"Modules\"",
                                         "ESIXmlParser::parseDescriptions() parseDescriptions: \"Module\""};
    QTest::newRow("root") << QByteArray("<EtherCATInfo><InfoReference>a\\b.xml</InfoReference></EtherCATInfo>") << "-|"
                          << QStringList {"ESIXmlParser::parseEtherCATInfo() \"InfoReference\""};
    QTest::newRow("vendor ignores") << QByteArray("<EtherCATInfo><Vendor><URL>u</URL></Vendor></EtherCATInfo>") << "|"
                                    << QStringList();
    QTest::newRow("later root replaces earlier")
        << QByteArray("<Files><EtherCATInfo><Vendor><Id>1</Id></Vendor></EtherCATInfo>"
                      "<EtherCATInfo><Vendor><Id>2</Id></Vendor></EtherCATInfo></Files>")
        << "2|" << QStringList {root + "Unknown root node type! \"Files\"", root + "is EndElement:  \"Files\""};
    QTest::newRow("unknown root gives null")
        << QByteArray("<EtherCATModule>\n<Vendor><Id>5</Id></Vendor></EtherCATModule>") << "null"
        << QStringList {root + "Unknown root node type! \"EtherCATModule\"", root + "is Characters:  \"\\n\"",
               root + "Unknown root node type! \"Vendor\"", root + "Unknown root node type! \"Id\"",
               root + "is Characters:  \"5\"", root + "is EndElement:  \"Id\"", root + "is EndElement:  \"Vendor\"",
               root + "is EndElement:  \"EtherCATModule\""};
}

void TestEsiModel::log()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, kept);
    QFETCH(QStringList, messages);
    LogCapture log;
    QString fileLine;
    const auto info = parse(xml, &fileLine);
    QCOMPARE(summary(info.get()), kept);
    messages.prepend(fileLine);
    QCOMPARE(log.texts(), messages);
}

void TestEsiModel::largePdoSectionsLeaveNoTrace()
{
    QByteArray pdos;
    for (int i = 0; i < 2000; ++i) {
        const QByteArray n = QByteArray::number(i);
        pdos += "<RxPdo><Index>#x16" + n + "</Index><Name>Pdo " + n + "</Name><Entry><Index>#x7000</Index><Name>E" + n
            + "</Name><DataType>UINT</DataType></Entry><Type ProductCode=\"#x1\">Bad</Type></RxPdo>";
        pdos += "<TxPdo><Name>In " + n + "</Name><Profile><ProfileNo>1</ProfileNo></Profile></TxPdo>";
    }
    const QByteArray body = R"(<Type ProductCode="#x10" RevisionNo="#x2">T</Type><Name>Dev</Name>)";
    LogCapture log;
    const auto withPdos = parse(deviceFile(body + pdos + "<Sm>x</Sm><Mailbox><CoE/></Mailbox>"));
    const auto without = parse(deviceFile(body));
    QVERIFY(withPdos);
    QVERIFY(without);
    QCOMPARE(withPdos->toString(), without->toString());
    QCOMPARE(firstDevice(withPdos.get())->getProfiles().size(), 0);
    QCOMPARE(log.matching("parseDevice").size(), 0);
}

QTEST_GUILESS_MAIN(TestEsiModel)
#include "tst_esimodel.moc"
