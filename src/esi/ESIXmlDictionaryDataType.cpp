#include "esi/ESIXmlDictionaryDataType.h"
#include "base/ReserveHint_p.h"
#include "text/DebugText_p.h"

#include <QJsonArray>
#include <QJsonObject>

QString ESIXmlDictionaryDataTypeSubItem::toString(QString indent) const
{
    QString s;
    s.reserve(96 + m_name.size() + m_type.size() + m_flags.size() + 8 * indent.size());
    KivText::openBlock(s, indent, QLatin1String("SubItem"));
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    KivText::field(s, indent, QLatin1String("\tType: "), m_type);
    KivText::field(s, indent, QLatin1String("\tBitSize: "), m_bitSize);
    KivText::field(s, indent, QLatin1String("\tBitOffs: "), m_bitOffs);
    KivText::field(s, indent, QLatin1String("\tFlags: "), m_flags);
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlDictionaryDataTypeSubItem::toJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("Name"), m_name);
    json.insert(QStringLiteral("Type"), m_type);
    json.insert(QStringLiteral("BitSize"), m_bitSize);
    json.insert(QStringLiteral("BitOffs"), m_bitOffs);
}

ESIXmlDictionaryDataType::~ESIXmlDictionaryDataType()
{
    qDeleteAll(m_subItems);
}

QString ESIXmlDictionaryDataType::toString(QString indent) const
{
    QString s;
    s.reserve(KivReserve::chars(48 + m_name.size() + 5 * indent.size(), m_subItems.size(), 96 + 8 * indent.size()));
    KivText::openBlock(s, indent, QLatin1String("DataType"));
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    KivText::field(s, indent, QLatin1String("\tBitSize: "), m_bitSize);
    const QString inner = indent + QLatin1Char('\t');
    for (const ESIXmlDictionaryDataTypeSubItem* subItem : m_subItems) {
        if (subItem)
            s += subItem->toString(inner);
    }
    KivText::closeBlock(s, indent);
    return s;
}

void ESIXmlDictionaryDataType::toJson(QJsonObject& json) const
{
    json.insert(QStringLiteral("Name"), m_name);
    json.insert(QStringLiteral("BitSize"), m_bitSize);
    QJsonArray subItems;
    for (const ESIXmlDictionaryDataTypeSubItem* subItem : m_subItems) {
        if (!subItem)
            continue;
        QJsonObject entry;
        subItem->toJson(entry);
        subItems.append(entry);
    }
    json.insert(QStringLiteral("SubItem"), subItems);
}
