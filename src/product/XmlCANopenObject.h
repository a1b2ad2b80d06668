#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>
#include <QStringList>

class XmlCANopenEntry;

/// One object of a module's CANopen object dictionary, owning and deleting its sub-index entries; deleted by
/// the module. It holds index, name, object and data type texts, the dictionary segment code and
/// description lines.
class KIVCORE_EXPORT XmlCANopenObject
{
public:
    XmlCANopenObject(unsigned int index, QString name, QString objectType, QString dataType, QString segment);
    /// Deletes the entries.
    ~XmlCANopenObject();
    Q_DISABLE_COPY(XmlCANopenObject)

    unsigned int getIndex() const { return m_index; }
    QString getName() const { return m_name; }
    QString getObjectTypeAsString() const { return m_objectType; }
    QString getDataTypeAsString() const { return m_dataType; }
    /// The code as written: "D", "M" or "C".
    QString getSegment() const { return m_segment; }
    /// "Device Profile", "Manufacturer" or "Communication"; any other code is returned unchanged.
    QString getSegmentAsString() const;
    QStringList getDescriptions() const { return m_descriptions; }
    void appendDescription(QString description) { m_descriptions.append(description); }
    /// The object's own list.
    QList<XmlCANopenEntry*>* getXmlCANopenEntries() { return &m_entries; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendCANopenEntry(XmlCANopenEntry* entry) { m_entries.append(entry); }

    QString toString(QString indent) const;
    /// The object's subsection of the firmware manual, with every "_" written "\_".
    QString toLatex() const;

private:
    unsigned int m_index;
    QString m_name;
    QString m_objectType;
    QString m_dataType;
    QString m_segment;
    QStringList m_descriptions;
    QList<XmlCANopenEntry*> m_entries;
};
