#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueDb.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueUnsigned.h"
#include "values/XmlValueVersion.h"

#include <QtTest>

#include <memory>

// Value descriptors: attribute conversions at their limits, value-to-text conversions, ranges and the
// description maps. Their debug and LaTeX texts inside whole products are compared in tst_references.

namespace {

// The smallest concrete descriptor: everything else is the base class's.
class PlainValue : public XmlValueInterface
{
public:
    explicit PlainValue(int type)
        : XmlValueInterface(type)
    { }
    QString toString(QString indent) override { return indent; }
    QString getStringFromValue(unsigned long long) override { return QString(); }
};

/// The debug text of the value element in `xml`; checks that the reader stops on the element's end tag.
QString parseValue(const QByteArray& xml)
{
    TestXml::Reader reader(xml + "<after/>");
    const QString name = reader.get()->name().toString();
    std::unique_ptr<XmlValueInterface> value;
    if (name == QLatin1String("value_signed"))
        value.reset(KIVXmlParser::parseValueSigned(reader));
    else if (name == QLatin1String("value_unsigned"))
        value.reset(KIVXmlParser::parseValueUnsigned(reader));
    else if (name == QLatin1String("value_bool"))
        value.reset(KIVXmlParser::parseValueBool(reader));
    else if (name == QLatin1String("value_bool2"))
        value.reset(KIVXmlParser::parseValueBool2(reader));
    else if (name == QLatin1String("value_db"))
        value.reset(KIVXmlParser::parseValueDb(reader));
    else if (name == QLatin1String("value_alert")) {
        std::unique_ptr<XmlValueAlert> alert(KIVXmlParser::parseValueAlert(reader));
        return alert && reader.get()->tokenType() == QXmlStreamReader::EndElement ? alert->toString(QString())
                                                                                  : QStringLiteral("null");
    } else if (name == QLatin1String("value_choice"))
        value.reset(KIVXmlParser::parseValueChoice(reader));
    if (!value)
        return QStringLiteral("null");
    // Attribute-only values stay on their start tag; the others consume their element up to its end tag.
    const bool atStart = name == QLatin1String("value_signed") || name == QLatin1String("value_unsigned")
        || name == QLatin1String("value_bool");
    if (reader.get()->name() != name || (reader.get()->tokenType() == QXmlStreamReader::StartElement) != atStart)
        return QStringLiteral("reader left on ") + reader.get()->name();
    return value->toString(QString());
}

std::unique_ptr<XmlValueReadOut> readOut(const QString& kind)
{
    const QString access = QStringLiteral("r");
    if (kind == QLatin1String("date"))
        return std::make_unique<XmlValueDate>(access, QString(), QString());
    if (kind == QLatin1String("time"))
        return std::make_unique<XmlValueTime>(access, QString(), QString());
    if (kind == QLatin1String("version"))
        return std::make_unique<XmlValueVersion>(access, QString(), QString());
    return std::make_unique<XmlValueASCII>(access, QString(), QString());
}

} // namespace

class TestValues : public QObject
{
    Q_OBJECT
private slots:
    void access_data();
    void access();
    void unitAndTypeName();
    void parse_data();
    void parse();
    void logOfTheFlag();
    void numericFields();
    void readOutText_data();
    void readOutText();
    void readOutRange();
    void boolValues();
    void choiceRangeAndText_data();
    void choiceRangeAndText();
    void choiceDescriptions();
};

void TestValues::access_data()
{
    QTest::addColumn<QString>("access");
    QTest::addColumn<int>("mask");
    QTest::addColumn<QString>("canonical");
    QTest::newRow("rw") << "rw" << 3 << "RW";
    QTest::newRow("xe") << "xe" << 12 << "EX";
    QTest::newRow("xwr") << "xwr" << 11 << "RWX";
    QTest::newRow("repeated and unknown") << "rrz" << 1 << "R";
    QTest::newRow("all") << "axedicwr" << 255 << "RWCIDEAX";
    QTest::newRow("none") << "" << 0 << "";
    QTest::newRow("no letters") << "-+9" << 0 << "";
}

void TestValues::access()
{
    QFETCH(QString, access);
    QFETCH(int, mask);
    QFETCH(QString, canonical);
    QCOMPARE(XmlValueInterface::accessStringToAccess(access), mask);
    QCOMPARE(XmlValueInterface::accessToAccessString(mask), canonical);
    PlainValue value(0);
    value.setAccessString(access);
    QCOMPARE(value.getAccess(), mask);
    QCOMPARE(value.getAccessAsString(), canonical);
}

