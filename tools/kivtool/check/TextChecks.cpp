#include "Checks.h"

#include "Reporter.h"

#include <QRegularExpression>

namespace {

// Elements whose "name" attribute names them in pages, manuals and headers.
const char* const kNamedElements[] = {"value_register", "register_variant", "value_register_field", "group",
    "axis_parameter", "global_parameter", "digital_input", "digital_output", "analog_input", "irq", "coordinate",
    "canopen_object", "canopen_entry", "drive_configuration", "drive_ap_settings", "pin_group", "pin", "product_ic"};

bool isNamed(const QString& name)
{
    for (const char* named : kNamedElements) {
        if (name == QLatin1String(named))
            return true;
    }
    return false;
}

/// The first "\u" not followed by four hexadecimal digits, or -1.
int badEscape(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("\\\\u(?![0-9a-fA-F]{4})"));
    const QRegularExpressionMatch match = pattern.match(text);
    return match.hasMatch() ? match.capturedStart() : -1;
}

void checkEscapes(Reporter& reporter, int index)
{
    const SourceNode& node = reporter.tree().node(index);
    QString where;
    QString text;
    for (const QXmlStreamAttribute& attribute : node.attributes) {
        const QString value = attribute.value().toString();
        if (badEscape(value) >= 0) {
            where = QStringLiteral("attribute ") + attribute.name().toString();
            text = value;
            break;
        }
    }
    if (where.isEmpty() && badEscape(node.text) >= 0) {
        where = QStringLiteral("text");
        text = node.text;
    }
    if (where.isEmpty())
        return;
    const int at = badEscape(text);
    reporter.report("KIV002", index,
        QStringLiteral("<") + node.name + QStringLiteral("> ") + where + QStringLiteral(": ")
            + shownText(text.mid(at, 6))
            + QStringLiteral(" is kept as written: an escape is \\u and four hexadecimal digits (\\u00b0)"));
}

/// The text of an ESI "Name" child the parser keeps: without "LcId" or with 1033.
bool hasKeptName(const SourceTree& tree, int index)
{
    for (int child : tree.node(index).children) {
        const SourceNode& node = tree.node(child);
        const QStringRef lcid = node.attributes.value(QLatin1String("LcId"));
        if (node.name == QLatin1String("Name") && (lcid.isEmpty() || lcid == QLatin1String("1033"))
            && !node.text.trimmed().isEmpty())
            return true;
    }
    return false;
}

} // namespace

void checkTexts(Reporter& reporter, bool esi)
{
    const SourceTree& tree = reporter.tree();
    for (int index = 0; index < tree.nodes().size(); ++index) {
        const SourceNode& node = tree.node(index);
        if (esi) {
            const QString parent = node.parent >= 0 ? tree.node(node.parent).name : QString();
            if (((node.name == QLatin1String("Device") && parent == QLatin1String("Devices"))
                    || (node.name == QLatin1String("Group") && parent == QLatin1String("Groups")))
                && !hasKeptName(tree, index))
                reporter.report("KIV003", index,
                    QStringLiteral("this <") + node.name
                        + QStringLiteral("> has no English name (a <Name> without LcId or with LcId=\"1033\"); "
                                         "add one"));
            continue;
        }
        checkEscapes(reporter, index);
        if (isNamed(node.name) && node.attributes.value(QLatin1String("name")).trimmed().isEmpty())
            reporter.report("KIV003", index,
                QStringLiteral("<") + node.name
                    + QStringLiteral("> has no name; give it a name attribute, pages, manuals and headers show it"));
    }
}
