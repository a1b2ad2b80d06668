#include "TextMask.h"

#include "Output.h"

#include "values/XmlValueInterface.h"

namespace {

const QLatin1String kPrefix("Qzq");
const QLatin1Char kEnd('q');

bool isLiteralEverywhere(QChar c)
{
    const ushort u = c.unicode();
    if ((u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9'))
        return true;
    switch (u) {
    case ' ':
    case '.':
    case ',':
    case ':':
    case ';':
    case '(':
    case ')':
    case '[':
    case ']':
    case '/':
    case '+':
    case '=':
    case '!':
    case '?':
    case '*':
    case '@':
    case '-':
        return true;
    default:
        return false;
    }
}

/// A text that contains the placeholder prefix is masked too, so that every prefix in a rendering is ours.
bool needsMask(const QString& text)
{
    for (const QChar c : text) {
        if (!isLiteralEverywhere(c))
            return true;
    }
    return text.contains(kPrefix);
}

QString withAmpersands(QString text)
{
    return text.replace(QLatin1String("\\x26"), QLatin1String("&"));
}

/// A \label key is being written when the last "{" shortly before opens one and is still open.
bool insideLabel(const QString& rendered, int position)
{
    const int from = qMax(0, position - 64);
    const QStringRef before = rendered.midRef(from, position - from);
    const int open = before.lastIndexOf(QLatin1Char('{'));
    if (open < 0 || before.indexOf(QLatin1Char('}'), open) >= 0)
        return false;
    return rendered.midRef(0, from + open).endsWith(QLatin1String("\\label"));
}

/// The text's label form as the register documentation writes it ("_" as "-") where that makes a plain
/// key, or else a key made from the text's number.
QString labelKey(QString text, int number)
{
    text.replace(QLatin1Char('_'), QLatin1Char('-'));
    for (const QChar c : qAsConst(text)) {
        if (!isLiteralEverywhere(c) || c == QLatin1Char(' '))
            return QLatin1String("text") + QString::number(number);
    }
    return text;
}

} // namespace

QString TextMask::text(const QString& text)
{
    return needsMask(text) ? placeholder(text, QString()) : text;
}

QString TextMask::access(const QString& text)
{
    if (!needsMask(text))
        return text;
    static const char kLetters[] = "rwexcida"; // bit 1, 2, 4, ... 128 of the access mask
    const int rights = XmlValueInterface::accessStringToAccess(text);
    QString letters;
    for (int bit = 0; bit < 8; ++bit) {
        if (rights & (1 << bit))
            letters += QLatin1Char(kLetters[bit]);
    }
    return placeholder(text, letters);
}

QString TextMask::placeholder(const QString& text, const QString& letters)
{
    m_texts.append(text);
    return kPrefix + QString::number(m_texts.size() - 1) + kEnd + letters + kEnd;
}

QString TextMask::unmask(const QString& rendered, Target target) const
{
    QString result;
    result.reserve(rendered.size() + rendered.size() / 4);
    int from = 0;
    for (int at = rendered.indexOf(kPrefix); at >= 0; at = rendered.indexOf(kPrefix, from)) {
        // The text's number, the end mark, the letters kept for the model, the end mark again.
        int end = at + kPrefix.size();
        while (end < rendered.size() && end - at < kPrefix.size() + 9 && rendered.at(end) >= QLatin1Char('0')
            && rendered.at(end) <= QLatin1Char('9'))
            ++end;
        bool valid = false;
        const int number = rendered.midRef(at + kPrefix.size(), end - at - kPrefix.size()).toInt(&valid);
        valid = valid && number < m_texts.size() && end < rendered.size() && rendered.at(end) == kEnd;
        const int close = valid ? rendered.indexOf(kEnd, end + 1) : -1;
        if (close < 0) { // not ours after all: kept as it is
            result += rendered.midRef(from, at + kPrefix.size() - from);
            from = at + kPrefix.size();
            continue;
        }
        result += rendered.midRef(from, at - from);
        const QString& text = m_texts.at(number);
        if (target == Target::Html)
            result += htmlText(text);
        else if (insideLabel(rendered, at))
            result += labelKey(text, number);
        else
            result += latexText(text);
        from = close + 1;
    }
    result += rendered.midRef(from);
    return result;
}

QString htmlText(const QString& text)
{
    return withAmpersands(text).toHtmlEscaped();
}

QString latexText(const QString& text)
{
    const QString source = visibleControls(withAmpersands(text));
    QString escaped;
    escaped.reserve(source.size() + 32);
    for (const QChar c : source) {
        switch (c.unicode()) {
        case '\\':
            escaped += QLatin1String("\\textbackslash{}");
            break;
        case '{':
        case '}':
        case '$':
        case '&':
        case '#':
        case '_':
        case '%':
            escaped += QLatin1Char('\\');
            escaped += c;
            break;
        case '^':
            escaped += QLatin1String("\\textasciicircum{}");
            break;
        case '~':
            escaped += QLatin1String("\\textasciitilde{}");
            break;
        case '<':
            escaped += QLatin1String("\\textless{}");
            break;
        case '>':
            escaped += QLatin1String("\\textgreater{}");
            break;
        case '|':
            escaped += QLatin1String("\\textbar{}");
            break;
        case '"':
            escaped += QLatin1String("\\textquotedbl{}");
            break;
        case '\'':
            escaped += QLatin1String("\\textquotesingle{}");
            break;
        case '`':
            escaped += QLatin1String("\\textasciigrave{}");
            break;
        case 0x00B0:
            escaped += QLatin1String("\\textdegree{}");
            break;
        case '\t':
        case '\n':
            escaped += QLatin1Char(' ');
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}