void TestValues::unitAndTypeName()
{
    PlainValue value(1);
    const QList<QPair<QString, QString>> units {{"mA", "[mA]"}, {"[mA]", "[mA]"}, {"", ""}, {"mA]", "[mA]]"}};
    for (const auto& unit : units) {
        value.setUnit(unit.first);
        QCOMPARE(value.getUnit(), unit.second);
    }
    QCOMPARE(XmlValueInterface::accessToAccessString(256 | 1), QStringLiteral("R"));
    QCOMPARE(XmlValueInterface::getTypeAsString(11), QStringLiteral("Db"));
    QCOMPARE(XmlValueInterface::getTypeAsString(12), QStringLiteral("tbd"));
    QCOMPARE(XmlValueInterface::getTypeAsString(-1), QStringLiteral("tbd"));
}

void TestValues::parse_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");
    QTest::newRow("signed")
        << QByteArray("<value_signed min=\"-100\" max=\"100\" decimals=\"1\" unit=\"V\" access=\"RW\" options=\"65\"/>")
        << "\tXmlValueSigned(min: -100, max: 100, def: 0, decimals: 1, unit: [V], access: RW, options: A)";
    QTest::newRow("signed: hex and junk read as 0, format ignored")
        << QByteArray("<value_signed min=\"0x10\" max=\"5x\" default=\"-5\" formatMul=\"2\" access=\"wr\"/>")
        << QString("\tXmlValueSigned(min: 0, max: 0, def: -5, decimals: 0, unit: , access: wr, options: ") + QChar(0)
            + ")";
    QTest::newRow("signed: out of range, escaped unit")
        << QByteArray("<value_signed min=\"-2147483649\" max=\"2147483647\" unit=\"\\u00b0C\"/>")
        << QString("\tXmlValueSigned(min: 0, max: 2147483647, def: 0, decimals: 0, unit: [\u00b0C], access: , "
                   "options: ")
            + QChar(0) + ")";
    QTest::newRow("unsigned") << QByteArray(
        "<value_unsigned min=\"1\" max=\"4294967295\" default=\"7\" decimals=\"-1\" "
        "unit=\"[mA]\" formatString=\"%1 mA\" formatMul=\"0.5\" "
        "formatDiv=\"1000000\" access=\"r\" options=\"3\"/>")
                              << "\tXmlValueUnsigned(min: 1, max: 4294967295, def: 7, decimals: -1, unit: [mA], "
                                 "formatString: %1 mA, formatMul: 0.5, formatDiv: 1e+06, access: r, options: 3)";
    QTest::newRow("unsigned: zero or junk factors keep the defaults")
        << QByteArray(
               "<value_unsigned min=\"-1\" max=\"4294967296\" formatString=\"\" formatMul=\"0\" formatDiv=\"abc\"/>")
        << "\tXmlValueUnsigned(min: 0, max: 0, def: 0, decimals: 0, unit: , formatString: %1 , formatMul: 1, "
           "formatDiv: 1, access: , options: 0)";
    QTest::newRow("bool: trueValue") << QByteArray("<value_bool desc_short_false=\"off\" desc_long_false=\"\\u00b0\" "
                                                   "default=\"trueValue\" access=\"rw\"/>")
                                     << QString("\tXmlValueBool(desc_short_false: off, desc_short_true: , "
                                                "desc_long_false: \u00b0, desc_long_true: , def: true, access: rw)");
    QTest::newRow("bool: TRUE") << QByteArray("<value_bool default=\"TRUE\"/>")
                                << "\tXmlValueBool(desc_short_false: , desc_short_true: , desc_long_false: , "
                                   "desc_long_true: , def: true, access: )";
    QTest::newRow("bool: 1 is false") << QByteArray("<value_bool default=\"1\"/>")
                                      << "\tXmlValueBool(desc_short_false: , desc_short_true: , desc_long_false: , "
                                         "desc_long_true: , def: false, access: )";
    QTest::newRow("flag: True is false") << QByteArray("<value_bool2 name=\"f\" value=\"True\"><x/></value_bool2>")
                                         << "\tXmlValueBool2(name: f, value: 0)";
    QTest::newRow("db: full 32 bits") << QByteArray("<value_db name=\"R_Sense\" value=\"4294967295\"></value_db>")
                                      << "\tXmlValueDb(name: R_Sense, value: 4294967295)";
    QTest::newRow("db: negative, name as written")
        << QByteArray("<value_db name=\"V\\u00b0\" value=\"-1\"/>") << "\tXmlValueDb(name: V\\u00b0, value: 0)";
    QTest::newRow("alert: text as written") << QByteArray("<value_alert text=\"R &amp; \\u00b0\"><b/></value_alert>")
                                            << "\tXmlValueAlert(text: R & \\u00b0)";
    QTest::newRow("choice: escapes, and elements inside an unknown child")
        << QByteArray("<value_choice default=\"2\" unit=\"\\u00b5A\" access=\"rw\">"
                      "<choice_element value=\"1\" desc_short=\"Step &amp; Direction\" desc_long=\"\\u00b0\"/>"
                      "<extra><choice_element value=\"x\" desc_short=\"nested\"/></extra></value_choice>")
        << QString("\tXmlValueChoice(def: 2, unit: \u00b5A, access: rw)\n\t{\n"
                   "\t\tXmlValueChoiceElement(value: 1, desc_short: Step \\x26 Direction, desc_long: \u00b0)\n"
                   "\t\tXmlValueChoiceElement(value: 0, desc_short: nested, desc_long: )\n\t}");
}

