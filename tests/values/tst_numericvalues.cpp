#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueUnsigned.h"

#include <QtTest>

#include <memory>

class TestNumericValues : public QObject
{
    Q_OBJECT
private slots:
    void parseSigned_data();
    void parseSigned();
    void parseUnsigned_data();
    void parseUnsigned();
    void presentFields();
    void stringFromValue();
};

void TestNumericValues::parseSigned_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");
    QTest::newRow("full")
        << QByteArray("<value_signed min=\"-100\" max=\"100\" default=\"0\" decimals=\"1\" unit=\"V\" "
                      "access=\"RW\" options=\"65\"/>")
        << "\tXmlValueSigned(min: -100, max: 100, def: 0, decimals: 1, unit: [V], access: RW, options: A)";
    QTest::newRow("hex and junk read as 0, format ignored")
        << QByteArray("<value_signed min=\"0x10\" max=\"5x\" default=\"-5\" formatMul=\"2\" access=\"wr\"/>")
        << QString("\tXmlValueSigned(min: 0, max: 0, def: -5, decimals: 0, unit: , access: wr, options: ") + QChar(0)
            + ")";
    QTest::newRow("out of range, escaped unit")
        << QByteArray("<value_signed min=\"-2147483649\" max=\"2147483647\" unit=\"\\u00b0C\"/>")
        << QString(
               "\tXmlValueSigned(min: 0, max: 2147483647, def: 0, decimals: 0, unit: [\u00b0C], access: , options: ")
            + QChar(0) + ")";
}

void TestNumericValues::parseSigned()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, text);
    TestXml::Reader reader(xml);
    std::unique_ptr<XmlValueSigned> value(KIVXmlParser::parseValueSigned(reader));
    QCOMPARE(value->toString(QString()), text);
    QCOMPARE(value->getType(), int(XmlValueTypeSigned));
    // The reader is left on the element's start.
    QCOMPARE(reader.get()->tokenType(), QXmlStreamReader::StartElement);
}

void TestNumericValues::parseUnsigned_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");
    QTest::addColumn<long long>("max");
    QTest::newRow("full") << QByteArray("<value_unsigned min=\"1\" max=\"4294967295\" default=\"7\" decimals=\"-1\" "
                                        "unit=\"[mA]\" formatString=\"%1 mA\" formatMul=\"0.5\" formatDiv=\"1000000\" "
                                        "access=\"r\" options=\"3\"/>")
                          << "\tXmlValueUnsigned(min: 1, max: 4294967295, def: 7, decimals: -1, unit: [mA], "
                             "formatString: %1 mA, formatMul: 0.5, formatDiv: 1e+06, access: r, options: 3)"
                          << 4294967295LL;
    QTest::newRow("zero or junk factors keep the defaults")
        << QByteArray(
               "<value_unsigned min=\"-1\" max=\"4294967296\" formatString=\"\" formatMul=\"0\" formatDiv=\"abc\"/>")
        << "\tXmlValueUnsigned(min: 0, max: 0, def: 0, decimals: 0, unit: , formatString: %1 , formatMul: 1, "
           "formatDiv: 1, access: , options: 0)"
        << 0LL;
}

void TestNumericValues::parseUnsigned()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, text);
    QFETCH(long long, max);
    TestXml::Reader reader(xml);
    std::unique_ptr<XmlValueUnsigned> value(KIVXmlParser::parseValueUnsigned(reader));
    QCOMPARE(value->toString(QString()), text);
    QCOMPARE(value->getMax(), max);
}

void TestNumericValues::presentFields()
{
    XmlValueSigned withDecimals(0, 1, 0, -1, QString(), QStringLiteral("rw"), 0);
    XmlValueUnsigned plain(0, 1, 0, 0, QStringLiteral("mA"), QStringLiteral("rw"), 5);
    QVERIFY(withDecimals.hasMin() && withDecimals.hasMax() && withDecimals.hasDefault() && withDecimals.hasUnit());
    QVERIFY(withDecimals.hasDecimals());
    QVERIFY(!plain.hasDecimals());
    // Deliberately different between the two kinds.
    QVERIFY(withDecimals.hasOptions());
    QVERIFY(!plain.hasOptions());
    QCOMPARE(plain.getUnit(), QStringLiteral("[mA]"));
    QCOMPARE(plain.getAccess(), 3);
    QCOMPARE(plain.getAccessAsString(), QStringLiteral("rw")); // kept as written
}

void TestNumericValues::stringFromValue()
{
    XmlValueSigned sign(0, 0, 0, 0, QString(), QString(), 0);
    XmlValueUnsigned unsign(0, 0, 0, 0, QString(), QString(), 0);
    QCOMPARE(sign.getStringFromValue(~0ULL), QStringLiteral("-1"));
    QCOMPARE(unsign.getStringFromValue(~0ULL), QStringLiteral("18446744073709551615"));
    QCOMPARE(sign.getStringFromValue(42), QStringLiteral("42"));
}

QTEST_GUILESS_MAIN(TestNumericValues)
#include "tst_numericvalues.moc"
