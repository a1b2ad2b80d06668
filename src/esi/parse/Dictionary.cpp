// Parse functions of a profile's object dictionary: data types, objects and their sub-items.

#include "esi/ESIXmlDictionary.h"
#include "esi/ESIXmlDictionaryDataType.h"
#include "esi/ESIXmlDictionaryObject.h"
#include "esi/ESIXmlObjectInfo.h"
#include "esi/ESIXmlParser.h"
#include "esi/ESIXmlSubItem.h"
#include "esi/parse/EsiParse_p.h"
#include "text/Numbers_p.h"

#include <memory>

using namespace EsiParse;

namespace {

using DataType = ESIXmlDictionaryDataType;
using DataTypeItem = ESIXmlDictionaryDataTypeSubItem;
using Object = ESIXmlDictionaryObject;

/// A list child whose members the dictionary takes over; the list itself is freed here.
template<auto Parse, auto Add> void addListChild(QXmlStreamReader* reader, ESIXmlDictionary* dictionary)
{
    const std::unique_ptr<std::remove_pointer_t<decltype(Parse(reader))>> list(Parse(reader));
    if (list)
        (dictionary->*Add)(*list);
}

const ElementInfo kDictionaryInfo {QLatin1String("Dictionary"), OtherChild::Skip};
const ChildRule<ESIXmlDictionary> kDictionaryRules[] = {
    {QLatin1String("DataTypes"),
        &addListChild<&ESIXmlParser::parseDictionaryDataTypes, &ESIXmlDictionary::addDataTypes>},
    {QLatin1String("Objects"), &addListChild<&ESIXmlParser::parseDictionaryObjects, &ESIXmlDictionary::addObjects>},
};

const ElementInfo kDataTypesInfo {QLatin1String("DataTypes"), OtherChild::Ignore};
const ChildRule<QList<DataType*>> kDataTypesRules[] = {
    {QLatin1String("DataType"), &appendToList<DataType, &ESIXmlParser::parseDictionaryDataType>},
};

const ElementInfo kDataTypeInfo {QLatin1String("DataType"), OtherChild::Skip};
const ChildRule<DataType> kDataTypeRules[] = {
    {QLatin1String("Name"), &storeText<DataType, &DataType::setName>},
    {QLatin1String("BitSize"), &storeRead<DataType, &readDecimal, &DataType::setBitSize>},
    {QLatin1String("SubItem"),
        &appendChild<DataType, &ESIXmlParser::parseDictionaryDataTypeSubItem, &DataType::addSubItem>},
};

const ElementInfo kDataTypeItemInfo {QLatin1String("SubItem"), OtherChild::Skip};
const ChildRule<DataTypeItem> kDataTypeItemRules[] = {
    {QLatin1String("SubIdx"), &storeRead<DataTypeItem, &readDecimal, &DataTypeItem::setSubIdx>},
    {QLatin1String("BitSize"), &storeRead<DataTypeItem, &readDecimal, &DataTypeItem::setBitSize>},
    {QLatin1String("BitOffs"), &storeRead<DataTypeItem, &readDecimal, &DataTypeItem::setBitOffs>},
    {QLatin1String("Name"), &storeText<DataTypeItem, &DataTypeItem::setName>},
    {QLatin1String("Type"), &storeText<DataTypeItem, &DataTypeItem::setType>},
    {QLatin1String("Flags"), &storeText<DataTypeItem, &DataTypeItem::setFlags>},
};

const ElementInfo kObjectsInfo {QLatin1String("Objects"), OtherChild::Ignore};
const ChildRule<QList<Object*>> kObjectsRules[] = {
    {QLatin1String("Object"), &appendToList<Object, &ESIXmlParser::parseDictionaryObject>},
};

// "Flags" falls under the skip of every other child. An index such as #x1000 is kept as text.
const ElementInfo kObjectInfo {QLatin1String("Object"), OtherChild::Skip};
const ChildRule<Object> kObjectRules[] = {
    {QLatin1String("Index"), &storeText<Object, &Object::setIndex>},
    {QLatin1String("Name"), &storeText<Object, &Object::setName>},
    {QLatin1String("Type"), &storeText<Object, &Object::setType>},
    {QLatin1String("BitSize"), &storeText<Object, &Object::setBitSize>},
    {QLatin1String("Info"), &appendChild<Object, &ESIXmlParser::parseObjectInfo, &Object::setInfo>},
};

// Read as 64 bits, kept as 32: wider values keep their low 32 bits.
void storeDefaultValue(QXmlStreamReader* reader, ESIXmlObjectInfo* info)
{
    const quint64 value = KivText::hexAfterPrefix64(readText(reader));
    info->setDefaultValue(static_cast<int>(static_cast<quint32>(value)));
}

const ElementInfo kObjectInfoInfo {QLatin1String("Info"), OtherChild::Ignore};
const ChildRule<ESIXmlObjectInfo> kObjectInfoRules[] = {
    {QLatin1String("DefaultValue"), &storeDefaultValue},
    {QLatin1String("SubItem"),
        &appendChild<ESIXmlObjectInfo, &ESIXmlParser::parseObjectInfoSubItem, &ESIXmlObjectInfo::addSubItem>},
};

const ElementInfo kObjectItemInfo {QLatin1String("SubItem"), OtherChild::Ignore};
const ChildRule<ESIXmlSubItem> kObjectItemRules[] = {
    {QLatin1String("Name"), &storeText<ESIXmlSubItem, &ESIXmlSubItem::setName>},
    {QLatin1String("Info"), &skipChild<ESIXmlSubItem>},
};

} // namespace

ESIXmlDictionary* ESIXmlParser::parseDictionary(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlDictionary, kDictionaryInfo, kDictionaryRules);
}

QList<ESIXmlDictionaryDataType*>* ESIXmlParser::parseDictionaryDataTypes(QXmlStreamReader* reader)
{
    return parseElement(reader, new QList<DataType*>, kDataTypesInfo, kDataTypesRules);
}

ESIXmlDictionaryDataType* ESIXmlParser::parseDictionaryDataType(QXmlStreamReader* reader)
{
    return parseElement(reader, new DataType, kDataTypeInfo, kDataTypeRules);
}

ESIXmlDictionaryDataTypeSubItem* ESIXmlParser::parseDictionaryDataTypeSubItem(QXmlStreamReader* reader)
{
    return parseElement(reader, new DataTypeItem, kDataTypeItemInfo, kDataTypeItemRules);
}

QList<ESIXmlDictionaryObject*>* ESIXmlParser::parseDictionaryObjects(QXmlStreamReader* reader)
{
    return parseElement(reader, new QList<Object*>, kObjectsInfo, kObjectsRules);
}

ESIXmlDictionaryObject* ESIXmlParser::parseDictionaryObject(QXmlStreamReader* reader)
{
    return parseElement(reader, new Object, kObjectInfo, kObjectRules);
}

ESIXmlObjectInfo* ESIXmlParser::parseObjectInfo(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlObjectInfo, kObjectInfoInfo, kObjectInfoRules);
}

ESIXmlSubItem* ESIXmlParser::parseObjectInfoSubItem(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlSubItem, kObjectItemInfo, kObjectItemRules);
}
