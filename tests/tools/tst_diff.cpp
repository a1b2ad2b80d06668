// kivtool diff as a reviewer meets it: nothing for a file against itself or a reordered copy, and each
// edit exactly once with its old and new values.

#include "KivtoolRun.h"
#include "TestXml.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kIC = QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml");
const QString kModule = QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml");

using Run = KivtoolRun;

Run diff(const QString& before, const QString& after, const QString& form = QStringLiteral("--json"))
{
    return runKivtool({QStringLiteral("diff"), before, after, form});
}

QJsonArray changes(const Run& run)
{
    return QJsonDocument::fromJson(run.out.toUtf8()).object().value(QLatin1String("changes")).toArray();
}

bool writeLines(const QString& path, const QStringList& lines)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(lines.join(QLatin1Char('\n')).toUtf8()) > 0;
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
    return writeLines(path, {text});
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

class TestDiff : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }
    void unchanged_data();
    void unchanged();
    void edits();
    void markdownForm();

private:
    QTemporaryDir m_dir;
};

void TestDiff::unchanged_data()
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

void TestDiff::unchanged()
{
    QFETCH(QString, file);
    QFETCH(QStringList, reordered);
    const Run self = diff(file, file);
    QCOMPARE(self.exitCode, 0);
    QCOMPARE(changes(self).size(), 0);

    QStringList lines = QString::fromUtf8(TestXml::readFile(file)).split(QLatin1Char('\n'));
    const QStringList original = lines;
    for (int i = 0; i + 1 < reordered.size(); i += 2)
        lines = reverseRuns(lines, reordered.at(i), reordered.at(i + 1));
    QVERIFY(lines != original); // the copy really is reordered
    const QString copy = m_dir.filePath(QStringLiteral("reordered.xml"));
    QVERIFY(writeLines(copy, lines));
    const Run run = diff(file, copy, QStringLiteral("--markdown"));
    QCOMPARE(run.out, QStringLiteral("No changes.\n"));
    QCOMPARE(run.exitCode, 0);
}

/// One edit of each kind, all in one file: each is found once, with what it was and what it became.
void TestDiff::edits()
{
    const QString edited = m_dir.filePath(QStringLiteral("edited.xml"));
    QVERIFY(writeEdited(edited,
        {{"max=\"63\" default=\"32\"", "max=\"63\" default=\"33\""},
            {"<value_register_field name=\"dir_flip\"[\\s\\S]*?</value_register_field>", ""},
            {"(value=\"3\" desc_short=\"tally slip\"/>)", "\\1<choice_element value=\"4\" desc_short=\"new\"/>"},
            {"name=\"SYS_PINS\"", "name=\"SYS_PINS_R\""}}));
    const Run run = diff(kIC, edited);
    QCOMPARE(run.exitCode, 1);
    QJsonArray found = changes(run);
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

void TestDiff::markdownForm()
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

QTEST_GUILESS_MAIN(TestDiff)
#include "tst_diff.moc"
