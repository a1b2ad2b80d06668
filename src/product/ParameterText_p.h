#pragma once

// Debug-text pieces shared by the parameter family: every leaf and every container writes the same shape
// with its own prefix.

#include "base/ReserveHint_p.h"
#include "values/XmlValueInterface.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace KivText {

/// prefix, "type: " type, ", name: " name, ", desc[i]" line..., the value on its own line, ")".
inline QString leafText(QLatin1String prefix, long long type, const QString& name, const QStringList& descriptions,
    XmlValueInterface* value)
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
