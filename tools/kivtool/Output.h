#pragma once

#include <QByteArray>
#include <QString>

#include <cstdio>

// Where kivtool's results and messages go. Results are UTF-8, written whole or reported as failed;
// texts bound for a terminal show control characters as visible escapes, so a file's text cannot
// retitle, clear or otherwise command the user's terminal.

/// Whether `stream` (stdout, stderr) is a terminal, where progress lines and escapes make sense.
bool isTerminal(std::FILE* stream);

/// `text` with every control character but tab and newline (C0, DEL, C1, and the bidirectional
/// overrides) written as a visible escape such as "\x1B" or "\u202E".
QString visibleControls(const QString& text);

/// Writes `text` to standard output (escaped when it is a terminal). 0, or 2 with the message
/// "kivtool: cannot write standard output: REASON" on stderr.
int writeStandardOutput(const QString& text);

/// Replaces the file at `path` by `bytes` only once they are complete: written to a temporary file in the
/// same folder, then renamed into place. Devices and pipes are written directly. 0, or 2 with a message.
int writeFile(const QString& path, const QByteArray& bytes);

/// writeFile for a non-empty path, writeStandardOutput otherwise.
int writeOutput(const QString& text, const QString& path);

/// Writes `message` and a newline to stderr (escaped when it is a terminal) and returns `exitCode`.
int fail(int exitCode, const QString& message);

/// A file's name or text quoted for a message: kept literally, never read as a format.
QString quoted(const QString& text);
