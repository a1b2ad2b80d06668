#pragma once

#include <QList>
#include <QtGlobal>

/// Common part of the models' item containers (the module's axis-parameter blocks, global banks, inputs,
/// outputs, interrupts, coordinates; the IC's pins, pin groups and pin maps): a list of owned items,
/// deleted front to back with the container.
template<typename Item> class XmlItemContainer
{
public:
    XmlItemContainer() = default;
    ~XmlItemContainer() { qDeleteAll(m_items); }
    Q_DISABLE_COPY(XmlItemContainer)

protected:
    /// For the containers that ignore a null item rather than keep it.
    void appendNonNull(Item* item)
    {
        if (item)
            m_items.append(item);
    }

    QList<Item*> m_items;
};
