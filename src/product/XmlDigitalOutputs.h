#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlDigitalOutput.h"

#include <QString>

/// The module's digital outputs, owned and deleted front to back with the container; deleted by the
/// module.
class KIVCORE_EXPORT XmlDigitalOutputs : public XmlItemContainer<XmlDigitalOutput>
{
public:
    /// The container's own list.
    QList<XmlDigitalOutput*>* getDigitalOutputs() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendDigitalOutput(XmlDigitalOutput* item) { m_items.append(item); }

    QString toString() const;
};
