#include "esi/ESIXmlDictionary.h"

#include "esi/ESIXmlDictionaryDataType.h"
#include "esi/ESIXmlDictionaryObject.h"

#include <QJsonArray>
#include <QJsonObject>

ESIXmlDictionary::~ESIXmlDictionary()
{
    qDeleteAll(m_dataTypes);
    qDeleteAll(m_objects);
}

QString ESIXmlDictionary::toString(QString indent) const
{
    const QString inner = indent + QLatin1String("\t\t");
    QStringList parts;
    parts.reserve(m_dataTypes.size() + m_objects.size() + 5);
    parts << QString(QLatin1Char('\n') + indent + QLatin1String("Dictionary"));
    parts << QString(QLatin1Char('\n') + indent + QLatin1String("\tDataTypes{"));
    for (const ESIXmlDictionaryDataType* dataType : m_dataTypes) {
        if (dataType)
            parts << dataType->toString(inner);
    }
    parts << QString(QLatin1Char('\n') + indent + QLatin1Char('}'));
    parts << QString(QLatin1Char('\n') + indent + QLatin1String("\tObjects{"));
    for (const ESIXmlDictionaryObject* object : m_objects) {
        if (object)
            parts << object->toString(inner);
    }
    parts << QString(QLatin1Char('\n') + indent + QLatin1Char('}'));
    return parts.join(QString());
}

void ESIXmlDictionary::toJson(QJsonObject& json) const
{
    QJsonArray objects;
    for (const ESIXmlDictionaryObject* object : m_objects) {
        if (!object)
            continue;
        QJsonObject entry;
        object->toJson(entry);
        objects.append(entry);
    }
    QJsonArray dataTypes;
    for (const ESIXmlDictionaryDataType* dataType : m_dataTypes) {
        if (!dataType)
            continue;
        QJsonObject entry;
        dataType->toJson(entry);
        dataTypes.append(entry);
    }
    json.insert(QStringLiteral("Dictionary"), objects);
    json.insert(QStringLiteral("__Dictionary"), dataTypes);
}
