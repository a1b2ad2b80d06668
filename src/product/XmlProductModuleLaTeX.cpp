// The module's firmware-manual fragments: the generated preamble and the parameter, input and output
// tables. The fixed pieces are written exactly as the manual's hand-written sources expect them.

#include "product/XmlProductModule.h"

#include "base/ReserveHint_p.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "text/Latex_p.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"

#include <QDate>
#include <QLocale>

namespace {

/// One row of a parameter long table. A parameter without value descriptor keeps its row but gets no
/// range, default and access cells.
void appendParameterRow(QString& text, XmlParameterInterface* parameter)
{
    text += QLatin1Char('\n');
    text += QString::number(parameter->type());
    text += QLatin1String("\t & ");
    text += parameter->name();
    text += QLatin1String("\n\t & ");
    text += parameter->descriptions().join(QLatin1String("\\newline"));

    XmlValueInterface* value = parameter->value();
    if (!value) {
        text += QLatin1String("\\\\\n\\hline");
        return;
    }
    if (value->getType() == XmlValueTypeChoice) {
        for (const XmlValueChoiceElement* element : static_cast<XmlValueChoice*>(value)->getElements()) {
            text += QLatin1String(" \\newline \n\t");
            text += QString::number(element->getValue());
            text += QLatin1String(" - ");
            text += element->getDescription();
        }
    } else if (value->getType() == XmlValueTypeBool) {
        const XmlValueBool* boolean = static_cast<XmlValueBool*>(value);
        text += QLatin1String(" \\newline \n\t0 - ");
        text += boolean->getDescFalse();
        text += QLatin1String(" \\newline \n\t1 - ");
        text += boolean->getDescTrue();
    }
    // Written for every kind and whether or not the descriptor reports the fields as present.
    text += QLatin1String("\n\t & $");
    text += QString::number(value->getMin());
    text += QLatin1String("$ \\ldots $");
    text += QString::number(value->getMax());
    text += QLatin1String("$\\ ");
    text += value->getUnit();
    text += QLatin1String("\n\t & $");
    text += QString::number(value->getDefault());
    text += QLatin1String("$\n\t & ");
    text += value->getAccessAsString();
    text += QLatin1String("\\\\\n\\hline");
}

template<typename Parameter> void appendParameterRows(QString& text, const QList<Parameter*>& parameters)
{
    for (Parameter* parameter : parameters) {
        if (parameter)
            appendParameterRow(text, parameter);
    }
}

/// One input/output row: port, name, descriptions, the kind's command and the range.
template<typename Item>
void appendIORows(QString& text, const QList<Item*>& items, QLatin1String commandHead, QLatin1String commandTail,
    QLatin1String rangeSeparator)
{
    for (Item* item : items) {
        if (!item)
            continue;
        const QString number = QString::number(item->type());
        text += QLatin1Char('\n');
        text += number;
        text += QLatin1String(" - ");
        text += item->name();
        text += QLatin1String("\n\t & ");
        text += item->descriptions().join(QLatin1String("\\newline"));
        text += commandHead;
        text += number;
        text += commandTail;
        if (XmlValueInterface* value = item->value()) {
            text += QString::number(value->getMin());
            text += rangeSeparator;
            text += QString::number(value->getMax());
        }
        text += QLatin1String("\\\\\n\\hline");
    }
}

template<typename Item>
QString ioTable(const QList<Item*>& items, QLatin1String titleRow, QLatin1String commandHead, QLatin1String commandTail,
    QLatin1String rangeSeparator)
{
    if (items.isEmpty())
        return QString();
    QString text;
    text.reserve(KivReserve::chars(400, items.size(), 160));
    text += QLatin1String("\\begin{table}[H]\n\\begin{tabular}{|l|l|l|l|}\n\\hline\n");
    text += titleRow;
    text += QLatin1String("\n\\hline\n\\rowcolor{gray} Port & Description & Command & Range \\\\");
    appendIORows(text, items, commandHead, commandTail, rangeSeparator);
    text += QLatin1String("\n\\end{tabular}\n\\end{table}");
    return XmlProductModule::EscapeSpecialLaTeXCharacters(text);
}

void appendCounter(QString& text, QLatin1String name, int count)
{
    text += QLatin1String("\n\\newcounter{");
    text += name;
    text += QLatin1String("}\n\\setcounter{");
    text += name;
    text += QLatin1String("}{");
    text += QString::number(count);
    text += QLatin1Char('}');
}

} // namespace

