#include "ic/XmlRegisterVariantImpacts.h"

#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

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

namespace {
const KivParse::ElementInfo kImpactsInfo {QLatin1String("register_variant_impacts"),
    "static XmlRegisterVariantImpacts* KIVXmlParser::parseRegisterVariantImpacts(QXmlStreamReader*)",
    KivParse::UnknownChild::CouldNotParse};
}

XmlRegisterVariantImpacts* KIVXmlParser::parseRegisterVariantImpacts(QXmlStreamReader* reader)
{
    auto* impacts
        = new XmlRegisterVariantImpacts(KivParse::attrUIntAuto(reader->attributes(), QLatin1String("address")));
    return KivParse::parseElement(reader, impacts, kImpactsInfo);
}
