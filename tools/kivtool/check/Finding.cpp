#include "Finding.h"

QString severityName(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Note:
        break;
    }
    return QStringLiteral("note");
}

const QList<CheckRule>& checkRules()
{
    // Identifiers are never reused: a retired check keeps its number unused. docs/checks.md has a section
    // per identifier.
    static const QList<CheckRule> rules {
        {"KIV001", Severity::Warning, "element the parser skips"},
        {"KIV002", Severity::Warning, "\\u escape that is not four hexadecimal digits"},
        {"KIV003", Severity::Warning, "empty name"},
        {"KIV004", Severity::Error, "file the parser cannot read to its end"},
        {"KIV051", Severity::Error, "default outside min and max"},
        {"KIV052", Severity::Error, "min above max"},
        {"KIV053", Severity::Error, "choice default that is not a listed choice"},
        {"KIV101", Severity::Error, "fields of one variant that overlap"},
        {"KIV102", Severity::Error, "field mask outside the register's width"},
        {"KIV103", Severity::Error, "mask and shift that disagree"},
        {"KIV104", Severity::Error, "choice value that does not fit the field"},
        {"KIV105", Severity::Error, "two registers at one address"},
        {"KIV106", Severity::Error, "two registers with one name"},
        {"KIV107", Severity::Error, "impacted-by entry naming a register that does not exist"},
        {"KIV108", Severity::Error, "impacted-by entry naming bits that no field of the register has"},
        {"KIV109", Severity::Warning, "variant that no selector value can choose"},
        {"KIV110", Severity::Error, "variants whose conditions overlap"},
        {"KIV111", Severity::Warning, "impacts and impacted-by entries that do not match"},
        {"KIV112", Severity::Warning, "alert attached to nothing"},
        {"KIV201", Severity::Error, "two parameters with one number"},
        {"KIV202", Severity::Error, "CANopen entry whose sub-index repeats"},
        {"KIV203", Severity::Error, "two CANopen objects with one index"},
        {"KIV204", Severity::Error, "drive configuration naming a parameter that does not exist"},
        {"KIV301", Severity::Error, "two ESI devices with one product code and revision"},
    };
    return rules;
}

const CheckRule* findCheckRule(const QString& id)
{
    for (const CheckRule& rule : checkRules()) {
        if (id.compare(QLatin1String(rule.id), Qt::CaseInsensitive) == 0)
            return &rule;
    }
    return nullptr;
}
