#include "LatexOutput.h"

#include "InputFile.h"
#include "LatexRepair.h"
#include "ModelMask.h"
#include "TextMask.h"

#include "ic/XmlGroup.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlProductModule.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

/// Each pdflatex run gets this long; the example manuals take a few seconds.
constexpr int kRunSeconds = 120;

struct IOKind
{
    const char* name;
    int kind;
    const char* title;
};

// The input/output tables, by the kind number the module's generator takes.
constexpr IOKind kIOKinds[] = {
    {"digital-inputs", 0, "Digital inputs"},
    {"analog-inputs", 1, "Analog inputs"},
    {"digital-outputs-sio", 2, "Digital outputs (SIO)"},
    {"digital-outputs-gio", 3, "Digital outputs (GIO)"},
};

LatexFragment fragment(const QString& text)
{
    LatexFragment result;
    result.ok = true;
    result.text = text;
    return result;
}

LatexFragment fragmentError(const QString& error, int exitCode = 2)
{
    LatexFragment result;
    result.error = error;
    result.exitCode = exitCode;
    return result;
}

QString canopenFragment(XmlProductModule* module)
{
    QStringList tables;
    for (const XmlCANopenObject* object : qAsConst(*module->getCANopenObjects())) {
        if (object)
            tables << object->toLatex();
    }
    return tables.join(QLatin1Char('\n'));
}

/// List position of the bank with this number, or -1.
int bankIndex(XmlProductModule* module, const QString& argument)
{
    bool ok = false;
    const int bank = argument.toInt(&ok);
    const QList<XmlGlobalParameters*>& banks = *module->getGlobalParameters();
    for (int index = 0; ok && index < banks.size(); ++index) {
        if (banks.at(index) && banks.at(index)->getBank() == bank)
            return index;
    }
    return -1;
}

QString bankNumbers(XmlProductModule* module)
{
    QStringList numbers;
    for (const XmlGlobalParameters* bank : qAsConst(*module->getGlobalParameters())) {
        if (bank)
            numbers << QString::number(bank->getBank());
    }
    return numbers.isEmpty() ? QStringLiteral("none") : numbers.join(QLatin1String(", "));
}

int ioKind(const QString& argument)
{
    for (const IOKind& kind : kIOKinds) {
        if (argument == QLatin1String(kind.name) || argument == QString::number(kind.kind))
            return kind.kind;
    }
    return -1;
}

LatexFragment moduleFragment(XmlProductModule* module, const QString& name, const QString& argument)
{
    if (name == QLatin1String("header"))
        return fragment(module->toLaTeXHeader());
    if (name == QLatin1String("axis"))
        return fragment(module->toLaTeXAxisParam());
    if (name == QLatin1String("canopen"))
        return fragment(canopenFragment(module));
    if (name == QLatin1String("global")) {
        if (argument.isEmpty())
            return fragmentError(QStringLiteral("kivtool: the fragment global needs a BANK number (banks: %1)")
                                     .arg(bankNumbers(module)));
        const int index = bankIndex(module, argument);
        if (index < 0)
            return fragmentError(QStringLiteral("kivtool: no global parameter bank \"%1\" (banks: %2)")
                                     .arg(argument, bankNumbers(module)));
        return fragment(module->toLaTeXGlobalParamBank(index));
    }
    if (name == QLatin1String("ios")) {
        const int kind = ioKind(argument);
        if (argument.isEmpty())
            return fragmentError(QStringLiteral("kivtool: the fragment ios needs a KIND (kinds: digital-inputs, "
                                                "analog-inputs, digital-outputs-sio, digital-outputs-gio)"));
        if (kind < 0)
            return fragmentError(QStringLiteral("kivtool: no input/output kind \"%1\" (kinds: digital-inputs, "
                                                "analog-inputs, digital-outputs-sio, digital-outputs-gio)")
                                     .arg(argument));
        return fragment(module->toLaTeXIOs(kind));
    }
    return fragmentError(QStringLiteral("kivtool: a module has no fragment \"%1\"").arg(name));
}

XmlGroup* groupById(XmlProductIC* ic, const QString& argument)
{
    bool ok = false;
    const unsigned int id = argument.toUInt(&ok, 0);
    XmlRegisterSet* set = ic->registerSet();
    if (!ok || !set)
        return nullptr;
    for (XmlGroup* group : qAsConst(*set->getGroups())) {
        if (group && group->getID() == id)
            return group;
    }
    return nullptr;
}

