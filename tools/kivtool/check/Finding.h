#pragma once

#include <QList>
#include <QString>

/// How bad a finding is: an error fails `kivtool check` (exit 1), a warning or note does not.
enum class Severity
{
    Error,
    Warning,
    Note,
};

/// "error", "warning" or "note": the words of the text output, the JSON and SARIF's levels alike.
QString severityName(Severity severity);

/// One check: a stable identifier that never changes meaning, its severity and a title for the rule list.
struct CheckRule
{
    const char* id;
    Severity severity;
    const char* title;
};

/// Every check, in identifier order.
const QList<CheckRule>& checkRules();
const CheckRule* findCheckRule(const QString& id);

/// One thing `kivtool check` found, at the start tag of the element concerned.
struct Finding
{
    QString id;
    Severity severity = Severity::Error;
    QString file;
    int line = 0;
    int column = 0;
    QString message;
};
