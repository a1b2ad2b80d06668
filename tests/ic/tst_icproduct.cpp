#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlDatabase.h"
#include "ic/XmlPin.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/KIVXmlParser.h"
#include "values/XmlValueInterface.h"

#include <QtTest>

#include <memory>

// The IC model: its root, database and pins, registers, variants and fields; conversions, masks, casts,
// access unions, defaults and quirks at their limits. Whole output texts are in tst_references, the
// element rules in tst_elements.

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

/// A stand-in descriptor with a chosen type code and access: fields tested apart from the value kinds.
class FakeValue : public XmlValueInterface
{
public:
    explicit FakeValue(int type, const QString& access = QString())
        : XmlValueInterface(type)
    {
        setAccessString(access);
    }
    QString toString(QString indent) override { return indent; }
    QString getStringFromValue(unsigned long long) override { return QString(); }
};

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
    void registerAttributes_data();
    void registerAttributes();
    void fullAddressAndEightBitMap();
    void accessIsUnionOfVariants();
    void registerWithoutVariants();
    void maskAndErrorMask_data();
    void maskAndErrorMask();
    void castedValue_data();
    void castedValue();
    void fieldAttributesAndChildren();
    void variantUnion();
    void impactsAndImpactedBy();
    void withoutRegisterSet();
    void defaultsOfWideRegisters_data();
    void defaultsOfWideRegisters();
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

/// What the pin references leave out: attributes present but empty, and a hexadecimal id (read base 10).
void TestIcProduct::pinAttributes()
{
    QCOMPARE(parse(&KIVXmlParser::parsePins, "<pins packaging=\"\"/>")->getPackaging(), QString());
    auto pin = parse(&KIVXmlParser::parsePin, "<pin id=\"0x1\" desc_low=\"\" desc_long=\"long\"/>");
    QCOMPARE(pin->getId(), 0u);
    QCOMPARE(pin->getDescriptionLow(), QString());
    QCOMPARE(pin->getDescription(), QStringLiteral("long"));
    QCOMPARE(pin->getStringFromValue(171), QStringLiteral("AB"));
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

void TestIcProduct::registerAttributes_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<QString>("read"); ///< address, size, group
    QTest::newRow("hex") << QByteArray(R"(address="0x6C" size="32" group="0x3")") << "108 32 3";
    QTest::newRow("decimal") << QByteArray(R"(address="108" size="16" group="3")") << "108 16 3";
    QTest::newRow("octal") << QByteArray(R"(address="0154" size="8" group="010")") << "108 8 8";
    QTest::newRow("size is base 10") << QByteArray(R"(address="1" size="0x20")") << "1 0 0";
    QTest::newRow("junk") << QByteArray(R"(address="x" size="8b" group="-1")") << "0 0 0";
}

void TestIcProduct::registerAttributes()
{
    QFETCH(QByteArray, attributes);
    QFETCH(QString, read);
    auto reg = parse(&KIVXmlParser::parseValueRegister, "<value_register " + attributes + "/>");
    QCOMPARE(QString::number(reg->address()) + ' ' + QString::number(reg->getSize()) + ' '
            + QString::number(reg->getGroupID()),
        read);
    QCOMPARE(reg->getType(), 5);
}

void TestIcProduct::fullAddressAndEightBitMap()
{
    auto set = parse(&KIVXmlParser::parseRegisterSet,
        "<register_set><value_register address=\"0x101\" name=\"high\"/><value_register address=\"0x01\" name=\"low\"/>"
        "<value_register address=\"0x101\" name=\"again\"/></register_set>");
    QCOMPARE(set->getRegisters()->size(), 3);
    QCOMPARE(set->getRegister(0x101)->name(), QStringLiteral("high"));
    QCOMPARE(set->getRegister(0x01)->name(), QStringLiteral("low"));
    QVERIFY(!set->getRegister(0x02));
    // The map is keyed by the low 8 bits; the last register of a key wins.
    QCOMPARE(set->getRegistersMap()->size(), 1);
    QCOMPARE(set->getRegistersMap()->value(0x01)->name(), QStringLiteral("again"));
    set->appendValueRegister(nullptr);
    set->appendGroup(nullptr);
    QCOMPARE(set->getRegisters()->size(), 3);
    QVERIFY(set->getGroups()->isEmpty());
}

