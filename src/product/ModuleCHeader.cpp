#include "product/ModuleCHeader.h"

#include "product/XmlAnalogInput.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameter.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlDigitalInput.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutput.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameter.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlProductModule.h"
#include "values/CHeaderWriter_p.h"
#include "values/XmlValueInterface.h"

#include <QMap>
#include <QSet>

#include <algorithm>

using KivCHeader::identifier;
using KivCHeader::namePart;
using KivCHeader::quotedName;
using KivCHeader::unsignedLiteral;
using KivCHeader::valueLiteral;

namespace {

/// The codes of the basic CANopen data types, by the names files use for them.
quint64 dataTypeCode(const QString& name)
{
    static const QMap<QString, quint64> codes {
        {QStringLiteral("BOOLEAN"), 0x01},
        {QStringLiteral("INTEGER8"), 0x02},
        {QStringLiteral("INTEGER16"), 0x03},
        {QStringLiteral("INTEGER32"), 0x04},
        {QStringLiteral("UNSIGNED8"), 0x05},
        {QStringLiteral("UNSIGNED16"), 0x06},
        {QStringLiteral("UNSIGNED32"), 0x07},
        {QStringLiteral("REAL32"), 0x08},
        {QStringLiteral("VISIBLE_STRING"), 0x09},
        {QStringLiteral("OCTET_STRING"), 0x0A},
        {QStringLiteral("UNICODE_STRING"), 0x0B},
        {QStringLiteral("TIME_OF_DAY"), 0x0C},
        {QStringLiteral("TIME_DIFFERENCE"), 0x0D},
        {QStringLiteral("DOMAIN"), 0x0F},
        {QStringLiteral("INTEGER24"), 0x10},
        {QStringLiteral("REAL64"), 0x11},
        {QStringLiteral("INTEGER40"), 0x12},
        {QStringLiteral("INTEGER48"), 0x13},
        {QStringLiteral("INTEGER56"), 0x14},
        {QStringLiteral("INTEGER64"), 0x15},
        {QStringLiteral("UNSIGNED24"), 0x16},
        {QStringLiteral("UNSIGNED40"), 0x18},
        {QStringLiteral("UNSIGNED48"), 0x19},
        {QStringLiteral("UNSIGNED56"), 0x1A},
        {QStringLiteral("UNSIGNED64"), 0x1B},
    };
    return codes.value(name.trimmed().toUpper(), 0);
}

/// One parameter as it stands on one axis (or in its bank).
struct Occurrence
{
    int axis = 0;
    XmlParameterInterface* parameter = nullptr;
};

class Generator
{
public:
    Generator(XmlProductModule* module, const CHeaderOptions& options)
        : m_module(module)
        , m_writer(options, module->getName())
    { }

    CHeaderResult run(const CHeaderOptions& options);

private:
    QString baseName(const QString& kind, XmlParameterInterface* parameter, const QString& source);
    void writeParameter(
        const QString& id, const QString& source, const QList<Occurrence>& occurrences, const QString& bank = {});
    void writeAxisParameters();
    void writeGlobalParameters();
    template<typename Item>
    void writeIos(const QString& kind, const QString& title, const QString& what, QList<Item*>* items);
    void writeCANopen();

