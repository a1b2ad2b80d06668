#include "IcTest.h"
#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlPin.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "ic/XmlPins.h"
#include "product/KIVXmlParser.h"

#include <QtTest>

#include <memory>

class TestPins : public QObject
{
    Q_OBJECT
private slots:
    void packaging_data();
    void packaging();
    void pinDefaults();
    void statesSlip();
    void debugText();
    void html();
    void pinMap();
    void unknownAndTruncated();
};

void TestPins::packaging_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("packaging");
    QTest::newRow("absent") << QByteArray("<pins/>") << "TQFP";
    QTest::newRow("empty") << QByteArray("<pins packaging=\"\"/>") << "";
    QTest::newRow("given") << QByteArray("<pins packaging=\"QFN36\"/>") << "QFN36";
}

void TestPins::packaging()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, packaging);
    TestXml::Reader reader(xml);
    std::unique_ptr<XmlPins> pins(KIVXmlParser::parsePins(reader));
    QVERIFY(pins);
    QCOMPARE(pins->getPackaging(), packaging);
}

void TestPins::pinDefaults()
{
    TestXml::Reader reader("<pin id=\"7\"/>");
    std::unique_ptr<XmlPin> pin(KIVXmlParser::parsePin(reader));
    QVERIFY(pin);
    QCOMPARE(pin->getId(), 7u);
    QCOMPARE(pin->getDescriptionLow(), QStringLiteral("low"));
    QCOMPARE(pin->getDescriptionHigh(), QStringLiteral("high"));
    QCOMPARE(pin->getDescriptionFloating(), QStringLiteral("floating"));
    QCOMPARE(pin->getDefaultState(), QStringLiteral("floating"));
    TestXml::Reader emptyReader("<pin id=\"0x1\" desc_low=\"\" desc_long=\"long\" default_state=\"high\"/>");
    std::unique_ptr<XmlPin> other(KIVXmlParser::parsePin(emptyReader));
    QVERIFY(other);
    QCOMPARE(other->getId(), 0u); // base 10
    QCOMPARE(other->getDescriptionLow(), QString());
    QCOMPARE(other->getDefaultState(), QStringLiteral("high"));
    QCOMPARE(other->getDescription(), QStringLiteral("long"));
    QCOMPARE(other->getStringFromValue(171), QStringLiteral("AB"));
}

void TestPins::statesSlip()
{
    TestXml::Reader reader(
        "<pin_group id=\"2\" name=\"n\" description=\"d\" states=\"on off\" desc_states=\"lit dark\"/>");
    std::unique_ptr<XmlPinGroup> group(KIVXmlParser::parsePinGroup(reader));
    QVERIFY(group);
    QCOMPARE(group->getStates(), QStringLiteral("lit dark"));
    QCOMPARE(group->getDescStates(), QString());
    TestXml::Reader only("<pin_group states=\"on off\"/>");
    std::unique_ptr<XmlPinGroup> second(KIVXmlParser::parsePinGroup(only));
    QCOMPARE(second->getStates(), QStringLiteral("on off"));
}

static const QByteArray kPins = "<pins packaging=\"QFN\"><pin_group id=\"1\" name=\"Power\" description=\"d\" "
                                "states=\"s\"><pin id=\"3\" type=\"power\" name=\"VS\" desc_short=\"a\" "
                                "desc_long=\"b\"/></pin_group></pins>";

void TestPins::debugText()
{
    TestXml::Reader reader(kPins);
    std::unique_ptr<XmlPins> pins(KIVXmlParser::parsePins(reader));
    QVERIFY(pins);
    KIV_COMPARE_TEXT(pins->toString(QString()),
        QStringLiteral(
            "\tXmlPins(packaging: QFN)\n\t{\n\t\tXmlPinGroup(id: 1, name: Power, description: d, states: s, "
            "desc_states: )\n\t\t{\n\t\t\tXmlPin(id: 3, type: power, name: VS, desc_short: a, desc_long: b, "
            "desc_low: low, desc_high: high, desc_floating: floating, default_state: floating)\n\t\t}\n\t}"));
}

