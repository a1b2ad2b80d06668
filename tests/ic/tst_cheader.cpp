#include "TestXml.h"

#include "ic/IcCHeader.h"
#include "ic/XmlProductIC.h"
#include "product/ModuleCHeader.h"
#include "product/XmlProductModule.h"

#include <QtTest>

#include <memory>

// The C headers of IC and module files: the exact diagnostics of names and layouts a header cannot take
// as they are, and one small IC's header compared whole. Compilers see the headers in cheader_compile.py.
class TestCHeader : public QObject
{
    Q_OBJECT
private slots:
    void diagnostics_data();
    void diagnostics();
    void reference();
};

namespace {

QByteArray icFile(const QByteArray& registers)
{
    return "<product_ic name=\"KIV\" version=\"1\"><register_set>" + registers + "</register_set></product_ic>";
}

QByteArray field(const QByteArray& name, int shift, const QByteArray& mask, const QByteArray& desc = "d")
{
    return "<value_register_field name=\"" + name + "\" shift=\"" + QByteArray::number(shift) + "\" mask=\"" + mask
        + "\" desc_short=\"" + desc + "\"><value_unsigned max=\"3\" access=\"RW\"/></value_register_field>";
}

QByteArray reg(const QByteArray& name, const QByteArray& fields, int size = 8, const QByteArray& address = "0x10")
{
    return "<value_register address=\"" + address + "\" name=\"" + name + "\" size=\"" + QByteArray::number(size)
        + "\"><register_variant name=\"DEFAULT\">" + fields + "</register_variant></value_register>";
}

QString texts(const CHeaderResult& result)
{
    QStringList list;
    for (const CHeaderDiagnostic& diagnostic : result.diagnostics)
        list << (diagnostic.severity == CHeaderDiagnostic::Error ? QStringLiteral("error: ")
                                                                 : QStringLiteral("warning: "))
                + diagnostic.text;
    return list.join(QLatin1Char('\n'));
}

} // namespace

void TestCHeader::diagnostics_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("prefix"); // null: the product's name
    QTest::addColumn<QString>("expected"); // the diagnostics, one a line
    QTest::addColumn<QString>("line"); // the start of a line the header holds; empty when it must not be written

    const QString none;
    QTest::newRow("two spellings of one field name")
        << icFile(reg("R", field("gain", 0, "1") + field("GAIN", 1, "2"))) << none
        << QStringLiteral("error: identifier KIV_R_GAIN_Pos stands for both field \"gain\" of register "
                          "\"R\" (0x10) and field \"GAIN\" of register \"R\" (0x10)")
        << QString();
    QTest::newRow("register and field joined give one name")
        << icFile(reg("A", field("B_C", 0, "1")) + reg("A_B", field("C", 0, "1"), 8, "0x11")) << none
        << QStringLiteral("error: identifier KIV_A_B_C_Pos stands for both field \"B_C\" of register "
                          "\"A\" (0x10) and field \"C\" of register \"A_B\" (0x11)")
        << QString();
    QTest::newRow("choice texts alike once made identifiers")
        << icFile(reg("R",
               "<value_register_field name=\"f\" shift=\"0\" mask=\"3\"><value_choice><choice_element value=\"0\" "
               "desc_short=\"on\"/><choice_element value=\"1\" desc_short=\"ON!\"/></value_choice>"
               "</value_register_field>"))
        << none
        << QString("error: identifier KIV_R_F_ON stands for both value 0 (\"on\") of field \"f\" of "
                   "register \"R\" (0x10) and value 1 (\"ON!\") of field \"f\" of register \"R\" "
                   "(0x10)")
        << QString();
    QTest::newRow("leading digit behind a prefix") << icFile(reg("3V3_MON", field("2nd", 0, "1"))) << none << QString()
                                                   << QStringLiteral("#define KIV_3V3_MON_2ND_Pos");
    QTest::newRow("leading digit without a prefix") << icFile(reg("3V3_MON", field("2nd", 0, "1"))) << QString("")
                                                    << QString() << QStringLiteral("#define N_3V3_MON_2ND_Pos");
    QTest::newRow("reserved prefix") << icFile(reg("R", field("f", 0, "1"))) << QStringLiteral("errno") << QString()
                                     << QStringLiteral("#define N_ERRNO_R_F_Msk");
    QTest::newRow("markup in names") << icFile(reg("&lt;b&gt;R&lt;/b&gt;", field("a&lt;b&gt;__c", 0, "1"))) << none
                                     << QString() << QStringLiteral("#define KIV_B_R_B_A_B_C_Pos");
    QTest::newRow("name of symbols only")
        << icFile(reg("R", field("&lt;&gt;", 0, "1"))) << none
        << QStringLiteral("warning: field \"<>\" of register \"R\" (0x10) has no name to build on; it is "
                          "written as FIELD0")
        << QStringLiteral("#define KIV_R_FIELD0_Pos");
    QTest::newRow("overlapping fields")
        << icFile(reg("R", field("a", 0, "3") + field("b", 1, "6"))) << none
        << QString("warning: register \"R\" (0x10): fields \"a\" and \"b\" overlap in bits 0x2; the "
                   "register's compile-time checks are left out")
        << QStringLiteral("#define KIV_R_B_Msk                                     0x06U");
    QTest::newRow("mask beyond the register")
        << icFile(reg("R", field("a", 8, "100"))) << none
        << QStringLiteral("warning: field \"a\" of register \"R\" (0x10): mask 0x100 reaches beyond the "
                          "register's 8 bits; the register's compile-time checks are left out")
        << QStringLiteral("#define KIV_R_A_Msk                                     0x100U");
    QTest::newRow("shift that does not match its mask")
        << icFile(reg("R", field("a", 3, "30"))) << none
        << QStringLiteral("warning: field \"a\" of register \"R\" (0x10): shift 3 does not match mask "
                          "0x30; _Pos is 4, the mask's lowest bit")
        << QStringLiteral("#define KIV_R_A_Pos                                     4U");
    QTest::newRow("register without fields")
        << icFile("<value_register address=\"0x20\" name=\"EMPTY\" size=\"16\"/>") << none
        << QStringLiteral("warning: register \"EMPTY\" (0x20) has no fields; only its address, width, "
                          "access and reset value are written")
        << QStringLiteral("#define KIV_EMPTY_RESET                                 0x0000U");
    QTest::newRow("text that would close the comment")
        << icFile(reg("R", field("a", 0, "1", "ends */ here, /* opens, ?\?/ and a line&#10;break"))) << none
        << QString() << QStringLiteral("/* a: ends * / here, / * opens, ? ?/ and a line break (RW) */");
    QTest::newRow("module parameter under two numbers")
        << QByteArray("<product_module><name>M-1</name><axis_parameters axis=\"0\"><axis_parameter type=\"4\" "
                      "name=\"Speed\"/></axis_parameters><axis_parameters axis=\"1\"><axis_parameter type=\"5\" "
                      "name=\"speed\"/></axis_parameters></product_module>")
        << none
        << QStringLiteral("error: identifier M_1_AP_SPEED stands for both axis parameter \"Speed\" (axis "
                          "0, number 4) and axis parameter \"speed\" (axis 1, number 5)")
        << QString();
    QTest::newRow("module bank and number")
        << QByteArray("<product_module><name>M-1</name><global_parameters bank=\"2\"><global_parameter type=\"7\" "
                      "name=\"Node id\"><value_unsigned max=\"9\" default=\"1\" access=\"rw\"/></global_parameter>"
                      "</global_parameters></product_module>")
        << none << QString() << QStringLiteral("#define M_1_GP_NODE_ID_BANK                             2U");
}