void TestValues::parse()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, text);
    const LogCapture quiet;
    QCOMPARE(parseValue(xml), text);
}

void TestValues::logOfTheFlag()
{
    LogCapture log;
    parseValue("<value_bool2 name=\"offset\" value=\"true\"/>");
    QCOMPARE(log.texts(),
        QStringList("static XmlValueBool2* KIVXmlParser::parseValueBool2(QXmlStreamReader*) \"offset\" ,  1"));
}

void TestValues::numericFields()
{
    XmlValueSigned withDecimals(0, 1, 0, -1, QString(), QStringLiteral("rw"), 0);
    XmlValueUnsigned plain(0, 1, 0, 0, QStringLiteral("mA"), QStringLiteral("rw"), 5);
    QVERIFY(withDecimals.hasMin() && withDecimals.hasMax() && withDecimals.hasDefault() && withDecimals.hasUnit());
    QVERIFY(withDecimals.hasDecimals() && !plain.hasDecimals());
    QVERIFY(withDecimals.hasOptions() && !plain.hasOptions()); // deliberately different between the two kinds
    QCOMPARE(plain.getUnit(), QStringLiteral("[mA]"));
    QCOMPARE(plain.getAccess(), 3);
    QCOMPARE(plain.getAccessAsString(), QStringLiteral("rw")); // kept as written
    QCOMPARE(withDecimals.getStringFromValue(~0ULL), QStringLiteral("-1"));
    QCOMPARE(plain.getStringFromValue(~0ULL), QStringLiteral("18446744073709551615"));
    QCOMPARE(withDecimals.getStringFromValue(42), QStringLiteral("42"));
    PlainValue base(7);
    QVERIFY(!base.hasMin() && !base.hasMax() && !base.hasDefault() && !base.hasDecimals() && !base.hasUnit());
    QVERIFY(base.hasAccess() && !base.hasOptions());
}

void TestValues::readOutText_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<unsigned long long>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("date") << "date" << 0x20240315ULL << "2024-03-15";
    QTest::newRow("date zero") << "date" << 0ULL << "0000-00-00";
    QTest::newRow("date nibble A") << "date" << 0x2024031AULL << "2024-03-110";
    QTest::newRow("date high bits ignored") << "date" << 0x1220240315ULL << "2024-03-15";
    QTest::newRow("time") << "time" << 0x00143005ULL << "14:30:05";
    QTest::newRow("time top byte ignored") << "time" << 0xFF143005ULL << "14:30:05";
    QTest::newRow("version") << "version" << 0x00010203ULL << "1.203";
    QTest::newRow("version zeros") << "version" << 0x00020010ULL << "2.10";
    QTest::newRow("version zero") << "version" << 0ULL << "0.0";
    QTest::newRow("version nibble F") << "version" << 0x000F0000ULL << "15.0";
    QTest::newRow("ascii") << "ascii" << 0x41424344ULL << "ABCD";
    QTest::newRow("ascii zero") << "ascii" << 0ULL << "";
    QTest::newRow("ascii space and 128") << "ascii" << 0x8041422031ULL << "?AB?1";
    QTest::newRow("ascii 64 bits") << "ascii" << 0x4800000000000049ULL << "HI";
}

void TestValues::readOutText()
{
    QFETCH(QString, kind);
    QFETCH(unsigned long long, value);
    QFETCH(QString, text);
    QCOMPARE(readOut(kind)->getStringFromValue(value), text);
}

