#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlAxisParameter.h"

#include <QString>

/// The axis parameters of one motor axis, owned and deleted front to back with the block; deleted by the
/// module.
class KIVCORE_EXPORT XmlAxisParameters : public XmlItemContainer<XmlAxisParameter>
{
public:
    int getAxis() const { return m_axis; }
    void setAxis(int axis) { m_axis = axis; }
    /// The container's own list.
    QList<XmlAxisParameter*>* getAxisParameter() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendAxisParameter(XmlAxisParameter* item) { m_items.append(item); }

    QString toString() const;

private:
    int m_axis = 0;
};
