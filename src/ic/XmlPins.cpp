#include "ic/XmlPins.h"

#include "base/ReserveHint_p.h"
#include "ic/XmlPinGroup.h"
#include "text/Html_p.h"
#include "text/Numbers_p.h"

XmlPins::XmlPins(QString packaging)
    : m_packaging(packaging)
{ }

QString XmlPins::getStringFromValue(unsigned long long value) const
{
    return KivText::upperHex(value);
}

QString XmlPins::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(64, m_items.size(), 1024));
    text += indent + QLatin1String("XmlPins(packaging: ") + m_packaging + QLatin1String(")\n") + indent
        + QLatin1Char('{');
    for (const XmlPinGroup* group : m_items)
        text += QLatin1Char('\n') + group->toString(indent);
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlPins::toHtml() const
{
    QString html;
    html.reserve(KivReserve::chars(256, m_items.size(), 2048));
    html += QLatin1String(KivText::kWideTableOpen);
    KivText::appendRow(html, {QStringLiteral("Packaging")});
    KivText::appendRow(html, {m_packaging});
    for (const XmlPinGroup* group : m_items)
        KivText::appendChildRow(html, group->toHtml());
    html += QLatin1String(KivText::kTableClose);
    return html;
}
