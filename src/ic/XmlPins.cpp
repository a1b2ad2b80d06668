#include "ic/XmlPins.h"

#include "base/ReserveHint_p.h"
#include "ic/HtmlTables_p.h"
#include "ic/IcText_p.h"
#include "ic/XmlPinGroup.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlPins::XmlPins(QString packaging)
    : m_packaging(packaging)
{ }

XmlPins::~XmlPins()
{
    qDeleteAll(m_pinGroups);
}

void XmlPins::appendPinGroup(XmlPinGroup* group)
{
    if (group)
        m_pinGroups.append(group);
}

QString XmlPins::getStringFromValue(unsigned long long value) const
{
    return KivIcText::upperHex(value);
}

QString XmlPins::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(64, m_pinGroups.size(), 1024));
    text += indent + QLatin1String("XmlPins(packaging: ") + m_packaging + QLatin1String(")\n") + indent
        + QLatin1Char('{');
    for (const XmlPinGroup* group : m_pinGroups)
        text += QLatin1Char('\n') + group->toString(indent);
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlPins::toHtml() const
{
    QString html;
    html.reserve(KivReserve::chars(256, m_pinGroups.size(), 2048));
    html += QLatin1String(KivHtml::kWideTableOpen);
    KivHtml::appendRow(html, {QStringLiteral("Packaging")});
    KivHtml::appendRow(html, {m_packaging});
    for (const XmlPinGroup* group : m_pinGroups)
        KivHtml::appendChildRow(html, group->toHtml());
    html += QLatin1String(KivHtml::kTableClose);
    return html;
}

namespace {

using namespace KivParse;

const ElementInfo kPinsInfo {
    QLatin1String("pins"), "static XmlPins* KIVXmlParser::parsePins(QXmlStreamReader*)", UnknownChild::CouldNotParse};

const ChildRule<XmlPins> kPinsRules[] = {
    {QLatin1String("pin_group"),
        [](QXmlStreamReader* r, XmlPins* pins) { pins->appendPinGroup(KIVXmlParser::parsePinGroup(r)); }},
};

} // namespace

XmlPins* KIVXmlParser::parsePins(QXmlStreamReader* reader)
{
    auto* pins = new XmlPins(QStringLiteral("TQFP"));
    const QXmlStreamAttributes attributes = reader->attributes();
    if (attributes.hasAttribute(QLatin1String("packaging")))
        pins->setPackaging(attrText(attributes, QLatin1String("packaging")));
    return parseElement(reader, pins, kPinsInfo, kPinsRules);
}
