#include "ProductGrammar.h"

#include "Reporter.h"
#include "SourceTree.h"

#include <QStringList>

namespace {

enum class Role
{
    Parses, ///< has a parse function with a child loop of its own
    Reads, ///< read from its start tag; what is inside it meets the loop around it
    ReadsText, ///< a text child: the one token after its start tag is its text, even a start tag
    Consumes, ///< read to its end tag; nothing inside it is looked at
};

struct Element
{
    const char* name;
    Role role;
    QStringList children; ///< what its child loop takes (Parses only)
};

const QStringList kParameterValues {QStringLiteral("value_signed"), QStringLiteral("value_unsigned"),
    QStringLiteral("value_bool"), QStringLiteral("value_choice"), QStringLiteral("value_register")};
const QStringList kReadOutValues {QStringLiteral("value_date"), QStringLiteral("value_time"),
    QStringLiteral("value_version"), QStringLiteral("value_ascii")};

const QList<Element>& elements()
{
    static const QList<Element> table {
        {"product_module", Role::Parses,
            {QStringLiteral("name"), QStringLiteral("name_fw_version"), QStringLiteral("name_fw_type"),
                QStringLiteral("hardware_version"), QStringLiteral("software_version"), QStringLiteral("pin_map"),
                QStringLiteral("database"), QStringLiteral("axis_parameters"), QStringLiteral("global_parameters"),
                QStringLiteral("digital_inputs"), QStringLiteral("digital_outputs"), QStringLiteral("analog_inputs"),
                QStringLiteral("canopen_object"), QStringLiteral("drive_configuration"), QStringLiteral("irqs"),
                QStringLiteral("coordinates")}},
        {"product_ic", Role::Parses,
            {QStringLiteral("desc"), QStringLiteral("database"), QStringLiteral("pins"),
                QStringLiteral("register_set")}},
        {"axis_parameters", Role::Parses, {QStringLiteral("axis_parameter")}},
        {"global_parameters", Role::Parses, {QStringLiteral("global_parameter")}},
        {"digital_inputs", Role::Parses, {QStringLiteral("digital_input")}},
        {"digital_outputs", Role::Parses, {QStringLiteral("digital_output")}},
        {"analog_inputs", Role::Parses, {QStringLiteral("analog_input")}},
        {"irqs", Role::Parses, {QStringLiteral("irq")}},
        {"coordinates", Role::Parses, {QStringLiteral("coordinate")}},
        {"axis_parameter", Role::Parses, QStringList {QStringLiteral("desc")} + kParameterValues},
        {"global_parameter", Role::Parses, QStringList {QStringLiteral("desc")} + kParameterValues},
        {"digital_input", Role::Parses,
            {QStringLiteral("desc"), QStringLiteral("value_bool"), QStringLiteral("value_unsigned")}},
        {"digital_output", Role::Parses,
            {QStringLiteral("desc"), QStringLiteral("value_bool"), QStringLiteral("value_unsigned"),
                QStringLiteral("value_signed")}},
        {"analog_input", Role::Parses, {QStringLiteral("desc"), QStringLiteral("value_unsigned")}},
        {"irq", Role::Parses, {QStringLiteral("desc"), QStringLiteral("value_bool")}},
        {"coordinate", Role::Parses, {QStringLiteral("desc"), QStringLiteral("value_signed")}},
        {"canopen_object", Role::Parses, {QStringLiteral("desc"), QStringLiteral("canopen_entry")}},
        {"canopen_entry", Role::Parses, kParameterValues + kReadOutValues},
        {"drive_configuration", Role::Parses, {QStringLiteral("drive_ap_settings")}},
        {"drive_ap_settings", Role::Parses, {QStringLiteral("drive_ap_setting")}},
        {"drive_ap_setting", Role::Parses, {}},
        {"value_choice", Role::Parses, {QStringLiteral("choice_element")}},
        {"database", Role::Parses, {QStringLiteral("value_db"), QStringLiteral("value_bool2")}},
        {"pins", Role::Parses, {QStringLiteral("pin_group")}},
        {"pin_group", Role::Parses, {QStringLiteral("pin")}},
        {"pin", Role::Parses, {}},
        {"pin_map", Role::Parses, {QStringLiteral("pin_mapping")}},
        {"pin_mapping", Role::Parses, {}},
        {"register_set", Role::Parses, {QStringLiteral("group"), QStringLiteral("value_register")}},
        {"group", Role::Parses, {}},
        {"value_register", Role::Parses, {QStringLiteral("register_variant")}},
        {"register_variant", Role::Parses,
            {QStringLiteral("desc"), QStringLiteral("value_register_field"), QStringLiteral("register_variant_impacts"),
                QStringLiteral("register_variant_impacted_by")}},
        {"value_register_field", Role::Parses,
            QStringList {QStringLiteral("value_signed"), QStringLiteral("value_unsigned"), QStringLiteral("value_bool"),
                QStringLiteral("value_choice")}
                + kReadOutValues + QStringList {QStringLiteral("value_alert")}},
        {"register_variant_impacts", Role::Parses, {}},
        {"register_variant_impacted_by", Role::Parses, {}},
        {"desc", Role::ReadsText, {}},
        {"name", Role::ReadsText, {}},
        {"name_fw_version", Role::ReadsText, {}},
        {"name_fw_type", Role::ReadsText, {}},
        {"hardware_version", Role::ReadsText, {}},
        {"software_version", Role::ReadsText, {}},
        {"value_signed", Role::Reads, {}},
        {"value_unsigned", Role::Reads, {}},
        {"value_bool", Role::Reads, {}},
        {"value_date", Role::Reads, {}},
        {"value_time", Role::Reads, {}},
        {"value_version", Role::Reads, {}},
        {"value_ascii", Role::Reads, {}},
        {"choice_element", Role::Reads, {}},
        {"value_bool2", Role::Consumes, {}},
        {"value_db", Role::Consumes, {}},
        {"value_alert", Role::Consumes, {}},
    };
    return table;
}

const Element* findElement(const QString& name)
{
    for (const Element& element : elements()) {
        if (name == QLatin1String(element.name))
            return &element;
    }
    return nullptr;
}

} // namespace

