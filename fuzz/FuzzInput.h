#pragma once

#include <cstddef>
#include <cstdint>

class QFile;

/// The fuzzer's bytes as an open, readable file, which is what the parsers take. One in-memory file is
/// reused for every input; the returned file stays valid until the next call.
QFile* fuzzInputFile(const uint8_t* data, size_t size);

/// The parsers report what they skip on the debug log; a fuzzer run would drown in it.
void silenceQtMessages();