void TestPins::html()
{
    TestXml::Reader reader(kPins);
    std::unique_ptr<XmlPins> pins(KIVXmlParser::parsePins(reader));
    QVERIFY(pins);
    const QString& wide = IcTest::kWide;
    const QString pin = wide
        + QStringLiteral("\n<tr>\n<td>ID</td>\n<td>Type</td>\n<td>Name</td>\n<td>Description short</td>"
                         "\n<td>Description long</td>\n<td>Description low</td>\n<td>Description high</td>"
                         "\n<td>Description floating</td>\n<td>Default state</td>\n</tr>\n<tr>\n<td>3</td>"
                         "\n<td>power</td>\n<td>VS</td>\n<td>a</td>\n<td>b</td>\n<td>low</td>\n<td>high</td>"
                         "\n<td>floating</td>\n<td>floating</td>\n</tr>\n</table>");
    const QString group = wide
        + QStringLiteral(
            "\n<tr>\n<td>ID</td>\n<td>Name</td>\n<td>Description</td>\n<td>States</td>"
            "\n<td>Description states</td>\n</tr>\n<tr>\n<td>1</td>\n<td>Power</td>\n<td>d</td>\n<td>s</td>"
            "\n<td></td>\n</tr>\n<tr>\n<td></td>\n<td colspan=\"3\">")
        + pin + QStringLiteral("</td>\n</tr>\n</table>");
    KIV_COMPARE_TEXT(pins->toHtml(),
        wide
            + QStringLiteral("\n<tr>\n<td>Packaging</td>\n</tr>\n<tr>\n<td>QFN</td>\n</tr>\n<tr>\n<td></td>"
                             "\n<td colspan=\"3\">")
            + group + QStringLiteral("</td>\n</tr>\n</table>"));
}

void TestPins::pinMap()
{
    TestXml::Reader reader("<pin_map><pin_mapping pin_ic=\"4\" pin_board=\"12\"/>"
                           "<pin_mapping pin_ic=\"5\" pin_board=\"0x3\"/></pin_map>");
    std::unique_ptr<XmlPinMap> map(KIVXmlParser::parsePinMap(reader));
    QVERIFY(map);
    QCOMPARE(map->getPinMappings()->size(), 2);
    QCOMPARE(map->getPinMappings()->at(1)->getPinBoard(), 0u);
    KIV_COMPARE_TEXT(map->toString(QString()),
        QStringLiteral("\tXmlPinMap()\n\t{\n\t\tXmlPinMapping(pin_ic: 4, pin_board: 12)\n"
                       "\t\tXmlPinMapping(pin_ic: 5, pin_board: 0)\n\t}"));
    const QString mapping = IcTest::kWide
        + QStringLiteral("\n<tr>\n<td>Pin IC</td>\n<td>Pin Board</td>\n</tr>\n<tr>\n<td>4</td>\n<td>12</td>\n</tr>"
                         "\n</table>");
    QCOMPARE(map->getPinMappings()->first()->toHtml(), mapping);
    const QString row = QStringLiteral("\n<tr>\n<td></td>\n<td colspan=\"3\">");
    KIV_COMPARE_TEXT(map->toHtml(),
        IcTest::kWide + row + mapping + QStringLiteral("</td>\n</tr>") + row + map->getPinMappings()->at(1)->toHtml()
            + QStringLiteral("</td>\n</tr>\n</table>"));
    map->appendPinMapping(nullptr);
    QCOMPARE(map->getPinMappings()->size(), 2);
}

void TestPins::unknownAndTruncated()
{
    LogCapture log;
    TestXml::Reader reader("<pins><pin_group><pin><x/></pin><y/></pin_group><z/></pins>");
    std::unique_ptr<XmlPins> pins(KIVXmlParser::parsePins(reader));
    QVERIFY(pins);
    QCOMPARE(log.texts(),
        QStringList({QStringLiteral("static XmlPin* KIVXmlParser::parsePin(QXmlStreamReader*) could not parse: \"x\""),
            QStringLiteral("static XmlPinGroup* KIVXmlParser::parsePinGroup(QXmlStreamReader*) could not parse: \"y\""),
            QStringLiteral("static XmlPins* KIVXmlParser::parsePins(QXmlStreamReader*) could not parse: \"z\"")}));
    TestXml::Reader cut("<pin_map><pin_mapping pin_ic=\"1\" pin_board=\"2\"/><pin_mapping>");
    QVERIFY(!KIVXmlParser::parsePinMap(cut));
    TestXml::Reader cutPins("<pins><pin_group><pin id=\"1\"/>");
    QVERIFY(!KIVXmlParser::parsePins(cutPins));
}

QTEST_GUILESS_MAIN(TestPins)
#include "tst_pins.moc"
