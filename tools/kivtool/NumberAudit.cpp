#include "NumberAudit.h"

#include <QIODevice>
#include <QVector>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace {

/// How the library turns a text into a number; each is the exact Qt call its parser or model makes.
enum class Conversion
{
    Int, ///< toInt, base 10
    UInt, ///< toUInt, base 10
    UIntAuto, ///< toUInt, base 0: "0x" hexadecimal, a leading "0" octal
    Float, ///< toFloat
    Hex64, ///< toULongLong, base 16, no prefix needed (register masks)
    EsiHex, ///< ESI "#x": the first two characters dropped unseen, the rest read by toUInt base 16
    EsiHex4, ///< the same with four characters read (object index)
    EsiHex64, ///< the same read by toULongLong (object default value)
    EsiVendorId, ///< toUInt base 10 when the text starts with 1 to 9, otherwise as EsiHex
};

/// What the model keeps of a number that converts.
enum class Kept
{
    All,
    Low8Bits, ///< stored in an 8-bit field
    Low32Bits, ///< read as 64 bits, stored as 32
    MapLabel32, ///< kept whole, but the register map labels the field by its low 32 bits
};

struct Rule
{
    const char* grandparent; ///< the parent's parent element, or null for any
    const char* parent; ///< null for any
    const char* element;
    const char* attribute; ///< null: the element's text child (the one token after its start tag)
    Conversion conversion;
    Kept kept = Kept::All;
    const char* whenUnread = "it becomes 0"; ///< what the model makes of a text that does not convert
};

const char* const kFactorStays = "it becomes 0, so the factor stays 1";

// Every numeric attribute of the product parser; the element names are unique across the grammar.
const Rule kProductRules[] = {
    {nullptr, nullptr, "axis_parameters", "axis", Conversion::Int},
    {nullptr, nullptr, "global_parameters", "bank", Conversion::Int},
    {nullptr, nullptr, "axis_parameter", "type", Conversion::Int, Kept::Low8Bits},
    {nullptr, nullptr, "global_parameter", "type", Conversion::Int, Kept::Low8Bits},
    {nullptr, nullptr, "digital_input", "type", Conversion::Int, Kept::Low8Bits},
    {nullptr, nullptr, "digital_output", "type", Conversion::Int, Kept::Low8Bits},
    {nullptr, nullptr, "analog_input", "type", Conversion::Int, Kept::Low8Bits},
    {nullptr, nullptr, "irq", "type", Conversion::Int},
    {nullptr, nullptr, "coordinate", "type", Conversion::Int},
    {nullptr, nullptr, "canopen_object", "index", Conversion::UIntAuto},
    {nullptr, nullptr, "canopen_entry", "subindex", Conversion::UInt},
    {nullptr, nullptr, "drive_configuration", "id", Conversion::UIntAuto, Kept::Low8Bits},
    {nullptr, nullptr, "drive_ap_setting", "type", Conversion::UInt, Kept::Low8Bits},
    {nullptr, nullptr, "drive_ap_setting", "value", Conversion::Int},
    {nullptr, nullptr, "value_signed", "min", Conversion::Int},
    {nullptr, nullptr, "value_signed", "max", Conversion::Int},
    {nullptr, nullptr, "value_signed", "default", Conversion::Int},
    {nullptr, nullptr, "value_signed", "decimals", Conversion::Int},
    {nullptr, nullptr, "value_signed", "options", Conversion::UInt},
    {nullptr, nullptr, "value_unsigned", "min", Conversion::UInt},
    {nullptr, nullptr, "value_unsigned", "max", Conversion::UInt},
    {nullptr, nullptr, "value_unsigned", "default", Conversion::UInt},
    {nullptr, nullptr, "value_unsigned", "decimals", Conversion::Int},
    {nullptr, nullptr, "value_unsigned", "formatMul", Conversion::Float, Kept::All, kFactorStays},
    {nullptr, nullptr, "value_unsigned", "formatDiv", Conversion::Float, Kept::All, kFactorStays},
    {nullptr, nullptr, "value_unsigned", "options", Conversion::UInt},
    {nullptr, nullptr, "value_choice", "default", Conversion::UInt},
    {nullptr, nullptr, "choice_element", "value", Conversion::UInt},
    {nullptr, nullptr, "value_db", "value", Conversion::UInt},
    {nullptr, nullptr, "group", "id", Conversion::UIntAuto},
    {nullptr, nullptr, "value_register", "address", Conversion::UIntAuto},
    {nullptr, nullptr, "value_register", "size", Conversion::Int},
    {nullptr, nullptr, "value_register", "group", Conversion::UIntAuto},
    {nullptr, nullptr, "value_register_field", "shift", Conversion::Int},
    {nullptr, nullptr, "value_register_field", "mask", Conversion::Hex64, Kept::MapLabel32},
    {nullptr, nullptr, "register_variant_impacts", "address", Conversion::UIntAuto},
    {nullptr, nullptr, "register_variant_impacted_by", "address", Conversion::UIntAuto},
    {nullptr, nullptr, "register_variant_impacted_by", "shift", Conversion::Int},
    {nullptr, nullptr, "register_variant_impacted_by", "mask", Conversion::Hex64},
    {nullptr, nullptr, "register_variant_impacted_by", "range_from", Conversion::UInt},
    {nullptr, nullptr, "register_variant_impacted_by", "range_to", Conversion::UInt},
    {nullptr, nullptr, "pin_group", "id", Conversion::UInt},
    {nullptr, nullptr, "pin", "id", Conversion::UInt},
    {nullptr, nullptr, "pin_mapping", "pin_ic", Conversion::UInt},
    {nullptr, nullptr, "pin_mapping", "pin_board", Conversion::UInt},
};

