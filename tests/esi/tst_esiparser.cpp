#include "EsiTest.h"
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

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using EsiTest::lines;

namespace {

const QByteArray smallFile = R"(<?xml version="1.0"?>
<EtherCATInfo>
 <Vendor><Id>#x000004D2</Id><Name>V</Name><Comment>C</Comment><ImageData16x14>0A0B</ImageData16x14></Vendor>
 <Descriptions>
  <Groups><Group><Type>G</Type><Name LcId="1031">Gruppe</Name><Name LcId="1033">Group</Name></Group></Groups>
  <Devices>
   <Device Physics="YY">
    <Type ProductCode="#x00000010" RevisionNo="#x00000002">T1</Type>
    <Name>Dev</Name>
    <Profile><ProfileNo>5001</ProfileNo><Dictionary>
     <DataTypes><DataType><Name>DT</Name><BitSize>16</BitSize>
      <SubItem><SubIdx>1</SubIdx><Name>S</Name><Type>UINT</Type><BitSize>8</BitSize><BitOffs>8</BitOffs><Flags>ro</Flags></SubItem>
     </DataType></DataTypes>
     <Objects><Object><Index>#x1A00</Index><Name>O</Name><Type>DT</Type><BitSize>16</BitSize>
      <Info><DefaultValue>#x00000010</DefaultValue><SubItem><Name>A</Name></SubItem>
       <SubItem><Name>B</Name><Info><DefaultValue>#x5</DefaultValue></Info></SubItem></Info>
      <Flags><Access>ro</Access></Flags></Object></Objects>
    </Dictionary></Profile>
    <RxPdo><Index>#x1600</Index><Name>Out</Name></RxPdo>
   </Device>
  </Devices>
 </Descriptions>
</EtherCATInfo>
)";

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

} // namespace

class TestEsiParser : public QObject
{
    Q_OBJECT
private slots:
    void smallFileDebugText();
    void smallFileJson();
    void smallFileLog();
    void englishName_data();
    void englishName();
    void childText_data();
    void childText();
    void defaultValue_data();
    void defaultValue();
    void unknownChildren_data();
    void unknownChildren();
    void skipCountsNoNesting();
    void truncatedFileGivesNull();
    void largePdoSectionsLeaveNoTrace();
    void laterRootReplacesEarlier();
    void unknownRootGivesNull();
    void exampleFile();
};

void TestEsiParser::smallFileDebugText()
{
    LogCapture log;
    const auto info = EsiTest::parse(smallFile);
    QVERIFY(info);
    const QString expected = "\tEtherCATInfo\n{"
        + lines({"\tVendor", "\t{", "\t\tId: #x000004D2", "\t\tName: V", "\t\tComment: C", "\t}", //
            "\tDescriptions", "\t{", //
            "\t\tGroup", "\t\t{", "\t\t\tType: G", "\t\t\tName: Group", "\t\t}", //
            "\t\tDevice", "\t\t{", "\t\t\tPhysics: YY", "\t\t\tType: T1", "\t\t\tProductCode: #x00000010",
            "\t\t\tRevisionNo: #x00000002", "\t\t\tName: Dev", //
            "\t\t\tProfile", "\t\t\t{", "\t\t\t\tProfileNo: 5001", //
            "\t\t\t\tDictionary", "\t\t\t\t\tDataTypes{", //
            "\t\t\t\t\t\tDataType", "\t\t\t\t\t\t{", "\t\t\t\t\t\t\tName: DT", "\t\t\t\t\t\t\tBitSize: 16",
            "\t\t\t\t\t\t\tSubItem", "\t\t\t\t\t\t\t{", "\t\t\t\t\t\t\t\tName: S", "\t\t\t\t\t\t\t\tType: UINT",
            "\t\t\t\t\t\t\t\tBitSize: 8", "\t\t\t\t\t\t\t\tBitOffs: 8", "\t\t\t\t\t\t\t\tFlags: ro", "\t\t\t\t\t\t\t}",
            "\t\t\t\t\t\t}", //
            "\t\t\t\t}", "\t\t\t\t\tObjects{", //
            "\t\t\t\t\t\tObject", "\t\t\t\t\t\t{", "\t\t\t\t\t\t\tIndex: #x1A00", "\t\t\t\t\t\t\tName: O",
            "\t\t\t\t\t\t\tType: DT", "\t\t\t\t\t\t\tBitSize: 16", //
            "\t\t\t\t\t\t\tInfo", "\t\t\t\t\t\t\t{", "\t\t\t\t\t\t\t\tDefault Value: 16", //
            "\t\t\t\t\t\t\t\tSubItem[0]", "\t\t\t\t\t\t\t\t{", "\t\t\t\t\t\t\t\t\tName: A", "\t\t\t\t\t\t\t\t}",
            "\t\t\t\t\t\t\t\tSubItem[1]", "\t\t\t\t\t\t\t\t{", "\t\t\t\t\t\t\t\t\tName: B", "\t\t\t\t\t\t\t\t}",
            "\t\t\t\t\t\t\t}", "\t\t\t\t\t\t}", //
            "\t\t\t\t}", //
            "\t\t\t}", "\t\t}", "\t}", "}"});
    KIV_COMPARE_TEXT(info->toString(), expected);
}

