// kivtool: opens a product description or ESI file and writes its summary, debug text, HTML page,
// LaTeX fragments or manual, or JSON export.

#include "Arguments.h"
#include "EsiCommands.h"
#include "HeaderCommand.h"
#include "HtmlOutput.h"
#include "InputFile.h"
#include "JsonOutput.h"
#include "LatexOutput.h"
#include "Output.h"
#include "ReferencePage.h"
#include "RegisterCommands.h"
#include "Summary.h"
#include "base/KivCoreVersion.h"
#include "check/CheckCommand.h"
#include "diff/DiffCommand.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

namespace {

bool g_verbose = false;

/// The library reports what it skips on the debug log; users see it with --verbose only.
void messageHandler(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtDebugMsg && !g_verbose)
        return;
    fail(0, message);
}

int usageError(const QString& message, const QString& command = QString())
{
    const QString hint
        = command.isEmpty() ? QStringLiteral("kivtool --help") : QStringLiteral("kivtool help ") + command;
    return fail(2, QStringLiteral("kivtool: ") + message + QStringLiteral("\nTry '") + hint + QStringLiteral("'."));
}

QString withNewline(QString text)
{
    if (!text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return text;
}

int runLatex(const InputFile& input, const Arguments& arguments)
{
    const QString output = arguments.value(QStringLiteral("output"));
    if (!arguments.isSet(QStringLiteral("fragment")))
        return usageError(QStringLiteral("latex needs --fragment <name>; this file offers: ")
                + latexFragmentNames(input).join(QLatin1String(", ")),
            QStringLiteral("latex"));
    const LatexFragment result
        = latexFragment(input, arguments.value(QStringLiteral("fragment")), arguments.operands.value(1));
    if (!result.ok)
        return fail(result.exitCode, result.error);
    return writeOutput(withNewline(result.text), output);
}

int runManual(const InputFile& input, const Arguments& arguments)
{
    const QString directory = arguments.value(QStringLiteral("output"));
    if (directory.isEmpty())
        return usageError(QStringLiteral("manual needs -o <dir>"), QStringLiteral("manual"));
    const QString document = latexManual(input);
    if (document.isEmpty())
        return fail(1,
            QStringLiteral("kivtool: ") + input.path()
                + QStringLiteral(": an ESI file has no manual; use 'kivtool json'"));
    if (!QDir().mkpath(directory))
        return fail(2, QStringLiteral("kivtool: cannot create directory ") + directory);
    const QString baseName = manualBaseName(input.path());
    const QString texPath = QDir(directory).filePath(baseName + QLatin1String(".tex"));
    if (const int status = writeFile(texPath, document.toUtf8()))
        return status;
    if (const int status = writeStandardOutput(QDir::toNativeSeparators(texPath) + QLatin1Char('\n')))
        return status;
    if (!arguments.isSet(QStringLiteral("pdf")))
        return 0;
    QString message;
    if (!typesetPdf(texPath, &message))
        return fail(1, message);
    const QString pdfPath = texPath.left(texPath.size() - 4) + QLatin1String(".pdf");
    return writeStandardOutput(QDir::toNativeSeparators(pdfPath) + QLatin1Char('\n'));
}

int runJson(const InputFile& input, const QString& output)
{
    return writeOutput(QString::fromUtf8(QJsonDocument(jsonObject(input)).toJson(QJsonDocument::Indented)), output);
}

int run(const Arguments& arguments)
{
    const QString& command = arguments.command;
    const Command* definition = findCommand(command);
    if (arguments.operands.size() < definition->minOperands)
        return usageError(command + QStringLiteral(" needs ") + QLatin1String(definition->needs), command);
    if (definition->maxOperands >= 0 && arguments.operands.size() > definition->maxOperands)
        return usageError(
            QStringLiteral("unexpected argument ") + quoted(arguments.operands.at(definition->maxOperands)), command);
    if (command == QLatin1String("esi"))
        return runEsi(arguments);

    if (command == QLatin1String("check"))
        return runCheck(arguments);
    if (command == QLatin1String("diff"))
        return runDiff(arguments);

    LoadError error;
    QStringList audit;
    const std::unique_ptr<InputFile> input
        = InputFile::load(arguments.operands.first(), &error, arguments.verbose ? &audit : nullptr);
    for (const QString& finding : audit)
        fail(0, finding);
    if (!input)
        return fail(error.exitCode, error.message);

    const QString output = arguments.value(QStringLiteral("output"));
    if (command == QLatin1String("info"))
        return writeOutput(summaryText(*input), output);
    if (command == QLatin1String("dump"))
        return writeOutput(withNewline(input->debugText()), output);
    if (command == QLatin1String("html")) {
        if (!arguments.isSet(QStringLiteral("plain")))
            return writeOutput(referencePage(*input), output);
        const QString html = htmlDocument(*input);
        if (html.isEmpty())
            return fail(1,
                QStringLiteral("kivtool: ") + input->path()
                    + QStringLiteral(": an ESI file has no HTML page; use 'kivtool json'"));
        return writeOutput(html, output);
    }
    if (command == QLatin1String("latex"))
        return runLatex(*input, arguments);
    if (command == QLatin1String("manual"))
        return runManual(*input, arguments);
    if (command == QLatin1String("decode") || command == QLatin1String("encode"))
        return runRegisterCommand(*input, arguments);
    if (command == QLatin1String("header"))
        return runHeader(*input, arguments);
    if (arguments.isSet(QStringLiteral("device")))
        return runJsonDevice(*input, arguments);
    return runJson(*input, output);
}

} // namespace

int main(int argc, char* argv[])
{
    qInstallMessageHandler(messageHandler);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kivtool"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KIVTOOL_VERSION));

    QStringList rest = QCoreApplication::arguments();
    rest.removeFirst();
    const Arguments arguments = parseArguments(rest);
    g_verbose = arguments.verbose;

    // The library's version is the one loaded at run time, which an update of libkivcore0 alone changes.
    if (arguments.version)
        return writeStandardOutput(QStringLiteral("kivtool ") + QStringLiteral(KIVTOOL_VERSION)
            + QStringLiteral(" (kivcore ") + KivCore::version() + QStringLiteral(")\n"));
    if (arguments.command == QLatin1String("help")) {
        if (arguments.operands.isEmpty())
            return writeStandardOutput(generalHelp());
        const Command* topic = findCommand(arguments.operands.first());
        if (!topic)
            return usageError(QStringLiteral("no command ") + quoted(arguments.operands.first()));
        return writeStandardOutput(commandHelp(*topic));
    }
    const Command* command = findCommand(arguments.command);
    if (arguments.command.isEmpty() && !arguments.error.isEmpty())
        return usageError(arguments.error);
    if (arguments.command.isEmpty())
        return arguments.help ? writeStandardOutput(generalHelp())
                              : usageError(QStringLiteral("a command and a file are needed"));
    if (!command)
        return usageError(QStringLiteral("unknown command ") + quoted(arguments.command));
    if (!arguments.error.isEmpty())
        return usageError(arguments.error, arguments.command);
    if (arguments.help)
        return writeStandardOutput(commandHelp(*command));
    return run(arguments);
}
