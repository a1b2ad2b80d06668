// Parse functions of the drive configurations.

#include "product/XmlDriveConfiguration.h"
#include "product/parse/ProductParse_p.h"

using namespace KivParse;

namespace {

const ElementInfo kConfigInfo {QLatin1String("drive_configuration"), OtherChild::Report,
    "static XmlDriveConfiguration* KIVXmlParser::parseDriveConfig(QXmlStreamReader*)"};
const ElementInfo kSettingsInfo {QLatin1String("drive_ap_settings"), OtherChild::Report,
    "static XmlDriveApSettings* KIVXmlParser::parseDriveApSettings(QXmlStreamReader*)"};
const ElementInfo kSettingInfo {QLatin1String("drive_ap_setting"), OtherChild::Report,
    "static XmlDriveApSetting* KIVXmlParser::parseDriveApSetting(QXmlStreamReader*)"};

const ChildRule<XmlDriveConfiguration> kConfigRules[] = {
    {QLatin1String("drive_ap_settings"),
        &appendChild<XmlDriveConfiguration, &KIVXmlParser::parseDriveApSettings,
            &XmlDriveConfiguration::appendDriveApSettings>},
};

const ChildRule<XmlDriveApSettings> kSettingsRules[] = {
    {QLatin1String("drive_ap_setting"),
        &appendChild<XmlDriveApSettings, &KIVXmlParser::parseDriveApSetting,
            &XmlDriveApSettings::appendDriveApSetting>},
};

} // namespace

XmlDriveConfiguration* KIVXmlParser::parseDriveConfig(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* configuration
        = new XmlDriveConfiguration(static_cast<unsigned char>(attrUIntAuto(attributes, QLatin1String("id"))),
            attrText(attributes, QLatin1String("name")));
    return parseElement(reader, configuration, kConfigInfo, kConfigRules);
}

XmlDriveApSettings* KIVXmlParser::parseDriveApSettings(QXmlStreamReader* reader)
{
    auto* settings = new XmlDriveApSettings(attrText(reader->attributes(), QLatin1String("name")));
    return parseElement(reader, settings, kSettingsInfo, kSettingsRules);
}

XmlDriveApSetting* KIVXmlParser::parseDriveApSetting(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* setting = new XmlDriveApSetting(static_cast<unsigned char>(attrUInt(attributes, QLatin1String("type"))),
        attrInt(attributes, QLatin1String("value")));
    return parseElement(reader, setting, kSettingInfo);
}
