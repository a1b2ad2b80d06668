// Parse functions of an IC's pins and of a board's pin map.

#include "ic/XmlPin.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "ic/XmlPins.h"
#include "product/parse/ProductParse_p.h"

using namespace KivParse;

namespace {

const ElementInfo kPinsInfo {QLatin1String("pins"), OtherChild::Report,
    "static XmlPins* KIVXmlParser::parsePins(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kPinGroupInfo {QLatin1String("pin_group"), OtherChild::Report,
    "static XmlPinGroup* KIVXmlParser::parsePinGroup(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kPinInfo {QLatin1String("pin"), OtherChild::Report,
    "static XmlPin* KIVXmlParser::parsePin(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kPinMapInfo {QLatin1String("pin_map"), OtherChild::Report,
    "static XmlPinMap* KIVXmlParser::parsePinMap(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kPinMappingInfo {QLatin1String("pin_mapping"), OtherChild::Report,
    "static XmlPinMapping* KIVXmlParser::parsePinMapping(QXmlStreamReader*)", kCouldNotParse};

const ChildRule<XmlPins> kPinsRules[] = {
    {QLatin1String("pin_group"), &appendChild<XmlPins, &KIVXmlParser::parsePinGroup, &XmlPins::appendPinGroup>},
};

const ChildRule<XmlPinGroup> kPinGroupRules[] = {
    {QLatin1String("pin"), &appendChild<XmlPinGroup, &KIVXmlParser::parsePin, &XmlPinGroup::appendPin>},
};

const ChildRule<XmlPinMap> kPinMapRules[] = {
    {QLatin1String("pin_mapping"),
        &appendChild<XmlPinMap, &KIVXmlParser::parsePinMapping, &XmlPinMap::appendPinMapping>},
};

} // namespace

XmlPins* KIVXmlParser::parsePins(QXmlStreamReader* reader)
{
    auto* pins = new XmlPins(QStringLiteral("TQFP"));
    const QXmlStreamAttributes attributes = reader->attributes();
    if (attributes.hasAttribute(QLatin1String("packaging")))
        pins->setPackaging(attrText(attributes, QLatin1String("packaging")));
    return parseElement(reader, pins, kPinsInfo, kPinsRules);
}

XmlPinGroup* KIVXmlParser::parsePinGroup(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* group
        = new XmlPinGroup(attrUInt(attributes, QLatin1String("id")), attrText(attributes, QLatin1String("name")),
            attrText(attributes, QLatin1String("description")), QString(), QString());
    if (attributes.hasAttribute(QLatin1String("states")))
        group->setStates(attrText(attributes, QLatin1String("states")));
    // Deliberately kept: "desc_states" goes to the states too and the desc states stay empty.
    if (attributes.hasAttribute(QLatin1String("desc_states")))
        group->setStates(attrText(attributes, QLatin1String("desc_states")));
    return parseElement(reader, group, kPinGroupInfo, kPinGroupRules);
}

XmlPin* KIVXmlParser::parsePin(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* pin = new XmlPin(attrUInt(attributes, QLatin1String("id")), attrText(attributes, QLatin1String("type")),
        attrText(attributes, QLatin1String("name")), attrText(attributes, QLatin1String("desc_short")),
        attrText(attributes, QLatin1String("desc_long")), QStringLiteral("low"), QStringLiteral("high"),
        QStringLiteral("floating"), QStringLiteral("floating"));
    if (attributes.hasAttribute(QLatin1String("desc_low")))
        pin->setDescriptionLow(attrText(attributes, QLatin1String("desc_low")));
    if (attributes.hasAttribute(QLatin1String("desc_high")))
        pin->setDescriptionHigh(attrText(attributes, QLatin1String("desc_high")));
    if (attributes.hasAttribute(QLatin1String("desc_floating")))
        pin->setDescriptionFloating(attrText(attributes, QLatin1String("desc_floating")));
    if (attributes.hasAttribute(QLatin1String("default_state")))
        pin->setDefaultState(attrText(attributes, QLatin1String("default_state")));
    return parseElement(reader, pin, kPinInfo);
}

XmlPinMap* KIVXmlParser::parsePinMap(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlPinMap(), kPinMapInfo, kPinMapRules);
}

XmlPinMapping* KIVXmlParser::parsePinMapping(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* mapping = new XmlPinMapping(
        attrUInt(attributes, QLatin1String("pin_ic")), attrUInt(attributes, QLatin1String("pin_board")));
    return parseElement(reader, mapping, kPinMappingInfo);
}