QString XmlProductModule::EscapeSpecialLaTeXCharacters(QString text)
{
    return KivText::escapeLatexPercentUnderscore(text);
}

QString XmlProductModule::toLaTeXHeader()
{
    QString stem = m_name;
    stem.remove(QLatin1Char('-'));
    // The generation date stands for both the firmware and the hardware date.
    const QString date = QLocale::system().toString(QDate::currentDate(), QStringLiteral("yyyy-MMM-d")).toUpper();

    QString text;
    text.reserve(2400);
    text += QLatin1String("\\newcommand{\\productName}{");
    text += m_name;
    text += QLatin1String("}\n\\newcommand{\\modulename}{");
    text += m_name;
    text += QLatin1String("} %deprecated\n"
                          "\n\\newcommand{\\productType}{module}\n"
                          "\n\\newif\\ifproductIsModule\n\\productIsModuletrue"
                          "\n\\newif\\ifproductIsIC\n\\productIsICfalse\n"
                          "\n\\newcommand{\\moduleMotorType}{Stepper}\n"
                          "\n\\newcounter{modulenumber}"
                          "\n\\setcounter{modulenumber}{");
    text += m_nameInFirmwareVersion;
    text += QLatin1String("}\n\\newcommand{\\productRootPath}{module/");
    text += stem;
    text += QLatin1String("}"
                          "\n\\newcommand{\\productAndVersionRootPath}{\\productRootPath}"
                          "\n\\newcommand{\\productAndVersionRootPathManual}{\\productAndVersionRootPath /manual}"
                          "\n\\newcommand{\\productAndVersionRootPathGenerated}{\\productAndVersionRootPath /generated}"
                          "\n\\newcommand{\\productImage}{\\productRootPath /graphics/");
    text += stem;
    text += QLatin1String(".png}\n"
                          "\n\\newcommand{\\documentationType}{KIVL\\textsuperscript{\\texttrademark} Firmware Manual}"
                          "\n\\newcommand{\\productColor}{modulered}\n"
                          "\n\\newcommand{\\productVersionDesc}{Firmware Version}"
                          "\n\\newcommand{\\productVersion}{V");
    text += m_softwareVersion;
    text += QLatin1String("}\n");
    appendCounter(text, QLatin1String("numberofmotors"), m_axisParameters.size());
    appendCounter(
        text, QLatin1String("numberofgpi"), m_digitalInputs ? m_digitalInputs->getDigitalInputs()->size() : 0);
    appendCounter(
        text, QLatin1String("numberofgpo"), m_digitalOutputs ? m_digitalOutputs->getDigitalOutputs()->size() : 0);
    appendCounter(text, QLatin1String("numberofadc"), m_analogInputs ? m_analogInputs->getAnalogInputs()->size() : 0);
    // The feature switches are fixed, whatever the module file says.
    text += QLatin1String("\n% available features"
                          "\n\\providecommand{\\SupportBasicKivl}{}"
                          "\n% \\providecommand{\\SupportFullKivl}{}"
                          "\n\\providecommand{\\SupportGrimlatch}{}"
                          "\n\\providecommand{\\SupportWenfrost}{}"
                          "\n% \\providecommand{\\SupportRefSearch}{}"
                          "\n% \\providecommand{\\SupportKivlInterrupts}{}");
    for (const XmlGlobalParameters* bank : qAsConst(m_globalParameters)) {
        if (!bank)
            continue;
        text += QLatin1String("\n\\providecommand{\\SupportGPBank");
        text += QString::number(bank->getBank());
        text += QLatin1String("}{}");
    }
    text += QLatin1String("\n\n\\newcommand{\\firmwareDate}{");
    text += date;
    text += QLatin1String("}\n"
                          "\n\\newcommand{\\manualVersion}{V1.0}"
                          "\n\\newcommand{\\manualDate}{\\today}\n"
                          "\n\\newcommand{\\hardwareVersion}{V");
    text += m_hardwareVersion;
    text += QLatin1String("}\n\\newcommand{\\hardwareDate}{");
    text += date;
    text += QLatin1String("}\n");
    return text;
}

