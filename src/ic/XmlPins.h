#pragma once

#include "base/XmlItemContainer.h"
#include "ic/XmlPinGroup.h"
#include "kivcore_export.h"

#include <QList>
#include <QString>

/// The pins of an IC (its package), owning its pin groups and deleting them front to back with itself;
/// deleted by the IC product.
class KIVCORE_EXPORT XmlPins : public XmlItemContainer<XmlPinGroup>
{
public:
    explicit XmlPins(QString packaging);

    QString getPackaging() const { return m_packaging; }
    void setPackaging(QString packaging) { m_packaging = packaging; }
    QList<XmlPinGroup*>* getPinGroups() { return &m_items; }
    /// Takes ownership; null is ignored.
    void appendPinGroup(XmlPinGroup* group) { appendNonNull(group); }

    /// Upper-case hexadecimal without prefix.
    QString getStringFromValue(unsigned long long value) const;
    QString toString(QString indent) const;
    QString toHtml() const;

private:
    QString m_packaging;
};
