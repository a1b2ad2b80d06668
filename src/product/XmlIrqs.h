#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlIrq.h"

#include <QString>

/// The module's interrupt sources, owned and deleted front to back with the container; deleted by the
/// module.
class KIVCORE_EXPORT XmlIrqs : public XmlItemContainer<XmlIrq>
{
public:
    /// The container's own list.
    QList<XmlIrq*>* getIrqs() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendIrq(XmlIrq* item) { m_items.append(item); }

    QString toString() const;
};
