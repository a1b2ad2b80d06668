#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/KIVXmlParser.h"

#include <QSet>
#include <QtTest>

#include <memory>

// The example IC file parsed end to end, and the database element.
class TestIcExample : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void model();
    void variantsAndImpacts();
    void renderings();
    void database_data();
    void database();

private:
    XmlProductIC* m_ic = nullptr;
};

void TestIcExample::initTestCase()
{
    const QByteArray xml = TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml"));
    QVERIFY(!xml.isEmpty());
    LogCapture log;
    m_ic = qobject_cast<XmlProductIC*>(TestXml::parseProduct(xml).release());
    QVERIFY(m_ic);
    // every element of the file is known: the one message is the offset flag's own parse note
    QCOMPARE(log.texts().size(), 1);
    QVERIFY(log.texts().first().startsWith(QLatin1String("static XmlValueBool2* KIVXmlParser::parseValueBool2")));
}

void TestIcExample::cleanupTestCase()
{
    delete m_ic;
}

void TestIcExample::model()
{
    QCOMPARE(m_ic->name(), QStringLiteral("KIV5Q7"));
    QCOMPARE(m_ic->mainDescription()->size(), 3);
    QVERIFY(m_ic->mainDescription()->at(1).startsWith(QLatin1String("Serial host link & pulse/direction")));
    XmlRegisterSet* set = m_ic->registerSet();
    QVERIFY(set);
    QCOMPARE(set->getGroups()->size(), 6);
    QCOMPARE(set->getRegisters()->size(), 48);
    QCOMPARE(set->getRegistersMap()->size(), 48);
    QSet<int> sizes;
    int fields = 0;
    for (XmlValueRegister* reg : *set->getRegisters()) {
        sizes.insert(reg->getSize());
        QCOMPARE(set->getRegistersMap()->value(static_cast<unsigned char>(reg->address())), reg);
        for (XmlRegisterVariant* variant : *reg->getRegisterVariants()) {
            for (XmlValueRegisterField* field : *variant->getRegisterFields()) {
                ++fields;
                QVERIFY2(field->getValue(), qPrintable(field->getName()));
                QVERIFY2(!field->getErrorMask(), qPrintable(field->getName()));
            }
        }
    }
    QCOMPARE(fields, 127);
    QCOMPARE(sizes, QSet<int>({8, 16, 32}));
    QSet<QString> kinds;
    int alerts = 0;
    for (XmlValueRegister* reg : *set->getRegisters()) {
        for (XmlRegisterVariant* variant : *reg->getRegisterVariants()) {
            for (XmlValueRegisterField* field : *variant->getRegisterFields()) {
                kinds.insert(field->getValue()->getTypeAsString());
                alerts += field->getAlerts().size();
            }
        }
    }
    QCOMPARE(kinds, QSet<QString>({"Signed", "Unsigned", "Bool", "Choice", "Date", "Time", "Version", "ASCII"}));
    QCOMPARE(alerts, 8);
    QVERIFY(m_ic->pins());
    QCOMPARE(m_ic->pins()->getPackaging(), QStringLiteral("LGA30"));
    QCOMPARE(m_ic->pins()->getPinGroups()->size(), 4);
    int pins = 0;
    for (XmlPinGroup* group : *m_ic->pins()->getPinGroups())
        pins += group->getPins()->size();
    QCOMPARE(pins, 17);
}

void TestIcExample::variantsAndImpacts()
{
    XmlRegisterSet* set = m_ic->registerSet();
    XmlValueRegister* selector = set->getRegister(0x90);
    QVERIFY(selector);
    const QList<XmlRegisterVariantImpacts*>& impacts = *selector->getRegisterVariants()->first()->getImpacts();
    QCOMPARE(impacts.size(), 3);
    for (XmlRegisterVariantImpacts* entry : impacts) {
        XmlValueRegister* dependent = set->getRegister(entry->getAddress());
        QVERIFY(dependent);
        QCOMPARE(dependent->getRegisterVariants()->size(), 2);
        for (XmlRegisterVariant* variant : *dependent->getRegisterVariants()) {
            QCOMPARE(variant->getImpactedsBy()->size(), 1);
            QCOMPARE(variant->getImpactedsBy()->first()->getAddress(), 0x90u);
        }
    }
    XmlRegisterVariant* averaged = set->getRegister(0x94)->getRegisterVariants()->at(1);
    QCOMPARE(averaged->getName(), QStringLiteral("Averaged current & load sense"));
    QCOMPARE(averaged->getImpactedsBy()->first()->getRangeFrom(), 2ull);
    QCOMPARE(averaged->getImpactedsBy()->first()->getMaskValue(), 0x30ull);
    // load_trim covers bit 31: the casted value is sign-filled
    XmlValueRegisterField* trim = averaged->getRegisterFields()->last();
    QCOMPARE(trim->getName(), QStringLiteral("load_trim"));
    QCOMPARE(XmlValueRegisterField::getCastedRegisterFieldValue(trim, int(0xC0000000u)), -4);
    XmlValueRegisterField* ratioWhole
        = set->getRegister(0xA2)->getRegisterVariants()->first()->getRegisterFields()->first();
    QCOMPARE(ratioWhole->getName(), QStringLiteral("ratio_whole"));
    QCOMPARE(XmlValueRegisterField::getCastedRegisterFieldValue(ratioWhole, int(0xFFFF0000u)), -1);
}

