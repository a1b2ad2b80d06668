#include "Checks.h"

#include "ProductGrammar.h"
#include "Reporter.h"

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
#include "product/XmlProductModule.h"

#include <QHash>
#include <QSet>

namespace {

const std::initializer_list<const char*> kValues {"value_signed", "value_unsigned", "value_bool", "value_choice",
    "value_register", "value_date", "value_time", "value_version", "value_ascii"};

int pick(const QVector<int>& nodes, int i, int fallback)
{
    return i < nodes.size() ? nodes.at(i) : fallback;
}

int valueNode(const ProductGrammar& grammar, int node)
{
    const int found = grammar.lastAccepted(node, kValues);
    return found < 0 ? node : found;
}

/// The values of the items of one container, each at its value element.
template<typename Item, typename ValueOf>
void checkValues(const QList<Item*>& items, const QVector<int>& nodes, int fallback, const ProductGrammar& grammar,
    Reporter& reporter, ValueOf valueOf)
{
    for (int i = 0; i < items.size(); ++i) {
        if (items.at(i))
            checkValue(valueOf(items.at(i)), valueNode(grammar, pick(nodes, i, fallback)), reporter);
    }
}

/// KIV201 over the parameters of every block with the number `key`; the blocks were seen in file order.
template<typename Parameter>
void checkNumbers(const QList<Parameter*>& parameters, const QVector<int>& nodes, int fallback,
    QHash<int, QString>* seen, const QString& where, Reporter& reporter)
{
    for (int i = 0; i < parameters.size(); ++i) {
        Parameter* parameter = parameters.at(i);
        if (!parameter)
            continue;
        const int number = parameter->type();
        if (seen->contains(number))
            reporter.report("KIV201", pick(nodes, i, fallback),
                QStringLiteral("parameter number ") + QString::number(number) + QStringLiteral(" of ") + where
                    + QStringLiteral(" is also ") + shownText(seen->value(number))
                    + QStringLiteral("; give each parameter its own number"));
        else
            seen->insert(number, parameter->name());
    }
}

const auto kParameterValue = [](auto* item) { return item->value(); };
const auto kItemValue = [](auto* item) { return item->getValue(); };

void checkParameters(XmlProductModule* module, const ProductGrammar& grammar, Reporter& reporter, int root)
{
    QHash<int, QHash<int, QString>> axes; // axis -> parameter number -> name
    const QVector<int> blockNodes = grammar.accepted(root, "axis_parameters");
    const QList<XmlAxisParameters*>& blocks = *module->getAxisParameters();
    for (int b = 0; b < blocks.size(); ++b) {
        XmlAxisParameters* block = blocks.at(b);
        const int node = pick(blockNodes, b, root);
        const QVector<int> nodes = grammar.accepted(node, "axis_parameter");
        checkNumbers(*block->getAxisParameter(), nodes, node, &axes[block->getAxis()],
            QStringLiteral("axis ") + QString::number(block->getAxis()), reporter);
        checkValues(*block->getAxisParameter(), nodes, node, grammar, reporter, kParameterValue);
    }
    QHash<int, QHash<int, QString>> banks;
    const QVector<int> bankNodes = grammar.accepted(root, "global_parameters");
    const QList<XmlGlobalParameters*>& bankList = *module->getGlobalParameters();
    for (int b = 0; b < bankList.size(); ++b) {
        XmlGlobalParameters* bank = bankList.at(b);
        const int node = pick(bankNodes, b, root);
        const QVector<int> nodes = grammar.accepted(node, "global_parameter");
        checkNumbers(*bank->getGlobalParameter(), nodes, node, &banks[bank->getBank()],
            QStringLiteral("bank ") + QString::number(bank->getBank()), reporter);
        checkValues(*bank->getGlobalParameter(), nodes, node, grammar, reporter, kParameterValue);
    }
}

void checkInputsAndOutputs(XmlProductModule* module, const ProductGrammar& grammar, Reporter& reporter, int root)
{
    if (XmlDigitalInputs* inputs = module->getDigitalInputs()) {
        const int node = grammar.lastAccepted(root, {"digital_inputs"});
        checkValues(*inputs->getDigitalInputs(), grammar.accepted(node, "digital_input"), node, grammar, reporter,
            kParameterValue);
    }
    if (XmlDigitalOutputs* outputs = module->getDigitalOutputs()) {
        const int node = grammar.lastAccepted(root, {"digital_outputs"});
        checkValues(*outputs->getDigitalOutputs(), grammar.accepted(node, "digital_output"), node, grammar, reporter,
            kParameterValue);
    }
    if (XmlAnalogInputs* inputs = module->getAnalogInputs()) {
        const int node = grammar.lastAccepted(root, {"analog_inputs"});
        checkValues(*inputs->getAnalogInputs(), grammar.accepted(node, "analog_input"), node, grammar, reporter,
            kParameterValue);
    }
    if (XmlIrqs* irqs = module->getIrqs()) {
        const int node = grammar.lastAccepted(root, {"irqs"});
        checkValues(*irqs->getIrqs(), grammar.accepted(node, "irq"), node, grammar, reporter, kItemValue);
    }
    if (XmlCoordinates* coordinates = module->getCoordinates()) {
        const int node = grammar.lastAccepted(root, {"coordinates"});
        checkValues(
            *coordinates->getCoordinates(), grammar.accepted(node, "coordinate"), node, grammar, reporter, kItemValue);
    }
}

void checkCANopen(XmlProductModule* module, const ProductGrammar& grammar, Reporter& reporter, int root)
{
    QHash<unsigned int, QString> indexes;
    const QVector<int> objectNodes = grammar.accepted(root, "canopen_object");
    const QList<XmlCANopenObject*>& objects = *module->getCANopenObjects();
    for (int o = 0; o < objects.size(); ++o) {
        XmlCANopenObject* object = objects.at(o);
        if (!object)
            continue;
        const int node = pick(objectNodes, o, root);
        if (indexes.contains(object->getIndex()))
            reporter.report("KIV203", node,
                QStringLiteral("object index ") + hexText(object->getIndex()) + QStringLiteral(" is also ")
                    + shownText(indexes.value(object->getIndex()))
                    + QStringLiteral("; give each object its own index"));
        else
            indexes.insert(object->getIndex(), object->getName());
        QSet<unsigned int> subIndexes;
        const QVector<int> entryNodes = grammar.accepted(node, "canopen_entry");
        const QList<XmlCANopenEntry*>& entries = *object->getXmlCANopenEntries();
        for (int e = 0; e < entries.size(); ++e) {
            if (!entries.at(e))
                continue;
            const int entryNode = pick(entryNodes, e, node);
            if (subIndexes.contains(entries.at(e)->getSubIndex()))
                reporter.report("KIV202", entryNode,
                    QStringLiteral("sub-index ") + QString::number(entries.at(e)->getSubIndex())
                        + QStringLiteral(" of object ") + hexText(object->getIndex())
                        + QStringLiteral(" repeats; number the entries 0, 1, 2, ... without gaps or repeats"));
            subIndexes.insert(entries.at(e)->getSubIndex());
        }
        checkValues(entries, entryNodes, node, grammar, reporter, kItemValue);
    }
}

void checkDriveConfigurations(XmlProductModule* module, const ProductGrammar& grammar, Reporter& reporter, int root)
{
    QSet<int> numbers; // axis parameter numbers of any axis
    for (XmlAxisParameters* block : qAsConst(*module->getAxisParameters())) {
        for (XmlAxisParameter* parameter : qAsConst(*block->getAxisParameter())) {
            if (parameter)
                numbers.insert(parameter->type());
        }
    }
    const QVector<int> configNodes = grammar.accepted(root, "drive_configuration");
    const QList<XmlDriveConfiguration*>& configurations = *module->driveConfigurations();
    for (int c = 0; c < configurations.size(); ++c) {
        XmlDriveConfiguration* configuration = configurations.at(c);
        const int node = pick(configNodes, c, root);
        const QVector<int> groupNodes = grammar.accepted(node, "drive_ap_settings");
        const QList<XmlDriveApSettings*>& groups = *configuration->driveApSettings();
        for (int g = 0; g < groups.size(); ++g) {
            const int groupNode = pick(groupNodes, g, node);
            const QVector<int> settingNodes = grammar.accepted(groupNode, "drive_ap_setting");
            const QList<XmlDriveApSetting*>& settings = *groups.at(g)->driveApSettings();
            for (int s = 0; s < settings.size(); ++s) {
                if (!numbers.contains(settings.at(s)->type()))
                    reporter.report("KIV204", pick(settingNodes, s, groupNode),
                        QStringLiteral("drive configuration ") + shownText(configuration->name())
                            + QStringLiteral(" sets axis parameter ") + QString::number(settings.at(s)->type())
                            + QStringLiteral(", which no axis block has; correct the number or add the parameter"));
            }
        }
    }
}

} // namespace

void checkModule(XmlProductModule* module, const ProductGrammar& grammar, Reporter& reporter)
{
    if (!module)
        return;
    const int root = reporter.tree().root();
    checkParameters(module, grammar, reporter, root);
    checkInputsAndOutputs(module, grammar, reporter, root);
    checkCANopen(module, grammar, reporter, root);
    checkDriveConfigurations(module, grammar, reporter, root);
}
