#pragma once

// The HTML pieces that the models' help-page renderers share, kept in one place so that all tables open
// alike, and the escaping of file texts for HTML.

#include <QLatin1String>
#include <QString>

#include <initializer_list>

namespace KivText {

inline constexpr char kTableOpen[]
    = "\n<table border=\"1\" border-style=\"solid\" cellspacing=\"2\" cellpadding=\"5\">";
inline constexpr char kWideTableOpen[]
    = "\n<table width=\"100%\" border=\"1\" border-style=\"solid\" cellspacing=\"2\" cellpadding=\"5\">";
inline constexpr char kTableClose[] = "\n</table>";

/// A text from a file made safe for HTML: < > & " escaped.
inline QString escapeHtml(const QString& text)
{
    return text.toHtmlEscaped();
}

/// A nested child table: an empty first cell, then the child spanning three columns whatever the
/// parent's column count (kept: the help pages were laid out for it).
void appendChildRow(QString& html, const QString& childHtml);

/// One row of plain cells.
void appendRow(QString& html, std::initializer_list<QString> cells);

/// The fixed header-only table of the named-datum kinds (flag and database value).
inline QLatin1String namedValueHtmlTable()
{
    return QLatin1String("<table>\n<tr>\n<td width=\"10%\">Name</td>\n<td>Value</td>\n</tr>\n</table>");
}

} // namespace KivText
