#include "IcTest.h"
#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlDatabase.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "product/KIVXmlParser.h"

#include <QtTest>

class TestIcProduct : public QObject
{
    Q_OBJECT
private slots:
    void headerAndDescriptions();
    void noAttributes();
    void unknownChildDropsNextToken();
    void repeatedPartsKeepTheLast();
    void truncated_data();
    void truncated();
    void writeRecord();
    void debugText();
    void html();
};

static XmlProductIC* asIc(const std::unique_ptr<XmlProductInterface>& product)
{
    return qobject_cast<XmlProductIC*>(product.get());
}

static const QByteArray kSmall = "<product_ic name=\"N\" version=\"V\" author=\"A\" date=\"D\">"
                                 "<desc>one \\x26 two</desc><desc/><desc>\\u00e9t\\u00E9</desc>"
                                 "<register_set for=\"F\" name=\"S\"><group name=\"G\" id=\"0x2\"/>"
                                 "<value_register address=\"0x10\" name=\"R\" size=\"8\" group=\"2\">"
                                 "<register_variant name=\"DEFAULT\"><desc>d</desc>"
                                 "<value_register_field name=\"f_a\" shift=\"4\" mask=\"F0\" desc_short=\"s\" "
                                 "desc_long=\"l\"/></register_variant></value_register></register_set></product_ic>";

void TestIcProduct::headerAndDescriptions()
{
    auto product = TestXml::parseProduct(kSmall);
    XmlProductIC* ic = asIc(product);
    QVERIFY(ic);
    QCOMPARE(ic->type(), 0);
    QCOMPARE(ic->name(), QStringLiteral("N"));
    QCOMPARE(ic->version(), QStringLiteral("V"));
    QCOMPARE(ic->author(), QStringLiteral("A"));
    QCOMPARE(ic->date(), QStringLiteral("D"));
    QCOMPARE(*ic->mainDescription(), QStringList({QStringLiteral("one & two"), QString::fromUtf8("été")}));
    QVERIFY(ic->registerSet());
    QVERIFY(!ic->pins());
    QVERIFY(!ic->database());
    QCOMPARE(ic->toLaTeXHeader(), QString());
}

void TestIcProduct::noAttributes()
{
    auto product = TestXml::parseProduct("<product_ic></product_ic>");
    XmlProductIC* ic = asIc(product);
    QVERIFY(ic);
    QVERIFY(ic->name().isEmpty() && ic->version().isEmpty() && ic->author().isEmpty() && ic->date().isEmpty());
    QCOMPARE(ic->toString(), QStringLiteral("Product: IC\nName: \nVersion: \nAuthor: "));
}

void TestIcProduct::unknownChildDropsNextToken()
{
    LogCapture log;
    auto product = TestXml::parseProduct("<product_ic><extra><desc>lost</desc></extra><desc>kept</desc></product_ic>");
    XmlProductIC* ic = asIc(product);
    QVERIFY(ic);
    QCOMPARE(*ic->mainDescription(), QStringList({QStringLiteral("kept")}));
    QCOMPARE(log.texts(),
        QStringList(
            {QStringLiteral("static XmlProductIC* KIVXmlParser::parseProductIC(QXmlStreamReader*) \"extra\"")}));
}

void TestIcProduct::repeatedPartsKeepTheLast()
{
    // The first of each is replaced; the sanitizer run shows that it is freed.
    auto product = TestXml::parseProduct("<product_ic><register_set name=\"a\"/><register_set name=\"b\"/>"
                                         "<pins packaging=\"a\"/><pins packaging=\"b\"/>"
                                         "<database name=\"a\"/><database name=\"b\"/></product_ic>");
    XmlProductIC* ic = asIc(product);
    QVERIFY(ic);
    QCOMPARE(ic->registerSet()->getName(), QStringLiteral("b"));
    QCOMPARE(ic->pins()->getPackaging(), QStringLiteral("b"));
    QCOMPARE(ic->database()->getName(), QStringLiteral("b"));
}

