#include "LatexRepair.h"

#include <QRegularExpression>

namespace {

/// Description lines are joined by a bare "\\newline", which runs into a following word as one unknown
/// command; a standalone document separates them.
QString separateNewlines(QString text)
{
    static const QRegularExpression gluedNewline(QStringLiteral("\\\\newline(?=[A-Za-z])"));
    return text.replace(gluedNewline, QStringLiteral("\\newline{}"));
}

} // namespace

namespace LatexRepair {

/// The axis-parameter generator closes only its last long table (the hand-written manual closes the
/// others); a standalone document needs each one closed before the next opens.
QString closeEveryLongtable(const QString& text)
{
    static const QLatin1String begin("\\begin{longtable}");
    static const QLatin1String end("\\end{longtable}");
    QString closed;
    closed.reserve(text.size() + 256);
    bool open = false;
    int from = 0;
    // The next of each mark at or after `from`, searched again only once `from` has passed it: searching
    // both at every step rescanned the whole rest of the text for a mark that comes only at its end.
    int nextBegin = text.indexOf(begin);
    int nextEnd = text.indexOf(end);
    while (nextBegin >= 0 || nextEnd >= 0) {
        if (nextBegin >= 0 && (nextEnd < 0 || nextBegin < nextEnd)) {
            closed += text.midRef(from, nextBegin - from);
            if (open)
                closed += QLatin1String("\n\\end{longtable}\n");
            closed += begin;
            open = true;
            from = nextBegin + begin.size();
        } else {
            closed += text.midRef(from, nextEnd + end.size() - from);
            open = false;
            from = nextEnd + end.size();
        }
        if (nextBegin >= 0 && nextBegin < from)
            nextBegin = text.indexOf(begin, from);
        if (nextEnd >= 0 && nextEnd < from)
            nextEnd = text.indexOf(end, from);
    }
    closed += text.midRef(from);
    return closed;
}

QString standaloneBody(const QString& body)
{
    return separateNewlines(closeEveryLongtable(body));
}

/// The preamble names each global bank's feature macro with its number inside the name, which the
/// manual's own macro package reads by name; plain LaTeX needs such a name built with \\csname.
QString bankMacrosByName(QString header)
{
    static const QRegularExpression bankMacro(QStringLiteral("\\\\providecommand\\{\\\\(SupportGPBank\\d+)\\}\\{\\}"));
    return header.replace(bankMacro, QStringLiteral("\\expandafter\\providecommand\\csname \\1\\endcsname{}"));
}

} // namespace LatexRepair
