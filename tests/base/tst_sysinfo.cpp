#include "LogCapture.h"

#include "base/Global.h"
#include "base/SysInfo.h"
#include "base/SysInfoObject.h"
#include "base/SysInfo_p.h"

#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <unistd.h>

using SysInfoPrivate::SystemTimes;

class TestSysInfo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_dir.isValid()); }
    void readers_data();
    void readers();
    void osRelease();
    void liveSystem();
    void idleProcessLoadIsZero();

private:
    /// The path of a file holding `content`; a null array gives a missing file.
    QString fixture(const QByteArray& content);
    QString times(const QByteArray& stat);
    QTemporaryDir m_dir;
};

QString TestSysInfo::fixture(const QByteArray& content)
{
    QFile file(m_dir.filePath(QStringLiteral("fixture")));
    file.remove();
    if (!content.isNull() && file.open(QIODevice::WriteOnly))
        file.write(content);
    return file.fileName();
}

QString TestSysInfo::times(const QByteArray& stat)
{
    SystemTimes t;
    if (!SysInfoPrivate::readSystemTimes(fixture(stat), t))
        return QStringLiteral("failed");
    return QStringList({QString::number(t.idle), QString::number(t.kernel), QString::number(t.user)}).join(' ');
}

void TestSysInfo::readers_data()
{
    using Map = QMap<QString, QVariant>;
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QVariant& actual, const QVariant& expected) {
        QTest::newRow(name) << actual.toString() << expected.toString();
    };
    row("64 bit", SysInfoPrivate::is64Bit("x86_64"), true);
    row("32 bit", SysInfoPrivate::is64Bit("i386"), false);
    row("Windows 10",
        SysInfoPrivate::versionNumber(
            {{"CurrentMajorVersionNumber", 10u}, {"CurrentMinorVersionNumber", 0u}, {"CurrentVersion", "6.3"}}),
        10.0);
    row("Windows 7", SysInfoPrivate::versionNumber({{"CurrentVersion", "6.1"}}), 6.1);
    row("major.minor", SysInfoPrivate::versionNumber({{"VERSION_ID", "22.04"}}), 22.04);
    row("major", SysInfoPrivate::versionNumber({{"VERSION_ID", "12"}}), 12.0);
    row("three parts", SysInfoPrivate::versionNumber({{"VERSION_ID", "3.18.4"}}), 3.18);
    row("rolling", SysInfoPrivate::versionNumber({{"VERSION_ID", "rolling"}}), 0.0);
    row("no version", SysInfoPrivate::versionNumber(Map()), 0.0);
    row("first model name",
        SysInfoPrivate::processorName(fixture("processor\t: 0\nvendor_id\t: GenuineTest\n"
                                              "model name\t: Test(R) CPU 9000 @ 2.00GHz\n\n"
                                              "processor\t: 1\nmodel name\t: Other CPU\n")),
        "Test(R) CPU 9000 @ 2.00GHz");
    row("no model name", SysInfoPrivate::processorName(fixture("processor\t: 0\nHardware\t: Board\n")), "");
    row("no cpuinfo", SysInfoPrivate::processorName(fixture(QByteArray())), "");
    row("times", times("cpu  100 20 30 400 50 6 7 8 0 0\ncpu0 1 1 1 1 1 1 1 1 0 0\n"), "450 501 120");
    row("times of an old kernel", times("cpu 1 2 3 4\n"), "4 7 3");
    row("times not a number", times("cpu 1 x 3 4\n"), "failed");
    row("times too short", times("cpu 1 2 3\n"), "failed");
    row("times without cpu line", times("intr 5\n"), "failed");
    row("times unreadable", times(QByteArray()), "failed");
    row("load three quarters", SysInfoPrivate::systemLoad({100, 200, 100}, {150, 300, 200}), 75);
    row("load truncated", SysInfoPrivate::systemLoad({0, 0, 0}, {1, 3, 0}), 66);
    row("load idle", SysInfoPrivate::systemLoad({10, 20, 5}, {60, 70, 5}), 0);
    row("load busy", SysInfoPrivate::systemLoad({10, 20, 5}, {10, 40, 25}), 100);
    row("load, no time passed", SysInfoPrivate::systemLoad({10, 20, 5}, {10, 20, 5}), 0);
    row("process idle", SysInfoPrivate::processLoad(0, 1000), 0);
    row("process below half", SysInfoPrivate::processLoad(4, 1000), 0);
    row("process half rounds up", SysInfoPrivate::processLoad(5, 1000), 1);
    row("process on two processors", SysInfoPrivate::processLoad(2000, 1000), 200);
    row("process one and a half", SysInfoPrivate::processLoad(1500, 1000), 150);
    row("process empty span", SysInfoPrivate::processLoad(10, 0), 0);
    const quint64 page = quint64(sysconf(_SC_PAGESIZE));
    row("resident pages", SysInfoPrivate::workingSetKB(fixture("12345 678 90 1 0 2 0\n")), (678 * page) >> 10);
    row("resident, two fields", SysInfoPrivate::workingSetKB(fixture("12345 678\n")), (678 * page) >> 10);
    row("resident garbage", SysInfoPrivate::workingSetKB(fixture("12345 many 90\n")), 0);
    row("resident, one field", SysInfoPrivate::workingSetKB(fixture("12345\n")), 0);
    row("resident, empty", SysInfoPrivate::workingSetKB(fixture("")), 0);
    row("resident unreadable", SysInfoPrivate::workingSetKB(fixture(QByteArray())), 0);
}

