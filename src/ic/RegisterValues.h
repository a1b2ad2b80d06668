#pragma once

#include "kivcore_export.h"

#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

class XmlProductIC;
class XmlRegisterVariant;
class XmlRegisterVariantImpactedBy;
class XmlValueRegister;
class XmlValueRegisterField;

/// One field of a decoded register value.
struct KIVCORE_EXPORT RegisterFieldValue
{
    QString name;
    int shift = 0;
    quint64 mask = 0;
    quint64 raw = 0; ///< (value & mask) >> shift
    QString text; ///< the meaning by the descriptor's kind, without the unit
    QString unit; ///< without brackets; empty when the descriptor has none
    QString kind; ///< the descriptor's type name ("Signed", "Choice", ...); "none" without a descriptor
    bool inRange = true; ///< within min/max, a listed choice, 0 or 1 for a bool
    QString range; ///< "min to max" as the kind reads it; empty when nothing limits the field
    QString access; ///< as written in the file
    QStringList alerts; ///< the field's alert texts, whatever its value
};

/// A variant that may apply while a selecting register's value is unknown.
struct KIVCORE_EXPORT RegisterVariantCandidate
{
    QString variant;
    QStringList selectors; ///< names of the registers whose values decide
    QString requirement; ///< e.g. set BRG_SELECT first: bits 0-1 (decay_kind) = 1 to 3 selects "Timed"
};

/// Which variant of a register applies under the values a session knows.
struct KIVCORE_EXPORT RegisterVariantChoice
{
    enum Outcome
    {
        Decided, ///< `variant` applies
        Undecided, ///< a selecting register's value is unknown: see `candidates`
        NoVariant, ///< no variant's condition holds (or the register has none): see `reason`
    };
    Outcome outcome = NoVariant;
    XmlRegisterVariant* variant = nullptr;
    QList<RegisterVariantCandidate> candidates;
    QString reason; ///< why: the selector that decided, or why nothing applies
};

/// A register value taken apart.
struct KIVCORE_EXPORT RegisterDecoding
{
    QString name;
    quint32 address = 0;
    int size = 0;
    quint64 value = 0;
    RegisterVariantChoice choice;
    QString variant; ///< the decoded variant's name; empty when none was decided or forced
    QList<RegisterFieldValue> fields;
    quint64 uncovered = 0; ///< bits set in the value that no field of the variant covers (coveredBits)
    QStringList warnings; ///< out-of-range fields, set fields with alerts, bits above the register's size
};

/// How an encoding starts and what it may override.
struct KIVCORE_EXPORT RegisterEncodeOptions
{
    bool hasBase = false;
    quint64 base = 0; ///< used when hasBase; otherwise the variant's default value
    bool force = false; ///< write read-only fields and values outside min/max as given
};

/// The result of an encoding: the value, or the error that stopped it (then nothing was written).
struct KIVCORE_EXPORT RegisterEncoding
{
    bool ok = false;
    QString error;
    bool forceable = false; ///< the error is one that forcing would override
    QString name;
    quint32 address = 0;
    int size = 0;
    quint64 value = 0;
    QString variant;
    QStringList warnings;
};

/// A register-value session over an IC that it does not own (the IC must outlive the session): known
/// register values, from which the variant of any register is chosen, and the decoding and encoding of
/// register values by that variant. Masks are 64 bits; wider registers are handled in their low 64 bits.
class KIVCORE_EXPORT RegisterValues
{
public:
    explicit RegisterValues(XmlProductIC* ic);

    /// The register by name (exact, then case-insensitive) or by address (0x.., 0b.. or decimal); null with
    /// `error` naming the three nearest register names when there is none.
    XmlValueRegister* findRegister(const QString& nameOrAddress, QString* error = nullptr) const;
    /// The session's known value of a register; the value counts for every register at its address.
    void setValue(XmlValueRegister* reg, quint64 value);
    /// By name or address, the value as text (parseNumber; a negative one is two's complement over the
    /// register's size). False with `error` when the register is unknown or the value does not fit.
    bool setValue(const QString& nameOrAddress, const QString& value, QString* error = nullptr);
    bool hasValue(quint32 address) const { return m_known.contains(address); }
    /// 0 when the address has no known value (see hasValue()).
    quint64 value(quint32 address) const { return m_known.value(address); }
    void clear() { m_known.clear(); }

    /// The variant that the known values of the selecting registers choose, or the candidates while one is unknown.
    RegisterVariantChoice chooseVariant(XmlValueRegister* reg) const;
    /// Decodes by the chosen variant; with none decided, only the uncovered bits are reported.
    RegisterDecoding decode(XmlValueRegister* reg, quint64 value) const;
    /// Decodes by the given variant, whatever the selectors say (used for each candidate when undecided).
    RegisterDecoding decode(XmlValueRegister* reg, quint64 value, XmlRegisterVariant* variant) const;

    /// Sets the fields, given as (name, value text) pairs, in the chosen variant (with the selectors unknown:
    /// the first candidate holding every named field). Field names are matched case-insensitively; values
    /// are numbers (parseNumber) or a choice's or bool's text. Errors name the register, field and value.
    RegisterEncoding encode(XmlValueRegister* reg, const QList<QPair<QString, QString>>& fields,
        const RegisterEncodeOptions& options = RegisterEncodeOptions()) const;

    /// The register value made up from the field descriptors' defaults (cut to each field's bits).
    static quint64 defaultValue(XmlRegisterVariant* variant);
    /// Bits the register's size allows: all 64 for sizes of 64 and more, or of 0 and less.
    static quint64 sizeMask(int size);
    /// Bits covered by the variant's fields, within 64 bits; a field whose shift is outside 0..63 covers none.
    static quint64 coveredBits(XmlRegisterVariant* variant);
    /// Decimal, 0x hexadecimal or 0b binary, with an optional leading "-"; false when the text is none
    /// of these or exceeds 64 bits.
    static bool parseNumber(const QString& text, quint64* magnitude, bool* negative);
    /// "bit 3", "bits 0-4", or "bits 0x.." for a mask with gaps.
    static QString bitsText(quint64 mask);
    /// Upper-case hexadecimal with "0x", padded to the register's size in nibbles (16 at most).
    static QString hexValue(quint64 value, int size);

private:
    XmlValueRegister* registerAt(quint32 address) const;
    QString selectorName(quint32 address) const;
    QString conditionText(const XmlRegisterVariantImpactedBy* entry, bool withRegister) const;

    XmlProductIC* m_ic;
    QHash<quint32, XmlValueRegister*> m_byAddress; ///< the first register of each address
    QHash<QString, XmlValueRegister*> m_byName; ///< exact names; the first of equal names wins
    QHash<quint32, quint64> m_known;
};