    XmlProductModule* m_module;
    KivCHeader::Writer m_writer;
};

QString describe(XmlParameterInterface* parameter)
{
    QString text = parameter->descriptions().join(QLatin1Char(' '));
    if (XmlValueInterface* value = parameter->value()) {
        QString extra = value->getAccessAsString();
        if (!value->getUnit().isEmpty())
            extra += (extra.isEmpty() ? QString() : QStringLiteral(", ")) + value->getUnit();
        if (!extra.isEmpty())
            text += QStringLiteral(" (") + extra + QLatin1Char(')');
    }
    return parameter->name() + QStringLiteral(": ") + text;
}

QString Generator::baseName(const QString& kind, XmlParameterInterface* parameter, const QString& source)
{
    QString name = namePart(parameter->name());
    if (name.isEmpty())
        name = namePart(parameter->identifier());
    if (name.isEmpty()) {
        name = QString::number(parameter->type());
        m_writer.warning(source + QStringLiteral(" has no name to build on; it is written by its number"));
    }
    return m_writer.name({kind, name});
}

/// The number and, per value property, one macro when every occurrence agrees, otherwise one per axis.
void Generator::writeParameter(
    const QString& id, const QString& source, const QList<Occurrence>& occurrences, const QString& bank)
{
    XmlParameterInterface* first = occurrences.first().parameter;
    m_writer.comment(describe(first));
    m_writer.define(id, unsignedLiteral(first->type()), source);
    if (!bank.isEmpty())
        m_writer.define(identifier({id, QStringLiteral("BANK")}), bank, source);
    using Property = QString (*)(XmlValueInterface*);
    static const QList<QPair<QString, Property>> properties {
        {QStringLiteral("MIN"), [](XmlValueInterface* v) { return valueLiteral(v, v->getMin()); }},
        {QStringLiteral("MAX"), [](XmlValueInterface* v) { return valueLiteral(v, v->getMax()); }},
        {QStringLiteral("DEFAULT"), [](XmlValueInterface* v) { return valueLiteral(v, v->getDefault()); }},
        {QStringLiteral("ACCESS"), nullptr},
    };
    for (const auto& property : properties) {
        QStringList values;
        for (const Occurrence& occurrence : occurrences) {
            XmlValueInterface* value = occurrence.parameter->value();
            if (!value)
                values << QString();
            else if (property.second)
                values << property.second(value);
            else
                values << m_writer.access(value->getAccess());
        }
        if (values.count(values.first()) == values.size()) {
            if (!values.first().isEmpty())
                m_writer.define(identifier({id, property.first}), values.first(), source);
            continue;
        }
        for (int index = 0; index < occurrences.size(); ++index) {
            if (!values.at(index).isEmpty())
                m_writer.define(identifier({id, QStringLiteral("AXIS") + QString::number(occurrences.at(index).axis),
                                    property.first}),
                    values.at(index), source);
        }
    }
    m_writer.defineNamedValues(id, first->value(), source);
    m_writer.blankLine();
}

void Generator::writeAxisParameters()
{
    // One entry per parameter name, in the order of first appearance.
    QStringList order;
    QHash<QString, QList<Occurrence>> byId;
    QHash<QString, QString> sources;
    QSet<int> axes;
    for (XmlAxisParameters* block : *m_module->getAxisParameters()) {
        if (!block)
            continue;
        axes.insert(block->getAxis());
        for (XmlAxisParameter* parameter : *block->getAxisParameter()) {
            if (!parameter)
                continue;
            const QString source = QStringLiteral("axis parameter ") + quotedName(parameter->name())
                + QStringLiteral(" (axis ") + QString::number(block->getAxis()) + QStringLiteral(", number ")
                + QString::number(parameter->type()) + QLatin1Char(')');
            const QString id = baseName(QStringLiteral("AP"), parameter, source);
            auto known = byId.find(id);
            if (known == byId.end()) {
                order << id;
                sources.insert(id, source);
                byId.insert(id, {{block->getAxis(), parameter}});
            } else if (std::any_of(known->cbegin(), known->cend(),
                           [&](const Occurrence& seen) { return seen.axis == block->getAxis(); })) {
                m_writer.error(QStringLiteral("identifier ") + id + QStringLiteral(" stands for ") + source
                    + QStringLiteral(" twice"));
            } else if (known->first().parameter->type() != parameter->type()) {
                m_writer.error(QStringLiteral("identifier ") + id + QStringLiteral(" stands for both ")
                    + sources.value(id) + QStringLiteral(" and ") + source);
            } else {
                known->append({block->getAxis(), parameter});
            }
        }
    }
    if (axes.isEmpty())
        return;
    m_writer.heading(QStringLiteral("Axis parameters: read with command 6, written with command 5"));
    m_writer.define(m_writer.name({QStringLiteral("AXIS_COUNT")}), unsignedLiteral(quint64(axes.size())),
        QStringLiteral("the number of axes"));
    m_writer.blankLine();
    for (const QString& id : order)
        writeParameter(id, sources.value(id), byId.value(id));
}

void Generator::writeGlobalParameters()
{
    for (XmlGlobalParameters* bank : *m_module->getGlobalParameters()) {
        if (!bank)
            continue;
        m_writer.heading(QStringLiteral("Global parameters of bank ") + QString::number(bank->getBank())
            + QStringLiteral(": read and written with command 10"));
        for (XmlGlobalParameter* parameter : *bank->getGlobalParameter()) {
            if (!parameter)
                continue;
            const QString source = QStringLiteral("global parameter ") + quotedName(parameter->name())
                + QStringLiteral(" (bank ") + QString::number(bank->getBank()) + QStringLiteral(", number ")
                + QString::number(parameter->type()) + QLatin1Char(')');
            const QString id = baseName(QStringLiteral("GP"), parameter, source);
            writeParameter(
                id, source, {{bank->getBank(), parameter}}, unsignedLiteral(quint64(qMax(0, bank->getBank()))));
        }
    }
}

template<typename Item>
void Generator::writeIos(const QString& kind, const QString& title, const QString& what, QList<Item*>* items)
{
    if (!items || items->isEmpty())
        return;
    m_writer.heading(title);
    for (Item* item : *items) {
        if (!item)
            continue;
        const QString source = what + QLatin1Char(' ') + quotedName(item->name()) + QStringLiteral(" (")
            + QString::number(item->type()) + QLatin1Char(')');
        m_writer.comment(describe(item));
        m_writer.define(baseName(kind, item, source), unsignedLiteral(item->type()), source);
    }
    m_writer.blankLine();
}

void Generator::writeCANopen()
{
    if (m_module->getCANopenObjects()->isEmpty())
        return;
    m_writer.heading(QStringLiteral("CANopen objects"));
    for (XmlCANopenObject* object : *m_module->getCANopenObjects()) {
        if (!object)
            continue;
        const QString source = QStringLiteral("CANopen object ") + quotedName(object->getName())
            + QStringLiteral(" (0x") + QString::number(object->getIndex(), 16).toUpper() + QLatin1Char(')');
        QString name = namePart(object->getName());
        if (name.isEmpty()) {
            name = QString::number(object->getIndex(), 16).toUpper();
            m_writer.warning(source + QStringLiteral(" has no name to build on; it is written by its index"));
        }
        const QString id = m_writer.name({QStringLiteral("CO"), name});
        m_writer.comment(object->getName() + QStringLiteral(": ") + object->getObjectTypeAsString()
            + QStringLiteral(", ") + object->getDataTypeAsString() + QStringLiteral(", ")
            + object->getSegmentAsString());
        m_writer.define(
            identifier({id, QStringLiteral("INDEX")}), KivCHeader::hexLiteral(object->getIndex(), 4), source);
        if (const quint64 code = dataTypeCode(object->getDataTypeAsString()))
            m_writer.define(identifier({id, QStringLiteral("DATA_TYPE")}), KivCHeader::hexLiteral(code, 4), source);
        for (XmlCANopenEntry* entry : *object->getXmlCANopenEntries()) {
            if (!entry)
                continue;
            const QString entrySource = QStringLiteral("entry ") + quotedName(entry->getName())
                + QStringLiteral(" (sub-index ") + QString::number(entry->getSubIndex()) + QStringLiteral(") of ")
                + source;
            QString note = entry->getName();
            if (XmlValueInterface* value = entry->getValue())
                note += QStringLiteral(": ") + value->getTypeAsString() + QStringLiteral(", ")
                    + value->getAccessAsString();
            if (entry->isPdoMapped())
                note += QStringLiteral(", PDO mapped");
            m_writer.comment(note);
            QString entryName = namePart(entry->getName());
            if (entryName.isEmpty())
                entryName = QString::number(entry->getSubIndex());
            m_writer.define(
                identifier({id, entryName, QStringLiteral("SUB")}), unsignedLiteral(entry->getSubIndex()), entrySource);
        }
        m_writer.blankLine();
    }
}

CHeaderResult Generator::run(const CHeaderOptions& options)
{
    QString title = m_module->getName() + QStringLiteral(" parameters, ") + m_module->getVersion()
        + QStringLiteral(". Generated from its product file");
    if (!options.generator.isEmpty())
        title += QStringLiteral(" by ") + options.generator;
    title += QStringLiteral("; do not edit.");
    m_writer.begin(title);
    writeAxisParameters();
    writeGlobalParameters();
    if (XmlDigitalInputs* inputs = m_module->getDigitalInputs())
        writeIos(QStringLiteral("DI"), QStringLiteral("Digital inputs"), QStringLiteral("digital input"),
            inputs->getDigitalInputs());
    if (XmlDigitalOutputs* outputs = m_module->getDigitalOutputs())
        writeIos(QStringLiteral("DO"), QStringLiteral("Digital outputs"), QStringLiteral("digital output"),
            outputs->getDigitalOutputs());
    if (XmlAnalogInputs* inputs = m_module->getAnalogInputs())
        writeIos(QStringLiteral("AI"), QStringLiteral("Analog inputs"), QStringLiteral("analog input"),
            inputs->getAnalogInputs());
    writeCANopen();
    return m_writer.finish();
}

} // namespace

CHeaderResult ModuleCHeader::generate(XmlProductModule* module, const CHeaderOptions& options)
{
    if (!module)
        return {};
    return Generator(module, options).run(options);
}
