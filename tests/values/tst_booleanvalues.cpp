#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueDb.h"

#include <QtTest>

#include <memory>

// Two-state values, and the named data of an IC's database (flags, numbers) with the field alerts.
class TestBooleanValues : public QObject
{
    Q_OBJECT
private slots:
    void parseBool_data();
    void parseBool();
    void boolValues();
    void latexTables_data();
    void latexTables();
    void namedValues_data();
    void namedValues();
    void unterminatedNamedValueIsNull_data();
    void unterminatedNamedValueIsNull();
};

void TestBooleanValues::parseBool_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");
    QTest::newRow("trueValue") << QByteArray("<value_bool desc_short_false=\"off\" desc_short_true=\"on\" "
                                             "desc_long_false=\"\\u00b0\" desc_long_true=\"L\" default=\"trueValue\" "
                                             "access=\"rw\"/>")
                               << QString("\tXmlValueBool(desc_short_false: off, desc_short_true: on, desc_long_false: "
                                          "\u00b0, desc_long_true: L, def: true, access: rw)");
    QTest::newRow("TRUE") << QByteArray("<value_bool default=\"TRUE\"/>")
                          << "\tXmlValueBool(desc_short_false: , desc_short_true: , desc_long_false: , "
                             "desc_long_true: , def: true, access: )";
    QTest::newRow("1 is false") << QByteArray("<value_bool default=\"1\"/>")
                                << "\tXmlValueBool(desc_short_false: , desc_short_true: , desc_long_false: , "
                                   "desc_long_true: , def: false, access: )";
}

void TestBooleanValues::parseBool()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, text);
    TestXml::Reader reader(xml);
    std::unique_ptr<XmlValueBool> value(KIVXmlParser::parseValueBool(reader));
    QCOMPARE(value->toString(QString()), text);
    QCOMPARE(value->getDefault(), text.contains(QLatin1String("def: true")) ? 1LL : 0LL);
}

void TestBooleanValues::boolValues()
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
    QCOMPARE(value.getDescTrue(), QStringLiteral("ts"));
    QCOMPARE(value.metaObject()->className(), "XmlValueBool");
}

// Both kinds use the base table: no row end after the unit.
void TestBooleanValues::latexTables_data()
{
    QTest::addColumn<bool>("flag");
    QTest::addColumn<QString>("latex");
    QTest::newRow("bool") << false
                          << "\n\\begin{tabular}{|l|l|l|l|}\n\t\\hline"
                             "\n\t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: Bool} \\\\ \\hline"
                             "\n\tMin & Max & Default & Unit\\\\ \\hline\n\t0 & 1 & 1 & -\n\\end{tabular}";
    QTest::newRow("flag") << true
                          << "\n\\begin{tabular}{|l|l|l|l|}\n\t\\hline"
                             "\n\t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: tbd} \\\\ \\hline"
                             "\n\tMin & Max & Default & Unit\\\\ \\hline\n\t0 & 0 & 0 & -\n\\end{tabular}";
}

void TestBooleanValues::latexTables()
{
    QFETCH(bool, flag);
    QFETCH(QString, latex);
    std::unique_ptr<XmlValueInterface> value;
    if (flag)
        value.reset(new XmlValueBool2(QStringLiteral("n"), true));
    else
        value.reset(new XmlValueBool(true, QStringLiteral("rw"), QString(), QString(), QString(), QString()));
    KIV_COMPARE_TEXT(value->toLatex(QString()), latex);
}

