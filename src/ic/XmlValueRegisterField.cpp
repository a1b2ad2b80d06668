#include "ic/XmlValueRegisterField.h"

#include "ic/HtmlTables_p.h"
#include "ic/IcText_p.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueUnsigned.h"
#include "values/XmlValueVersion.h"

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
    , m_name(KivIcText::replaceAmpersandEscape(name))
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
    html += QLatin1String(KivHtml::kWideTableOpen);
    html += QLatin1String("\n<tr>\n<td width=\"20%\">Name:</td>\n<td>Description:</td>"
                          "\n<td width=\"15%\">Shift:</td>\n<td width=\"15%\">Mask:</td>\n</tr>");
    KivHtml::appendRow(html,
        {m_name, m_descShort, m_descLong, QString::number(m_shift),
            QString(m_maskString + QLatin1Char('(') + QString::number(m_maskValue) + QLatin1Char(')'))});
    html += QLatin1String("\n<tr>\n<td colspan=\"4\">");
    if (m_value)
        html += m_value->toString(QString());
    html += QLatin1String("</td>\n</tr>");
    html += QLatin1String(KivHtml::kTableClose);
    return html;
}

namespace {

using namespace KivParse;

const ElementInfo kFieldInfo {QLatin1String("value_register_field"),
    "static XmlValueRegisterField* KIVXmlParser::parseValueRegisterField(QXmlStreamReader*)",
    UnknownChild::CouldNotParse};

// setValue keeps a replaced descriptor alive; nothing outside the parser can reach it, so it goes here.
template<typename V, V* (*parse)(QXmlStreamReader*)>
void applyValue(QXmlStreamReader* reader, XmlValueRegisterField* field)
{
    XmlValueInterface* previous = field->getValue();
    replaceAndFree(previous, [&] { field->setValue(parse(reader)); });
}

// The field does not own its alerts; alerts read from a file are made QObject children of the field so
// that they go with it.
void applyAlert(QXmlStreamReader* reader, XmlValueRegisterField* field)
{
    XmlValueAlert* alert = KIVXmlParser::parseValueAlert(reader);
    if (alert)
        alert->setParent(field);
    field->addAlert(alert);
}

const ChildRule<XmlValueRegisterField> kFieldRules[] = {
    {QLatin1String("value_signed"), applyValue<XmlValueSigned, &KIVXmlParser::parseValueSigned>},
    {QLatin1String("value_unsigned"), applyValue<XmlValueUnsigned, &KIVXmlParser::parseValueUnsigned>},
    {QLatin1String("value_bool"), applyValue<XmlValueBool, &KIVXmlParser::parseValueBool>},
    {QLatin1String("value_choice"), applyValue<XmlValueChoice, &KIVXmlParser::parseValueChoice>},
    {QLatin1String("value_date"), applyValue<XmlValueDate, &KIVXmlParser::parseValueDate>},
    {QLatin1String("value_time"), applyValue<XmlValueTime, &KIVXmlParser::parseValueTime>},
    {QLatin1String("value_version"), applyValue<XmlValueVersion, &KIVXmlParser::parseValueVersion>},
    {QLatin1String("value_ascii"), applyValue<XmlValueASCII, &KIVXmlParser::parseValueASCII>},
    {QLatin1String("value_alert"), applyAlert},
};

} // namespace

XmlValueRegisterField* KIVXmlParser::parseValueRegisterField(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    QString descShort = attrText(attributes, QLatin1String("desc_short"));
    replaceUnicode(descShort);
    // An absent "desc_long" stays a null string.
    QString descLong;
    if (attributes.hasAttribute(QLatin1String("desc_long"))) {
        descLong = attrText(attributes, QLatin1String("desc_long"));
        replaceUnicode(descLong);
    }
    auto* field = new XmlValueRegisterField(attrText(attributes, QLatin1String("name")),
        attrInt(attributes, QLatin1String("shift")), attrText(attributes, QLatin1String("mask")), descShort, descLong);
    return parseElement(reader, field, kFieldInfo, kFieldRules);
}