// The ESI numbers; ESI reuses element names ("Index" in a PDO entry, "Info" of a device), so the parent
// the parser reads them under is part of the rule.
const Rule kEsiRules[] = {
    {nullptr, "Vendor", "Id", nullptr, Conversion::EsiVendorId},
    {nullptr, "Device", "Type", "ProductCode", Conversion::EsiHex},
    {nullptr, "Device", "Type", "RevisionNo", Conversion::EsiHex},
    {nullptr, "DataType", "BitSize", nullptr, Conversion::Int},
    {nullptr, "SubItem", "SubIdx", nullptr, Conversion::Int},
    {nullptr, "SubItem", "BitSize", nullptr, Conversion::Int},
    {nullptr, "SubItem", "BitOffs", nullptr, Conversion::Int},
    {nullptr, "Object", "Index", nullptr, Conversion::EsiHex4},
    {nullptr, "Object", "BitSize", nullptr, Conversion::Int},
    {"Object", "Info", "DefaultValue", nullptr, Conversion::EsiHex64, Kept::Low32Bits},
};

struct Reading
{
    bool ok = false;
    qint64 value = 0; ///< the 32-bit conversions
    quint64 wide = 0; ///< the 64-bit ones
};

/// `value` read exactly as the library reads it for `conversion`: attributes of the product parser are
/// converted from the attribute's reference, the others from a copy, as the parser or the model does.
Reading convert(const QStringRef& value, Conversion conversion)
{
    Reading r;
    switch (conversion) {
    case Conversion::Int:
        r.value = value.toInt(&r.ok, 10);
        return r;
    case Conversion::UInt:
        r.value = value.toUInt(&r.ok, 10);
        return r;
    case Conversion::UIntAuto:
        r.value = value.toUInt(&r.ok, 0);
        return r;
    case Conversion::Float:
        value.toFloat(&r.ok);
        return r;
    default:
        break;
    }
    const QString text = value.toString();
    switch (conversion) {
    case Conversion::Hex64:
        r.wide = text.toULongLong(&r.ok, 16);
        break;
    case Conversion::EsiHex:
        r.value = text.midRef(2).toUInt(&r.ok, 16);
        break;
    case Conversion::EsiHex4:
        r.value = text.midRef(2, 4).toUInt(&r.ok, 16);
        break;
    case Conversion::EsiHex64:
        r.wide = text.midRef(2).toULongLong(&r.ok, 16);
        break;
    case Conversion::EsiVendorId: {
        const bool decimal = !text.isEmpty() && text.at(0) >= QLatin1Char('1') && text.at(0) <= QLatin1Char('9');
        r.value = decimal ? text.toUInt(&r.ok, 10) : text.midRef(2).toUInt(&r.ok, 16);
        break;
    }
    default:
        break;
    }
    return r;
}

/// What the model keeps of a number that converted, when that differs from it; empty otherwise.
QString lostPart(const Reading& r, Kept kept)
{
    switch (kept) {
    case Kept::All:
        break;
    case Kept::Low8Bits:
        if (qint64(quint8(r.value)) != r.value)
            return QStringLiteral("keeps only its low 8 bits (it becomes ") + QString::number(quint8(r.value))
                + QLatin1Char(')');
        break;
    case Kept::Low32Bits:
        if (r.wide > 0xFFFFFFFFull)
            return QStringLiteral("keeps only its low 32 bits (it becomes ")
                + QString::number(static_cast<int>(static_cast<quint32>(r.wide))) + QLatin1Char(')');
        break;
    case Kept::MapLabel32:
        if (r.wide >> 32)
            return QStringLiteral("has bits above bit 31 (labelled by its low 32 bits in the register map)");
        break;
    }
    return QString();
}

/// A value as a message shows it: on one line, and cut when long.
QString shown(const QString& value)
{
    const int limit = 64;
    QString text = value.left(limit);
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    text.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    text.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return QLatin1Char('"') + text + (value.size() > limit ? QLatin1String("\"...") : QLatin1String("\""));
}

/// A zero that the conversion cannot read (an ESI "0" without its "#x") still becomes the 0 it means.
bool isWrittenZero(const QStringRef& value)
{
    const QStringRef digits = value.trimmed();
    return !digits.isEmpty()
        && std::all_of(digits.begin(), digits.end(), [](QChar c) { return c == QLatin1Char('0'); });
}

