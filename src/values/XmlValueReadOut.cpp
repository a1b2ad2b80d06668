#include "values/XmlValueASCII.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueVersion.h"

namespace {

/// Every nibble of `value` from bit `fromNibble` down to `toNibble` as its own decimal number (10 to 15
/// take two characters), most significant first.
void appendNibbles(QString& text, quint32 value, int fromNibble, int toNibble)
{
    for (int nibble = fromNibble; nibble >= toNibble; --nibble)
        text += QString::number((value >> (4 * nibble)) & 0xFu);
}

/// Groups of nibbles from the most significant down, each nibble as its own decimal number, joined by
/// `separator`: the date is 4-2-2 nibbles from nibble 7, the time 2:2:2 from nibble 5.
QString nibbleGroups(quint32 value, int topNibble, std::initializer_list<int> sizes, QLatin1Char separator)
{
    QString text;
    text.reserve(16);
    int nibble = topNibble;
    for (const int size : sizes) {
        if (nibble != topNibble)
            text += separator;
        appendNibbles(text, value, nibble, nibble - size + 1);
        nibble -= size;
    }
    return text;
}

/// The nibble text of one half of a version, read again as a decimal number, which drops leading zeros.
QString versionHalf(quint32 value, int fromNibble)
{
    QString digits;
    appendNibbles(digits, value, fromNibble, fromNibble - 3);
    return QString::number(digits.toULongLong());
}

} // namespace

XmlValueReadOut::XmlValueReadOut(
    int type, long long max, const char* className, QString access, QString descShort, QString descLong)
    : XmlValueInterface(type)
    , m_className(className)
    , m_descShort(descShort)
    , m_descLong(descLong)
{
    m_max = max;
    setAccessAsWritten(access);
}

XmlValueDescriptions XmlValueReadOut::getValueDescriptions()
{
    XmlValueDescriptions descriptions;
    descriptions.insert(0, qMakePair(m_descShort, m_descLong));
    return descriptions;
}

QString XmlValueReadOut::toString(QString indent)
{
    indent += QLatin1Char('\t');
    return indent + QLatin1String(m_className) + QLatin1String("(desc_short: ") + m_descShort
        + QLatin1String(", desc_long: ") + m_descLong + QLatin1String(", access: ") + m_accessString + QLatin1Char(')');
}

QString XmlValueReadOut::toLatex(QString indent)
{
    return latexTable(indent, QLatin1String(" \\\\ \\hline"),
        QLatin1String("\\multicolumn{4}{|c|}{") + m_descShort + QLatin1Char('}'));
}

XmlValueDate::XmlValueDate(QString access, QString descShort, QString descLong)
    : XmlValueReadOut(XmlValueTypeDate, 4294967295LL, "XmlValueDate", access, descShort, descLong)
{ }

QString XmlValueDate::getStringFromValue(unsigned long long value)
{
    return nibbleGroups(quint32(value), 7, {4, 2, 2}, QLatin1Char('-'));
}

XmlValueTime::XmlValueTime(QString access, QString descShort, QString descLong)
    : XmlValueReadOut(XmlValueTypeTime, 16777215LL, "XmlValueTime", access, descShort, descLong)
{ }

QString XmlValueTime::getStringFromValue(unsigned long long value)
{
    return nibbleGroups(quint32(value), 5, {2, 2, 2}, QLatin1Char(':'));
}

XmlValueVersion::XmlValueVersion(QString access, QString descShort, QString descLong)
    : XmlValueReadOut(XmlValueTypeVersion, 4294967295LL, "XmlValueVersion", access, descShort, descLong)
{ }

QString XmlValueVersion::getStringFromValue(unsigned long long value)
{
    const quint32 bits = quint32(value);
    return versionHalf(bits, 7) + QLatin1Char('.') + versionHalf(bits, 3);
}

XmlValueASCII::XmlValueASCII(QString access, QString descShort, QString descLong)
    : XmlValueReadOut(XmlValueTypeASCII, 4294967295LL, "XmlValueASCII", access, descShort, descLong)
{ }

QString XmlValueASCII::getStringFromValue(unsigned long long value)
{
    QString text;
    text.reserve(8);
    // Most significant byte first; zero bytes are left out, anything unprintable shows as "?".
    for (int shift = 56; shift >= 0; shift -= 8) {
        const unsigned int byte = (value >> shift) & 0xFFu;
        if (byte == 0)
            continue;
        text += (byte >= 33 && byte <= 127) ? QLatin1Char(char(byte)) : QLatin1Char('?');
    }
    return text;
}
