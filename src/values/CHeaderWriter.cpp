#include "values/CHeaderWriter_p.h"

#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueChoiceElement.h"
#include "values/XmlValueInterface.h"

#include <QRegularExpression>

#include <limits>

namespace {

/// Names the C library (with <stdint.h> and <stdio.h>, which the header and its self-test include) keeps for
/// itself, once upper-cased.
bool isReserved(const QString& id)
{
    static const QRegularExpression reserved(QStringLiteral(
        "^(E[0-9A-Z]|U?INT[0-9]|U?INT_(LEAST|FAST)|U?INTMAX_|U?INTPTR_|PTRDIFF_|SIG_ATOMIC_|WCHAR_|WINT_|PRIX|SCNX"
        "|LC_|SIG[A-Z_]|FLT_|DBL_|LDBL_|SEEK_"
        "|(NULL|EOF|BUFSIZ|FILENAME_MAX|FOPEN_MAX|TMP_MAX|SIZE_MAX|CHAR_BIT|TIME_UTC|FALSE|TRUE)$)"));
    return reserved.match(id).hasMatch();
}

QString codePoint(uint code)
{
    return QStringLiteral("U+") + QString::number(code, 16).toUpper().rightJustified(4, QLatin1Char('0'));
}

/// Characters a line must not hold: controls (tab and newline included), line and paragraph separators and
/// the direction marks and overrides, which compilers warn about in comments.
bool isHidden(uint code)
{
    return code < 0x20 || (code >= 0x7F && code < 0xA0) || code == 0x061C || code == 0x200E || code == 0x200F
        || (code >= 0x2028 && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) || code == 0xFEFF;
}

} // namespace

