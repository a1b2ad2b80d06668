// kivtool check and diff as CI and reviewers meet them. check: one seeded defect per corpus file, found at
// its element with its identifier, the exit status. diff: nothing for a file against itself or a reordered
// copy, and each edit exactly once with its old and new values.

#include "KivtoolRun.h"
#include "TestXml.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kCorpus = QStringLiteral(KIVCORE_TEST_DATA_DIR "/check/");
const QString kIC = QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml");
const QString kModule = QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml");

using Run = KivtoolRun;

/// The findings of check --json, or the changes of diff --json.
QJsonArray listOf(const Run& run, const char* key)
{
    return QJsonDocument::fromJson(run.out.toUtf8()).object().value(QLatin1String(key)).toArray();
}

Run diff(const QString& before, const QString& after, const QString& form = QStringLiteral("--json"))
{
    return runKivtool({QStringLiteral("diff"), before, after, form});
}

/// Writes the example IC to `path` with each pattern, found exactly once, replaced.
bool writeEdited(const QString& path, const QList<QPair<QString, QString>>& edits)
{
    QString text = QString::fromUtf8(TestXml::readFile(kIC));
    for (const auto& edit : edits) {
        const QRegularExpression pattern(edit.first);
        if (text.count(pattern) != 1)
            return false;
        text.replace(pattern, edit.second);
    }
    return TestXml::writeFile(path, text.toUtf8());
}

/// Reverses every run of adjacent blocks that open with a line starting `open` and end with `close` (or
/// are that one line, when it closes itself).
QStringList reverseRuns(const QStringList& lines, const QString& open, const QString& close)
{
    QStringList out;
    for (int i = 0; i < lines.size();) {
        QList<QStringList> blocks;
        while (i < lines.size() && lines.at(i).trimmed().startsWith(open)) {
            QStringList block;
            while (i < lines.size()) {
                block << lines.at(i);
                const QString line = lines.at(i++).trimmed();
                if (line == close || (block.size() == 1 && line.endsWith(QLatin1String("/>"))))
                    break;
            }
            blocks.prepend(block);
        }
        for (const QStringList& block : qAsConst(blocks))
            out += block;
        if (blocks.isEmpty())
            out << lines.at(i++);
    }
    return out;
}

} // namespace

class TestCheckDiff : public QObject
{
    Q_OBJECT

private slots:
    void corpus_data();
    void corpus();
    void examplesHaveNoFinding();
    void textForm();
    void disable();
    void esiSamples();
    void unchanged_data();
    void unchanged();
    void edits();
    void markdownForm();

private:
    QTemporaryDir m_dir;
};

void TestCheckDiff::corpus_data()
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

void TestCheckDiff::corpus()
{
    QFETCH(QString, file);
    QFETCH(int, line);
    QFETCH(int, column);
    QFETCH(int, exitCode);
    const Run run = runKivtool({QStringLiteral("check"), QStringLiteral("--json"), kCorpus + file});
    QCOMPARE(run.exitCode, exitCode);
    const QJsonArray found = listOf(run, "findings");
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

void TestCheckDiff::examplesHaveNoFinding()
{
    for (const char* file : {"/ic/kiv-ic-example.xml", "/module/kiv-module-example.xml", "/esi/kiv-vendor-esi.xml"}) {
        const Run run = runKivtool({QStringLiteral("check"), QStringLiteral(KIVCORE_EXAMPLES_DIR) + file});
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.out, QString());
    }
}

void TestCheckDiff::textForm()
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

void TestCheckDiff::disable()
{
    const QString file = kCorpus + QStringLiteral("kiv101-overlap.xml");
    const Run run = runKivtool({QStringLiteral("check"), QStringLiteral("--json"), QStringLiteral("--disable"),
        QStringLiteral("KIV003,kiv101"), file});
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(listOf(run, "findings").size(), 0);
}

void TestCheckDiff::esiSamples()
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

void TestCheckDiff::unchanged_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("reordered");
    QTest::newRow("IC") << kIC
                        << QStringList {"<value_register ", "</value_register>", "<value_register_field ",
                               "</value_register_field>", "<group ", "</group>"};
    QTest::newRow("module") << kModule
                            << QStringList {
                                   "<axis_parameter ", "</axis_parameter>", "<canopen_entry ", "</canopen_entry>"};
}

