// The register documentation of an IC product: register map, defaults table and overviews.

#include "ic/XmlProductIC.h"

#include "base/BasicTools.h"
#include "base/ReserveHint_p.h"
#include "ic/XmlGroup.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "text/Latex_p.h"

namespace {

const QLatin1String kUnderscoreBreak("\n\\renewcommand\\_{\\textunderscore\\allowbreak}");
const QLatin1String kRegisterLabel(" \\phantomsection \\label{REGISTER:");
const QLatin1String kFieldLabel(" \\phantomsection \\label{REGISTER-FIELD:");

struct BitRange
{
    int hi = 0;
    int lo = 0;
    int width() const { return hi - lo + 1; }
};

// The unbroken run of set bits that starts at the highest set bit of the low 32 bits; bits below a gap
// are ignored.
BitRange bitRange(unsigned long long mask)
{
    const quint32 bits = quint32(mask);
    BitRange range;
    int bit = 31;
    while (bit >= 0 && !(bits & (1u << bit)))
        --bit;
    if (bit < 0)
        return range;
    range.hi = bit;
    while (bit > 0 && (bits & (1u << (bit - 1))))
        --bit;
    range.lo = bit;
    return range;
}

// Short description first, then one "value: text" line per described value in ascending order.
QStringList descriptionLines(XmlValueRegisterField* field, XmlValueInterface* value)
{
    QStringList lines {field->getDescription()};
    if (value) {
        const XmlValueDescriptions descriptions = value->getValueDescriptions();
        for (auto it = descriptions.constBegin(); it != descriptions.constEnd(); ++it)
            lines.append(QString::number(it.key()) + QStringLiteral(": ") + it.value().first);
    }
    return lines;
}

// Plain mode runs the lines together in one cell (kept: the manuals were set that way); listed mode
// starts a new row in the last column for each further line.
void appendLines(QString& text, const QStringList& lines, bool listed, QLatin1String separator)
{
    for (int i = 0; i < lines.size(); ++i) {
        if (lines.at(i).isEmpty())
            continue;
        text += lines.at(i);
        if (listed && i + 1 < lines.size())
            text += separator;
    }
}

void appendMapField(QString& text, XmlValueRegisterField* field)
{
    XmlValueInterface* value = field->getValue();
    const BitRange range = bitRange(field->getMaskValue());
    text += QLatin1String(" & ") + KivText::latexDisplayName(field->getName()) + kFieldLabel
        + KivText::latexLabelName(field->getName()) + QLatin1String("} & ");
    bool listed = false;
    if (value) {
        const QString type = value->getTypeAsString();
        const QString bits = QString::number(range.width()) + QLatin1Char('(') + QString::number(range.hi)
            + QLatin1Char(':') + QString::number(range.lo) + QLatin1String(") & ");
        if (type == QLatin1String("Signed")) {
            text += QLatin1Char('s') + bits;
        } else if (type == QLatin1String("Bool")) {
            text += QLatin1String("bit(") + QString::number(range.hi) + QLatin1String(") & ");
            listed = true;
        } else {
            text += QLatin1Char('u') + bits;
            listed = type == QLatin1String("Choice");
        }
    } else {
        text += QLatin1String(" & "); // no descriptor: the data type cell stays empty
    }
    QStringList lines = descriptionLines(field, value);
    for (QString& line : lines)
        line = KivText::escapeLatexMapLine(line);
    appendLines(text, lines, listed, QLatin1String("\\\\ & & & "));
    text += QLatin1String(" \\\\");
}

QString hexNum(unsigned long long value, int digits)
{
    QString text
        = QLatin1String("0x\\hexnum{") + BasicTools::iToHex(quint64(value), digits, QString()) + QLatin1Char('}');
    return text;
}

QString signedNumber(long long value)
{
    if (value >= 0)
        return QString::number(value);
    QString text = QLatin1String("$-$") + QString::number(-static_cast<unsigned long long>(value));
    return text;
}

// The register's power-on value as its first layout composes it from the fields' defaults.
bool composedDefault(XmlValueRegister* reg, unsigned long long* result)
{
    const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
    if (variants.isEmpty())
        return false;
    bool any = false;
    unsigned long long composed = 0;
    for (XmlValueRegisterField* field : qAsConst(*variants.first()->getRegisterFields())) {
        XmlValueInterface* value = field->getValue();
        if (!value || !value->hasDefault() || field->getShift() < 0 || field->getShift() > 63)
            continue;
        composed |= (static_cast<unsigned long long>(value->getDefault()) << field->getShift()) & field->getMaskValue();
        any = true;
    }
    *result = composed;
    return any;
}

void appendDefaultsField(QString& text, XmlValueRegisterField* field)
{
    XmlValueInterface* value = field->getValue();
    const bool isSigned = value && value->getType() == XmlValueTypeSigned;
    const auto number = [isSigned](long long v) {
        return isSigned ? signedNumber(v) : QString::number(static_cast<unsigned long long>(v));
    };
    text += QLatin1Char('\n') + KivText::escapeLatex(field->getAccessAsString()) + QLatin1String(" & & \\hspace{1em}")
        + KivText::escapeLatex(field->getName()) + kFieldLabel + KivText::latexLabelName(field->getName())
        + QLatin1String("} & ");
    if (value) {
        if (value->hasDefault())
            text += number(value->getDefault());
        text += QLatin1String(" & ");
        if (value->hasMin())
            text += number(value->getMin());
        text += QLatin1String(" & ");
        if (value->hasMax())
            text += number(value->getMax());
        text += QLatin1String(" & ");
    } else {
        text += QLatin1String(" &  &  & ");
    }
    QStringList lines = descriptionLines(field, value);
    if (value && value->hasUnit() && !value->getUnit().isEmpty())
        lines.first() += (lines.first().isEmpty() ? QString() : QStringLiteral(" ")) + value->getUnit();
    for (QString& line : lines)
        line = KivText::escapeLatex(line);
    appendLines(text, lines, true, QLatin1String("\\\\ & & & & & & "));
    text += QLatin1String(" \\\\");
}

void appendOverviewRows(QString& text, XmlRegisterSet* set, const XmlGroup* group)
{
    if (!set)
        return;
    for (XmlValueRegister* reg : qAsConst(*set->getRegisters())) {
        if (group && reg->getGroupID() != group->getID())
            continue;
        text += QLatin1String("\n\\hexnum{") + BasicTools::iToHex(quint32(reg->address()), 2, QStringLiteral("0x"))
            + QLatin1String("} & ") + KivText::latexDisplayName(reg->name()) + QLatin1String(" & ")
            + reg->getAccessAsString() + QLatin1String(" \\\\ \\hline");
    }
}

int registerCount(XmlRegisterSet* set)
{
    return set ? set->getRegisters()->size() : 0;
}

/// Hexadecimal digits of a register's default: values are 64 bits, so a wider register is shown as 64
/// bits (a size of two billion would otherwise pad one number to half a gigabyte).
int defaultDigits(int registerSize)
{
    return qMax(2, (qMin(registerSize, 64) + 3) / 4);
}

const QLatin1String kOverviewOpen("\n\\begin{longtabu}{|c|c|c|} \\hline\n\\rowcolor{gray} \\textbf{Address} & "
                                  "\\textbf{Registername} & \\textbf{Access} \\endhead \\hline");

} // namespace

