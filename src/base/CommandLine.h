#pragma once

#include "kivcore_export.h"

#include <QString>

/// Texts of the command-line switches the application recognises. The library never reads the command line;
/// the application compares its arguments with these texts.
class KIVCORE_EXPORT CommandLine
{
public:
    CommandLine() = delete;

    static QString showDebManager();
    static QString modeInternalUse();
    /// Deliberately "-sexy": installed shortcuts start the application with it.
    static QString extendedAppeal();
    static QString simulateUSB_device();
    static QString setStyle();
    static QString runOnce();
    static QString notificateWarnings();
    /// Deliberately without "notificate": the switch text predates the accessor's name.
    static QString notificateWarningsAsCritical();
    static QString touchMode();
};