void TestIcProduct::accessIsUnionOfVariants()
{
    XmlValueRegister reg(1, QStringLiteral("R"), 8, 0);
    auto* read = new XmlRegisterVariant(QStringLiteral("a"));
    read->setAccessString(QStringLiteral("r"));
    auto* write = new XmlRegisterVariant(QStringLiteral("b"));
    write->setAccessString(QStringLiteral("xw"));
    reg.appendVariant(read);
    reg.appendVariant(nullptr);
    reg.appendVariant(write);
    QCOMPARE(reg.getRegisterVariants()->size(), 2);
    QCOMPARE(reg.getAccess(), 11);
    QCOMPARE(reg.getAccessAsString(), QStringLiteral("RWX"));
}

void TestIcProduct::registerWithoutVariants()
{
    XmlValueRegister reg(0x10, QStringLiteral("R"), 8, 2);
    QCOMPARE(reg.getAccess(), 0);
    QCOMPARE(reg.getAccessAsString(), QString());
    QCOMPARE(reg.getStringFromValue(0), QStringLiteral("0"));
    QCOMPARE(reg.getStringFromValue(255), QStringLiteral("FF"));
    QCOMPARE(reg.getStringFromValue(0x1ABCDEF01ull), QStringLiteral("1ABCDEF01"));
}

void TestIcProduct::maskAndErrorMask_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<int>("shift");
    QTest::addColumn<qulonglong>("value");
    QTest::addColumn<bool>("error");
    QTest::newRow("0x0000FF00 >> 8") << "0x0000FF00" << 8 << 65280ull << false;
    QTest::newRow("0x0000FF00 >> 7") << "0x0000FF00" << 7 << 65280ull << true;
    QTest::newRow("hole") << "F0F" << 0 << 3855ull << true;
    QTest::newRow("bit 31") << "80000000" << 31 << 0x80000000ull << false;
    QTest::newRow("64 bits") << "FFFF000000000000" << 48 << 0xFFFF000000000000ull << false;
    QTest::newRow("zero with shift 1") << "0" << 1 << 0ull << false;
    QTest::newRow("zero with shift 0") << "0" << 0 << 0ull << true;
    QTest::newRow("not hex") << "zz" << 0 << 0ull << true;
}

void TestIcProduct::maskAndErrorMask()
{
    QFETCH(QString, mask);
    QFETCH(int, shift);
    QFETCH(qulonglong, value);
    QFETCH(bool, error);
    XmlValueRegisterField field(QStringLiteral("f"), shift, mask, QString(), QString());
    QCOMPARE(field.getMaskValue(), value);
    QCOMPARE(field.getMaskAsString(), mask);
    QCOMPARE(field.getErrorMask(), error);
    field.setMaskString(QStringLiteral("1"));
    QCOMPARE(field.getMaskValue(), value); // the text only
    QCOMPARE(field.getErrorMask(), error);
}

void TestIcProduct::castedValue_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<int>("shift");
    QTest::addColumn<int>("type"); // -1: no descriptor
    QTest::addColumn<uint>("registerValue");
    QTest::addColumn<int>("expected");
    QTest::newRow("16-bit signed") << "FFFF0000" << 16 << 0 << 0xFFFE0000u << -2;
    QTest::newRow("16-bit unsigned") << "FFFF0000" << 16 << 1 << 0xFFFE0000u << 65534;
    QTest::newRow("16-bit choice is raw") << "FFFF0000" << 16 << 3 << 0xFFFE0000u << -2;
    QTest::newRow("16-bit low signed") << "FFFF" << 0 << 0 << 0x12348001u << -32767;
    QTest::newRow("16-bit low unsigned") << "FFFF" << 0 << 1 << 0x12348001u << 32769;
    QTest::newRow("bit 31 sign fill") << "80000000" << 31 << -1 << 0x80000000u << -1;
    QTest::newRow("two top bits sign fill") << "C0000000" << 30 << -1 << 0xC0000000u << -1;
    QTest::newRow("nibble") << "F0" << 4 << -1 << 0xABu << 10;
    QTest::newRow("8-bit signed not extended") << "FF00" << 8 << 0 << 0xFF00u << 255;
    QTest::newRow("20-bit unsigned is not cut to 16") << "FFFFF" << 0 << 1 << 0xFFFFFu << 0xFFFFF;
    QTest::newRow("high bits of a 64-bit mask ignored") << "1FFFFFFFF" << 0 << 1 << 0x7u << 7;
    QTest::newRow("shift out of range") << "FF" << 40 << 1 << 0xFFu << 0;
}

