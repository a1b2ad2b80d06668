// Parse functions of the CANopen objects and their entries.

#include "ic/XmlValueRegister.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/parse/ProductParse_p.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueUnsigned.h"
#include "values/XmlValueVersion.h"

#include <QDebug>

using namespace KivParse;

namespace {

const char kObjectSignature[] = "static XmlCANopenObject* KIVXmlParser::parseCANopenObject(QXmlStreamReader*)";

const ElementInfo kObjectInfo {QLatin1String("canopen_object"), OtherChild::Report, kObjectSignature};
const ElementInfo kEntryInfo {QLatin1String("canopen_entry"), OtherChild::Report,
    "static XmlCANopenEntry* KIVXmlParser::parseCANopenEntry(QXmlStreamReader*)"};

const ChildRule<XmlCANopenObject> kObjectRules[] = {
    {QLatin1String("desc"), &storeDescription<XmlCANopenObject>},
    {QLatin1String("canopen_entry"),
        &appendChild<XmlCANopenObject, &KIVXmlParser::parseCANopenEntry, &XmlCANopenObject::appendCANopenEntry>},
};

// An entry carries no "desc"; it accepts the read-out kinds (date, time, version, text) that parameters do not.
const ChildRule<XmlCANopenEntry> kEntryRules[] = {
    {QLatin1String("value_unsigned"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueUnsigned>},
    {QLatin1String("value_signed"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueSigned>},
    {QLatin1String("value_bool"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueBool>},
    {QLatin1String("value_choice"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueChoice>},
    {QLatin1String("value_date"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueDate>},
    {QLatin1String("value_time"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueTime>},
    {QLatin1String("value_version"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueVersion>},
    {QLatin1String("value_ascii"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueASCII>},
    {QLatin1String("value_register"), &storeValue<XmlCANopenEntry, &KIVXmlParser::parseValueRegister>},
};

} // namespace

XmlCANopenObject* KIVXmlParser::parseCANopenObject(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* object = new XmlCANopenObject(attrUIntAuto(attributes, QLatin1String("index")),
        attrText(attributes, QLatin1String("name")), attrText(attributes, QLatin1String("object_type")),
        attrText(attributes, QLatin1String("data_type")), attrText(attributes, QLatin1String("segment")));
    object = parseElement(reader, object, kObjectInfo, kObjectRules);
    // Every object that parses completely is dumped to the debug log at its end tag.
    if (object)
        qDebug() << kObjectSignature << object->toString(QString());
    return object;
}

XmlCANopenEntry* KIVXmlParser::parseCANopenEntry(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* entry = new XmlCANopenEntry(attrUInt(attributes, QLatin1String("subindex")),
        attrText(attributes, QLatin1String("name")),
        attributes.value(QLatin1String("pdo_mapped")) == QLatin1String("true"));
    return parseElement(reader, entry, kEntryInfo, kEntryRules);
}
