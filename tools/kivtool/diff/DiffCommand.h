#pragma once

struct Arguments;

/// kivtool diff OLD NEW [--json | --markdown]: what changed, on standard output; exit 0 when the files are
/// equal, 1 when they differ, 2 when one cannot be loaded, the kinds differ or the command line is wrong.
int runDiff(const Arguments& arguments);
