#include "ic/XmlPinGroup.h"

#include "base/ReserveHint_p.h"
#include "ic/XmlPin.h"
#include "text/Html_p.h"
#include "text/Numbers_p.h"

XmlPinGroup::XmlPinGroup(unsigned int id, QString name, QString description, QString states, QString descStates)
    : m_id(id)
    , m_name(name)
    , m_description(description)
    , m_states(states)
    , m_descStates(descStates)
{ }

QString XmlPinGroup::getStringFromValue(unsigned long long value) const
{
    return KivText::upperHex(value);
}

QString XmlPinGroup::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(128, m_items.size(), 256));
    text += indent + QLatin1String("XmlPinGroup(id: ") + QString::number(m_id) + QLatin1String(", name: ") + m_name
        + QLatin1String(", description: ") + m_description + QLatin1String(", states: ") + m_states
        + QLatin1String(", desc_states: ") + m_descStates + QLatin1String(")\n") + indent + QLatin1Char('{');
    for (const XmlPin* pin : m_items)
        text += QLatin1Char('\n') + pin->toString(indent);
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlPinGroup::toHtml() const
{
    QString html;
    html.reserve(KivReserve::chars(512, m_items.size(), 1024));
    html += QLatin1String(KivText::kWideTableOpen);
    KivText::appendRow(html,
        {QStringLiteral("ID"), QStringLiteral("Name"), QStringLiteral("Description"), QStringLiteral("States"),
            QStringLiteral("Description states")});
    KivText::appendRow(html, {QString::number(m_id), m_name, m_description, m_states, m_descStates});
    for (const XmlPin* pin : m_items)
        KivText::appendChildRow(html, pin->toHtml());
    html += QLatin1String(KivText::kTableClose);
    return html;
}
