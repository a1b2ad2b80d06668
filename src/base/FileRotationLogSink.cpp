#include "base/FileRotationLogSink.h"
#include "base/FileRotationLogSink_p.h"

#include "base/AppSettings.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDebug>
#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

#include <algorithm>
#include <cstdio>

namespace {

QString now()
{
    return QDateTime::currentDateTime().toString(FileRotationLogSinkPrivate::dateFormat());
}

const QString kSeparator = QStringLiteral("_________________");

} // namespace

QString FileRotationLogSinkPrivate::directoryListing(const QString& dir)
{
    QStringList paths;
    QDirIterator it(
        dir, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext())
        paths.append(it.next());
    std::sort(paths.begin(), paths.end());

    // Group the entries by their directory, the top directory first even when it is empty.
    QStringList directories(QDir(dir).absolutePath());
    for (const QString& path : qAsConst(paths)) {
        const QFileInfo info(path);
        if (info.isDir() && !info.isSymLink())
            directories.append(info.absoluteFilePath());
    }
    std::sort(directories.begin(), directories.end());

    QString text;
    for (const QString& directory : qAsConst(directories)) {
        text += QLatin1String(" Directory of ") + QDir::toNativeSeparators(directory) + QLatin1String("\n\n");
        const QFileInfoList entries = QDir(directory).entryInfoList(
            QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
        for (const QFileInfo& entry : entries) {
            const QString size = entry.isDir() ? QStringLiteral("<DIR>         ")
                                               : QString::number(entry.size()).rightJustified(14, QLatin1Char(' '));
            text += entry.lastModified().toString(QStringLiteral("yyyy-MM-dd  hh:mm")) + QLatin1String("    ") + size
                + QLatin1Char(' ') + entry.fileName() + QLatin1Char('\n');
        }
        text += QLatin1Char('\n');
    }
    return text;
}

FileRotationLogSink::FileRotationLogSink(QString name, size_t maxSize)
    : m_maxSize(maxSize)
{
    const QString home = AppSettings().homePath();
    m_path = home;
    m_backupPath = home;
    std::fprintf(stderr, "FileRotationLogSink::FileRotationLogSink(QString, size_t) %s Home: %s\n",
        name.toLocal8Bit().constData(), home.toLocal8Bit().constData());
    name.prepend(QLatin1Char('/'));
    m_path += name;
    m_backupPath += name + QLatin1String(".bak");
    m_file.setFileName(m_path);
    // Not checked on purpose: an unopenable file only loses lines until a rotation reopens it.
    m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
    m_stream.setDevice(&m_file);
    m_file.setObjectName(name + QLatin1String(".bak"));
    m_flag = false;

    const QString counter = AppSettings().value(QLatin1String(AppSettings::keyStartCounter)).toString();
    m_stream << Qt::endl
             << Qt::endl
             << "Start " << now() << " [" << counter << "]" << Qt::endl
             << QString(79, QLatin1Char('_')) << Qt::endl
             << Qt::endl;
}

FileRotationLogSink::~FileRotationLogSink()
{
    m_stream.flush();
    m_file.close();
}

QTextStream* FileRotationLogSink::getCurrentStream()
{
    return &m_stream;
}

QString FileRotationLogSink::fileName()
{
    return QFileInfo(m_path).fileName();
}

QString FileRotationLogSink::filePath()
{
    return m_path;
}

void FileRotationLogSink::flush()
{
    m_stream.flush();
    m_file.flush();
    if (quint64(m_file.size()) <= quint64(m_maxSize))
        return;
    m_file.close();
    if (QFile::exists(m_backupPath))
        QFile::remove(m_backupPath);
    QFile::rename(m_path, m_backupPath);
    m_file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Truncate);
    m_stream << now() << Qt::endl;
}

QString FileRotationLogSink::copyToTemp(bool open)
{
    m_stream.flush(); // so that the report holds every line written so far; no rotation here
    const QString target = QDir::currentPath() + QLatin1Char('/') + fileName();
    if (QFile::exists(target))
        QFile::remove(target);
    QFile::copy(m_backupPath, target); // no backup yet: the target is created below

    QFile report(target);
    report.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
    QTextStream out(&report);
    QFile live(m_path);
    if (live.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream in(&live);
        out << in.readAll();
        live.close();
    }

#ifdef Q_OS_WIN
    QProcess listing;
    listing.setWorkingDirectory(QCoreApplication::applicationDirPath());
    listing.start(QStringLiteral("cmd.exe"), {QStringLiteral("/C"), QStringLiteral("dir /s")}, QIODevice::ReadWrite);
#endif
    out << Qt::endl << kSeparator << ' ' << QCoreApplication::applicationFilePath() << ' ' << kSeparator << Qt::endl;
#ifdef Q_OS_WIN
    if (listing.waitForStarted(30000)) {
        listing.waitForFinished(30000);
        out << listing.readAllStandardOutput();
        out << listing.readAllStandardError();
    }
#else
    out << FileRotationLogSinkPrivate::directoryListing(QCoreApplication::applicationDirPath());
#endif
    out.flush();
    report.close();

    if (open && !QDesktopServices::openUrl(QUrl::fromLocalFile(target)))
        qDebug() << "QString FileRotationLogSink::copyToTemp(bool)"
                 << "Cannot open:" << target;
    return target;
}

void FileRotationLogSink::copyToTemp(QString)
{
    copyToTemp(true);
}
