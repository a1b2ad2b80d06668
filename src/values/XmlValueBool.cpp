#include "values/XmlValueBool.h"

XmlValueBool::XmlValueBool(bool def, QString access, QString descFalseShort, QString descTrueShort,
    QString descFalseLong, QString descTrueLong)
    : XmlValueInterface(XmlValueTypeBool)
    , m_descFalseShort(descFalseShort)
    , m_descTrueShort(descTrueShort)
    , m_descFalseLong(descFalseLong)
    , m_descTrueLong(descTrueLong)
{
    m_max = 1;
    m_default = def ? 1 : 0;
    setAccessAsWritten(access);
}

QString XmlValueBool::getStringFromValue(unsigned long long value)
{
    return value == 0 ? QStringLiteral("low") : QStringLiteral("high");
}

XmlValueDescriptions XmlValueBool::getValueDescriptions()
{
    XmlValueDescriptions descriptions;
    descriptions.insert(0, qMakePair(m_descFalseShort, m_descFalseLong));
    descriptions.insert(1, qMakePair(m_descTrueShort, m_descTrueLong));
    return descriptions;
}

QString XmlValueBool::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(indent.size() + 128 + m_descFalseShort.size() + m_descTrueShort.size() + m_descFalseLong.size()
        + m_descTrueLong.size());
    text += indent;
    text += QLatin1String("XmlValueBool(desc_short_false: ") + m_descFalseShort + QLatin1String(", desc_short_true: ")
        + m_descTrueShort + QLatin1String(", desc_long_false: ") + m_descFalseLong + QLatin1String(", desc_long_true: ")
        + m_descTrueLong + QLatin1String(", def: ") + (m_default == 0 ? QLatin1String("false") : QLatin1String("true"))
        + QLatin1String(", access: ") + m_accessString + QLatin1Char(')');
    return text;
}