void TestIcExample::renderings()
{
    const QString text = m_ic->toString();
    QVERIFY(text.startsWith(QLatin1String("Product: IC\nName: KIV5Q7\nVersion: 2.11\n")));
    QVERIFY(text.contains(QLatin1String("\tXmlValueRegister(address: 145, name: BRG_DECAY, size: 32, group: 4)")));
    QVERIFY(text.contains(QLatin1String("\t\tXmlRegisterVariant(name: Mixed decay), access: RW)")));
    const QString html = m_ic->toHtml();
    QVERIFY(html.contains(QLatin1String("<td>145 (0x91)</td>\n<td width=\"10%\">BRG_DECAY</td>")));
    QVERIFY(html.contains(QLatin1String("<td>Bridge and phase</td>\n<td>4</td>")));
    QVERIFY(html.endsWith(QLatin1String("\n</html>")));
    const QString map = m_ic->toLaTeXRegisterMap();
    QVERIFY(map.contains(
        QLatin1String("\n\\hexnum{0x91} & BRG\\_DECAY \\phantomsection \\label{REGISTER:BRG-DECAY} & &  \\\\")));
    QVERIFY(map.contains(
        QLatin1String("{REGISTER-FIELD:heat-off} & bit(25) & Bridge off by heat (die above 165\\degree C)")));
    QVERIFY(
        map.contains(QLatin1String("{REGISTER-FIELD:ripple-ofs} & s4(12:9) & Ripple window offset (-8 ... 7) \\\\")));
    QCOMPARE(map.count(QLatin1String("\\hline")), 49);
    const QString defaults = m_ic->toLaTeXRegisterMapDefaults();
    QVERIFY(defaults.contains(QLatin1String("RW & 0x\\hexnum{91} & {\\bf BRG\\_DECAY}")));
    QVERIFY(defaults.contains(
        QLatin1String("\\label{REGISTER-FIELD:die-temp} & 0 & $-$30 & 210 & Die temperature [\\degree{}C]")));
    QCOMPARE(defaults.count(QLatin1String("\\label{REGISTER:")), 48);
    QCOMPARE(m_ic->toLaTeXRegisterOverview().count(QLatin1String("\\hexnum")), 48);
    int grouped = 0;
    for (XmlGroup* group : *m_ic->registerSet()->getGroups())
        grouped += m_ic->toLaTeXRegisterOverviewByGroup(group).count(QLatin1String("\\hexnum"));
    QCOMPARE(grouped, 48);
}

void TestIcExample::database_data()
{
    QTest::addColumn<QByteArray>("children");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QByteArray()
                          << "XmlDatabase(for:  F, name: N)\n{\nR_Sense: 0\nV_SRTL: 0\nV_SRTH: 0\noffset: 0\n}";
    QTest::newRow("all") << QByteArray(
        "<value_db name=\"R_Sense\" value=\"220\"/><value_db name=\"V_SRTL\" value=\"165\"/>"
        "<value_db name=\"V_SRTH\" value=\"1\"/><value_db name=\"V_SRTH\" value=\"310\"/>"
        "<value_bool2 name=\"anything\" value=\"true\"/>")
                         << "XmlDatabase(for:  F, name: N)\n{\nR_Sense: 220\nV_SRTL: 165\nV_SRTH: 310\noffset: 1\n}";
    QTest::newRow("name case matters")
        << QByteArray("<value_db name=\"r_sense\" value=\"5\"/>"
                      "<value_bool2 value=\"true\"/><value_bool2 value=\"True\"/>")
        << "XmlDatabase(for:  F, name: N)\n{\nR_Sense: 0\nV_SRTL: 0\nV_SRTH: 0\noffset: 0\n}";
}

void TestIcExample::database()
{
    QFETCH(QByteArray, children);
    QFETCH(QString, text);
    TestXml::Reader reader("<database for=\"F\" name=\"N\">" + children + "</database>");
    std::unique_ptr<XmlDatabase> database(KIVXmlParser::parseDatabase(reader));
    QVERIFY(database);
    KIV_COMPARE_TEXT(database->toString(), text);
    QCOMPARE(m_ic->database()->getRSense(), 220u);
    QCOMPARE(m_ic->database()->getVSRTH(), 310u);
    QVERIFY(m_ic->database()->getOffset());
}

QTEST_GUILESS_MAIN(TestIcExample)
#include "tst_icexample.moc"
