#include "ic/RegisterValues.h"

#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "text/Ampersand_p.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"

#include <QVector>

#include <algorithm>

namespace {

// A shift outside 0..63 selects nothing: shifting a 64-bit word that far is undefined.
bool shiftUsable(int shift)
{
    return shift >= 0 && shift < 64;
}

quint64 shiftedDown(quint64 value, quint64 mask, int shift)
{
    return shiftUsable(shift) ? (value & mask) >> shift : 0;
}

/// The field's mask moved down to bit 0: the bit patterns its raw value may have.
quint64 fieldBits(const XmlValueRegisterField* field)
{
    return shiftUsable(field->getShift()) ? field->getMaskValue() >> field->getShift() : 0;
}

int widthOf(quint64 bits)
{
    int width = 0;
    for (; bits != 0; bits >>= 1)
        ++width;
    return width;
}

quint64 lowBits(int width)
{
    return width >= 64 ? ~quint64(0) : (quint64(1) << width) - 1;
}

qint64 signExtended(quint64 raw, int width)
{
    if (width <= 0 || width >= 64)
        return qint64(raw);
    const quint64 sign = quint64(1) << (width - 1);
    return qint64((raw & sign) ? (raw | ~lowBits(width)) : raw);
}

quint64 placed(const XmlValueRegisterField* field, quint64 raw)
{
    return shiftUsable(field->getShift()) ? (raw << field->getShift()) & field->getMaskValue() : 0;
}

/// Numbers as the kinds with a range read their raw bits: signed kinds sign-extended over the field.
bool isSigned(XmlValueInterface* value)
{
    return value && value->getType() == XmlValueTypeSigned;
}

bool isReadOnly(XmlValueRegisterField* field)
{
    const int access = field->getAccess();
    return access != 0 && (access & 2) == 0;
}

QString unitOf(XmlValueInterface* value)
{
    if (!value || !value->hasUnit())
        return QString();
    QString unit = value->getUnit();
    if (unit.startsWith(QLatin1Char('[')) && unit.endsWith(QLatin1Char(']')))
        unit = unit.mid(1, unit.size() - 2);
    return unit;
}

QString choiceText(const XmlValueChoiceElement* element)
{
    const QString text = KivText::replaceAmpersandEscape(element->getDescription());
    return text.isEmpty() ? QString::number(element->getValue()) : text;
}

const XmlValueChoiceElement* listedChoice(XmlValueInterface* value, quint64 raw)
{
    for (const XmlValueChoiceElement* element : static_cast<XmlValueChoice*>(value)->getElements()) {
        if (element->getValue() == raw)
            return element;
    }
    return nullptr;
}

QString boolText(XmlValueInterface* value, quint64 raw)
{
    auto* flag = static_cast<XmlValueBool*>(value);
    const QString text = raw == 0 ? flag->getDescFalse() : flag->getDescTrue();
    return text.isEmpty() ? flag->getStringFromValue(raw) : text;
}

/// Fills text, kind, range and inRange of a field's raw value.
void describe(XmlValueRegisterField* field, RegisterFieldValue& out)
{
    XmlValueInterface* value = field->getValue();
    if (!value) {
        out.kind = QStringLiteral("none");
        out.text = QString::number(out.raw);
        return;
    }
    out.kind = value->getTypeAsString();
    out.unit = unitOf(value);
    out.access = value->getAccessAsString();
    const int width = widthOf(fieldBits(field));
    switch (value->getType()) {
    case XmlValueTypeSigned: {
        const qint64 number = signExtended(out.raw, width);
        out.text = QString::number(number);
        out.inRange = number >= value->getMin() && number <= value->getMax();
        out.range = QString::number(value->getMin()) + QLatin1String(" to ") + QString::number(value->getMax());
        return;
    }
    case XmlValueTypeBool:
        out.text = boolText(value, out.raw);
        out.inRange = out.raw <= 1;
        out.range = QStringLiteral("0 to 1");
        return;
    case XmlValueTypeChoice: {
        const XmlValueChoiceElement* element = listedChoice(value, out.raw);
        out.text = element ? choiceText(element) : QStringLiteral("not a listed choice");
        out.inRange = element != nullptr;
        out.range = QStringLiteral("a listed choice");
        return;
    }
    case XmlValueTypeUnsigned:
    case XmlValueTypeDate:
    case XmlValueTypeTime:
    case XmlValueTypeVersion:
    case XmlValueTypeASCII:
        out.text
            = value->getType() == XmlValueTypeUnsigned ? QString::number(out.raw) : value->getStringFromValue(out.raw);
        out.inRange = out.raw >= quint64(value->getMin()) && out.raw <= quint64(value->getMax());
        out.range = QString::number(quint64(value->getMin())) + QLatin1String(" to ")
            + QString::number(quint64(value->getMax()));
        return;
    default:
        out.text = QString::number(out.raw);
        return;
    }
}

XmlValueRegisterField* fieldNamed(XmlRegisterVariant* variant, const QString& name)
{
    for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields())) {
        if (field->getName().compare(name, Qt::CaseInsensitive) == 0)
            return field;
    }
    return nullptr;
}

