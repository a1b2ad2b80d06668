#include "ic/IcJson.h"

#include "ic/IcJson_p.h"
#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPin.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "values/ValueJson_p.h"
#include "values/XmlValueAlert.h"

using KivValueJson::array;
using KivValueJson::merged;
using KivValueJson::number;
using KivValueJson::texts;

namespace {

QJsonObject field(XmlValueRegisterField* field)
{
    QJsonArray alerts;
    for (const XmlValueAlert* alert : field->getAlerts()) {
        if (alert)
            alerts.append(alert->getText());
    }
    return {
        {QStringLiteral("name"), field->getName()},
        {QStringLiteral("shift"), field->getShift()},
        {QStringLiteral("mask"), number(field->getMaskValue())},
        {QStringLiteral("maskText"), field->getMaskAsString()},
        {QStringLiteral("errorMask"), field->getErrorMask()},
        {QStringLiteral("descShort"), field->getDescriptionShort()},
        // The model hands out the long text only with its fallback to the short one.
        {QStringLiteral("descLong"), field->getDescriptionLong()},
        {QStringLiteral("value"), KivIcJson::value(field->getValue())},
        {QStringLiteral("alerts"), alerts},
    };
}

QJsonObject impacts(XmlRegisterVariantImpacts* impacts)
{
    return {{QStringLiteral("address"), qint64(impacts->getAddress())}};
}

QJsonObject impactedBy(XmlRegisterVariantImpactedBy* entry)
{
    return {
        {QStringLiteral("address"), qint64(entry->getAddress())},
        {QStringLiteral("shift"), entry->getShift()},
        {QStringLiteral("mask"), number(entry->getMaskValue())},
        {QStringLiteral("maskText"), entry->getMaskAsString()},
        {QStringLiteral("rangeFrom"), number(entry->getRangeFrom())},
        {QStringLiteral("rangeTo"), number(entry->getRangeTo())},
    };
}

QJsonObject variant(XmlRegisterVariant* variant)
{
    return {
        {QStringLiteral("name"), variant->getName()},
        {QStringLiteral("descriptions"), texts(*variant->getDescriptions())},
        {QStringLiteral("mask"), number(variant->getMaskValue())},
        // The variant keeps no text of its own: its mask is the union of its fields', written in hexadecimal.
        {QStringLiteral("maskText"), QString::number(variant->getMaskValue(), 16).toUpper()},
        {QStringLiteral("access"), variant->getAccessAsString()},
        {QStringLiteral("accessMask"), variant->getAccess()},
        {QStringLiteral("fields"), array(*variant->getRegisterFields(), field)},
        {QStringLiteral("impacts"), array(*variant->getImpacts(), impacts)},
        {QStringLiteral("impactedBy"), array(*variant->getImpactedsBy(), impactedBy)},
    };
}

QJsonObject registerObject(XmlValueRegister* reg)
{
    return {
        {QStringLiteral("address"), qint64(reg->address())},
        {QStringLiteral("name"), reg->name()},
        {QStringLiteral("size"), reg->getSize()},
        {QStringLiteral("group"), qint64(reg->getGroupID())},
        {QStringLiteral("access"), reg->getAccessAsString()},
        {QStringLiteral("accessMask"), reg->getAccess()},
        {QStringLiteral("variants"), array(*reg->getRegisterVariants(), variant)},
    };
}

QJsonObject group(XmlGroup* group)
{
    return {{QStringLiteral("id"), qint64(group->getID())}, {QStringLiteral("name"), group->getName()}};
}

QJsonValue registerSet(XmlRegisterSet* set)
{
    if (!set)
        return QJsonValue(QJsonValue::Null);
    return QJsonObject {
        {QStringLiteral("for"), set->getFor()},
        {QStringLiteral("name"), set->getName()},
        {QStringLiteral("groups"), array(*set->getGroups(), group)},
        {QStringLiteral("registers"), array(*set->getRegisters(), registerObject)},
    };
}

QJsonObject pin(XmlPin* pin)
{
    return {
        {QStringLiteral("id"), qint64(pin->getId())},
        {QStringLiteral("type"), pin->getType()},
        {QStringLiteral("name"), pin->getName()},
        {QStringLiteral("descShort"), pin->getDescriptionShort()},
        {QStringLiteral("descLong"), pin->getDescriptionLong()},
        {QStringLiteral("descLow"), pin->getDescriptionLow()},
        {QStringLiteral("descHigh"), pin->getDescriptionHigh()},
        {QStringLiteral("descFloating"), pin->getDescriptionFloating()},
        {QStringLiteral("defaultState"), pin->getDefaultState()},
    };
}

QJsonObject pinGroup(XmlPinGroup* group)
{
    return {
        {QStringLiteral("id"), qint64(group->getId())},
        {QStringLiteral("name"), group->getName()},
        {QStringLiteral("description"), group->getDescription()},
        {QStringLiteral("states"), group->getStates()},
        {QStringLiteral("descStates"), group->getDescStates()},
        {QStringLiteral("pins"), array(*group->getPins(), pin)},
    };
}

QJsonValue pins(XmlPins* pins)
{
    if (!pins)
        return QJsonValue(QJsonValue::Null);
    return QJsonObject {
        {QStringLiteral("packaging"), pins->getPackaging()},
        {QStringLiteral("groups"), array(*pins->getPinGroups(), pinGroup)},
    };
}

QJsonObject pinMapping(XmlPinMapping* mapping)
{
    return {
        {QStringLiteral("pinIc"), qint64(mapping->getPinIc())},
        {QStringLiteral("pinBoard"), qint64(mapping->getPinBoard())},
    };
}

} // namespace

namespace KivIcJson {

QJsonValue value(XmlValueInterface* value)
{
    const QJsonValue json = KivValueJson::descriptor(value);
    if (auto* reg = dynamic_cast<XmlValueRegister*>(value))
        return merged(json.toObject(), registerObject(reg));
    if (auto* registerVariant = dynamic_cast<XmlRegisterVariant*>(value))
        return merged(json.toObject(), variant(registerVariant));
    if (auto* registerField = dynamic_cast<XmlValueRegisterField*>(value))
        return merged(json.toObject(), field(registerField));
    return json;
}

QJsonValue database(XmlDatabase* database)
{
    if (!database)
        return QJsonValue(QJsonValue::Null);
    return QJsonObject {
        {QStringLiteral("name"), database->getName()},
        {QStringLiteral("for"), database->getFor()},
        {QStringLiteral("rSense"), qint64(database->getRSense())},
        {QStringLiteral("vSrtl"), qint64(database->getVSRTL())},
        {QStringLiteral("vSrth"), qint64(database->getVSRTH())},
        {QStringLiteral("offset"), database->getOffset()},
    };
}

QJsonValue pinMap(XmlPinMap* pinMap)
{
    if (!pinMap)
        return QJsonValue(QJsonValue::Null);
    return array(*pinMap->getPinMappings(), pinMapping);
}

} // namespace KivIcJson

QJsonObject IcJson::toJson(XmlProductIC* ic)
{
    if (!ic)
        return {};
    return {
        {QStringLiteral("product"), QStringLiteral("ic")},
        {QStringLiteral("name"), ic->name()},
        {QStringLiteral("version"), ic->version()},
        {QStringLiteral("author"), ic->author()},
        {QStringLiteral("date"), ic->date()},
        {QStringLiteral("descriptions"), texts(*ic->mainDescription())},
        {QStringLiteral("registerSet"), registerSet(ic->registerSet())},
        {QStringLiteral("pins"), pins(ic->pins())},
        {QStringLiteral("database"), KivIcJson::database(ic->database())},
    };
}