void TestBooleanValues::namedValues_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("flag") << QByteArray("<value_bool2 name=\"offset\" value=\"true\"><x/></value_bool2>")
                          << "\tXmlValueBool2(name: offset, value: 1)"
                          << QStringList {"static XmlValueBool2* KIVXmlParser::parseValueBool2(QXmlStreamReader*) "
                                          "\"offset\" ,  1"};
    QTest::newRow("flag True is false") << QByteArray("<value_bool2 name=\"f\" value=\"True\"/>")
                                        << "\tXmlValueBool2(name: f, value: 0)"
                                        << QStringList {"static XmlValueBool2* KIVXmlParser::parseValueBool2("
                                                        "QXmlStreamReader*) \"f\" ,  0"};
    QTest::newRow("db max") << QByteArray("<value_db name=\"R_Sense\" value=\"4294967295\"></value_db>")
                            << "\tXmlValueDb(name: R_Sense, value: 4294967295)" << QStringList();
    QTest::newRow("db negative, name as written") << QByteArray("<value_db name=\"V\\u00b0\" value=\"-1\"/>")
                                                  << "\tXmlValueDb(name: V\\u00b0, value: 0)" << QStringList();
    QTest::newRow("alert text as written") << QByteArray("<value_alert text=\"R &amp; \\u00b0\"/>")
                                           << "\tXmlValueAlert(text: R & \\u00b0)" << QStringList();
    QTest::newRow("alert") << QByteArray("<value_alert><b/></value_alert>") << "\tXmlValueAlert(text: )"
                           << QStringList();
}

void TestBooleanValues::namedValues()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, text);
    QFETCH(QStringList, log);
    LogCapture capture;
    TestXml::Reader reader(xml + "<after/>");
    QString actual;
    const QString element = reader.get()->name().toString();
    if (element == QLatin1String("value_bool2")) {
        std::unique_ptr<XmlValueBool2> value(KIVXmlParser::parseValueBool2(reader));
        QVERIFY(value);
        actual = value->toString(QString());
        QCOMPARE(value->metaObject()->className(), "XmlValueInterface");
        QCOMPARE(value->getTypeAsString(), QStringLiteral("tbd"));
        QCOMPARE(value->getStringFromValue(1), QStringLiteral("tbd"));
        QCOMPARE(value->toHtml(),
            QStringLiteral("<table>\n<tr>\n<td width=\"10%\">Name</td>\n<td>Value</td>\n</tr>\n</table>"));
    } else if (element == QLatin1String("value_db")) {
        std::unique_ptr<XmlValueDb> value(KIVXmlParser::parseValueDb(reader));
        QVERIFY(value);
        actual = value->toString(QString());
        QCOMPARE(value->metaObject()->className(), "XmlValueInterface");
        QCOMPARE(value->getStringFromValue(1), QStringLiteral("tbd"));
        QCOMPARE(value->getTypeAsString(), QStringLiteral("Db"));
        QCOMPARE(value->toHtml(),
            QStringLiteral("<table>\n<tr>\n<td width=\"10%\">Name</td>\n<td>Value</td>\n</tr>\n</table>"));
    } else {
        std::unique_ptr<XmlValueAlert> value(KIVXmlParser::parseValueAlert(reader));
        QVERIFY(value);
        actual = value->toString(QString());
        QCOMPARE(value->metaObject()->className(), "XmlValueAlert");
    }
    QCOMPARE(actual, text);
    QCOMPARE(capture.texts(), log);
    // The whole element is consumed: the reader stands on its end tag.
    QCOMPARE(reader.get()->tokenType(), QXmlStreamReader::EndElement);
    QCOMPARE(reader.get()->name().toString(), element);
}

void TestBooleanValues::unterminatedNamedValueIsNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("flag") << QByteArray("<value_bool2 name=\"n\" value=\"true\"><x/>")
                          << QStringList {"static XmlValueBool2* KIVXmlParser::parseValueBool2(QXmlStreamReader*) "
                                          "\"n\" ,  1"};
    QTest::newRow("db") << QByteArray("<value_db value=\"3\">") << QStringList();
    QTest::newRow("alert") << QByteArray("<value_alert text=\"t\"><x></y>") << QStringList();
}

void TestBooleanValues::unterminatedNamedValueIsNull()
{
    QFETCH(QByteArray, xml);
    QFETCH(QStringList, log);
    LogCapture capture;
    TestXml::Reader reader(xml);
    const QString element = reader.get()->name().toString();
    // The object built before the document ended is freed (sanitizer run).
    if (element == QLatin1String("value_bool2"))
        QVERIFY(!KIVXmlParser::parseValueBool2(reader));
    else if (element == QLatin1String("value_db"))
        QVERIFY(!KIVXmlParser::parseValueDb(reader));
    else
        QVERIFY(!KIVXmlParser::parseValueAlert(reader));
    QCOMPARE(capture.texts(), log);
}

QTEST_GUILESS_MAIN(TestBooleanValues)
#include "tst_booleanvalues.moc"
