#include "values/XmlValueSigned.h"
#include "values/XmlValueUnsigned.h"

namespace {

/// Shortest of fixed and exponent notation with at most 6 significant digits: 1, 0.5, 1e+06.
QString formatFactor(float factor)
{
    return QString::number(double(factor), 'g', 6);
}

} // namespace

XmlValueSigned::XmlValueSigned(
    int min, int max, int def, int decimals, QString unit, QString access, unsigned int options)
    : XmlValueInterface(XmlValueTypeSigned)
{
    // Sign- or zero-extended by the parameter types.
    setNumberFields(min, max, def, decimals, unit, access, options);
}

QString XmlValueSigned::getStringFromValue(unsigned long long value)
{
    return QString::number(static_cast<long long>(value));
}

QString XmlValueSigned::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(indent.size() + 96 + m_unit.size() + m_accessString.size());
    text += indent;
    text += QLatin1String("XmlValueSigned(min: ") + QString::number(m_min) + QLatin1String(", max: ")
        + QString::number(m_max) + QLatin1String(", def: ") + QString::number(m_default) + QLatin1String(", decimals: ")
        + QString::number(m_decimals) + QLatin1String(", unit: ") + m_unit + QLatin1String(", access: ")
        + m_accessString + QLatin1String(", options: ");
    text += QChar(ushort(m_options & 0xFFFFu));
    text += QLatin1Char(')');
    return text;
}

XmlValueUnsigned::XmlValueUnsigned(unsigned int min, unsigned int max, unsigned int def, int decimals, QString unit,
    QString access, unsigned int options)
    : XmlValueInterface(XmlValueTypeUnsigned)
{
    // Sign- or zero-extended by the parameter types.
    setNumberFields(min, max, def, decimals, unit, access, options);
}

QString XmlValueUnsigned::getStringFromValue(unsigned long long value)
{
    return QString::number(value);
}

QString XmlValueUnsigned::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(indent.size() + 160 + m_unit.size() + m_accessString.size() + m_formatString.size());
    text += indent;
    text += QLatin1String("XmlValueUnsigned(min: ") + QString::number(m_min) + QLatin1String(", max: ")
        + QString::number(m_max) + QLatin1String(", def: ") + QString::number(m_default) + QLatin1String(", decimals: ")
        + QString::number(m_decimals) + QLatin1String(", unit: ") + m_unit + QLatin1String(", formatString: ")
        + m_formatString + QLatin1String(", formatMul: ") + formatFactor(m_formatMul) + QLatin1String(", formatDiv: ")
        + formatFactor(m_formatDiv) + QLatin1String(", access: ") + m_accessString + QLatin1String(", options: ")
        + QString::number(m_options) + QLatin1Char(')');
    return text;
}