void TestEsiParser::smallFileJson()
{
    LogCapture log;
    const auto info = EsiTest::parse(smallFile);
    QVERIFY(info);
    QJsonObject json;
    info->toJson(json);
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "VID": 1234, "Icon": "0A0B",
        "EtherCATInfo": [ { "Descriptions": [ {
            "ProductCode": 16, "RevisionNo": 2,
            "Device": [ {
                "ProfileNo": "5001",
                "Dictionary": [ { "Name": "O", "Index": 6656, "BitSize": 16, "DefaultValue": 16, "Info": ["A", "B"] } ],
                "__Dictionary": [ { "Name": "DT", "BitSize": 16,
                    "SubItem": [ { "Name": "S", "Type": "UINT", "BitSize": 8, "BitOffs": 8 } ] } ]
            } ]
        } ] } ]
    })")
                                     .object();
    QVERIFY(!expected.isEmpty());
    QCOMPARE(json, expected);
}

void TestEsiParser::smallFileLog()
{
    LogCapture log;
    QString fileLine;
    const auto info = EsiTest::parse(smallFile, &fileLine);
    QVERIFY(info);
    // The root, its end tag included, is consumed by the element parsers: only the file line is written.
    QCOMPARE(log.texts(), QStringList {fileLine});
}

void TestEsiParser::englishName_data()
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

void TestEsiParser::englishName()
{
    QFETCH(QByteArray, names);
    QFETCH(QString, expected);
    LogCapture log;
    const auto info = EsiTest::parse("<EtherCATInfo><Descriptions><Groups><Group>" + names
        + "</Group></Groups><Devices><Device>" + names + "</Device></Devices></Descriptions></EtherCATInfo>");
    QVERIFY(info);
    QCOMPARE(info->getDescriptions().first()->getGroups().first()->getName(), expected);
    QCOMPARE(firstDevice(info.get())->getName(), expected);
}

void TestEsiParser::childText_data()
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

void TestEsiParser::childText()
{
    QFETCH(QByteArray, vendor);
    QFETCH(QString, expected);
    LogCapture log;
    const auto info = EsiTest::parse("<EtherCATInfo><Vendor>" + vendor + "</Vendor></EtherCATInfo>");
    QVERIFY(info);
    QVERIFY(info->getVendor());
    QCOMPARE(info->getVendor()->getName(), expected);
}

void TestEsiParser::defaultValue_data()
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

void TestEsiParser::defaultValue()
{
    QFETCH(QByteArray, text);
    QFETCH(int, expected);
    TestXml::Reader reader("<Info><DefaultValue>" + text + "</DefaultValue></Info>");
    const std::unique_ptr<ESIXmlObjectInfo> info(ESIXmlParser::parseObjectInfo(reader));
    QVERIFY(info);
    QCOMPARE(info->getDefaultValue(), expected);
}

