#pragma once

#include <QLatin1String>

namespace KivValueText {

// The fixed header-only table of the named-datum kinds (flag and database value).
inline QLatin1String namedValueHtmlTable()
{
    return QLatin1String("<table>\n<tr>\n<td width=\"10%\">Name</td>\n<td>Value</td>\n</tr>\n</table>");
}

} // namespace KivValueText
