// kivtool diff as a reviewer meets it: nothing for a file against itself or a reordered copy, and each
// seeded edit exactly once with its old and new values.

#include "KivtoolRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
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

QStringList readLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
}

bool writeLines(const QString& path, const QStringList& lines)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(lines.join(QLatin1Char('\n')).toUtf8()) > 0;
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

/// A register field of the example as its lines show it.
struct Field
{
    QString registerPath; ///< "register 0x42 SYS_TRIM"
    QString registerName;
    int registerLine = -1;
    QString path; ///< "register ... / variant ... / field ..."
    int start = -1;
    int end = -1;
    int defaultLine = -1; ///< of a value_unsigned
    qint64 defaultValue = 0;
    int lastChoiceLine = -1;
    qint64 largestChoice = -1;
};

QList<Field> fieldsOf(const QStringList& lines)
{
    static const QRegularExpression reg(QStringLiteral("<value_register address=\"([^\"]+)\" name=\"([^\"]+)\""));
    static const QRegularExpression variant(QStringLiteral("<register_variant name=\"([^\"]*)\""));
    static const QRegularExpression field(QStringLiteral("<value_register_field name=\"([^\"]+)\""));
    static const QRegularExpression unsignedDefault(QStringLiteral("<value_unsigned .*default=\"(\\d+)\""));
    static const QRegularExpression choice(QStringLiteral("<choice_element value=\"(\\d+)\""));
    QList<Field> fields;
    Field current;
    QString variantName;
    for (int i = 0; i < lines.size(); ++i) {
        const QString& line = lines.at(i);
        QRegularExpressionMatch m;
        if ((m = reg.match(line)).hasMatch()) {
            current.registerName = m.captured(2);
            current.registerPath = QStringLiteral("register 0x")
                + QString::number(m.captured(1).toUInt(nullptr, 0), 16).toUpper() + QLatin1Char(' ') + m.captured(2);
            current.registerLine = i;
        } else if ((m = variant.match(line)).hasMatch()) {
            variantName = m.captured(1).replace(QLatin1String("\\x26"), QLatin1String("&"));
        } else if ((m = field.match(line)).hasMatch()) {
            current.path = current.registerPath + QStringLiteral(" / variant ") + variantName
                + QStringLiteral(" / field ") + m.captured(1);
            current.start = i;
            current.defaultLine = current.lastChoiceLine = -1;
            current.largestChoice = -1;
        } else if ((m = unsignedDefault.match(line)).hasMatch()) {
            current.defaultLine = i;
            current.defaultValue = m.captured(1).toLongLong();
        } else if ((m = choice.match(line)).hasMatch()) {
            current.lastChoiceLine = i;
            current.largestChoice = qMax(current.largestChoice, m.captured(1).toLongLong());
        } else if (line.trimmed() == QLatin1String("</value_register_field>")) {
            current.end = i;
            fields << current;
        }
    }
    return fields;
}

} // namespace

class TestDiff : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }
    void unchanged_data();
    void unchanged();
    void seededEdits();
    void markdownForm();

private:
    QTemporaryDir m_dir;
};

void TestDiff::unchanged_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QStringList>("reordered");
    QTest::newRow("IC") << kIC
                        << QStringList {QStringLiteral("<value_register "), QStringLiteral("</value_register>"),
                               QStringLiteral("<value_register_field "), QStringLiteral("</value_register_field>"),
                               QStringLiteral("<group "), QStringLiteral("</group>")};
    QTest::newRow("module") << kModule
                            << QStringList {QStringLiteral("<axis_parameter "), QStringLiteral("</axis_parameter>"),
                                   QStringLiteral("<canopen_entry "), QStringLiteral("</canopen_entry>")};
}

