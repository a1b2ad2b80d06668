#pragma once

#include "kivcore_export.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// Static facts about the operating system and the processor: the registry's "CurrentVersion" values on
/// Windows, /etc/os-release and /proc/cpuinfo elsewhere.
class KIVCORE_EXPORT SysInfo
{
public:
    SysInfo() = delete;

    static bool keyIs64Bit();
    /// Every value describing the installed system version, by name.
    static QMap<QString, QVariant> currentVersion();
    /// The system version as a number: 10.0 for Windows 10, 6.1 for Windows 7, VERSION_ID (major.minor) on
    /// other systems; 0 when unknown.
    static double keyCurrentVersion();
    /// The processor's marketing name, despite the function's name (kept for existing callers).
    static QString keyCentralProcessorVendorIdentifier();
};
