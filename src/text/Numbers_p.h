#pragma once

// Number texts as the models show and read them.

#include <QString>
#include <QtGlobal>

namespace KivText {

/// Upper-case hexadecimal without prefix or padding, as masks and values are shown.
inline QString upperHex(unsigned long long value)
{
    return QString::number(value, 16).toUpper();
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

} // namespace KivText
