#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlDatabase.h"
#include "ic/XmlPin.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "product/KIVXmlParser.h"

#include <QtTest>

#include <memory>

// The IC root, its database and pins: conversions, defaults and quirks. Whole output texts are in
// tst_references, the element rules in tst_elements.

namespace {

template<typename T> std::unique_ptr<T> parse(T* (*function)(QXmlStreamReader*), const QByteArray& xml)
{
    TestXml::Reader reader(xml);
    return std::unique_ptr<T>(function(reader));
}

XmlProductIC* asIc(const std::unique_ptr<XmlProductInterface>& product)
{
    return qobject_cast<XmlProductIC*>(product.get());
}

} // namespace

class TestIcProduct : public QObject
{
    Q_OBJECT
private slots:
    void descriptionsAndEmptyProduct();
    void unknownChildDropsNextToken();
    void writeRecord();
    void database_data();
    void database();
    void pinAttributes();
    void pinMapBoardIsBase10();
};

void TestIcProduct::descriptionsAndEmptyProduct()
{
    auto product = TestXml::parseProduct("<product_ic><desc>one \\x26 two</desc><desc/><desc>\\u00e9t\\u00E9</desc>"
                                         "</product_ic>");
    QVERIFY(asIc(product));
    QCOMPARE(*asIc(product)->mainDescription(), QStringList({QStringLiteral("one & two"), QString::fromUtf8("été")}));
    QCOMPARE(asIc(product)->toLaTeXHeader(), QString());
    XmlProductIC empty;
    QCOMPARE(empty.toString(), QStringLiteral("Product: IC\nName: \nVersion: \nAuthor: "));
    QCOMPARE(empty.toHtml(), QStringLiteral("<html>\n<h3></h3>\nVersion: \n<h4>Descriptions</h4>\n</html>"));
}

void TestIcProduct::unknownChildDropsNextToken()
{
    const LogCapture quiet;
    auto product = TestXml::parseProduct("<product_ic><extra><desc>lost</desc></extra><desc>kept</desc></product_ic>");
    QVERIFY(asIc(product));
    QCOMPARE(*asIc(product)->mainDescription(), QStringList({QStringLiteral("kept")}));
}

void TestIcProduct::writeRecord()
{
    XmlProductIC ic;
    ic.insertRegisterHasWritten(0x20, 5);
    ic.insertRegisterHasWritten(0x10, 1);
    ic.insertRegisterHasWritten(0x20, 7);
    ic.insertRegisterHasWritten(0x30, int(0x80000001u));
    QList<unsigned char>* order = nullptr;
    QMap<unsigned char, int>* written = ic.registerHasWritten(&order);
    QVERIFY(order);
    QCOMPARE(*order, QList<unsigned char>({0x10, 0x20, 0x30}));
    QCOMPARE(*written, (QMap<unsigned char, int> {{0x10, 1}, {0x20, 7}, {0x30, -2147483647}}));
    QCOMPARE(ic.registerHasWritten(&order), written); // the product's own containers
}

void TestIcProduct::database_data()
{
    QTest::addColumn<QByteArray>("children");
    QTest::addColumn<QString>("numbers");
    QTest::newRow("none") << QByteArray() << "R_Sense: 0\nV_SRTL: 0\nV_SRTH: 0\noffset: 0";
    QTest::newRow("all, the last of a name wins")
        << QByteArray("<value_db name=\"R_Sense\" value=\"220\"/><value_db name=\"V_SRTL\" value=\"165\"/>"
                      "<value_db name=\"V_SRTH\" value=\"1\"/><value_db name=\"V_SRTH\" value=\"310\"/>"
                      "<value_bool2 name=\"anything\" value=\"true\"/>")
        << "R_Sense: 220\nV_SRTL: 165\nV_SRTH: 310\noffset: 1";
    QTest::newRow("name and value case matter")
        << QByteArray("<value_db name=\"r_sense\" value=\"5\"/><value_bool2 value=\"True\"/>")
        << "R_Sense: 0\nV_SRTL: 0\nV_SRTH: 0\noffset: 0";
    QTest::newRow("full 32 bits") << QByteArray("<value_db name=\"R_Sense\" value=\"4294967295\"/>")
                                  << "R_Sense: 4294967295\nV_SRTL: 0\nV_SRTH: 0\noffset: 0";
}

void TestIcProduct::database()
{
    QFETCH(QByteArray, children);
    QFETCH(QString, numbers);
    const LogCapture quiet; // the flag's parse note
    auto database = parse(&KIVXmlParser::parseDatabase, "<database for=\"F\" name=\"N\">" + children + "</database>");
    QVERIFY(database);
    QCOMPARE(database->toString(), "XmlDatabase(for:  F, name: N)\n{\n" + numbers + "\n}");
}

void TestIcProduct::pinAttributes()
{
    QCOMPARE(parse(&KIVXmlParser::parsePins, "<pins/>")->getPackaging(), QStringLiteral("TQFP"));
    QCOMPARE(parse(&KIVXmlParser::parsePins, "<pins packaging=\"\"/>")->getPackaging(), QString());
    auto pin = parse(&KIVXmlParser::parsePin, "<pin id=\"7\"/>");
    QCOMPARE(pin->getId(), 7u);
    QCOMPARE(QStringList({pin->getDescriptionLow(), pin->getDescriptionHigh(), pin->getDescriptionFloating(),
                 pin->getDefaultState()}),
        QStringList({"low", "high", "floating", "floating"}));
    auto other
        = parse(&KIVXmlParser::parsePin, "<pin id=\"0x1\" desc_low=\"\" desc_long=\"long\" default_state=\"high\"/>");
    QCOMPARE(other->getId(), 0u); // base 10
    QCOMPARE(other->getDescriptionLow(), QString());
    QCOMPARE(other->getDefaultState(), QStringLiteral("high"));
    QCOMPARE(other->getDescription(), QStringLiteral("long"));
    QCOMPARE(other->getStringFromValue(171), QStringLiteral("AB"));
    // With both attributes, the states slip: "states" takes desc_states' text and desc_states stays empty.
    auto group = parse(&KIVXmlParser::parsePinGroup, "<pin_group states=\"on off\" desc_states=\"lit dark\"/>");
    QCOMPARE(group->getStates(), QStringLiteral("lit dark"));
    QCOMPARE(group->getDescStates(), QString());
    QCOMPARE(
        parse(&KIVXmlParser::parsePinGroup, "<pin_group states=\"on off\"/>")->getStates(), QStringLiteral("on off"));
}

void TestIcProduct::pinMapBoardIsBase10()
{
    auto map = parse(&KIVXmlParser::parsePinMap,
        "<pin_map><pin_mapping pin_ic=\"4\" pin_board=\"12\"/><pin_mapping pin_ic=\"5\" pin_board=\"0x3\"/></pin_map>");
    QCOMPARE(map->getPinMappings()->size(), 2);
    QCOMPARE(map->getPinMappings()->at(0)->getPinBoard(), 12u);
    QCOMPARE(map->getPinMappings()->at(1)->getPinBoard(), 0u);
    map->appendPinMapping(nullptr);
    QCOMPARE(map->getPinMappings()->size(), 2);
}

QTEST_GUILESS_MAIN(TestIcProduct)
#include "tst_icproduct.moc"
