#include "EsiCommands.h"

#include "Arguments.h"
#include "InputFile.h"
#include "Output.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlDevice.h"
#include "esi/ESIXmlVendor.h"
#include "esi/EsiCatalog.h"
#include "esi/XmlEtherCATInfo.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace {

struct Subcommand
{
    const char* name;
    QStringList options; ///< what it takes of the esi command's options
    int operands; ///< after the subcommand's name
    const char* needs;
};

const Subcommand kSubcommands[] = {
    {"index", {QStringLiteral("db"), QStringLiteral("json")}, 1, "a folder DIR"},
    {"find",
        {QStringLiteral("db"), QStringLiteral("vendor"), QStringLiteral("product"), QStringLiteral("revision"),
            QStringLiteral("nearest"), QStringLiteral("name"), QStringLiteral("json")},
        0, nullptr},
    {"list", {QStringLiteral("db"), QStringLiteral("vendor"), QStringLiteral("json")}, 0, nullptr},
};

int usage(const QString& message)
{
    return fail(2, QStringLiteral("kivtool: ") + message + QStringLiteral("\nTry 'kivtool help esi'."));
}

/// Exit status of a catalog failure: the user's input (a folder without ESI files) is 1, the rest 2.
int catalogFailure(const EsiCatalog& catalog)
{
    return fail(
        catalog.error() == EsiCatalog::Error::NoEsiFiles ? 1 : 2, QStringLiteral("kivtool: ") + catalog.errorString());
}

QString hex(quint32 value)
{
    return QStringLiteral("0x") + QString::number(value, 16).toUpper().rightJustified(8, QLatin1Char('0'));
}

/// A path as a shell reads it back: quoted when it holds anything but plain characters.
QString shellWord(const QString& path)
{
    for (const QChar c : path) {
        if (!(c.isLetterOrNumber() || QStringLiteral("/._-+,:@%").contains(c)))
            return QLatin1Char('\'') + QString(path).replace(QLatin1String("'"), QLatin1String("'\\''"))
                + QLatin1Char('\'');
    }
    return path;
}

QJsonObject deviceJson(const EsiDeviceIdentity& device)
{
    QJsonObject json;
    json.insert(QStringLiteral("vendorId"), qint64(device.vendorId));
    json.insert(QStringLiteral("vendorName"), device.vendorName);
    json.insert(QStringLiteral("productCode"), qint64(device.productCode));
    json.insert(QStringLiteral("revision"), qint64(device.revision));
    json.insert(QStringLiteral("type"), device.type);
    json.insert(QStringLiteral("name"), device.name);
    json.insert(QStringLiteral("names"), QJsonArray::fromStringList(device.names));
    json.insert(QStringLiteral("group"), device.group);
    json.insert(QStringLiteral("groupName"), device.groupName);
    json.insert(QStringLiteral("file"), device.file);
    json.insert(QStringLiteral("position"), device.position);
    return json;
}

/// Two lines a device: identity, type and name, then the command that shows it whole.
QString deviceText(const EsiDeviceIdentity& device)
{
    QString text = hex(device.vendorId) + QLatin1Char(' ') + hex(device.productCode) + QLatin1Char(' ')
        + hex(device.revision) + QStringLiteral("  ") + device.type + QStringLiteral("  ") + device.name;
    if (!device.group.isEmpty())
        text += QStringLiteral("  [") + (device.groupName.isEmpty() ? device.group : device.groupName)
            + QLatin1Char(']');
    return text + QStringLiteral("\n    kivtool json ") + shellWord(device.file) + QStringLiteral(" --device ")
        + QString::number(device.position) + QLatin1Char('\n');
}

int writeDevices(const QVector<EsiDeviceIdentity>& devices, bool json, bool substituted)
{
    if (json) {
        QJsonArray array;
        for (const EsiDeviceIdentity& device : devices) {
            QJsonObject object = deviceJson(device);
            if (substituted)
                object.insert(QStringLiteral("nearest"), true);
            array.append(object);
        }
        return writeStandardOutput(QString::fromUtf8(QJsonDocument(array).toJson(QJsonDocument::Indented)));
    }
    QString text;
    for (const EsiDeviceIdentity& device : devices)
        text += deviceText(device);
    return writeStandardOutput(text);
}

/// Reads a number option (hexadecimal with 0x or #x, else decimal); false after reporting a usage error.
bool numberOption(const Arguments& arguments, const char* option, std::optional<quint32>* value, int* status)
{
    const QString name = QLatin1String(option);
    if (!arguments.isSet(name))
        return true;
    quint32 number = 0;
    if (!EsiCatalogReader::parseNumber(arguments.value(name), &number)) {
        *status = usage(QStringLiteral("--") + name + QStringLiteral(" needs a number (0x or #x hexadecimal, or ")
            + QStringLiteral("decimal; at most 32 bits), not ") + quoted(arguments.value(name)));
        return false;
    }
    *value = number;
    return true;
}