void TestIcProduct::truncated_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("in the root") << QByteArray("<product_ic name=\"x\"><desc>a</desc>");
    QTest::newRow("in a register") << kSmall.left(kSmall.indexOf("</register_variant>"));
    QTest::newRow("in the pins") << QByteArray("<product_ic><pins><pin_group id=\"1\"><pin id=\"2\"/>");
    QTest::newRow("in the database") << QByteArray("<product_ic><database name=\"d\">");
}

void TestIcProduct::truncated()
{
    QFETCH(QByteArray, xml);
    LogCapture log;
    QVERIFY(!TestXml::parseProduct(xml));
    QVERIFY(log.matching(QStringLiteral("KIVXmlParser::parse")).isEmpty());
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
    QCOMPARE(written->size(), 3);
    QCOMPARE(written->value(0x10), 1);
    QCOMPARE(written->value(0x20), 7);
    QCOMPARE(written->value(0x30), -2147483647);
    QCOMPARE(ic.registerHasWritten(&order), written); // the product's own containers
}

void TestIcProduct::debugText()
{
    auto product = TestXml::parseProduct(kSmall);
    QVERIFY(asIc(product));
    KIV_COMPARE_TEXT(asIc(product)->toString(),
        QString::fromUtf8("Product: IC\nName: N\nVersion: V\nAuthor: A\nDescription[0]: one & two\n"
                          "Description[1]: été\n"
                          "XmlRegisterSet(for: F, name: S)\n{\n\tXmlGroup(name: G, id: 2)\n"
                          "\tXmlValueRegister(address: 16, name: R, size: 8, group: 2)\n\t{\n"
                          "\t\tXmlRegisterVariant(name: DEFAULT), access: )\n\t\t{\n\t\t\tdescription[0]: d\n"
                          "\t\t\tXmlValueRegisterField(name: f_a, shift: 4, maskString: F0, maskValue: 240, "
                          "desc_short: s, desc_long: l)\n\t\t\t{\n\t\t\t}\n\t\t}\n\t}\n}"));
}

void TestIcProduct::html()
{
    auto product = TestXml::parseProduct("<product_ic name=\"N\" version=\"V\"><desc>a</desc><desc>b</desc>"
                                         "<register_set><group name=\"G\" id=\"3\"/>"
                                         "<value_register address=\"1\" name=\"R\" size=\"8\" group=\"3\"/>"
                                         "</register_set></product_ic>");
    QVERIFY(asIc(product));
    const QString reg = IcTest::kWide
        + QStringLiteral("\n<tr>\n<td width=\"10%\">Address</td>\n<td>Name</td>\n<td>Size</td>\n<td>Group(s)</td>"
                         "\n</tr>\n<tr>\n<td>1 (0x01)</td>\n<td width=\"10%\">R</td>\n<td width=\"10%\">8</td>"
                         "\n<td>(3)</td>\n</tr>\n</table>");
    KIV_COMPARE_TEXT(asIc(product)->toHtml(),
        QStringLiteral("<html>\n<h3>N</h3>\nVersion: V\n<h4>Descriptions</h4>\na<br>\nb<br>\n<h3>Register</h3>") + reg
            + QStringLiteral("\n<h3>Register groups</h3>\n<table border=\"1\" border-style=\"solid\" cellspacing=\"2\" "
                             "cellpadding=\"5\">\n<tr>\n<td>Name</td>\n<td>ID</td>\n</tr>\n<tr>\n<td>G</td>\n<td>3</td>"
                             "\n</tr>\n</table>\n</html>"));
    XmlProductIC empty;
    QCOMPARE(empty.toHtml(), QStringLiteral("<html>\n<h3></h3>\nVersion: \n<h4>Descriptions</h4>\n</html>"));
}

QTEST_GUILESS_MAIN(TestIcProduct)
#include "tst_icproduct.moc"