QString XmlProductIC::toLaTeXRegisterMap()
{
    QString text;
    text.reserve(KivReserve::chars(256, registerCount(m_registerSet), 1024));
    text += kUnderscoreBreak;
    text += QLatin1String("\n\\begin{longtable}{c|l|l|p{5.5cm}}");
    // The first head row ends with one backslash and the second begins with one: together the row end.
    text += QLatin1String("& & {\\bf DATA TYPE} & \\");
    text += QLatin1String("\\{\\bf ADDR} & {\\bf NAME} & {\\bf (BIT MASK)} & {\\bf FUNCTION} \\\\ \\hline");
    if (m_registerSet) {
        for (XmlValueRegister* reg : qAsConst(*m_registerSet->getRegisters())) {
            text += QLatin1String("\n\\hexnum{") + BasicTools::iToHex(quint32(reg->address()), 2, QStringLiteral("0x"))
                + QLatin1String("} & ") + KivText::latexDisplayName(reg->name()) + kRegisterLabel
                + KivText::latexLabelName(reg->name()) + QLatin1String("} & &  \\\\");
            for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants())) {
                for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields()))
                    appendMapField(text, field);
            }
            text += QLatin1String("\\hline");
        }
    }
    text += QLatin1String("\n\\end{longtable}");
    return text;
}

