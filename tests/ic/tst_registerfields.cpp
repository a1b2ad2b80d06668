#include "IcTest.h"
#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegisterField.h"
#include "product/KIVXmlParser.h"

#include <QtTest>

#include <memory>

using IcTest::FakeValue;

class TestRegisterFields : public QObject
{
    Q_OBJECT
private slots:
    void maskAndErrorMask_data();
    void maskAndErrorMask();
    void castedValue_data();
    void castedValue();
    void fieldParse();
    void fieldValueChildren();
    void fieldTexts();
    void variantUnion();
    void variantDebugText();
    void variantHtml_data();
    void variantHtml();
    void variantLatex();
    void impactsAndImpactedBy();
};

void TestRegisterFields::maskAndErrorMask_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<int>("shift");
    QTest::addColumn<qulonglong>("value");
    QTest::addColumn<bool>("error");
    QTest::newRow("0x0000FF00 >> 8") << "0x0000FF00" << 8 << 65280ull << false;
    QTest::newRow("0x0000FF00 >> 7") << "0x0000FF00" << 7 << 65280ull << true;
    QTest::newRow("hole") << "F0F" << 0 << 3855ull << true;
    QTest::newRow("F0 >> 4") << "F0" << 4 << 240ull << false;
    QTest::newRow("bit 31") << "80000000" << 31 << 0x80000000ull << false;
    QTest::newRow("64 bits") << "FFFF000000000000" << 48 << 0xFFFF000000000000ull << false;
    QTest::newRow("zero with shift 1") << "0" << 1 << 0ull << false;
    QTest::newRow("zero with shift 0") << "0" << 0 << 0ull << true;
    QTest::newRow("not hex") << "zz" << 0 << 0ull << true;
}

void TestRegisterFields::maskAndErrorMask()
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

void TestRegisterFields::castedValue_data()
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
    QTest::newRow("nibble") << "F0" << 4 << -1 << 0xABu << 10;
    QTest::newRow("8-bit signed not extended") << "FF00" << 8 << 0 << 0xFF00u << 255;
    QTest::newRow("high bits of a 64-bit mask ignored") << "1FFFFFFFF" << 0 << 1 << 0x7u << 7;
    QTest::newRow("shift out of range") << "FF" << 40 << 1 << 0xFFu << 0;
}

void TestRegisterFields::castedValue()
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

void TestRegisterFields::fieldParse()
{
    LogCapture log;
    TestXml::Reader reader("<value_register_field name=\"a\\x26b\" shift=\"2\" mask=\"0x0C\" desc_short=\"\\u00b0C\">"
                           "<other/></value_register_field>");
    std::unique_ptr<XmlValueRegisterField> field(KIVXmlParser::parseValueRegisterField(reader));
    QVERIFY(field);
    QCOMPARE(field->getName(), QStringLiteral("a&b"));
    QCOMPARE(field->getShift(), 2);
    QCOMPARE(field->getMaskValue(), 12ull);
    QVERIFY(!field->getErrorMask());
    QCOMPARE(field->getDescription(), QString::fromUtf8("°C"));
    QVERIFY(field->getDescriptionLong().size() == 2); // falls back to the short one
    QCOMPARE(field->getType(), 6);
    QVERIFY(!field->getValue());
    QCOMPARE(field->getAccess(), 0);
    QCOMPARE(field->getStringFromValue(5), QStringLiteral("unknown"));
    QCOMPARE(log.texts(),
        QStringList({QStringLiteral("static XmlValueRegisterField* KIVXmlParser::parseValueRegisterField("
                                    "QXmlStreamReader*) could not parse: \"other\"")}));
    field->setName(QStringLiteral("x\\x26y"));
    QCOMPARE(field->getName(), QStringLiteral("x\\x26y"));
}