void TestIcProduct::castedValue()
{
    QFETCH(QString, mask);
    QFETCH(int, shift);
    QFETCH(int, type);
    QFETCH(uint, registerValue);
    QFETCH(int, expected);
    XmlValueRegisterField field(QStringLiteral("f"), shift, mask, QString(), QString());
    if (type >= 0)
        field.setValue(new FakeValue(type));
    QCOMPARE(XmlValueRegisterField::getCastedRegisterFieldValue(&field, int(registerValue)), expected);
}

void TestIcProduct::fieldAttributesAndChildren()
{
    auto bare = parse(&KIVXmlParser::parseValueRegisterField,
        "<value_register_field name=\"a\\x26b\" shift=\"2\" mask=\"0x0C\" desc_short=\"\\u00b0C\"/>");
    QCOMPARE(bare->getName(), QStringLiteral("a&b"));
    QCOMPARE(bare->getShift(), 2);
    QCOMPARE(bare->getMaskValue(), 12ull);
    QCOMPARE(bare->getDescription(), QString::fromUtf8("°C"));
    QCOMPARE(bare->getDescriptionLong(), QString::fromUtf8("°C")); // falls back to the short one
    QCOMPARE(bare->getType(), 6);
    QCOMPARE(bare->getAccess(), 0);
    QCOMPARE(bare->getStringFromValue(5), QStringLiteral("unknown"));
    bare->setName(QStringLiteral("x\\x26y")); // the setter stores the text as given
    QCOMPARE(bare->getName(), QStringLiteral("x\\x26y"));

    // Range and access come from the descriptor; alerts go with the field.
    auto field = parse(&KIVXmlParser::parseValueRegisterField,
        "<value_register_field name=\"f\" mask=\"F\" desc_long=\"long\"><value_signed min=\"-4\" max=\"3\" "
        "access=\"rw\"/><value_alert text=\"one\"/><value_alert text=\"two\"/></value_register_field>");
    QCOMPARE(field->getMin(), -4ll);
    QCOMPARE(field->getMax(), 3ll);
    QCOMPARE(field->getAccess(), 3);
    QCOMPARE(field->getAccessAsString(), QStringLiteral("rw")); // as the descriptor holds it
    QCOMPARE(field->getDescriptionLong(), QStringLiteral("long"));
    QCOMPARE(field->getAlerts().size(), 2);
    field->removeAlert(field->getAlerts().first());
    QCOMPARE(field->getAlerts().size(), 1);
}

void TestIcProduct::variantUnion()
{
    XmlRegisterVariant variant(QStringLiteral("v"));
    auto* read = new XmlValueRegisterField(QStringLiteral("a"), 0, QStringLiteral("3"), QString(), QString());
    read->setValue(new FakeValue(1, QStringLiteral("R")));
    auto* write = new XmlValueRegisterField(QStringLiteral("b"), 8, QStringLiteral("F00"), QString(), QString());
    write->setValue(new FakeValue(1, QStringLiteral("W")));
    variant.appendField(read);
    variant.appendField(nullptr);
    variant.appendField(write);
    QCOMPARE(variant.getRegisterFields()->size(), 2);
    QCOMPARE(variant.getAccess(), 3);
    QCOMPARE(variant.getAccessAsString(), QStringLiteral("RW"));
    QCOMPARE(variant.getMaskValue(), 0xF03ull);
    variant.setAccessString(QStringLiteral("xr"));
    QCOMPARE(variant.getAccessAsString(), QStringLiteral("RX"));
    QCOMPARE(variant.getStringFromValue(1), QStringLiteral("unknown"));
    variant.appendImpacts(new XmlRegisterVariantImpacts(1));
    variant.clearImpacts();
    QVERIFY(variant.getImpacts()->isEmpty());
}