QString XmlProductIC::toLaTeXRegisterMapDefaults()
{
    QString text;
    text.reserve(KivReserve::chars(512, registerCount(m_registerSet), 1024));
    text += kUnderscoreBreak;
    text += QLatin1String("\n\\begin{longtable}{crp{3.5cm}|r|cc|p{3.5cm}}");
    text += QLatin1String("\n{\\bf RD/WR} & {\\bf ADDR} & {\\bf NAME} & {\\bf DEFAULT} & {\\bf MIN} & {\\bf MAX} & "
                          "{\\bf COMMENT} \\\\ \\hline\n\\endhead");
    if (m_registerSet) {
        for (XmlValueRegister* reg : qAsConst(*m_registerSet->getRegisters())) {
            const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
            const int digits = defaultDigits(reg->getSize());
            text += QLatin1Char('\n') + KivText::escapeLatex(reg->getAccessAsString()) + QLatin1String(" & ")
                + hexNum(reg->address(), 2) + QLatin1String(" & {\\bf ") + KivText::escapeLatex(reg->name())
                + QLatin1Char('}') + kRegisterLabel + KivText::latexLabelName(reg->name()) + QLatin1String("} & ");
            unsigned long long composed = 0;
            if (composedDefault(reg, &composed))
                text += hexNum(composed, digits);
            text += QLatin1String(" & & & ");
            if (!variants.isEmpty() && !variants.first()->getDescriptions()->isEmpty())
                text += KivText::escapeLatex(variants.first()->getDescriptions()->first());
            text += QLatin1String(" \\\\");
            for (XmlRegisterVariant* variant : variants) {
                if (variants.size() > 1) {
                    text += QLatin1String("\n & & \\textit{") + KivText::escapeLatex(variant->getName())
                        + QLatin1String("} & & & & \\\\");
                }
                for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields()))
                    appendDefaultsField(text, field);
            }
            text += QLatin1String(" \\hline");
        }
    }
    text += QLatin1String("\n\\end{longtable}");
    return text;
}

QString XmlProductIC::toLaTeXRegisterOverview()
{
    QString text;
    text.reserve(KivReserve::chars(256, registerCount(m_registerSet), 96));
    text += kOverviewOpen;
    appendOverviewRows(text, m_registerSet, nullptr);
    text += QLatin1String("\n\\caption{\\productName\\ Registers }\n\\end{longtabu}");
    return text;
}

QString XmlProductIC::toLaTeXRegisterOverviewByGroup(XmlGroup* group)
{
    QString text;
    text.reserve(KivReserve::chars(256, registerCount(m_registerSet), 96));
    text += kOverviewOpen;
    if (group)
        appendOverviewRows(text, m_registerSet, group);
    text += QLatin1String("\n\\caption{\\productName\\ Registers for group ")
        + (group ? KivText::latexDisplayName(group->getName()) : QString()) + QLatin1String(" }\n\\end{longtabu}");
    return text;
}
