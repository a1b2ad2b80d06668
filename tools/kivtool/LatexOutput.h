#pragma once

#include <QString>
#include <QStringList>

class InputFile;

/// One LaTeX fragment of the model, or an error message naming the fragments there are.
struct LatexFragment
{
    bool ok = false;
    QString text;
    QString error;
    int exitCode = 2; ///< for an error: 2 when the command line names what the file does not have
};

/// The fragment names a file of this kind offers, with their argument where they take one.
QStringList latexFragmentNames(const InputFile& input);

/// Module: header, axis, global BANK, ios KIND, canopen. IC: regmap, regmap-defaults, overview,
/// overview-group ID.
LatexFragment latexFragment(const InputFile& input, const QString& name, const QString& argument);

/// A complete, standalone LaTeX document for the product: our own preamble, then every fragment.
/// Empty for an ESI file.
QString latexManual(const InputFile& input);

/// The manual's file name without suffix: the input's, with each character that pdflatex cannot take in
/// a file name (backslash, % ~ " and control characters) written "_"; "stdin" for standard input.
QString manualBaseName(const QString& inputPath);

/// Typesets `texFile` in its own directory with pdflatex, as many runs as the long tables need.
/// pdflatex runs without shell escape, reads and writes only inside that directory, reads nothing from
/// the terminal and gets 120 s per run. On failure `message` says why (pdflatex missing, the time
/// limit, or the log's first error).
bool typesetPdf(const QString& texFile, QString* message);
