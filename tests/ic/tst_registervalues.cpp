#include "LogCapture.h"
#include "TestXml.h"

#include "ic/RegisterValues.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

using Fields = QList<QPair<QString, QString>>;

std::unique_ptr<XmlProductInterface> parseFile(const QString& path)
{
    const LogCapture quiet;
    return TestXml::parseProduct(TestXml::readFile(path));
}

/// "name=raw:text" of every field, joined by "|": a whole decoding in one comparable line.
QString fieldLine(const RegisterDecoding& decoding)
{
    QStringList parts;
    for (const RegisterFieldValue& field : decoding.fields)
        parts << field.name + QLatin1Char('=') + QString::number(field.raw) + QLatin1Char(':') + field.text
                + (field.unit.isEmpty() ? QString() : QLatin1Char(' ') + field.unit)
                + (field.inRange ? QString() : QStringLiteral("!"));
    return parts.join(QLatin1Char('|'));
}

/// fieldLine(), then the uncovered bits and the warnings, each after "; ".
QString decodingLine(const RegisterDecoding& decoding)
{
    QStringList parts {fieldLine(decoding)};
    if (decoding.uncovered)
        parts << QStringLiteral("uncovered 0x") + QString::number(decoding.uncovered, 16);
    parts << decoding.warnings;
    return parts.join(QLatin1String("; "));
}

} // namespace

class TestRegisterValues : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void gapsLeaveNoVariant_data();
    void gapsLeaveNoVariant();
    void unknownSelectorListsCandidates();
    void decode_data();
    void decode();
    void encode_data();
    void encode();
    void findRegister_data();
    void findRegister();
    void oddSizesStayInBounds();
    void roundTrip_data();
    void roundTrip();

private:
    std::unique_ptr<XmlProductInterface> m_example;
    std::unique_ptr<XmlProductInterface> m_odd; ///< a selector with gaps, odd sizes and shifts
    XmlProductIC* example() const { return static_cast<XmlProductIC*>(m_example.get()); }
    XmlValueRegister* reg(const QString& name) const { return RegisterValues(example()).findRegister(name); }
    QTemporaryDir m_dir;
};

void TestRegisterValues::initTestCase()
{
    m_example = parseFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml"));
    QVERIFY(qobject_cast<XmlProductIC*>(m_example.get()));
    m_odd = parseFile(QStringLiteral(KIVCORE_TEST_DATA_DIR "/ic/odd-registers.xml"));
    QVERIFY(qobject_cast<XmlProductIC*>(m_odd.get()));
}

void TestRegisterValues::gapsLeaveNoVariant_data()
{
    QTest::addColumn<quint64>("pick"); // SEL.pick, bits 1-3
    QTest::addColumn<QString>("variant"); // empty: none applies
    const char* const expected[] = {"", "A", "A", "", "B", "B", "", ""};
    for (int pick = 0; pick < 8; ++pick)
        QTest::addRow("pick %d", pick) << quint64(pick) << QString::fromLatin1(expected[pick]);
}

void TestRegisterValues::gapsLeaveNoVariant()
{
    QFETCH(quint64, pick);
    QFETCH(QString, variant);
    RegisterValues session(static_cast<XmlProductIC*>(m_odd.get()));
    // The bits around the selecting field are set too: only the field's own bits may count.
    QVERIFY(session.setValue(QStringLiteral("SEL"), QString::number(pick << 1 | 0xF1)));
    const RegisterVariantChoice choice = session.chooseVariant(session.findRegister(QStringLiteral("GAPPY")));
    if (!variant.isEmpty()) {
        QCOMPARE(choice.outcome, RegisterVariantChoice::Decided);
        QCOMPARE(choice.variant->getName(), variant);
        return;
    }
    QCOMPARE(choice.outcome, RegisterVariantChoice::NoVariant);
    QCOMPARE(choice.reason,
        QStringLiteral("no variant of GAPPY applies with SEL bits 1-3 = %1: \"A\" needs SEL bits 1-3 (pick) = 1 to 2; "
                       "\"B\" needs SEL bits 1-3 (pick) = 4 to 5")
            .arg(pick));
    const RegisterEncoding encoding = session.encode(session.findRegister(QStringLiteral("GAPPY")), {{"a", "1"}});
    QVERIFY(!encoding.ok);
    QCOMPARE(encoding.error, choice.reason);
}