QString quotedName(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

/// Levenshtein distance, case-insensitive: for suggesting names.
int editDistance(const QString& a, const QString& b)
{
    QVector<int> row(b.size() + 1);
    for (int j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (int i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int above = row[j];
            const bool same = a.at(i - 1).toCaseFolded() == b.at(j - 1).toCaseFolded();
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (same ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

/// Why a field's value is refused or flagged: "name = text is outside min to max".
QString rangeProblem(const QString& name, const RegisterFieldValue& field)
{
    const QString raw = QString::number(field.raw);
    if (field.kind == QLatin1String("Choice"))
        return name + QStringLiteral(" = ") + raw + QStringLiteral(" is not a listed choice");
    const bool numeric = field.kind == QLatin1String("Signed") || field.kind == QLatin1String("Unsigned");
    return name + QStringLiteral(" = ")
        + (numeric ? field.text : raw + QStringLiteral(" (") + field.text + QLatin1Char(')'))
        + QStringLiteral(" is outside ") + field.range;
}

} // namespace

RegisterValues::RegisterValues(XmlProductIC* ic)
    : m_ic(ic)
{
    XmlRegisterSet* set = ic ? ic->registerSet() : nullptr;
    if (!set)
        return;
    const QList<XmlValueRegister*>& registers = *set->getRegisters();
    m_byAddress.reserve(registers.size());
    m_byName.reserve(registers.size());
    for (XmlValueRegister* reg : registers) {
        if (!m_byAddress.contains(reg->address()))
            m_byAddress.insert(reg->address(), reg);
        if (!m_byName.contains(reg->name()))
            m_byName.insert(reg->name(), reg);
    }
}

XmlValueRegister* RegisterValues::registerAt(quint32 address) const
{
    return m_byAddress.value(address);
}

XmlValueRegister* RegisterValues::findRegister(const QString& nameOrAddress, QString* error) const
{
    if (XmlValueRegister* reg = m_byName.value(nameOrAddress))
        return reg;
    quint64 address = 0;
    bool negative = false;
    if (!nameOrAddress.isEmpty() && nameOrAddress.at(0).isDigit()) {
        if (parseNumber(nameOrAddress, &address, &negative) && address <= 0xFFFFFFFFu) {
            if (XmlValueRegister* reg = registerAt(quint32(address)))
                return reg;
        }
        if (error)
            *error = QStringLiteral("no register at address ") + nameOrAddress;
        return nullptr;
    }
    QList<QPair<int, QString>> nearest;
    for (auto it = m_byName.cbegin(); it != m_byName.cend(); ++it) {
        if (it.key().compare(nameOrAddress, Qt::CaseInsensitive) == 0)
            return it.value();
        if (error)
            nearest.append(qMakePair(editDistance(nameOrAddress, it.key()), it.key()));
    }
    if (error) {
        const int count = std::min(3, int(nearest.size()));
        std::partial_sort(nearest.begin(), nearest.begin() + count, nearest.end());
        QStringList names;
        for (int i = 0; i < count; ++i)
            names << nearest.at(i).second;
        *error = QStringLiteral("no register ") + quotedName(nameOrAddress)
            + (names.isEmpty() ? QStringLiteral(" (the IC has no registers)")
                               : QStringLiteral("; nearest: ") + names.join(QLatin1String(", ")));
    }
    return nullptr;
}

void RegisterValues::setValue(XmlValueRegister* reg, quint64 value)
{
    if (reg)
        m_known.insert(reg->address(), value);
}

bool RegisterValues::setValue(const QString& nameOrAddress, const QString& value, QString* error)
{
    XmlValueRegister* reg = findRegister(nameOrAddress, error);
    if (!reg)
        return false;
    quint64 magnitude = 0;
    bool negative = false;
    const quint64 allowed = sizeMask(reg->getSize());
    if (!parseNumber(value, &magnitude, &negative)) {
        if (error)
            *error = reg->name() + QStringLiteral(": ") + quotedName(value) + QStringLiteral(" is not a number");
        return false;
    }
    quint64 bits = negative ? quint64(0) - magnitude : magnitude;
    const bool fits = negative ? (allowed == ~quint64(0) || magnitude <= (allowed >> 1) + 1) : (bits & ~allowed) == 0;
    if (!fits) {
        if (error)
            *error = reg->name() + QStringLiteral(": ") + value + QStringLiteral(" does not fit the register's ")
                + QString::number(reg->getSize()) + QStringLiteral(" bits");
        return false;
    }
    setValue(reg, bits & allowed);
    return true;
}

QString RegisterValues::selectorName(quint32 address) const
{
    if (XmlValueRegister* reg = registerAt(address))
        return reg->name();
    return QStringLiteral("register ") + hexValue(address, 8) + QStringLiteral(" (not in this IC)");
}

QString RegisterValues::conditionText(const XmlRegisterVariantImpactedBy* entry, bool withRegister) const
{
    QString text;
    if (withRegister)
        text += selectorName(entry->getAddress()) + QLatin1Char(' ');
    text += bitsText(entry->getMaskValue());
    // Name the selecting field when one of the selecting register covers exactly these bits.
    if (XmlValueRegister* selector = registerAt(entry->getAddress())) {
        for (XmlRegisterVariant* variant : qAsConst(*selector->getRegisterVariants())) {
            for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields())) {
                if (field->getMaskValue() == entry->getMaskValue()) {
                    text += QLatin1String(" (") + field->getName() + QLatin1Char(')');
                    goto named;
                }
            }
        }
    }
named:
    text += QLatin1String(" = ") + QString::number(entry->getRangeFrom());
    if (entry->getRangeTo() != entry->getRangeFrom())
        text += QLatin1String(" to ") + QString::number(entry->getRangeTo());
    return text;
}

RegisterVariantChoice RegisterValues::chooseVariant(XmlValueRegister* reg) const
{
    RegisterVariantChoice choice;
    const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
    if (variants.isEmpty()) {
        choice.reason = reg->name() + QStringLiteral(" has no variant");
        return choice;
    }
    if (variants.size() == 1) {
        choice.outcome = RegisterVariantChoice::Decided;
        choice.variant = variants.first();
        return choice;
    }
    QList<XmlRegisterVariant*> matched;
    QStringList matchedBecause;
    QStringList needs; // what each variant would need, for the "no variant" answer
    QStringList actual; // what the known selectors hold
    for (XmlRegisterVariant* variant : variants) {
        bool excluded = false;
        QStringList unknownRegisters;
        QStringList held;
        QStringList conditions;
        for (const XmlRegisterVariantImpactedBy* entry : qAsConst(*variant->getImpactedsBy())) {
            conditions << conditionText(entry, true);
            if (!hasValue(entry->getAddress())) {
                const QString selector = selectorName(entry->getAddress());
                if (!unknownRegisters.contains(selector))
                    unknownRegisters << selector;
                continue;
            }
            const quint64 selected = shiftedDown(value(entry->getAddress()), entry->getMaskValue(), entry->getShift());
            const bool holds = selected >= entry->getRangeFrom() && selected <= entry->getRangeTo();
            if (holds) {
                held << conditionText(entry, true);
            } else {
                excluded = true;
                const QString now = selectorName(entry->getAddress()) + QLatin1Char(' ')
                    + bitsText(entry->getMaskValue()) + QLatin1String(" = ") + QString::number(selected);
                if (!actual.contains(now))
                    actual << now;
            }
        }
        needs << quotedName(variant->getName()) + QLatin1String(" needs ")
                + (conditions.isEmpty() ? QStringLiteral("nothing") : conditions.join(QLatin1String(" and ")));
        if (excluded)
            continue;
        if (unknownRegisters.isEmpty()) {
            matched << variant;
            matchedBecause << held.join(QLatin1String(" and "));
            continue;
        }
        RegisterVariantCandidate candidate;
        candidate.variant = variant->getName();
        candidate.selectors = unknownRegisters;
        QStringList unknownTexts;
        for (const XmlRegisterVariantImpactedBy* entry : qAsConst(*variant->getImpactedsBy())) {
            if (!hasValue(entry->getAddress()))
                unknownTexts << conditionText(entry, unknownRegisters.size() > 1);
        }
        candidate.requirement = QStringLiteral("set ") + unknownRegisters.join(QLatin1String(", "))
            + QStringLiteral(" first: ") + unknownTexts.join(QLatin1String(" and ")) + QStringLiteral(" selects ")
            + quotedName(variant->getName());
        choice.candidates << candidate;
    }
    if (!choice.candidates.isEmpty()) {
        // A variant that holds already is still one candidate among those the unknown selectors may pick.
        for (int i = matched.size() - 1; i >= 0; --i) {
            RegisterVariantCandidate candidate;
            candidate.variant = matched.at(i)->getName();
            candidate.requirement = quotedName(candidate.variant) + QStringLiteral(" applies already");
            choice.candidates.prepend(candidate);
        }
        choice.outcome = RegisterVariantChoice::Undecided;
        QStringList selectors;
        for (const RegisterVariantCandidate& candidate : qAsConst(choice.candidates)) {
            for (const QString& selector : candidate.selectors) {
                if (!selectors.contains(selector))
                    selectors << selector;
            }
        }
        choice.reason = QStringLiteral("variant of ") + reg->name() + QStringLiteral(" not decided: set ")
            + selectors.join(QLatin1String(", ")) + QStringLiteral(" first");
        return choice;
    }
    if (matched.isEmpty()) {
        choice.reason = QStringLiteral("no variant of ") + reg->name() + QStringLiteral(" applies with ")
            + actual.join(QLatin1String(" and ")) + QStringLiteral(": ") + needs.join(QLatin1String("; "));
        return choice;
    }
    choice.outcome = RegisterVariantChoice::Decided;
    choice.variant = matched.first();
    choice.reason = matchedBecause.first().isEmpty()
        ? QString()
        : matchedBecause.first() + QStringLiteral(" selects ") + quotedName(matched.first()->getName());
    if (matched.size() > 1)
        choice.reason += QStringLiteral("; several variants apply, the first is used");
    return choice;
}

RegisterDecoding RegisterValues::decode(XmlValueRegister* reg, quint64 value) const
{
    const RegisterVariantChoice choice = chooseVariant(reg);
    RegisterDecoding decoding = decode(reg, value, choice.variant);
    decoding.choice = choice;
    return decoding;
}

RegisterDecoding RegisterValues::decode(XmlValueRegister* reg, quint64 value, XmlRegisterVariant* variant) const
{
    RegisterDecoding decoding;
    decoding.name = reg->name();
    decoding.address = reg->address();
    decoding.size = reg->getSize();
    decoding.value = value;
    const quint64 allowed = sizeMask(reg->getSize());
    if (reg->getSize() > 64)
        decoding.warnings << reg->name() + QStringLiteral(" is ") + QString::number(reg->getSize())
                + QStringLiteral(" bits wide: only its low 64 bits are decoded");
    if (value & ~allowed)
        decoding.warnings << QStringLiteral("the value has bits above the register's ")
                + QString::number(reg->getSize()) + QStringLiteral(" bits: ") + hexValue(value & ~allowed, 64);
    if (!variant) {
        decoding.uncovered = value;
        return decoding;
    }
    decoding.choice.outcome = RegisterVariantChoice::Decided;
    decoding.choice.variant = variant;
    decoding.variant = variant->getName();
    const QList<XmlValueRegisterField*>& fields = *variant->getRegisterFields();
    decoding.fields.reserve(fields.size());
    quint64 covered = 0;
    for (XmlValueRegisterField* field : fields) {
        RegisterFieldValue out;
        out.name = field->getName();
        out.shift = field->getShift();
        out.mask = field->getMaskValue();
        out.raw = shiftedDown(value, out.mask, out.shift);
        if (shiftUsable(out.shift))
            covered |= out.mask;
        describe(field, out);
        for (const XmlValueAlert* alert : field->getAlerts()) {
            if (alert)
                out.alerts << alert->getText();
        }
        if (!shiftUsable(out.shift))
            decoding.warnings << out.name + QStringLiteral(" has the shift ") + QString::number(out.shift)
                    + QStringLiteral(", outside 0 to 63: read as 0");
        if (out.mask & ~allowed)
            decoding.warnings << out.name + QStringLiteral(" has bits above the register's ")
                    + QString::number(reg->getSize()) + QStringLiteral(" bits");
        if (!out.inRange)
            decoding.warnings << rangeProblem(out.name, out);
        if (out.raw != 0) {
            for (const QString& alert : qAsConst(out.alerts))
                decoding.warnings << out.name + QStringLiteral(" is set: ") + alert;
        }
        decoding.fields << out;
    }
    decoding.uncovered = value & ~covered;
    return decoding;
}

namespace {

/// One field assignment turned into its raw bits, or an error.
struct FieldWrite
{
    XmlValueRegisterField* field = nullptr;
    quint64 raw = 0;
    QString error;
    bool forceable = false;
};

FieldWrite fieldWrite(XmlValueRegisterField* field, const QString& registerName, const QString& text, bool force)
{
    FieldWrite write;
    write.field = field;
    XmlValueInterface* value = field->getValue();
    const QString where = registerName + QLatin1Char('.') + field->getName();
    const quint64 bits = fieldBits(field);
    const int width = widthOf(bits);
    const QString widthText = QString::number(width) + (width == 1 ? QStringLiteral(" bit") : QStringLiteral(" bits"));
    const QString patterns = QStringLiteral("0 to ") + QString::number(lowBits(width));
    quint64 magnitude = 0;
    bool negative = false;
    if (RegisterValues::parseNumber(text.trimmed(), &magnitude, &negative)) {
        const QString allowed = isSigned(value) && width > 0
            ? QString::number(signExtended(quint64(1) << (width - 1), width)) + QStringLiteral(" to ")
                + QString::number(qint64(lowBits(width - 1))) + QStringLiteral(", or ") + patterns
                + QStringLiteral(" as a bit pattern")
            : patterns;
        const bool fits = negative ? isSigned(value) && width > 0
                && (width >= 64 || magnitude <= (quint64(1) << (width - 1))) && magnitude <= (quint64(1) << 63)
                                   : (magnitude & ~bits) == 0;
        if (!fits) {
            write.error = where + QStringLiteral(": ") + text + QStringLiteral(" does not fit the field's ") + widthText
                + QStringLiteral(" (allowed ") + allowed + QLatin1Char(')');
            return write;
        }
        write.raw = (negative ? quint64(0) - magnitude : magnitude) & bits;
    } else {
        const XmlValueChoiceElement* element = nullptr;
        if (value && value->getType() == XmlValueTypeChoice) {
            for (const XmlValueChoiceElement* candidate : static_cast<XmlValueChoice*>(value)->getElements()) {
                if (choiceText(candidate).compare(text.trimmed(), Qt::CaseInsensitive) == 0) {
                    element = candidate;
                    break;
                }
            }
        }
        bool matched = element != nullptr;
        if (element)
            write.raw = element->getValue();
        if (!matched && value && value->getType() == XmlValueTypeBool) {
            for (quint64 state : {quint64(0), quint64(1)}) {
                if (boolText(value, state).compare(text.trimmed(), Qt::CaseInsensitive) == 0) {
                    write.raw = state;
                    matched = true;
                    break;
                }
            }
        }
        if (!matched) {
            QStringList choices;
            if (value && value->getType() == XmlValueTypeChoice) {
                for (const XmlValueChoiceElement* candidate : static_cast<XmlValueChoice*>(value)->getElements())
                    choices << choiceText(candidate);
            } else if (value && value->getType() == XmlValueTypeBool) {
                choices << boolText(value, 0) << boolText(value, 1);
            }
            write.error = where + QStringLiteral(": ") + quotedName(text) + QStringLiteral(" is not a number")
                + (choices.isEmpty() ? QString() : QStringLiteral(" nor one of: ") + choices.join(QLatin1String(", ")));
            return write;
        }
        if ((write.raw & ~bits) != 0) {
            write.error = where + QStringLiteral(": ") + quotedName(text) + QStringLiteral(" is ")
                + QString::number(write.raw) + QStringLiteral(", which does not fit the field's ") + widthText;
            return write;
        }
    }
    if (force)
        return write;
    if (isReadOnly(field)) {
        write.error = where + QStringLiteral(" is read-only (access ") + field->getAccessAsString()
            + QStringLiteral("): not written");
        write.forceable = true;
        return write;
    }
    RegisterFieldValue check;
    check.raw = write.raw;
    describe(field, check);
    if (!check.inRange) {
        write.error = rangeProblem(where, check);
        write.forceable = true;
    }
    return write;
}

} // namespace

RegisterEncoding RegisterValues::encode(
    XmlValueRegister* reg, const QList<QPair<QString, QString>>& fields, const RegisterEncodeOptions& options) const
{
    RegisterEncoding result;
    result.name = reg->name();
    result.address = reg->address();
    result.size = reg->getSize();
    const RegisterVariantChoice choice = chooseVariant(reg);
    XmlRegisterVariant* variant = choice.variant;
    if (choice.outcome == RegisterVariantChoice::NoVariant) {
        result.error = choice.reason;
        return result;
    }
    auto holdsAll = [&fields](XmlRegisterVariant* candidate) {
        for (const auto& assignment : fields) {
            if (!fieldNamed(candidate, assignment.first))
                return false;
        }
        return true;
    };
    if (choice.outcome == RegisterVariantChoice::Undecided) {
        for (const RegisterVariantCandidate& candidate : choice.candidates) {
            for (XmlRegisterVariant* each : qAsConst(*reg->getRegisterVariants())) {
                if (!variant && each->getName() == candidate.variant && holdsAll(each))
                    variant = each;
            }
        }
        if (!variant) {
            result.error = choice.reason + QStringLiteral(", and no candidate variant has all the fields given");
            return result;
        }
        result.warnings << choice.reason + QStringLiteral("; encoded in ") + quotedName(variant->getName())
                + QStringLiteral(", the first candidate with these fields");
    }
    quint64 value = options.hasBase ? options.base : defaultValue(variant);
    for (const auto& assignment : fields) {
        XmlValueRegisterField* field = fieldNamed(variant, assignment.first);
        if (!field) {
            // Another layout may hold it: say which selector value brings that layout in.
            for (XmlRegisterVariant* other : qAsConst(*reg->getRegisterVariants())) {
                if (other == variant || !fieldNamed(other, assignment.first))
                    continue;
                QStringList conditions;
                for (const XmlRegisterVariantImpactedBy* entry : qAsConst(*other->getImpactedsBy()))
                    conditions << conditionText(entry, true);
                result.error = reg->name() + QStringLiteral(": field ") + assignment.first
                    + QStringLiteral(" belongs to variant ") + quotedName(other->getName())
                    + (conditions.isEmpty()
                            ? QString()
                            : QStringLiteral(", which needs ") + conditions.join(QLatin1String(" and ")))
                    + QStringLiteral("; the variant in use is ") + quotedName(variant->getName())
                    + (choice.reason.isEmpty() ? QString() : QStringLiteral(" (") + choice.reason + QLatin1Char(')'));
                return result;
            }
            QStringList names;
            for (XmlValueRegisterField* each : qAsConst(*variant->getRegisterFields()))
                names << each->getName();
            result.error = reg->name() + QStringLiteral(" has no field ") + quotedName(assignment.first)
                + QStringLiteral(" (fields: ") + names.join(QLatin1String(", ")) + QLatin1Char(')');
            return result;
        }
        const FieldWrite write = fieldWrite(field, reg->name(), assignment.second, options.force);
        if (!write.error.isEmpty()) {
            result.error = write.error;
            result.forceable = write.forceable;
            return result;
        }
        value = (value & ~field->getMaskValue()) | placed(field, write.raw);
    }
    const quint64 allowed = sizeMask(reg->getSize());
    if (value & ~allowed)
        result.warnings << QStringLiteral("the value has bits above the register's ") + QString::number(reg->getSize())
                + QStringLiteral(" bits: ") + hexValue(value & ~allowed, 64);
    result.ok = true;
    result.value = value;
    result.variant = variant->getName();
    return result;
}

quint64 RegisterValues::defaultValue(XmlRegisterVariant* variant)
{
    quint64 value = 0;
    if (!variant)
        return value;
    for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields())) {
        if (XmlValueInterface* descriptor = field->getValue())
            value = (value & ~field->getMaskValue())
                | placed(field, quint64(descriptor->getDefault()) & fieldBits(field));
    }
    return value;
}

