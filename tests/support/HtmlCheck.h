#pragma once

#include <QString>

namespace HtmlCheck {

/// The first structural problem of an HTML text, or an empty text: an end tag that closes nothing or the
/// wrong element, an element left open (void elements need no end tag), or a "<", ">" or "&" left from
/// unescaped text. `textToo` false checks the tags only (the IC's page holds its texts unescaped).
QString problem(const QString& html, bool textToo = true);

} // namespace HtmlCheck
