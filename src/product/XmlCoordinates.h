#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlCoordinate.h"

#include <QString>

/// The module's stored coordinates, owned and deleted front to back with the container; deleted by the
/// module.
class KIVCORE_EXPORT XmlCoordinates : public XmlItemContainer<XmlCoordinate>
{
public:
    /// The container's own list.
    QList<XmlCoordinate*>* getCoordinates() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendCoordinate(XmlCoordinate* item) { m_items.append(item); }

    QString toString() const;
};
