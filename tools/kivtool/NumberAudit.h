#pragma once

#include <QStringList>

class QIODevice;

/// A second, read-only pass over a file that loaded: it names what the library's parsers take in silence,
/// for --verbose. Numbers the parser cannot read (they become 0), numbers it keeps only the low bits of,
/// register field masks above bit 31 (the register map labels them by their low 32 bits), and whatever
/// stands after the root element's end tag. Every number is checked with the very conversion the parser
/// applies to it, so the audit and the model never disagree.
class NumberAudit
{
public:
    /// Reads `device` from its current position to the end, once. `esi` chooses the ESI table over the
    /// product table. Each finding is a line "kivtool: NAME:LINE:COLUMN: ..." for stderr; none, none found.
    static QStringList findings(QIODevice* device, const QString& name, bool esi);
};
