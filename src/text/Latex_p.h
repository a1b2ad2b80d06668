#pragma once

// The escaping of file texts for the LaTeX documents.

#include <QString>

namespace KivText {

/// Register and field names as LaTeX shows them: "_" escaped.
inline QString latexDisplayName(QString name)
{
    name.replace(QLatin1Char('_'), QLatin1String("\\_"));
    return name;
}

/// Register and field names as LaTeX label keys: "_" becomes "-".
inline QString latexLabelName(QString name)
{
    name.replace(QLatin1Char('_'), QLatin1Char('-'));
    return name;
}

/// Full escaping, so that any text typesets: every special character of LaTeX, "<", ">" and the degree
/// sign. The file's \x26 stands for an ampersand and is printed as one.
QString escapeLatex(const QString& text);

/// The module manual's escaping: "%" and "_" only, the underscore as "\\textunderscore " (with its blank).
QString escapeLatexPercentUnderscore(QString text);

/// The register map's lighter escaping: only "_", "&", "^" and the degree sign; everything else goes
/// through as written.
QString escapeLatexMapLine(QString line);

} // namespace KivText
