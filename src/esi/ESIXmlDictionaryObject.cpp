#include "esi/ESIXmlDictionaryObject.h"

#include "esi/ESIXmlObjectInfo.h"
#include "text/DebugText_p.h"
#include "text/Numbers_p.h"

#include <QJsonObject>

ESIXmlDictionaryObject::~ESIXmlDictionaryObject()
{
    delete m_info;
}

int ESIXmlDictionaryObject::getIndex() const
{
    return static_cast<int>(KivText::hexAfterPrefix(m_index, 4));
}

void ESIXmlDictionaryObject::setInfo(ESIXmlObjectInfo* info)
{
    if (info == m_info)
        return;
    delete m_info;
    m_info = info;
}

QString ESIXmlDictionaryObject::toString(QString indent) const
{
    QString s;
    s.reserve(96 + m_index.size() + m_name.size() + m_type.size() + m_bitSize.size() + 8 * indent.size());
    KivText::openBlock(s, indent, QLatin1String("Object"));
    KivText::field(s, indent, QLatin1String("\tIndex: "), m_index);
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    KivText::field(s, indent, QLatin1String("\tType: "), m_type);
    KivText::field(s, indent, QLatin1String("\tBitSize: "), m_bitSize);
    if (m_info)
        s += m_info->toString(indent + QLatin1Char('\t'));
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlDictionaryObject::toJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("Name"), m_name);
    json.insert(QStringLiteral("Index"), getIndex());
    json.insert(QStringLiteral("BitSize"), m_bitSize.toInt(nullptr, 10));
    if (m_info)
        m_info->toJson(json);
}