void TestRegisterValues::unknownSelectorListsCandidates()
{
    RegisterValues session(example());
    const RegisterDecoding decoding = session.decode(reg(QStringLiteral("BRG_DRIVE")), 0x1234);
    QCOMPARE(decoding.choice.outcome, RegisterVariantChoice::Undecided);
    QCOMPARE(decoding.choice.reason, QStringLiteral("variant of BRG_DRIVE not decided: set BRG_SELECT first"));
    QCOMPARE(decoding.choice.candidates.size(), 2);
    QCOMPARE(decoding.choice.candidates.at(1).selectors, QStringList {"BRG_SELECT"});
    QCOMPARE(decodingLine(decoding), QStringLiteral("; uncovered 0x1234"));
    // Each candidate decodes when asked.
    XmlRegisterVariant* second = reg(QStringLiteral("BRG_DRIVE"))->getRegisterVariants()->at(1);
    QCOMPARE(fieldLine(session.decode(reg(QStringLiteral("BRG_DRIVE")), 0x1234, second)),
        QStringLiteral("i_avg_hold=52:52|i_avg_run=18:18|coast=0:hold with brake|auto_tune=0:off|tune_rate=0:0|"
                       "load_trim=0:0"));
}

void TestRegisterValues::decode_data()
{
    QTest::addColumn<QString>("registerName");
    QTest::addColumn<quint64>("selector"); // BRG_SELECT
    QTest::addColumn<quint64>("value");
    QTest::addColumn<QString>("decoded"); // decodingLine()
    QTest::newRow("timed decay, signed gain -3, choice and bool texts")
        << "BRG_DECAY" << quint64(2) << quint64(0x1125A46)
        << "t_slow=6:6|t_fast=2:2|adapt_gain=13:-3|cmp_off=0:used|blank=2:1.5 us|phase_res=1:1/64|smooth=1:on; "
           "uncovered 0x4000";
    QTest::newRow("mixed decay: the same bits, other fields")
        << "BRG_DECAY" << quint64(0) << quint64(0x1125A46)
        << "t_slow=6:6|mix_ratio=2:2|ripple_ofs=13:-3|blank=2:1.5 us|phase_res=1:1/64|smooth=1:on; uncovered 0x4000";
    QTest::newRow("signed 4 bits at 7")
        << "BRG_DECAY" << quint64(1) << quint64(0x1E00 & (7 << 9))
        << "t_slow=0:0|t_fast=0:0|adapt_gain=7:7|cmp_off=0:used|blank=0:0.5 us|phase_res=0:1/128 step|smooth=0:off";
    QTest::newRow("signed 32 bits at the minimum")
        << "LINK_MATCH" << quint64(0) << quint64(0x80000000) << "match_pos=2147483648:-2147483648";
    QTest::newRow("signed 16 bits at -1") << "TLY_RATE" << quint64(0) << quint64(0xFFFF) << "q_rate=65535:-1";
    QTest::newRow("signed 9 bits below its minimum")
        << "MON_DUTY" << quint64(0) << quint64(0x1000000)
        << "duty_now=0:0|duty_auto=256:-256!; duty_auto = -256 is outside -255 to 255";
    QTest::newRow("choice not listed")
        << "LINK_CFG" << quint64(0) << quint64(0x601)
        << "node_id=1:1|reply_gap=6:not a listed choice!|crc_mode=0:byte sum|echo=0:off; reply_gap = 6 is not a "
           "listed choice";
    QTest::newRow("choice with an ampersand")
        << "BRG_SELECT" << quint64(0) << quint64(0x33)
        << "decay_kind=3:adaptive decay, slow start|loop_kind=3:averaged current & load sensing";
    QTest::newRow("uncovered bits") << "BRG_SELECT" << quint64(0) << quint64(0xCC)
                                    << "decay_kind=0:mixed decay|loop_kind=0:fixed duty; uncovered 0xcc";
    QTest::newRow("unit") << "LINK_TIMEOUT" << quint64(0) << quint64(500) << "wdt_time=500:500 ms";
    QTest::newRow("date: the value kind's own text")
        << "ID_DATE" << quint64(0) << quint64(0x20250930) << "sort_date=539298096:2025-09-30";
    QTest::newRow("alert of a set field, bits above the size")
        << "SYS_EVENTS" << quint64(0) << quint64(0x102)
        << "por=0:no|brg_trip=1:yes|link_lost=0:no|gate_low=0:no; uncovered 0x100; the value has bits above the "
           "register's 8 bits: 0x0000000000000100; brg_trip is set: Bridge trip: the outputs stay off until "
           "SYS_EVENTS has been read.";
}

