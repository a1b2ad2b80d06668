#pragma once

#include <QString>

class InputFile;

/// The product's HTML page as a complete UTF-8 document; empty for an ESI file, which has no page.
QString htmlDocument(const InputFile& input);
