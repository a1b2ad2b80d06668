#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "values/XmlValueChoice.h"

#include <QtTest>

#include <memory>

class TestChoiceValues : public QObject
{
    Q_OBJECT
private slots:
    void parseAndDebugText();
    void rangeFollowsElements();
    void stringFromValue_data();
    void stringFromValue();
    void descriptions();
    void unterminatedChoiceIsNull_data();
    void unterminatedChoiceIsNull();
};

void TestChoiceValues::parseAndDebugText()
{
    LogCapture log;
    TestXml::Reader reader("<value_choice default=\"2\" unit=\"\\u00b5A\" access=\"rw\">"
                           "<choice_element value=\"1\" desc_short=\"Step &amp; Direction\" desc_long=\"\\u00b0\"/>"
                           "<extra><choice_element value=\"x\" desc_short=\"nested\"/></extra>"
                           "</value_choice><after/>");
    std::unique_ptr<XmlValueChoice> choice(KIVXmlParser::parseValueChoice(reader));
    QVERIFY(choice);
    QCOMPARE(log.texts(), QStringList {"KIVXmlParser::parseValueChoice() \"extra\""});
    KIV_COMPARE_TEXT(choice->toString(QStringLiteral(" ")),
        QString(" \tXmlValueChoice(def: 2, unit: \u00b5A, access: rw)\n \t{\n"
                " \t\tXmlValueChoiceElement(value: 1, desc_short: Step \\x26 Direction, desc_long: \u00b0)\n"
                " \t\tXmlValueChoiceElement(value: 0, desc_short: nested, desc_long: )\n \t}"));
    QVERIFY(choice->hasDefault() && choice->hasUnit());
    QVERIFY(!choice->hasMin() && !choice->hasMax());
    QCOMPARE(choice->metaObject()->className(), "XmlValueChoice");
    QCOMPARE(choice->getElements().first()->metaObject()->className(), "XmlValueInterface");
    // The base table, with the range of the element values and the unit unbracketed.
    KIV_COMPARE_TEXT(choice->toLatex(QString()),
        QString("\n\\begin{tabular}{|l|l|l|l|}\n\t\\hline"
                "\n\t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: Choice} \\\\ \\hline"
                "\n\tMin & Max & Default & Unit\\\\ \\hline\n\t0 & 1 & 2 & \u00b5A\n\\end{tabular}"));
    // Stops at its own end tag.
    QCOMPARE(reader.get()->name(), QStringLiteral("value_choice"));
}

void TestChoiceValues::rangeFollowsElements()
{
    XmlValueChoice choice(0, QString(), QString());
    for (unsigned int value : {3u, 1u, 2u, 4000000000u})
        choice.appendElement(new XmlValueChoiceElement(value, QString(), QString()));
    QCOMPARE(choice.getMin(), 1LL);
    QCOMPARE(choice.getMax(), 4000000000LL);
    QCOMPARE(choice.getElements().size(), 4);
}

void TestChoiceValues::stringFromValue_data()
{
    QTest::addColumn<unsigned long long>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("first match") << 1ULL << "one";
    QTest::newRow("no match") << 7ULL << "suggest:last";
    QTest::newRow("above 32 bits") << 0x100000001ULL << "suggest:last";
}

void TestChoiceValues::stringFromValue()
{
    QFETCH(unsigned long long, value);
    QFETCH(QString, text);
    XmlValueChoice choice(0, QString(), QString());
    choice.appendElement(new XmlValueChoiceElement(1, QStringLiteral("one"), QString()));
    choice.appendElement(new XmlValueChoiceElement(1, QStringLiteral("again"), QString()));
    choice.appendElement(new XmlValueChoiceElement(2, QStringLiteral("last"), QString()));
    QCOMPARE(choice.getStringFromValue(value), text);
    QCOMPARE(XmlValueChoice(0, QString(), QString()).getStringFromValue(value), QStringLiteral("suggest:"));
}

void TestChoiceValues::descriptions()
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

void TestChoiceValues::unterminatedChoiceIsNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("cut after an element") << QByteArray("<value_choice><choice_element value=\"1\"/>") << QStringList();
    QTest::newRow("cut inside an unknown child") << QByteArray("<value_choice><choice_element value=\"1\"/><group>")
                                                 << QStringList {"KIVXmlParser::parseValueChoice() \"group\""};
    QTest::newRow("broken markup") << QByteArray("<value_choice><choice_element value=\"1\"></value_choice>")
                                   << QStringList();
}

void TestChoiceValues::unterminatedChoiceIsNull()
{
    QFETCH(QByteArray, xml);
    QFETCH(QStringList, log);
    LogCapture capture;
    TestXml::Reader reader(xml);
    QVERIFY(!KIVXmlParser::parseValueChoice(reader)); // the partial choice is freed (sanitizer run)
    QCOMPARE(capture.texts(), log);
}

QTEST_GUILESS_MAIN(TestChoiceValues)
#include "tst_choicevalues.moc"
