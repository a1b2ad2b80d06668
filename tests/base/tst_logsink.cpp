#include "LogCapture.h"
#include "TestXml.h"

#include "base/AppSettings.h"
#include "base/FileRotationLogSink.h"
#include "base/FileRotationLogSink_p.h"
#include "base/Global.h"

#include <QGuiApplication>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Whether `text` is the current time in the log's format at some second between the two times.
bool isDateBetween(const QString& text, const QDateTime& before, const QDateTime& after)
{
    for (QDateTime t = before.addSecs(-1); t <= after.addSecs(1); t = t.addSecs(1)) {
        if (t.toString(FileRotationLogSinkPrivate::dateFormat()) == text)
            return true;
    }
    return false;
}

QString separatorLine()
{
    return "\n_________________ " + QCoreApplication::applicationFilePath() + " _________________\n";
}

} // namespace

class TestLogSink : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void startHeaderAppended();
    void rotatesOnlyAboveLimit();
    void copyToTempWithBackup();
    void uncreatableDirectory();
    void directoryListing();

private:
    QTemporaryDir m_root;
    QString m_home;
    QString m_cwd;
};

void TestLogSink::initTestCase()
{
    QVERIFY(m_root.isValid());
    qputenv("HOME", m_root.path().toLocal8Bit());
    QStandardPaths::setTestModeEnabled(true);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_root.path() + "/config");
    Global::instance();
    m_home = m_root.path() + "/logs";
    m_cwd = m_root.path() + "/cwd";
    QCOMPARE(FileRotationLogSinkPrivate::dateFormat(), "ddd MMM dd yyyy  hh:mm:ss");
}

void TestLogSink::init()
{
    AppSettings settings;
    settings.clear();
    settings.setValue("HomePath", m_home);
    QDir(m_home).removeRecursively();
    QDir(m_cwd).removeRecursively();
    QVERIFY(QDir().mkpath(m_cwd));
    QVERIFY(QDir::setCurrent(m_cwd));
}

void TestLogSink::startHeaderAppended()
{
    AppSettings().setValue("StartCounter", 7);
    QVERIFY(QDir().mkpath(m_home));
    QVERIFY(TestXml::writeFile(m_home + "/app.log", "old content\n"));
    const QDateTime before = QDateTime::currentDateTime();
    {
        FileRotationLogSink sink("app.log", 100000);
        *sink.getCurrentStream() << "new line\n"; // the destructor flushes
    }
    const QDateTime after = QDateTime::currentDateTime();
    const QString text = QString::fromUtf8(TestXml::readFile(m_home + "/app.log"));
    const QString head = "old content\n\n\nStart ";
    const QString tail = " [7]\n" + QString(79, '_') + "\n\nnew line\n";
    QVERIFY2(text.startsWith(head) && text.endsWith(tail), qPrintable(text));
    QVERIFY(isDateBetween(text.mid(head.size(), text.size() - head.size() - tail.size()), before, after));
}

void TestLogSink::rotatesOnlyAboveLimit()
{
    const QString live = m_home + "/app.log";
    const QString backup = live + ".bak";
    FileRotationLogSink sink("app.log", 1000);
    QTextStream* stream = sink.getCurrentStream();
    sink.flush();
    const qint64 header = QFileInfo(live).size();
    *stream << QString(int(1000 - header), 'x');
    sink.flush();
    QCOMPARE(QFileInfo(live).size(), qint64(1000));
    QVERIFY(!QFile::exists(backup));

    *stream << "y";
    const QDateTime before = QDateTime::currentDateTime();
    sink.flush();
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(QFileInfo(backup).size(), qint64(1001));
    QVERIFY(TestXml::readFile(backup).endsWith("xy"));
    const QString fresh = QString::fromUtf8(TestXml::readFile(live));
    QVERIFY2(fresh.endsWith('\n') && isDateBetween(fresh.chopped(1), before, after), qPrintable(fresh));

    *stream << "after rotation\n"; // the stream survives the rotation
    sink.flush();
    QCOMPARE(QString::fromUtf8(TestXml::readFile(live)), QString(fresh + "after rotation\n"));
}

void TestLogSink::copyToTempWithBackup()
{
    const QString live = m_home + "/app.log";
    FileRotationLogSink sink("app.log", 100);
    *sink.getCurrentStream() << QString(150, 'a');
    sink.flush();
    *sink.getCurrentStream() << "current line\n";
    sink.flush();
    const QByteArray backupText = TestXml::readFile(live + ".bak");
    const QByteArray liveText = TestXml::readFile(live);

    QVERIFY(TestXml::writeFile(m_cwd + "/app.log", "stale report"));

    const QString target = sink.copyToTemp(false);
    QCOMPARE(target, QString(m_cwd + "/app.log"));
    const QString report = QString::fromUtf8(TestXml::readFile(target));
    const QString head = QString::fromUtf8(backupText + liveText) + separatorLine();
    QVERIFY2(report.startsWith(head), qPrintable(report.left(400)));
    const QString listing = report.mid(head.size());
    QVERIFY(listing.startsWith(" Directory of " + QCoreApplication::applicationDirPath() + "\n\n"));
    QVERIFY(listing.contains(' ' + QFileInfo(QCoreApplication::applicationFilePath()).fileName() + '\n'));
}

void TestLogSink::uncreatableDirectory()
{
    AppSettings().setValue("HomePath", "/proc/kivcore-no-such/logs");
    LogCapture log; // Qt's own "device not open" notes are not ours to assert
    FileRotationLogSink sink("lost.log", 10);
    *sink.getCurrentStream() << QString(50, 'z');
    sink.flush();
    QCOMPARE(sink.filePath(), "/proc/kivcore-no-such/logs/lost.log");
    QVERIFY(!QFile::exists(sink.filePath()));
    const QString report = QString::fromUtf8(TestXml::readFile(sink.copyToTemp(false)));
    QVERIFY(report.startsWith(separatorLine()));
}

void TestLogSink::directoryListing()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVERIFY(QDir(dir.path()).mkpath("sub/empty"));
    QVERIFY(TestXml::writeFile(dir.path() + "/a.txt", "abc"));
    QVERIFY(TestXml::writeFile(dir.path() + "/sub/b.bin", QByteArray(1234, 'b')));

    const auto line = [](const QString& path, const QString& sizeColumn) {
        const QFileInfo info(path);
        return QString(
            info.lastModified().toString("yyyy-MM-dd  hh:mm") + "    " + sizeColumn + ' ' + info.fileName() + '\n');
    };
    const QString root = dir.path();
    const QString expected = " Directory of " + root + "\n\n" + line(root + "/a.txt", "             3")
        + line(root + "/sub", "<DIR>         ") + '\n' + " Directory of " + root + "/sub\n\n"
        + line(root + "/sub/b.bin", "          1234") + line(root + "/sub/empty", "<DIR>         ") + '\n'
        + " Directory of " + root + "/sub/empty\n\n\n";
    QCOMPARE(FileRotationLogSinkPrivate::directoryListing(root), expected);
    QCOMPARE(FileRotationLogSinkPrivate::directoryListing(root + "/missing"),
        QString(" Directory of " + root + "/missing\n\n\n"));
}

QTEST_MAIN(TestLogSink)

#include "tst_logsink.moc"
