#include "esi/ESIXmlVendor.h"
#include "text/DebugText_p.h"
#include "text/Numbers_p.h"

#include <QJsonObject>

quint32 ESIXmlVendor::id() const
{
    const bool decimal = !m_id.isEmpty() && m_id.at(0) >= QLatin1Char('1') && m_id.at(0) <= QLatin1Char('9');
    if (decimal)
        return m_id.toUInt(nullptr, 10);
    return KivText::hexAfterPrefix(m_id);
}

QString ESIXmlVendor::toString(QString indent) const
{
    QString s;
    s.reserve(64 + m_id.size() + m_name.size() + m_comment.size() + 8 * indent.size());
    KivText::openBlock(s, indent, QLatin1String("Vendor"));
    KivText::field(s, indent, QLatin1String("\tId: "), m_id);
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    KivText::field(s, indent, QLatin1String("\tComment: "), m_comment);
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlVendor::toJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("VID"), static_cast<double>(id()));
    json.insert(QStringLiteral("Icon"), QString::fromLocal8Bit(m_imageData16x14));
}