void TestCheckDiff::unchanged()
{
    QFETCH(QString, file);
    QFETCH(QStringList, reordered);
    const Run self = diff(file, file);
    QCOMPARE(self.exitCode, 0);
    QCOMPARE(listOf(self, "changes").size(), 0);

    QStringList lines = QString::fromUtf8(TestXml::readFile(file)).split(QLatin1Char('\n'));
    const QStringList original = lines;
    for (int i = 0; i + 1 < reordered.size(); i += 2)
        lines = reverseRuns(lines, reordered.at(i), reordered.at(i + 1));
    QVERIFY(lines != original); // the copy really is reordered
    const QString copy = m_dir.filePath(QStringLiteral("reordered.xml"));
    QVERIFY(TestXml::writeFile(copy, lines.join(QLatin1Char('\n')).toUtf8()));
    const Run run = diff(file, copy, QStringLiteral("--markdown"));
    QCOMPARE(run.out, QStringLiteral("No changes.\n"));
    QCOMPARE(run.exitCode, 0);
}

/// One edit of each kind, all in one file: each is found once, with what it was and what it became.
void TestCheckDiff::edits()
{
    const QString edited = m_dir.filePath(QStringLiteral("edited.xml"));
    QVERIFY(writeEdited(edited,
        {{"max=\"63\" default=\"32\"", "max=\"63\" default=\"33\""},
            {"<value_register_field name=\"dir_flip\"[\\s\\S]*?</value_register_field>", ""},
            {"(value=\"3\" desc_short=\"tally slip\"/>)", "\\1<choice_element value=\"4\" desc_short=\"new\"/>"},
            {"name=\"SYS_PINS\"", "name=\"SYS_PINS_R\""}}));
    const Run run = diff(kIC, edited);
    QCOMPARE(run.exitCode, 1);
    QJsonArray found = listOf(run, "changes");
    QCOMPARE(found.size(), 4);
    // A removed field comes whole; its name stands for it here.
    QJsonObject removed = found.at(1).toObject();
    removed.insert(QLatin1String("old"), removed.value(QLatin1String("old")).toObject().value(QLatin1String("name")));
    found.replace(1, removed);
    const QString field = QStringLiteral("register 0x40 SYS_MODE / variant DEFAULT / field ");
    const QJsonArray expected {
        QJsonObject {{"kind", "added"}, {"path", field + "flt_source / choice 4"}, {"old", QJsonValue()},
            {"new", QJsonObject {{"descLong", "new"}, {"descShort", "new"}, {"value", 4}}}},
        QJsonObject {{"kind", "removed"}, {"path", field + "dir_flip"}, {"old", "dir_flip"}, {"new", QJsonValue()}},
        QJsonObject {{"kind", "changed"}, {"path", "register 0x42 SYS_TRIM / variant DEFAULT / field osc_trim"},
            {"old", QJsonObject {{"value.default", 32}}}, {"new", QJsonObject {{"value.default", 33}}}},
        QJsonObject {{"kind", "changed"}, {"path", "register 0x43 SYS_PINS_R"},
            {"old", QJsonObject {{"name", "SYS_PINS"}}}, {"new", QJsonObject {{"name", "SYS_PINS_R"}}}},
    };
    QCOMPARE(found, expected);
}

void TestCheckDiff::markdownForm()
{
    const QString edited = m_dir.filePath(QStringLiteral("markdown.xml"));
    QVERIFY(writeEdited(edited, {{"name=\"SYS_TRIM\"", "name=\"SYS_`TRIM`|\""}}));
    const Run run = diff(kIC, edited, QStringLiteral("--markdown"));
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.out,
        QStringLiteral("## Changed\n\n"
                       "- ``register 0x42 SYS_`TRIM`|``\n"
                       "  - `name`: `\"SYS_TRIM\"` → ``\"SYS_`TRIM`|\"``\n\n"));
}

QTEST_GUILESS_MAIN(TestCheckDiff)
#include "tst_checkdiff.moc"
