#pragma once

#include <QString>

/// What a LaTeX text written for the hand-made manual needs before it typesets as a document of its own.
namespace LatexRepair {

/// The generated body with every long table closed and glued "\newline" commands separated from the
/// following word. The texts from the file are escaped before the library renders them (kivtool's TextMask).
QString standaloneBody(const QString& body);

/// The module header with each global bank's feature macro named through \csname.
QString bankMacrosByName(QString header);

/// Closes each open long table before the next one opens; one pass over the text.
QString closeEveryLongtable(const QString& text);

} // namespace LatexRepair
