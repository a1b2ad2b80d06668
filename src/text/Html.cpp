#include "text/Html_p.h"

namespace KivText {

void appendChildRow(QString& html, const QString& childHtml)
{
    html += QLatin1String("\n<tr>\n<td></td>\n<td colspan=\"3\">");
    html += childHtml;
    html += QLatin1String("</td>\n</tr>");
}

void appendRow(QString& html, std::initializer_list<QString> cells)
{
    html += QLatin1String("\n<tr>");
    for (const QString& cell : cells) {
        html += QLatin1String("\n<td>");
        html += cell;
        html += QLatin1String("</td>");
    }
    html += QLatin1String("\n</tr>");
}

} // namespace KivText