void TestRegisterValues::decode()
{
    QFETCH(QString, registerName);
    QFETCH(quint64, selector);
    QFETCH(quint64, value);
    QFETCH(QString, decoded);
    RegisterValues session(example());
    session.setValue(reg(QStringLiteral("BRG_SELECT")), selector);
    QCOMPARE(decodingLine(session.decode(reg(registerName), value)), decoded);
}

void TestRegisterValues::encode_data()
{
    QTest::addColumn<QString>("registerName");
    QTest::addColumn<quint64>("selector"); // BRG_SELECT
    QTest::addColumn<Fields>("fields");
    QTest::addColumn<bool>("force");
    QTest::addColumn<QString>("result"); // the value in hexadecimal, or the error

    QTest::newRow("defaults of the timed decay") << "BRG_DECAY" << quint64(1) << Fields() << false << "0x10046";
    QTest::newRow("defaults of the mixed decay") << "BRG_DECAY" << quint64(0) << Fields() << false << "0x10106";
    QTest::newRow("names in any case, choice text, hex, binary, negative")
        << "BRG_DECAY" << quint64(3)
        << Fields {{"T_SLOW", "0x1f"}, {"blank", "1.5 US"}, {"adapt_gain", "-8"}, {"cmp_off", "0b1"}} << false
        << "0x2305f";
    QTest::newRow("bool by its text") << "SYS_MODE" << quint64(0) << Fields {{"clk_ext", "external CLKIN"}} << false
                                      << "0x108";
    QTest::newRow("bit pattern of a signed field")
        << "BRG_DECAY" << quint64(1) << Fields {{"adapt_gain", "15"}} << false << "0x11e46";
    QTest::newRow("signed too small")
        << "BRG_DECAY" << quint64(1) << Fields {{"adapt_gain", "-9"}} << false
        << "BRG_DECAY.adapt_gain: -9 does not fit the field's 4 bits (allowed -8 to 7, or 0 to 15 as a bit pattern)";
    QTest::newRow("too wide") << "BRG_DECAY" << quint64(1) << Fields {{"t_slow", "32"}} << false
                              << "BRG_DECAY.t_slow: 32 does not fit the field's 5 bits (allowed 0 to 31)";
    QTest::newRow("negative for an unsigned field")
        << "BRG_DECAY" << quint64(1) << Fields {{"t_slow", "-1"}} << false
        << "BRG_DECAY.t_slow: -1 does not fit the field's 5 bits (allowed 0 to 31)";
    QTest::newRow("field of the other variant")
        << "BRG_DECAY" << quint64(2) << Fields {{"t_slow", "1"}, {"mix_ratio", "3"}} << false
        << "BRG_DECAY: field mix_ratio belongs to variant \"Mixed decay\", which needs BRG_SELECT bits 0-1 "
           "(decay_kind) = 0; the variant in use is \"Timed & adaptive decay\" (BRG_SELECT bits 0-1 (decay_kind) "
           "= 1 to 3 selects \"Timed & adaptive decay\")";
    QTest::newRow("no such field") << "GLD_MODE" << quint64(0) << Fields {{"speed", "1"}} << false
                                   << "GLD_MODE has no field \"speed\" (fields: glide_mode, s_curve, wait_sync)";
    QTest::newRow("not a listed choice") << "GLD_MODE" << quint64(0) << Fields {{"glide_mode", "hover"}} << false
                                         << "GLD_MODE.glide_mode: \"hover\" is not a number nor one of: go to goal, "
                                            "cruise forward, cruise backward, park";
    QTest::newRow("read-only") << "SYS_PINS" << quint64(0) << Fields {{"lvl_pul", "1"}} << false
                               << "SYS_PINS.lvl_pul is read-only (access R): not written";
    QTest::newRow("read-only, forced") << "SYS_PINS" << quint64(0) << Fields {{"lvl_pul", "1"}} << true << "0x5a000001";
    QTest::newRow("below the minimum") << "GLD_VEXIT" << quint64(0) << Fields {{"v_exit", "0"}} << false
                                       << "GLD_VEXIT.v_exit = 0 is outside 1 to 262143";
    QTest::newRow("below the minimum, forced")
        << "GLD_VEXIT" << quint64(0) << Fields {{"v_exit", "0"}} << true << "0x0";
    QTest::newRow("unlisted choice number") << "LINK_CFG" << quint64(0) << Fields {{"reply_gap", "7"}} << false
                                            << "LINK_CFG.reply_gap = 7 is not a listed choice";
}

