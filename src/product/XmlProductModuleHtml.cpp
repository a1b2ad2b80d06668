// The module's help page: one self-contained HTML5 document. Every text from the file is escaped, so
// names with "<" or "&" cannot break the page.

#include "product/XmlProductModule.h"

#include "base/ReserveHint_p.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlDriveConfiguration.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "text/Html_p.h"
#include "values/XmlValueInterface.h"

#include <array>

namespace {

const QLatin1String kValueHeads("<th>Kind</th><th>Min</th><th>Default</th><th>Max</th><th>Unit</th><th>Access</th>");
const QLatin1String kItemHeads("<tr><th>Type</th><th>Name</th><th>Identifier</th><th>Description</th>");

QString esc(const QString& text)
{
    return KivText::escapeHtml(text);
}

void appendCell(QString& html, const QString& text)
{
    html += QLatin1String("<td>");
    html += esc(text);
    html += QLatin1String("</td>");
}

/// The description lines, then the meaning of each value the descriptor names (choices, booleans).
void appendDescriptionCell(QString& html, const QStringList& lines, XmlValueInterface* value)
{
    QStringList parts;
    for (const QString& line : lines)
        parts.append(esc(line));
    if (value) {
        const XmlValueDescriptions meanings = value->getValueDescriptions();
        for (auto it = meanings.constBegin(); it != meanings.constEnd(); ++it)
            parts.append(QString::number(it.key()) + QLatin1String(" - ") + esc(it.value().first));
    }
    html += QLatin1String("<td>");
    html += parts.join(QLatin1String("<br>"));
    html += QLatin1String("</td>");
}

/// Kind, Min, Default, Max, Unit and Access; empty cells when there is no descriptor.
void appendValueCells(QString& html, XmlValueInterface* value)
{
    if (!value) {
        html += QLatin1String("<td></td><td></td><td></td><td></td><td></td><td></td>");
        return;
    }
    appendCell(html, value->getTypeAsString());
    appendCell(html, QString::number(value->getMin()));
    appendCell(html, QString::number(value->getDefault()));
    appendCell(html, QString::number(value->getMax()));
    appendCell(html, value->getUnit());
    appendCell(html, value->getAccessAsString());
}

void appendItemRow(QString& html, long long type, const QString& name, const QString& identifier,
    const QStringList& descriptions, XmlValueInterface* value)
{
    html += QLatin1String("\n<tr>");
    appendCell(html, QString::number(type));
    appendCell(html, name);
    appendCell(html, identifier);
    appendDescriptionCell(html, descriptions, value);
    appendValueCells(html, value);
    html += QLatin1String("</tr>");
}

// Parameters and the plain interrupt and coordinate items name their fields differently.
void appendRow(QString& html, XmlParameterInterface* item)
{
    appendItemRow(html, item->type(), item->name(), item->identifier(), item->descriptions(), item->value());
}

void appendRow(QString& html, XmlNumberedItem* item)
{
    appendItemRow(
        html, item->getType(), item->getName(), item->getIdentifier(), item->getDescriptions(), item->getValue());
}

template<typename Item> void appendItemSection(QString& html, const QString& heading, const QList<Item*>& items)
{
    html += QLatin1String("\n<section>\n");
    html += heading;
    html += QLatin1String("\n<table>\n");
    html += kItemHeads;
    html += kValueHeads;
    html += QLatin1String("</tr>");
    for (Item* item : items) {
        if (item)
            appendRow(html, item);
    }
    html += QLatin1String("\n</table>\n</section>");
}

void appendObjectSection(QString& html, XmlCANopenObject* object)
{
    html += QLatin1String("\n<h4>Object 0x");
    html += QString::number(object->getIndex(), 16).toUpper().rightJustified(4, QLatin1Char('0'));
    html += QLatin1String(": ");
    html += esc(object->getName());
    html += QLatin1String("</h4>");
    for (const QString& line : object->getDescriptions()) {
        html += QLatin1String("\n<p>");
        html += esc(line);
        html += QLatin1String("</p>");
    }
    html += QLatin1String("\n<table>\n<tr><th>Object Type</th><th>Data Type</th><th>Segment</th></tr>\n<tr>");
    appendCell(html, object->getObjectTypeAsString());
    appendCell(html, object->getDataTypeAsString());
    appendCell(html, object->getSegmentAsString());
    html += QLatin1String("</tr>\n</table>\n<table>\n<tr><th>Sub-index</th><th>Name</th><th>PDO Mapping</th>"
                          "<th>Description</th>");
    html += kValueHeads;
    html += QLatin1String("</tr>");
    for (const XmlCANopenEntry* entry : *object->getXmlCANopenEntries()) {
        if (!entry)
            continue;
        html += QLatin1String("\n<tr>");
        appendCell(html, QString::number(entry->getSubIndex()));
        appendCell(html, entry->getName());
        appendCell(html, entry->isPdoMapped() ? QStringLiteral("yes") : QStringLiteral("no"));
        appendDescriptionCell(html, QStringList(), entry->getValue());
        appendValueCells(html, entry->getValue());
        html += QLatin1String("</tr>");
    }
    html += QLatin1String("\n</table>");
}

/// For every type, the parameter `getAxisParameterValue(0, type)` returns, all found in one walk of the
/// blocks: a look-up per setting walked every parameter again.
using ParametersByType = std::array<const XmlAxisParameter*, 256>;

ParametersByType firstAxisZeroParameters(const QList<XmlAxisParameters*>& blocks)
{
    ParametersByType byType {};
    for (XmlAxisParameters* block : blocks) {
        if (!block || static_cast<unsigned char>(block->getAxis()) != 0)
            continue;
        for (const XmlAxisParameter* parameter : *block->getAxisParameter()) {
            if (parameter && !byType[parameter->type()])
                byType[parameter->type()] = parameter;
        }
    }
    return byType;
}

void appendConfigurationSection(
    QString& html, XmlDriveConfiguration* configuration, const ParametersByType& axisZeroParameters)
{
    html += QLatin1String("\n<section>\n<h3>Vostrane configuration for ");
    html += esc(configuration->name());
    html += QLatin1String(" (id ");
    html += QString::number(configuration->id());
    html += QLatin1String(")</h3>\n<table>\n<tr><th>Group</th><th>Type</th><th>Name</th><th>Value</th></tr>");
    for (XmlDriveApSettings* group : *configuration->driveApSettings()) {
        if (!group)
            continue;
        for (const XmlDriveApSetting* setting : *group->driveApSettings()) {
            if (!setting)
                continue;
            // The settings are written to the first axis: name them after its parameters where known.
            const XmlAxisParameter* parameter = axisZeroParameters[setting->type()];
            html += QLatin1String("\n<tr>");
            appendCell(html, group->name());
            appendCell(html, QString::number(setting->type()));
            appendCell(html, parameter ? parameter->name() : QString());
            appendCell(html, QString::number(setting->value()));
            html += QLatin1String("</tr>");
        }
    }
    html += QLatin1String("\n</table>\n</section>");
}

} // namespace

