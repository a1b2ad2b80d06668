#include "ic/XmlRegisterVariantImpactedBy.h"

#include "ic/IcText_p.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

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
    m_maskString = KivIcText::upperHex(mask);
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

namespace {
const KivParse::ElementInfo kImpactedByInfo {QLatin1String("register_variant_impacted_by"),
    "static XmlRegisterVariantImpactedBy* KIVXmlParser::parseRegisterVariantImpactedBy(QXmlStreamReader*)",
    KivParse::UnknownChild::CouldNotParse};
}

XmlRegisterVariantImpactedBy* KIVXmlParser::parseRegisterVariantImpactedBy(QXmlStreamReader* reader)
{
    using namespace KivParse;
    const QXmlStreamAttributes attributes = reader->attributes();
    // The range ends are read as 32-bit numbers and widened: larger texts read as 0.
    auto* impactedBy = new XmlRegisterVariantImpactedBy(attrUIntAuto(attributes, QLatin1String("address")),
        attrInt(attributes, QLatin1String("shift")), attrText(attributes, QLatin1String("mask")),
        attrUInt(attributes, QLatin1String("range_from")), attrUInt(attributes, QLatin1String("range_to")));
    return parseElement(reader, impactedBy, kImpactedByInfo);
}
