#include "ic/XmlPinGroup.h"

#include "base/ReserveHint_p.h"
#include "ic/HtmlTables_p.h"
#include "ic/IcText_p.h"
#include "ic/XmlPin.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlPinGroup::XmlPinGroup(unsigned int id, QString name, QString description, QString states, QString descStates)
    : m_id(id)
    , m_name(name)
    , m_description(description)
    , m_states(states)
    , m_descStates(descStates)
{ }

XmlPinGroup::~XmlPinGroup()
{
    qDeleteAll(m_pins);
}

void XmlPinGroup::appendPin(XmlPin* pin)
{
    if (pin)
        m_pins.append(pin);
}

QString XmlPinGroup::getStringFromValue(unsigned long long value) const
{
    return KivIcText::upperHex(value);
}

QString XmlPinGroup::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(128, m_pins.size(), 256));
    text += indent + QLatin1String("XmlPinGroup(id: ") + QString::number(m_id) + QLatin1String(", name: ") + m_name
        + QLatin1String(", description: ") + m_description + QLatin1String(", states: ") + m_states
        + QLatin1String(", desc_states: ") + m_descStates + QLatin1String(")\n") + indent + QLatin1Char('{');
    for (const XmlPin* pin : m_pins)
        text += QLatin1Char('\n') + pin->toString(indent);
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlPinGroup::toHtml() const
{
    QString html;
    html.reserve(KivReserve::chars(512, m_pins.size(), 1024));
    html += QLatin1String(KivHtml::kWideTableOpen);
    KivHtml::appendRow(html,
        {QStringLiteral("ID"), QStringLiteral("Name"), QStringLiteral("Description"), QStringLiteral("States"),
            QStringLiteral("Description states")});
    KivHtml::appendRow(html, {QString::number(m_id), m_name, m_description, m_states, m_descStates});
    for (const XmlPin* pin : m_pins)
        KivHtml::appendChildRow(html, pin->toHtml());
    html += QLatin1String(KivHtml::kTableClose);
    return html;
}

namespace {

using namespace KivParse;

const ElementInfo kPinGroupInfo {QLatin1String("pin_group"),
    "static XmlPinGroup* KIVXmlParser::parsePinGroup(QXmlStreamReader*)", UnknownChild::CouldNotParse};

const ChildRule<XmlPinGroup> kPinGroupRules[] = {
    {QLatin1String("pin"),
        [](QXmlStreamReader* r, XmlPinGroup* group) { group->appendPin(KIVXmlParser::parsePin(r)); }},
};

} // namespace

XmlPinGroup* KIVXmlParser::parsePinGroup(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* group
        = new XmlPinGroup(attrUInt(attributes, QLatin1String("id")), attrText(attributes, QLatin1String("name")),
            attrText(attributes, QLatin1String("description")), QString(), QString());
    if (attributes.hasAttribute(QLatin1String("states")))
        group->setStates(attrText(attributes, QLatin1String("states")));
    // Deliberately kept: "desc_states" goes to the states too and the desc states stay empty.
    if (attributes.hasAttribute(QLatin1String("desc_states")))
        group->setStates(attrText(attributes, QLatin1String("desc_states")));
    return parseElement(reader, group, kPinGroupInfo, kPinGroupRules);
}
