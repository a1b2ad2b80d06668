#pragma once

#include "kivcore_export.h"

#include <QString>
#include <QStringList>

/// The viewer choice behind ExternPDF, callable for any association and either platform's rules.
namespace ExternPDFPrivate {

enum class Platform
{
    Windows,
    Unix
};

struct Viewer
{
    QString program;
    bool destinationAfterFile = false;
    /// Empty: one argument, the template with %1 = destination and %2 = document path.
    QStringList fixedArguments;
    QString destinationTemplate;
    /// The document alone, no destination (viewers without named destinations, xdg-open).
    bool withoutDestination = false;
};

/// `associated` is the system's PDF program (empty when none). Known viewers keep it; otherwise Windows
/// falls back to SumatraPDF.exe in `documentDir`, other systems to xdg-open.
KIVCORE_EXPORT Viewer chooseViewer(const QString& associated, const QString& documentDir, Platform platform);
KIVCORE_EXPORT QStringList arguments(const Viewer& viewer, const QString& destination, const QString& path);
/// The program of a desktop entry's "Exec" line (quotes removed, resolved through PATH when found there);
/// empty when the file has none.
KIVCORE_EXPORT QString desktopEntryProgram(const QString& desktopFilePath);
/// The program of the desktop's default application for application/pdf; empty when there is none.
KIVCORE_EXPORT QString defaultPdfProgram();

} // namespace ExternPDFPrivate
