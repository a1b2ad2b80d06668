#pragma once

#include <QJsonObject>

class InputFile;

/// The file's model as JSON: an ESI file through its own export, a module or IC product through the
/// library's product exports (docs/json.md).
QJsonObject jsonObject(const InputFile& input);
