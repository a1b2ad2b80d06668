#pragma once

#include "kivcore_export.h"

#include <QMap>
#include <QString>
#include <QVariant>

/// The readers behind SysInfo and SysInfoObject, with the file they read as a parameter so that they can be
/// fed fixture files. Unreadable files give empty, zero or false results.
namespace SysInfoPrivate {

KIVCORE_EXPORT bool is64Bit(const QString& architecture);
/// KEY=VALUE lines of an os-release file; quotes around a value are removed, comments skipped.
KIVCORE_EXPORT QMap<QString, QVariant> readOsRelease(const QString& path);
/// Windows rules first ("CurrentMajorVersionNumber"."CurrentMinorVersionNumber", else "CurrentVersion"),
/// then the leading major[.minor] of "VERSION_ID"; 0 when none converts.
KIVCORE_EXPORT double versionNumber(const QMap<QString, QVariant>& values);
/// The value of the first "model name" line of a cpuinfo file.
KIVCORE_EXPORT QString processorName(const QString& cpuinfoPath);

/// Whole-system CPU times in the sense of the Windows call: kernel includes idle. From the "cpu" line of a
/// stat file: idle = idle + iowait, user = user + nice, kernel = system + irq + softirq + steal + idle.
struct SystemTimes
{
    quint64 idle = 0;
    quint64 kernel = 0;
    quint64 user = 0;
};
KIVCORE_EXPORT bool readSystemTimes(const QString& statPath, SystemTimes& times);
/// busy x 100 / total, truncating, where total is the kernel + user difference and busy is total minus the
/// idle difference; 0 when no time passed.
KIVCORE_EXPORT int systemLoad(const SystemTimes& previous, const SystemTimes& current);
/// busy / span x 100, rounded half away from zero; 0 for an empty span.
KIVCORE_EXPORT int processLoad(quint64 busy, quint64 span);
/// Resident pages (second field of a statm file) x page size / 1024; 0 when unreadable.
KIVCORE_EXPORT quint32 workingSetKB(const QString& statmPath);

} // namespace SysInfoPrivate
