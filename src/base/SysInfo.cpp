#include "base/SysInfo.h"
#include "base/SysInfo_p.h"

#include <QDebug>
#include <QFile>
#include <QRegularExpression>
#include <QSettings>
#include <QSysInfo>
#include <QTextStream>

#include <cmath>

#ifndef Q_OS_WIN
#include <unistd.h>
#endif

bool SysInfoPrivate::is64Bit(const QString& architecture)
{
    return architecture.contains(QLatin1String("64"), Qt::CaseSensitive);
}

QMap<QString, QVariant> SysInfoPrivate::readOsRelease(const QString& path)
{
    QMap<QString, QVariant> values;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return values;
    QTextStream in(&file);
    QString line;
    while (in.readLineInto(&line)) {
        line = line.trimmed();
        const int equals = line.indexOf(QLatin1Char('='));
        if (line.startsWith(QLatin1Char('#')) || equals <= 0)
            continue;
        QString value = line.mid(equals + 1).trimmed();
        if (value.size() >= 2 && (value.startsWith(QLatin1Char('"')) || value.startsWith(QLatin1Char('\'')))
            && value.endsWith(value.at(0)))
            value = value.mid(1, value.size() - 2);
        values.insert(line.left(equals).trimmed(), value);
    }
    return values;
}

double SysInfoPrivate::versionNumber(const QMap<QString, QVariant>& values)
{
    if (values.contains(QStringLiteral("CurrentMajorVersionNumber"))) {
        const QString text = QString::number(values.value(QStringLiteral("CurrentMajorVersionNumber")).toUInt())
            + QLatin1Char('.') + QString::number(values.value(QStringLiteral("CurrentMinorVersionNumber")).toUInt());
        return text.toDouble();
    }
    if (values.contains(QStringLiteral("CurrentVersion")))
        return values.value(QStringLiteral("CurrentVersion")).toString().toDouble();
    // "3.18.4" is no number: its major.minor is.
    static const QRegularExpression leading(QStringLiteral("^\\d+(\\.\\d+)?"));
    const QRegularExpressionMatch match = leading.match(values.value(QStringLiteral("VERSION_ID")).toString());
    return match.hasMatch() ? match.captured(0).toDouble() : 0.0;
}

QString SysInfoPrivate::processorName(const QString& cpuinfoPath)
{
    QFile file(cpuinfoPath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return QString();
    QTextStream in(&file);
    QString line;
    while (in.readLineInto(&line)) {
        const int colon = line.indexOf(QLatin1Char(':'));
        if (colon > 0 && line.leftRef(colon).trimmed() == QLatin1String("model name"))
            return line.mid(colon + 1).trimmed();
    }
    return QString();
}

bool SysInfoPrivate::readSystemTimes(const QString& statPath, SystemTimes& times)
{
    QFile file(statPath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return false;
    QTextStream in(&file);
    QString line;
    while (in.readLineInto(&line)) {
        if (!line.startsWith(QLatin1String("cpu ")))
            continue;
        const QVector<QStringRef> fields = line.splitRef(QLatin1Char(' '), Qt::SkipEmptyParts);
        // cpu user nice system idle iowait irq softirq steal ...: older kernels stop after idle.
        if (fields.size() < 5)
            return false;
        quint64 value[8] = {};
        for (int i = 1; i < fields.size() && i <= 8; ++i) {
            bool ok = false;
            value[i - 1] = fields.at(i).toULongLong(&ok);
            if (!ok)
                return false;
        }
        times.idle = value[3] + value[4];
        times.user = value[0] + value[1];
        times.kernel = value[2] + value[5] + value[6] + value[7] + times.idle;
        return true;
    }
    return false;
}

int SysInfoPrivate::systemLoad(const SystemTimes& previous, const SystemTimes& current)
{
    const quint64 total = (current.kernel + current.user) - (previous.kernel + previous.user);
    if (total == 0)
        return 0; // no time passed: nothing to divide by
    const quint64 busy = total - (current.idle - previous.idle);
    return int(busy * 100 / total);
}

int SysInfoPrivate::processLoad(quint64 busy, quint64 span)
{
    if (span == 0)
        return 0;
    return int(std::round(double(busy) / double(span) * 100.0));
}

quint32 SysInfoPrivate::workingSetKB(const QString& statmPath)
{
#ifdef Q_OS_WIN
    Q_UNUSED(statmPath)
    return 0;
#else
    QFile file(statmPath);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return 0;
    const QList<QByteArray> fields = file.readLine().simplified().split(' ');
    if (fields.size() < 2)
        return 0;
    bool ok = false;
    const quint64 pages = fields.at(1).toULongLong(&ok);
    if (!ok)
        return 0;
    return quint32((pages * quint64(sysconf(_SC_PAGESIZE))) >> 10);
#endif
}

bool SysInfo::keyIs64Bit()
{
    return SysInfoPrivate::is64Bit(QSysInfo::currentCpuArchitecture());
}

QMap<QString, QVariant> SysInfo::currentVersion()
{
    QMap<QString, QVariant> values;
#ifdef Q_OS_WIN
    QSettings registry(
        QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion"), QSettings::NativeFormat);
    const QStringList names = registry.childKeys();
    for (const QString& name : names)
        values.insert(name, registry.value(name));
#else
    values = SysInfoPrivate::readOsRelease(QStringLiteral("/etc/os-release"));
    if (values.isEmpty())
        values = SysInfoPrivate::readOsRelease(QStringLiteral("/usr/lib/os-release"));
#endif
    qDebug() << "static QMap<QString, QVariant> SysInfo::currentVersion()" << values;
    return values;
}

double SysInfo::keyCurrentVersion()
{
    return SysInfoPrivate::versionNumber(currentVersion());
}

QString SysInfo::keyCentralProcessorVendorIdentifier()
{
#ifdef Q_OS_WIN
    QSettings registry(QStringLiteral("HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0"),
        QSettings::NativeFormat);
    return registry.value(QStringLiteral("ProcessorNameString")).toString();
#else
    return SysInfoPrivate::processorName(QStringLiteral("/proc/cpuinfo"));
#endif
}
