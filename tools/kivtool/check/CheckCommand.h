#pragma once

struct Arguments;

/// kivtool check FILE... [--json | --sarif] [--disable ID,...]: the findings of every file on standard
/// output; exit 0 without an error finding, 1 with one, 2 when a file cannot be read or the command line
/// is wrong.
int runCheck(const Arguments& arguments);
