#include "product/XmlParameterInterface.h"

#include "product/XmlAnalogInput.h"
#include "product/XmlAxisParameter.h"
#include "product/XmlDigitalInput.h"
#include "product/XmlDigitalOutput.h"
#include "product/XmlGlobalParameter.h"
#include "text/DebugText_p.h"
#include "values/XmlValueInterface.h"

XmlParameterInterface::XmlParameterInterface(int parameterType)
    : m_parameterType(parameterType)
{ }

XmlParameterInterface::~XmlParameterInterface()
{
    delete m_value;
}

QString XmlParameterInterface::parameterTypeAsString(int kind)
{
    switch (kind) {
    case AxisParameterKind:
        return QStringLiteral("AxisParameter");
    case GlobalParameterKind:
        return QStringLiteral("GlobalParameter");
    case AnalogInputKind:
        return QStringLiteral("AnalogInput");
    case DigitalInputKind:
        return QStringLiteral("DigitalInput");
    case DigitalOutputKind:
        return QStringLiteral("DigitalOutput");
    default:
        return QStringLiteral("unknown");
    }
}

int XmlParameterInterface::readCommand() const
{
    switch (m_parameterType) {
    case AxisParameterKind:
        return 6;
    case GlobalParameterKind:
        return 10;
    default:
        return 0;
    }
}

int XmlParameterInterface::writeCommand() const
{
    switch (m_parameterType) {
    case AxisParameterKind:
        return 5;
    case GlobalParameterKind:
        return 10; // deliberately the read command's number
    default:
        return 0;
    }
}

QString XmlParameterInterface::toStringWithPrefix(QLatin1String prefix) const
{
    return KivText::leafText(prefix, m_type, m_name, m_descriptions, m_value);
}

QString XmlParameterInterface::toString()
{
    const QByteArray prefix = (parameterTypeAsString() + QLatin1Char('(')).toLatin1();
    return toStringWithPrefix(QLatin1String(prefix));
}

QString XmlAxisParameter::toString()
{
    return toStringWithPrefix(QLatin1String("AxisParameter("));
}

QString XmlGlobalParameter::toString()
{
    return toStringWithPrefix(QLatin1String("GlobalParameter("));
}

QString XmlAnalogInput::toString()
{
    return toStringWithPrefix(QLatin1String("AnalogInput("));
}

QString XmlDigitalInput::toString()
{
    return toStringWithPrefix(QLatin1String("DigitalInput("));
}

QString XmlDigitalOutput::toString()
{
    return toStringWithPrefix(QLatin1String("DigitalOutput("));
}
