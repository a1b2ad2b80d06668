#include "values/XmlValueChoice.h"

#include "base/ReserveHint_p.h"
#include "text/Ampersand_p.h"

XmlValueChoiceElement::XmlValueChoiceElement(unsigned int value, QString descShort, QString descLong)
    : XmlValueInterface(XmlValueTypeChoiceElement)
    , m_value(value)
    , m_descShort(KivText::escapeAmpersand(descShort))
    , m_descLong(KivText::escapeAmpersand(descLong))
{ }

QString XmlValueChoiceElement::getDescriptionLong() const
{
    return m_descLong.isEmpty() ? m_descShort : m_descLong;
}

QString XmlValueChoiceElement::getStringFromValue(unsigned long long value)
{
    return value == m_value ? m_descShort : QString();
}

QString XmlValueChoiceElement::toString(QString indent)
{
    indent += QLatin1Char('\t');
    return indent + QLatin1String("XmlValueChoiceElement(value: ") + QString::number(m_value)
        + QLatin1String(", desc_short: ") + m_descShort + QLatin1String(", desc_long: ") + m_descLong
        + QLatin1Char(')');
}

XmlValueChoice::XmlValueChoice(unsigned int def, QString unit, QString access)
    : XmlValueInterface(XmlValueTypeChoice)
{
    m_default = def;
    m_unit = unit; // deliberately not bracketed, unlike the numeric kinds
    setAccessAsWritten(access);
}

XmlValueChoice::~XmlValueChoice()
{
    while (!m_elements.isEmpty())
        delete m_elements.takeFirst();
}

void XmlValueChoice::appendElement(XmlValueChoiceElement* element)
{
    if (!element)
        return;
    const long long value = element->getValue();
    if (m_elements.isEmpty()) {
        m_min = value;
        m_max = value;
    } else {
        if (value < m_min)
            m_min = value;
        if (value > m_max)
            m_max = value;
    }
    m_elements.append(element);
}

QString XmlValueChoice::getStringFromValue(unsigned long long value)
{
    for (const XmlValueChoiceElement* element : qAsConst(m_elements)) {
        if (element->getValue() == value)
            return element->getDescription();
    }
    if (m_elements.isEmpty())
        return QStringLiteral("suggest:");
    return QLatin1String("suggest:") + m_elements.last()->getDescription();
}

XmlValueDescriptions XmlValueChoice::getValueDescriptions()
{
    XmlValueDescriptions descriptions;
    for (const XmlValueChoiceElement* element : qAsConst(m_elements))
        descriptions.insert(
            element->getValue(), qMakePair(element->getDescriptionShort(), element->getDescriptionLong()));
    return descriptions;
}

QString XmlValueChoice::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(0, m_elements.size() + 3, indent.size() + 96));
    text += indent;
    text += QLatin1String("XmlValueChoice(def: ") + QString::number(m_default) + QLatin1String(", unit: ") + m_unit
        + QLatin1String(", access: ") + m_accessString + QLatin1Char(')');
    text += QLatin1Char('\n') + indent + QLatin1Char('{');
    for (XmlValueChoiceElement* element : qAsConst(m_elements)) {
        text += QLatin1Char('\n');
        text += element->toString(indent);
    }
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}
