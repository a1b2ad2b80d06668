#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class ESIXmlDictionaryDataType;
class ESIXmlDictionaryObject;
class QJsonObject;

/// A profile's object dictionary, owning and deleting its data types and its objects; deleted by its
/// profile.
class KIVCORE_EXPORT ESIXmlDictionary
{
public:
    ESIXmlDictionary() = default;
    ~ESIXmlDictionary();
    Q_DISABLE_COPY(ESIXmlDictionary)

    /// Appends every member and takes ownership of them (not of the list).
    void addDataTypes(const QList<ESIXmlDictionaryDataType*>& dataTypes) { m_dataTypes += dataTypes; }
    /// Appends every member and takes ownership of them (not of the list).
    void addObjects(const QList<ESIXmlDictionaryObject*>& objects) { m_objects += objects; }
    const QList<ESIXmlDictionaryDataType*>& getDataTypes() const { return m_dataTypes; }
    const QList<ESIXmlDictionaryObject*>& getObjects() const { return m_objects; }

    /// "Dictionary", then a "\tDataTypes{" and a "\tObjects{" section, each closed by a "}" line at the
    /// dictionary's own indent and holding its entries two tabs deeper.
    QString toString(QString indent) const;
    /// Writes "Dictionary" (array of the objects' exports) and "__Dictionary" (array of the data types').
    void toJson(QJsonObject& json) const;

private:
    QList<ESIXmlDictionaryDataType*> m_dataTypes;
    QList<ESIXmlDictionaryObject*> m_objects;
};
