#pragma once

#include "kivcore_export.h"

#include <QObject>
#include <QString>

/// The selector of a variant, deleted by the variant that holds it: the variant applies when the bits of the register
/// at `address` selected by the mask, shifted right by `shift`, lie between rangeFrom and rangeTo.
class KIVCORE_EXPORT XmlRegisterVariantImpactedBy : public QObject
{
    Q_OBJECT
public:
    XmlRegisterVariantImpactedBy(
        unsigned int address, int shift, QString mask, unsigned long long rangeFrom, unsigned long long rangeTo);

    unsigned int getAddress() const { return m_address; }
    int getShift() const { return m_shift; }
    void setShift(int shift) { m_shift = shift; }
    unsigned long long getRangeFrom() const { return m_rangeFrom; }
    void setRangeFrom(const unsigned long long& from) { m_rangeFrom = from; }
    unsigned long long getRangeTo() const { return m_rangeTo; }
    void setRangeTo(const unsigned long long& to) { m_rangeTo = to; }
    unsigned long long getMaskValue() const { return m_maskValue; }
    QString getMaskAsString() const { return m_maskString; }
    /// Also rewrites the mask text, in upper-case hexadecimal without prefix.
    void setMaskValue(const unsigned long long& mask);

    QString toString(QString indent) const;

private:
    unsigned int m_address;
    int m_shift;
    unsigned long long m_rangeFrom;
    unsigned long long m_rangeTo;
    QString m_maskString;
    unsigned long long m_maskValue;
};
