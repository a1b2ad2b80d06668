#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "product/XmlProductInterface.h"

#include <QtTest>

class TestParserFrame : public QObject
{
    Q_OBJECT
private slots:
    void replaceUnicode_data();
    void replaceUnicode();
    void unknownRootGivesNull_data();
    void unknownRootGivesNull();
    void tokenBeforeRootEndsParse_data();
    void tokenBeforeRootEndsParse();
    void malformedFileGivesNull();
    void laterRootReplacesEarlier();
};

void TestParserFrame::replaceUnicode_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    QTest::newRow("plain") << QStringLiteral("no escapes") << QStringLiteral("no escapes");
    QTest::newRow("lower") << QStringLiteral("A\\u00e9B") << QStringLiteral("A\u00e9B");
    QTest::newRow("upper hex") << QStringLiteral("\\u00E9") << QStringLiteral("\u00e9");
    QTest::newRow("degree") << QStringLiteral("20 \\u00b0C") << QStringLiteral("20 \u00b0C");
    QTest::newRow("too few digits") << QStringLiteral("\\u00") << QStringLiteral("\\u00");
    QTest::newRow("capital U") << QStringLiteral("\\U00E9") << QStringLiteral("\\U00E9");
    QTest::newRow("non hex") << QStringLiteral("\\u00g9") << QStringLiteral("\\u00g9");
    QTest::newRow("two in a row") << QStringLiteral("\\u0041\\u0042") << QStringLiteral("AB");
    QTest::newRow("fifth digit stays") << QStringLiteral("\\u00412") << QStringLiteral("A2");
    // A backslash made by a replacement never starts a later match at its own position.
    QTest::newRow("made backslash") << QStringLiteral("\\u005cu0041") << QStringLiteral("\\u0041");
    QTest::newRow("made backslash before an escape") << QStringLiteral("\\u005c\\u0041") << QStringLiteral("\\A");
    QTest::newRow("made backslash twice") << QStringLiteral("\\u005c\\u005cu0041") << QStringLiteral("\\\\u0041");
    // Made characters never join with later text to form an escape.
    QTest::newRow("made escape text") << QStringLiteral("\\u005c\\u0075\\u0030041") << QStringLiteral("\\u0041");
    QTest::newRow("doubled backslash") << QStringLiteral("\\\\u0041") << QStringLiteral("\\A");
    QTest::newRow("tripled backslash") << QStringLiteral("\\\\\\u0041") << QStringLiteral("\\\\A");
    QTest::newRow("escaped u after backslash") << QStringLiteral("\\\\u0075") << QStringLiteral("\\u");
    QTest::newRow("cut at the end") << QStringLiteral("ab\\u004") << QStringLiteral("ab\\u004");
    QTest::newRow("lone backslash at the end") << QStringLiteral("x\\") << QStringLiteral("x\\");
    QTest::newRow("nul") << QStringLiteral("a\\u0000b") << QString(QLatin1Char('a')) + QChar(0) + QLatin1Char('b');
    QTest::newRow("mixed") << QStringLiteral("\\uABCD\\u00x1\\u0041")
                           << QString(QChar(0xabcd)) + QStringLiteral("\\u00x1A");
    QTest::newRow("surrogate pair") << QStringLiteral("\\ud83d\\ude00") << QString(QChar(0xd83d)) + QChar(0xde00);
}

void TestParserFrame::replaceUnicode()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QString text = input;
    QCOMPARE(&KIVXmlParser::replaceUnicode(text), &text); // in place
    QCOMPARE(text, expected);
}

void TestParserFrame::unknownRootGivesNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QStringList>("roots");
    QTest::newRow("other case") << QByteArray("<Product_Module/>") << QStringList {"Product_Module"};
    QTest::newRow("nested unknowns") << QByteArray("<a><b/></a>") << QStringList {"a", "b"};
}

void TestParserFrame::unknownRootGivesNull()
{
    QFETCH(QByteArray, xml);
    QFETCH(QStringList, roots);
    LogCapture log;
    auto product = TestXml::parseProduct(xml);
    QVERIFY(!product);
    QStringList expected;
    for (const QString& root : roots)
        expected << QStringLiteral(
            "static XmlProductInterface* KIVXmlParser::parseProduct(QFile*) Unknown root node type! \"%1\"")
                        .arg(root);
    QCOMPARE(log.texts(), expected);
}

void TestParserFrame::tokenBeforeRootEndsParse_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("comment") << QByteArray("<?xml version=\"1.0\"?>\n<!-- c --><x/>");
    QTest::newRow("dtd") << QByteArray("<?xml version=\"1.0\"?>\n<!DOCTYPE x><x/>");
    QTest::newRow("processing instruction") << QByteArray("<?xml version=\"1.0\"?><?pi data?><x/>");
}

void TestParserFrame::tokenBeforeRootEndsParse()
{
    QFETCH(QByteArray, xml);
    LogCapture log;
    QVERIFY(!TestXml::parseProduct(xml));
    // The root is never reached, so it is not even reported.
    QVERIFY(log.matching(QStringLiteral("Unknown root node type!")).isEmpty());
}

void TestParserFrame::malformedFileGivesNull()
{
    LogCapture log;
    QVERIFY(!TestXml::parseProduct(QByteArray("<x><y></x>")));
    QVERIFY(!TestXml::parseProduct(QByteArray()));
}

void TestParserFrame::laterRootReplacesEarlier()
{
    // The replaced module's pin map is freed with it: the sanitizer run reports it otherwise.
    LogCapture log;
    auto product = TestXml::parseProduct(QByteArray("<x><product_module><pin_map>\n<pin_mapping pin_ic=\"1\"/>"
                                                    "</pin_map></product_module><product_ic/></x>"));
    QVERIFY(product);
    QCOMPARE(product->type(), 0);
}

QTEST_GUILESS_MAIN(TestParserFrame)
#include "tst_parserframe.moc"
