#include "ModelDiff.h"

#include "../InputFile.h"
#include "../JsonOutput.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlDictionary.h"
#include "esi/ESIXmlDictionaryDataType.h"
#include "esi/ESIXmlDictionaryObject.h"
#include "esi/ESIXmlGroup.h"
#include "esi/ESIXmlObjectInfo.h"
#include "esi/ESIXmlProfile.h"
#include "esi/ESIXmlSubItem.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"

#include <QHash>
#include <QJsonArray>
#include <QSet>

namespace {

QString hex(quint64 value)
{
    return QStringLiteral("0x") + QString::number(value, 16).toUpper();
}

QJsonValue maskOf(const QJsonObject& owner);

/// How the elements of one JSON array are told apart: the label of the path segment and the identities
/// to pair them by, strongest first (a register renamed at its address is still that register).
struct Collection
{
    const char* key;
    const char* label;
    QStringList (*identities)(const QJsonObject& item);
};

QString number(const QJsonObject& item, const char* key)
{
    return QString::number(item.value(QLatin1String(key)).toDouble(), 'f', 0);
}

QString text(const QJsonObject& item, const char* key)
{
    return item.value(QLatin1String(key)).toString();
}

QStringList byName(const QJsonObject& item)
{
    return {text(item, "name")};
}
QStringList byType(const QJsonObject& item)
{
    return {number(item, "type")};
}
QStringList byId(const QJsonObject& item)
{
    return {number(item, "id")};
}

const Collection kCollections[] = {
    {"registers", "register",
        [](const QJsonObject& item) {
            const QString address = hex(quint64(item.value(QLatin1String("address")).toDouble()));
            return QStringList {address + QLatin1Char(' ') + text(item, "name"), address, text(item, "name")};
        }},
    {"groups", "group", byId},
    {"deviceGroups", "group", [](const QJsonObject& item) { return QStringList {text(item, "type")}; }},
    {"variants", "variant", byName},
    {"fields", "field", byName},
    {"impacts", "impacts",
        [](const QJsonObject& item) {
            return QStringList {hex(quint64(item.value(QLatin1String("address")).toDouble()))};
        }},
    {"impactedBy", "impacted by",
        [](const QJsonObject& item) {
            return QStringList {hex(quint64(item.value(QLatin1String("address")).toDouble())) + QStringLiteral(" mask ")
                + maskOf(item).toString()};
        }},
    {"elements", "choice", [](const QJsonObject& item) { return QStringList {number(item, "value")}; }},
    {"pins", "pin", byId},
    {"axisParameters", "axis", [](const QJsonObject& item) { return QStringList {number(item, "axis")}; }},
    {"globalParameters", "bank", [](const QJsonObject& item) { return QStringList {number(item, "bank")}; }},
    {"parameters", "parameter", byType},
    {"digitalInputs", "digital input", byType},
    {"digitalOutputs", "digital output", byType},
    {"analogInputs", "analog input", byType},
    {"irqs", "irq", byType},
    {"coordinates", "coordinate", byType},
    {"canopenObjects", "CANopen object",
        [](const QJsonObject& item) {
            return QStringList {hex(quint64(item.value(QLatin1String("index")).toDouble()))};
        }},
    {"entries", "sub-index", [](const QJsonObject& item) { return QStringList {number(item, "subIndex")}; }},
    {"driveConfigurations", "drive configuration", byId},
    {"apSettings", "settings", byName},
    {"settings", "setting", byType},
    {"pinMap", "pin mapping", [](const QJsonObject& item) { return QStringList {number(item, "pinIc")}; }},
    {"devices", "device",
        [](const QJsonObject& item) {
            return QStringList {text(item, "productCode") + QStringLiteral(" revision ") + text(item, "revisionNo")};
        }},
    {"profiles", "profile", [](const QJsonObject& item) { return QStringList {text(item, "profileNo")}; }},
    {"objects", "object", [](const QJsonObject& item) { return QStringList {text(item, "index")}; }},
    {"dataTypes", "data type", byName},
    {"subItems", "sub-item", byName},
};

const Collection* collectionOf(const QString& key)
{
    for (const Collection& collection : kCollections) {
        if (key == QLatin1String(collection.key))
            return &collection;
    }
    return nullptr;
}

// Single child objects; "registerSet" adds no segment to its registers' paths.
const char* labelOfChild(const QString& key)
{
    if (key == QLatin1String("registerSet"))
        return "register set";
    if (key == QLatin1String("pins"))
        return "pins";
    if (key == QLatin1String("database"))
        return "database";
    if (key == QLatin1String("vendor"))
        return "vendor";
    return nullptr;
}

/// Keys the model derives from others: an edit of the source attribute already shows.
bool isDerived(const QString& key, const QJsonObject& owner)
{
    static const QSet<QString> always {QStringLiteral("errorMask"), QStringLiteral("maskText"),
        QStringLiteral("accessMask"), QStringLiteral("present"), QStringLiteral("typeCode"), QStringLiteral("version"),
        QStringLiteral("segmentName")};
    if (always.contains(key))
        return true;
    // A variant's mask and access, a register's access: unions of their fields'.
    const bool union_ = owner.contains(QLatin1String("fields")) || owner.contains(QLatin1String("variants"));
    if (union_ && (key == QLatin1String("mask") || key == QLatin1String("access")))
        return true;
    // The long text falls back to the short one in the export.
    if (key == QLatin1String("descLong") && owner.value(key) == owner.value(QLatin1String("descShort")))
        return true;
    return false;
}

/// A mask as a number that keeps all 64 bits, from its text.
QJsonValue maskOf(const QJsonObject& owner)
{
    bool ok = false;
    QString written = owner.value(QLatin1String("maskText")).toString();
    const quint64 value = written.toULongLong(&ok, 16);
    return ok ? QJsonValue(hex(value)) : QJsonValue(hex(quint64(owner.value(QLatin1String("mask")).toDouble())));
}

/// The attributes compared for one element: its own scalars and lists of texts, and its value
/// descriptor's flattened under "value.".
QJsonObject attributesOf(const QJsonObject& element, const QString& prefix = QString())
{
    QJsonObject attributes;
    for (auto it = element.begin(); it != element.end(); ++it) {
        const QString& key = it.key();
        const QJsonValue& value = it.value();
        if (collectionOf(key) || labelOfChild(key) || isDerived(key, element))
            continue;
        if (key == QLatin1String("mask") && element.contains(QLatin1String("maskText"))) {
            attributes.insert(prefix + key, maskOf(element));
        } else if (key == QLatin1String("value") && value.isObject()) {
            const QJsonObject descriptor = value.toObject();
            QJsonObject flat = attributesOf(descriptor, prefix + QStringLiteral("value."));
            // Canonical letters, not the text as written; a choice's min and max follow its elements.
            flat.remove(prefix + QStringLiteral("value.access"));
            flat.remove(prefix + QStringLiteral("value.accessLetters"));
            flat.insert(prefix + QStringLiteral("value.access"), descriptor.value(QLatin1String("accessLetters")));
            if (descriptor.value(QLatin1String("kind")) == QLatin1String("Choice")) {
                flat.remove(prefix + QStringLiteral("value.min"));
                flat.remove(prefix + QStringLiteral("value.max"));
            }
            for (auto f = flat.begin(); f != flat.end(); ++f)
                attributes.insert(f.key(), f.value());
        } else {
            attributes.insert(prefix + key, value);
        }
    }
    return attributes;
}

/// The choices of a field's or parameter's value descriptor, paired like any collection.
QJsonArray choicesOf(const QJsonObject& element)
{
    return element.value(QLatin1String("value")).toObject().value(QLatin1String("elements")).toArray();
}

QString joined(const QString& path, const QString& segment)
{
    return path.isEmpty() ? segment : path + QStringLiteral(" / ") + segment;
}

class Differ
{
public:
    QList<DiffChange> changes;

