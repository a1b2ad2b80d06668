#pragma once

#include "base/XmlItemContainer.h"
#include "ic/XmlPin.h"
#include "kivcore_export.h"

#include <QList>
#include <QString>

/// A named group of pins of an IC, owning its pins and deleting them front to back with itself; deleted by
/// the XmlPins that hold it.
class KIVCORE_EXPORT XmlPinGroup : public XmlItemContainer<XmlPin>
{
public:
    XmlPinGroup(unsigned int id, QString name, QString description, QString states, QString descStates);

    unsigned int getId() const { return m_id; }
    void setId(unsigned int id) { m_id = id; }
    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString getDescription() const { return m_description; }
    void setDescription(QString description) { m_description = description; }
    QString getStates() const { return m_states; }
    void setStates(QString states) { m_states = states; }
    QString getDescStates() const { return m_descStates; }
    void setDescStates(QString descStates) { m_descStates = descStates; }

    QList<XmlPin*>* getPins() { return &m_items; }
    /// Takes ownership; null is ignored.
    void appendPin(XmlPin* pin) { appendNonNull(pin); }

    /// Upper-case hexadecimal without prefix.
    QString getStringFromValue(unsigned long long value) const;
    QString toString(QString indent) const;
    QString toHtml() const;

private:
    unsigned int m_id;
    QString m_name;
    QString m_description;
    QString m_states;
    QString m_descStates;
};