void TestCHeader::diagnostics()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, prefix);
    QFETCH(QString, expected);
    QFETCH(QString, line);

    const std::unique_ptr<XmlProductInterface> product = TestXml::parseProduct(xml);
    QVERIFY(product);
    CHeaderOptions options;
    options.prefixGiven = !prefix.isNull();
    options.prefix = prefix;
    auto* ic = qobject_cast<XmlProductIC*>(product.get());
    const CHeaderResult result = ic ? IcCHeader::generate(ic, options)
                                    : ModuleCHeader::generate(qobject_cast<XmlProductModule*>(product.get()), options);
    QCOMPARE(texts(result), expected);
    QCOMPARE(result.hasErrors(), line.isEmpty());
    if (!line.isEmpty())
        QVERIFY2(result.header.contains(QLatin1Char('\n') + line), qPrintable(result.header));
    // A header whose checks would fail is written without them.
    if (QTest::currentDataTag() == QByteArray("overlapping fields")
        || QTest::currentDataTag() == QByteArray("mask beyond the register"))
        QVERIFY(!result.header.contains(QLatin1String("STATIC_ASSERT")));
}

void TestCHeader::reference()
{
    const QByteArray xml = TestXml::readFile(QStringLiteral(KIVCORE_TEST_DATA_DIR "/cheader/small-ic.xml"));
    const std::unique_ptr<XmlProductInterface> product = TestXml::parseProduct(xml);
    auto* ic = qobject_cast<XmlProductIC*>(product.get());
    QVERIFY(ic);
    CHeaderOptions options;
    options.generator = QStringLiteral("kivtool test");
    options.selfTestInclude = QStringLiteral("kiv2m1.h");
    const CHeaderResult result = IcCHeader::generate(ic, options);
    KIV_COMPARE_TEXT(result.header,
        QString::fromUtf8(TestXml::readFile(QStringLiteral(KIVCORE_TEST_DATA_DIR "/cheader/small-ic.h.txt"))));
    QCOMPARE(texts(result),
        QStringLiteral("warning: register \"SPARE\" (0x12) has no fields; only its address, width, access "
                       "and reset value are written"));
    // Every field of every layout is exercised, through the header's own names.
    QCOMPARE(result.selfTestFields, 5);
    QVERIFY(result.selfTest.contains(QLatin1String("#include \"kiv2m1.h\"")));
    QVERIFY(result.selfTest.contains(
        QLatin1String("    field32(KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Msk, KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Pos, "
                      "KIV2M1_TUNE_FINE_OR_AUTO_TRIM_Width, \"KIV2M1_TUNE_FINE_OR_AUTO_TRIM\");")));
    QCOMPARE(IcCHeader::generate(ic, options).header, result.header);
}

QTEST_GUILESS_MAIN(TestCHeader)
#include "tst_cheader.moc"
