#include "ic/XmlPinMap.h"

#include "base/ReserveHint_p.h"
#include "ic/XmlPinMapping.h"
#include "text/Html_p.h"

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
    QString html = QLatin1String(KivText::kWideTableOpen);
    KivText::appendRow(html, {QStringLiteral("Pin IC"), QStringLiteral("Pin Board")});
    KivText::appendRow(html, {QString::number(m_pinIc), QString::number(m_pinBoard)});
    html += QLatin1String(KivText::kTableClose);
    return html;
}

QString XmlPinMap::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(64, m_items.size(), 48));
    text += indent + QLatin1String("XmlPinMap()\n") + indent + QLatin1Char('{');
    for (const XmlPinMapping* mapping : m_items) {
        text += QLatin1Char('\n');
        text += mapping->toString(indent);
    }
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlPinMap::toHtml() const
{
    QString html = QLatin1String(KivText::kWideTableOpen);
    for (const XmlPinMapping* mapping : m_items)
        KivText::appendChildRow(html, mapping->toHtml());
    html += QLatin1String(KivText::kTableClose);
    return html;
}
