// Parse functions of an IC's register map: the register set, its groups and registers, their variants,
// fields and impacts.

#include "ic/XmlGroup.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/parse/ProductParse_p.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueUnsigned.h"
#include "values/XmlValueVersion.h"

using namespace KivParse;

namespace {

using Field = XmlValueRegisterField;
using Variant = XmlRegisterVariant;

const ElementInfo kRegisterSetInfo {QLatin1String("register_set"), OtherChild::Report,
    "static XmlRegisterSet* KIVXmlParser::parseRegisterSet(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kGroupInfo {
    QLatin1String("group"), OtherChild::Report, "static XmlGroup* KIVXmlParser::parseGroup(QXmlStreamReader*)"};
const ElementInfo kRegisterInfo {QLatin1String("value_register"), OtherChild::Report,
    "static XmlValueRegister* KIVXmlParser::parseValueRegister(QXmlStreamReader*)"};
const ElementInfo kVariantInfo {QLatin1String("register_variant"), OtherChild::Report,
    "static XmlRegisterVariant* KIVXmlParser::parseRegisterVariant(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kFieldInfo {QLatin1String("value_register_field"), OtherChild::Report,
    "static XmlValueRegisterField* KIVXmlParser::parseValueRegisterField(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kImpactsInfo {QLatin1String("register_variant_impacts"), OtherChild::Report,
    "static XmlRegisterVariantImpacts* KIVXmlParser::parseRegisterVariantImpacts(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kImpactedByInfo {QLatin1String("register_variant_impacted_by"), OtherChild::Report,
    "static XmlRegisterVariantImpactedBy* KIVXmlParser::parseRegisterVariantImpactedBy(QXmlStreamReader*)",
    kCouldNotParse};

const ChildRule<XmlRegisterSet> kRegisterSetRules[] = {
    {QLatin1String("group"), &appendChild<XmlRegisterSet, &KIVXmlParser::parseGroup, &XmlRegisterSet::appendGroup>},
    {QLatin1String("value_register"),
        &appendChild<XmlRegisterSet, &KIVXmlParser::parseValueRegister, &XmlRegisterSet::appendValueRegister>},
};

const ChildRule<XmlValueRegister> kRegisterRules[] = {
    {QLatin1String("register_variant"),
        &appendChild<XmlValueRegister, &KIVXmlParser::parseRegisterVariant, &XmlValueRegister::appendVariant>},
};

const ChildRule<Variant> kVariantRules[] = {
    {QLatin1String("desc"), &storeDescription<Variant>},
    {QLatin1String("value_register_field"),
        &appendChild<Variant, &KIVXmlParser::parseValueRegisterField, &Variant::appendField>},
    {QLatin1String("register_variant_impacts"),
        &appendChild<Variant, &KIVXmlParser::parseRegisterVariantImpacts, &Variant::appendImpacts>},
    {QLatin1String("register_variant_impacted_by"),
        &appendChild<Variant, &KIVXmlParser::parseRegisterVariantImpactedBy, &Variant::appendImpactedBy>},
};

// The field does not own its alerts; alerts read from a file are made QObject children of the field so
// that they go with it.
void appendAlert(QXmlStreamReader* reader, Field* field)
{
    XmlValueAlert* alert = KIVXmlParser::parseValueAlert(reader);
    if (alert)
        alert->setParent(field);
    field->addAlert(alert);
}

const ChildRule<Field> kFieldRules[] = {
    {QLatin1String("value_signed"), &storeValue<Field, &KIVXmlParser::parseValueSigned>},
    {QLatin1String("value_unsigned"), &storeValue<Field, &KIVXmlParser::parseValueUnsigned>},
    {QLatin1String("value_bool"), &storeValue<Field, &KIVXmlParser::parseValueBool>},
    {QLatin1String("value_choice"), &storeValue<Field, &KIVXmlParser::parseValueChoice>},
    {QLatin1String("value_date"), &storeValue<Field, &KIVXmlParser::parseValueDate>},
    {QLatin1String("value_time"), &storeValue<Field, &KIVXmlParser::parseValueTime>},
    {QLatin1String("value_version"), &storeValue<Field, &KIVXmlParser::parseValueVersion>},
    {QLatin1String("value_ascii"), &storeValue<Field, &KIVXmlParser::parseValueASCII>},
    {QLatin1String("value_alert"), &appendAlert},
};

} // namespace

XmlRegisterSet* KIVXmlParser::parseRegisterSet(QXmlStreamReader* reader)
{
    auto* set = new XmlRegisterSet();
    const QXmlStreamAttributes attributes = reader->attributes();
    set->setFor(attrText(attributes, QLatin1String("for")));
    set->setName(attrText(attributes, QLatin1String("name")));
    return parseElement(reader, set, kRegisterSetInfo, kRegisterSetRules);
}

XmlGroup* KIVXmlParser::parseGroup(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* group
        = new XmlGroup(attrText(attributes, QLatin1String("name")), attrUIntAuto(attributes, QLatin1String("id")));
    return parseElement(reader, group, kGroupInfo);
}

XmlValueRegister* KIVXmlParser::parseValueRegister(QXmlStreamReader* reader)
{
    // Created after its attributes are read: the constructor takes them.
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* reg = new XmlValueRegister(attrUIntAuto(attributes, QLatin1String("address")),
        attrText(attributes, QLatin1String("name")), attrInt(attributes, QLatin1String("size")),
        attrUIntAuto(attributes, QLatin1String("group")));
    return parseElement(reader, reg, kRegisterInfo, kRegisterRules);
}

XmlRegisterVariant* KIVXmlParser::parseRegisterVariant(QXmlStreamReader* reader)
{
    auto* variant = new XmlRegisterVariant(attrText(reader->attributes(), QLatin1String("name")));
    return parseElement(reader, variant, kVariantInfo, kVariantRules);
}

XmlValueRegisterField* KIVXmlParser::parseValueRegisterField(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const QString descShort = attrUnicodeText(attributes, QLatin1String("desc_short"));
    // An absent "desc_long" stays a null string.
    QString descLong;
    if (attributes.hasAttribute(QLatin1String("desc_long")))
        descLong = attrUnicodeText(attributes, QLatin1String("desc_long"));
    auto* field = new XmlValueRegisterField(attrText(attributes, QLatin1String("name")),
        attrInt(attributes, QLatin1String("shift")), attrText(attributes, QLatin1String("mask")), descShort, descLong);
    return parseElement(reader, field, kFieldInfo, kFieldRules);
}

XmlRegisterVariantImpacts* KIVXmlParser::parseRegisterVariantImpacts(QXmlStreamReader* reader)
{
    auto* impacts = new XmlRegisterVariantImpacts(attrUIntAuto(reader->attributes(), QLatin1String("address")));
    return parseElement(reader, impacts, kImpactsInfo);
}

XmlRegisterVariantImpactedBy* KIVXmlParser::parseRegisterVariantImpactedBy(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    // The range ends are read as 32-bit numbers and widened: larger texts read as 0.
    auto* impactedBy = new XmlRegisterVariantImpactedBy(attrUIntAuto(attributes, QLatin1String("address")),
        attrInt(attributes, QLatin1String("shift")), attrText(attributes, QLatin1String("mask")),
        attrUInt(attributes, QLatin1String("range_from")), attrUInt(attributes, QLatin1String("range_to")));
    return parseElement(reader, impactedBy, kImpactedByInfo);
}
