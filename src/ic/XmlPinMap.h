#pragma once

#include "base/XmlItemContainer.h"
#include "ic/XmlPinMapping.h"
#include "kivcore_export.h"

#include <QList>
#include <QString>

/// The pin map of a board (IC pin to board pin), owning and deleting its mappings. A module does not delete
/// its pin map: KIVXmlParser::deleteProduct does.
class KIVCORE_EXPORT XmlPinMap : public XmlItemContainer<XmlPinMapping>
{
public:
    QList<XmlPinMapping*>* getPinMappings() { return &m_items; }
    /// Takes ownership; null is ignored.
    void appendPinMapping(XmlPinMapping* mapping) { appendNonNull(mapping); }

    QString toString(QString indent) const;
    /// Only the child rows: a pin map has no header and no value row.
    QString toHtml() const;
};