void TestRegisterFields::fieldValueChildren()
{
    // The first descriptor is replaced by the second (and freed); alerts go with the field.
    TestXml::Reader reader("<value_register_field name=\"f\" mask=\"F\" desc_long=\"long\">"
                           "<value_unsigned min=\"1\" max=\"9\" access=\"R\"/><value_signed min=\"-4\" max=\"3\" "
                           "access=\"rw\"/><value_alert text=\"one\"/><value_alert text=\"two\"/>"
                           "</value_register_field>");
    std::unique_ptr<XmlValueRegisterField> field(KIVXmlParser::parseValueRegisterField(reader));
    QVERIFY(field);
    QVERIFY(field->getValue());
    QCOMPARE(field->getValue()->getType(), 0);
    QCOMPARE(field->getMin(), -4ll);
    QCOMPARE(field->getMax(), 3ll);
    QCOMPARE(field->getAccess(), 3);
    QCOMPARE(field->getAccessAsString(), QStringLiteral("rw")); // as the descriptor holds it
    QCOMPARE(field->getAlerts().size(), 2);
    QCOMPARE(field->getDescriptionLong(), QStringLiteral("long"));
    const XmlValueAlert* first = field->getAlerts().first();
    field->removeAlert(first);
    QCOMPARE(field->getAlerts().size(), 1);
}

void TestRegisterFields::fieldTexts()
{
    XmlValueRegisterField field(QStringLiteral("f"), 4, QStringLiteral("F0"), QStringLiteral("s"), QString());
    KIV_COMPARE_TEXT(field.toString(QStringLiteral("\t")),
        QStringLiteral("\t\tXmlValueRegisterField(name: f, shift: 4, maskString: F0, maskValue: 240, desc_short: s, "
                       "desc_long: )\n\t\t{\n\t\t}"));
    const QString head = IcTest::kWide
        + QStringLiteral("\n<tr>\n<td width=\"20%\">Name:</td>\n<td>Description:</td>\n<td width=\"15%\">Shift:</td>"
                         "\n<td width=\"15%\">Mask:</td>\n</tr>\n<tr>\n<td>f</td>\n<td>s</td>\n<td></td>\n<td>4</td>"
                         "\n<td>F0(240)</td>\n</tr>\n<tr>\n<td colspan=\"4\">");
    KIV_COMPARE_TEXT(field.toHtml(), head + QStringLiteral("</td>\n</tr>\n</table>"));
    field.setValue(new FakeValue(1));
    KIV_COMPARE_TEXT(field.toString(QString()),
        QStringLiteral("\tXmlValueRegisterField(name: f, shift: 4, maskString: F0, maskValue: 240, desc_short: s, "
                       "desc_long: )\n\t{\n\t\tFake\n\t}"));
    KIV_COMPARE_TEXT(field.toHtml(), head + QStringLiteral("\tFake</td>\n</tr>\n</table>"));
}

void TestRegisterFields::variantUnion()
{
    XmlRegisterVariant variant(QStringLiteral("v"));
    auto* read = new XmlValueRegisterField(QStringLiteral("a"), 0, QStringLiteral("3"), QString(), QString());
    read->setValue(new FakeValue(1, {}, QStringLiteral("R")));
    auto* write = new XmlValueRegisterField(QStringLiteral("b"), 8, QStringLiteral("F00"), QString(), QString());
    write->setValue(new FakeValue(1, {}, QStringLiteral("W")));
    variant.appendField(read);
    variant.appendField(nullptr);
    variant.appendField(write);
    QCOMPARE(variant.getRegisterFields()->size(), 2);
    QCOMPARE(variant.getAccess(), 3);
    QCOMPARE(variant.getAccessAsString(), QStringLiteral("RW"));
    QCOMPARE(variant.getMaskValue(), 0xF03ull);
    QVERIFY(variant.toHtml().contains(QLatin1String("<td>F03(3843)</td>")));
    variant.setAccessString(QStringLiteral("xr"));
    QCOMPARE(variant.getAccessAsString(), QStringLiteral("RX"));
    QCOMPARE(variant.XmlValueInterface::getAccessAsString(), QStringLiteral("RX"));
    QCOMPARE(variant.getStringFromValue(1), QStringLiteral("unknown"));
}

