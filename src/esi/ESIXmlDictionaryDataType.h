#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class QJsonObject;

/// One sub-item of a dictionary data type (its place in the type and the type it has there), deleted by the
/// data type that holds it.
class KIVCORE_EXPORT ESIXmlDictionaryDataTypeSubItem
{
public:
    ESIXmlDictionaryDataTypeSubItem() = default;
    Q_DISABLE_COPY(ESIXmlDictionaryDataTypeSubItem)

    int getSubIdx() const { return m_subIdx; }
    void setSubIdx(int subIdx) { m_subIdx = subIdx; }
    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString getType() const { return m_type; }
    void setType(const QString& type) { m_type = type; }
    int getBitSize() const { return m_bitSize; }
    void setBitSize(int bitSize) { m_bitSize = bitSize; }
    int getBitOffs() const { return m_bitOffs; }
    void setBitOffs(int bitOffs) { m_bitOffs = bitOffs; }
    QString getFlags() const { return m_flags; }
    void setFlags(const QString& flags) { m_flags = flags; }

    QString toString(QString indent) const;
    /// Writes "Name", "Type" (texts), "BitSize" and "BitOffs" (numbers).
    void toJson(QJsonObject& json) const;

private:
    int m_subIdx = 0;
    QString m_name;
    QString m_type;
    int m_bitSize = 0;
    int m_bitOffs = 0;
    QString m_flags;
};

/// A data type of a dictionary (name, size in bits), owning and deleting its sub-items; deleted by its
/// dictionary.
class KIVCORE_EXPORT ESIXmlDictionaryDataType
{
public:
    ESIXmlDictionaryDataType() = default;
    ~ESIXmlDictionaryDataType();
    Q_DISABLE_COPY(ESIXmlDictionaryDataType)

    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    int getBitSize() const { return m_bitSize; }
    void setBitSize(int bitSize) { m_bitSize = bitSize; }

    /// Takes ownership; null is stored as given.
    void addSubItem(ESIXmlDictionaryDataTypeSubItem* subItem) { m_subItems.append(subItem); }
    const QList<ESIXmlDictionaryDataTypeSubItem*>& getSubItems() const { return m_subItems; }

    QString toString(QString indent) const;
    /// Writes "Name", "BitSize" (number) and "SubItem" (one object per sub-item).
    void toJson(QJsonObject& json) const;

private:
    QString m_name;
    int m_bitSize = 0;
    QList<ESIXmlDictionaryDataTypeSubItem*> m_subItems;
};