namespace KivCHeader {

QString namePart(const QString& text)
{
    QString word;
    word.reserve(text.size());
    for (const QChar c : text) {
        const ushort u = c.unicode();
        if ((u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z') || (u >= '0' && u <= '9'))
            word += c.toUpper();
        else if (!word.isEmpty() && !word.endsWith(QLatin1Char('_')))
            word += QLatin1Char('_');
    }
    while (word.endsWith(QLatin1Char('_')))
        word.chop(1);
    return word;
}

QString identifier(const QStringList& parts)
{
    QStringList words;
    for (const QString& part : parts) {
        const QString word = namePart(part);
        if (!word.isEmpty())
            words << word;
    }
    QString id = words.join(QLatin1Char('_'));
    if (!id.isEmpty() && (id.at(0).isDigit() || isReserved(id)))
        id.prepend(QLatin1String("N_"));
    return id;
}

QString oneLine(const QString& text)
{
    QString line;
    line.reserve(text.size());
    const QVector<uint> codes = text.toUcs4();
    for (const uint code : codes) {
        if (code == '\t' || code == '\n' || code == '\r')
            line += QLatin1Char(' ');
        else if (isHidden(code))
            line += codePoint(code);
        else
            line += QString::fromUcs4(&code, 1);
    }
    return line.simplified();
}

QString commentText(const QString& text)
{
    QString line = oneLine(text);
    // The model keeps "&" of choice texts as the escape \x26.
    line.replace(QLatin1String("\\x26"), QLatin1String("&"));
    line.replace(QLatin1String("*/"), QLatin1String("* /"));
    line.replace(QLatin1String("/*"), QLatin1String("/ *"));
    while (line.contains(QLatin1String("??")))
        line.replace(QLatin1String("??"), QLatin1String("? ?"));
    if (line.endsWith(QLatin1Char('\\')))
        line += QLatin1Char(' ');
    return line;
}

QString quotedName(const QString& name)
{
    return QLatin1Char('"') + oneLine(name) + QLatin1Char('"');
}

QString hexLiteral(quint64 value, int digits)
{
    return QStringLiteral("0x") + QString::number(value, 16).toUpper().rightJustified(digits, QLatin1Char('0'))
        + (value > 0xFFFFFFFFull ? QLatin1String("ULL") : QLatin1String("U"));
}

QString unsignedLiteral(quint64 value)
{
    return QString::number(value) + (value > 0xFFFFFFFFull ? QLatin1String("ULL") : QLatin1String("U"));
}

QString signedLiteral(qint64 value)
{
    if (value == -2147483648LL)
        return QStringLiteral("(-2147483647 - 1)");
    if (value < -2147483648LL || value > 2147483647LL) {
        if (value == std::numeric_limits<qint64>::min())
            return QStringLiteral("(-9223372036854775807LL - 1)");
        if (value < 0)
            return QStringLiteral("(") + QString::number(value) + QStringLiteral("LL)");
        return QString::number(value) + QStringLiteral("LL");
    }
    if (value < 0)
        return QStringLiteral("(") + QString::number(value) + QLatin1Char(')');
    return QString::number(value);
}

QString valueLiteral(XmlValueInterface* value, qint64 number)
{
    if (value && value->getType() == 0)
        return signedLiteral(number);
    return unsignedLiteral(quint64(number));
}

QList<QPair<quint64, QString>> namedValues(XmlValueInterface* value)
{
    QList<QPair<quint64, QString>> named;
    if (auto* choice = dynamic_cast<XmlValueChoice*>(value)) {
        for (XmlValueChoiceElement* element : choice->getElements()) {
            if (element)
                // The model keeps "&" of choice texts as the escape \x26.
                named.append({element->getValue(),
                    element->getDescriptionShort().replace(QLatin1String("\\x26"), QLatin1String("&"))});
        }
    } else if (auto* boolean = dynamic_cast<XmlValueBool*>(value)) {
        const QString off = boolean->getDescFalseShort();
        const QString on = boolean->getDescTrueShort();
        named.append({0, namePart(off).isEmpty() ? QStringLiteral("FALSE") : off});
        named.append({1, namePart(on).isEmpty() ? QStringLiteral("TRUE") : on});
    }
    return named;
}

Writer::Writer(const CHeaderOptions& options, const QString& productName)
    : m_prefix(namePart(options.prefixGiven ? options.prefix : productName))
    , m_productName(productName)
{
    if (!options.prefixGiven && m_prefix.isEmpty())
        m_prefix = QStringLiteral("PRODUCT");
}

void Writer::begin(const QString& title)
{
    // Without a prefix the guard still names the product, so that two such headers can be included together.
    m_guard = m_prefix.isEmpty() ? identifier({m_productName, QStringLiteral("H")}) : name({QStringLiteral("H")});
    if (m_guard == QLatin1String("H"))
        m_guard = QStringLiteral("PRODUCT_H");
    claim(m_guard, QStringLiteral("the include guard"));
    m_text.reserve(1 << 16);
    m_text += QStringLiteral("/* ") + commentText(title) + QStringLiteral(" */\n");
    m_text += QStringLiteral("#ifndef ") + m_guard + QStringLiteral("\n#define ") + m_guard + QStringLiteral("\n\n");
    m_text += QStringLiteral("#include <stdint.h>\n\n");
    comment(QStringLiteral("Access flags: read, write, clear on read, ... as the product file names them"));
    static const char* const letters = "RWEXCIDA"; // bit order of the access mask
    for (int bit = 0; bit < 8; ++bit)
        define(name({QStringLiteral("ACCESS"), QString(QLatin1Char(letters[bit]))}), hexLiteral(1u << bit, 2),
            QStringLiteral("an access flag"));
    blankLine();
}

CHeaderResult Writer::finish()
{
    if (!m_checks.isEmpty()) {
        const QString assertName = name({QStringLiteral("STATIC_ASSERT")});
        m_text += QStringLiteral("/* Compile-time checks: C11 and C++11 or later; C99 has no static assertion */\n"
                                 "#if (defined(__cplusplus) && __cplusplus >= 201103L) \\\n"
                                 "    || (defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L)\n"
                                 "#ifdef __cplusplus\n#define ")
            + assertName + QStringLiteral(" static_assert\n#else\n#define ") + assertName
            + QStringLiteral(" _Static_assert\n#endif\n");
        m_text += m_checks;
        m_text += QStringLiteral("#undef ") + assertName + QStringLiteral("\n#endif\n\n");
    }
    m_text += QStringLiteral("#endif /* ") + m_guard + QStringLiteral(" */\n");
    CHeaderResult result;
    result.header = m_text;
    result.diagnostics = m_diagnostics;
    return result;
}

bool Writer::claim(const QString& id, const QString& source)
{
    const auto owner = m_owners.constFind(id);
    if (owner == m_owners.constEnd()) {
        m_owners.insert(id, source);
        return true;
    }
    const QString pair = owner.value() + QLatin1Char('\n') + source;
    if (!m_reported.contains(pair)) {
        m_reported.insert(pair);
        if (owner.value() == source)
            error(QStringLiteral("identifier ") + id + QStringLiteral(" stands for ") + source
                + QStringLiteral(" twice"));
        else
            error(QStringLiteral("identifier ") + id + QStringLiteral(" stands for both ") + owner.value()
                + QStringLiteral(" and ") + source);
    }
    return false;
}

void Writer::define(const QString& id, const QString& value, const QString& source)
{
    if (!claim(id, source))
        return;
    m_text += QStringLiteral("#define ") + id;
    m_text += QString(qMax(1, 48 - id.size()), QLatin1Char(' '));
    m_text += value + QLatin1Char('\n');
}

void Writer::defineNamedValues(const QString& id, XmlValueInterface* value, const QString& source)
{
    for (const auto& entry : namedValues(value)) {
        const QString valueSource = QStringLiteral("value ") + QString::number(entry.first) + QStringLiteral(" (")
            + quotedName(entry.second) + QStringLiteral(") of ") + source;
        QString part = namePart(entry.second);
        if (part.isEmpty()) {
            part = QStringLiteral("VALUE_") + QString::number(entry.first);
            warning(valueSource + QStringLiteral(" has no name to build on; it is written as ") + part);
        }
        define(identifier({id, part}), unsignedLiteral(entry.first), valueSource);
    }
}

void Writer::comment(const QString& text)
{
    m_text += QStringLiteral("/* ") + commentText(text) + QStringLiteral(" */\n");
}

void Writer::heading(const QString& text)
{
    m_text += QLatin1String("/* ---- ");
    m_text += commentText(text);
    m_text += QLatin1String(" */\n");
}

QString Writer::access(int mask) const
{
    static const char* const letters = "RWEXCIDA";
    QStringList flags;
    for (int bit = 0; bit < 8; ++bit) {
        if (mask & (1 << bit))
            flags << name({QStringLiteral("ACCESS"), QString(QLatin1Char(letters[bit]))});
    }
    if (flags.isEmpty())
        return QStringLiteral("0U");
    if (flags.size() == 1)
        return flags.first();
    return QLatin1Char('(') + flags.join(QLatin1String(" | ")) + QLatin1Char(')');
}

void Writer::warning(const QString& text)
{
    m_diagnostics.append({CHeaderDiagnostic::Warning, text});
}

void Writer::error(const QString& text)
{
    m_diagnostics.append({CHeaderDiagnostic::Error, text});
}

void Writer::check(const QString& condition, const QString& message)
{
    if (m_checks.isEmpty())
        claim(name({QStringLiteral("STATIC_ASSERT")}), QStringLiteral("the compile-time check macro"));
    m_checks += name({QStringLiteral("STATIC_ASSERT")}) + QLatin1Char('(') + condition + QStringLiteral(", \"")
        + message + QStringLiteral("\");\n");
}

} // namespace KivCHeader