void TestIcProduct::impactsAndImpactedBy()
{
    auto by = parse(&KIVXmlParser::parseRegisterVariantImpactedBy,
        "<register_variant_impacted_by address=\"0x6B\" shift=\"1\" mask=\"0x06\" range_from=\"4294967296\" "
        "range_to=\"4294967295\"/>");
    QCOMPARE(by->getAddress(), 0x6Bu);
    QCOMPARE(by->getMaskValue(), 6ull);
    QCOMPARE(by->getMaskAsString(), QStringLiteral("0x06"));
    QCOMPARE(by->getRangeFrom(), 0ull); // above 32 bits
    QCOMPARE(by->getRangeTo(), 4294967295ull);
    by->setMaskValue(0xab);
    QCOMPARE(by->getMaskAsString(), QStringLiteral("AB"));
    QCOMPARE(
        parse(&KIVXmlParser::parseRegisterVariantImpacts, "<register_variant_impacts address=\"010\"/>")->getAddress(),
        8u);
}

void TestIcProduct::withoutRegisterSet()
{
    XmlProductIC ic;
    const QString emptyMap = ic.toLaTeXRegisterMap();
    QVERIFY(emptyMap.endsWith(QLatin1String("\\hline\n\\end{longtable}")));
    ic.setRegisterSet(new XmlRegisterSet());
    QCOMPARE(ic.toLaTeXRegisterMap(), emptyMap);
    QVERIFY(ic.toLaTeXRegisterMapDefaults().endsWith(QLatin1String("\\endhead\n\\end{longtable}")));
    XmlProductIC bare;
    QCOMPARE(bare.toLaTeXRegisterOverviewByGroup(nullptr).count(QLatin1String("\\hexnum")), 0);
    QCOMPARE(bare.toLaTeXRegisterOverview().count(QLatin1String("\\hexnum")), 0);
}

void TestIcProduct::defaultsOfWideRegisters_data()
{
    QTest::addColumn<QByteArray>("size");
    QTest::addColumn<QString>("digits");
    QTest::newRow("8 bits") << QByteArray("8") << QStringLiteral("05");
    QTest::newRow("63 bits") << QByteArray("63") << QStringLiteral("0000000000000005");
    QTest::newRow("64 bits") << QByteArray("64") << QStringLiteral("0000000000000005");
    // Values are 64 bits: a wider register is padded as 64 bits, however wide it claims to be.
    QTest::newRow("65 bits") << QByteArray("65") << QStringLiteral("0000000000000005");
    QTest::newRow("2000000000 bits") << QByteArray("2000000000") << QStringLiteral("0000000000000005");
    QTest::newRow("largest int") << QByteArray("2147483647") << QStringLiteral("0000000000000005");
    QTest::newRow("negative") << QByteArray("-7") << QStringLiteral("05");
}

void TestIcProduct::defaultsOfWideRegisters()
{
    QFETCH(QByteArray, size);
    QFETCH(QString, digits);
    const QByteArray xml = "<product_ic name=\"W\"><register_set><value_register address=\"0x10\" name=\"W\" size=\""
        + size
        + "\"><register_variant name=\"V\"><value_register_field name=\"f\" mask=\"FF\"><value_unsigned "
          "default=\"5\"/></value_register_field></register_variant></value_register></register_set></product_ic>";
    const std::unique_ptr<XmlProductInterface> product = TestXml::parseProduct(xml);
    auto* ic = qobject_cast<XmlProductIC*>(product.get());
    QVERIFY(ic);
    const QString text = ic->toLaTeXRegisterMapDefaults();
    QVERIFY2(text.contains(QStringLiteral("{\\bf W} \\phantomsection \\label{REGISTER:W} & 0x\\hexnum{") + digits
                 + QStringLiteral("} & ")),
        qPrintable(text));
    QVERIFY(text.size() < 2000);
}

QTEST_GUILESS_MAIN(TestIcProduct)
#include "tst_icproduct.moc"