void TestRegisterValues::encode()
{
    QFETCH(QString, registerName);
    QFETCH(quint64, selector);
    QFETCH(Fields, fields);
    QFETCH(bool, force);
    QFETCH(QString, result);
    RegisterValues session(example());
    session.setValue(reg(QStringLiteral("BRG_SELECT")), selector);
    RegisterEncodeOptions options;
    options.force = force;
    const RegisterEncoding encoding = session.encode(reg(registerName), fields, options);
    QCOMPARE(encoding.ok ? QStringLiteral("0x") + QString::number(encoding.value, 16) : encoding.error, result);
    QCOMPARE(encoding.ok, encoding.error.isEmpty());
    if (!encoding.ok)
        QCOMPARE(encoding.value, quint64(0)); // nothing written
}

void TestRegisterValues::findRegister_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("found"); ///< the register's name, or the error message
    const char* const rows[][2] = {
        {"BRG_LOOP", "BRG_LOOP"},
        {"brg_loop", "BRG_LOOP"},
        {"0x92", "BRG_LOOP"},
        {"146", "BRG_LOOP"},
        {"BRG_LOPP", "no register \"BRG_LOPP\"; nearest: BRG_LOOP, BRG_HOLD, BRG_DYN"},
        {"0x30", "no register at address 0x30"},
    };
    for (const auto& row : rows)
        QTest::newRow(row[0]) << row[0] << row[1];
}

void TestRegisterValues::findRegister()
{
    QFETCH(QString, given);
    QFETCH(QString, found);
    QString message;
    XmlValueRegister* result = RegisterValues(example()).findRegister(given, &message);
    QCOMPARE(result ? result->name() : message, found);
    QCOMPARE(message.isEmpty(), result != nullptr);
}

/// A 72-bit register, a field reaching past its register and a shift of 70 decode and encode in 64 bits.
void TestRegisterValues::oddSizesStayInBounds()
{
    RegisterValues session(static_cast<XmlProductIC*>(m_odd.get()));
    XmlValueRegister* wide = session.findRegister(QStringLiteral("WIDE"));
    QCOMPARE(decodingLine(session.decode(wide, ~quint64(0))),
        QStringLiteral("all=18446744073709551615:-1; WIDE is 72 bits wide: only its low 64 bits are decoded"));
    QCOMPARE(session.encode(wide, {{"all", "-5"}}).value, quint64(0) - 5);
    QCOMPARE(session.encode(wide, {{"all", "-6"}}).error, QStringLiteral("WIDE.all = -6 is outside -5 to 5"));

    XmlValueRegister* small = session.findRegister(QStringLiteral("SMALL"));
    QCOMPARE(decodingLine(session.decode(small, 0xFFF)),
        QStringLiteral("over=255:255|far=0:low; uncovered 0xf; the value has bits above the register's 8 bits: "
                       "0x0000000000000F00; over has bits above the register's 8 bits; far has the shift 70, outside 0 "
                       "to 63: read as 0"));
    QCOMPARE(RegisterValues::defaultValue(small->getRegisterVariants()->first()), quint64(0xFF0));
    QVERIFY(!session.setValue(QStringLiteral("SMALL"), QStringLiteral("0x100")));
    QVERIFY(session.setValue(QStringLiteral("SMALL"), QStringLiteral("-128")));
    QCOMPARE(session.value(0x13), quint64(0x80));
    QCOMPARE(session.encode(session.findRegister(QStringLiteral("TIGHT")), {{"mode", "five"}}).error,
        QStringLiteral("TIGHT.mode: \"five\" is 5, which does not fit the field's 2 bits"));
}

