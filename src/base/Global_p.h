#pragma once

#include "kivcore_export.h"

#include <QByteArray>
#include <QDate>
#include <QString>

namespace GlobalPrivate {

/// The image name of running copies: the application name plus the platform's executable suffix.
KIVCORE_EXPORT QString imageName(const QString& appName);
/// Counts the parts of a process-caption listing equal to `image`: the listing is read up to its first NUL,
/// line breaks are removed without a separator (every line is padded with blanks) and it is split at blanks.
KIVCORE_EXPORT int countInCaptionListing(const QByteArray& listing, const QString& image);
/// Counts the processes below a proc file system root (one numeric directory per process) whose image name
/// (the base name of "exe", else the content of "comm") equals `image`, case-sensitively.
KIVCORE_EXPORT int countInProcRoot(const QString& procRoot, const QString& image);
/// The application name of a copy that sees `count` running copies: "_2nd", "_3rd"... from the second on.
KIVCORE_EXPORT QString nameForCount(const QString& appName, int count);
KIVCORE_EXPORT bool isSantaDate(const QDate& date);

} // namespace GlobalPrivate
