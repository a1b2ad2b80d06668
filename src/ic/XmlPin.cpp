#include "ic/XmlPin.h"
#include "text/Html_p.h"
#include "text/Numbers_p.h"

XmlPin::XmlPin(unsigned int id, QString type, QString name, QString descShort, QString descLong, QString descLow,
    QString descHigh, QString descFloating, QString defaultState)
    : m_id(id)
    , m_type(type)
    , m_name(name)
    , m_descShort(descShort)
    , m_descLong(descLong)
    , m_descLow(descLow)
    , m_descHigh(descHigh)
    , m_descFloating(descFloating)
    , m_defaultState(defaultState)
{ }

QString XmlPin::getStringFromValue(unsigned long long value) const
{
    return KivText::upperHex(value);
}

QString XmlPin::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text = indent + QLatin1String("XmlPin(id: ") + QString::number(m_id) + QLatin1String(", type: ") + m_type
        + QLatin1String(", name: ") + m_name + QLatin1String(", desc_short: ") + m_descShort
        + QLatin1String(", desc_long: ") + m_descLong + QLatin1String(", desc_low: ") + m_descLow
        + QLatin1String(", desc_high: ") + m_descHigh + QLatin1String(", desc_floating: ") + m_descFloating
        + QLatin1String(", default_state: ") + m_defaultState + QLatin1Char(')');
    return text;
}

QString XmlPin::toHtml() const
{
    QString html;
    html.reserve(768);
    html += QLatin1String(KivText::kWideTableOpen);
    KivText::appendRow(html,
        {QStringLiteral("ID"), QStringLiteral("Type"), QStringLiteral("Name"), QStringLiteral("Description short"),
            QStringLiteral("Description long"), QStringLiteral("Description low"), QStringLiteral("Description high"),
            QStringLiteral("Description floating"), QStringLiteral("Default state")});
    KivText::appendRow(html,
        {QString::number(m_id), m_type, m_name, m_descShort, m_descLong, m_descLow, m_descHigh, m_descFloating,
            m_defaultState});
    html += QLatin1String(KivText::kTableClose);
    return html;
}
