#pragma once

#include "kivcore_export.h"

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QList>
#include <QPixmap>
#include <QSize>
#include <QString>

class QAbstractButton;
class QAction;
class QFile;
class QLineEdit;
class QWidget;

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
    /// The decimal text grouped by insertDot().
    static QString int64InsertDot(qint64 v);
    static QString uint64InsertDot(quint64 v);
    /// From 10 upwards: rounded and grouped when `precision` is 0 to 2, that many significant digits when it is
    /// negative; otherwise `precision` decimals. "inf" and "nan" as such.
    static QString intInsertDot(double v, int precision);
    /// `precision` decimals when the range spans less than 20, otherwise rounded and grouped.
    static QString intInsertDot(double v, double min, double max, int precision);
    /// Display of a register field value; signed fields are decoded with the historic addition (kept).
    static QString valueStr(quint64 mask, qint64 value, bool isSigned);

    /// `n` blanks; empty for `n` below 1.
    static QString generateIndents(int n);
    /// The largest element; 0 for an empty list.
    static quint32 max(QList<quint32> list);

    /// Even number of hexadecimal digits: a "0" goes in front of an odd-length text (after a "0x" prefix).
    static QString hexPadding(QString s);
    /// Display text of a firmware version ("V 1.05", "C 1.05", "Bootloader V1.05"), empty when fwVersion does
    /// not look like a version of the product named by blVersion. Normalises blVersion for the caller.
    static QString matchFirmwareVersion(QString& blVersion, const QString& fwVersion, quint32 version);
    /// Rewrites an identifier for a generated C header (blanks, "[n]", "[a..b]"); returns whether characters
    /// outside the word class remain (fix false) or were removed (fix true). Charsets above 1 are left alone.
    static bool fitCharset(QString* s, quint32 charset, bool fix);
    /// fitCharset() with charset 0, as the C header generators call it.
    static bool fitCharsetCHeader(QString* s, bool fix);

    /// Range of a field of `bits` bits. Deliberately odd at the edges (signed widths above 32 give 0 and -1,
    /// above 63 give -1 and 0): existing tools depend on these sentinels. Returns the new max.
    static qint64 valLimit(qint64& min, qint64& max, quint8 bits, bool isSigned);
    static double valLimit(double& min, double& max, quint8 bits, bool isSigned);
    /// One step of a fixed-point low-pass filter with weight 2^-shift; `acc` keeps `fraction` fractional bits.
    static int getFilteredInt(qint64* acc, int input, int previous, quint8 shift, quint8 fraction);
    /// Rounds a plot range outward to a step of 1, 2 or 5 times a power of ten; ticks becomes the step count.
    static void adjustLinearAxis(double& min, double& max, quint32& ticks);
    static int adjustLinearAxis(int& min, int& max);
    /// Rounds a positive range outward to powers of ten; non-positive ends are left as they are.
    static void adjustLog10Axis(int& min, int& max);

    /// The template "<html>%0</span></html": the stray span and the missing ">" are kept for existing callers.
    static QString htmlSimpleBody(QWidget* widget);
    /// `text` in a span of that colour inside an html element; the text is not escaped.
    static QString textToFullHtml(QString text, QColor color);
    /// b as HTML with the characters that differ from a marked (colour and/or bold); b is not escaped.
    static QString stringHtmlMatch(QString a, QString b, QColor color, bool bold);
    /// HTML of a small Markdown subset (headings, "* " lists). Lists close with "</ui>" on purpose: the
    /// help browser's pages were written against that output.
    static QString mdToHtml(QFile* file);
    /// Colours the first occurrence of `match` (case-insensitive) at or after `from` in the line edit's text
    /// through an input-method format; an empty or missing match clears the colouring. Returns whether found.
    static bool matchColorString(const QString& match, QLineEdit* edit, const QColor& color, int from);

    /// Copies src into the current directory (as dst, or src's file name), keeping an existing copy, and
    /// returns the copy's path. The copy is left write-only for the user.
    static QString copyToTemp(QString src, QString dst);
    /// Removes a copy made by copyToTemp() from the current directory.
    static bool removeFromTemp(QString name);
    /// Saves a screenshot of the widget as name + timestamp + ".png" and puts it on the clipboard;
    /// returns a message for the user.
    static QString ExportPNG(QWidget* w, QString name);

    /// Rotates clockwise by `degrees`.
    static QImage rotate(int degrees, QImage image);
    static QPixmap rotate(int degrees, QPixmap pixmap);
    static QImage rotate90(QImage image) { return rotate(90, image); }
    static QImage rotate180(QImage image) { return rotate(180, image); }
    static QImage rotate270(QImage image) { return rotate(270, image); }
    static QPixmap rotate90(QPixmap pixmap) { return rotate(90, pixmap); }
    static QPixmap rotate180(QPixmap pixmap) { return rotate(180, pixmap); }
    static QPixmap rotate270(QPixmap pixmap) { return rotate(270, pixmap); }
    /// Grey version keeping the alpha channel.
    static QPixmap setPixmapToGray(QPixmap pixmap);
    /// Recolours the visible pixels of a symbol in place, keeping their alpha; with `onlyFrom` set only the
    /// pixels whose colour equals `from` (ignoring alpha) change.
    static void setSymbolColor(QPixmap* pixmap, QColor color, bool onlyFrom, QColor from);
    /// Text centred over the pixmap.
    static QPixmap addTextToPixmap(QPixmap pixmap, QString text, QColor color);
    /// The pixmap widened (Horizontal: text on the right) or heightened (Vertical: text below) to hold the text.
    static QPixmap addTextToPixmapAdjust(
        QPixmap pixmap, QString text, QColor color, Qt::Orientation orientation, QFont font);
    /// Text centred over the pixmap, reading bottom to top.
    static QPixmap addTextToPixmapRotate(QPixmap pixmap, QString text, QColor color, QFont font);
    /// `overlay` drawn at its own size into the bottom right corner of `base` (a badge).
    static QPixmap addPixmapToPixmap(QPixmap base, QPixmap overlay);
    /// An "<img>" element embedding the pixmap as PNG data, scaled to `size` when valid, drawn over `background`
    /// when valid.
    static QString setPixmapToHtml(QPixmap pixmap, QColor background, QSize size);
    static QString setPixmapToHtml(QPixmap pixmap, QSize size);
    static QString setPixmapToHtml(QPixmap pixmap, QColor background);
    /// Base64 of the PNG encoding of the image; pixmapFromImageData reverses it (null pixmap on bad data).
    static QByteArray pixmapToImageData(QImage image);
    static QPixmap pixmapFromImageData(QByteArray data);
    /// Recolours the button's (action's) icon symbol: normal, disabled and active modes get one colour each.
    static void setButtonIconsColor(QAbstractButton* button, QColor normal, QColor disabled, QColor active);
    static void setActionIconsColor(QAction* action, QColor normal, QColor disabled, QColor active);
};