    void compare(const QString& path, const QJsonObject& before, const QJsonObject& after);

private:
    void compareCollection(
        const QString& path, const Collection& collection, const QJsonArray& before, const QJsonArray& after);
    void compareChild(const QString& path, const QString& key, const QJsonValue& before, const QJsonValue& after);
};

void Differ::compare(const QString& path, const QJsonObject& before, const QJsonObject& after)
{
    const QJsonObject a = attributesOf(before);
    const QJsonObject b = attributesOf(after);
    QJsonObject oldValues;
    QJsonObject newValues;
    QStringList keys = a.keys() + b.keys();
    keys.removeDuplicates();
    keys.sort();
    for (const QString& key : qAsConst(keys)) {
        if (a.value(key) != b.value(key)) {
            oldValues.insert(key, a.contains(key) ? a.value(key) : QJsonValue());
            newValues.insert(key, b.contains(key) ? b.value(key) : QJsonValue());
        }
    }
    if (!oldValues.isEmpty())
        changes.append(
            DiffChange {DiffChange::Changed, path.isEmpty() ? QStringLiteral("product") : path, oldValues, newValues});

    QStringList children = before.keys() + after.keys();
    children.removeDuplicates();
    for (const QString& key : qAsConst(children)) {
        if (const Collection* collection = collectionOf(key))
            compareCollection(path, *collection, before.value(key).toArray(), after.value(key).toArray());
        else if (labelOfChild(key))
            compareChild(path, key, before.value(key), after.value(key));
    }
    const QJsonArray oldChoices = choicesOf(before);
    const QJsonArray newChoices = choicesOf(after);
    if (!oldChoices.isEmpty() || !newChoices.isEmpty())
        compareCollection(path, *collectionOf(QStringLiteral("elements")), oldChoices, newChoices);
}

void Differ::compareChild(const QString& path, const QString& key, const QJsonValue& before, const QJsonValue& after)
{
    const QString label = QLatin1String(labelOfChild(key));
    const QString own = joined(path, label);
    if (before.isObject() && after.isObject()) {
        // The register set's registers are named without it: there is only one.
        if (key == QLatin1String("registerSet")) {
            const QJsonObject a = before.toObject();
            const QJsonObject b = after.toObject();
            QJsonObject aOwn {{QStringLiteral("for"), a.value(QLatin1String("for"))},
                {QStringLiteral("name"), a.value(QLatin1String("name"))}};
            QJsonObject bOwn {{QStringLiteral("for"), b.value(QLatin1String("for"))},
                {QStringLiteral("name"), b.value(QLatin1String("name"))}};
            compare(own, aOwn, bOwn);
            compareCollection(path, *collectionOf(QStringLiteral("groups")), a.value(QLatin1String("groups")).toArray(),
                b.value(QLatin1String("groups")).toArray());
            compareCollection(path, *collectionOf(QStringLiteral("registers")),
                a.value(QLatin1String("registers")).toArray(), b.value(QLatin1String("registers")).toArray());
        } else {
            compare(own, before.toObject(), after.toObject());
        }
    } else if (before.isObject()) {
        changes.append(DiffChange {DiffChange::Removed, own, before, QJsonValue()});
    } else if (after.isObject()) {
        changes.append(DiffChange {DiffChange::Added, own, QJsonValue(), after});
    }
}

void Differ::compareCollection(
    const QString& path, const Collection& collection, const QJsonArray& before, const QJsonArray& after)
{
    const int strengths = after.isEmpty() && before.isEmpty()
        ? 0
        : collection.identities(before.isEmpty() ? after.first().toObject() : before.first().toObject()).size();
    QVector<QStringList> oldIds;
    QVector<QStringList> newIds;
    // The n-th element of one identity pairs with the n-th of the same identity: "#2" marks repeats.
    auto identify = [&collection](const QJsonArray& items, QVector<QStringList>* ids) {
        QVector<QHash<QString, int>> seen(8);
        for (const QJsonValue& item : items) {
            QStringList list = collection.identities(item.toObject());
            for (int s = 0; s < list.size() && s < seen.size(); ++s) {
                const int count = ++seen[s][list.at(s)];
                if (count > 1)
                    list[s] += QStringLiteral(" #") + QString::number(count);
            }
            ids->append(list);
        }
    };
    identify(before, &oldIds);
    identify(after, &newIds);
    QVector<int> pairOfNew(after.size(), -1);
    QVector<bool> oldTaken(before.size(), false);
    for (int strength = 0; strength < strengths; ++strength) {
        QHash<QString, int> free; // identity -> the old element that has it, among those not yet paired
        QSet<QString> ambiguous;
        for (int i = 0; i < before.size(); ++i) {
            if (oldTaken.at(i))
                continue;
            const QString id = oldIds.at(i).value(strength);
            if (free.contains(id))
                ambiguous.insert(id);
            free.insert(id, i);
        }
        for (int j = 0; j < after.size(); ++j) {
            if (pairOfNew.at(j) >= 0)
                continue;
            const QString id = newIds.at(j).value(strength);
            if (!free.contains(id) || ambiguous.contains(id) || oldTaken.at(free.value(id)))
                continue;
            pairOfNew[j] = free.value(id);
            oldTaken[free.value(id)] = true;
        }
    }
    const QString label = QLatin1String(collection.label) + QLatin1Char(' ');
    for (int j = 0; j < after.size(); ++j) {
        const QString own = joined(path, label + newIds.at(j).value(0));
        if (pairOfNew.at(j) < 0)
            changes.append(DiffChange {DiffChange::Added, own, QJsonValue(), after.at(j)});
        else
            compare(own, before.at(pairOfNew.at(j)).toObject(), after.at(j).toObject());
    }
    for (int i = 0; i < before.size(); ++i) {
        if (!oldTaken.at(i))
            changes.append(DiffChange {
                DiffChange::Removed, joined(path, label + oldIds.at(i).value(0)), before.at(i), QJsonValue()});
    }
}

QJsonObject esiModel(XmlEtherCATInfo* info)
{
    QJsonObject model;
    if (!info)
        return model;
    if (ESIXmlVendor* vendor = info->getVendor())
        model.insert(QStringLiteral("vendor"),
            QJsonObject {{QStringLiteral("id"), vendor->getId()}, {QStringLiteral("name"), vendor->getName()},
                {QStringLiteral("comment"), vendor->getComment()}});
    QJsonArray groups;
    QJsonArray devices;
    for (ESIXmlDescriptions* descriptions : info->getDescriptions()) {
        if (!descriptions)
            continue;
        for (ESIXmlGroup* group : descriptions->getGroups())
            groups.append(
                QJsonObject {{QStringLiteral("type"), group->getType()}, {QStringLiteral("name"), group->getName()}});
        for (ESIXmlDevice* device : descriptions->getDevices()) {
            QJsonArray profiles;
            for (ESIXmlProfile* profile : device->getProfiles()) {
                QJsonArray objects;
                QJsonArray dataTypes;
                if (ESIXmlDictionary* dictionary = profile->getDictionary()) {
                    for (ESIXmlDictionaryObject* object : dictionary->getObjects()) {
                        QJsonObject entry {{QStringLiteral("index"), hex(quint32(object->getIndex()))},
                            {QStringLiteral("name"), object->getName()}, {QStringLiteral("type"), object->getType()},
                            {QStringLiteral("bitSize"), object->getBitSize()}};
                        if (ESIXmlObjectInfo* objectInfo = object->getInfo()) {
                            QJsonArray names;
                            for (ESIXmlSubItem* item : objectInfo->getSubItems())
                                names.append(item->getName());
                            entry.insert(QStringLiteral("defaultValue"), objectInfo->getDefaultValue());
                            entry.insert(QStringLiteral("subItemNames"), names);
                        }
                        objects.append(entry);
                    }
                    for (ESIXmlDictionaryDataType* type : dictionary->getDataTypes()) {
                        QJsonArray items;
                        for (ESIXmlDictionaryDataTypeSubItem* item : type->getSubItems())
                            items.append(QJsonObject {{QStringLiteral("subIdx"), item->getSubIdx()},
                                {QStringLiteral("name"), item->getName()}, {QStringLiteral("type"), item->getType()},
                                {QStringLiteral("bitSize"), item->getBitSize()},
                                {QStringLiteral("bitOffs"), item->getBitOffs()},
                                {QStringLiteral("flags"), item->getFlags()}});
                        dataTypes.append(QJsonObject {{QStringLiteral("name"), type->getName()},
                            {QStringLiteral("bitSize"), type->getBitSize()}, {QStringLiteral("subItems"), items}});
                    }
                }
                profiles.append(QJsonObject {{QStringLiteral("profileNo"), profile->getProfileNo()},
                    {QStringLiteral("objects"), objects}, {QStringLiteral("dataTypes"), dataTypes}});
            }
            devices.append(QJsonObject {{QStringLiteral("productCode"), hex(device->getProductCode())},
                {QStringLiteral("revisionNo"), hex(device->getRevisionNo())},
                {QStringLiteral("name"), device->getName()}, {QStringLiteral("type"), device->getType()},
                {QStringLiteral("physics"), device->getPhysics()},
                {QStringLiteral("groupType"), device->getGroupType()}, {QStringLiteral("profiles"), profiles}});
        }
    }
    model.insert(QStringLiteral("deviceGroups"), groups);
    model.insert(QStringLiteral("devices"), devices);
    return model;
}

} // namespace

QString changeKindName(DiffChange::Kind kind)
{
    switch (kind) {
    case DiffChange::Added:
        return QStringLiteral("added");
    case DiffChange::Removed:
        return QStringLiteral("removed");
    case DiffChange::Changed:
        break;
    }
    return QStringLiteral("changed");
}

QJsonObject diffModel(const InputFile& input)
{
    return input.kind() == FileKind::ESI ? esiModel(input.esi()) : jsonObject(input);
}

QList<DiffChange> diffModels(const QJsonObject& oldModel, const QJsonObject& newModel)
{
    Differ differ;
    differ.compare(QString(), oldModel, newModel);
    return differ.changes;
}
