#include "values/XmlValueInterface.h"

#include <QtTest>

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
} // namespace

class TestValueInterface : public QObject
{
    Q_OBJECT
private slots:
    void accessStringToAccess_data();
    void accessStringToAccess();
    void setAccessStringCanonicalises();
    void typeNames_data();
    void typeNames();
    void setUnit_data();
    void setUnit();
    void defaults();
    void latexTable();
};

void TestValueInterface::accessStringToAccess_data()
{
    QTest::addColumn<QString>("access");
    QTest::addColumn<int>("mask");
    QTest::addColumn<QString>("canonical");
    QTest::newRow("rw") << "rw" << 3 << "RW";
    QTest::newRow("xe") << "xe" << 12 << "EX";
    QTest::newRow("RWX") << "RWX" << 11 << "RWX";
    QTest::newRow("xwr") << "xwr" << 11 << "RWX";
    QTest::newRow("repeated and unknown") << "rrz" << 1 << "R";
    QTest::newRow("all") << "axedicwr" << 255 << "RWCIDEAX";
    QTest::newRow("none") << "" << 0 << "";
    QTest::newRow("no letters") << "-+9" << 0 << "";
}

void TestValueInterface::accessStringToAccess()
{
    QFETCH(QString, access);
    QFETCH(int, mask);
    QFETCH(QString, canonical);
    QCOMPARE(XmlValueInterface::accessStringToAccess(access), mask);
    QCOMPARE(XmlValueInterface::accessToAccessString(mask), canonical);
}

void TestValueInterface::setAccessStringCanonicalises()
{
    PlainValue value(0);
    value.setAccessString(QStringLiteral("wr"));
    QCOMPARE(value.getAccess(), 3);
    QCOMPARE(value.getAccessAsString(), QStringLiteral("RW"));
    value.setAccessString(QStringLiteral("zz"));
    QCOMPARE(value.getAccess(), 0);
    QCOMPARE(value.getAccessAsString(), QString());
    QCOMPARE(XmlValueInterface::accessToAccessString(256 | 1), QStringLiteral("R"));
}

void TestValueInterface::typeNames_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    const char* names[] = {"Signed", "Unsigned", "Bool", "Choice", "ChoiceElement", "Register", "RegisterField", "Date",
        "Time", "Version", "ASCII", "Db"};
    for (int i = 0; i < 12; ++i)
        QTest::addRow("%d", i) << i << QString::fromLatin1(names[i]);
    QTest::newRow("12 has no name") << 12 << "tbd";
    QTest::newRow("negative") << -1 << "tbd";
}

void TestValueInterface::typeNames()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    QCOMPARE(XmlValueInterface::getTypeAsString(type), name);
    QCOMPARE(PlainValue(type).getTypeAsString(), name);
}

void TestValueInterface::setUnit_data()
{
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("stored");
    QTest::newRow("bare") << "mA"
                          << "[mA]";
    QTest::newRow("bracketed") << "[mA]"
                               << "[mA]";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("only front tested") << "mA]"
                                       << "[mA]]";
}

void TestValueInterface::setUnit()
{
    QFETCH(QString, unit);
    QFETCH(QString, stored);
    PlainValue value(1);
    value.setUnit(unit);
    QCOMPARE(value.getUnit(), stored);
}

void TestValueInterface::defaults()
{
    PlainValue value(7);
    QCOMPARE(value.getType(), 7);
    QCOMPARE(value.getFormatString(), QStringLiteral("%1 "));
    QCOMPARE(value.getFormatMul(), 1.0f);
    QCOMPARE(value.getFormatDiv(), 1.0f);
    QVERIFY(!value.hasMin() && !value.hasMax() && !value.hasDefault() && !value.hasDecimals());
    QVERIFY(!value.hasUnit() && !value.hasOptions());
    QVERIFY(value.hasAccess());
    QVERIFY(value.getValueDescriptions().isEmpty());
    QVERIFY(value.inherits("XmlValueInterface"));
}

void TestValueInterface::latexTable()
{
    PlainValue value(0);
    value.setMin(-100);
    value.setMax(4294967295LL);
    value.setDefault(5);
    QCOMPARE(value.toLatex(QStringLiteral("  ")),
        QStringLiteral("\n  \\begin{tabular}{|l|l|l|l|}"
                       "\n  \t\\hline"
                       "\n  \t\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: Signed} \\\\ \\hline"
                       "\n  \tMin & Max & Default & Unit\\\\ \\hline"
                       "\n  \t-100 & 4294967295 & 5 & -"
                       "\n  \\end{tabular}"));
    value.setUnit(QStringLiteral("V"));
    QVERIFY(value.toLatex(QString()).contains(QStringLiteral("\n\t-100 & 4294967295 & 5 & [V]\n\\end{tabular}")));
}

QTEST_GUILESS_MAIN(TestValueInterface)
#include "tst_valueinterface.moc"
