#include "ic/XmlValueRegisterField.h"

#include "text/Ampersand_p.h"
#include "text/Html_p.h"
#include "values/XmlValueAlert.h"

namespace {

/// The number of "0" digits in the binary text of `value` ("0" for zero), counted without the text.
int binaryZeroDigits(unsigned long long value)
{
    if (value == 0)
        return 1;
    int digits = 0;
    int ones = 0;
    for (unsigned long long rest = value; rest != 0; rest >>= 1) {
        ++digits;
        ones += int(rest & 1u);
    }
    return digits - ones;
}

} // namespace

XmlValueRegisterField::XmlValueRegisterField(QString name, int shift, QString mask, QString descShort, QString descLong)
    : XmlValueInterface(XmlValueTypeRegisterField)
    , m_name(KivText::replaceAmpersandEscape(name))
    , m_descShort(descShort)
    , m_descLong(descLong)
    , m_shift(shift)
    , m_maskString(mask)
    , m_maskValue(mask.toULongLong(nullptr, 16))
{
    // Zeros below the highest set bit must equal the shift: catches holes and wrong shifts alike.
    // A mask of 0 is written "0" and so passes with shift 1 only; that follows from the rule and is kept.
    m_errorMask = binaryZeroDigits(m_maskValue) != shift;
}

XmlValueRegisterField::~XmlValueRegisterField()
{
    delete m_value;
}

QString XmlValueRegisterField::getDescriptionLong() const
{
    return m_descLong.isEmpty() ? m_descShort : m_descLong;
}

void XmlValueRegisterField::setValue(XmlValueInterface* value)
{
    m_value = value;
    if (value) {
        m_min = value->getMin();
        m_max = value->getMax();
    }
}

int XmlValueRegisterField::getAccess()
{
    return m_value ? m_value->getAccess() : 0;
}

QString XmlValueRegisterField::getAccessAsString()
{
    return m_value ? m_value->getAccessAsString() : QString();
}

QString XmlValueRegisterField::getStringFromValue(unsigned long long)
{
    return QStringLiteral("unknown");
}

void XmlValueRegisterField::addAlert(const XmlValueAlert* alert)
{
    m_alerts.append(alert);
}

void XmlValueRegisterField::removeAlert(const XmlValueAlert* alert)
{
    m_alerts.removeAll(alert);
}

int XmlValueRegisterField::getCastedRegisterFieldValue(XmlValueRegisterField* field, int registerValue)
{
    if (!field || field->m_shift < 0 || field->m_shift > 31)
        return 0;
    const int shift = field->m_shift;
    const quint32 masked = quint32(registerValue) & quint32(field->m_maskValue);
    const int raw = int(masked) >> shift; // arithmetic: bit 31 fills from the left
    if ((field->m_maskValue >> shift) == 65535 && field->m_value) {
        if (field->m_value->getType() == XmlValueTypeSigned)
            return qint16(quint16(raw));
        if (field->m_value->getType() == XmlValueTypeUnsigned)
            return raw & 0xFFFF;
    }
    return raw;
}

QString XmlValueRegisterField::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(256);
    text += indent + QLatin1String("XmlValueRegisterField(name: ") + m_name + QLatin1String(", shift: ")
        + QString::number(m_shift) + QLatin1String(", maskString: ") + m_maskString + QLatin1String(", maskValue: ")
        + QString::number(m_maskValue) + QLatin1String(", desc_short: ") + m_descShort + QLatin1String(", desc_long: ")
        + m_descLong + QLatin1String(")\n") + indent + QLatin1Char('{');
    if (m_value) {
        text += QLatin1Char('\n');
        text += m_value->toString(indent);
    }
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlValueRegisterField::toHtml()
{
    QString html;
    html.reserve(512);
    html += QLatin1String(KivText::kWideTableOpen);
    html += QLatin1String("\n<tr>\n<td width=\"20%\">Name:</td>\n<td>Description:</td>"
                          "\n<td width=\"15%\">Shift:</td>\n<td width=\"15%\">Mask:</td>\n</tr>");
    KivText::appendRow(html,
        {m_name, m_descShort, m_descLong, QString::number(m_shift),
            QString(m_maskString + QLatin1Char('(') + QString::number(m_maskValue) + QLatin1Char(')'))});
    html += QLatin1String("\n<tr>\n<td colspan=\"4\">");
    if (m_value)
        html += m_value->toString(QString());
    html += QLatin1String("</td>\n</tr>");
    html += QLatin1String(KivText::kTableClose);
    return html;
}