void TestEsiParser::unknownChildren_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("messages");
    const QString device = "ESIXmlParser::parseDevice() parseDevice: \"%1\"";
    QTest::newRow("device: descendants met") << deviceFile(R"(<Slots> <Type ProductCode="#x5">X</Type></Slots>)") << "X"
                                             << QStringList {device.arg("Slots")};
    QTest::newRow("device: token after unknown dropped")
        << deviceFile(R"(<Slots><Type ProductCode="#x5">X</Type></Slots>)") << "" << QStringList {device.arg("Slots")};
    QTest::newRow("device: nested unknowns") << deviceFile("<ESC>\n<Reg0400>1</Reg0400></ESC>") << ""
                                             << QStringList {device.arg("ESC"), device.arg("Reg0400")};
    QTest::newRow("descriptions") << QByteArray("<EtherCATInfo><Descriptions><Modules><Module/></Modules>"
                                                "</Descriptions></EtherCATInfo>")
                                  << ""
                                  << QStringList {"ESIXmlParser::parseDescriptions() parseDescriptions: \"Modules\"",
                                         "ESIXmlParser::parseDescriptions() parseDescriptions: \"Module\""};
    QTest::newRow("root") << QByteArray("<EtherCATInfo><InfoReference>a\\b.xml</InfoReference></EtherCATInfo>") << ""
                          << QStringList {"ESIXmlParser::parseEtherCATInfo() \"InfoReference\""};
    QTest::newRow("vendor ignores") << QByteArray("<EtherCATInfo><Vendor><URL>u</URL></Vendor></EtherCATInfo>") << ""
                                    << QStringList();
}

void TestEsiParser::unknownChildren()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, type);
    QFETCH(QStringList, messages);
    LogCapture log;
    QString fileLine;
    const auto info = EsiTest::parse(xml, &fileLine);
    QVERIFY(info);
    if (const ESIXmlDevice* device = firstDevice(info.get()))
        QCOMPARE(device->getType(), type);
    messages.prepend(fileLine);
    QCOMPARE(log.texts(), messages);
}

void TestEsiParser::skipCountsNoNesting()
{
    // The inner </Info> ends the skip, so the name inside the outer Info is taken.
    LogCapture log;
    const auto info
        = EsiTest::parse(deviceFile("<Name>Right</Name><Info><Info>x</Info><Name>Inner</Name></Info><GroupType>"
                                    "g</GroupType>"));
    QVERIFY(info);
    QCOMPARE(firstDevice(info.get())->getName(), QString("Inner"));
    QCOMPARE(firstDevice(info.get())->getGroupType(), QString("g"));
}

void TestEsiParser::truncatedFileGivesNull()
{
    // Every cut before the root's end tag is complete: each enclosing parser meets the end of the document
    // and discards what it built (the sanitizer build checks that nothing leaks).
    const int complete = smallFile.indexOf("</EtherCATInfo>") + int(qstrlen("</EtherCATInfo>"));
    LogCapture log;
    for (int size = 0; size < complete; ++size) {
        const auto info = EsiTest::parse(smallFile.left(size));
        if (info)
            QFAIL(qPrintable(QString("a cut after %1 bytes gave a result").arg(size)));
    }
    QVERIFY(EsiTest::parse(smallFile.left(complete)));
}

void TestEsiParser::largePdoSectionsLeaveNoTrace()
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
    const auto withPdos = EsiTest::parse(deviceFile(body + pdos + "<Sm>x</Sm><Mailbox><CoE/></Mailbox>"));
    const auto without = EsiTest::parse(deviceFile(body));
    QVERIFY(withPdos);
    QVERIFY(without);
    QCOMPARE(withPdos->toString(), without->toString());
    QCOMPARE(firstDevice(withPdos.get())->getProfiles().size(), 0);
    QCOMPARE(log.matching("parseDevice").size(), 0);
}

void TestEsiParser::laterRootReplacesEarlier()
{
    LogCapture log;
    QString fileLine;
    const auto info = EsiTest::parse("<Files><EtherCATInfo><Vendor><Id>1</Id></Vendor></EtherCATInfo>"
                                     "<EtherCATInfo><Vendor><Id>2</Id></Vendor></EtherCATInfo></Files>",
        &fileLine);
    QVERIFY(info);
    QCOMPARE(info->getVendor()->id(), 2u);
    QCOMPARE(log.texts(),
        QStringList({fileLine, "ESIXmlParser::parseInfo() Unknown root node type! \"Files\"",
            "ESIXmlParser::parseInfo() is EndElement:  \"Files\""}));
}

