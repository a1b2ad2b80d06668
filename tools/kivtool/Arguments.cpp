#include "Arguments.h"

namespace {

/// An option as the help shows it. `id` is what commands list; several ids may share one spelling (the
/// output of "manual" is a folder, every other output a file).
struct Option
{
    const char* id;
    const char* longName;
    char shortName; ///< 0: none
    const char* valueName; ///< null: a switch
    const char* description;
};

const Option kOptions[] = {
    {"output", "output", 'o', "path", "Write to <path> instead of standard output."},
    {"output-dir", "output", 'o', "dir", "Write the manual into the folder <dir> (created when missing)."},
    {"fragment", "fragment", 0, "name", "The LaTeX fragment <name> to write."},
    {"pdf", "pdf", 0, nullptr, "Also typeset the manual with pdflatex."},
    {"json", "json", 0, nullptr, "Write JSON instead of text."},
    {"candidates", "candidates", 0, nullptr, "Decode every candidate variant while a selector is unknown."},
    {"base", "base", 0, "value", "Start from <value> instead of the register's default."},
    {"context", "context", 0, "pair", "A known register value REG=VALUE that selects variants; repeatable."},
    {"force", "force", 0, nullptr, "Write read-only fields and values outside their range as given."},
    {"all-bases", "all-bases", 0, nullptr, "Also print the value in decimal and binary."},
    {"prefix", "prefix", 0, "name", "Begin every identifier with <name> (default: the product's name)."},
    {"selftest", "selftest", 0, "path", "Also write a C self-test of the header's fields to <path>."},
    {"plain", "plain", 0, nullptr, "Write the library's static page (no script) instead of the reference page."},
    {"sarif", "sarif", 0, nullptr, "Write SARIF 2.1.0 for code-review platforms instead of text."},
    {"disable", "disable", 0, "ids", "Leave out the checks <ids> (comma-separated, e.g. KIV001,KIV003); repeatable."},
    {"markdown", "markdown", 0, nullptr, "Write Markdown for release notes and reviews instead of text."},
    {"device", "device", 0, "n", "Only the ESI device at position <n> (from 0, as 'kivtool esi find' shows it)."},
    {"db", "db", 0, "file", "The catalog database (default: esi-catalog.sqlite in the user's cache folder)."},
    {"vendor", "vendor", 0, "id", "find, list: only devices of this vendor id (0x or #x hexadecimal, or decimal)."},
    {"product", "product", 0, "code", "find: only this product code."},
    {"revision", "revision", 0, "rev", "find: only this revision number."},
    {"nearest", "nearest", 0, nullptr, "find: when the revision is missing, the nearest of the same product."},
    {"name", "name", 0, "text", "find: a part of a device's name (any language) or type, in any case."},
};

const Option kCommonOptions[] = {
    {"verbose", "verbose", 0, nullptr, "Show what the parser skipped, did not recognise, or read as 0 or cut short."},
    {"help", "help", 'h', nullptr, "Show this help."},
};

const Option* findOption(const QString& id)
{
    for (const Option& option : kOptions) {
        if (id == QLatin1String(option.id))
            return &option;
    }
    return nullptr;
}

/// The option of `command` spelled `name` (long name, or one letter), or null.
const Option* optionOf(const Command* command, const QString& name, bool isShort)
{
    if (!command)
        return nullptr;
    for (const QString& id : command->options) {
        const Option* option = findOption(id);
        if (option
            && (isShort ? name.size() == 1 && option->shortName == name.at(0).toLatin1()
                        : name == QLatin1String(option->longName)))
            return option;
    }
    return nullptr;
}

QString dashed(const QString& name, bool isShort)
{
    return (isShort ? QStringLiteral("-") : QStringLiteral("--")) + name;
}

QString optionLabel(const Option& option)
{
    QString label = option.shortName ? QStringLiteral("-") + QLatin1Char(option.shortName) + QStringLiteral(", ")
                                     : QStringLiteral("    ");
    label += QStringLiteral("--") + QLatin1String(option.longName);
    if (option.valueName)
        label += QStringLiteral(" <") + QLatin1String(option.valueName) + QLatin1Char('>');
    return label;
}

QString optionLines(const QList<const Option*>& options)
{
    QString lines;
    for (const Option* option : options)
        lines += QStringLiteral("  ") + optionLabel(*option).leftJustified(24) + QStringLiteral("  ")
            + QLatin1String(option->description) + QLatin1Char('\n');
    return lines;
}

QList<const Option*> commonOptions()
{
    QList<const Option*> options;
    for (const Option& option : kCommonOptions)
        options << &option;
    return options;
}

} // namespace

