#include "LogCapture.h"

#include "base/AppSettings.h"
#include "base/FileRotationLogSink.h"
#include "base/FileRotationLogSink_p.h"
#include "base/Global.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestLogSink : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void startHeader_data();
    void startHeader();
    void appendsToExistingFile();
    void rotatesOnlyAboveLimit();
    void copyToTempWithBackup();
    void uncreatableDirectory();
    void directoryListing();

private:
    /// Whether `text` is the current time in the log's format at some second between the two times.
    static bool isDateBetween(const QString& text, const QDateTime& before, const QDateTime& after);
    QString separatorLine() const;

    QTemporaryDir m_root;
    QString m_home;
    QString m_cwd;
};

bool TestLogSink::isDateBetween(const QString& text, const QDateTime& before, const QDateTime& after)
{
    for (QDateTime t = before.addSecs(-1); t <= after.addSecs(1); t = t.addSecs(1)) {
        if (t.toString(FileRotationLogSinkPrivate::dateFormat()) == text)
            return true;
    }
    return false;
}

QString TestLogSink::separatorLine() const
{
    return QLatin1String("\n_________________ ") + QCoreApplication::applicationFilePath()
        + QLatin1String(" _________________\n");
}

void TestLogSink::initTestCase()
{
    QVERIFY(m_root.isValid());
    qputenv("HOME", m_root.path().toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_root.path() + QLatin1String("/config"));
    Global::instance();
    m_home = m_root.path() + QLatin1String("/logs");
    m_cwd = m_root.path() + QLatin1String("/cwd");
    QCOMPARE(FileRotationLogSinkPrivate::dateFormat(), QStringLiteral("ddd MMM dd yyyy  hh:mm:ss"));
}

void TestLogSink::init()
{
    AppSettings settings;
    settings.clear();
    settings.setValue(QStringLiteral("HomePath"), m_home);
    QDir(m_home).removeRecursively();
    QDir(m_cwd).removeRecursively();
    QVERIFY(QDir().mkpath(m_cwd));
    QVERIFY(QDir::setCurrent(m_cwd));
}

void TestLogSink::startHeader_data()
{
    QTest::addColumn<QVariant>("counter");
    QTest::addColumn<QString>("brackets");
    QTest::newRow("no counter") << QVariant() << "[]";
    QTest::newRow("counter 7") << QVariant(7) << "[7]";
}

void TestLogSink::startHeader()
{
    QFETCH(QVariant, counter);
    QFETCH(QString, brackets);
    if (counter.isValid())
        AppSettings().setValue(QStringLiteral("StartCounter"), counter);
    const QDateTime before = QDateTime::currentDateTime();
    {
        FileRotationLogSink sink(QStringLiteral("app.log"), 100000);
    }
    const QDateTime after = QDateTime::currentDateTime();
    const QString text = QString::fromUtf8(readAll(m_home + QLatin1String("/app.log")));
    const QString expectedStart = QStringLiteral("\n\nStart ");
    const QString expectedEnd
        = QLatin1Char(' ') + brackets + QLatin1Char('\n') + QString(79, QLatin1Char('_')) + QLatin1String("\n\n");
    QVERIFY2(text.startsWith(expectedStart) && text.endsWith(expectedEnd), qPrintable(text));
    const QString date = text.mid(expectedStart.size(), text.size() - expectedStart.size() - expectedEnd.size());
    QVERIFY2(isDateBetween(date, before, after), qPrintable(date));
    QVERIFY(date.contains(QRegularExpression(QStringLiteral("^\\S{3} \\S{3} \\d\\d \\d{4}  \\d\\d:\\d\\d:\\d\\d$"))));
}

void TestLogSink::appendsToExistingFile()
{
    QVERIFY(QDir().mkpath(m_home));
    QFile old(m_home + QLatin1String("/app.log"));
    QVERIFY(old.open(QIODevice::WriteOnly));
    old.write("old content\n");
    old.close();
    {
        FileRotationLogSink sink(QStringLiteral("app.log"), 100000);
        *sink.getCurrentStream() << "new line\n";
    }
    const QByteArray text = readAll(m_home + QLatin1String("/app.log"));
    QVERIFY(text.startsWith("old content\n\n\nStart "));
    QVERIFY(text.endsWith(QByteArray(79, '_') + "\n\nnew line\n")); // the destructor flushes
}

