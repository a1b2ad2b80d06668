#pragma once

#include <QtGlobal>

namespace KivReserve {

/// The most characters a renderer reserves up front (64 MiB of text). Not much less: a concatenation
/// appended with += reserves the exact new length, so past its reserve a text built that way is copied
/// on every append wherever the allocator cannot grow it in place (under AddressSanitizer, always).
constexpr qint64 kMaxChars = qint64(1) << 25;

/// Characters to reserve for `base` plus `count` items of about `perItem` characters each. Counted in
/// 64 bits and capped: the counts come from files, and a hint must neither overflow nor claim gigabytes
/// for thousands of empty elements in a small file.
constexpr int chars(qint64 base, qint64 count = 0, qint64 perItem = 0)
{
    const qint64 total = base + count * perItem;
    return int(total < 0 ? 0 : (total > kMaxChars ? kMaxChars : total));
}

} // namespace KivReserve
