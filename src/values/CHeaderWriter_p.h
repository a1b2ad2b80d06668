#pragma once

#include "values/CHeaderResult.h"

#include <QHash>
#include <QSet>
#include <QStringList>

class XmlValueInterface;

namespace KivCHeader {

/// `text` as a part of a C identifier: upper case, every other character than A-Z and 0-9 as "_", runs of
/// "_" made one and "_" trimmed at both ends. Empty when nothing is left.
QString namePart(const QString& text);

/// The parts as a valid C identifier: each made a part as namePart does, joined by "_" with empty ones left out (so
/// no double underscore and no leading underscore), "N_" in
/// front when it would start with a digit or fall in a name space the C library reserves (E followed by
/// a digit or capital, INT8_MAX and its kin, NULL, EOF...). Empty when nothing of the parts is left.
QString identifier(const QStringList& parts);

/// `text` on one line, safe inside a C block comment: control and direction-changing characters as
/// "U+XXXX", no "*/" or "/*", no "??" (trigraphs), surrounding blanks trimmed.
QString commentText(const QString& text);

/// `text` on one line for a diagnostic: control characters as "U+XXXX".
QString oneLine(const QString& text);

/// `name` in double quotes on one line, for a diagnostic.
QString quotedName(const QString& name);

/// An unsigned literal: hexadecimal with at least `digits` digits, "U" or (beyond 32 bits) "ULL".
QString hexLiteral(quint64 value, int digits);
/// An unsigned decimal literal with "U" or "ULL".
QString unsignedLiteral(quint64 value);
/// A signed decimal literal; the smallest int is written (-2147483647 - 1), beyond 32 bits "LL".
QString signedLiteral(qint64 value);
/// The value of `value`'s kind as a literal: signed kinds signed, every other kind unsigned.
QString valueLiteral(XmlValueInterface* value, qint64 number);

/// The texts of a choice or bool value descriptor as (value, name) pairs, in file order; empty for other kinds.
/// Bool states without a text are named FALSE and TRUE.
QList<QPair<quint64, QString>> namedValues(XmlValueInterface* value);

/// Builds a header line by line and keeps every identifier it defines with the thing it stands for, so
/// that two things that end up with one identifier are reported (once per pair) instead of redefined.
class Writer
{
public:
    Writer(const CHeaderOptions& options, const QString& productName);

    /// The identifier of `parts` behind the prefix.
    QString name(const QStringList& parts) const { return identifier(QStringList(m_prefix) + parts); }

    /// The guard, the first comment, <stdint.h> and the access flags. `title` names the product.
    void begin(const QString& title);
    /// Closes the guard; returns the result with the diagnostics gathered.
    CHeaderResult finish();

    /// "#define ID VALUE" for `source` (a description for messages); nothing when `id` is taken.
    void define(const QString& id, const QString& value, const QString& source);
    /// Claims `id` for `source` without writing it. False (and an error) when another source has it.
    bool claim(const QString& id, const QString& source);
    /// A constant ID_NAME per named value of `value` (choice or bool), NAME from the value's text; a text
    /// that gives no name is written as VALUE_n, with a warning.
    void defineNamedValues(const QString& id, XmlValueInterface* value, const QString& source);
    /// "/* TEXT */" on a line of its own, with `text` made safe.
    void comment(const QString& text);
    /// "/* ---- TEXT */": the head of a section.
    void heading(const QString& text);
    void blankLine() { m_text += QLatin1Char('\n'); }
    void raw(const QString& text) { m_text += text; }

    /// The access flags expression of `mask`, e.g. (P_ACCESS_R | P_ACCESS_W), or 0U.
    QString access(int mask) const;

    void warning(const QString& text);
    void error(const QString& text);

    /// Lines of the compile-time checks, written at the end inside the standard guard.
    void check(const QString& condition, const QString& message);

    QString text() const { return m_text; }

private:
    QString m_prefix;
    QString m_productName;
    QString m_guard;
    QString m_text;
    QString m_checks;
    QHash<QString, QString> m_owners; ///< identifier -> its source
    QSet<QString> m_reported; ///< pairs of sources already reported
    QList<CHeaderDiagnostic> m_diagnostics;
};

} // namespace KivCHeader
