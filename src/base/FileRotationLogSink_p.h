#pragma once

#include "kivcore_export.h"

#include <QString>

namespace FileRotationLogSinkPrivate {

/// The date format of the log's header and rotation lines: two blanks between year and hour.
inline QString dateFormat()
{
    return QStringLiteral("ddd MMM dd yyyy  hh:mm:ss");
}

/// A recursive listing of `dir` made in-process, one block per directory: " Directory of <path>", a blank
/// line, one line per entry (modification time, "<DIR>" or the size, name), a blank line.
KIVCORE_EXPORT QString directoryListing(const QString& dir);

} // namespace FileRotationLogSinkPrivate
