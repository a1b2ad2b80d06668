#include "IcTest.h"
#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlGroup.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/KIVXmlParser.h"

#include <QtTest>

#include <memory>

class TestRegisters : public QObject
{
    Q_OBJECT
private slots:
    void registerAttributes_data();
    void registerAttributes();
    void fullAddressAndEightBitMap();
    void accessIsUnionOfVariants();
    void registerWithoutVariants();
    void groupChildrenAreReported();
    void registerSetUnknownChild();
    void truncatedRegisterIsNull();
    void registerSetDebugText();
};

void TestRegisters::registerAttributes_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<uint>("address");
    QTest::addColumn<int>("size");
    QTest::addColumn<uint>("group");
    QTest::newRow("hex") << QByteArray("<value_register address=\"0x6C\" size=\"32\" group=\"0x3\"/>") << 108u << 32
                         << 3u;
    QTest::newRow("decimal") << QByteArray("<value_register address=\"108\" size=\"16\" group=\"3\"/>") << 108u << 16
                             << 3u;
    QTest::newRow("octal") << QByteArray("<value_register address=\"0154\" size=\"8\" group=\"010\"/>") << 108u << 8
                           << 8u;
    QTest::newRow("size is base 10") << QByteArray("<value_register address=\"1\" size=\"0x20\"/>") << 1u << 0 << 0u;
    QTest::newRow("junk") << QByteArray("<value_register address=\"x\" size=\"8b\" group=\"-1\"/>") << 0u << 0 << 0u;
}

void TestRegisters::registerAttributes()
{
    QFETCH(QByteArray, xml);
    QFETCH(uint, address);
    QFETCH(int, size);
    QFETCH(uint, group);
    TestXml::Reader reader(xml);
    std::unique_ptr<XmlValueRegister> reg(KIVXmlParser::parseValueRegister(reader));
    QVERIFY(reg);
    QCOMPARE(reg->address(), address);
    QCOMPARE(reg->getSize(), size);
    QCOMPARE(reg->getGroupID(), group);
    QCOMPARE(reg->getType(), 5);
}

void TestRegisters::fullAddressAndEightBitMap()
{
    TestXml::Reader reader("<register_set><value_register address=\"0x101\" name=\"high\"/>"
                           "<value_register address=\"0x01\" name=\"low\"/>"
                           "<value_register address=\"0x101\" name=\"again\"/></register_set>");
    std::unique_ptr<XmlRegisterSet> set(KIVXmlParser::parseRegisterSet(reader));
    QVERIFY(set);
    QCOMPARE(set->getRegisters()->size(), 3);
    QCOMPARE(set->getRegister(0x101)->name(), QStringLiteral("high"));
    QCOMPARE(set->getRegister(0x01)->name(), QStringLiteral("low"));
    QVERIFY(!set->getRegister(0x02));
    QCOMPARE(set->getRegistersMap()->size(), 1);
    QCOMPARE(set->getRegistersMap()->value(0x01)->name(), QStringLiteral("again"));
    set->appendValueRegister(nullptr);
    set->appendGroup(nullptr);
    QCOMPARE(set->getRegisters()->size(), 3);
    QVERIFY(set->getGroups()->isEmpty());
}

void TestRegisters::accessIsUnionOfVariants()
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

void TestRegisters::registerWithoutVariants()
{
    XmlValueRegister reg(0x10, QStringLiteral("R"), 8, 2);
    QCOMPARE(reg.getAccess(), 0);
    QCOMPARE(reg.getAccessAsString(), QString());
    QCOMPARE(reg.getStringFromValue(0), QStringLiteral("0"));
    QCOMPARE(reg.getStringFromValue(255), QStringLiteral("FF"));
    QCOMPARE(reg.getStringFromValue(0x1ABCDEF01ull), QStringLiteral("1ABCDEF01"));
    KIV_COMPARE_TEXT(reg.toHtml(),
        IcTest::kWide
            + QStringLiteral("\n<tr>\n<td width=\"10%\">Address</td>\n<td>Name</td>\n<td>Size</td>\n<td>Group(s)</td>"
                             "\n</tr>\n<tr>\n<td>16 (0x10)</td>\n<td width=\"10%\">R</td>\n<td width=\"10%\">8</td>"
                             "\n<td>(2)</td>\n</tr>\n</table>"));
    XmlValueRegister wide(0x1234, QString(), 0, 0);
    QVERIFY(wide.toHtml().contains(QLatin1String("<td>4660 (0x1234)</td>")));
}

void TestRegisters::groupChildrenAreReported()
{
    LogCapture log;
    TestXml::Reader reader("<group name=\"Motor\" id=\"0x10\"><a/><b><c/></b></group>");
    std::unique_ptr<XmlGroup> group(KIVXmlParser::parseGroup(reader));
    QVERIFY(group);
    QCOMPARE(group->getName(), QStringLiteral("Motor"));
    QCOMPARE(group->getID(), 16u);
    const QString sig = QStringLiteral("static XmlGroup* KIVXmlParser::parseGroup(QXmlStreamReader*) ");
    QCOMPARE(log.texts(), QStringList({sig + "\"a\"", sig + "\"b\"", sig + "\"c\""}));
}

void TestRegisters::registerSetUnknownChild()
{
    LogCapture log;
    TestXml::Reader reader("<register_set><junk/><value_register><odd/></value_register></register_set>");
    std::unique_ptr<XmlRegisterSet> set(KIVXmlParser::parseRegisterSet(reader));
    QVERIFY(set);
    QCOMPARE(log.texts(),
        QStringList({QStringLiteral(
                         "static XmlRegisterSet* KIVXmlParser::parseRegisterSet(QXmlStreamReader*) could not parse: "
                         "\"junk\""),
            QStringLiteral("static XmlValueRegister* KIVXmlParser::parseValueRegister(QXmlStreamReader*) \"odd\"")}));
}

void TestRegisters::truncatedRegisterIsNull()
{
    TestXml::Reader reader("<value_register address=\"1\"><register_variant name=\"v\">"
                           "<value_register_field name=\"f\" mask=\"1\">");
    QVERIFY(!KIVXmlParser::parseValueRegister(reader));
}

void TestRegisters::registerSetDebugText()
{
    TestXml::Reader reader("<register_set for=\"KIV\" name=\"regs\"><group name=\"A\" id=\"1\"/>"
                           "<group name=\"B\" id=\"2\"/><value_register address=\"0x20\" name=\"R\" size=\"16\" "
                           "group=\"1\"><register_variant name=\"v\"/></value_register></register_set>");
    std::unique_ptr<XmlRegisterSet> set(KIVXmlParser::parseRegisterSet(reader));
    QVERIFY(set);
    KIV_COMPARE_TEXT(set->toString(),
        QStringLiteral("XmlRegisterSet(for: KIV, name: regs)\n{\n\tXmlGroup(name: A, id: 1)\n"
                       "\tXmlGroup(name: B, id: 2)\n\tXmlValueRegister(address: 32, name: R, size: 16, group: 1)\n"
                       "\t{\n\t\tXmlRegisterVariant(name: v), access: )\n\t\t{\n\t\t}\n\t}\n}"));
}

QTEST_GUILESS_MAIN(TestRegisters)
#include "tst_registers.moc"
