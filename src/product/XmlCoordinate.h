#pragma once

#include "kivcore_export.h"
#include "product/XmlNumberedItem.h"

/// One stored coordinate of a module's firmware, owning its value descriptor; deleted by the XmlCoordinates
/// that hold it.
class KIVCORE_EXPORT XmlCoordinate : public XmlNumberedItem
{
public:
    XmlCoordinate() = default;

    QString toString() const;
};
