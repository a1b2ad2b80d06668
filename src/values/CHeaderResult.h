#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

/// One finding of a C header generator (IcCHeader, ModuleCHeader).
struct CHeaderDiagnostic
{
    enum Severity
    {
        Warning, ///< the header is still complete and compiles
        Error ///< the header is unusable (two names give one identifier) and must not be written
    };
    Severity severity = Warning;
    QString text; ///< one line, without the "warning: " or "error: " lead
};

/// How a C header is generated.
struct CHeaderOptions
{
    /// Lead of every identifier. Only used when `prefixGiven` is set, so that an empty prefix can be asked for;
    /// otherwise the product's name is the prefix.
    QString prefix;
    bool prefixGiven = false;
    /// Names the generating program in the header's first comment, e.g. "kivtool 1.2.0". No time stamp is
    /// written, so that an unchanged file gives the same bytes again.
    QString generator;
    /// When not empty, a self-test source is generated as well, and it includes the header by this name.
    QString selfTestInclude;
};

/// What a C header generator returns.
struct CHeaderResult
{
    QString header;
    QString selfTest; ///< empty unless asked for
    int selfTestFields = 0; ///< fields the self-test exercises
    QList<CHeaderDiagnostic> diagnostics; ///< in the order they were found

    bool hasErrors() const
    {
        for (const CHeaderDiagnostic& diagnostic : diagnostics) {
            if (diagnostic.severity == CHeaderDiagnostic::Error)
                return true;
        }
        return false;
    }
};
