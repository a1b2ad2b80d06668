// Parse function of the "product_module" root.

#include "ic/XmlDatabase.h"
#include "ic/XmlPinMap.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlDriveConfiguration.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "product/XmlProductModule.h"
#include "product/parse/ProductParse_p.h"

using namespace KivParse;

namespace {

/// "pin_map" and "database" deliberately start one token after their start tag: module files rely on
/// the attributes of those two tags not being read.
template<auto Parse, auto Get, auto Set> void replaceAfterOneToken(QXmlStreamReader* reader, XmlProductModule* module)
{
    dropToken(reader);
    replaceChild<XmlProductModule, Parse, Get, Set>(reader, module);
}

using M = XmlProductModule;

const ChildRule<M> kModuleRules[] = {
    {QLatin1String("name"), &storeText<M, &M::setName>},
    {QLatin1String("name_fw_version"), &storeText<M, &M::setNameInFirmwareVersion>},
    {QLatin1String("name_fw_type"), &storeText<M, &M::setNameOfFirmwareType>},
    {QLatin1String("hardware_version"), &storeText<M, &M::setHardwareVersion>},
    {QLatin1String("software_version"), &storeText<M, &M::setSoftwareVersion>},
    {QLatin1String("pin_map"), &replaceAfterOneToken<&KIVXmlParser::parsePinMap, &M::getPinMap, &M::setPinMap>},
    {QLatin1String("database"), &replaceAfterOneToken<&KIVXmlParser::parseDatabase, &M::getDatabase, &M::setDatabase>},
    {QLatin1String("axis_parameters"), &appendChild<M, &KIVXmlParser::parseAxisParameters, &M::appendAxisParameters>},
    {QLatin1String("global_parameters"),
        &appendChild<M, &KIVXmlParser::parseGlobalParameters, &M::appendGlobalParameters>},
    {QLatin1String("digital_inputs"),
        &replaceChild<M, &KIVXmlParser::parseDigitalInputs, &M::getDigitalInputs, &M::setDigitalInputs>},
    {QLatin1String("digital_outputs"),
        &replaceChild<M, &KIVXmlParser::parseDigitalOutputs, &M::getDigitalOutputs, &M::setDigitalOutputs>},
    {QLatin1String("analog_inputs"),
        &replaceChild<M, &KIVXmlParser::parseAnalogInputs, &M::getAnalogInputs, &M::setAnalogInputs>},
    {QLatin1String("canopen_object"), &appendChild<M, &KIVXmlParser::parseCANopenObject, &M::appendCANopenObject>},
    {QLatin1String("drive_configuration"),
        &appendChild<M, &KIVXmlParser::parseDriveConfig, &M::appendDriveConfiguration>},
    {QLatin1String("irqs"), &replaceChild<M, &KIVXmlParser::parseIrqs, &M::getIrqs, &M::setIrqs>},
    {QLatin1String("coordinates"),
        &replaceChild<M, &KIVXmlParser::parseCoordinates, &M::getCoordinates, &M::setCoordinates>},
};

// An unknown child is announced by the one-item message "test" and the token after its start tag is
// dropped unseen: kept as existing logs and files show it.
const ElementInfo kModuleInfo {QLatin1String("product_module"), OtherChild::Report,
    "static XmlProductModule* KIVXmlParser::parseProductModule(QXmlStreamReader*)", nullptr, "test", true};

} // namespace

XmlProductModule* KIVXmlParser::parseProductModule(QXmlStreamReader* reader)
{
    auto* module = new XmlProductModule;
    // A module given up half-built takes its pin map with it, since nobody else can reach it; a finished
    // module leaves the pin map to its keeper.
    module->m_deletesPinMap = true;
    XmlProductModule* result = parseElement(reader, module, kModuleInfo, kModuleRules);
    if (result)
        result->m_deletesPinMap = false;
    return result;
}
