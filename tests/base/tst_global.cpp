#include "LogCapture.h"

#include "base/CommandLine.h"
#include "base/Global.h"
#include "base/Global_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestGlobal : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void nameForCount_data();
    void nameForCount();
    void countInProcRoot_data();
    void countInProcRoot();
    void countInCaptionListing_data();
    void countInCaptionListing();
    void isSanta_data();
    void isSanta();
    void threadNameWidensOnly();
    void registerThreadOverwrites();
    void unregisterUnknownThreadWarns();
    void addSelfKeepsFirst();
    void mainWindowIsRegistryParent();
    void commandLineTexts_data();
    void commandLineTexts();
    void deletedInstanceIsReplaced();

private:
    QTemporaryDir m_proc;
};

void TestGlobal::initTestCase()
{
    QVERIFY(Global::instance(true));
    QVERIFY(m_proc.isValid());
    // A proc fixture: numeric directories are processes; "exe" wins over "comm", which is cut to 15 characters.
    const auto process = [this](const QString& pid, const QByteArray& comm, const QString& exe = QString()) {
        QDir(m_proc.path()).mkpath(pid);
        const QString dir = m_proc.path() + QLatin1Char('/') + pid;
        if (!comm.isNull()) {
            QFile file(dir + QLatin1String("/comm"));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(comm);
        }
        if (!exe.isEmpty())
            QVERIFY(QFile::link(exe, dir + QLatin1String("/exe")));
    };
    process(QStringLiteral("1"), "App\n");
    process(QStringLiteral("2"), "App\n");
    process(QStringLiteral("3"), "other\n", QStringLiteral("/usr/bin/App"));
    process(QStringLiteral("4"), "app\n");
    process(QStringLiteral("5"), "App2\n");
    process(QStringLiteral("6"), "averyveryverylo\n", QStringLiteral("/opt/x/averyveryverylongname"));
    process(QStringLiteral("7"), QByteArray()); // vanished process: nothing readable
    process(QStringLiteral("self"), "App\n"); // not a process directory
}

void TestGlobal::nameForCount_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QString>("name");
    QTest::newRow("no listing") << 0 << "App";
    QTest::newRow("alone") << 1 << "App";
    QTest::newRow("second copy") << 2 << "App_2nd";
    QTest::newRow("third copy") << 3 << "App_3rd";
    QTest::newRow("fourth copy") << 4 << "App_4th";
}

void TestGlobal::nameForCount()
{
    QFETCH(int, count);
    QFETCH(QString, name);
    QCOMPARE(GlobalPrivate::nameForCount(QStringLiteral("App"), count), name);
}

void TestGlobal::countInProcRoot_data()
{
    QTest::addColumn<QString>("image");
    QTest::addColumn<int>("count");
    QTest::newRow("comm and exe") << "App" << 3;
    QTest::newRow("case-sensitive") << "app" << 1;
    QTest::newRow("whole name") << "App2" << 1;
    QTest::newRow("exe wins over comm") << "other" << 0;
    QTest::newRow("name longer than comm") << "averyveryverylongname" << 1;
    QTest::newRow("none") << "Nothing" << 0;
}

void TestGlobal::countInProcRoot()
{
    QFETCH(QString, image);
    QFETCH(int, count);
    QCOMPARE(GlobalPrivate::countInProcRoot(m_proc.path(), image), count);
}

void TestGlobal::countInCaptionListing_data()
{
    QTest::addColumn<QByteArray>("listing");
    QTest::addColumn<int>("count");
    QTest::newRow("padded lines") << QByteArray("Caption      \r\r\nSystem Idle Process  \r\r\nApp.exe      \r\r\n"
                                                "App.exe      \r\r\nApp.exe.bak  \r\r\n\r\r\n")
                                  << 2;
    QTest::newRow("up to the first NUL") << QByteArray("App.exe  \r\n\0App.exe  \r\n", 22) << 1;
    QTest::newRow("case-sensitive") << QByteArray("app.exe  \r\nAPP.EXE  \r\n") << 0;
    // Line breaks go without a separator: unpadded lines run together (the tool always pads them).
    QTest::newRow("unpadded lines join") << QByteArray("App.exe\r\nApp.exe\r\n") << 0;
    QTest::newRow("empty") << QByteArray() << 0;
}

void TestGlobal::countInCaptionListing()
{
    QFETCH(QByteArray, listing);
    QFETCH(int, count);
    QCOMPARE(GlobalPrivate::countInCaptionListing(listing, QStringLiteral("App.exe")), count);
}

void TestGlobal::isSanta_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<bool>("santa");
    QTest::newRow("30 November") << QDate(2023, 11, 30) << false;
    QTest::newRow("1 December") << QDate(2023, 12, 1) << true;
    QTest::newRow("31 December") << QDate(2023, 12, 31) << true;
    QTest::newRow("6 January") << QDate(2024, 1, 6) << true;
    QTest::newRow("7 January") << QDate(2024, 1, 7) << false;
    QTest::newRow("1 July") << QDate(2024, 7, 1) << false;
}

void TestGlobal::isSanta()
{
    QFETCH(QDate, date);
    QFETCH(bool, santa);
    QCOMPARE(GlobalPrivate::isSantaDate(date), santa);
}

