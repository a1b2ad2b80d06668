// kivtool: opens a product description or ESI file and writes its summary, debug text, HTML page,
// LaTeX fragments or manual, or JSON export.

#include "HtmlOutput.h"
#include "InputFile.h"
#include "JsonOutput.h"
#include "LatexOutput.h"
#include "Summary.h"

#include "esi/XmlEtherCATInfo.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdio>

namespace {

bool g_verbose = false;

/// The library reports what it skips on the debug log; users see it with --verbose only.
void messageHandler(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtDebugMsg && !g_verbose)
        return;
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

int fail(int exitCode, const QString& message)
{
    std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
    return exitCode;
}

/// Writes to `path`, or to stdout when it is empty. 0 on success, 2 with a message otherwise.
int writeOutput(const QString& text, const QString& path)
{
    const QByteArray bytes = text.toUtf8();
    if (path.isEmpty()) {
        std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
        return std::fflush(stdout) == 0 ? 0 : fail(2, QStringLiteral("kivtool: cannot write to standard output"));
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        return fail(2, QStringLiteral("kivtool: cannot write %1: %2").arg(path, file.errorString()));
    return 0;
}

QString withNewline(QString text)
{
    if (!text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    return text;
}

int runLatex(const InputFile& input, const QString& fragmentName, const QStringList& rest, const QString& output)
{
    if (fragmentName.isEmpty())
        return fail(2,
            QStringLiteral("kivtool: latex needs --fragment NAME; this file offers: %1")
                .arg(latexFragmentNames(input).join(QLatin1String(", "))));
    const LatexFragment result = latexFragment(input, fragmentName, rest.value(0));
    if (!result.ok)
        return fail(1, result.error);
    return writeOutput(withNewline(result.text), output);
}

int runManual(const InputFile& input, const QString& directory, bool pdf)
{
    if (directory.isEmpty())
        return fail(2, QStringLiteral("kivtool: manual needs -o DIR"));
    const QString document = latexManual(input);
    if (document.isEmpty())
        return fail(1, QStringLiteral("kivtool: %1: an ESI file has no manual; use 'kivtool json'").arg(input.path()));
    if (!QDir().mkpath(directory))
        return fail(2, QStringLiteral("kivtool: cannot create directory %1").arg(directory));
    const QString texPath
        = QDir(directory).filePath(QFileInfo(input.path()).completeBaseName() + QLatin1String(".tex"));
    if (const int status = writeOutput(document, texPath))
        return status;
    std::printf("%s\n", QDir::toNativeSeparators(texPath).toLocal8Bit().constData());
    if (!pdf)
        return 0;
    QString message;
    if (!typesetPdf(texPath, &message))
        return fail(1, message);
    const QString pdfPath = texPath.left(texPath.size() - 4) + QLatin1String(".pdf");
    std::printf("%s\n", QDir::toNativeSeparators(pdfPath).toLocal8Bit().constData());
    return 0;
}

int runJson(const InputFile& input, const QString& output)
{
    return writeOutput(QString::fromUtf8(QJsonDocument(jsonObject(input)).toJson(QJsonDocument::Indented)), output);
}

const char* const kCommands = "Commands:\n"
                              "  info FILE                          what the file holds, in a few lines\n"
                              "  dump FILE                          the model's debug text\n"
                              "  html FILE [-o OUT]                 the product's HTML page\n"
                              "  latex FILE --fragment NAME [ARG]   one LaTeX fragment:\n"
                              "      module: header, axis, global BANK, ios KIND, canopen\n"
                              "              (KIND: digital-inputs, analog-inputs, digital-outputs-sio,\n"
                              "               digital-outputs-gio)\n"
                              "      IC:     regmap, regmap-defaults, overview, overview-group ID\n"
                              "  manual FILE -o DIR [--pdf]         a standalone LaTeX manual, typeset with --pdf\n"
                              "  json FILE [-o OUT]                 the ESI file as JSON\n";

} // namespace

int main(int argc, char* argv[])
{
    qInstallMessageHandler(messageHandler);
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kivtool"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KIVTOOL_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Reads product description files (module or IC) and ESI files.\n\n") + QLatin1String(kCommands));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption outputOption({QStringLiteral("o"), QStringLiteral("output")},
        QStringLiteral("Write to FILE (for manual: into DIR) instead of standard output."), QStringLiteral("path"));
    const QCommandLineOption fragmentOption(
        QStringLiteral("fragment"), QStringLiteral("The LaTeX fragment to write."), QStringLiteral("name"));
    const QCommandLineOption pdfOption(QStringLiteral("pdf"), QStringLiteral("Also typeset the manual with pdflatex."));
    const QCommandLineOption verboseOption(
        QStringLiteral("verbose"), QStringLiteral("Show what the parser skipped or did not recognise."));
    parser.addOptions({outputOption, fragmentOption, pdfOption, verboseOption});
    parser.addPositionalArgument(QStringLiteral("command"), QStringLiteral("info, dump, html, latex, manual or json."));
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("The file to read."));
    parser.addPositionalArgument(
        QStringLiteral("argument"), QStringLiteral("The fragment's argument."), QStringLiteral("[argument]"));
    parser.process(app);
    g_verbose = parser.isSet(verboseOption);

    QStringList positional = parser.positionalArguments();
    if (positional.size() < 2)
        return fail(2, QStringLiteral("kivtool: a command and a file are needed\n\n") + parser.helpText());
    const QString command = positional.takeFirst();
    static const QStringList commands {QStringLiteral("info"), QStringLiteral("dump"), QStringLiteral("html"),
        QStringLiteral("latex"), QStringLiteral("manual"), QStringLiteral("json")};
    if (!commands.contains(command))
        return fail(2, QStringLiteral("kivtool: unknown command \"%1\"\n\n%2").arg(command, QLatin1String(kCommands)));
    const QString path = positional.takeFirst();
    if (command != QLatin1String("latex") && !positional.isEmpty())
        return fail(2, QStringLiteral("kivtool: unexpected argument \"%1\"").arg(positional.first()));

    LoadError error;
    const std::unique_ptr<InputFile> input = InputFile::load(path, &error);
    if (!input)
        return fail(error.exitCode, error.message);

    const QString output = parser.value(outputOption);
    if (command == QLatin1String("info"))
        return writeOutput(summaryText(*input), output);
    if (command == QLatin1String("dump"))
        return writeOutput(withNewline(input->debugText()), output);
    if (command == QLatin1String("html")) {
        const QString html = htmlDocument(*input);
        if (html.isEmpty())
            return fail(1, QStringLiteral("kivtool: %1: an ESI file has no HTML page; use 'kivtool json'").arg(path));
        return writeOutput(html, output);
    }
    if (command == QLatin1String("latex"))
        return runLatex(*input, parser.value(fragmentOption), positional, output);
    if (command == QLatin1String("manual"))
        return runManual(*input, output, parser.isSet(pdfOption));
    return runJson(*input, output);
}
