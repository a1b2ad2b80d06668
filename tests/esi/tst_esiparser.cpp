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

} // namespace

class TestEsiParser : public QObject
{
    Q_OBJECT
private slots:
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
    void largePdoSectionsLeaveNoTrace();
    void laterRootReplacesEarlier();
    void unknownRootGivesNull();
};

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

QTEST_GUILESS_MAIN(TestEsiParser)
#include "tst_esiparser.moc"
