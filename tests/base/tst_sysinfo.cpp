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
Q_DECLARE_METATYPE(SystemTimes)

class TestSysInfo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void is64Bit_data();
    void is64Bit();
    void osRelease();
    void versionNumber_data();
    void versionNumber();
    void processorName_data();
    void processorName();
    void systemTimes_data();
    void systemTimes();
    void systemLoad_data();
    void systemLoad();
    void processLoad_data();
    void processLoad();
    void workingSet_data();
    void workingSet();
    void liveSystem();
    void idleProcessLoadIsZero();

private:
    QString fixture(const QString& name, const QByteArray& content);
    QTemporaryDir m_dir;
};

QString TestSysInfo::fixture(const QString& name, const QByteArray& content)
{
    const QString path = m_dir.path() + QLatin1Char('/') + name;
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
    return path;
}

void TestSysInfo::initTestCase()
{
    QVERIFY(m_dir.isValid());
}

void TestSysInfo::is64Bit_data()
{
    QTest::addColumn<QString>("architecture");
    QTest::addColumn<bool>("result");
    QTest::newRow("x86_64") << "x86_64" << true;
    QTest::newRow("arm64") << "arm64" << true;
    QTest::newRow("i386") << "i386" << false;
    QTest::newRow("empty") << "" << false;
}

void TestSysInfo::is64Bit()
{
    QFETCH(QString, architecture);
    QFETCH(bool, result);
    QCOMPARE(SysInfoPrivate::is64Bit(architecture), result);
}

void TestSysInfo::osRelease()
{
    const QString path = fixture(QStringLiteral("os-release"),
        "# comment line\n"
        "NAME=\"Debian GNU/Linux\"\n"
        "\n"
        "VERSION_ID=\"12\"\n"
        "ID=debian\n"
        "PRETTY_NAME='Debian 12 (bookworm)'\n"
        "broken line without equals\n"
        "=no key\n"
        "EMPTY=\n");
    const QMap<QString, QVariant> expected {{QStringLiteral("NAME"), QStringLiteral("Debian GNU/Linux")},
        {QStringLiteral("VERSION_ID"), QStringLiteral("12")}, {QStringLiteral("ID"), QStringLiteral("debian")},
        {QStringLiteral("PRETTY_NAME"), QStringLiteral("Debian 12 (bookworm)")}, {QStringLiteral("EMPTY"), QString()}};
    QCOMPARE(SysInfoPrivate::readOsRelease(path), expected);
    QVERIFY(SysInfoPrivate::readOsRelease(m_dir.path() + QLatin1String("/missing")).isEmpty());
}

void TestSysInfo::versionNumber_data()
{
    using Map = QMap<QString, QVariant>;
    QTest::addColumn<Map>("values");
    QTest::addColumn<double>("version");
    QTest::newRow("Windows 10") << Map {{"CurrentMajorVersionNumber", 10u}, {"CurrentMinorVersionNumber", 0u},
        {"CurrentVersion", "6.3"}}
                                << 10.0;
    QTest::newRow("Windows 7") << Map {{"CurrentVersion", "6.1"}} << 6.1;
    QTest::newRow("major.minor") << Map {{"VERSION_ID", "22.04"}} << 22.04;
    QTest::newRow("major") << Map {{"VERSION_ID", "12"}} << 12.0;
    QTest::newRow("three parts") << Map {{"VERSION_ID", "3.18.4"}} << 3.18;
    QTest::newRow("rolling") << Map {{"VERSION_ID", "rolling"}} << 0.0;
    QTest::newRow("nothing") << Map() << 0.0;
}

void TestSysInfo::versionNumber()
{
    using Map = QMap<QString, QVariant>;
    QFETCH(Map, values);
    QFETCH(double, version);
    QCOMPARE(SysInfoPrivate::versionNumber(values), version);
}

void TestSysInfo::processorName_data()
{
    QTest::addColumn<QByteArray>("cpuinfo");
    QTest::addColumn<QString>("name");
    QTest::newRow("first model name") << QByteArray("processor\t: 0\nvendor_id\t: GenuineTest\n"
                                                    "model name\t: Test(R) CPU 9000 @ 2.00GHz\n\n"
                                                    "processor\t: 1\nmodel name\t: Other CPU\n")
                                      << "Test(R) CPU 9000 @ 2.00GHz";
    QTest::newRow("no model name") << QByteArray("processor\t: 0\nHardware\t: Board\n") << "";
    QTest::newRow("empty") << QByteArray() << "";
}

void TestSysInfo::processorName()
{
    QFETCH(QByteArray, cpuinfo);
    QFETCH(QString, name);
    QCOMPARE(SysInfoPrivate::processorName(fixture(QStringLiteral("cpuinfo"), cpuinfo)), name);
    QCOMPARE(SysInfoPrivate::processorName(m_dir.path() + QLatin1String("/missing")), QString());
}

