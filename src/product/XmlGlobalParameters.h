#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlGlobalParameter.h"

#include <QString>

/// One numbered bank of global parameters, owned and deleted front to back with the bank; deleted by the
/// module.
class KIVCORE_EXPORT XmlGlobalParameters : public XmlItemContainer<XmlGlobalParameter>
{
public:
    int getBank() const { return m_bank; }
    void setBank(int bank) { m_bank = bank; }
    /// The container's own list.
    QList<XmlGlobalParameter*>* getGlobalParameter() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendGlobalParameter(XmlGlobalParameter* item) { m_items.append(item); }

    QString toString() const;

private:
    int m_bank = 0;
};
