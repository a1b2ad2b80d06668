#include "Checks.h"

#include "Reporter.h"

#include <QHash>

namespace {

/// An ESI number as a master reads it: "#x" and hexadecimal digits, or decimal digits. (The device model
/// drops two characters either way; --verbose names the decimal ones it misreads.)
quint32 esiNumber(const QStringRef& text)
{
    const QStringRef trimmed = text.trimmed();
    if (trimmed.startsWith(QLatin1String("#x"), Qt::CaseInsensitive))
        return trimmed.mid(2).toUInt(nullptr, 16);
    return trimmed.toUInt(nullptr, 10);
}

} // namespace

void checkEsi(Reporter& reporter)
{
    const SourceTree& tree = reporter.tree();
    QHash<quint64, int> devices; // product code and revision -> first device element
    for (int index = 0; index < tree.nodes().size(); ++index) {
        const SourceNode& node = tree.node(index);
        if (node.name != QLatin1String("Device") || node.parent < 0
            || tree.node(node.parent).name != QLatin1String("Devices"))
            continue;
        for (int child : node.children) {
            const SourceNode& type = tree.node(child);
            if (type.name != QLatin1String("Type"))
                continue;
            const QStringRef code = type.attributes.value(QLatin1String("ProductCode"));
            const QStringRef revision = type.attributes.value(QLatin1String("RevisionNo"));
            const quint64 key = (quint64(esiNumber(code)) << 32) | esiNumber(revision);
            if (devices.contains(key)) {
                const SourceNode& first = tree.node(devices.value(key));
                reporter.report("KIV301", index,
                    QStringLiteral("product code ") + shownText(code.toString()) + QStringLiteral(" revision ")
                        + shownText(revision.toString()) + QStringLiteral(" is also the device at line ")
                        + QString::number(first.line)
                        + QStringLiteral("; a master tells devices apart by these two: change one"));
            } else {
                devices.insert(key, index);
            }
            break;
        }
    }
}
