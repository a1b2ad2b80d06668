#pragma once

#include <QString>

class InputFile;

/// The product's interactive reference page: one self-contained HTML document with its styles, its script
/// and the model as JSON, for module, IC and ESI files alike. The script is allowed by its SHA-256 hash
/// alone; the page loads nothing.
QString referencePage(const InputFile& input);

/// The text placed between <script> and </script>: its hash is what the page's policy allows.
QString referencePageScript();
