#pragma once

#include <QtGlobal>

namespace KivReserve {

/// The most characters a renderer reserves up front (8 MiB of text); a longer text grows as it is
/// written, which costs a few reallocations and nothing more.
constexpr qint64 kMaxChars = qint64(1) << 22;

/// Characters to reserve for `base` plus `count` items of about `perItem` characters each. Counted in
/// 64 bits and capped: the counts come from files, and a hint must neither overflow nor claim memory
/// that the content never fills (thousands of empty elements in a small file).
constexpr int chars(qint64 base, qint64 count = 0, qint64 perItem = 0)
{
    const qint64 total = base + count * perItem;
    return int(total < 0 ? 0 : (total > kMaxChars ? kMaxChars : total));
}

} // namespace KivReserve