QString groupIds(XmlProductIC* ic)
{
    QStringList ids;
    if (XmlRegisterSet* set = ic->registerSet()) {
        for (const XmlGroup* group : qAsConst(*set->getGroups())) {
            if (group)
                ids << QString::number(group->getID());
        }
    }
    return ids.isEmpty() ? QStringLiteral("none") : ids.join(QLatin1String(", "));
}

LatexFragment icFragment(XmlProductIC* ic, const QString& name, const QString& argument)
{
    if (name == QLatin1String("regmap"))
        return fragment(ic->toLaTeXRegisterMap());
    if (name == QLatin1String("regmap-defaults"))
        return fragment(ic->toLaTeXRegisterMapDefaults());
    if (name == QLatin1String("overview"))
        return fragment(ic->toLaTeXRegisterOverview());
    if (name == QLatin1String("overview-group")) {
        if (argument.isEmpty())
            return fragmentError(
                QStringLiteral("kivtool: the fragment overview-group needs a group ID (groups: %1)").arg(groupIds(ic)));
        XmlGroup* group = groupById(ic, argument);
        if (!group)
            return fragmentError(
                QStringLiteral("kivtool: no register group \"%1\" (groups: %2)").arg(argument, groupIds(ic)));
        return fragment(ic->toLaTeXRegisterOverviewByGroup(group));
    }
    return fragmentError(QStringLiteral("kivtool: an IC has no fragment \"%1\"").arg(name));
}

QString readTemplate(const QString& resource)
{
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromUtf8(file.readAll());
}

QString moduleBody(XmlProductModule* module)
{
    QString body;
    body.reserve(64 * 1024);
    body += QLatin1String("\\section{Axis parameters}\n");
    body += module->toLaTeXAxisParam();
    const QList<XmlGlobalParameters*>& banks = *module->getGlobalParameters();
    if (!banks.isEmpty())
        body += QLatin1String("\n\n\\section{Global parameters}\n");
    for (int index = 0; index < banks.size(); ++index) {
        if (!banks.at(index))
            continue;
        body += QStringLiteral("\n\\subsection{Bank %1}\n").arg(banks.at(index)->getBank());
        body += module->toLaTeXGlobalParamBank(index);
    }
    QString ios;
    for (const IOKind& kind : kIOKinds) {
        const QString table = module->toLaTeXIOs(kind.kind);
        if (table.isEmpty())
            continue;
        ios += QStringLiteral("\n\\subsection{%1}\n").arg(QLatin1String(kind.title));
        ios += table;
    }
    if (!ios.isEmpty()) {
        body += QLatin1String("\n\n\\section{Inputs and outputs}\n");
        body += ios;
    }
    const QString canopen = canopenFragment(module);
    if (!canopen.isEmpty()) {
        body += QLatin1String("\n\n\\section{CANopen objects}\n\\subsection{Object dictionary}\n");
        body += canopen;
    }
    return body;
}

QString icBody(XmlProductIC* ic)
{
    QString body;
    body.reserve(64 * 1024);
    body += QLatin1String("\\section{Register overview}\n");
    body += ic->toLaTeXRegisterOverview();
    body += QLatin1String("\n\n\\section{Register map}\n");
    body += ic->toLaTeXRegisterMap();
    // The defaults table anchors the same names as the register map; one set of anchors is enough.
    body += QLatin1String("\n\n\\section{Register defaults}\n\\begingroup\\footnotesize\\renewcommand{\\label}[1]{}");
    body += ic->toLaTeXRegisterMapDefaults();
    body += QLatin1String("\n\\endgroup");
    return body;
}

/// The last lines of pdflatex's log that start with "!" (its error lines), or its tail.
QString latexErrorExcerpt(const QString& logPath)
{
    QFile log(logPath);
    if (!log.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    const QStringList lines = QString::fromLocal8Bit(log.readAll()).split(QLatin1Char('\n'));
    for (int i = 0; i < lines.size(); ++i) {
        if (lines.at(i).startsWith(QLatin1Char('!')))
            return lines.mid(i, 6).join(QLatin1Char('\n'));
    }
    return lines.mid(qMax(0, lines.size() - 10)).join(QLatin1Char('\n'));
}

} // namespace

QStringList latexFragmentNames(const InputFile& input)
{
    if (input.module())
        return {QStringLiteral("header"), QStringLiteral("axis"), QStringLiteral("global BANK"),
            QStringLiteral("ios KIND"), QStringLiteral("canopen")};
    if (input.ic())
        return {QStringLiteral("regmap"), QStringLiteral("regmap-defaults"), QStringLiteral("overview"),
            QStringLiteral("overview-group ID")};
    return {};
}

