#pragma once

// Text forms shared by the IC model's renderers.

#include <QLatin1String>
#include <QString>

namespace KivIcText {

/// Product description files write "&" as the four characters \x26 in names and descriptions.
inline QString replaceAmpersandEscape(QString text)
{
    // Most names hold no backslash at all; a plain character scan spares building a string matcher.
    if (text.contains(QLatin1Char('\\')))
        text.replace(QLatin1String("\\x26"), QLatin1String("&"));
    return text;
}

/// Upper-case hexadecimal without prefix or padding, as masks and values are shown.
inline QString upperHex(unsigned long long value)
{
    return QString::number(value, 16).toUpper();
}

/// Register and field names as LaTeX shows them.
inline QString latexDisplayName(QString name)
{
    name.replace(QLatin1Char('_'), QLatin1String("\\_"));
    return name;
}

/// Register and field names as LaTeX label keys.
inline QString latexLabelName(QString name)
{
    name.replace(QLatin1Char('_'), QLatin1Char('-'));
    return name;
}

} // namespace KivIcText