void TestSysInfo::readers()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void TestSysInfo::osRelease()
{
    const QString path = fixture("# comment line\nNAME=\"Debian GNU/Linux\"\n\nVERSION_ID=\"12\"\nID=debian\n"
                                 "PRETTY_NAME='Debian 12 (bookworm)'\nbroken line without equals\n=no key\nEMPTY=\n");
    const QMap<QString, QVariant> expected {{"NAME", "Debian GNU/Linux"}, {"VERSION_ID", "12"}, {"ID", "debian"},
        {"PRETTY_NAME", "Debian 12 (bookworm)"}, {"EMPTY", QString()}};
    QCOMPARE(SysInfoPrivate::readOsRelease(path), expected);
    QVERIFY(SysInfoPrivate::readOsRelease(fixture(QByteArray())).isEmpty());
}

void TestSysInfo::liveSystem()
{
    QVERIFY(SysInfoObject::getActualWorkingSetSizeKB() > 0);
    int available = -1;
    int total = -1;
    const int result = SysInfoObject::getPhysicalMemMB(available, total);
    QCOMPARE(result, available);
    QVERIFY(total > 0);
    QVERIFY(available > 0 && available <= total);
    QFile meminfo("/proc/meminfo"); // first line: "MemTotal: <kB> kB"
    QVERIFY(meminfo.open(QIODevice::ReadOnly));
    QCOMPARE(total, int(meminfo.readLine().simplified().split(' ').value(1).toULongLong() >> 10));
    QCOMPARE(
        SysInfo::keyCentralProcessorVendorIdentifier(), SysInfoPrivate::processorName(QStringLiteral("/proc/cpuinfo")));
    QCOMPARE(SysInfo::keyIs64Bit(), SysInfoPrivate::is64Bit(QSysInfo::currentCpuArchitecture()));

    LogCapture log;
    const QMap<QString, QVariant> values = SysInfo::currentVersion();
    QCOMPARE(log.texts().size(), 1);
    QVERIFY(log.texts().first().startsWith(
        QLatin1String("static QMap<QString, QVariant> SysInfo::currentVersion() QMap(")));
    QCOMPARE(SysInfo::keyCurrentVersion(), SysInfoPrivate::versionNumber(values));
}

void TestSysInfo::idleProcessLoadIsZero()
{
    SysInfoObject* info = SysInfoObject::instance();
    info->cpuUsageProcess();
    QThread::msleep(300);
    QCOMPARE(info->cpuUsageProcess(), 0);
    const int load = info->cpuUsage();
    QVERIFY(load >= 0 && load <= 100);
}

QTEST_GUILESS_MAIN(TestSysInfo)

#include "tst_sysinfo.moc"