void TestRegisterFields::variantDebugText()
{
    LogCapture log;
    TestXml::Reader reader("<register_variant name=\"Step \\x26 Dir\"><desc>first</desc><desc></desc>"
                           "<desc>a \\x26 b</desc><value_register_field name=\"f\" shift=\"0\" mask=\"1\"/>"
                           "<register_variant_impacts address=\"0x20\"/><register_variant_impacted_by "
                           "address=\"0x10\" shift=\"1\" mask=\"6\" range_from=\"2\" range_to=\"3\"/><x/>"
                           "</register_variant>");
    std::unique_ptr<XmlRegisterVariant> variant(KIVXmlParser::parseRegisterVariant(reader));
    QVERIFY(variant);
    QCOMPARE(variant->getName(), QStringLiteral("Step & Dir"));
    KIV_COMPARE_TEXT(variant->toString(QString()),
        QStringLiteral("\tXmlRegisterVariant(name: Step & Dir), access: )\n\t{\n\t\tdescription[0]: first\n"
                       "\t\tdescription[1]: a & b\n\t\tXmlValueRegisterField(name: f, shift: 0, maskString: 1, "
                       "maskValue: 1, desc_short: , desc_long: )\n\t\t{\n\t\t}\n"
                       "\t\tXmlRegisterVariantImpacts(address: 32)\n\t\tXmlRegisterVariantImpactedBy(address: 16, "
                       "shift: 1, mask: 6, rangeFrom: 2, rangeTo: 3)\n\t}"));
    QCOMPARE(log.texts(),
        QStringList({QStringLiteral("static XmlRegisterVariant* KIVXmlParser::parseRegisterVariant(QXmlStreamReader*) "
                                    "could not parse: \"x\"")}));
    variant->clearImpacts();
    QVERIFY(variant->getImpacts()->isEmpty());
    QCOMPARE(variant->getImpactedsBy()->size(), 1);
}

void TestRegisterFields::variantHtml_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("nameRow");
    QTest::newRow("DEFAULT") << "DEFAULT" << QString();
    QTest::newRow("named") << "Mode 1"
                           << "\n<tr>\n<td width=\"10%\">Variant name:</td>\n<td>Mode 1</td>\n</tr>";
    QTest::newRow("case matters") << "Default"
                                  << "\n<tr>\n<td width=\"10%\">Variant name:</td>\n<td>Default</td>\n</tr>";
}

void TestRegisterFields::variantHtml()
{
    QFETCH(QString, name);
    QFETCH(QString, nameRow);
    XmlRegisterVariant variant(name);
    variant.appendDescription(QStringLiteral("d1"));
    variant.appendDescription(QStringLiteral("d2"));
    auto* field = new XmlValueRegisterField(QStringLiteral("f"), 0, QStringLiteral("1"), QString(), QString());
    variant.appendField(field);
    variant.appendImpacts(new XmlRegisterVariantImpacts(1));
    variant.appendImpacts(new XmlRegisterVariantImpacts(2));
    variant.appendImpactedBy(new XmlRegisterVariantImpactedBy(3, 0, QStringLiteral("1"), 0, 1));
    KIV_COMPARE_TEXT(variant.toHtml(),
        IcTest::kWide + nameRow
            + QStringLiteral("\n<tr>\n<td width=\"10%\">Mask:</td>\n<td>1(1)</td>\n</tr>"
                             "\n<tr>\n<td width=\"10%\">Access:</td>\n<td>(0)</td>\n</tr>"
                             "\n<tr>\n<td width=\"10%\">Descriptions:</td>\n<td>d1<br>d2\n</td>\n</tr>"
                             "\n<tr>\n<td width=\"10%\">RegisterField[0]:</td>\n<td>")
            + field->toHtml()
            + QStringLiteral("</td>\n</tr>\n<tr>\n<td>Impacts:</td>\n<td>\tXmlRegisterVariantImpacts(address: 1)<br>"
                             "\tXmlRegisterVariantImpacts(address: 2)\n</td>\n</tr>\n<tr>\n<td>Impacted by:</td>\n<td>"
                             "\tXmlRegisterVariantImpactedBy(address: 3, shift: 0, mask: 1, rangeFrom: 0, rangeTo: 1)"
                             "\n</td>\n</tr>\n</table>"));
}

