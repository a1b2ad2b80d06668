#include "ic/XmlPinMap.h"

#include "base/ReserveHint_p.h"
#include "ic/HtmlTables_p.h"
#include "ic/XmlPinMapping.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlPinMapping::XmlPinMapping(unsigned int pinIc, unsigned int pinBoard)
    : m_pinIc(pinIc)
    , m_pinBoard(pinBoard)
{ }

QString XmlPinMapping::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text = indent + QLatin1String("XmlPinMapping(pin_ic: ") + QString::number(m_pinIc)
        + QLatin1String(", pin_board: ") + QString::number(m_pinBoard) + QLatin1Char(')');
    return text;
}

QString XmlPinMapping::toHtml() const
{
    QString html = QLatin1String(KivHtml::kWideTableOpen);
    KivHtml::appendRow(html, {QStringLiteral("Pin IC"), QStringLiteral("Pin Board")});
    KivHtml::appendRow(html, {QString::number(m_pinIc), QString::number(m_pinBoard)});
    html += QLatin1String(KivHtml::kTableClose);
    return html;
}

XmlPinMap::~XmlPinMap()
{
    qDeleteAll(m_pinMappings);
}

void XmlPinMap::appendPinMapping(XmlPinMapping* mapping)
{
    if (mapping)
        m_pinMappings.append(mapping);
}

QString XmlPinMap::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(64, m_pinMappings.size(), 48));
    text += indent + QLatin1String("XmlPinMap()\n") + indent + QLatin1Char('{');
    for (const XmlPinMapping* mapping : m_pinMappings) {
        text += QLatin1Char('\n');
        text += mapping->toString(indent);
    }
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlPinMap::toHtml() const
{
    QString html = QLatin1String(KivHtml::kWideTableOpen);
    for (const XmlPinMapping* mapping : m_pinMappings)
        KivHtml::appendChildRow(html, mapping->toHtml());
    html += QLatin1String(KivHtml::kTableClose);
    return html;
}

namespace {

using namespace KivParse;

const ElementInfo kPinMapInfo {QLatin1String("pin_map"),
    "static XmlPinMap* KIVXmlParser::parsePinMap(QXmlStreamReader*)", UnknownChild::CouldNotParse};

const ChildRule<XmlPinMap> kPinMapRules[] = {
    {QLatin1String("pin_mapping"),
        [](QXmlStreamReader* r, XmlPinMap* map) { map->appendPinMapping(KIVXmlParser::parsePinMapping(r)); }},
};

const ElementInfo kPinMappingInfo {QLatin1String("pin_mapping"),
    "static XmlPinMapping* KIVXmlParser::parsePinMapping(QXmlStreamReader*)", UnknownChild::CouldNotParse};

} // namespace

XmlPinMap* KIVXmlParser::parsePinMap(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlPinMap(), kPinMapInfo, kPinMapRules);
}

XmlPinMapping* KIVXmlParser::parsePinMapping(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* mapping = new XmlPinMapping(
        attrUInt(attributes, QLatin1String("pin_ic")), attrUInt(attributes, QLatin1String("pin_board")));
    return parseElement(reader, mapping, kPinMappingInfo);
}
