#include "HtmlCheck.h"

#include <QRegularExpression>
#include <QStringList>

namespace HtmlCheck {

QString problem(const QString& html, bool textToo)
{
    static const QStringList voidElements {"br", "meta", "hr", "img", "input", "link", "col"};
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-zA-Z][a-zA-Z0-9]*)[^<>]*?(/?)>"));
    static const QRegularExpression strayAmpersand(QStringLiteral("&(?!(amp|lt|gt|quot|#39);)"));
    const QString doctype = QStringLiteral("<!DOCTYPE html>");
    int last = html.startsWith(doctype) ? doctype.size() : 0;
    QStringList open;
    for (auto it = tag.globalMatch(html); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString between = html.mid(last, match.capturedStart() - last);
        if (textToo && (between.contains(QLatin1Char('<')) || between.contains(QLatin1Char('>'))))
            return QStringLiteral("stray bracket in: ") + between;
        if (textToo && between.contains(strayAmpersand))
            return QStringLiteral("stray ampersand in: ") + between;
        last = match.capturedEnd();
        const QString name = match.captured(2).toLower();
        if (voidElements.contains(name) || !match.captured(3).isEmpty())
            continue;
        if (match.captured(1).isEmpty())
            open.append(name);
        else if (open.isEmpty() || open.takeLast() != name)
            return QStringLiteral("unbalanced </") + name + QLatin1Char('>');
    }
    if (textToo && html.mid(last).contains(QLatin1Char('<')))
        return QStringLiteral("stray bracket after the last tag");
    return open.isEmpty() ? QString()
                          : QStringLiteral("unclosed <") + open.join(QLatin1String("><")) + QLatin1Char('>');
}

} // namespace HtmlCheck
