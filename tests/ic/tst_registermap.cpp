#include "IcTest.h"
#include "TestXml.h"

#include "ic/XmlGroup.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"

#include <QtTest>

using IcTest::FakeValue;

class TestRegisterMap : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void registerMap();
    void bitRanges_data();
    void bitRanges();
    void withoutRegisterSet();
    void overview();
    void defaults();
    void defaultsOfWideRegisters_data();
    void defaultsOfWideRegisters();

private:
    XmlValueRegisterField* addField(const QString& name, const QString& mask, const QString& desc, FakeValue* value);
    XmlProductIC* m_ic = nullptr;
    XmlRegisterVariant* m_variant = nullptr;
};

static const QString kMapOpen
    = QStringLiteral("\n\\renewcommand\\_{\\textunderscore\\allowbreak}\n\\begin{longtable}{c|l|l|p{5.5cm}}"
                     "& & {\\bf DATA TYPE} & \\\\{\\bf ADDR} & {\\bf NAME} & {\\bf (BIT MASK)} & {\\bf FUNCTION} "
                     "\\\\ \\hline");

XmlValueRegisterField* TestRegisterMap::addField(
    const QString& name, const QString& mask, const QString& desc, FakeValue* value)
{
    auto* field = new XmlValueRegisterField(name, 0, mask, desc, QString());
    field->setValue(value);
    m_variant->appendField(field);
    return field;
}

// CTRL0 at 0 (group 1) with one field of every rendering, ST_AT at 0x1A2 (group 2) without variants.
void TestRegisterMap::init()
{
    m_ic = new XmlProductIC();
    auto* set = new XmlRegisterSet();
    m_ic->setRegisterSet(set);
    auto* ctrl = new XmlValueRegister(0, QStringLiteral("CTRL0"), 32, 1);
    m_variant = new XmlRegisterVariant(QStringLiteral("DEFAULT"));
    addField(QStringLiteral("out_enable_a"), QStringLiteral("10"), QStringLiteral("enable"),
        new FakeValue(2, {{0, {QStringLiteral("off"), QString()}}, {1, {QStringLiteral("on"), QString()}}},
            QStringLiteral("RW")));
    addField(QStringLiteral("speed"), QStringLiteral("00FF0000"), QStringLiteral("a_b"),
        (new FakeValue(1))->withRange(0, 255, 0x12))
        ->setShift(16);
    auto* offs = addField(QStringLiteral("offs"), QStringLiteral("0F0F"), QString::fromUtf8("50% & ^ °"),
        (new FakeValue(0, {{1, {QStringLiteral("x"), QString()}}}))->withRange(-8, 7, -3));
    offs->setShift(8);
    addField(QStringLiteral("mode"), QStringLiteral("3"), QString(),
        new FakeValue(3,
            {{0, {QStringLiteral("a"), QString()}}, {2, {QString(), QString()}},
                {1, {QStringLiteral("b"), QString()}}}));
    addField(QStringLiteral("bare"), QStringLiteral("80000000"), QStringLiteral("n"), nullptr);
    ctrl->appendVariant(m_variant);
    set->appendValueRegister(ctrl);
    set->appendValueRegister(new XmlValueRegister(0x1A2, QStringLiteral("ST_AT"), 8, 2));
}

void TestRegisterMap::cleanup()
{
    delete m_ic;
    m_ic = nullptr;
}

void TestRegisterMap::registerMap()
{
    const QString expected = kMapOpen
        + QStringLiteral("\n\\hexnum{0x00} & CTRL0 \\phantomsection \\label{REGISTER:CTRL0} & &  \\\\"
                         " & out\\_enable\\_a \\phantomsection \\label{REGISTER-FIELD:out-enable-a} & bit(4) & "
                         "enable\\\\ & & & 0: off\\\\ & & & 1: on \\\\"
                         " & speed \\phantomsection \\label{REGISTER-FIELD:speed} & u8(23:16) & a\\_b \\\\"
                         " & offs \\phantomsection \\label{REGISTER-FIELD:offs} & s4(11:8) & "
                         "50% \\& \\string^ \\degree1: x \\\\"
                         " & mode \\phantomsection \\label{REGISTER-FIELD:mode} & u2(1:0) & "
                         "0: a\\\\ & & & 1: b\\\\ & & & 2:  \\\\"
                         " & bare \\phantomsection \\label{REGISTER-FIELD:bare} &  & n \\\\\\hline"
                         "\n\\hexnum{0x1A2} & ST\\_AT \\phantomsection \\label{REGISTER:ST-AT} & &  \\\\\\hline"
                         "\n\\end{longtable}");
    KIV_COMPARE_TEXT(m_ic->toLaTeXRegisterMap(), expected);
}