LatexFragment latexFragment(const InputFile& input, const QString& name, const QString& argument)
{
    if (XmlProductModule* module = input.module())
        return moduleFragment(module, name, argument);
    if (XmlProductIC* ic = input.ic())
        return icFragment(ic, name, argument);
    return fragmentError(QStringLiteral("kivtool: an ESI file has no LaTeX fragments; use 'kivtool json'"), 1);
}

QString latexManual(const InputFile& input)
{
    // The generators escape some texts partly and others not at all: they render placeholders, and every
    // text comes back escaped once.
    TextMask mask;
    QString document;
    if (XmlProductModule* module = input.module()) {
        maskModule(module, mask);
        document = readTemplate(QStringLiteral(":/templates/module-manual.tex"));
        document.replace(QLatin1String("%%HEADER%%"), LatexRepair::bankMacrosByName(module->toLaTeXHeader()));
        document.replace(QLatin1String("%%BODY%%"), LatexRepair::standaloneBody(moduleBody(module)));
    } else if (XmlProductIC* ic = input.ic()) {
        maskIC(ic, mask);
        document = readTemplate(QStringLiteral(":/templates/ic-manual.tex"));
        document.replace(QLatin1String("%%TITLE%%"), ic->name());
        document.replace(QLatin1String("%%AUTHOR%%"), ic->author());
        document.replace(QLatin1String("%%VERSION%%"), ic->version());
        document.replace(QLatin1String("%%DATE%%"), ic->date());
        document.replace(QLatin1String("%%DESCRIPTION%%"), ic->mainDescription()->join(QLatin1String("\n\n")));
        document.replace(QLatin1String("%%BODY%%"), LatexRepair::standaloneBody(icBody(ic)));
    }
    return mask.unmask(document, TextMask::Target::Latex);
}

QString manualBaseName(const QString& inputPath)
{
    if (inputPath == QLatin1String("<stdin>"))
        return QStringLiteral("stdin");
    QString name = QFileInfo(inputPath).completeBaseName();
    for (QChar& c : name) {
        if (c == QLatin1Char('\\') || c == QLatin1Char('%') || c == QLatin1Char('~') || c == QLatin1Char('"')
            || c.category() == QChar::Other_Control)
            c = QLatin1Char('_');
    }
    return name;
}

bool typesetPdf(const QString& texFile, QString* message)
{
    const QString pdflatex = QStandardPaths::findExecutable(QStringLiteral("pdflatex"));
    if (pdflatex.isEmpty()) {
        *message = QStringLiteral("kivtool: pdflatex not found; install it with "
                                  "'apt-get install texlive-latex-base texlive-latex-recommended "
                                  "texlive-latex-extra' (or run 'make demo', which does)");
        return false;
    }
    const QFileInfo info(texFile);
    // The document is the file's text: no shell commands, reading and writing only inside the output
    // folder, nothing to read from the terminal, and a time limit for a document that never ends.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("openin_any"), QStringLiteral("p"));
    environment.insert(QStringLiteral("openout_any"), QStringLiteral("p"));
    environment.remove(QStringLiteral("TEXMFOUTPUT"));
    const QStringList arguments {QStringLiteral("-no-shell-escape"), QStringLiteral("-halt-on-error"),
        QStringLiteral("-interaction=nonstopmode"), QStringLiteral("./") + info.fileName()};
    // Long tables settle their column widths over several runs; stop once LaTeX no longer asks.
    for (int run = 0; run < 4; ++run) {
        QProcess process;
        process.setWorkingDirectory(info.absolutePath());
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setStandardInputFile(QProcess::nullDevice());
        process.start(pdflatex, arguments);
        const bool finished = process.waitForFinished(kRunSeconds * 1000);
        if (!finished && process.state() != QProcess::NotRunning) {
            process.kill();
            process.waitForFinished();
            *message = QStringLiteral("kivtool: pdflatex took longer than %1 s on %2; stopped")
                           .arg(QString::number(kRunSeconds), texFile);
            return false;
        }
        if (!finished || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
            const QString logPath
                = info.absolutePath() + QLatin1Char('/') + info.completeBaseName() + QLatin1String(".log");
            *message = QStringLiteral("kivtool: pdflatex failed on %1 (see %2):\n%3")
                           .arg(texFile, logPath, latexErrorExcerpt(logPath));
            return false;
        }
        const QByteArray output = process.readAll();
        if (!output.contains("Rerun") && !output.contains("rerun"))
            return true;
    }
    return true;
}
