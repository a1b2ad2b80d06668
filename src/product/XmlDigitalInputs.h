#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlDigitalInput.h"

#include <QString>

/// The module's digital inputs, owned and deleted front to back with the container; deleted by the
/// module.
class KIVCORE_EXPORT XmlDigitalInputs : public XmlItemContainer<XmlDigitalInput>
{
public:
    /// The container's own list.
    QList<XmlDigitalInput*>* getDigitalInputs() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendDigitalInput(XmlDigitalInput* item) { m_items.append(item); }

    QString toString() const;
};