void TestRegisterMap::bitRanges_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<QString>("type");
    QTest::newRow("gap below the run") << "0F0F"
                                       << "u4(11:8)";
    QTest::newRow("bit 31") << "80000000"
                            << "u1(31:31)";
    QTest::newRow("all 32") << "FFFFFFFF"
                            << "u32(31:0)";
    QTest::newRow("none") << "0"
                          << "u1(0:0)";
    QTest::newRow("only above bit 31") << "100000000"
                                       << "u1(0:0)";
}

void TestRegisterMap::bitRanges()
{
    QFETCH(QString, mask);
    QFETCH(QString, type);
    XmlProductIC ic;
    ic.setRegisterSet(new XmlRegisterSet());
    auto* reg = new XmlValueRegister(1, QStringLiteral("R"), 32, 0);
    auto* variant = new XmlRegisterVariant(QStringLiteral("DEFAULT"));
    auto* field = new XmlValueRegisterField(QStringLiteral("f"), 0, mask, QStringLiteral("d"), QString());
    field->setValue(new FakeValue(7)); // "Date": any other name writes the unsigned form
    variant->appendField(field);
    reg->appendVariant(variant);
    ic.registerSet()->appendValueRegister(reg);
    QVERIFY2(ic.toLaTeXRegisterMap().contains(QStringLiteral("{REGISTER-FIELD:f} & ") + type + " & d \\\\\\hline"),
        qPrintable(ic.toLaTeXRegisterMap()));
}

void TestRegisterMap::withoutRegisterSet()
{
    XmlProductIC ic;
    QCOMPARE(ic.toLaTeXRegisterMap(), kMapOpen + QStringLiteral("\n\\end{longtable}"));
    ic.setRegisterSet(new XmlRegisterSet());
    QCOMPARE(ic.toLaTeXRegisterMap(), kMapOpen + QStringLiteral("\n\\end{longtable}"));
    QVERIFY(ic.toLaTeXRegisterMapDefaults().endsWith(QLatin1String("\\endhead\n\\end{longtable}")));
    XmlProductIC bare;
    QCOMPARE(bare.toLaTeXRegisterOverviewByGroup(nullptr).count(QLatin1String("\\hexnum")), 0);
    QCOMPARE(bare.toLaTeXRegisterOverview().count(QLatin1String("\\hexnum")), 0);
}

void TestRegisterMap::overview()
{
    const QString open = QStringLiteral("\n\\begin{longtabu}{|c|c|c|} \\hline\n\\rowcolor{gray} \\textbf{Address} & "
                                        "\\textbf{Registername} & \\textbf{Access} \\endhead \\hline");
    KIV_COMPARE_TEXT(m_ic->toLaTeXRegisterOverview(),
        open
            + QStringLiteral("\n\\hexnum{0x00} & CTRL0 & RW \\\\ \\hline\n\\hexnum{0x1A2} & ST\\_AT &  \\\\ \\hline"
                             "\n\\caption{\\productName\\ Registers }\n\\end{longtabu}"));
    XmlGroup group(QStringLiteral("My_group"), 2);
    KIV_COMPARE_TEXT(m_ic->toLaTeXRegisterOverviewByGroup(&group),
        open
            + QStringLiteral("\n\\hexnum{0x1A2} & ST\\_AT &  \\\\ \\hline"
                             "\n\\caption{\\productName\\ Registers for group My\\_group }\n\\end{longtabu}"));
}

