#include "base/ExternPDF.h"
#include "base/ExternPDF_p.h"

#include "base/CoreLogging_p.h"
#include "base/Global.h"

#include <QDebug>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

#ifdef Q_OS_WIN
#include <shellapi.h>
#include <windows.h>
#endif

namespace {

ExternPDF* s_instance = nullptr;
const char kInstanceName[] = "___ExternPDF___";

// Tested in this order; the association counts only for these.
const char* const kWindowsViewers[] = {"PDFXCview.exe", "AcroRd32.exe", "FoxitReader.exe", "FoxitReaderPortable.exe",
    "chrome.exe", "firefox.exe", "SumatraPDF.exe"};

bool endsWith(const QString& program, const char* ending)
{
    return program.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
}

ExternPDFPrivate::Viewer viewer(const QString& program, QStringList fixedArguments, const QString& destinationTemplate,
    bool destinationAfterFile = false)
{
    ExternPDFPrivate::Viewer v;
    v.program = program;
    v.fixedArguments = fixedArguments;
    v.destinationTemplate = destinationTemplate;
    v.destinationAfterFile = destinationAfterFile;
    return v;
}

ExternPDFPrivate::Viewer windowsViewer(const QString& program)
{
    if (endsWith(program, "PDFXCview.exe"))
        return viewer(program, {QStringLiteral("/A")}, QStringLiteral("toolbar=1&pagemode=bookmarks&nameddest=%1"));
    // Deliberately "toolbar=0" here and "toolbar=1" above: each viewer's own default.
    if (endsWith(program, "AcroRd32.exe"))
        return viewer(program, {QStringLiteral("/n"), QStringLiteral("/A")},
            QStringLiteral("toolbar=0&pagemode=bookmarks&nameddest=%1"));
    if (endsWith(program, "chrome.exe") || endsWith(program, "firefox.exe"))
        return viewer(program, {}, QStringLiteral("file:///%2#nameddest=%1"));
    if (endsWith(program, "FoxitReader.exe") || endsWith(program, "FoxitReaderPortable.exe"))
        return viewer(program, {QStringLiteral("/A")}, QStringLiteral("nameddest=%1"), true);
    return viewer(program,
        {QStringLiteral("-reuse-instance"), QStringLiteral("-view"), QStringLiteral("single page"),
            QStringLiteral("-named-dest")},
        QStringLiteral("%1"));
}

// Viewers of Linux desktops, recognised by the program's file name.
bool unixViewer(const QString& program, ExternPDFPrivate::Viewer& result)
{
    const QString name = QFileInfo(program).fileName().toLower();
    static const QStringList namedDest = {QStringLiteral("evince"), QStringLiteral("atril"), QStringLiteral("xreader")};
    static const QStringList browsers = {QStringLiteral("chromium"), QStringLiteral("chromium-browser"),
        QStringLiteral("google-chrome"), QStringLiteral("google-chrome-stable"), QStringLiteral("chrome"),
        QStringLiteral("firefox"), QStringLiteral("firefox-esr")};
    if (namedDest.contains(name)) {
        result = viewer(program, {QStringLiteral("--named-dest")}, QStringLiteral("%1"));
    } else if (name == QLatin1String("okular")) {
        result = viewer(program, {}, QStringLiteral("%2#%1"));
    } else if (browsers.contains(name)) {
        result = viewer(program, {}, QStringLiteral("file://%2#nameddest=%1"));
    } else if (name == QLatin1String("zathura")) {
        // Has no named destinations on its command line: the document opens at its start.
        result = viewer(program, {}, QString());
        result.withoutDestination = true;
    } else {
        return false;
    }
    return true;
}

} // namespace

ExternPDFPrivate::Viewer ExternPDFPrivate::chooseViewer(
    const QString& associated, const QString& documentDir, Platform platform)
{
    if (!associated.isEmpty()) {
        for (const char* ending : kWindowsViewers) {
            if (endsWith(associated, ending))
                return windowsViewer(associated);
        }
        Viewer result;
        if (platform == Platform::Unix && unixViewer(associated, result))
            return result;
    }
    if (platform == Platform::Windows)
        return windowsViewer(documentDir + QLatin1String("/SumatraPDF.exe")); // a viewer kept beside the manuals
    Viewer opener = viewer(QStringLiteral("xdg-open"), {}, QString());
    opener.withoutDestination = true;
    return opener;
}

QStringList ExternPDFPrivate::arguments(const Viewer& viewer, const QString& destination, const QString& path)
{
    QStringList result = viewer.fixedArguments;
    if (viewer.withoutDestination) {
        result.append(path);
    } else if (viewer.fixedArguments.isEmpty()) {
        result.append(viewer.destinationTemplate.arg(destination, path));
    } else if (!viewer.destinationAfterFile) {
        result.append(viewer.destinationTemplate.arg(destination));
        result.append(path);
    } else {
        result.append(path);
        result.append(viewer.destinationTemplate.arg(destination));
    }
    return result;
}