QString Arguments::value(const QString& option) const
{
    const QStringList given = values.value(option);
    return given.isEmpty() ? QString() : given.last();
}

const QList<Command>& commands()
{
    static const QList<Command> list {
        {"info", "info FILE [-o <path>]", "what the file holds, in a few lines",
            "Writes the file's kind, name and version and the sizes of its parts.",
            "kivtool info examples/ic/kiv-ic-example.xml", {QStringLiteral("output")}},
        {"dump", "dump FILE [-o <path>]", "the model's debug text",
            "Writes the debug text of the parsed model: every element the parser kept, indented by level.",
            "kivtool dump examples/module/kiv-module-example.xml | less", {QStringLiteral("output")}},
        {"html", "html FILE [--plain] [-o <path>]", "the product's reference page",
            "Writes an interactive reference page of a module, IC or ESI file: one self-contained UTF-8 document\n"
            "with search, bit layouts and a register decoder. It loads nothing; its one script is allowed by\n"
            "hash. With --plain, writes the library's static page of a module or IC instead (texts as written,\n"
            "control characters as escapes such as \\x1B; no script).",
            "kivtool html examples/ic/kiv-ic-example.xml -o kiv-ic.html",
            {QStringLiteral("plain"), QStringLiteral("output")}},
        {"latex", "latex FILE --fragment <name> [ARG] [-o <path>]", "one LaTeX fragment of the manual",
            "Writes one LaTeX fragment as the library generates it for the hand-written manual.\n"
            "  module: header, axis, global BANK, ios KIND, canopen\n"
            "          (KIND: digital-inputs, analog-inputs, digital-outputs-sio, digital-outputs-gio)\n"
            "  IC:     regmap, regmap-defaults, overview, overview-group ID",
            "kivtool latex examples/module/kiv-module-example.xml --fragment global 2",
            {QStringLiteral("fragment"), QStringLiteral("output")}, 1, 2},
        {"manual", "manual FILE -o <dir> [--pdf]", "a standalone LaTeX manual, typeset with --pdf",
            "Writes a standalone LaTeX manual of a module or an IC into <dir> and, with --pdf, typesets it with "
            "pdflatex. Prints the paths it wrote. Texts from the file are typeset as written; pdflatex runs\n"
            "without shell escape, reads and writes only inside <dir> and is stopped after 120 s.",
            "kivtool manual examples/ic/kiv-ic-example.xml -o manual --pdf",
            {QStringLiteral("output-dir"), QStringLiteral("pdf")}},
        {"json", "json FILE [-o <path>]", "the model as JSON",
            "Writes the parsed model as pretty-printed JSON: modules and ICs as docs/json.md describes, ESI files as "
            "docs/esi-json.md does.",
            "kivtool json examples/ic/kiv-ic-example.xml | jq '.registerSet.registers[0]'",
            {QStringLiteral("output"), QStringLiteral("device")}},
        {"decode", "decode FILE REG=VALUE... [--json] [--candidates]", "what register values of an IC mean",
            "Decodes each register value given: every field of the register's variant with its raw value and\n"
            "meaning, the bits no field covers, and warnings (values out of range, alerts). REG is a register\n"
            "name or address; VALUE is decimal, 0x hexadecimal or 0b binary. Each pair is decoded in the context\n"
            "of all the others, so the selecting registers given on the same line choose the variants; while a\n"
            "selector is unknown the candidate variants are listed with the selector value each needs.",
            "kivtool decode examples/ic/kiv-ic-example.xml BRG_SELECT=0x21 BRG_DECAY=0x1125A46",
            {QStringLiteral("json"), QStringLiteral("candidates"), QStringLiteral("output")}, 2, -1,
            "a FILE and REG=VALUE"},
        {"encode",
            "encode FILE REG FIELD=VALUE... [--base <value>] [--context REG=VALUE]... [--force] [--json] [--all-bases]",
            "the register value that sets the given fields",
            "Writes the value of register REG with the given fields set, starting from --base or the register's\n"
            "default. FIELD is matched case-insensitively; VALUE is a number (negative ones for signed fields) or\n"
            "a choice's text. --context gives the selecting registers' values that choose the variant. A value\n"
            "that does not fit, a read-only field or a value out of range is refused unless --force is given.",
            "kivtool encode examples/ic/kiv-ic-example.xml BRG_DECAY t_slow=10 blank=\"1.5 us\" --context "
            "BRG_SELECT=2",
            {QStringLiteral("base"), QStringLiteral("context"), QStringLiteral("force"), QStringLiteral("json"),
                QStringLiteral("all-bases"), QStringLiteral("output")},
            2, -1, "a FILE and REG"},
        {"header", "header FILE [-o <path>] [--prefix <name>] [--selftest <path>]",
            "a C header of the product's numbers",
            "Writes a C header (C99, C11, C++) for firmware or host software: an IC's registers with their fields\n"
            "(_Pos, _Msk, _Width, _Reset), named values and layouts, or a module's parameter, input, output and\n"
            "CANopen numbers. Names that collide are reported and nothing is written (exit 1); warnings are printed\n"
            "and the header is written. --selftest (IC, with -o) also writes a C program that checks every field.",
            "kivtool header examples/ic/kiv-ic-example.xml -o kiv5q7.h --selftest kiv5q7_test.c",
            {QStringLiteral("output"), QStringLiteral("prefix"), QStringLiteral("selftest")}},
        {"check", "check FILE... [--json | --sarif] [--disable <ids>]", "mistakes in product and ESI files",
            "Checks each file for mistakes the parser reads without complaint: overlapping fields, masks and\n"
            "defaults that do not fit, duplicate registers and parameters, variants no selector can choose,\n"
            "elements the parser skips. Each finding has a stable identifier (docs/checks.md), a severity and\n"
            "the file, line and column of the element. Exit 0 without an error, 1 with one, 2 when a file\n"
            "cannot be read.",
            "kivtool check examples/ic/kiv-ic-example.xml --sarif > kivtool.sarif",
            {QStringLiteral("json"), QStringLiteral("sarif"), QStringLiteral("disable")}, 1, -1, "a FILE"},
        {"diff", "diff OLD NEW [--json | --markdown]", "what changed between two files of one kind",
            "Compares two files of the same kind (module, IC or ESI) by identity: registers by address and\n"
            "name, fields by name within their variant, parameters by block and number, CANopen objects by\n"
            "index and sub-index, ESI devices by product code and revision. Lists what was added, removed and\n"
            "changed, with the old and new value of each attribute. Exit 0 when equal, 1 when different, 2 on\n"
            "error.",
            "kivtool diff old/kiv-ic-example.xml examples/ic/kiv-ic-example.xml --markdown",
            {QStringLiteral("json"), QStringLiteral("markdown")}, 2, 2, "OLD and NEW"},
        {"esi", "esi index|find|list [DIR] [--db <file>] ...", "a catalog of the devices in a folder of ESI files",
            "Keeps a catalog of the devices in a folder of ESI files and finds them by identity.\n"
            "  index DIR   reads every *.xml under DIR (again only those whose size or time changed; vanished\n"
            "              ones are dropped); failing files are listed with their reason (exit 1)\n"
            "  find        devices by --vendor, --product, --revision (with --nearest: the highest revision\n"
            "              below, else the lowest above, of the same vendor and product) and --name TEXT\n"
            "  list        every device, or one vendor's with --vendor\n"
            "find and list print each device's file and position for 'kivtool json FILE --device N'.",
            "kivtool esi index ~/esi && kivtool esi find --vendor 0x2 --product 0x0C8E3052 --revision 0x00120000 "
            "--nearest",
            {QStringLiteral("db"), QStringLiteral("vendor"), QStringLiteral("product"), QStringLiteral("revision"),
                QStringLiteral("nearest"), QStringLiteral("name"), QStringLiteral("json")},
            1, 2, "a subcommand: index, find or list"},
    };
    return list;
}

