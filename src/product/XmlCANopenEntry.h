#pragma once

#include "kivcore_export.h"

#include <QString>

class XmlValueInterface;

/// One sub-index of a CANopen object (number, name, PDO mapping), owning and deleting its value
/// descriptor; deleted by its object.
class KIVCORE_EXPORT XmlCANopenEntry
{
public:
    XmlCANopenEntry(unsigned int subIndex, QString name, bool pdoMapped);
    /// Deletes the value descriptor.
    ~XmlCANopenEntry();
    Q_DISABLE_COPY(XmlCANopenEntry)

    unsigned int getSubIndex() const { return m_subIndex; }
    QString getName() const { return m_name; }
    bool isPdoMapped() const { return m_pdoMapped; }
    /// "true" or "false".
    QString isPdoMappedAsString() const;
    XmlValueInterface* getValue() const { return m_value; }
    /// Takes ownership of `value`; deliberately does not delete a descriptor it replaces.
    void setValue(XmlValueInterface* value) { m_value = value; }

    /// One line for the entry, then the value descriptor's own text (nested one tab deeper than `indent`).
    QString toString(QString indent) const;

private:
    unsigned int m_subIndex;
    QString m_name;
    bool m_pdoMapped;
    XmlValueInterface* m_value = nullptr;
};
