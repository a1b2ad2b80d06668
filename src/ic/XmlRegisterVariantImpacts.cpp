#include "ic/XmlRegisterVariantImpacts.h"

XmlRegisterVariantImpacts::XmlRegisterVariantImpacts(unsigned int address)
    : m_address(address)
{ }

QString XmlRegisterVariantImpacts::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text
        = indent + QLatin1String("XmlRegisterVariantImpacts(address: ") + QString::number(m_address) + QLatin1Char(')');
    return text;
}