ProductGrammar::ProductGrammar(const SourceTree& tree, Reporter& reporter)
    : m_tree(tree)
    , m_reporter(reporter)
{
    const int root = tree.root();
    if (root >= 0 && findElement(tree.node(root).name))
        walk(root, root, false);
}

void ProductGrammar::walk(int context, int node, bool dropsFirstChild)
{
    const QString& contextName = m_tree.node(context).name;
    const Element* contextElement = findElement(contextName);
    const bool isRoot = context == m_tree.root();
    const QVector<int>& children = m_tree.node(node).children;
    for (int i = 0; i < children.size(); ++i) {
        const int child = children.at(i);
        const SourceNode& element = m_tree.node(child);
        if (i == 0 && dropsFirstChild && element.immediate) {
            m_reporter.report("KIV001", child,
                QStringLiteral("<") + element.name + QStringLiteral("> (") + m_tree.path(child)
                    + QStringLiteral(") is skipped: the parser takes its start tag as the text before it; put a "
                                     "line break before it"));
            walk(context, child, false);
            continue;
        }
        const Element* known
            = contextElement && contextElement->children.contains(element.name) ? findElement(element.name) : nullptr;
        if (!known) {
            if (element.name == QLatin1String("value_alert"))
                m_reporter.report("KIV112", child,
                    QStringLiteral("this alert stands in <") + contextName
                        + QStringLiteral(">, where nothing takes it, and is lost; move it into the "
                                         "<value_register_field> it warns about"));
            else
                m_reporter.report("KIV001", child,
                    QStringLiteral("<") + element.name + QStringLiteral("> (") + m_tree.path(child)
                        + QStringLiteral(") is not an element <") + contextName
                        + QStringLiteral("> reads; the parser skips it (what is inside it is read as if it stood "
                                         "in <")
                        + contextName + QStringLiteral(">); fix its name or remove it"));
            walk(context, child, isRoot);
            continue;
        }
        m_accepted[context].append(child);
        switch (known->role) {
        case Role::Parses: {
            // The module reads "pin_map" and "database" one token late: their first child's start tag then.
            const bool late = contextName == QLatin1String("product_module")
                && (element.name == QLatin1String("pin_map") || element.name == QLatin1String("database"));
            walk(child, child, late);
            break;
        }
        case Role::Reads:
            walk(context, child, false);
            break;
        case Role::ReadsText:
            walk(context, child, true);
            break;
        case Role::Consumes:
            for (int inner : element.children)
                m_reporter.report("KIV001", inner,
                    QStringLiteral("<") + m_tree.node(inner).name + QStringLiteral("> (") + m_tree.path(inner)
                        + QStringLiteral(") is skipped: nothing inside <") + element.name
                        + QStringLiteral("> is read; remove it"));
            break;
        }
    }
}

QVector<int> ProductGrammar::accepted(int context, const char* name) const
{
    QVector<int> found;
    for (int node : m_accepted.value(context)) {
        if (m_tree.node(node).name == QLatin1String(name))
            found.append(node);
    }
    return found;
}

int ProductGrammar::lastAccepted(int context, std::initializer_list<const char*> names) const
{
    const QVector<int> all = m_accepted.value(context);
    for (int i = all.size() - 1; i >= 0; --i) {
        for (const char* name : names) {
            if (m_tree.node(all.at(i)).name == QLatin1String(name))
                return all.at(i);
        }
    }
    return -1;
}
