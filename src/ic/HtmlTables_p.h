#pragma once

// The HTML pieces that every help-page renderer of the product model shares, kept in one place so that
// all tables open alike.

#include <QLatin1String>
#include <QString>

#include <initializer_list>

namespace KivHtml {

inline constexpr char kTableOpen[]
    = "\n<table border=\"1\" border-style=\"solid\" cellspacing=\"2\" cellpadding=\"5\">";
inline constexpr char kWideTableOpen[]
    = "\n<table width=\"100%\" border=\"1\" border-style=\"solid\" cellspacing=\"2\" cellpadding=\"5\">";
inline constexpr char kTableClose[] = "\n</table>";

/// A nested child table: an empty first cell, then the child spanning three columns whatever the
/// parent's column count (kept: the help pages were laid out for it).
inline void appendChildRow(QString& html, const QString& childHtml)
{
    html += QLatin1String("\n<tr>\n<td></td>\n<td colspan=\"3\">");
    html += childHtml;
    html += QLatin1String("</td>\n</tr>");
}

/// One row of plain cells.
inline void appendRow(QString& html, std::initializer_list<QString> cells)
{
    html += QLatin1String("\n<tr>");
    for (const QString& cell : cells) {
        html += QLatin1String("\n<td>");
        html += cell;
        html += QLatin1String("</td>");
    }
    html += QLatin1String("\n</tr>");
}

} // namespace KivHtml
