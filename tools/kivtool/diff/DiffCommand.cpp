#include "DiffCommand.h"

#include "ModelDiff.h"

#include "../Arguments.h"
#include "../InputFile.h"
#include "../Output.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

/// A value on one line: texts quoted, the rest as compact JSON.
QString shown(const QJsonValue& value)
{
    if (value.isString())
        return QLatin1Char('"') + value.toString() + QLatin1Char('"');
    if (value.isUndefined() || value.isNull())
        return QStringLiteral("null");
    if (value.isDouble()) {
        const double number = value.toDouble();
        return number == qint64(number) ? QString::number(qint64(number)) : QString::number(number, 'g', 17);
    }
    if (value.isBool())
        return value.toBool() ? QStringLiteral("true") : QStringLiteral("false");
    const QJsonDocument document = value.isArray() ? QJsonDocument(value.toArray()) : QJsonDocument(value.toObject());
    return QString::fromUtf8(document.toJson(QJsonDocument::Compact));
}

/// "key: old -> new" for each attribute of a change.
QStringList attributeLines(const DiffChange& change, const QString& arrow)
{
    QStringList lines;
    const QJsonObject before = change.oldValue.toObject();
    const QJsonObject after = change.newValue.toObject();
    for (auto it = before.begin(); it != before.end(); ++it)
        lines << it.key() + QStringLiteral(": ") + shown(it.value()) + arrow + shown(after.value(it.key()));
    return lines;
}

QString text(const QList<DiffChange>& changes)
{
    QString out;
    for (const DiffChange& change : changes) {
        out += changeKindName(change.kind) + QLatin1Char(' ') + change.path;
        if (change.kind == DiffChange::Changed) {
            out += QLatin1Char(':');
            for (const QString& line : attributeLines(change, QStringLiteral(" -> ")))
                out += QStringLiteral("\n    ") + line;
        }
        out += QLatin1Char('\n');
    }
    return out;
}

/// `value` as Markdown inline code that no backtick, pipe or markup in it can break out of.
QString code(const QString& value)
{
    QString fence = QStringLiteral("`");
    while (value.contains(fence))
        fence += QLatin1Char('`');
    const bool pad = value.startsWith(QLatin1Char('`')) || value.endsWith(QLatin1Char('`'));
    QString flat = value;
    flat.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return fence + (pad ? QStringLiteral(" ") : QString()) + flat + (pad ? QStringLiteral(" ") : QString()) + fence;
}

QString markdown(const QList<DiffChange>& changes)
{
    if (changes.isEmpty())
        return QStringLiteral("No changes.\n");
    QString out;
    const DiffChange::Kind order[] = {DiffChange::Added, DiffChange::Removed, DiffChange::Changed};
    const char* const headings[] = {"## Added\n\n", "## Removed\n\n", "## Changed\n\n"};
    for (int k = 0; k < 3; ++k) {
        QString section;
        for (const DiffChange& change : changes) {
            if (change.kind != order[k])
                continue;
            section += QStringLiteral("- ") + code(change.path) + QLatin1Char('\n');
            if (change.kind == DiffChange::Changed) {
                const QJsonObject before = change.oldValue.toObject();
                const QJsonObject after = change.newValue.toObject();
                for (auto it = before.begin(); it != before.end(); ++it)
                    section += QStringLiteral("  - ") + code(it.key()) + QStringLiteral(": ") + code(shown(it.value()))
                        + QStringLiteral(" → ") + code(shown(after.value(it.key()))) + QLatin1Char('\n');
            }
        }
        if (!section.isEmpty())
            out += QLatin1String(headings[k]) + section + QLatin1Char('\n');
    }
    return out;
}

QString json(const QList<DiffChange>& changes)
{
    QJsonArray list;
    for (const DiffChange& change : changes)
        list.append(
            QJsonObject {{QStringLiteral("kind"), changeKindName(change.kind)}, {QStringLiteral("path"), change.path},
                {QStringLiteral("old"), change.oldValue.isUndefined() ? QJsonValue() : change.oldValue},
                {QStringLiteral("new"), change.newValue.isUndefined() ? QJsonValue() : change.newValue}});
    return QString::fromUtf8(
        QJsonDocument(QJsonObject {{QStringLiteral("changes"), list}}).toJson(QJsonDocument::Indented));
}

} // namespace

int runDiff(const Arguments& arguments)
{
    if (arguments.isSet(QStringLiteral("json")) && arguments.isSet(QStringLiteral("markdown")))
        return fail(2, QStringLiteral("kivtool: --json and --markdown exclude each other\nTry 'kivtool help diff'."));
    LoadError error;
    const std::unique_ptr<InputFile> before = InputFile::load(arguments.operands.at(0), &error);
    if (!before)
        return fail(2, error.message);
    const std::unique_ptr<InputFile> after = InputFile::load(arguments.operands.at(1), &error);
    if (!after)
        return fail(2, error.message);
    if (before->kind() != after->kind())
        return fail(2,
            QStringLiteral("kivtool: ") + before->path() + QStringLiteral(" is ") + before->kindName()
                + QStringLiteral(", ") + after->path() + QStringLiteral(" is ") + after->kindName()
                + QStringLiteral(": diff compares files of one kind"));
    const QList<DiffChange> changes = diffModels(diffModel(*before), diffModel(*after));
    QString report;
    if (arguments.isSet(QStringLiteral("json")))
        report = json(changes);
    else if (arguments.isSet(QStringLiteral("markdown")))
        report = markdown(changes);
    else
        report = text(changes);
    if (!report.isEmpty()) {
        if (const int written = writeStandardOutput(report))
            return written;
    }
    return changes.isEmpty() ? 0 : 1;
}