quint64 RegisterValues::sizeMask(int size)
{
    return size <= 0 ? ~quint64(0) : lowBits(size);
}

quint64 RegisterValues::coveredBits(XmlRegisterVariant* variant)
{
    quint64 covered = 0;
    if (!variant)
        return covered;
    for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields())) {
        if (shiftUsable(field->getShift()))
            covered |= field->getMaskValue();
    }
    return covered;
}

bool RegisterValues::parseNumber(const QString& text, quint64* magnitude, bool* negative)
{
    QString digits = text;
    *negative = digits.startsWith(QLatin1Char('-'));
    if (*negative)
        digits.remove(0, 1);
    int base = 10;
    if (digits.startsWith(QLatin1String("0x"), Qt::CaseInsensitive))
        base = 16;
    else if (digits.startsWith(QLatin1String("0b"), Qt::CaseInsensitive))
        base = 2;
    if (base != 10)
        digits.remove(0, 2);
    digits.remove(QLatin1Char('_')); // 0b0001_1010 reads as engineers write it
    if (digits.isEmpty())
        return false;
    for (const QChar c : qAsConst(digits)) {
        if (!c.isDigit() && !(base == 16 && QStringLiteral("abcdefABCDEF").contains(c)))
            return false;
    }
    bool ok = false;
    *magnitude = digits.toULongLong(&ok, base);
    return ok;
}

QString RegisterValues::bitsText(quint64 mask)
{
    if (mask == 0)
        return QStringLiteral("no bits");
    int low = 0;
    while (!((mask >> low) & 1u))
        ++low;
    const int high = widthOf(mask) - 1;
    if (((mask >> low) & ~lowBits(high - low + 1)) == 0 && (mask >> low) == lowBits(high - low + 1)) {
        if (low == high)
            return QStringLiteral("bit ") + QString::number(low);
        return QStringLiteral("bits ") + QString::number(low) + QLatin1Char('-') + QString::number(high);
    }
    return QStringLiteral("bits ") + hexValue(mask, 0);
}

QString RegisterValues::hexValue(quint64 value, int size)
{
    const int digits = size <= 0 ? 1 : std::min(16, (size + 3) / 4);
    return QStringLiteral("0x") + QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}
