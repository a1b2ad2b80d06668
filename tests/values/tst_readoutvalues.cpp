#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueVersion.h"

#include <QtTest>

#include <memory>

namespace {

std::unique_ptr<XmlValueReadOut> parseReadOut(const QByteArray& xml)
{
    TestXml::Reader reader(xml);
    const QStringRef name = reader.get()->name();
    if (name == QLatin1String("value_date"))
        return std::unique_ptr<XmlValueReadOut>(KIVXmlParser::parseValueDate(reader));
    if (name == QLatin1String("value_time"))
        return std::unique_ptr<XmlValueReadOut>(KIVXmlParser::parseValueTime(reader));
    if (name == QLatin1String("value_version"))
        return std::unique_ptr<XmlValueReadOut>(KIVXmlParser::parseValueVersion(reader));
    return std::unique_ptr<XmlValueReadOut>(KIVXmlParser::parseValueASCII(reader));
}

} // namespace

class TestReadOutValues : public QObject
{
    Q_OBJECT
private slots:
    void rendering_data();
    void rendering();
    void debugTextAndRange_data();
    void debugTextAndRange();
    void latexTable_data();
    void latexTable();
};

void TestReadOutValues::rendering_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<unsigned long long>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("date") << QByteArray("<value_date/>") << 0x20240315ULL << "2024-03-15";
    QTest::newRow("date zero") << QByteArray("<value_date/>") << 0ULL << "0000-00-00";
    QTest::newRow("date nibble A") << QByteArray("<value_date/>") << 0x2024031AULL << "2024-03-110";
    QTest::newRow("date high bits ignored") << QByteArray("<value_date/>") << 0x1220240315ULL << "2024-03-15";
    QTest::newRow("time") << QByteArray("<value_time/>") << 0x00143005ULL << "14:30:05";
    QTest::newRow("time top byte ignored") << QByteArray("<value_time/>") << 0xFF143005ULL << "14:30:05";
    QTest::newRow("version") << QByteArray("<value_version/>") << 0x00010203ULL << "1.203";
    QTest::newRow("version zeros") << QByteArray("<value_version/>") << 0x00020010ULL << "2.10";
    QTest::newRow("version zero") << QByteArray("<value_version/>") << 0ULL << "0.0";
    QTest::newRow("version nibble F") << QByteArray("<value_version/>") << 0x000F0000ULL << "15.0";
    QTest::newRow("ascii") << QByteArray("<value_ascii/>") << 0x41424344ULL << "ABCD";
    QTest::newRow("ascii zero") << QByteArray("<value_ascii/>") << 0ULL << "";
    QTest::newRow("ascii space and 128") << QByteArray("<value_ascii/>") << 0x8041422031ULL << "?AB?1";
    QTest::newRow("ascii 64 bits") << QByteArray("<value_ascii/>") << 0x4800000000000049ULL << "HI";
}

void TestReadOutValues::rendering()
{
    QFETCH(QByteArray, xml);
    QFETCH(unsigned long long, value);
    QFETCH(QString, text);
    QCOMPARE(parseReadOut(xml)->getStringFromValue(value), text);
}

void TestReadOutValues::debugTextAndRange_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");
    QTest::addColumn<long long>("max");
    QTest::addColumn<QString>("className");
    QTest::newRow("date") << QByteArray("<value_date access=\"r\" desc_short=\"Build\" desc_long=\"BCD \\u00b0\"/>")
                          << "\tXmlValueDate(desc_short: Build, desc_long: BCD \\u00b0, access: r)" << 4294967295LL
                          << "XmlValueInterface";
    QTest::newRow("time") << QByteArray("<value_time/>") << "\tXmlValueTime(desc_short: , desc_long: , access: )"
                          << 16777215LL << "XmlValueInterface";
    QTest::newRow("version") << QByteArray("<value_version desc_short=\"v\"/>")
                             << "\tXmlValueVersion(desc_short: v, desc_long: , access: )" << 4294967295LL
                             << "XmlValueInterface";
    QTest::newRow("ascii") << QByteArray("<value_ascii access=\"R\"/>")
                           << "\tXmlValueASCII(desc_short: , desc_long: , access: R)" << 4294967295LL
                           << "XmlValueASCII";
}

void TestReadOutValues::debugTextAndRange()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, text);
    QFETCH(long long, max);
    QFETCH(QString, className);
    const std::unique_ptr<XmlValueReadOut> value = parseReadOut(xml);
    QCOMPARE(value->toString(QString()), text);
    QCOMPARE(QString::fromLatin1(value->metaObject()->className()), className);
    QCOMPARE(value->getMax(), max);
    QVERIFY(!value->hasMin() && !value->hasMax() && !value->hasDefault() && !value->hasUnit());
    const XmlValueDescriptions map = value->getValueDescriptions();
    QCOMPARE(map.keys(), QList<unsigned int> {0});
    QCOMPARE(map.value(0).first, value->getDescriptionShort());
}

// Unlike the base table, the data row is closed and a row with the short description follows.
void TestReadOutValues::latexTable_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("latex");
    QTest::newRow("time") << QByteArray("<value_time access=\"r\" desc_short=\"Build time\" desc_long=\"long\"/>")
                          << "\n  \\begin{tabular}{|l|l|l|l|}"
                             "\n  \t\\hline"
                             "\n  \t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: Time} \\\\ \\hline"
                             "\n  \tMin & Max & Default & Unit\\\\ \\hline"
                             "\n  \t0 & 16777215 & 0 & - \\\\ \\hline"
                             "\n  \t\\multicolumn{4}{|c|}{Build time}"
                             "\n  \\end{tabular}";
    QTest::newRow("ascii without description")
        << QByteArray("<value_ascii/>")
        << "\n  \\begin{tabular}{|l|l|l|l|}"
           "\n  \t\\hline"
           "\n  \t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: ASCII} \\\\ \\hline"
           "\n  \tMin & Max & Default & Unit\\\\ \\hline"
           "\n  \t0 & 4294967295 & 0 & - \\\\ \\hline"
           "\n  \t\\multicolumn{4}{|c|}{}"
           "\n  \\end{tabular}";
}

void TestReadOutValues::latexTable()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, latex);
    KIV_COMPARE_TEXT(parseReadOut(xml)->toLatex(QStringLiteral("  ")), latex);
}

QTEST_GUILESS_MAIN(TestReadOutValues)
#include "tst_readoutvalues.moc"