QString ExternPDFPrivate::desktopEntryProgram(const QString& desktopFilePath)
{
    QFile file(desktopFilePath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    QTextStream in(&file);
    QString line;
    bool inMainGroup = false;
    QString exec;
    while (in.readLineInto(&line)) {
        line = line.trimmed();
        if (line.startsWith(QLatin1Char('[')))
            inMainGroup = line == QLatin1String("[Desktop Entry]");
        else if (inMainGroup && line.startsWith(QLatin1String("Exec="))) {
            exec = line.mid(5).trimmed();
            break;
        }
    }
    QString program;
    if (exec.startsWith(QLatin1Char('"'))) {
        const int close = exec.indexOf(QLatin1Char('"'), 1);
        program = exec.mid(1, close < 0 ? -1 : close - 1);
    } else {
        program = exec.section(QLatin1Char(' '), 0, 0);
    }
    if (program.isEmpty() || QDir::isAbsolutePath(program))
        return program;
    const QString found = QStandardPaths::findExecutable(program);
    return found.isEmpty() ? program : found;
}

QString ExternPDFPrivate::defaultPdfProgram()
{
    QProcess query;
    query.start(QStringLiteral("xdg-mime"),
        {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("application/pdf")});
    if (!query.waitForStarted(30000))
        return QString();
    query.waitForFinished(30000);
    const QString id = QString::fromLocal8Bit(query.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0).trimmed();
    if (id.isEmpty())
        return QString();
    QString entry = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, id);
    if (entry.isEmpty() && id.contains(QLatin1Char('-'))) // "vendor-name.desktop" may live in "vendor/"
        entry = QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
            QString(id).replace(id.indexOf(QLatin1Char('-')), 1, QLatin1Char('/')));
    return entry.isEmpty() ? QString() : desktopEntryProgram(entry);
}

ExternPDF::ExternPDF(const QString& name, const QString& pdfFile)
    : m_document(pdfFile)
{
    setObjectName(name);
    QString associated;
#ifdef Q_OS_WIN
    char found[MAX_PATH] = {};
    const QByteArray document = pdfFile.toLocal8Bit();
    const INT_PTR result = reinterpret_cast<INT_PTR>(FindExecutableA(document.constData(), nullptr, found));
    const QString executable = QString::fromLocal8Bit(found);
    qDebug() << "ExternPDF::ExternPDF(const QString&, const QString&)"
             << "Default PDF Reader:" << executable;
    if (result > 32)
        associated = executable;
    const ExternPDFPrivate::Platform platform = ExternPDFPrivate::Platform::Windows;
#else
    associated = ExternPDFPrivate::defaultPdfProgram();
    qDebug() << "ExternPDF::ExternPDF(const QString&, const QString&)"
             << "Default PDF Reader:" << associated;
    const ExternPDFPrivate::Platform platform = ExternPDFPrivate::Platform::Unix;
#endif
    const ExternPDFPrivate::Viewer chosen
        = ExternPDFPrivate::chooseViewer(associated, m_document.absolutePath(), platform);
    m_program = chosen.program;
    m_destinationAfterFile = chosen.destinationAfterFile;
    m_fixedArguments = chosen.fixedArguments;
    m_destinationTemplate = chosen.destinationTemplate;
    m_withoutDestination = chosen.withoutDestination;
}

ExternPDF* ExternPDF::instance(const QString& pdfFile)
{
    if (s_instance)
        return s_instance;
    Global* global = Global::instance();
    s_instance = qobject_cast<ExternPDF*>(global->getSelf(QLatin1String(kInstanceName)));
    if (!s_instance) {
        s_instance = new ExternPDF(QLatin1String(kInstanceName), pdfFile);
        global->addSelf(s_instance);
    }
    return s_instance;
}

ExternPDF::Command ExternPDF::commandFor(const QString& destination, const QString& file) const
{
    ExternPDFPrivate::Viewer viewer;
    viewer.program = m_program;
    viewer.destinationAfterFile = m_destinationAfterFile;
    viewer.fixedArguments = m_fixedArguments;
    viewer.destinationTemplate = m_destinationTemplate;
    viewer.withoutDestination = m_withoutDestination;
    const QString path = QDir(m_document.absolutePath()).filePath(file);
    return {m_program, ExternPDFPrivate::arguments(viewer, destination, path)};
}

void ExternPDF::view(const QString& destination, const QString& file)
{
    const QString path = QDir(m_document.absolutePath()).filePath(file);
    if (!QFileInfo::exists(path)) {
        qCDebug(lcCoreDebLevelLow) << "void ExternPDF::view(const QString&, const QString&)"
                                   << "Document not found:" << path;
        return;
    }
    const Command command = commandFor(destination, file);
    auto* process = new QProcess(this);
    process->setProgram(command.program);
    process->setArguments(command.arguments);
    const bool started = process->startDetached();
    process->waitForStarted(30000);
    if (started && process->error() == QProcess::UnknownError)
        return;
    qCDebug(lcCoreDebLevelLow) << command.program;
    for (const QString& argument : command.arguments)
        qCDebug(lcCoreDebLevelLow) << argument;
}

void ExternPDF::view(const QString& destination)
{
    view(destination, m_document.fileName());
}
