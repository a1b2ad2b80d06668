#include "values/XmlValueInterface.h"

namespace {

struct AccessLetter
{
    char letter;
    int bit;
};

// In the order of the canonical text, which differs from the bit order.
constexpr AccessLetter kAccessLetters[] = {
    {'R', 1},
    {'W', 2},
    {'C', 16},
    {'I', 32},
    {'D', 64},
    {'E', 4},
    {'A', 128},
    {'X', 8},
};

} // namespace

XmlValueInterface::XmlValueInterface(int type)
    : m_type(type)
    // built from the unit, which is still empty here, so the default format is exactly "%1 "
    , m_formatString(QStringLiteral("%1 "))
{ }

XmlValueInterface::~XmlValueInterface() = default;

QString XmlValueInterface::toLatex(QString indent)
{
    // Deliberately without a row end after the unit: the hand-written manual closes the row itself.
    return latexTable(indent, QLatin1String(""), QString());
}

QString XmlValueInterface::latexTable(const QString& indent, QLatin1String dataRowEnd, const QString& lastRow)
{
    const QString inner = indent + QLatin1Char('\t');
    QString text;
    text.reserve(320 + lastRow.size());
    text += QLatin1Char('\n') + indent + QLatin1String("\\begin{tabular}{|l|l|l|l|}");
    text += QLatin1Char('\n') + inner + QLatin1String("\\hline");
    text += QLatin1Char('\n') + inner + QLatin1String("\\multicolumn{4}{|c|}{\\cellcolor{gray!50}Value: ")
        + getTypeAsString() + QLatin1String("} \\\\ \\hline");
    text += QLatin1Char('\n') + inner + QLatin1String("Min & Max & Default & Unit\\\\ \\hline");
    text += QLatin1Char('\n') + inner + QString::number(m_min) + QLatin1String(" & ") + QString::number(m_max)
        + QLatin1String(" & ") + QString::number(m_default) + QLatin1String(" & ")
        + (m_unit.isEmpty() ? QStringLiteral("-") : m_unit) + dataRowEnd;
    if (!lastRow.isEmpty())
        text += QLatin1Char('\n') + inner + lastRow;
    text += QLatin1Char('\n') + indent + QLatin1String("\\end{tabular}");
    return text;
}

void XmlValueInterface::setNumberFields(long long min, long long max, long long def, int decimals, const QString& unit,
    const QString& access, unsigned int options)
{
    m_min = min;
    m_max = max;
    m_default = def;
    m_decimals = decimals;
    setUnit(unit);
    m_options = options;
    setAccessAsWritten(access);
}

void XmlValueInterface::setAccessAsWritten(const QString& access)
{
    m_accessString = access;
    m_access = accessStringToAccess(access);
}

long long XmlValueInterface::getMin()
{
    return m_min;
}
bool XmlValueInterface::hasMin()
{
    return false;
}
long long XmlValueInterface::getMax()
{
    return m_max;
}
bool XmlValueInterface::hasMax()
{
    return false;
}
long long XmlValueInterface::getDefault()
{
    return m_default;
}
bool XmlValueInterface::hasDefault()
{
    return false;
}
int XmlValueInterface::getDecimals()
{
    return static_cast<int>(m_decimals);
}
bool XmlValueInterface::hasDecimals()
{
    return false;
}
QString XmlValueInterface::getUnit()
{
    return m_unit;
}
bool XmlValueInterface::hasUnit()
{
    return false;
}
unsigned int XmlValueInterface::getOptions()
{
    return m_options;
}
bool XmlValueInterface::hasOptions()
{
    return false;
}
int XmlValueInterface::getAccess()
{
    return m_access;
}
bool XmlValueInterface::hasAccess()
{
    return true;
}
QString XmlValueInterface::getAccessAsString()
{
    return m_accessString;
}

void XmlValueInterface::setAccessString(QString access)
{
    m_access = accessStringToAccess(access);
    m_accessString = accessToAccessString(m_access);
}

XmlValueDescriptions XmlValueInterface::getValueDescriptions()
{
    return {};
}

QString XmlValueInterface::getTypeAsString() const
{
    return getTypeAsString(m_type);
}

QString XmlValueInterface::getTypeAsString(int type)
{
    static const char* const names[] = {"Signed", "Unsigned", "Bool", "Choice", "ChoiceElement", "Register",
        "RegisterField", "Date", "Time", "Version", "ASCII", "Db"};
    if (type < 0 || type >= int(sizeof(names) / sizeof(names[0])))
        return QStringLiteral("tbd");
    return QLatin1String(names[type]);
}

void XmlValueInterface::setUnit(const QString& unit)
{
    m_unit = unit;
    if (!m_unit.isEmpty() && !m_unit.startsWith(QLatin1Char('['))) {
        m_unit.append(QLatin1Char(']'));
        m_unit.prepend(QLatin1Char('['));
    }
}

int XmlValueInterface::accessStringToAccess(QString access)
{
    // One pass over the text: each letter sets its bit, whatever its case (folded as a case-insensitive
    // search folds it), count or position.
    int mask = 0;
    for (const QChar c : qAsConst(access)) {
        const QChar folded = c.toCaseFolded();
        for (const AccessLetter& entry : kAccessLetters) {
            if (folded == QChar::fromLatin1(entry.letter).toCaseFolded()) {
                mask |= entry.bit;
                break;
            }
        }
    }
    return mask;
}

QString XmlValueInterface::accessToAccessString(int access)
{
    QString text;
    for (const AccessLetter& entry : kAccessLetters) {
        if (access & entry.bit)
            text += QLatin1Char(entry.letter);
    }
    return text;
}