void TestDiff::unchanged()
{
    QFETCH(QString, file);
    QFETCH(QStringList, reordered);
    const Run self = diff(file, file);
    QCOMPARE(self.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(self.out.toUtf8()).object().value(QLatin1String("changes")).toArray().size(), 0);

    QStringList lines = readLines(file);
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

void TestDiff::seededEdits()
{
    const quint32 seed = qEnvironmentVariableIsSet("KIVCORE_DIFF_SEED")
        ? quint32(qEnvironmentVariableIntValue("KIVCORE_DIFF_SEED"))
        : QRandomGenerator::global()->generate();
    qInfo("seed %u (set KIVCORE_DIFF_SEED to repeat)", seed);
    QRandomGenerator random(seed);
    QStringList lines = readLines(kIC);
    QList<Field> fields = fieldsOf(lines);
    QVERIFY(fields.size() > 20);
    std::shuffle(fields.begin(), fields.end(), random);

    enum Kind
    {
        ChangeDefault,
        RemoveField,
        AddChoice,
        RenameRegister
    };
    const int edits = 6;
    QSet<QString> usedRegisters; // one edit per register keeps every path apart
    QMap<int, std::function<void(QStringList&)>> byLine; // applied from the bottom up
    QJsonArray expected;
    for (int e = 0; e < edits; ++e) {
        const Kind kind = Kind(e % 4);
        const auto target = std::find_if(fields.cbegin(), fields.cend(), [&](const Field& f) {
            return !usedRegisters.contains(f.registerName) && (kind != ChangeDefault || f.defaultLine >= 0)
                && (kind != AddChoice || f.lastChoiceLine >= 0);
        });
        QVERIFY(target != fields.cend());
        const Field f = *target;
        usedRegisters.insert(f.registerName);
        QJsonObject change;
        switch (kind) {
        case ChangeDefault:
            byLine.insert(f.defaultLine, [f](QStringList& l) {
                l[f.defaultLine].replace(QStringLiteral("default=\"") + QString::number(f.defaultValue),
                    QStringLiteral("default=\"") + QString::number(f.defaultValue + 1));
            });
            change = {{"kind", "changed"}, {"path", f.path}, {"old", QJsonObject {{"value.default", f.defaultValue}}},
                {"new", QJsonObject {{"value.default", f.defaultValue + 1}}}};
            break;
        case RemoveField:
            byLine.insert(f.start, [f](QStringList& l) { l.erase(l.begin() + f.start, l.begin() + f.end + 1); });
            change = {{"kind", "removed"}, {"path", f.path}};
            break;
        case AddChoice:
            byLine.insert(f.lastChoiceLine, [f](QStringList& l) {
                l.insert(f.lastChoiceLine + 1,
                    QStringLiteral("<choice_element value=\"") + QString::number(f.largestChoice + 1)
                        + QStringLiteral("\" desc_short=\"seeded\"/>"));
            });
            change = {{"kind", "added"},
                {"path", f.path + QStringLiteral(" / choice ") + QString::number(f.largestChoice + 1)}};
            break;
        case RenameRegister: {
            const QString renamed = f.registerName + QStringLiteral("_R");
            byLine.insert(f.registerLine, [f, renamed](QStringList& l) {
                l[f.registerLine].replace(QStringLiteral("name=\"") + f.registerName + QLatin1Char('"'),
                    QStringLiteral("name=\"") + renamed + QLatin1Char('"'));
            });
            change = {{"kind", "changed"}, {"path", f.registerPath + QStringLiteral("_R")},
                {"old", QJsonObject {{"name", f.registerName}}}, {"new", QJsonObject {{"name", renamed}}}};
            break;
        }
        }
        expected.append(change);
    }
    for (auto it = byLine.end(); it != byLine.begin();) {
        --it;
        it.value()(lines);
    }
    const QString edited = m_dir.filePath(QStringLiteral("edited.xml"));
    QVERIFY(writeLines(edited, lines));
    const Run run = diff(kIC, edited);
    QCOMPARE(run.exitCode, 1);
    const QJsonArray changes
        = QJsonDocument::fromJson(run.out.toUtf8()).object().value(QLatin1String("changes")).toArray();
    QCOMPARE(changes.size(), edits);
    for (const QJsonValue& want : qAsConst(expected)) {
        const QJsonObject w = want.toObject();
        int seen = 0;
        for (const QJsonValue& got : changes) {
            const QJsonObject g = got.toObject();
            if (g.value(QLatin1String("path")) != w.value(QLatin1String("path")))
                continue;
            ++seen;
            QCOMPARE(g.value(QLatin1String("kind")), w.value(QLatin1String("kind")));
            if (w.contains(QLatin1String("old"))) {
                QCOMPARE(g.value(QLatin1String("old")), w.value(QLatin1String("old")));
                QCOMPARE(g.value(QLatin1String("new")), w.value(QLatin1String("new")));
            }
            if (w.value(QLatin1String("kind")) == QLatin1String("removed"))
                QVERIFY(g.value(QLatin1String("old")).isObject() && g.value(QLatin1String("new")).isNull());
            if (w.value(QLatin1String("kind")) == QLatin1String("added"))
                QVERIFY(g.value(QLatin1String("new")).isObject() && g.value(QLatin1String("old")).isNull());
        }
        QVERIFY2(seen == 1, qPrintable(w.value(QLatin1String("path")).toString()));
    }
}

void TestDiff::markdownForm()
{
    QStringList lines = readLines(kIC);
    const int at = lines.indexOf(QRegularExpression(QStringLiteral(".*name=\"SYS_TRIM\".*")));
    QVERIFY(at > 0);
    lines[at].replace(QStringLiteral("SYS_TRIM"), QStringLiteral("SYS_`TRIM`|"));
    const QString edited = m_dir.filePath(QStringLiteral("markdown.xml"));
    QVERIFY(writeLines(edited, lines));
    const Run run = diff(kIC, edited, QStringLiteral("--markdown"));
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.out,
        QStringLiteral("## Changed\n\n"
                       "- ``register 0x42 SYS_`TRIM`|``\n"
                       "  - `name`: `\"SYS_TRIM\"` → ``\"SYS_`TRIM`|\"``\n\n"));
}

QTEST_GUILESS_MAIN(TestDiff)
#include "tst_diff.moc"
