// Debug texts of the module's item containers. The prefixes differ on purpose in whether they begin with
// "Xml", and the global bank's is spelled "GloblParameters(": log readers match these texts.

#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "text/DebugText_p.h"

using KivText::containerText;

QString XmlAxisParameters::toString() const
{
    return containerText(QLatin1String("AxisParameters(axis=") + QString::number(m_axis), m_items);
}

QString XmlGlobalParameters::toString() const
{
    return containerText(QLatin1String("GloblParameters(bank=") + QString::number(m_bank), m_items);
}

QString XmlDigitalInputs::toString() const
{
    return containerText(QStringLiteral("XmlDigitalInputs("), m_items);
}

QString XmlDigitalOutputs::toString() const
{
    return containerText(QStringLiteral("XmlDigitalOutputs("), m_items);
}

QString XmlAnalogInputs::toString() const
{
    return containerText(QStringLiteral("XmlAnalogInputs("), m_items);
}

QString XmlIrqs::toString() const
{
    return containerText(QStringLiteral("XmlIrqs("), m_items);
}

QString XmlCoordinates::toString() const
{
    return containerText(QStringLiteral("XmlCoordinates("), m_items);
}
