#pragma once

class InputFile;
struct Arguments;

/// "decode" and "encode": register values of an IC taken apart or put together (RegisterValues). Exit 1
/// with a message naming the register, field or value that is wrong, or when the file is not an IC.
int runRegisterCommand(const InputFile& input, const Arguments& arguments);