const Command* findCommand(const QString& name)
{
    for (const Command& command : commands()) {
        if (name == QLatin1String(command.name))
            return &command;
    }
    return nullptr;
}

Arguments parseArguments(const QStringList& arguments)
{
    Arguments result;
    const Command* command = nullptr;
    bool optionsEnded = false;
    for (int index = 0; index < arguments.size() && result.error.isEmpty(); ++index) {
        const QString& argument = arguments.at(index);
        const bool isOption = !optionsEnded && argument.size() > 1 && argument.startsWith(QLatin1Char('-'));
        if (!isOption) {
            if (result.command.isEmpty()) {
                result.command = argument;
                command = findCommand(argument);
            } else {
                result.operands << argument;
            }
            continue;
        }
        if (argument == QLatin1String("--")) {
            optionsEnded = true;
            continue;
        }
        const bool isShort = !argument.startsWith(QLatin1String("--"));
        QString name = argument.mid(isShort ? 1 : 2);
        QString inlineValue;
        bool hasInlineValue = false;
        if (isShort && name.size() > 1) { // -oFILE
            inlineValue = name.mid(1);
            hasInlineValue = true;
            name.truncate(1);
        } else if (!isShort && name.contains(QLatin1Char('='))) { // --output=FILE
            inlineValue = name.section(QLatin1Char('='), 1);
            hasInlineValue = true;
            name = name.section(QLatin1Char('='), 0, 0);
        }
        if (name == QLatin1String("help") || (isShort && name == QLatin1String("h"))) {
            result.help = true;
        } else if (!isShort && name == QLatin1String("version")) {
            result.version = true;
        } else if (!isShort && name == QLatin1String("verbose")) {
            result.verbose = true;
        } else if (const Option* option = optionOf(command, name, isShort)) {
            const QString key = QLatin1String(option->longName);
            if (!option->valueName) {
                if (hasInlineValue)
                    result.error
                        = QStringLiteral("option ") + dashed(name, isShort) + QStringLiteral(" takes no value");
                else if (!result.values.contains(key))
                    result.values.insert(key, QStringList());
            } else if (hasInlineValue) {
                result.values[key] << inlineValue;
            } else if (index + 1 < arguments.size()) {
                result.values[key] << arguments.at(++index);
            } else {
                result.error = QStringLiteral("option ") + dashed(name, isShort) + QStringLiteral(" needs a value <")
                    + QLatin1String(option->valueName) + QLatin1Char('>');
            }
        } else if (command) {
            result.error = QStringLiteral("the ") + QLatin1String(command->name)
                + QStringLiteral(" command has no option ") + dashed(name, isShort);
        } else {
            result.error = QStringLiteral("unknown option ") + dashed(name, isShort);
        }
    }
    return result;
}

