#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

/// Stateless helpers shared by the whole library and the application: number-to-text formats, value limits
/// of bit fields, a fixed-point filter, plot axis scaling, firmware version texts, identifier clean-up,
/// small HTML/Markdown helpers, working-directory file copies, a widget screenshot and pixmap helpers.
class KIVCORE_EXPORT BasicTools
{
public:
    // Hexadecimal, upper case, left-padded with "0" to at least `digits` digits; never truncated.
    static QString iToHex(quint8 v, int digits, QString prefix);
    static QString iToHex(quint16 v, int digits, QString prefix);
    static QString iToHex(quint32 v, int digits, QString prefix);
    static QString iToHex(quint64 v, int digits, QString prefix);
    /// A negative value is written as its 64-bit two's complement.
    static QString iToHex(qint64 v, int digits, QString prefix);

    /// prefix + decimal of v, left-padded with `fill` to at least `width` characters.
    static QString iToInt(int v, int width, QString prefix, char fill);
    /// prefix + decimal of v, left-padded with blanks to at least `width` characters.
    static QString iToUint(quint32 v, int width, QString prefix);

    /// Binary digits grouped by nibble (":"), byte ("|") and 16-bit half (" | ").
    static QString iToBin(quint8 v);
    static QString iToBin(quint16 v);
    static QString iToBin(quint32 v);
    /// Deliberately shifts by 16, not 32, for the first half: existing displays show bits 16..47 there.
    static QString iToBin(quint64 v);

    /// English ordinal of n + 1 (0 gives "1st"): callers count from zero.
    static QString itoOrdinal(quint32 n);

    /// Groups the characters of s in threes from the right with U+2006, in place; a leading minus counts.
    static void insertDot(QString& s);
    static QString int64InsertDot(qint64 v);
    static QString uint64InsertDot(quint64 v);
    static QString intInsertDot(double v, int precision);
    static QString intInsertDot(double v, double min, double max, int precision);
    /// Display of a register field value; signed fields are decoded with the historic addition (kept).
    static QString valueStr(quint64 mask, qint64 value, bool isSigned);

    static QString generateIndents(int n);
    static quint32 max(QList<quint32> list);
};