void TestEsiParser::unknownRootGivesNull()
{
    LogCapture log;
    QString fileLine;
    const auto info = EsiTest::parse("<EtherCATModule>\n<Vendor><Id>5</Id></Vendor></EtherCATModule>", &fileLine);
    QVERIFY(!info);
    QCOMPARE(log.texts(),
        QStringList({fileLine, "ESIXmlParser::parseInfo() Unknown root node type! \"EtherCATModule\"",
            "ESIXmlParser::parseInfo() is Characters:  \"\\n\"",
            "ESIXmlParser::parseInfo() Unknown root node type! \"Vendor\"",
            "ESIXmlParser::parseInfo() Unknown root node type! \"Id\"",
            "ESIXmlParser::parseInfo() is Characters:  \"5\"", "ESIXmlParser::parseInfo() is EndElement:  \"Id\"",
            "ESIXmlParser::parseInfo() is EndElement:  \"Vendor\"",
            "ESIXmlParser::parseInfo() is EndElement:  \"EtherCATModule\""}));
}

void TestEsiParser::exampleFile()
{
    const QByteArray xml = TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/esi/kiv-vendor-esi.xml"));
    QVERIFY(!xml.isEmpty());
    LogCapture log;
    QString fileLine;
    const auto info = EsiTest::parse(xml, &fileLine);
    QVERIFY(info);
    QCOMPARE(log.texts(), QStringList {fileLine});
    QCOMPARE(info->getVendor()->id(), 0xA7Cu);
    QCOMPARE(info->getVendor()->getName(), QString("Kivotronic Example GmbH"));
    const ESIXmlDescriptions* descriptions = info->getDescriptions().first();
    QCOMPARE(descriptions->getGroups().first()->getName(), QString("Stepper drives"));
    const QList<ESIXmlDevice*>& devices = descriptions->getDevices();
    QCOMPARE(devices.size(), 2);
    QCOMPARE(devices.at(0)->getName(), QString("KIV-1401 Stepper drive, 1 axis"));
    QCOMPARE(devices.at(1)->getName(), QString("KIV-1402 Stepper drive, 2 axes"));
    QCOMPARE(devices.at(1)->getProfiles().size(), 0);
    const ESIXmlDictionary* dictionary = devices.at(0)->getProfiles().first()->getDictionary();
    QCOMPARE(dictionary->getDataTypes().size(), 2);
    QCOMPARE(dictionary->getObjects().size(), 3);

    QJsonObject json;
    info->toJson(json);
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "VID": 2684, "Icon": "424D36030000",
        "EtherCATInfo": [ { "Descriptions": [
            { "ProductCode": 66561, "RevisionNo": 131075, "Device": [ {
                "ProfileNo": "402",
                "Dictionary": [
                    { "Name": "Device type", "Index": 4096, "BitSize": 32, "DefaultValue": 131474, "Info": [] },
                    { "Name": "Identity", "Index": 4120, "BitSize": 144, "DefaultValue": 0,
                      "Info": ["SubIndex 000", "Vendor ID"] },
                    { "Name": "Controlword", "Index": 24640, "BitSize": 16, "DefaultValue": 0, "Info": [] } ],
                "__Dictionary": [
                    { "Name": "UDINT", "BitSize": 32, "SubItem": [] },
                    { "Name": "DT1018", "BitSize": 144, "SubItem": [
                        { "Name": "SubIndex 000", "Type": "USINT", "BitSize": 8, "BitOffs": 0 },
                        { "Name": "Vendor ID", "Type": "UDINT", "BitSize": 32, "BitOffs": 16 } ] } ]
            } ] },
            { "ProductCode": 66562, "RevisionNo": 65536, "Device": [] }
        ] } ]
    })")
                                     .object();
    QVERIFY(!expected.isEmpty());
    QCOMPARE(json, expected);
}

QTEST_GUILESS_MAIN(TestEsiParser)
#include "tst_esiparser.moc"
