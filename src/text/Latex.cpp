#include "text/Latex_p.h"

#include "text/Ampersand_p.h"

namespace KivText {

QString escapeLatex(const QString& text)
{
    const QString source = replaceAmpersandEscape(text);
    QString out;
    out.reserve(source.size() + 16);
    for (const QChar c : source) {
        switch (c.unicode()) {
        case '\\':
            out += QLatin1String("\\textbackslash{}");
            break;
        case '{':
            out += QLatin1String("\\{");
            break;
        case '}':
            out += QLatin1String("\\}");
            break;
        case '$':
            out += QLatin1String("\\$");
            break;
        case '#':
            out += QLatin1String("\\#");
            break;
        case '%':
            out += QLatin1String("\\%");
            break;
        case '&':
            out += QLatin1String("\\&");
            break;
        case '_':
            out += QLatin1String("\\_");
            break;
        case '^':
            out += QLatin1String("\\textasciicircum{}");
            break;
        case '~':
            out += QLatin1String("\\textasciitilde{}");
            break;
        case '<':
            out += QLatin1String("\\textless{}");
            break;
        case '>':
            out += QLatin1String("\\textgreater{}");
            break;
        case 0x00B0:
            out += QLatin1String("\\degree{}");
            break;
        default:
            out += c;
            break;
        }
    }
    return out;
}

QString escapeLatexPercentUnderscore(QString text)
{
    text.replace(QLatin1String("%"), QLatin1String("\\%"));
    text.replace(QLatin1String("_"), QLatin1String("\\textunderscore "));
    return text;
}

QString escapeLatexMapLine(QString line)
{
    line.replace(QLatin1Char('_'), QLatin1String("\\_"));
    line.replace(QLatin1Char('&'), QLatin1String("\\&"));
    line.replace(QLatin1Char('^'), QLatin1String("\\string^"));
    line.replace(QChar(0x00B0), QLatin1String("\\degree"));
    return line;
}

} // namespace KivText