void TestSysInfo::systemTimes_data()
{
    QTest::addColumn<QByteArray>("stat");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<SystemTimes>("times");
    QTest::newRow("current kernel") << QByteArray("cpu  100 20 30 400 50 6 7 8 0 0\ncpu0 1 1 1 1 1 1 1 1 0 0\n") << true
                                    << SystemTimes {450, 501, 120};
    QTest::newRow("old kernel") << QByteArray("cpu 1 2 3 4\n") << true << SystemTimes {4, 7, 3};
    QTest::newRow("not a number") << QByteArray("cpu 1 x 3 4\n") << false << SystemTimes();
    QTest::newRow("too short") << QByteArray("cpu 1 2 3\n") << false << SystemTimes();
    QTest::newRow("no cpu line") << QByteArray("intr 5\n") << false << SystemTimes();
}

void TestSysInfo::systemTimes()
{
    QFETCH(QByteArray, stat);
    QFETCH(bool, ok);
    QFETCH(SystemTimes, times);
    SystemTimes read;
    QCOMPARE(SysInfoPrivate::readSystemTimes(fixture(QStringLiteral("stat"), stat), read), ok);
    QCOMPARE(read.idle, times.idle);
    QCOMPARE(read.kernel, times.kernel);
    QCOMPARE(read.user, times.user);
    QVERIFY(!SysInfoPrivate::readSystemTimes(m_dir.path() + QLatin1String("/missing"), read));
}

void TestSysInfo::systemLoad_data()
{
    QTest::addColumn<SystemTimes>("previous");
    QTest::addColumn<SystemTimes>("current");
    QTest::addColumn<int>("load");
    QTest::newRow("three quarters") << SystemTimes {100, 200, 100} << SystemTimes {150, 300, 200} << 75;
    QTest::newRow("truncated") << SystemTimes {0, 0, 0} << SystemTimes {1, 3, 0} << 66;
    QTest::newRow("idle") << SystemTimes {10, 20, 5} << SystemTimes {60, 70, 5} << 0;
    QTest::newRow("busy") << SystemTimes {10, 20, 5} << SystemTimes {10, 40, 25} << 100;
    QTest::newRow("no time passed") << SystemTimes {10, 20, 5} << SystemTimes {10, 20, 5} << 0;
}

void TestSysInfo::systemLoad()
{
    QFETCH(SystemTimes, previous);
    QFETCH(SystemTimes, current);
    QFETCH(int, load);
    QCOMPARE(SysInfoPrivate::systemLoad(previous, current), load);
}

void TestSysInfo::processLoad_data()
{
    QTest::addColumn<quint64>("busy");
    QTest::addColumn<quint64>("span");
    QTest::addColumn<int>("load");
    QTest::newRow("idle") << quint64(0) << quint64(1000) << 0;
    QTest::newRow("below half") << quint64(4) << quint64(1000) << 0;
    QTest::newRow("half rounds up") << quint64(5) << quint64(1000) << 1;
    QTest::newRow("two processors") << quint64(2000) << quint64(1000) << 200;
    QTest::newRow("one and a half") << quint64(1500) << quint64(1000) << 150;
    QTest::newRow("empty span") << quint64(10) << quint64(0) << 0;
}

void TestSysInfo::processLoad()
{
    QFETCH(quint64, busy);
    QFETCH(quint64, span);
    QFETCH(int, load);
    QCOMPARE(SysInfoPrivate::processLoad(busy, span), load);
}

void TestSysInfo::workingSet_data()
{
    QTest::addColumn<QByteArray>("statm");
    QTest::addColumn<quint32>("kb");
    const quint64 page = quint64(sysconf(_SC_PAGESIZE));
    QTest::newRow("resident pages") << QByteArray("12345 678 90 1 0 2 0\n") << quint32((678 * page) >> 10);
    QTest::newRow("garbage") << QByteArray("12345 many 90\n") << quint32(0);
    QTest::newRow("two fields are enough") << QByteArray("12345 678\n") << quint32((678 * page) >> 10);
    QTest::newRow("one field") << QByteArray("12345\n") << quint32(0);
    QTest::newRow("empty") << QByteArray() << quint32(0);
}

void TestSysInfo::workingSet()
{
    QFETCH(QByteArray, statm);
    QFETCH(quint32, kb);
    QCOMPARE(SysInfoPrivate::workingSetKB(fixture(QStringLiteral("statm"), statm)), kb);
    QCOMPARE(SysInfoPrivate::workingSetKB(m_dir.path() + QLatin1String("/missing")), quint32(0));
}

void TestSysInfo::liveSystem()
{
    QVERIFY(SysInfoObject::getActualWorkingSetSizeKB() > 0);
    int available = -1;
    int total = -1;
    const int result = SysInfoObject::getPhysicalMemMB(available, total);
    QVERIFY(total > 0);
    QVERIFY(available > 0 && available <= total);
    QCOMPARE(result, available);
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