void TestRegisterValues::roundTrip_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("valuesPerVariant");
    QTest::addColumn<int>("minimumCases");
    QTest::newRow("example IC") << QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml") << 200 << 20000;
    QTest::newRow("generated IC") << QStringLiteral("generated") << 30 << 25000;
}

/// encode(decode(v)) == v & covered bits, and decode(encode(fields)) gives the fields back, for every
/// variant that its selectors can choose.
void TestRegisterValues::roundTrip()
{
    QFETCH(QString, file);
    QFETCH(int, valuesPerVariant);
    QFETCH(int, minimumCases);
    if (file == QLatin1String("generated")) {
        const QString python = QStandardPaths::findExecutable(QStringLiteral("python3"));
        if (python.isEmpty())
            QSKIP("python3 is needed to generate the IC");
        file = m_dir.filePath(QStringLiteral("generated-ic.xml"));
        QProcess generator;
        generator.start(python,
            {QStringLiteral(KIVGEN_PATH), QStringLiteral("ic"), QStringLiteral("1"), file, QStringLiteral("11")});
        QVERIFY(generator.waitForFinished(120000));
        QCOMPARE(generator.exitCode(), 0);
    }
    const std::unique_ptr<XmlProductInterface> product = parseFile(file);
    auto* ic = qobject_cast<XmlProductIC*>(product.get());
    QVERIFY(ic && ic->registerSet());
    QRandomGenerator random(20251130);
    int cases = 0;
    for (XmlValueRegister* each : qAsConst(*ic->registerSet()->getRegisters())) {
        for (XmlRegisterVariant* variant : qAsConst(*each->getRegisterVariants())) {
            RegisterValues session(ic);
            for (const XmlRegisterVariantImpactedBy* entry : qAsConst(*variant->getImpactedsBy())) {
                const quint64 before = session.hasValue(entry->getAddress()) ? session.value(entry->getAddress()) : 0;
                session.setValue(session.findRegister(QString::number(entry->getAddress())),
                    (before & ~entry->getMaskValue())
                        | ((entry->getRangeFrom() << entry->getShift()) & entry->getMaskValue()));
            }
            if (session.chooseVariant(each).variant != variant)
                continue; // an earlier variant's condition holds as well
            const quint64 covered = RegisterValues::coveredBits(variant) & RegisterValues::sizeMask(each->getSize());
            RegisterEncodeOptions forced;
            forced.force = true;
            for (int round = 0; round < valuesPerVariant; ++round) {
                const quint64 value = random.generate64() & RegisterValues::sizeMask(each->getSize());
                Fields fields;
                for (const RegisterFieldValue& field : session.decode(each, value).fields)
                    fields << qMakePair(field.name, QStringLiteral("0x") + QString::number(field.raw, 16));
                const RegisterEncoding encoded = session.encode(each, fields, forced);
                QVERIFY2(encoded.ok, qPrintable(encoded.error));
                QCOMPARE(encoded.value, value & covered);

                Fields chosen;
                QList<quint64> raws;
                for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields())) {
                    const quint64 bits = field->getMaskValue() >> field->getShift();
                    raws << (random.generate64() & bits);
                    chosen << qMakePair(field->getName(), QString::number(raws.last()));
                }
                const RegisterEncoding built = session.encode(each, chosen, forced);
                QVERIFY2(built.ok, qPrintable(built.error));
                QList<quint64> back;
                for (const RegisterFieldValue& field : session.decode(each, built.value).fields)
                    back << field.raw;
                QCOMPARE(back, raws);
                cases += 2;
            }
        }
    }
    qInfo("%d round trips", cases);
    QVERIFY2(cases >= minimumCases, qPrintable(QString::number(cases)));
}

QTEST_GUILESS_MAIN(TestRegisterValues)
#include "tst_registervalues.moc"
