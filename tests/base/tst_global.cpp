#include "LogCapture.h"
#include "TestXml.h"

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
    void texts_data();
    void texts();
    void threadNames();
    void addSelfKeepsFirst();
    void mainWindowIsRegistryParent();
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
        if (!comm.isNull())
            QVERIFY(TestXml::writeFile(dir + QLatin1String("/comm"), comm));
        if (!exe.isEmpty())
            QVERIFY(QFile::link(exe, dir + QLatin1String("/exe")));
    };
    process("1", "App\n");
    process("2", "App\n");
    process("3", "other\n", "/usr/bin/App");
    process("4", "app\n");
    process("5", "App2\n");
    process("6", "averyveryverylo\n", "/opt/x/averyveryverylongname");
    process("7", QByteArray()); // vanished process: nothing readable
    process("self", "App\n"); // not a process directory
}

void TestGlobal::texts_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QVariant& actual, const QVariant& expected) {
        QTest::newRow(name) << actual.toString() << expected.toString();
    };
    row("no listing", GlobalPrivate::nameForCount("App", 0), "App");
    row("alone", GlobalPrivate::nameForCount("App", 1), "App");
    row("second copy", GlobalPrivate::nameForCount("App", 2), "App_2nd");
    row("fourth copy", GlobalPrivate::nameForCount("App", 4), "App_4th");
    const QString proc = m_proc.path();
    row("comm and exe", GlobalPrivate::countInProcRoot(proc, "App"), 3);
    row("case-sensitive", GlobalPrivate::countInProcRoot(proc, "app"), 1);
    row("whole name", GlobalPrivate::countInProcRoot(proc, "App2"), 1);
    row("exe wins over comm", GlobalPrivate::countInProcRoot(proc, "other"), 0);
    row("name longer than comm", GlobalPrivate::countInProcRoot(proc, "averyveryverylongname"), 1);
    const QString exe = "App.exe";
    row("padded lines",
        GlobalPrivate::countInCaptionListing("Caption      \r\r\nSystem Idle Process  \r\r\nApp.exe      \r\r\n"
                                             "App.exe      \r\r\nApp.exe.bak  \r\r\n\r\r\n",
            exe),
        2);
    row("up to the first NUL",
        GlobalPrivate::countInCaptionListing(QByteArray("App.exe  \r\n\0App.exe  \r\n", 22), exe), 1);
    row("listing case-sensitive", GlobalPrivate::countInCaptionListing("app.exe  \r\nAPP.EXE  \r\n", exe), 0);
    // Line breaks go without a separator: unpadded lines run together (the tool always pads them).
    row("unpadded lines join", GlobalPrivate::countInCaptionListing("App.exe\r\nApp.exe\r\n", exe), 0);
    row("30 November", GlobalPrivate::isSantaDate(QDate(2023, 11, 30)), false);
    row("1 December", GlobalPrivate::isSantaDate(QDate(2023, 12, 1)), true);
    row("6 January", GlobalPrivate::isSantaDate(QDate(2024, 1, 6)), true);
    row("7 January", GlobalPrivate::isSantaDate(QDate(2024, 1, 7)), false);
    row("1 July", GlobalPrivate::isSantaDate(QDate(2024, 7, 1)), false);
    // The application compares its arguments with these; installed shortcuts use them.
    row("switches",
        QStringList({CommandLine::showDebManager(), CommandLine::modeInternalUse(), CommandLine::extendedAppeal(),
                        CommandLine::simulateUSB_device(), CommandLine::setStyle(), CommandLine::runOnce(),
                        CommandLine::notificateWarnings(), CommandLine::notificateWarningsAsCritical(),
                        CommandLine::touchMode()})
            .join(' '),
        "-debug -internalUse -sexy -usbDevice -style -runOnce -notificateWarnings -WarningsAsCritical -touchMode");
}

void TestGlobal::texts()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void TestGlobal::threadNames()
{
    Global* global = Global::instance();
    const auto id = [](quintptr n) { return reinterpret_cast<void*>(n); };
    global->registerThread(id(0x1F3C), "worker");
    global->registerThread(id(0x2), "a");
    global->registerThread(id(0x3), "replaced");
    global->registerThread(id(0x3), "long-name");
    // Labels widen only.
    QCOMPARE(global->threadName(id(0x1F3C)), " #01F3C(worker)");
    QCOMPARE(global->threadName(id(0x2)), " #00002(a)     ");
    QCOMPARE(global->threadName(id(0x3)), " #00003(long-name)");
    QCOMPARE(global->threadName(id(0x2)), " #00002(a)        ");
    QCOMPARE(global->threadName(id(0xABCDEF)), " #ABCDEF()        ");

    LogCapture log;
    global->unregisterThread(id(0x3));
    QVERIFY(log.texts().isEmpty());
    QCOMPARE(global->threadName(id(0x3)), " #00003()         ");
    global->unregisterThread(id(0x3));
    QCOMPARE(log.texts(), QStringList("void Global::unregisterThread(Qt::HANDLE) id not found"));
    QCOMPARE(log.messages().first().type, QtWarningMsg);
}

void TestGlobal::addSelfKeepsFirst()
{
    Global* global = Global::instance();
    QObject first;
    QObject second;
    first.setObjectName("dup");
    second.setObjectName("dup");
    global->addSelf(&first);
    LogCapture log;
    global->addSelf(&second);
    QCOMPARE(global->getSelf("dup"), &first);
    QCOMPARE(global->getSelf("Dup"), nullptr);

    QString expected;
    QDebug(&expected) << "void Global::addSelf(QObject*)" << &second << &first;
    QCOMPARE(log.texts(), QStringList(expected.trimmed()));
    QCOMPARE(log.messages().first().type, QtCriticalMsg);
    first.setObjectName("dup-gone"); // the directory keeps the pointer; nothing reads it again
}

void TestGlobal::mainWindowIsRegistryParent()
{
    QCOMPARE(Global::mainWindow(nullptr, "panel"), nullptr);
    QObject window;
    QObject child(&window);
    child.setObjectName("panel");
    Global::instance()->setParent(&window);
    QCOMPARE(Global::mainWindow(nullptr, QString()), &window);
    QCOMPARE(Global::mainWindow(&child, "panel"), &window);
    Global::instance()->setParent(nullptr);
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
