#include "FuzzInput.h"

#include <QFile>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

QFile* fuzzInputFile(const uint8_t* data, size_t size)
{
    static const int fd = memfd_create("kivcore-fuzz-input", 0);
    static QFile file;
    if (fd < 0) {
        std::perror("memfd_create");
        std::abort();
    }
    file.close();
    if (ftruncate(fd, 0) != 0 || pwrite(fd, data, size, 0) != ssize_t(size) || lseek(fd, 0, SEEK_SET) != 0) {
        std::perror("fuzz input");
        std::abort();
    }
    file.open(fd, QIODevice::ReadOnly, QFileDevice::DontCloseHandle);
    return &file;
}

void silenceQtMessages()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}
