// kivtool check as CI meets it: one seeded defect per corpus file, found at its element with its
// identifier, the exit status, and the three output forms.

#include "KivtoolRun.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

namespace {

const QString kCorpus = QStringLiteral(KIVCORE_TEST_DATA_DIR "/check/");

using Run = KivtoolRun;

QJsonArray findings(const Run& run)
{
    return QJsonDocument::fromJson(run.out.toUtf8()).object().value(QLatin1String("findings")).toArray();
}

} // namespace

class TestCheck : public QObject
{
    Q_OBJECT

private slots:
    void corpus_data();
    void corpus();
    void examplesHaveNoFinding();
    void textForm();
    void disable();
    void usageAndUnreadable_data();
    void usageAndUnreadable();
    void esiSamples();
};

void TestCheck::corpus_data()
{
    QTest::addColumn<QString>("file"); // named after the check it trips
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("exitCode");
    const struct
    {
        const char* file;
        int line;
        int column;
        int exitCode;
    } rows[] = {
        {"kiv001-unknown-element.xml", 9, 5, 0},
        {"kiv002-bad-escape.xml", 6, 5, 0},
        {"kiv003-empty-name.xml", 6, 5, 0},
        {"kiv004-malformed.xml", 9, 22, 1},
        {"kiv051-default-outside.xml", 7, 6, 1},
        {"kiv052-min-above-max.xml", 7, 6, 1},
        {"kiv053-choice-default.xml", 7, 6, 1},
        {"kiv101-overlap.xml", 9, 5, 1},
        {"kiv102-mask-outside.xml", 9, 5, 1},
        {"kiv103-mask-shift.xml", 6, 5, 1},
        {"kiv104-choice-fit.xml", 11, 7, 1},
        {"kiv105-same-address.xml", 11, 3, 1},
        {"kiv106-same-name.xml", 11, 3, 1},
        {"kiv107-missing-selector.xml", 9, 5, 1},
        {"kiv108-missing-bits.xml", 22, 5, 1},
        {"kiv109-unchoosable.xml", 28, 5, 0},
        {"kiv110-variants-overlap.xml", 24, 4, 1},
        {"kiv111-impacts-mismatch.xml", 21, 5, 0},
        {"kiv112-orphan-alert.xml", 9, 5, 0},
        {"kiv201-duplicate-number.xml", 9, 3, 1},
        {"kiv202-subindex-repeats.xml", 14, 3, 1},
        {"kiv203-object-index.xml", 15, 2, 1},
        {"kiv204-drive-config.xml", 13, 4, 1},
        {"kiv301-esi-duplicate-device.xml", 20, 4, 1},
    };
    for (const auto& row : rows)
        QTest::newRow(row.file) << QString::fromLatin1(row.file) << row.line << row.column << row.exitCode;
}

void TestCheck::corpus()
{
    QFETCH(QString, file);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(int, exitCode);
    const Run run = runKivtool({QStringLiteral("check"), QStringLiteral("--json"), kCorpus + file});
    QCOMPARE(run.exitCode, exitCode);
    const QJsonArray found = findings(run);
    QCOMPARE(found.size(), 1); // the seeded defect and nothing else
    const QJsonObject finding = found.first().toObject();
    QCOMPARE(finding.value(QLatin1String("id")).toString(), file.left(6).toUpper());
    QCOMPARE(finding.value(QLatin1String("line")).toInt(), line);
    QCOMPARE(finding.value(QLatin1String("column")).toInt(), column);
    QCOMPARE(finding.value(QLatin1String("file")).toString(), kCorpus + file);
    QCOMPARE(finding.value(QLatin1String("severity")).toString(),
        exitCode ? QStringLiteral("error") : QStringLiteral("warning"));
    QVERIFY(!finding.value(QLatin1String("message")).toString().contains(QLatin1Char('\n')));
}

void TestCheck::examplesHaveNoFinding()
{
    for (const char* file : {"/ic/kiv-ic-example.xml", "/module/kiv-module-example.xml", "/esi/kiv-vendor-esi.xml"}) {
        const Run run = runKivtool({QStringLiteral("check"), QStringLiteral(KIVCORE_EXAMPLES_DIR) + file});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QString());
    }
}

void TestCheck::textForm()
{
    const QString a = kCorpus + QStringLiteral("kiv103-mask-shift.xml");
    const QString b = kCorpus + QStringLiteral("kiv112-orphan-alert.xml");
    const Run run = runKivtool({QStringLiteral("check"), a, b});
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.out,
        a
            + QStringLiteral(":6:5: error: mask \"F0\" and shift 3 disagree: the mask's lowest bit is 4 or it has a "
                             "gap; give one run of set bits starting at bit shift [KIV103]\n")
            + b
            + QStringLiteral(":9:5: warning: this alert stands in <register_variant>, where nothing takes it, and is "
                             "lost; move it into the <value_register_field> it warns about [KIV112]\n"
                             "1 error, 1 warning, 0 notes\n"));
}

void TestCheck::disable()
{
    const QString file = kCorpus + QStringLiteral("kiv101-overlap.xml");
    const Run run = runKivtool({QStringLiteral("check"), QStringLiteral("--json"), QStringLiteral("--disable"),
        QStringLiteral("KIV003,kiv101"), file});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(findings(run).size(), 0);
}

void TestCheck::usageAndUnreadable_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    const QString file = kCorpus + QStringLiteral("kiv101-overlap.xml");
    QTest::newRow("unknown id") << QStringList {"--disable", "KIV999", file}
                                << "kivtool: --disable: no check \"KIV999\"";
    QTest::newRow("missing file") << QStringList {kCorpus + "none.xml"} << "kivtool: cannot open ";
    QTest::newRow("two forms") << QStringList {"--json", "--sarif", file}
                               << "kivtool: --json and --sarif exclude each other";
}

void TestCheck::usageAndUnreadable()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const Run run = runKivtool(QStringList {QStringLiteral("check")} + arguments);
    QCOMPARE(run.exitCode, 2);
    QVERIFY2(run.err.startsWith(message), qPrintable(run.err));
}

void TestCheck::esiSamples()
{
    const QDir samples(QStringLiteral(KIVCORE_ESI_SAMPLES_DIR));
    const QStringList files = samples.entryList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name);
    if (files.isEmpty())
        QSKIP("no ESI samples beside the repository");
    for (const QString& name : files) {
        const Run run = runKivtool({QStringLiteral("check"), QStringLiteral("--json"), samples.filePath(name)});
        // A foreign root (a module description) is refused with 2; every other sample is checked whole.
        QVERIFY2(run.exitCode >= 0 && run.exitCode <= 2, qPrintable(name));
        if (run.exitCode < 2)
            QVERIFY2(QJsonDocument::fromJson(run.out.toUtf8()).isObject(), qPrintable(name));
    }
}

QTEST_GUILESS_MAIN(TestCheck)
#include "tst_check.moc"