QString XmlProductModule::toHtml()
{
    QString html;
    html.reserve(KivReserve::chars(4096 + 2048 * qint64(m_canopenObjects.size()), m_axisParameters.size(), 16384));
    html += QLatin1String("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>");
    html += esc(m_name);
    html
        += QLatin1String("</title>\n<style>\n"
                         "table { border-collapse: collapse; margin-bottom: 1em; }\n"
                         "th, td { border: 1px solid #888; padding: 4px 6px; text-align: left; vertical-align: top; }\n"
                         "th { background: #ddd; }\n"
                         "</style>\n</head>\n<body>\n<h1>");
    html += esc(m_name);
    html += QLatin1String("</h1>\n<table>\n<tr><th>Name</th><th>Name in firmware version</th>"
                          "<th>Firmware type</th><th>Version</th></tr>\n<tr>");
    appendCell(html, m_name);
    appendCell(html, m_nameInFirmwareVersion);
    appendCell(html, m_nameOfFirmwareType);
    appendCell(html, getVersion());
    html += QLatin1String("</tr>\n</table>");

    for (XmlAxisParameters* block : qAsConst(m_axisParameters)) {
        if (block)
            appendItemSection(html,
                QLatin1String("<h3>Axis parameters for axis ") + QString::number(block->getAxis())
                    + QLatin1String("</h3>"),
                *block->getAxisParameter());
    }
    for (XmlGlobalParameters* bank : qAsConst(m_globalParameters)) {
        if (bank)
            appendItemSection(html,
                QLatin1String("<h3>Global parameters for bank ") + QString::number(bank->getBank())
                    + QLatin1String("</h3>"),
                *bank->getGlobalParameter());
    }
    if (!m_canopenObjects.isEmpty()) {
        html += QLatin1String("\n<section>\n<h3>CANopen objects</h3>");
        for (XmlCANopenObject* object : qAsConst(m_canopenObjects)) {
            if (object)
                appendObjectSection(html, object);
        }
        html += QLatin1String("\n</section>");
    }
    if (m_digitalInputs)
        appendItemSection(html, QStringLiteral("<h3>Digital inputs</h3>"), *m_digitalInputs->getDigitalInputs());
    if (m_digitalOutputs)
        appendItemSection(html, QStringLiteral("<h3>Digital outputs</h3>"), *m_digitalOutputs->getDigitalOutputs());
    if (m_analogInputs)
        appendItemSection(html, QStringLiteral("<h3>Analog inputs</h3>"), *m_analogInputs->getAnalogInputs());
    if (m_irqs)
        appendItemSection(html, QStringLiteral("<h3>Irqs</h3>"), *m_irqs->getIrqs());
    if (m_coordinates)
        appendItemSection(html, QStringLiteral("<h3>Coordinates</h3>"), *m_coordinates->getCoordinates());
    if (!m_driveConfigurations.isEmpty()) {
        const ParametersByType axisZeroParameters = firstAxisZeroParameters(m_axisParameters);
        for (XmlDriveConfiguration* configuration : qAsConst(m_driveConfigurations)) {
            if (configuration)
                appendConfigurationSection(html, configuration, axisZeroParameters);
        }
    }
    html += QLatin1String("\n</body>\n</html>\n");
    return html;
}
