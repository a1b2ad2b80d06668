#pragma once

#include "kivcore_export.h"

#include <QFile>
#include <QObject>
#include <QString>
#include <QTextStream>

#include <cstddef>

/// The file end of the application's log: a live file in the home path that flush() moves aside to a single
/// ".bak" once it grows past the size limit, and a report copy of both files plus a listing of the
/// installation directory. Writers share one stream; the application serialises them.
class KIVCORE_EXPORT FileRotationLogSink : public QObject
{
    Q_OBJECT

public:
    /// Opens (appending) AppSettings::homePath() + "/" + name and writes the start header.
    FileRotationLogSink(QString name, size_t maxSize);
    ~FileRotationLogSink() override;

    /// Stays valid across rotations; the sink keeps ownership.
    QTextStream* getCurrentStream();
    QString fileName();
    QString filePath();

public slots:
    /// The only place where the file is rotated: when it is larger than the limit (equal is not larger).
    void flush();
    /// Writes backup + live log + a listing of the application directory into a file of the live file's
    /// name in the current directory, opens it when `open` is true and returns its path.
    QString copyToTemp(bool open = true);
    /// Same as copyToTemp(true): the argument is ignored, the slot only fits signals that carry a text.
    void copyToTemp(QString);

private:
    size_t m_maxSize;
    QString m_path;
    QString m_backupPath;
    QTextStream m_stream;
    QFile m_file;
    bool m_flag = false;
};
