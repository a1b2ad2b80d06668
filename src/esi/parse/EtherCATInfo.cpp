// Parse functions of an ESI file down to its devices' profiles: the root, vendor, groups and devices.

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlGroup.h"
#include "esi/ESIXmlParser.h"
#include "esi/ESIXmlProfile.h"
#include "esi/ESIXmlVendor.h"
#include "esi/XmlEtherCATInfo.h"
#include "esi/parse/EsiParse_p.h"
#include "xml/RootReader_p.h"

#include <QDebug>
#include <QFile>

using namespace EsiParse;

namespace EsiParse {

bool isEnglishName(const QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    return !attributes.hasAttribute(QLatin1String("LcId"))
        || attributes.value(QLatin1String("LcId")) == QLatin1String("1033");
}

} // namespace EsiParse

namespace {

const char kInfoName[] = "ESIXmlParser::parseInfo()";

const RootRule<XmlEtherCATInfo> kRootRules[] = {
    {QLatin1String("EtherCATInfo"), &ESIXmlParser::parseEtherCATInfo},
};

const RootInfo kRootInfo {kInfoName, OtherRootToken::Report};

// A later root replaces the earlier result; nothing outside the parser can reach it.
void releaseInfo(XmlEtherCATInfo* info)
{
    delete info;
}

using Info = XmlEtherCATInfo;
using Device = ESIXmlDevice;

const ElementInfo kEtherCATInfoInfo {
    QLatin1String("EtherCATInfo"), OtherChild::Report, "ESIXmlParser::parseEtherCATInfo()"};
const ChildRule<Info> kEtherCATInfoRules[] = {
    {QLatin1String("Vendor"), &appendChild<Info, &ESIXmlParser::parseVendor, &Info::setVendor>},
    {QLatin1String("Descriptions"), &appendChild<Info, &ESIXmlParser::parseDescriptions, &Info::appendDescriptions>},
};

const ElementInfo kVendorInfo {QLatin1String("Vendor"), OtherChild::Ignore};
const ChildRule<ESIXmlVendor> kVendorRules[] = {
    {QLatin1String("Id"), &storeText<ESIXmlVendor, &ESIXmlVendor::setId>},
    {QLatin1String("Name"), &storeText<ESIXmlVendor, &ESIXmlVendor::setName>},
    {QLatin1String("Comment"), &storeText<ESIXmlVendor, &ESIXmlVendor::setComment>},
    {QLatin1String("ImageData16x14"), &storeRead<ESIXmlVendor, &readImage, &ESIXmlVendor::setImageData16x14>},
};

const ElementInfo kDescriptionsInfo {
    QLatin1String("Descriptions"), OtherChild::Report, "ESIXmlParser::parseDescriptions()", "parseDescriptions:"};
// "Groups" and "Devices" are plain containers: their children are met by the same loop.
const ChildRule<ESIXmlDescriptions> kDescriptionsRules[] = {
    {QLatin1String("Groups"), &enterChild<ESIXmlDescriptions>},
    {QLatin1String("Devices"), &enterChild<ESIXmlDescriptions>},
    {QLatin1String("Group"),
        &appendChild<ESIXmlDescriptions, &ESIXmlParser::parseGroup, &ESIXmlDescriptions::addGroup>},
    {QLatin1String("Device"),
        &appendChild<ESIXmlDescriptions, &ESIXmlParser::parseDevice, &ESIXmlDescriptions::addDevice>},
};

const ElementInfo kGroupInfo {QLatin1String("Group"), OtherChild::Ignore};
const ChildRule<ESIXmlGroup> kGroupRules[] = {
    {QLatin1String("Type"), &storeText<ESIXmlGroup, &ESIXmlGroup::setType>},
    {QLatin1String("Name"), &storeEnglishName<ESIXmlGroup>},
    {QLatin1String("ImageData16x14"), &storeRead<ESIXmlGroup, &readImage, &ESIXmlGroup::setImageData16x14>},
};

/// "Type": its attributes, then its text.
void storeDeviceType(QXmlStreamReader* reader, Device* device)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    device->setProductCode(attrText(attributes, QLatin1String("ProductCode")));
    device->setRevisionNo(attrText(attributes, QLatin1String("RevisionNo")));
    device->setType(readText(reader));
}

// Deliberately kept: after reporting an unknown child one more token is read and dropped, so a listed
// child written directly after an unknown start tag (no whitespace between) goes unseen.
const ElementInfo kDeviceInfo {
    QLatin1String("Device"), OtherChild::Report, "ESIXmlParser::parseDevice()", "parseDevice:", nullptr, true};
const ChildRule<Device> kDeviceRules[] = {
    {QLatin1String("Type"), &storeDeviceType},
    {QLatin1String("HideType"), &skipChild<Device>},
    {QLatin1String("Name"), &storeEnglishName<Device>},
    {QLatin1String("URL"), &skipChild<Device>},
    {QLatin1String("Info"), &skipChild<Device>},
    {QLatin1String("GroupType"), &storeText<Device, &Device::setGroupType>},
    {QLatin1String("Profile"), &appendChild<Device, &ESIXmlParser::parseProfile, &Device::addProfile>},
    {QLatin1String("Fmmu"), &skipChild<Device>},
    {QLatin1String("Sm"), &skipChild<Device>},
    {QLatin1String("RxPdo"), &skipChild<Device>},
    {QLatin1String("TxPdo"), &skipChild<Device>},
    {QLatin1String("Mailbox"), &skipChild<Device>},
    {QLatin1String("Dc"), &skipChild<Device>},
    {QLatin1String("Eeprom"), &skipChild<Device>},
    {QLatin1String("ImageData16x14"), &skipChild<Device>},
};

const ElementInfo kProfileInfo {QLatin1String("Profile"), OtherChild::Ignore};
const ChildRule<ESIXmlProfile> kProfileRules[] = {
    {QLatin1String("ProfileNo"), &storeText<ESIXmlProfile, &ESIXmlProfile::setProfileNo>},
    {QLatin1String("Dictionary"),
        &appendChild<ESIXmlProfile, &ESIXmlParser::parseDictionary, &ESIXmlProfile::setDictionary>},
};

} // namespace

XmlEtherCATInfo* ESIXmlParser::parseInfo(QFile* file)
{
    qDebug() << kInfoName << file;
    return readRoot(file, kRootInfo, kRootRules, &releaseInfo);
}

XmlEtherCATInfo* ESIXmlParser::parseEtherCATInfo(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlEtherCATInfo, kEtherCATInfoInfo, kEtherCATInfoRules);
}

ESIXmlVendor* ESIXmlParser::parseVendor(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlVendor, kVendorInfo, kVendorRules);
}

ESIXmlDescriptions* ESIXmlParser::parseDescriptions(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlDescriptions, kDescriptionsInfo, kDescriptionsRules);
}

ESIXmlGroup* ESIXmlParser::parseGroup(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlGroup, kGroupInfo, kGroupRules);
}

ESIXmlDevice* ESIXmlParser::parseDevice(QXmlStreamReader* reader)
{
    auto* device = new ESIXmlDevice;
    device->setDevicePhysics(attrText(reader->attributes(), QLatin1String("Physics")));
    return parseElement(reader, device, kDeviceInfo, kDeviceRules);
}

ESIXmlProfile* ESIXmlParser::parseProfile(QXmlStreamReader* reader)
{
    return parseElement(reader, new ESIXmlProfile, kProfileInfo, kProfileRules);
}

void ESIXmlParser::skipUntilEndTag(QXmlStreamReader* reader, QString name)
{
    KivXml::skipUntilEndTag(reader, name);
}
