#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class XmlPinMapping;

/// The pin map of a board: IC pin to board pin. Owns its mappings.
class KIVCORE_EXPORT XmlPinMap
{
public:
    XmlPinMap() = default;
    ~XmlPinMap();
    Q_DISABLE_COPY(XmlPinMap)

    QList<XmlPinMapping*>* getPinMappings() { return &m_pinMappings; }
    /// Takes ownership; null is ignored.
    void appendPinMapping(XmlPinMapping* mapping);

    QString toString(QString indent) const;
    /// Only the child rows: a pin map has no header and no value row.
    QString toHtml() const;

private:
    QList<XmlPinMapping*> m_pinMappings;
};
