#pragma once

#include "kivcore_export.h"
#include "product/XmlNumberedItem.h"

/// One interrupt source of a module's firmware, owning its value descriptor; deleted by the XmlIrqs that
/// hold it.
class KIVCORE_EXPORT XmlIrq : public XmlNumberedItem
{
public:
    XmlIrq() = default;

    QString toString() const;
};