/// Writes scan progress to stderr: rewritten in place on a terminal, a line every few seconds otherwise;
/// nothing for scans that end within a second.
class ProgressLine
{
public:
    void update(const EsiScanProgress& state)
    {
        const qint64 interval = m_terminal ? 200 : 3000;
        if (state.elapsedMs < 1000 || state.elapsedMs - m_last < interval)
            return;
        m_last = state.elapsedMs;
        const double megabytes = state.bytesDone / 1e6;
        const QString line = QString::asprintf("kivtool: %d of %d files, %.0f of %.0f MB, %.1f MB/s", state.filesDone,
            state.filesTotal, megabytes, state.bytesTotal / 1e6, megabytes * 1000.0 / qMax<qint64>(1, state.elapsedMs));
        const QString shown = m_terminal ? QString(QStringLiteral("\r") + line + QStringLiteral("\x1b[K"))
                                         : QString(line + QLatin1Char('\n'));
        std::fputs(qPrintable(shown), stderr);
        m_shown = true;
    }
    void finish()
    {
        if (m_terminal && m_shown)
            std::fputs("\r\x1b[K", stderr);
    }

private:
    const bool m_terminal = isTerminal(stderr);
    qint64 m_last = 0;
    bool m_shown = false;
};

int runIndex(EsiCatalog& catalog, const QString& folder, bool json)
{
    ProgressLine progress;
    EsiScanResult result;
    const bool ok
        = catalog.index(folder, &result, [&progress](const EsiScanProgress& state) { progress.update(state); });
    progress.finish();
    if (!ok && catalog.error() != EsiCatalog::Error::NoEsiFiles)
        return catalogFailure(catalog);
    for (const EsiScanFailure& failure : result.failures) {
        QString where = failure.file;
        if (failure.line > 0)
            where += QLatin1Char(':') + QString::number(failure.line) + QLatin1Char(':')
                + QString::number(failure.column);
        fail(0, QStringLiteral("kivtool: ") + where + QStringLiteral(": ") + failure.reason);
    }
    const double seconds = result.elapsedMs / 1000.0;
    const double rate = result.bytesRead / 1e6 / qMax(0.001, seconds);
    int status = 0;
    if (json) {
        QJsonArray failures;
        for (const EsiScanFailure& failure : result.failures)
            failures.append(QJsonObject {{QStringLiteral("file"), failure.file}, {QStringLiteral("line"), failure.line},
                {QStringLiteral("column"), failure.column}, {QStringLiteral("reason"), failure.reason},
                {QStringLiteral("earlier"), failure.fromEarlierScan}});
        const QJsonObject summary {{QStringLiteral("db"), catalog.path()},
            {QStringLiteral("folder"), QDir(folder).absolutePath()}, {QStringLiteral("files"), result.filesFound},
            {QStringLiteral("read"), result.filesRead}, {QStringLiteral("unchanged"), result.filesUnchanged},
            {QStringLiteral("removed"), result.filesRemoved}, {QStringLiteral("notEsi"), result.filesNotEsi},
            {QStringLiteral("devices"), result.devices}, {QStringLiteral("bytesRead"), result.bytesRead},
            {QStringLiteral("seconds"), seconds}, {QStringLiteral("failures"), failures}};
        status = writeStandardOutput(QString::fromUtf8(QJsonDocument(summary).toJson(QJsonDocument::Indented)));
    } else {
        QString text = QStringLiteral("catalog: ") + catalog.path() + QLatin1Char('\n');
        text += QStringLiteral("files: ") + QString::number(result.filesFound) + QStringLiteral(" (read ")
            + QString::number(result.filesRead) + QStringLiteral(", unchanged ")
            + QString::number(result.filesUnchanged) + QStringLiteral(", removed ")
            + QString::number(result.filesRemoved) + QStringLiteral(", not ESI ") + QString::number(result.filesNotEsi)
            + QStringLiteral(")\n");
        text += QStringLiteral("devices: ") + QString::number(result.devices) + QLatin1Char('\n');
        text += QStringLiteral("read: ") + QString::number(result.bytesRead / 1e6, 'f', 1) + QStringLiteral(" MB in ")
            + QString::number(seconds, 'f', 2) + QStringLiteral(" s (") + QString::number(rate, 'f', 1)
            + QStringLiteral(" MB/s)\n");
        text += QStringLiteral("failures: ") + QString::number(result.failures.size()) + QLatin1Char('\n');
        for (const EsiScanFailure& failure : result.failures)
            text += QStringLiteral("  ") + failure.file + QStringLiteral(": ") + failure.reason
                + (failure.fromEarlierScan ? QStringLiteral(" (unchanged since an earlier scan)") : QString())
                + QLatin1Char('\n');
        status = writeStandardOutput(text);
    }
    if (status)
        return status;
    if (!ok)
        return catalogFailure(catalog);
    return result.failures.isEmpty() ? 0 : 1;
}

} // namespace

