#pragma once
// kivtool run as users run it, for the tests that define KIVTOOL_PATH.

#include <QProcess>
#include <QString>
#include <QStringList>

struct KivtoolRun
{
    int exitCode = -1; // also for a crash or a time-out
    QString out;
    QString err;
};

/// Keeps embedded NUL characters, which debug texts may hold (option bits written as a character).
inline QString fromUtf8Whole(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

inline KivtoolRun runKivtool(
    const QStringList& arguments, const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KIVTOOL_PATH), arguments);
    KivtoolRun run;
    if (!process.waitForFinished(120000))
        return run;
    run.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    run.out = fromUtf8Whole(process.readAllStandardOutput());
    run.err = fromUtf8Whole(process.readAllStandardError());
    return run;
}
