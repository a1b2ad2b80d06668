#include "TestXml.h"

#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutput.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlProductModule.h"

#include <QtTest>

// The module's LaTeX fragments at their edges: missing or empty containers and indexes out of range. The
// whole fragments of the examples are compared in tst_references.

class TestModuleManual : public QObject
{
    Q_OBJECT
private slots:
    void withoutContainers();
    void bankIndexOutOfRange_data();
    void bankIndexOutOfRange();
    void ioKindsAndEmptyContainers();
    void escape_data();
    void escape();
};

void TestModuleManual::withoutContainers()
{
    XmlProductModule module;
    const QString header = module.toLaTeXHeader();
    QVERIFY(header.contains(QStringLiteral("\\setcounter{numberofmotors}{0}\n\\newcounter{numberofgpi}\n"
                                           "\\setcounter{numberofgpi}{0}")));
    QVERIFY(!header.contains(QStringLiteral("SupportGPBank")));
    QVERIFY(header.contains(QStringLiteral("\\newcommand{\\productRootPath}{module/}")));
    QCOMPARE(module.toLaTeXAxisParam(), QStringLiteral("\n\\end{longtable}"));
}

void TestModuleManual::bankIndexOutOfRange_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("written");
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last") << 1 << true;
    QTest::newRow("past the end") << 2 << false;
    QTest::newRow("negative") << -1 << false;
}

void TestModuleManual::bankIndexOutOfRange()
{
    QFETCH(int, index);
    QFETCH(bool, written);
    XmlProductModule module;
    module.appendGlobalParameters(new XmlGlobalParameters);
    module.appendGlobalParameters(new XmlGlobalParameters);
    QCOMPARE(!module.toLaTeXGlobalParamBank(index).isEmpty(), written);
}

void TestModuleManual::ioKindsAndEmptyContainers()
{
    XmlProductModule module;
    QCOMPARE(module.toLaTeXIOs(2), QString()); // no container
    module.setDigitalInputs(new XmlDigitalInputs);
    QCOMPARE(module.toLaTeXIOs(0), QString()); // empty container
    auto* outputs = new XmlDigitalOutputs;
    auto* output = new XmlDigitalOutput;
    output->setType(2);
    outputs->appendDigitalOutput(output);
    module.setDigitalOutputs(outputs);
    // An output without a value descriptor keeps its row, with an empty range.
    QVERIFY(module.toLaTeXIOs(3).contains(QStringLiteral("\n2 - \n\t & \n\t & GIO 2, 2, <value>\n\t & \\\\\n\\hline")));
    QCOMPARE(module.toLaTeXIOs(4), QString());
    QCOMPARE(module.toLaTeXIOs(-1), QString());
}

void TestModuleManual::escape_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("expected");
    const char* const rows[][2] = {{"50%", "50\\%"}, {"my_param", "my\\textunderscore param"},
        {"%_%", "\\%\\textunderscore \\%"}, {"a\\b", "a\\b"}};
    for (const auto& row : rows)
        QTest::newRow(row[0]) << row[0] << row[1];
}

void TestModuleManual::escape()
{
    QFETCH(QString, input);
    QFETCH(QString, expected);
    QCOMPARE(XmlProductModule::EscapeSpecialLaTeXCharacters(input), expected);
}

QTEST_GUILESS_MAIN(TestModuleManual)
#include "tst_modulemanual.moc"
