#pragma once

#include <QString>
#include <QStringList>

// Pages and manuals take their texts from a file made by anybody. The library's renderers escape some
// texts, some partly and some not at all, and their output must stay as it is. So before kivtool has a
// model rendered, it swaps each text that needs escaping for a placeholder that every renderer passes
// through unchanged; afterwards it puts each text back, escaped once, for where it landed.

/// The texts of one model, swapped for placeholders. A placeholder is "Qzq", the text's number, "q",
/// optional lower-case letters that the model should still see (see access()), and "q".
class TextMask
{
public:
    enum class Target
    {
        Html, ///< page text: "<", ">", "&", "\"" as references
        Latex, ///< typeset literally; inside a \label{...} its key form (see labelKey in the source)
    };

    /// `text` itself when it holds only letters, digits, blanks and . , : ; ( ) [ ] / + = ! ? * @ - (all
    /// literal in HTML and LaTeX, and changed by no renderer), or else its placeholder.
    QString text(const QString& text);
    /// An access text ("rw"): the placeholder also holds the access letters, so that the rights the model
    /// reads from it stay the same.
    QString access(const QString& text);

    /// `rendered` with every placeholder replaced by its text, escaped for `target`. In both targets
    /// the four characters \x26, which stand for "&" in product description files, become an "&".
    QString unmask(const QString& rendered, Target target) const;

private:
    QString placeholder(const QString& text, const QString& letters);

    QStringList m_texts;
};

/// Plain text as HTML character data.
QString htmlText(const QString& text);

/// Plain text for LaTeX, every special character written so that it typesets as itself; line breaks and
/// tabs become blanks, other control characters visible escapes.
QString latexText(const QString& text);