QString generalHelp()
{
    QString help = QStringLiteral("Usage: kivtool COMMAND FILE [OPTIONS]\n"
                                  "       kivtool help COMMAND\n\n"
                                  "Reads product description files (module or IC) and ESI files.\n\n"
                                  "Commands:\n");
    // A synopsis too long for the column gets its summary on a line of its own, in the column.
    const int column = 48;
    for (const Command& command : commands()) {
        const QString synopsis = QString::fromLatin1(command.synopsis);
        help += QStringLiteral("  ") + synopsis;
        help += synopsis.size() > column ? QLatin1Char('\n') + QString(column + 4, QLatin1Char(' '))
                                         : QString(column + 2 - synopsis.size(), QLatin1Char(' '));
        help += QLatin1String(command.summary) + QLatin1Char('\n');
    }
    QList<const Option*> options = commonOptions();
    const Option version {"version", "version", 0, nullptr, "Show the versions of kivtool and its library."};
    options << &version;
    help += QStringLiteral("\nOptions of every command:\n") + optionLines(options);
    help += QStringLiteral("\nFILE may be - for standard input.\n"
                           "Exit status: 0 done, 1 the file is not one the command can use (malformed, foreign "
                           "root,\nno model), 2 a file cannot be read or written, or the command line is wrong.\n\n"
                           "Run 'kivtool help COMMAND' for a command's options and an example.\n");
    return help;
}

QString commandHelp(const Command& command)
{
    QList<const Option*> options;
    for (const QString& id : command.options) {
        if (const Option* option = findOption(id))
            options << option;
    }
    options += commonOptions();
    QString help = QStringLiteral("Usage: kivtool ") + QLatin1String(command.synopsis) + QStringLiteral("\n\n");
    help += QLatin1String(command.description) + QStringLiteral("\n\nOptions:\n") + optionLines(options);
    help += QStringLiteral("\nExample:\n  ") + QLatin1String(command.example) + QLatin1Char('\n');
    return help;
}