void TestValues::readOutRange()
{
    const QList<QPair<QString, long long>> maxima {
        {"date", 4294967295LL}, {"time", 16777215LL}, {"version", 4294967295LL}, {"ascii", 4294967295LL}};
    for (const auto& kind : maxima) {
        auto value = readOut(kind.first);
        QCOMPARE(value->getMax(), kind.second);
        QVERIFY(!value->hasMin() && !value->hasMax() && !value->hasDefault() && !value->hasUnit());
        const XmlValueDescriptions map = value->getValueDescriptions();
        QCOMPARE(map.keys(), QList<unsigned int> {0});
        QCOMPARE(map.value(0).first, value->getDescriptionShort());
    }
}

void TestValues::boolValues()
{
    XmlValueBool value(
        true, QStringLiteral("r"), QStringLiteral("fs"), QStringLiteral("ts"), QString(), QStringLiteral("tl"));
    QCOMPARE(value.getMax(), 1LL);
    QVERIFY(value.hasDefault() && !value.hasMin() && !value.hasMax() && !value.hasUnit());
    QCOMPARE(value.getStringFromValue(0), QStringLiteral("low"));
    QCOMPARE(value.getStringFromValue(2), QStringLiteral("high"));
    QCOMPARE(value.getStringFromValue(1ULL << 32), QStringLiteral("high"));
    const XmlValueDescriptions map = value.getValueDescriptions();
    QCOMPARE(map.size(), 2);
    QCOMPARE(map.value(0), qMakePair(QStringLiteral("fs"), QString()));
    QCOMPARE(map.value(1), qMakePair(QStringLiteral("ts"), QStringLiteral("tl")));
    XmlValueBool2 flag(QStringLiteral("n"), true);
    QCOMPARE(flag.getStringFromValue(1), QStringLiteral("tbd"));
    QCOMPARE(
        flag.toHtml(), QStringLiteral("<table>\n<tr>\n<td width=\"10%\">Name</td>\n<td>Value</td>\n</tr>\n</table>"));
}

void TestValues::choiceRangeAndText_data()
{
    QTest::addColumn<unsigned long long>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("first match") << 1ULL << "one";
    QTest::newRow("no match") << 7ULL << "suggest:last";
    QTest::newRow("above 32 bits") << 0x100000001ULL << "suggest:last";
}

void TestValues::choiceRangeAndText()
{
    QFETCH(unsigned long long, value);
    QFETCH(QString, text);
    XmlValueChoice choice(0, QString(), QString());
    for (unsigned int element : {3u, 1u, 2u, 4000000000u})
        choice.appendElement(new XmlValueChoiceElement(element, QString(), QString()));
    QCOMPARE(choice.getMin(), 1LL);
    QCOMPARE(choice.getMax(), 4000000000LL);
    XmlValueChoice named(0, QString(), QString());
    named.appendElement(new XmlValueChoiceElement(1, QStringLiteral("one"), QString()));
    named.appendElement(new XmlValueChoiceElement(1, QStringLiteral("again"), QString()));
    named.appendElement(new XmlValueChoiceElement(2, QStringLiteral("last"), QString()));
    QCOMPARE(named.getStringFromValue(value), text);
    QCOMPARE(XmlValueChoice(0, QString(), QString()).getStringFromValue(value), QStringLiteral("suggest:"));
}

void TestValues::choiceDescriptions()
{
    XmlValueChoice choice(0, QString(), QString());
    choice.appendElement(new XmlValueChoiceElement(1, QStringLiteral("a"), QStringLiteral("long a")));
    choice.appendElement(new XmlValueChoiceElement(1, QStringLiteral("b"), QString()));
    choice.appendElement(new XmlValueChoiceElement(5, QStringLiteral("c"), QStringLiteral("long c")));
    const XmlValueDescriptions map = choice.getValueDescriptions();
    QCOMPARE(map.size(), 2);
    QCOMPARE(map.value(1), qMakePair(QStringLiteral("b"), QStringLiteral("b"))); // later wins, long falls back
    QCOMPARE(map.value(5), qMakePair(QStringLiteral("c"), QStringLiteral("long c")));
    QCOMPARE(choice.getElements().first()->getStringFromValue(1), QStringLiteral("a"));
    QCOMPARE(choice.getElements().first()->getStringFromValue(2), QString());
}

QTEST_GUILESS_MAIN(TestValues)
#include "tst_values.moc"
