#pragma once

class InputFile;
struct Arguments;

/// kivtool header: the product's C header to -o or standard output, and with --selftest OUT.c the
/// self-test source beside it. Diagnostics go to stderr; with an error nothing is written (exit 1).
int runHeader(const InputFile& input, const Arguments& arguments);
