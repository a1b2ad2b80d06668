#include "esi/ESIXmlDescriptions.h"

#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlGroup.h"

#include <QJsonArray>
#include <QJsonObject>

ESIXmlDescriptions::~ESIXmlDescriptions()
{
    qDeleteAll(m_groups);
    qDeleteAll(m_devices);
}

QString ESIXmlDescriptions::toString(QString indent) const
{
    QString text;
    appendTo(text, indent);
    return text;
}

void ESIXmlDescriptions::appendTo(QString& text, const QString& indent) const
{
    const QString inner = indent + QLatin1Char('\t');
    text += QLatin1Char('\n') + indent + QLatin1String("Descriptions") + QLatin1Char('\n') + indent + QLatin1Char('{');
    for (const ESIXmlGroup* group : m_groups) {
        if (group)
            text += group->toString(inner);
    }
    for (const ESIXmlDevice* device : m_devices) {
        if (device)
            text += device->toString(inner);
    }
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
}

void ESIXmlDescriptions::toJson(QJsonObject& json) const
{
    QJsonArray devices;
    for (const ESIXmlDevice* device : m_devices) {
        if (!device)
            continue;
        QJsonObject entry;
        device->toJson(entry);
        devices.append(entry);
    }
    json.insert(QStringLiteral("Descriptions"), devices);
}
