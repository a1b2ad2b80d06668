#include "CheckReport.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

namespace {

/// Where docs/checks.md explains a check: each section carries its identifier as an anchor.
QString helpUri(const QString& id)
{
    return QStringLiteral("docs/checks.md#") + id;
}

/// A file's path as a SARIF artifact URI: relative paths stay relative (a review platform resolves them
/// against the repository), absolute ones become file: URIs.
QString artifactUri(const QString& path)
{
    if (QDir::isAbsolutePath(path))
        return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded());
    QUrl url;
    url.setPath(QDir::fromNativeSeparators(path));
    return QString::fromLatin1(url.toEncoded());
}

QString sarifLevel(Severity severity)
{
    return severityName(severity); // SARIF's levels use the same three words
}

} // namespace

QString findingsText(const QList<Finding>& findings)
{
    if (findings.isEmpty())
        return QString();
    QString text;
    int errors = 0;
    int warnings = 0;
    for (const Finding& finding : findings) {
        text += finding.file + QLatin1Char(':') + QString::number(finding.line) + QLatin1Char(':')
            + QString::number(finding.column) + QStringLiteral(": ") + severityName(finding.severity)
            + QStringLiteral(": ") + finding.message + QStringLiteral(" [") + finding.id + QStringLiteral("]\n");
        errors += finding.severity == Severity::Error;
        warnings += finding.severity == Severity::Warning;
    }
    const int notes = findings.size() - errors - warnings;
    text += QString::number(errors) + (errors == 1 ? QStringLiteral(" error, ") : QStringLiteral(" errors, "))
        + QString::number(warnings) + (warnings == 1 ? QStringLiteral(" warning, ") : QStringLiteral(" warnings, "))
        + QString::number(notes) + (notes == 1 ? QStringLiteral(" note\n") : QStringLiteral(" notes\n"));
    return text;
}

QString findingsJson(const QList<Finding>& findings)
{
    QJsonArray list;
    for (const Finding& finding : findings)
        list.append(QJsonObject {{QStringLiteral("id"), finding.id},
            {QStringLiteral("severity"), severityName(finding.severity)}, {QStringLiteral("file"), finding.file},
            {QStringLiteral("line"), finding.line}, {QStringLiteral("column"), finding.column},
            {QStringLiteral("message"), finding.message}});
    return QString::fromUtf8(
        QJsonDocument(QJsonObject {{QStringLiteral("findings"), list}}).toJson(QJsonDocument::Indented));
}

QString findingsSarif(const QList<Finding>& findings, const QString& toolVersion)
{
    QJsonArray rules;
    QHash<QString, int> ruleIndex;
    for (const CheckRule& rule : checkRules()) {
        const QString id = QLatin1String(rule.id);
        ruleIndex.insert(id, rules.size());
        rules.append(QJsonObject {{QStringLiteral("id"), id},
            {QStringLiteral("shortDescription"), QJsonObject {{QStringLiteral("text"), QLatin1String(rule.title)}}},
            {QStringLiteral("helpUri"), helpUri(id)},
            {QStringLiteral("defaultConfiguration"),
                QJsonObject {{QStringLiteral("level"), sarifLevel(rule.severity)}}}});
    }
    QJsonArray results;
    for (const Finding& finding : findings) {
        const QJsonObject region {{QStringLiteral("startLine"), qMax(1, finding.line)},
            {QStringLiteral("startColumn"), qMax(1, finding.column)}};
        const QJsonObject location {{QStringLiteral("physicalLocation"),
            QJsonObject {
                {QStringLiteral("artifactLocation"), QJsonObject {{QStringLiteral("uri"), artifactUri(finding.file)}}},
                {QStringLiteral("region"), region}}}};
        QJsonObject result {{QStringLiteral("ruleId"), finding.id},
            {QStringLiteral("level"), sarifLevel(finding.severity)},
            {QStringLiteral("message"), QJsonObject {{QStringLiteral("text"), finding.message}}},
            {QStringLiteral("locations"), QJsonArray {location}}};
        if (ruleIndex.contains(finding.id))
            result.insert(QStringLiteral("ruleIndex"), ruleIndex.value(finding.id));
        results.append(result);
    }
    const QJsonObject driver {{QStringLiteral("name"), QStringLiteral("kivtool")},
        {QStringLiteral("version"), toolVersion}, {QStringLiteral("rules"), rules}};
    const QJsonObject run {{QStringLiteral("tool"), QJsonObject {{QStringLiteral("driver"), driver}}},
        {QStringLiteral("columnKind"), QStringLiteral("utf16CodeUnits")}, {QStringLiteral("results"), results}};
    const QJsonObject log {{QStringLiteral("$schema"), QStringLiteral("https://json.schemastore.org/sarif-2.1.0.json")},
        {QStringLiteral("version"), QStringLiteral("2.1.0")}, {QStringLiteral("runs"), QJsonArray {run}}};
    return QString::fromUtf8(QJsonDocument(log).toJson(QJsonDocument::Indented));
}