void TestGlobal::threadNameWidensOnly()
{
    Global* global = Global::instance();
    void* worker = reinterpret_cast<void*>(quintptr(0x1F3C));
    void* shortOne = reinterpret_cast<void*>(quintptr(0x2));
    void* longOne = reinterpret_cast<void*>(quintptr(0x3));
    global->registerThread(worker, QStringLiteral("worker"));
    global->registerThread(shortOne, QStringLiteral("a"));
    global->registerThread(longOne, QStringLiteral("long-name"));

    QCOMPARE(global->threadName(worker), QStringLiteral(" #01F3C(worker)"));
    QCOMPARE(global->threadName(shortOne), QStringLiteral(" #00002(a)     "));
    QCOMPARE(global->threadName(longOne), QStringLiteral(" #00003(long-name)"));
    QCOMPARE(global->threadName(shortOne), QStringLiteral(" #00002(a)        "));
    QCOMPARE(global->threadName(reinterpret_cast<void*>(quintptr(0x4))), QStringLiteral(" #00004()         "));
    QCOMPARE(global->threadName(reinterpret_cast<void*>(quintptr(0xABCDEF))), QStringLiteral(" #ABCDEF()        "));
}

void TestGlobal::registerThreadOverwrites()
{
    Global* global = Global::instance();
    void* id = reinterpret_cast<void*>(quintptr(0x77));
    global->registerThread(id, QStringLiteral("first"));
    global->registerThread(id, QStringLiteral("second"));
    QVERIFY(global->threadName(id).startsWith(QLatin1String(" #00077(second)")));
    LogCapture log;
    global->unregisterThread(id);
    QVERIFY(log.texts().isEmpty());
    QVERIFY(global->threadName(id).startsWith(QLatin1String(" #00077()")));
}

void TestGlobal::unregisterUnknownThreadWarns()
{
    LogCapture log;
    Global::instance()->unregisterThread(reinterpret_cast<void*>(quintptr(0x99)));
    QCOMPARE(log.texts(), QStringList(QStringLiteral("void Global::unregisterThread(Qt::HANDLE) id not found")));
    QCOMPARE(log.messages().first().type, QtWarningMsg);
}

void TestGlobal::addSelfKeepsFirst()
{
    Global* global = Global::instance();
    QObject first;
    QObject second;
    first.setObjectName(QStringLiteral("dup"));
    second.setObjectName(QStringLiteral("dup"));
    global->addSelf(&first);
    LogCapture log;
    global->addSelf(&second);
    QCOMPARE(global->getSelf(QStringLiteral("dup")), &first);
    QCOMPARE(global->getSelf(QStringLiteral("Dup")), nullptr);
    QCOMPARE(global->getSelf(QStringLiteral("missing")), nullptr);

    QString expected;
    QDebug(&expected) << "void Global::addSelf(QObject*)" << &second << &first;
    QCOMPARE(log.texts(), QStringList(expected.trimmed()));
    QCOMPARE(log.messages().first().type, QtCriticalMsg);
    QCOMPARE(log.messages().first().category, QStringLiteral("default"));
    first.setObjectName(QStringLiteral("dup-gone")); // the directory keeps the pointer; nothing reads it again
}

void TestGlobal::mainWindowIsRegistryParent()
{
    QCOMPARE(Global::mainWindow(nullptr, QString()), nullptr);
    QObject window;
    QObject child(&window);
    child.setObjectName(QStringLiteral("panel"));
    Global::instance()->setParent(&window);
    QCOMPARE(Global::mainWindow(nullptr, QString()), &window);
    QCOMPARE(Global::mainWindow(&child, QStringLiteral("panel")), &window);
    QCOMPARE(Global::mainWindow(nullptr, QStringLiteral("no such child")), &window);
    Global::instance()->setParent(nullptr);
}

void TestGlobal::commandLineTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("showDebManager") << CommandLine::showDebManager() << "-debug";
    QTest::newRow("modeInternalUse") << CommandLine::modeInternalUse() << "-internalUse";
    QTest::newRow("extendedAppeal") << CommandLine::extendedAppeal() << "-sexy";
    QTest::newRow("simulateUSB_device") << CommandLine::simulateUSB_device() << "-usbDevice";
    QTest::newRow("setStyle") << CommandLine::setStyle() << "-style";
    QTest::newRow("runOnce") << CommandLine::runOnce() << "-runOnce";
    QTest::newRow("notificateWarnings") << CommandLine::notificateWarnings() << "-notificateWarnings";
    QTest::newRow("notificateWarningsAsCritical")
        << CommandLine::notificateWarningsAsCritical() << "-WarningsAsCritical";
    QTest::newRow("touchMode") << CommandLine::touchMode() << "-touchMode";
}

void TestGlobal::commandLineTexts()
{
    QFETCH(QString, text);
    QFETCH(QString, expected);
    QCOMPARE(text, expected);
}

void TestGlobal::deletedInstanceIsReplaced()
{
    // Runs last: the instance goes with its parent, and the next call makes a new one instead of returning
    // the freed one (the sanitizer run reports a use after free otherwise).
    {
        QObject owner;
        Global::instance()->setParent(&owner);
    }
    QCOMPARE(Global::instance()->objectName(), QStringLiteral("___GlobalInstance___"));
}

QTEST_GUILESS_MAIN(TestGlobal)
#include "tst_global.moc"
