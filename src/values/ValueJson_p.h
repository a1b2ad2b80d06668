#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QStringList>

class XmlValueInterface;

/// The pieces that the module and IC JSON exports share: the value descriptor object and lists without
/// their null entries. The layout is documented in docs/json.md.
namespace KivValueJson {

/// The descriptor as an object, or a JSON null for a missing descriptor.
QJsonValue descriptor(XmlValueInterface* value);

QJsonArray texts(const QStringList& lines);

/// `json` with `extra`'s keys added (an object used as a descriptor keeps its own keys beside the shared ones).
QJsonObject merged(QJsonObject json, const QJsonObject& extra);

/// A 64-bit number as a JSON number: exact up to 2^53, rounded above (callers keep a text beside it).
inline QJsonValue number(unsigned long long value)
{
    return QJsonValue(static_cast<double>(value));
}

/// The float as the double of its shortest decimal text, so that 0.1f is written 0.1, not 0.100000001490116;
/// null for infinity and NaN, which JSON cannot write.
QJsonValue shortestFloat(float value);

/// One element per non-null item of `items`, made by `toJson`.
template<typename Item, typename Function> QJsonArray array(const QList<Item*>& items, Function toJson)
{
    QJsonArray result;
    for (Item* item : items) {
        if (item)
            result.append(toJson(item));
    }
    return result;
}

} // namespace KivValueJson
