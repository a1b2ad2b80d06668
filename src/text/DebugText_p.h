#pragma once

// The shapes of the models' debug texts: "{ ... }" blocks with indented fields, parameter leaves and
// item containers.
#include "base/ReserveHint_p.h"

#include <QLatin1String>
#include <QList>
#include <QString>
#include <QStringList>

namespace KivText {

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

/// prefix, "type: " type, ", name: " name, ", desc[i]" line..., the value on its own line, ")".
template<typename Value>
QString leafText(
    QLatin1String prefix, long long type, const QString& name, const QStringList& descriptions, Value* value)
{
    QString text;
    text.reserve(KivReserve::chars(64 + name.size(), descriptions.size(), 48));
    text += prefix;
    text += QLatin1String("type: ");
    text += QString::number(type);
    text += QLatin1String(", name: ");
    text += name;
    for (int i = 0; i < descriptions.size(); ++i) {
        text += QLatin1String(", desc[");
        text += QString::number(i);
        text += QLatin1Char(']');
        text += descriptions.at(i);
    }
    if (value) {
        text += QLatin1String("\n        value: ");
        text += value->toString(QString());
    }
    text += QLatin1Char(')');
    return text;
}

/// head (prefix plus the container's own fields), then one line per item, then ")". A null item (only
/// an API caller can append one) gives an empty line.
template<typename Item> QString containerText(const QString& head, const QList<Item*>& items)
{
    QStringList parts;
    parts.reserve(items.size() + 1);
    parts.append(head);
    for (Item* item : items)
        parts.append(item ? item->toString() : QString());
    QString text = parts.join(QLatin1Char('\n'));
    text += QLatin1Char(')');
    return text;
}

} // namespace KivText
