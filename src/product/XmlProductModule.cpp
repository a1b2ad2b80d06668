#include "product/XmlProductModule.h"

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

namespace {

template<typename T> void deleteFrontToBack(QList<T*>* list)
{
    while (!list->isEmpty())
        delete list->takeFirst();
}

/// The walk shared by both lookups: blocks of `axis` in list order, their parameters in order.
template<typename Match>
XmlAxisParameter* findAxisParameter(const QList<XmlAxisParameters*>& blocks, unsigned char axis, Match matches)
{
    for (XmlAxisParameters* block : blocks) {
        if (!block || static_cast<unsigned char>(block->getAxis()) != axis)
            continue;
        for (XmlAxisParameter* parameter : *block->getAxisParameter()) {
            if (parameter && matches(parameter))
                return parameter;
        }
    }
    return nullptr;
}

} // namespace

XmlProductModule::XmlProductModule()
    : XmlProductInterface(1)
{ }

XmlProductModule::~XmlProductModule()
{
    delete m_digitalInputs;
    delete m_digitalOutputs;
    delete m_analogInputs;
    delete m_database;
    delete m_irqs;
    delete m_coordinates;
    deleteFrontToBack(&m_axisParameters);
    deleteFrontToBack(&m_globalParameters);
    deleteFrontToBack(&m_driveConfigurations);
    deleteFrontToBack(&m_canopenObjects);
    // The pin map is deliberately left to the module's keeper.
    if (m_deletesPinMap)
        delete m_pinMap;
}

QString XmlProductModule::getVersion() const
{
    return QLatin1String("HW: ") + m_hardwareVersion + QLatin1String("; SW: ") + m_softwareVersion;
}

void XmlProductModule::clearAxisParameters()
{
    deleteFrontToBack(&m_axisParameters);
}

void XmlProductModule::clearGlobalParameters()
{
    deleteFrontToBack(&m_globalParameters);
}

void XmlProductModule::clearCANopenObjects()
{
    deleteFrontToBack(&m_canopenObjects);
}

void XmlProductModule::clearDriveConfigurations()
{
    deleteFrontToBack(&m_driveConfigurations);
}

void XmlProductModule::clearDigitalInputs()
{
    if (m_digitalInputs)
        deleteFrontToBack(m_digitalInputs->getDigitalInputs());
}

void XmlProductModule::clearDigitalOutputs()
{
    if (m_digitalOutputs)
        deleteFrontToBack(m_digitalOutputs->getDigitalOutputs());
}

void XmlProductModule::clearAnalogInputs()
{
    if (m_analogInputs)
        deleteFrontToBack(m_analogInputs->getAnalogInputs());
}

void XmlProductModule::clearIrqs()
{
    if (m_irqs)
        deleteFrontToBack(m_irqs->getIrqs());
}

void XmlProductModule::clearCoordinates()
{
    if (m_coordinates)
        deleteFrontToBack(m_coordinates->getCoordinates());
}

XmlAxisParameter* XmlProductModule::getAxisParameterValue(unsigned char axis, unsigned char type)
{
    return findAxisParameter(
        m_axisParameters, axis, [type](const XmlAxisParameter* parameter) { return parameter->type() == type; });
}

XmlAxisParameter* XmlProductModule::getAxisParameterValue(unsigned char axis, QString identifier)
{
    return findAxisParameter(m_axisParameters, axis,
        [&identifier](const XmlAxisParameter* parameter) { return parameter->identifier() == identifier; });
}

QString XmlProductModule::toString()
{
    QStringList parts;
    parts.reserve(6 + m_axisParameters.size() + m_globalParameters.size() + m_canopenObjects.size() + 6);
    parts << QLatin1String("Product: MODULE") << QLatin1String("Name: ") + m_name
          << QLatin1String("NameInFWVersion: ") + m_nameInFirmwareVersion
          << QLatin1String("NameFWType: ") + m_nameOfFirmwareType
          << QLatin1String("HardwareVersion: ") + m_hardwareVersion
          << QLatin1String("SoftwareVersion: ") + m_softwareVersion;
    for (const XmlAxisParameters* block : qAsConst(m_axisParameters)) {
        if (block)
            parts << block->toString();
    }
    for (const XmlGlobalParameters* bank : qAsConst(m_globalParameters)) {
        if (bank)
            parts << bank->toString();
    }
    for (const XmlCANopenObject* object : qAsConst(m_canopenObjects)) {
        if (object)
            parts << object->toString(QString());
    }
    if (m_digitalInputs)
        parts << m_digitalInputs->toString();
    if (m_digitalOutputs)
        parts << m_digitalOutputs->toString();
    if (m_analogInputs)
        parts << m_analogInputs->toString();
    if (m_irqs)
        parts << m_irqs->toString();
    if (m_coordinates)
        parts << m_coordinates->toString();
    if (m_database)
        parts << m_database->toString();
    return parts.join(QLatin1Char('\n'));
}
