#include "ic/XmlRegisterVariantImpactedBy.h"
#include "text/Numbers_p.h"

XmlRegisterVariantImpactedBy::XmlRegisterVariantImpactedBy(
    unsigned int address, int shift, QString mask, unsigned long long rangeFrom, unsigned long long rangeTo)
    : m_address(address)
    , m_shift(shift)
    , m_rangeFrom(rangeFrom)
    , m_rangeTo(rangeTo)
    , m_maskString(mask)
    , m_maskValue(mask.toULongLong(nullptr, 16))
{ }

void XmlRegisterVariantImpactedBy::setMaskValue(const unsigned long long& mask)
{
    m_maskValue = mask;
    m_maskString = KivText::upperHex(mask);
}

QString XmlRegisterVariantImpactedBy::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text = indent + QLatin1String("XmlRegisterVariantImpactedBy(address: ") + QString::number(m_address)
        + QLatin1String(", shift: ") + QString::number(m_shift) + QLatin1String(", mask: ") + m_maskString
        + QLatin1String(", rangeFrom: ") + QString::number(m_rangeFrom) + QLatin1String(", rangeTo: ")
        + QString::number(m_rangeTo) + QLatin1Char(')');
    return text;
}
