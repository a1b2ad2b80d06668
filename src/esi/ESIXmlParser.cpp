#include "esi/ESIXmlParser.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlDictionary.h"
#include "esi/ESIXmlDictionaryDataType.h"
#include "esi/ESIXmlDictionaryObject.h"
#include "esi/ESIXmlGroup.h"
#include "esi/ESIXmlObjectInfo.h"
#include "esi/ESIXmlParser_p.h"
#include "esi/ESIXmlProfile.h"
#include "esi/ESIXmlSubItem.h"
#include "esi/ESIXmlText_p.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"

#include <QDebug>
#include <QFile>
#include <QXmlStreamReader>

#include <memory>

using namespace EsiParse;

namespace EsiParse {

void handleOtherChild(QXmlStreamReader* reader, const ElementInfo& info)
{
    switch (info.other) {
    case OtherChild::Ignore:
        break;
    case OtherChild::Skip:
        skipElement(reader);
        break;
    case OtherChild::Report:
        if (info.note)
            qDebug() << info.shortName << info.note << reader->name();
        else
            qDebug() << info.shortName << reader->name();
        if (info.dropTokenAfterReport)
            reader->readNext();
        break;
    }
}

QString readText(QXmlStreamReader* reader)
{
    reader->readNext();
    return reader->text().toString();
}

bool isEnglishName(const QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    return !attributes.hasAttribute(QLatin1String("LcId"))
        || attributes.value(QLatin1String("LcId")) == QLatin1String("1033");
}

void skipElement(QXmlStreamReader* reader)
{
    ESIXmlParser::skipUntilEndTag(reader, reader->name().toString());
}

} // namespace EsiParse

namespace {

int decimalText(QXmlStreamReader* reader)
{
    return readText(reader).toInt(nullptr, 10);
}

// The icons are stored as the hexadecimal text the file holds, not decoded.
QByteArray imageText(QXmlStreamReader* reader)
{
    return readText(reader).toLocal8Bit();
}

} // namespace

XmlEtherCATInfo* ESIXmlParser::parseInfo(QFile* file)
{
    qDebug() << "ESIXmlParser::parseInfo()" << file;
    QXmlStreamReader reader(file);
    XmlEtherCATInfo* result = nullptr;
    while (!reader.atEnd() && !reader.hasError()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::Invalid:
            return result;
        case QXmlStreamReader::StartDocument:
            break;
        case QXmlStreamReader::StartElement:
            if (reader.name() == QLatin1String("EtherCATInfo")) {
                // A later root replaces the earlier result; nothing outside the parser can reach it.
                XmlEtherCATInfo* info = parseEtherCATInfo(&reader);
                delete result;
                result = info;
            } else {
                // Not skipped: its descendants are tested as root candidates in turn.
                qDebug() << "ESIXmlParser::parseInfo()"
                         << "Unknown root node type!" << reader.name();
            }
            break;
        case QXmlStreamReader::EndElement:
            qDebug() << "ESIXmlParser::parseInfo()"
                     << "is EndElement: " << reader.name();
            break;
        case QXmlStreamReader::Characters:
            qDebug() << "ESIXmlParser::parseInfo()"
                     << "is Characters: " << reader.text();
            break;
        default:
            break;
        }
    }
    return result;
}

XmlEtherCATInfo* ESIXmlParser::parseEtherCATInfo(QXmlStreamReader* reader)
{
    static const ElementInfo info {
        QLatin1String("EtherCATInfo"), OtherChild::Report, "ESIXmlParser::parseEtherCATInfo()"};
    static const ChildRule<XmlEtherCATInfo> rules[] = {
        {QLatin1String("Vendor"), [](QXmlStreamReader* r, XmlEtherCATInfo* o) { o->setVendor(parseVendor(r)); }},
        {QLatin1String("Descriptions"),
            [](QXmlStreamReader* r, XmlEtherCATInfo* o) { o->appendDescriptions(parseDescriptions(r)); }},
    };
    return parseElement(reader, new XmlEtherCATInfo, info, rules);
}

