#pragma once

#include <QString>

class InputFile;

/// A few lines telling what the file holds: kind, name, version and the sizes of its parts.
QString summaryText(const InputFile& input);
