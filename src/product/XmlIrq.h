#pragma once

#include "kivcore_export.h"

#include <QString>
#include <QStringList>

class XmlValueInterface;

/// One interrupt source of a module's firmware. Unlike the parameter kinds it keeps its number as a full
/// 32-bit value. Owns its value descriptor.
class KIVCORE_EXPORT XmlIrq
{
public:
    XmlIrq() = default;
    ~XmlIrq();
    Q_DISABLE_COPY(XmlIrq)

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

    QString toString() const;

private:
    int m_type = 0;
    QString m_name;
    QString m_identifier;
    QStringList m_descriptions;
    XmlValueInterface* m_value = nullptr;
};