ESIXmlVendor* ESIXmlParser::parseVendor(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("Vendor")};
    static const ChildRule<ESIXmlVendor> rules[] = {
        {QLatin1String("Id"), [](QXmlStreamReader* r, ESIXmlVendor* o) { o->setId(readText(r)); }},
        {QLatin1String("Name"), [](QXmlStreamReader* r, ESIXmlVendor* o) { o->setName(readText(r)); }},
        {QLatin1String("Comment"), [](QXmlStreamReader* r, ESIXmlVendor* o) { o->setComment(readText(r)); }},
        {QLatin1String("ImageData16x14"),
            [](QXmlStreamReader* r, ESIXmlVendor* o) { o->setImageData16x14(imageText(r)); }},
    };
    return parseElement(reader, new ESIXmlVendor, info, rules);
}

ESIXmlDescriptions* ESIXmlParser::parseDescriptions(QXmlStreamReader* reader)
{
    static const ElementInfo info {
        QLatin1String("Descriptions"), OtherChild::Report, "ESIXmlParser::parseDescriptions()", "parseDescriptions:"};
    // "Groups" and "Devices" are plain containers: their children are met by the same loop.
    static const ChildRule<ESIXmlDescriptions> rules[] = {
        {QLatin1String("Groups"), [](QXmlStreamReader*, ESIXmlDescriptions*) {}},
        {QLatin1String("Devices"), [](QXmlStreamReader*, ESIXmlDescriptions*) {}},
        {QLatin1String("Group"), [](QXmlStreamReader* r, ESIXmlDescriptions* o) { o->addGroup(parseGroup(r)); }},
        {QLatin1String("Device"), [](QXmlStreamReader* r, ESIXmlDescriptions* o) { o->addDevice(parseDevice(r)); }},
    };
    return parseElement(reader, new ESIXmlDescriptions, info, rules);
}

ESIXmlGroup* ESIXmlParser::parseGroup(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("Group")};
    static const ChildRule<ESIXmlGroup> rules[] = {
        {QLatin1String("Type"), [](QXmlStreamReader* r, ESIXmlGroup* o) { o->setType(readText(r)); }},
        {QLatin1String("Name"),
            [](QXmlStreamReader* r, ESIXmlGroup* o) {
                if (isEnglishName(r))
                    o->setName(readText(r));
            }},
        {QLatin1String("ImageData16x14"),
            [](QXmlStreamReader* r, ESIXmlGroup* o) { o->setImageData16x14(imageText(r)); }},
    };
    return parseElement(reader, new ESIXmlGroup, info, rules);
}

ESIXmlDevice* ESIXmlParser::parseDevice(QXmlStreamReader* reader)
{
    // Deliberately kept: after reporting an unknown child one more token is read and dropped, so a listed
    // child written directly after an unknown start tag (no whitespace between) goes unseen.
    static const ElementInfo info {
        QLatin1String("Device"), OtherChild::Report, "ESIXmlParser::parseDevice()", "parseDevice:", true};
    static const ChildRule<ESIXmlDevice> rules[] = {
        {QLatin1String("Type"),
            [](QXmlStreamReader* r, ESIXmlDevice* o) {
                const QXmlStreamAttributes attributes = r->attributes();
                o->setProductCode(attributes.value(QLatin1String("ProductCode")).toString());
                o->setRevisionNo(attributes.value(QLatin1String("RevisionNo")).toString());
                o->setType(readText(r));
            }},
        {QLatin1String("HideType"), skipChild<ESIXmlDevice>},
        {QLatin1String("Name"),
            [](QXmlStreamReader* r, ESIXmlDevice* o) {
                // A name in another language is passed over; the loop meets its text and end tag.
                if (isEnglishName(r))
                    o->setName(readText(r));
            }},
        {QLatin1String("URL"), skipChild<ESIXmlDevice>},
        {QLatin1String("Info"), skipChild<ESIXmlDevice>},
        {QLatin1String("GroupType"), [](QXmlStreamReader* r, ESIXmlDevice* o) { o->setGroupType(readText(r)); }},
        {QLatin1String("Profile"), [](QXmlStreamReader* r, ESIXmlDevice* o) { o->addProfile(parseProfile(r)); }},
        {QLatin1String("Fmmu"), skipChild<ESIXmlDevice>},
        {QLatin1String("Sm"), skipChild<ESIXmlDevice>},
        {QLatin1String("RxPdo"), skipChild<ESIXmlDevice>},
        {QLatin1String("TxPdo"), skipChild<ESIXmlDevice>},
        {QLatin1String("Mailbox"), skipChild<ESIXmlDevice>},
        {QLatin1String("Dc"), skipChild<ESIXmlDevice>},
        {QLatin1String("Eeprom"), skipChild<ESIXmlDevice>},
        {QLatin1String("ImageData16x14"), skipChild<ESIXmlDevice>},
    };
    ESIXmlDevice* device = new ESIXmlDevice;
    device->setDevicePhysics(reader->attributes().value(QLatin1String("Physics")).toString());
    return parseElement(reader, device, info, rules);
}

