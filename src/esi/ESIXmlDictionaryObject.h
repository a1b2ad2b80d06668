#pragma once

#include "kivcore_export.h"

#include <QString>

class ESIXmlObjectInfo;
class QJsonObject;

/// An object of a dictionary, owning and deleting its info (which may be null); deleted by its dictionary.
/// Index, name, type and bit size stay as the file writes them.
class KIVCORE_EXPORT ESIXmlDictionaryObject
{
public:
    ESIXmlDictionaryObject() = default;
    ~ESIXmlDictionaryObject();
    Q_DISABLE_COPY(ESIXmlDictionaryObject)

    /// The index text as written ("#x1A00").
    QString getIndexText() const { return m_index; }
    void setIndex(const QString& index) { m_index = index; }
    /// The four characters after the "#x" prefix read as hexadecimal ("#x1A00" gives 6656); 0 when unreadable.
    int getIndex() const;
    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString getType() const { return m_type; }
    void setType(const QString& type) { m_type = type; }
    QString getBitSize() const { return m_bitSize; }
    void setBitSize(const QString& bitSize) { m_bitSize = bitSize; }

    ESIXmlObjectInfo* getInfo() const { return m_info; }
    /// Takes ownership and deletes the info held before.
    void setInfo(ESIXmlObjectInfo* info);

    QString toString(QString indent) const;
    /// Writes "Name" as text, "Index" and "BitSize" (read as decimal) as numbers, then lets the info write
    /// its keys into the same object.
    void toJson(QJsonObject& json) const;

private:
    QString m_index;
    QString m_name;
    QString m_type;
    QString m_bitSize;
    ESIXmlObjectInfo* m_info = nullptr;
};
