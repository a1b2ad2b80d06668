#include "product/ModuleJson.h"

#include "ic/IcJson_p.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlDriveConfiguration.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "product/XmlProductModule.h"
#include "values/ValueJson_p.h"


using KivValueJson::array;
using KivValueJson::texts;

namespace {

QJsonObject parameter(XmlParameterInterface* parameter)
{
    return {
        {QStringLiteral("type"), int(parameter->type())},
        {QStringLiteral("name"), parameter->name()},
        {QStringLiteral("identifier"), parameter->identifier()},
        {QStringLiteral("descriptions"), texts(parameter->descriptions())},
        {QStringLiteral("value"), KivIcJson::value(parameter->value())},
    };
}

/// Interrupts and coordinates: the parameter's shape with the full 32-bit number.
QJsonObject numberedItem(XmlNumberedItem* item)
{
    return {
        {QStringLiteral("type"), item->getType()},
        {QStringLiteral("name"), item->getName()},
        {QStringLiteral("identifier"), item->getIdentifier()},
        {QStringLiteral("descriptions"), texts(item->getDescriptions())},
        {QStringLiteral("value"), KivIcJson::value(item->getValue())},
    };
}

/// A container that may be missing: its items, or null.
template<typename Container, typename Item, typename Function>
QJsonValue items(Container* container, QList<Item*>* (Container::*list)(), Function toJson)
{
    if (!container)
        return QJsonValue(QJsonValue::Null);
    return array(*(container->*list)(), toJson);
}

QJsonObject axisBlock(XmlAxisParameters* block)
{
    return {
        {QStringLiteral("axis"), block->getAxis()},
        {QStringLiteral("parameters"), array(*block->getAxisParameter(), parameter)},
    };
}

QJsonObject globalBank(XmlGlobalParameters* bank)
{
    return {
        {QStringLiteral("bank"), bank->getBank()},
        {QStringLiteral("parameters"), array(*bank->getGlobalParameter(), parameter)},
    };
}

QJsonObject canopenEntry(XmlCANopenEntry* entry)
{
    return {
        {QStringLiteral("subIndex"), qint64(entry->getSubIndex())},
        {QStringLiteral("name"), entry->getName()},
        {QStringLiteral("pdoMapped"), entry->isPdoMapped()},
        {QStringLiteral("value"), KivIcJson::value(entry->getValue())},
    };
}

QJsonObject canopenObject(XmlCANopenObject* object)
{
    return {
        {QStringLiteral("index"), qint64(object->getIndex())},
        {QStringLiteral("name"), object->getName()},
        {QStringLiteral("objectType"), object->getObjectTypeAsString()},
        {QStringLiteral("dataType"), object->getDataTypeAsString()},
        {QStringLiteral("segment"), object->getSegment()},
        {QStringLiteral("segmentName"), object->getSegmentAsString()},
        {QStringLiteral("descriptions"), texts(object->getDescriptions())},
        {QStringLiteral("entries"), array(*object->getXmlCANopenEntries(), canopenEntry)},
    };
}

QJsonObject apSetting(XmlDriveApSetting* setting)
{
    return {{QStringLiteral("type"), int(setting->type())}, {QStringLiteral("value"), setting->value()}};
}

QJsonObject apSettings(XmlDriveApSettings* group)
{
    return {
        {QStringLiteral("name"), group->name()},
        {QStringLiteral("settings"), array(*group->driveApSettings(), apSetting)},
    };
}

QJsonObject driveConfiguration(XmlDriveConfiguration* configuration)
{
    return {
        {QStringLiteral("id"), int(configuration->id())},
        {QStringLiteral("name"), configuration->name()},
        {QStringLiteral("apSettings"), array(*configuration->driveApSettings(), apSettings)},
    };
}

} // namespace

QJsonObject ModuleJson::toJson(XmlProductModule* module)
{
    if (!module)
        return {};
    return {
        {QStringLiteral("product"), QStringLiteral("module")},
        {QStringLiteral("name"), module->getName()},
        {QStringLiteral("nameInFirmwareVersion"), module->getNameInFirmwareVersion()},
        {QStringLiteral("nameOfFirmwareType"), module->getNameOfFirmwareType()},
        {QStringLiteral("version"), module->getVersion()},
        {QStringLiteral("hardwareVersion"), module->getHardwareVersion()},
        {QStringLiteral("softwareVersion"), module->getSoftwareVersion()},
        {QStringLiteral("axisParameters"), array(*module->getAxisParameters(), axisBlock)},
        {QStringLiteral("globalParameters"), array(*module->getGlobalParameters(), globalBank)},
        {QStringLiteral("digitalInputs"),
            items(module->getDigitalInputs(), &XmlDigitalInputs::getDigitalInputs, parameter)},
        {QStringLiteral("digitalOutputs"),
            items(module->getDigitalOutputs(), &XmlDigitalOutputs::getDigitalOutputs, parameter)},
        {QStringLiteral("analogInputs"),
            items(module->getAnalogInputs(), &XmlAnalogInputs::getAnalogInputs, parameter)},
        {QStringLiteral("irqs"), items(module->getIrqs(), &XmlIrqs::getIrqs, numberedItem)},
        {QStringLiteral("coordinates"), items(module->getCoordinates(), &XmlCoordinates::getCoordinates, numberedItem)},
        {QStringLiteral("canopenObjects"), array(*module->getCANopenObjects(), canopenObject)},
        {QStringLiteral("driveConfigurations"), array(*module->driveConfigurations(), driveConfiguration)},
        {QStringLiteral("pinMap"), KivIcJson::pinMap(module->getPinMap())},
        {QStringLiteral("database"), KivIcJson::database(module->getDatabase())},
    };
}