ESIXmlProfile* ESIXmlParser::parseProfile(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("Profile")};
    static const ChildRule<ESIXmlProfile> rules[] = {
        {QLatin1String("ProfileNo"), [](QXmlStreamReader* r, ESIXmlProfile* o) { o->setProfileNo(readText(r)); }},
        {QLatin1String("Dictionary"),
            [](QXmlStreamReader* r, ESIXmlProfile* o) { o->setDictionary(parseDictionary(r)); }},
    };
    return parseElement(reader, new ESIXmlProfile, info, rules);
}

ESIXmlDictionary* ESIXmlParser::parseDictionary(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("Dictionary"), OtherChild::Skip};
    static const ChildRule<ESIXmlDictionary> rules[] = {
        {QLatin1String("DataTypes"),
            [](QXmlStreamReader* r, ESIXmlDictionary* o) {
                const std::unique_ptr<QList<ESIXmlDictionaryDataType*>> dataTypes(parseDictionaryDataTypes(r));
                if (dataTypes)
                    o->addDataTypes(*dataTypes);
            }},
        {QLatin1String("Objects"),
            [](QXmlStreamReader* r, ESIXmlDictionary* o) {
                const std::unique_ptr<QList<ESIXmlDictionaryObject*>> objects(parseDictionaryObjects(r));
                if (objects)
                    o->addObjects(*objects);
            }},
    };
    return parseElement(reader, new ESIXmlDictionary, info, rules);
}

QList<ESIXmlDictionaryDataType*>* ESIXmlParser::parseDictionaryDataTypes(QXmlStreamReader* reader)
{
    using List = QList<ESIXmlDictionaryDataType*>;
    static const ElementInfo info {QLatin1String("DataTypes")};
    static const ChildRule<List> rules[] = {
        {QLatin1String("DataType"), [](QXmlStreamReader* r, List* o) { o->append(parseDictionaryDataType(r)); }},
    };
    return parseElement(reader, new List, info, rules);
}

ESIXmlDictionaryDataType* ESIXmlParser::parseDictionaryDataType(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("DataType"), OtherChild::Skip};
    static const ChildRule<ESIXmlDictionaryDataType> rules[] = {
        {QLatin1String("Name"), [](QXmlStreamReader* r, ESIXmlDictionaryDataType* o) { o->setName(readText(r)); }},
        {QLatin1String("BitSize"),
            [](QXmlStreamReader* r, ESIXmlDictionaryDataType* o) { o->setBitSize(decimalText(r)); }},
        {QLatin1String("SubItem"),
            [](QXmlStreamReader* r, ESIXmlDictionaryDataType* o) { o->addSubItem(parseDictionaryDataTypeSubItem(r)); }},
    };
    return parseElement(reader, new ESIXmlDictionaryDataType, info, rules);
}