void TestRegisterMap::defaults()
{
    const QString text = m_ic->toLaTeXRegisterMapDefaults();
    QVERIFY(text.startsWith(
        QStringLiteral("\n\\renewcommand\\_{\\textunderscore\\allowbreak}\n\\begin{longtable}{crp{3.5cm}|r|cc|p{3.5cm}}"
                       "\n{\\bf RD/WR} & {\\bf ADDR} & {\\bf NAME} & {\\bf DEFAULT} & {\\bf MIN} & {\\bf MAX} & "
                       "{\\bf COMMENT} \\\\ \\hline")));
    const QStringList expectedLines = {
        // the register's default is composed from its fields' defaults: 0x12 << 16 | (-3 << 8) & 0x0F0F
        QStringLiteral("RW & 0x\\hexnum{00} & {\\bf CTRL0} \\phantomsection \\label{REGISTER:CTRL0} & "
                       "0x\\hexnum{00120D00} & & &  \\\\"),
        QStringLiteral("RW & & \\hspace{1em}out\\_enable\\_a \\phantomsection \\label{REGISTER-FIELD:out-enable-a} & "
                       " &  &  & enable\\\\ & & & & & & 0: off\\\\ & & & & & & 1: on \\\\"),
        QStringLiteral(" & & \\hspace{1em}speed \\phantomsection \\label{REGISTER-FIELD:speed} & 18 & 0 & 255 & "
                       "a\\_b \\\\"),
        QStringLiteral(" & & \\hspace{1em}offs \\phantomsection \\label{REGISTER-FIELD:offs} & $-$3 & $-$8 & 7 & "
                       "50\\% \\& \\textasciicircum{} \\degree{}\\\\ & & & & & & 1: x \\\\"),
        QStringLiteral(
            " & & \\hspace{1em}bare \\phantomsection \\label{REGISTER-FIELD:bare} &  &  &  & n \\\\ \\hline"),
        QStringLiteral(" & 0x\\hexnum{1A2} & {\\bf ST\\_AT} \\phantomsection \\label{REGISTER:ST-AT} &  & & &  \\\\ "
                       "\\hline"),
    };
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString& line : expectedLines)
        QVERIFY2(lines.contains(line), qPrintable(line + QStringLiteral("\n--- not in ---") + text));
    QVERIFY(text.endsWith(QLatin1String("\n\\end{longtable}")));
}

void TestRegisterMap::defaultsOfWideRegisters_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("digits");
    QTest::newRow("8 bits") << 8 << QStringLiteral("120D00");
    QTest::newRow("63 bits") << 63 << QStringLiteral("0000000000120D00");
    QTest::newRow("64 bits") << 64 << QStringLiteral("0000000000120D00");
    // Values are 64 bits: a wider register is padded as 64 bits.
    QTest::newRow("65 bits") << 65 << QStringLiteral("0000000000120D00");
    QTest::newRow("2000000000 bits") << 2000000000 << QStringLiteral("0000000000120D00");
    QTest::newRow("largest int") << std::numeric_limits<int>::max() << QStringLiteral("0000000000120D00");
    QTest::newRow("negative") << -7 << QStringLiteral("120D00");
    QTest::newRow("smallest int") << std::numeric_limits<int>::min() << QStringLiteral("120D00");
}

void TestRegisterMap::defaultsOfWideRegisters()
{
    QFETCH(int, size);
    QFETCH(QString, digits);
    XmlValueRegister* ctrl = m_ic->registerSet()->getRegisters()->first();
    ctrl->setSize(64);
    const QString at64 = m_ic->toLaTeXRegisterMapDefaults();
    ctrl->setSize(size);
    const QString text = m_ic->toLaTeXRegisterMapDefaults();
    QVERIFY2(text.contains(QStringLiteral("{\\bf CTRL0} \\phantomsection \\label{REGISTER:CTRL0} & 0x\\hexnum{")
                 + digits + QStringLiteral("} & & &  \\\\\n")),
        qPrintable(text));
    if (size >= 64)
        QCOMPARE(text, at64);
}

QTEST_GUILESS_MAIN(TestRegisterMap)
#include "tst_registermap.moc"
