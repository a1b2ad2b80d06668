#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class XmlPinGroup;

/// The pins of an IC: its package and its pin groups. Owns the groups.
class KIVCORE_EXPORT XmlPins
{
public:
    explicit XmlPins(QString packaging);
    ~XmlPins();
    Q_DISABLE_COPY(XmlPins)

    QString getPackaging() const { return m_packaging; }
    void setPackaging(QString packaging) { m_packaging = packaging; }
    QList<XmlPinGroup*>* getPinGroups() { return &m_pinGroups; }
    /// Takes ownership; null is ignored.
    void appendPinGroup(XmlPinGroup* group);

    /// Upper-case hexadecimal without prefix.
    QString getStringFromValue(unsigned long long value) const;
    QString toString(QString indent) const;
    QString toHtml() const;

private:
    QString m_packaging;
    QList<XmlPinGroup*> m_pinGroups;
};
