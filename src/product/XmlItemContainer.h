#pragma once

#include <QList>
#include <QtGlobal>

/// Common part of the module's item containers (axis-parameter blocks, global banks, inputs, outputs,
/// interrupts, coordinates): a list of owned items, deleted front to back with the container.
template<typename Item> class XmlItemContainer
{
public:
    XmlItemContainer() = default;
    ~XmlItemContainer() { qDeleteAll(m_items); }
    Q_DISABLE_COPY(XmlItemContainer)

protected:
    QList<Item*> m_items;
};
