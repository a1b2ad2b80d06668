#include "product/XmlDriveConfiguration.h"
#include "text/DebugText_p.h"

QString XmlDriveApSetting::toString() const
{
    return QLatin1String("XmlDriveApSetting(type: ") + QString::number(m_type) + QLatin1String(" value: ")
        + QString::number(m_value) + QLatin1Char(')');
}

QString XmlDriveApSettings::toString() const
{
    return KivText::containerText(QLatin1String("XmlDriveApSettings(name: ") + m_name, m_items);
}

QString XmlDriveConfiguration::toString() const
{
    return KivText::containerText(
        QLatin1String("XmlDriveConfiguration(id: ") + QString::number(m_id) + QLatin1String(", name: ") + m_name,
        m_items);
}
