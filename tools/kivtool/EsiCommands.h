#pragma once

class InputFile;
struct Arguments;

/// kivtool esi index|find|list: the catalog of a folder of ESI files (EsiCatalog). Results on standard
/// output (text, or JSON with --json), progress and failures on stderr.
int runEsi(const Arguments& arguments);

/// kivtool json FILE --device N: the ESI JSON of the file's device at position N (from 0, as
/// 'kivtool esi find' prints it), in the same envelope as the whole file's export.
int runJsonDevice(const InputFile& input, const Arguments& arguments);
