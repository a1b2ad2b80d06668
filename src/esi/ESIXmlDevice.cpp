#include "esi/ESIXmlDevice.h"

#include "esi/ESIXmlProfile.h"
#include "text/DebugText_p.h"
#include "text/Numbers_p.h"

#include <QJsonArray>
#include <QJsonObject>

ESIXmlDevice::~ESIXmlDevice()
{
    qDeleteAll(m_profiles);
}

quint32 ESIXmlDevice::getProductCode() const
{
    return KivText::hexAfterPrefix(m_productCode);
}

quint32 ESIXmlDevice::getRevisionNo() const
{
    return KivText::hexAfterPrefix(m_revisionNo);
}

QString ESIXmlDevice::toString(QString indent) const
{
    QString s;
    s.reserve(128 + m_physics.size() + m_type.size() + m_name.size() + 8 * indent.size());
    KivText::openBlock(s, indent, QLatin1String("Device"));
    KivText::field(s, indent, QLatin1String("\tPhysics: "), m_physics);
    KivText::field(s, indent, QLatin1String("\tType: "), m_type);
    KivText::field(s, indent, QLatin1String("\tProductCode: "), m_productCode);
    KivText::field(s, indent, QLatin1String("\tRevisionNo: "), m_revisionNo);
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    const QString inner = indent + QLatin1Char('\t');
    for (const ESIXmlProfile* profile : m_profiles) {
        if (profile)
            s += profile->toString(inner);
    }
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlDevice::toJson(QJsonObject& json) const
{
    QJsonArray profiles;
    for (const ESIXmlProfile* profile : m_profiles) {
        if (!profile)
            continue;
        QJsonObject entry;
        profile->toJson(entry);
        profiles.append(entry);
    }
    json.insert(QStringLiteral("Device"), profiles);
    json.insert(QStringLiteral("ProductCode"), static_cast<double>(getProductCode()));
    json.insert(QStringLiteral("RevisionNo"), static_cast<double>(getRevisionNo()));
}
