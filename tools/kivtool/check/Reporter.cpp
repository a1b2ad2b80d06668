#include "Reporter.h"

void Reporter::report(const char* id, int node, const QString& message)
{
    if (node < 0 || node >= m_tree.nodes().size())
        reportAt(id, 1, 1, message);
    else
        reportAt(id, m_tree.node(node).line, m_tree.node(node).column, message);
}

void Reporter::reportAt(const char* id, int line, int column, const QString& message)
{
    const CheckRule* rule = findCheckRule(QLatin1String(id));
    Finding finding;
    finding.id = QLatin1String(id);
    finding.severity = rule ? rule->severity : Severity::Error;
    finding.file = m_file;
    finding.line = line;
    finding.column = column;
    finding.message = message;
    m_findings->append(finding);
}

QString shownText(const QString& text)
{
    const int limit = 64;
    QString shown = text.left(limit);
    for (QChar& c : shown) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = QLatin1Char(' ');
    }
    return QLatin1Char('"') + shown + (text.size() > limit ? QLatin1String("...\"") : QLatin1String("\""));
}

QString hexText(quint64 value)
{
    return QStringLiteral("0x") + QString::number(value, 16).toUpper();
}
