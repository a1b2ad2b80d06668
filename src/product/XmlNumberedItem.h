#pragma once

#include "kivcore_export.h"

#include <QString>
#include <QStringList>

class XmlValueInterface;

/// The content that a module's interrupt sources and coordinates share, owning and deleting one value
/// descriptor: a number kept as a full 32-bit value (unlike the parameter kinds), name, identifier and
/// description lines.
class KIVCORE_EXPORT XmlNumberedItem
{
public:
    Q_DISABLE_COPY(XmlNumberedItem)

    int getType() const { return m_type; }
    void setType(int type) { m_type = type; }
    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString getIdentifier() const { return m_identifier; }
    void setIdentifier(QString identifier) { m_identifier = identifier; }
    QStringList getDescriptions() const { return m_descriptions; }
    void appendDescription(QString description) { m_descriptions.append(description); }
    XmlValueInterface* getValue() const { return m_value; }
    /// Takes ownership of `value`; deliberately does not delete a descriptor it replaces.
    void setValue(XmlValueInterface* value) { m_value = value; }

protected:
    XmlNumberedItem() = default;
    /// Deletes the value descriptor. Not virtual: items are deleted as what they are.
    ~XmlNumberedItem();

    /// The debug text after the item's own prefix.
    QString toStringWithPrefix(QLatin1String prefix) const;

private:
    int m_type = 0;
    QString m_name;
    QString m_identifier;
    QStringList m_descriptions;
    XmlValueInterface* m_value = nullptr;
};