ESIXmlDictionaryDataTypeSubItem* ESIXmlParser::parseDictionaryDataTypeSubItem(QXmlStreamReader* reader)
{
    using Item = ESIXmlDictionaryDataTypeSubItem;
    static const ElementInfo info {QLatin1String("SubItem"), OtherChild::Skip};
    static const ChildRule<Item> rules[] = {
        {QLatin1String("SubIdx"), [](QXmlStreamReader* r, Item* o) { o->setSubIdx(decimalText(r)); }},
        {QLatin1String("BitSize"), [](QXmlStreamReader* r, Item* o) { o->setBitSize(decimalText(r)); }},
        {QLatin1String("BitOffs"), [](QXmlStreamReader* r, Item* o) { o->setBitOffs(decimalText(r)); }},
        {QLatin1String("Name"), [](QXmlStreamReader* r, Item* o) { o->setName(readText(r)); }},
        {QLatin1String("Type"), [](QXmlStreamReader* r, Item* o) { o->setType(readText(r)); }},
        {QLatin1String("Flags"), [](QXmlStreamReader* r, Item* o) { o->setFlags(readText(r)); }},
    };
    return parseElement(reader, new Item, info, rules);
}

QList<ESIXmlDictionaryObject*>* ESIXmlParser::parseDictionaryObjects(QXmlStreamReader* reader)
{
    using List = QList<ESIXmlDictionaryObject*>;
    static const ElementInfo info {QLatin1String("Objects")};
    static const ChildRule<List> rules[] = {
        {QLatin1String("Object"), [](QXmlStreamReader* r, List* o) { o->append(parseDictionaryObject(r)); }},
    };
    return parseElement(reader, new List, info, rules);
}

ESIXmlDictionaryObject* ESIXmlParser::parseDictionaryObject(QXmlStreamReader* reader)
{
    using Object = ESIXmlDictionaryObject;
    // "Flags" falls under the skip of every other child.
    static const ElementInfo info {QLatin1String("Object"), OtherChild::Skip};
    static const ChildRule<Object> rules[] = {
        {QLatin1String("Index"), [](QXmlStreamReader* r, Object* o) { o->setIndex(readText(r)); }},
        {QLatin1String("Name"), [](QXmlStreamReader* r, Object* o) { o->setName(readText(r)); }},
        {QLatin1String("Type"), [](QXmlStreamReader* r, Object* o) { o->setType(readText(r)); }},
        {QLatin1String("BitSize"), [](QXmlStreamReader* r, Object* o) { o->setBitSize(readText(r)); }},
        {QLatin1String("Info"), [](QXmlStreamReader* r, Object* o) { o->setInfo(parseObjectInfo(r)); }},
    };
    return parseElement(reader, new Object, info, rules);
}

ESIXmlObjectInfo* ESIXmlParser::parseObjectInfo(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("Info")};
    static const ChildRule<ESIXmlObjectInfo> rules[] = {
        {QLatin1String("DefaultValue"),
            [](QXmlStreamReader* r, ESIXmlObjectInfo* o) {
                // Read as 64 bits, kept as 32: wider values keep their low 32 bits.
                const quint64 value = EsiText::hexAfterPrefix64(readText(r));
                o->setDefaultValue(static_cast<int>(static_cast<quint32>(value)));
            }},
        {QLatin1String("SubItem"),
            [](QXmlStreamReader* r, ESIXmlObjectInfo* o) { o->addSubItem(parseObjectInfoSubItem(r)); }},
    };
    return parseElement(reader, new ESIXmlObjectInfo, info, rules);
}

ESIXmlSubItem* ESIXmlParser::parseObjectInfoSubItem(QXmlStreamReader* reader)
{
    static const ElementInfo info {QLatin1String("SubItem")};
    static const ChildRule<ESIXmlSubItem> rules[] = {
        {QLatin1String("Name"), [](QXmlStreamReader* r, ESIXmlSubItem* o) { o->setName(readText(r)); }},
        {QLatin1String("Info"), skipChild<ESIXmlSubItem>},
    };
    return parseElement(reader, new ESIXmlSubItem, info, rules);
}

void ESIXmlParser::skipUntilEndTag(QXmlStreamReader* reader, QString name)
{
    while (!reader->atEnd() && reader->tokenType() != QXmlStreamReader::EndDocument) {
        if (reader->readNext() == QXmlStreamReader::EndElement && reader->name() == name)
            return;
    }
}