QString XmlProductModule::toLaTeXGlobalParamBank(int index)
{
    if (index < 0 || index >= m_globalParameters.size() || !m_globalParameters.at(index))
        return QString();
    const QList<XmlGlobalParameter*>& parameters = *m_globalParameters.at(index)->getGlobalParameter();
    const QString bank = QString::number(index);

    QString text;
    text.reserve(KivReserve::chars(800, parameters.size(), 240));
    text += QLatin1String("\\begin{longtable}{|l|>{\\raggedright}p{2.9cm}|p{6.0cm}|>{\\raggedright}p{2.2cm}|l|l|}\n"
                          "\\hline\n"
                          "\\rowcolor{gray} \\multicolumn{6}{|c|}{All Global Parameters of the \\modulename\\ Module "
                          "in Bank ");
    text += bank;
    text += QLatin1String("} \\\\\n\\hline\n"
                          "\\rowcolor{gray} Number & Global Parameter & Description & Range [Units] & Default & Access "
                          "\\endfirsthead\n\\hline\n"
                          "\\rowcolor{gray} Number & Global Parameter & Description & Range [Units] & Default & Access "
                          "\\endhead\n\\hline");
    appendParameterRows(text, parameters);
    text += QLatin1String("\n\\caption{All Global Parameters of the \\modulename\\ Module in Bank ");
    text += bank;
    text += QLatin1String("}\n\\end{longtable}");
    return EscapeSpecialLaTeXCharacters(text);
}

QString XmlProductModule::toLaTeXAxisParam()
{
    QString text;
    text.reserve(KivReserve::chars(64, m_axisParameters.size(), 12000));
    for (int n = 0; n < m_axisParameters.size(); ++n) {
        const QString axis = QString::number(n); // the list position, not the block's own axis number
        text += QLatin1String("\\begin{longtable}{|l|>{\\raggedright}p{2.5cm}|p{6.0cm}|>{\\raggedright}p{2.5cm}|l|l|}\n"
                              "\\hline\n"
                              "\\rowcolor{gray} \\multicolumn{6}{|c|}{Axis ");
        text += axis;
        text += QLatin1String(" Parameters of the \\modulename\\ Module} \\\\\n\\hline\n"
                              "\\rowcolor{gray} Number & Axis Parameter & Description & Range [Units] & Default &  "
                              "Access \\endfirsthead\n\\hline\n"
                              "\\rowcolor{gray} Number & Axis Parameter & Description & Range [Units] & Default &  "
                              "Access \\endhead\n\\hline");
        if (XmlAxisParameters* block = m_axisParameters.at(n))
            appendParameterRows(text, *block->getAxisParameter());
        text += QLatin1String("\n\\caption{All \\modulename\\ Axis ");
        text += axis;
        text += QLatin1String(" Parameters}");
    }
    // Deliberately one closing line after all blocks.
    text += QLatin1String("\n\\end{longtable}");
    return EscapeSpecialLaTeXCharacters(text);
}

QString XmlProductModule::toLaTeXIOs(int kind)
{
    switch (kind) {
    case 0:
        return m_digitalInputs ? ioTable(*m_digitalInputs->getDigitalInputs(),
                   QLatin1String("\\rowcolor{gray} \\multicolumn{4}{|c|}{Digital Inputs in Bank 0}\\\\"),
                   QLatin1String("\n\t & GIO "), QLatin1String(", 0\n\t & "), QLatin1String("/"))
                               : QString();
    case 1:
        return m_analogInputs ? ioTable(*m_analogInputs->getAnalogInputs(),
                   QLatin1String("\\rowcolor{gray} \\multicolumn{4}{|c|}{Analog Inputs in Bank 1}\\\\"),
                   QLatin1String("\n\t & GIO "), QLatin1String(", 1\n\t & "), QLatin1String("\\ldots "))
                              : QString();
    case 2:
    case 3:
        // Kind 3 deliberately keeps the outputs' title and value text with the GIO command.
        return m_digitalOutputs ? ioTable(*m_digitalOutputs->getDigitalOutputs(),
                   QLatin1String("\\rowcolor{gray} \\multicolumn{4}{|c|}{Digital Outputs in Bank 2}\\\\"),
                   kind == 2 ? QLatin1String("\n\t & SIO ") : QLatin1String("\n\t & GIO "),
                   QLatin1String(", 2, <value>\n\t & "), QLatin1String("/"))
                                : QString();
    default:
        return QString();
    }
}