void TestRegisterFields::variantLatex()
{
    XmlRegisterVariant variant(QStringLiteral("DEFAULT"));
    const QString head = QStringLiteral("\n\t\\begin{tabular}{|l|l|p{5.0cm}|l|}\n\t\t\\hline\n"
                                        "\t\t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Variant 0} \\\\ \\hline\n"
                                        "\t\tMask & Name & Description & Access \\\\ \\hline");
    KIV_COMPARE_TEXT(variant.toLatex(QStringLiteral("\t")), head + QStringLiteral("\n\t\\end{tabular}"));

    auto* a = new XmlValueRegisterField(QStringLiteral("a_b"), 0, QStringLiteral("F"), QString(), QString());
    auto* value = new FakeValue(1, {}, QStringLiteral("R"));
    a->setValue(value);
    auto* b = new XmlValueRegisterField(QStringLiteral("c"), 4, QStringLiteral("F0"), QStringLiteral("x_y"), QString());
    auto* bare
        = new XmlValueRegisterField(QStringLiteral("d"), 8, QStringLiteral("100"), QStringLiteral("n"), QString());
    b->setValue(new FakeValue(2, {}, QStringLiteral("RW")));
    variant.appendField(a);
    variant.appendField(bare); // without a descriptor: no value row
    variant.appendField(b);
    const QString expected = head
        + QStringLiteral("\n\t\tF & a\\_b &  -  & R\\\\ \\hline\n\t\t & \\multicolumn{3}{|c|}{")
        + value->toLatex("\t\t")
        + QStringLiteral("\n\t\t} \\\\ \\hline\n\t\t100 & d & n & \\\\ \\hline\n\t\tF0 & c & x\\_y & RW\\\\ \\hline"
                         "\n\t\t & \\multicolumn{3}{|c|}{")
        + b->getValue()->toLatex("\t\t") + QStringLiteral("\n\t\t}\n\t\\end{tabular}");
    KIV_COMPARE_TEXT(variant.toLatex(QStringLiteral("\t")), expected);
    variant.setName(QStringLiteral("Mode"));
    QVERIFY(variant.toLatex(QString()).contains(QLatin1String("{\\cellcolor{gray!50}Mode} \\\\ \\hline")));
}

void TestRegisterFields::impactsAndImpactedBy()
{
    LogCapture log;
    TestXml::Reader reader("<register_variant_impacted_by address=\"0x6B\" shift=\"1\" mask=\"0x06\" "
                           "range_from=\"4294967296\" range_to=\"4294967295\"><k/></register_variant_impacted_by>");
    std::unique_ptr<XmlRegisterVariantImpactedBy> by(KIVXmlParser::parseRegisterVariantImpactedBy(reader));
    QVERIFY(by);
    QCOMPARE(by->getAddress(), 0x6Bu);
    QCOMPARE(by->getMaskValue(), 6ull);
    QCOMPARE(by->getMaskAsString(), QStringLiteral("0x06"));
    QCOMPARE(by->getRangeFrom(), 0ull);
    QCOMPARE(by->getRangeTo(), 4294967295ull);
    by->setMaskValue(0xab);
    QCOMPARE(by->getMaskAsString(), QStringLiteral("AB"));
    TestXml::Reader impactsReader("<register_variant_impacts address=\"010\"><k/></register_variant_impacts>");
    std::unique_ptr<XmlRegisterVariantImpacts> impacts(KIVXmlParser::parseRegisterVariantImpacts(impactsReader));
    QVERIFY(impacts);
    QCOMPARE(impacts->getAddress(), 8u);
    QCOMPARE(log.texts(),
        QStringList({QStringLiteral("static XmlRegisterVariantImpactedBy* KIVXmlParser::parseRegisterVariantImpactedBy("
                                    "QXmlStreamReader*) could not parse: \"k\""),
            QStringLiteral("static XmlRegisterVariantImpacts* KIVXmlParser::parseRegisterVariantImpacts("
                           "QXmlStreamReader*) could not parse: \"k\"")}));
    TestXml::Reader cut("<register_variant_impacts address=\"1\">");
    QVERIFY(!KIVXmlParser::parseRegisterVariantImpacts(cut));
}

QTEST_GUILESS_MAIN(TestRegisterFields)
#include "tst_registerfields.moc"
