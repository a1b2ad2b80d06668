#pragma once

// The ampersand rule of product description files: their texts carry "&" as the four characters \x26,
// since the texts end up in documents where a bare one is markup.

#include <QLatin1String>
#include <QString>

namespace KivText {

inline constexpr char kAmpersandEscape[] = "\\x26";

/// Every \x26 replaced by `by` ("&" for display; a LaTeX document wants "\\&").
inline QString replaceAmpersandEscape(QString text, QLatin1String by = QLatin1String("&"))
{
    // Most texts hold no backslash at all; a plain character scan spares building a string matcher.
    if (text.contains(QLatin1Char('\\')))
        text.replace(QLatin1String(kAmpersandEscape), by);
    return text;
}

/// Every "&" written as \x26, as texts are stored.
inline QString escapeAmpersand(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String(kAmpersandEscape));
}

} // namespace KivText
