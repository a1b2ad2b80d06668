#include "esi/ESIXmlObjectInfo.h"

#include "base/ReserveHint_p.h"
#include "esi/ESIXmlSubItem.h"
#include "text/DebugText_p.h"

#include <QJsonArray>
#include <QJsonObject>

ESIXmlObjectInfo::~ESIXmlObjectInfo()
{
    qDeleteAll(m_subItems);
}

QString ESIXmlObjectInfo::toString(QString indent) const
{
    QString s;
    s.reserve(KivReserve::chars(48 + 4 * indent.size(), m_subItems.size(), 48 + 4 * indent.size()));
    KivText::openBlock(s, indent, QLatin1String("Info"));
    KivText::field(s, indent, QLatin1String("\tDefault Value: "), m_defaultValue);
    const QString inner = indent + QLatin1Char('\t');
    for (int i = 0; i < m_subItems.size(); ++i) {
        if (m_subItems.at(i))
            s += m_subItems.at(i)->toString(inner, i);
    }
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlObjectInfo::toJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("DefaultValue"), m_defaultValue);
    QJsonArray names;
    for (const ESIXmlSubItem* subItem : m_subItems) {
        if (subItem)
            names.append(subItem->getName());
    }
    json.insert(QStringLiteral("Info"), names);
}
