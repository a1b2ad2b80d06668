#pragma once

// Shared pieces of the ESI model: the lines of the debug blocks and the reading of ESI number texts.

#include <QLatin1String>
#include <QString>
#include <QtGlobal>

namespace EsiText {

/// "\n" indent tag, "\n" indent "{".
inline void openBlock(QString& s, const QString& indent, QLatin1String tag)
{
    s += QLatin1Char('\n') + indent + tag + QLatin1Char('\n') + indent + QLatin1Char('{');
}

inline void openBlock(QString& s, const QString& indent, const QString& tag)
{
    s += QLatin1Char('\n') + indent + tag + QLatin1Char('\n') + indent + QLatin1Char('{');
}

/// "\n" indent label value; the labels carry their leading tab.
inline void field(QString& s, const QString& indent, QLatin1String label, const QString& value)
{
    s += QLatin1Char('\n') + indent + label + value;
}

inline void field(QString& s, const QString& indent, QLatin1String label, int value)
{
    s += QLatin1Char('\n') + indent + label + QString::number(value);
}

inline void closeBlock(QString& s, const QString& indent)
{
    s += QLatin1Char('\n') + indent + QLatin1Char('}');
}

/// ESI writes hexadecimal numbers as "#x..."; the two prefix characters are dropped without being looked
/// at, then `count` characters (all when -1) are read as hexadecimal. Anything unreadable gives 0.
inline quint32 hexAfterPrefix(const QString& text, int count = -1)
{
    return text.midRef(2, count).toUInt(nullptr, 16);
}

inline quint64 hexAfterPrefix64(const QString& text)
{
    return text.midRef(2).toULongLong(nullptr, 16);
}

} // namespace EsiText