void TestLogSink::rotatesOnlyAboveLimit()
{
    const QString live = m_home + QLatin1String("/app.log");
    const QString backup = live + QLatin1String(".bak");
    FileRotationLogSink sink(QStringLiteral("app.log"), 1000);
    QTextStream* stream = sink.getCurrentStream();
    sink.flush();
    const qint64 header = QFileInfo(live).size();
    *stream << QString(int(1000 - header), QLatin1Char('x'));
    sink.flush();
    QCOMPARE(QFileInfo(live).size(), qint64(1000));
    QVERIFY(!QFile::exists(backup));

    *stream << "y";
    const QDateTime before = QDateTime::currentDateTime();
    sink.flush();
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(QFileInfo(backup).size(), qint64(1001));
    QVERIFY(readAll(backup).endsWith("xy"));
    const QString fresh = QString::fromUtf8(readAll(live));
    QVERIFY2(fresh.endsWith(QLatin1Char('\n')) && isDateBetween(fresh.chopped(1), before, after), qPrintable(fresh));

    *stream << "after rotation\n"; // the stream survives the rotation
    sink.flush();
    QCOMPARE(QString::fromUtf8(readAll(live)), QString(fresh + QLatin1String("after rotation\n")));
}

void TestLogSink::copyToTempWithBackup()
{
    const QString live = m_home + QLatin1String("/app.log");
    FileRotationLogSink sink(QStringLiteral("app.log"), 100);
    *sink.getCurrentStream() << QString(150, QLatin1Char('a'));
    sink.flush();
    *sink.getCurrentStream() << "current line\n";
    sink.flush();
    const QByteArray backupText = readAll(live + QLatin1String(".bak"));
    const QByteArray liveText = readAll(live);

    QFile stale(QDir::currentPath() + QLatin1String("/app.log"));
    QVERIFY(stale.open(QIODevice::WriteOnly));
    stale.write("stale report");
    stale.close();

    const QString target = sink.copyToTemp(false);
    QCOMPARE(target, QString(m_cwd + QLatin1String("/app.log")));
    const QString report = QString::fromUtf8(readAll(target));
    const QString head = QString::fromUtf8(backupText + liveText) + separatorLine();
    QVERIFY2(report.startsWith(head), qPrintable(report.left(400)));
    const QString listing = report.mid(head.size());
    QVERIFY(listing.startsWith(
        QLatin1String(" Directory of ") + QCoreApplication::applicationDirPath() + QLatin1String("\n\n")));
    QVERIFY(listing.contains(
        QLatin1Char(' ') + QFileInfo(QCoreApplication::applicationFilePath()).fileName() + QLatin1Char('\n')));
}

void TestLogSink::uncreatableDirectory()
{
    AppSettings().setValue(QStringLiteral("HomePath"), QStringLiteral("/proc/kivcore-no-such/logs"));
    LogCapture log; // Qt's own "device not open" notes are not ours to assert
    FileRotationLogSink sink(QStringLiteral("lost.log"), 10);
    *sink.getCurrentStream() << QString(50, QLatin1Char('z'));
    sink.flush();
    QCOMPARE(sink.filePath(), QStringLiteral("/proc/kivcore-no-such/logs/lost.log"));
    QVERIFY(!QFile::exists(sink.filePath()));
    const QString report = QString::fromUtf8(readAll(sink.copyToTemp(false)));
    QVERIFY(report.startsWith(separatorLine()));
}

void TestLogSink::directoryListing()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("sub/empty")));
    QFile a(dir.path() + QLatin1String("/a.txt"));
    QVERIFY(a.open(QIODevice::WriteOnly));
    a.write("abc");
    a.close();
    QFile b(dir.path() + QLatin1String("/sub/b.bin"));
    QVERIFY(b.open(QIODevice::WriteOnly));
    b.write(QByteArray(1234, 'b'));
    b.close();

    const auto line = [](const QString& path, const QString& sizeColumn) {
        const QFileInfo info(path);
        return QString(info.lastModified().toString(QStringLiteral("yyyy-MM-dd  hh:mm")) + QLatin1String("    ")
            + sizeColumn + QLatin1Char(' ') + info.fileName() + QLatin1Char('\n'));
    };
    const QString root = dir.path();
    const QString expected = QLatin1String(" Directory of ") + root + QLatin1String("\n\n")
        + line(root + QLatin1String("/a.txt"), QStringLiteral("             3"))
        + line(root + QLatin1String("/sub"), QStringLiteral("<DIR>         ")) + QLatin1Char('\n')
        + QLatin1String(" Directory of ") + root + QLatin1String("/sub\n\n")
        + line(root + QLatin1String("/sub/b.bin"), QStringLiteral("          1234"))
        + line(root + QLatin1String("/sub/empty"), QStringLiteral("<DIR>         ")) + QLatin1Char('\n')
        + QLatin1String(" Directory of ") + root + QLatin1String("/sub/empty\n\n\n");
    QCOMPARE(FileRotationLogSinkPrivate::directoryListing(root), expected);
    QCOMPARE(FileRotationLogSinkPrivate::directoryListing(root + QLatin1String("/missing")),
        QString(QLatin1String(" Directory of ") + root + QLatin1String("/missing\n\n\n")));
}

QTEST_MAIN(TestLogSink)

#include "tst_logsink.moc"