int runEsi(const Arguments& arguments)
{
    const QString name = arguments.operands.first();
    const Subcommand* subcommand = nullptr;
    for (const Subcommand& candidate : kSubcommands) {
        if (name == QLatin1String(candidate.name))
            subcommand = &candidate;
    }
    if (!subcommand)
        return usage(QStringLiteral("no esi subcommand ") + quoted(name) + QStringLiteral(" (index, find, list)"));
    const int operands = arguments.operands.size() - 1;
    if (operands < subcommand->operands)
        return usage(QStringLiteral("esi ") + name + QStringLiteral(" needs ") + QLatin1String(subcommand->needs));
    if (operands > subcommand->operands)
        return usage(QStringLiteral("unexpected argument ") + quoted(arguments.operands.at(subcommand->operands + 1)));
    for (auto it = arguments.values.cbegin(); it != arguments.values.cend(); ++it) {
        if (!subcommand->options.contains(it.key()))
            return usage(QStringLiteral("esi ") + name + QStringLiteral(" has no option --") + it.key());
    }

    EsiCatalogQuery query;
    int status = 0;
    if (!numberOption(arguments, "vendor", &query.vendorId, &status)
        || !numberOption(arguments, "product", &query.productCode, &status)
        || !numberOption(arguments, "revision", &query.revision, &status))
        return status;
    query.nearest = arguments.isSet(QStringLiteral("nearest"));
    query.text = arguments.value(QStringLiteral("name"));
    if (query.nearest && !(query.vendorId && query.productCode && query.revision))
        return usage(QStringLiteral("--nearest needs --vendor, --product and --revision"));

    const bool json = arguments.isSet(QStringLiteral("json"));
    const QString db
        = arguments.isSet(QStringLiteral("db")) ? arguments.value(QStringLiteral("db")) : EsiCatalog::defaultPath();
    EsiCatalog catalog;
    const bool indexing = name == QLatin1String("index");
    if (!catalog.open(db, indexing))
        return catalogFailure(catalog);
    if (indexing)
        return runIndex(catalog, arguments.operands.at(1), json);

    bool substituted = false;
    const QVector<EsiDeviceIdentity> devices = catalog.find(query, &substituted);
    if (catalog.error() != EsiCatalog::Error::None)
        return catalogFailure(catalog);
    if (substituted && !devices.isEmpty())
        fail(0,
            QStringLiteral("kivtool: no revision ") + hex(*query.revision) + QStringLiteral("; nearest: ")
                + hex(devices.first().revision)
                + (devices.first().revision < *query.revision ? QStringLiteral(" (the highest below)")
                                                              : QStringLiteral(" (the lowest above)")));
    if (const int written = writeDevices(devices, json, substituted))
        return written;
    if (devices.isEmpty()) {
        // A list of nothing is an answer for list; find reports what it did not find.
        if (name == QLatin1String("find"))
            return fail(1, QStringLiteral("kivtool: no device matches"));
    }
    return 0;
}

int runJsonDevice(const InputFile& input, const Arguments& arguments)
{
    const QString lead = QStringLiteral("kivtool: ") + input.path() + QStringLiteral(": ");
    XmlEtherCATInfo* info = input.esi();
    if (!info)
        return fail(1,
            lead + QStringLiteral("--device picks a device of an ESI file; this is a ") + input.kindName()
                + QStringLiteral(" file"));
    bool ok = false;
    const int position = arguments.value(QStringLiteral("device")).toInt(&ok);
    if (!ok || position < 0)
        return usage(QStringLiteral("--device needs a position from 0, as 'kivtool esi find' prints it"));
    // Positions count the devices of all "Descriptions" sections in file order, as the catalog does.
    int seen = 0;
    for (const ESIXmlDescriptions* descriptions : info->getDescriptions()) {
        if (!descriptions)
            continue;
        for (const ESIXmlDevice* device : descriptions->getDevices()) {
            if (!device || seen++ != position)
                continue;
            QJsonObject deviceObject;
            device->toJson(deviceObject);
            QJsonObject section;
            section.insert(QStringLiteral("Descriptions"), QJsonArray {deviceObject});
            QJsonObject json;
            json.insert(QStringLiteral("EtherCATInfo"), QJsonArray {section});
            if (const ESIXmlVendor* vendor = info->getVendor())
                vendor->toJson(json);
            return writeOutput(QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Indented)),
                arguments.value(QStringLiteral("output")));
        }
    }
    return fail(1,
        lead + QStringLiteral("no device ") + QString::number(position) + QStringLiteral(" (the file has ")
            + QString::number(seen) + QStringLiteral(" devices, from 0)"));
}