bool matches(const Rule& rule, const QStringRef& element, const QVector<QString>& open)
{
    if (element != QLatin1String(rule.element))
        return false;
    const int depth = open.size();
    if (rule.parent && (depth < 1 || open.at(depth - 1) != QLatin1String(rule.parent)))
        return false;
    return !rule.grandparent || (depth >= 2 && open.at(depth - 2) == QLatin1String(rule.grandparent));
}

class Audit
{
public:
    Audit(const QString& name, bool esi)
        : m_name(name)
        , m_rules(esi ? kEsiRules : kProductRules)
        , m_ruleCount(esi ? std::size(kEsiRules) : std::size(kProductRules))
        , m_keepNames(esi)
    { }

    QStringList run(QIODevice* device);

private:
    void startElement();
    void check(const Rule& rule, const QStringRef& value, qint64 line, qint64 column, const QString& what);
    QString position(qint64 line, qint64 column) const
    {
        return m_name + QLatin1Char(':') + QString::number(line) + QLatin1Char(':') + QString::number(column);
    }

    QString m_name;
    const Rule* m_rules;
    std::size_t m_ruleCount;
    QXmlStreamReader m_reader;
    bool m_keepNames; ///< only the ESI rules look at parents
    QVector<QString> m_open; ///< names of the open elements, outermost first, when kept
    int m_depth = 0;
    const Rule* m_pendingText = nullptr; ///< a text child whose token comes next
    qint64 m_pendingLine = 0;
    qint64 m_pendingColumn = 0;
    QStringList m_findings;
    // Where the previous token ended; after character data the reader has already taken the next "<".
    qint64 m_line = 1;
    qint64 m_column = 0;
    bool m_tookNextChar = false;
};

QStringList Audit::run(QIODevice* device)
{
    m_reader.setDevice(device);
    bool rootEnded = false;
    while (!m_reader.atEnd()) {
        const QXmlStreamReader::TokenType token = m_reader.readNext();
        if (m_pendingText) {
            // As the parser does: the one token after the start tag, whatever it is, holds the text.
            check(*m_pendingText, m_reader.text(), m_pendingLine, m_pendingColumn, QStringLiteral("text"));
            m_pendingText = nullptr;
        }
        if (token == QXmlStreamReader::StartElement) {
            startElement();
            ++m_depth;
            if (m_keepNames)
                m_open.append(m_reader.name().toString());
        } else if (token == QXmlStreamReader::EndElement && m_depth > 0) {
            --m_depth;
            if (m_keepNames)
                m_open.removeLast();
            rootEnded = m_depth == 0;
        }
        m_line = m_reader.lineNumber();
        m_column = m_reader.columnNumber();
        m_tookNextChar = token == QXmlStreamReader::Characters && !m_reader.isCDATA();
    }
    if (m_reader.hasError()) {
        const QString where = position(m_reader.lineNumber(), m_reader.columnNumber());
        m_findings << QStringLiteral("kivtool: ") + where
                + (rootEnded ? QStringLiteral(": content after the root element's end tag is ignored (")
                             : QStringLiteral(": the XML breaks here and the parser ignores the rest ("))
                + m_reader.errorString() + QLatin1Char(')');
    }
    return m_findings;
}

void Audit::startElement()
{
    const QStringRef element = m_reader.name();
    // The start tag's "<": the reader stands after the previous token, or one character further.
    const qint64 column = m_tookNextChar ? m_column : m_column + 1;
    const QXmlStreamAttributes attributes = m_reader.attributes(); // shared with the reader, not copied
    for (std::size_t i = 0; i < m_ruleCount; ++i) {
        const Rule& rule = m_rules[i];
        if (!matches(rule, element, m_open))
            continue;
        if (!rule.attribute) {
            m_pendingText = &rule;
            m_pendingLine = m_line;
            m_pendingColumn = column;
            continue;
        }
        // An absent attribute reads as empty, which check() passes over.
        const QLatin1String attribute(rule.attribute);
        check(rule, attributes.value(attribute), m_line, column, attribute);
    }
}

void Audit::check(const Rule& rule, const QStringRef& value, qint64 line, qint64 column, const QString& what)
{
    if (value.isEmpty())
        return;
    const Reading reading = convert(value, rule.conversion);
    if (!reading.ok && isWrittenZero(value))
        return;
    const QString problem = reading.ok
        ? lostPart(reading, rule.kept)
        : QStringLiteral("is not a number the parser reads (") + QLatin1String(rule.whenUnread) + QLatin1Char(')');
    if (!problem.isEmpty())
        m_findings << QStringLiteral("kivtool: ") + position(line, column) + QStringLiteral(": ")
                + QLatin1String(rule.element) + QStringLiteral(": ") + what + QLatin1Char(' ') + shown(value.toString())
                + QLatin1Char(' ') + problem;
}

} // namespace

QStringList NumberAudit::findings(QIODevice* device, const QString& name, bool esi)
{
    return Audit(name, esi).run(device);
}
