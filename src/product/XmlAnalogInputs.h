#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlAnalogInput.h"

#include <QString>

/// The module's analog inputs, owned and deleted front to back with the container; deleted by the module.
class KIVCORE_EXPORT XmlAnalogInputs : public XmlItemContainer<XmlAnalogInput>
{
public:
    /// The container's own list.
    QList<XmlAnalogInput*>* getAnalogInputs() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendAnalogInput(XmlAnalogInput* item) { m_items.append(item); }

    QString toString() const;
};
