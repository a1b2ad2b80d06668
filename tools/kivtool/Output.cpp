#include "Output.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#ifdef Q_OS_WIN
#include <io.h>
#define isatty _isatty
#define fileno _fileno
#else
#include <unistd.h>
#endif

namespace {

bool needsEscape(ushort c)
{
    return (c < 0x20 && c != '\t' && c != '\n') || (c >= 0x7F && c <= 0x9F) || (c >= 0x202A && c <= 0x202E)
        || (c >= 0x2066 && c <= 0x2069);
}

QByteArray encodedFor(std::FILE* stream, const QString& text)
{
    return (isTerminal(stream) ? visibleControls(text) : text).toUtf8();
}

/// Writes all of `bytes` and flushes; false with errno set when the stream refused them.
bool writeAll(std::FILE* stream, const QByteArray& bytes)
{
    errno = 0;
    const size_t written = std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    return std::fflush(stream) == 0 && written == size_t(bytes.size()) && !std::ferror(stream);
}

int writeFailure(const QString& target, const QString& reason)
{
    return fail(2, QStringLiteral("kivtool: cannot write ") + target + QStringLiteral(": ") + reason);
}

/// Devices and pipes cannot be replaced by a rename; they get the bytes directly.
int writeDirectly(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return writeFailure(path, file.errorString());
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.close();
        return writeFailure(path, reason);
    }
    file.close();
    return file.error() == QFileDevice::NoError ? 0 : writeFailure(path, file.errorString());
}

} // namespace

bool isTerminal(std::FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

QString visibleControls(const QString& text)
{
    QString visible;
    visible.reserve(text.size());
    for (const QChar c : text) {
        const ushort code = c.unicode();
        if (!needsEscape(code)) {
            visible += c;
        } else if (code < 0x100) {
            visible += QStringLiteral("\\x") + QString::number(code, 16).toUpper().rightJustified(2, QLatin1Char('0'));
        } else {
            visible += QStringLiteral("\\u") + QString::number(code, 16).toUpper();
        }
    }
    return visible;
}

int writeStandardOutput(const QString& text)
{
    if (writeAll(stdout, encodedFor(stdout, text)))
        return 0;
    const int error = errno;
    return writeFailure(QStringLiteral("standard output"),
        error ? QString::fromLocal8Bit(std::strerror(error)) : QStringLiteral("write error"));
}

int writeFile(const QString& path, const QByteArray& bytes)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return info.isDir() ? writeFailure(path, QStringLiteral("Is a directory")) : writeDirectly(path, bytes);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return writeFailure(path, file.errorString());
    if (file.write(bytes) != bytes.size()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        file.commit();
        return writeFailure(path, reason);
    }
    return file.commit() ? 0 : writeFailure(path, file.errorString());
}

int writeOutput(const QString& text, const QString& path)
{
    return path.isEmpty() ? writeStandardOutput(text) : writeFile(path, text.toUtf8());
}

int fail(int exitCode, const QString& message)
{
    writeAll(stderr, encodedFor(stderr, message + QLatin1Char('\n')));
    return exitCode;
}

QString quoted(const QString& text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}
