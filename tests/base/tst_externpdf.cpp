#include "LogCapture.h"
#include "TestXml.h"

#include "base/ExternPDF.h"
#include "base/ExternPDF_p.h"
#include "base/Global.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using ExternPDFPrivate::Platform;

class TestExternPDF : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void texts_data();
    void texts();
    void viewerFromDesktop();
    void view();

private:
    /// Makes the desktop answer `desktopId` for PDF documents, with a desktop entry whose Exec line is `exec`.
    void associate(const QByteArray& desktopId, const QByteArray& exec);
    QString write(const QString& path, const QByteArray& content);
    /// The chosen program and its arguments for a document in "/d", joined by " | ".
    static QString command(const QString& associated, Platform platform);
    /// The program of a desktop entry file holding `entry`; none for a null array.
    QString entryProgram(const QByteArray& entry);

    QTemporaryDir m_dir;
    QString m_document;
};

QString TestExternPDF::write(const QString& path, const QByteArray& content)
{
    TestXml::writeFile(path, content);
    return path;
}

void TestExternPDF::associate(const QByteArray& desktopId, const QByteArray& exec)
{
    const QString script = write(m_dir.path() + "/bin/xdg-mime",
        "#!/bin/sh\n[ \"$1 $2 $3\" = \"query default application/pdf\" ] && echo '" + desktopId + "'\nexit 0\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!desktopId.isEmpty())
        write(m_dir.path() + "/share/applications/" + QString::fromLatin1(desktopId),
            "[Desktop Entry]\nType=Application\nName=Viewer\n" + exec + "\n");
}

void TestExternPDF::initTestCase()
{
    QVERIFY(m_dir.isValid());
    // The desktop's association comes from our own xdg-mime and desktop entries, never from this machine's.
    qputenv("PATH", QString(m_dir.path() + "/bin:" + qEnvironmentVariable("PATH")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", QString(m_dir.path() + "/share").toLocal8Bit());
    qputenv("XDG_DATA_DIRS", QString(m_dir.path() + "/none").toLocal8Bit());
    m_document = write(m_dir.path() + "/docs/manual.pdf", "%PDF-1.4\n");
}

QString TestExternPDF::command(const QString& associated, Platform platform)
{
    const ExternPDFPrivate::Viewer viewer = ExternPDFPrivate::chooseViewer(associated, "/d", platform);
    return (QStringList(viewer.program) + ExternPDFPrivate::arguments(viewer, "c3", "/d/m.pdf")).join(" | ");
}

QString TestExternPDF::entryProgram(const QByteArray& entry)
{
    const QString path = m_dir.path() + "/entry.desktop";
    QFile::remove(path);
    return ExternPDFPrivate::desktopEntryProgram(entry.isNull() ? path : write(path, entry));
}

void TestExternPDF::texts_data()
{
    QTest::addColumn<QString>("actual");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* name, const QString& actual, const QString& expected) {
        QTest::newRow(name) << actual << expected;
    };
    // Known viewers keep the associated program.
    const auto kept = [&](const char* name, const QString& program, Platform platform, const QString& arguments) {
        row(name, command(program, platform), program + " | " + arguments);
    };
    const Platform win = Platform::Windows;
    const Platform lin = Platform::Unix;
    kept("PDF-XChange", "C:/Tools/PDFXCview.exe", win, "/A | toolbar=1&pagemode=bookmarks&nameddest=c3 | /d/m.pdf");
    kept("Acrobat, any case", "C:/Adobe/ACRORD32.EXE", win,
        "/n | /A | toolbar=0&pagemode=bookmarks&nameddest=c3 | /d/m.pdf");
    kept("chrome", "C:/Chrome/chrome.exe", win, "file:////d/m.pdf#nameddest=c3");
    kept("firefox", "C:/Firefox/firefox.exe", win, "file:////d/m.pdf#nameddest=c3");
    kept("Foxit", "C:/Foxit/FoxitReader.exe", win, "/A | /d/m.pdf | nameddest=c3");
    kept("Foxit portable", "D:/FoxitReaderPortable.exe", win, "/A | /d/m.pdf | nameddest=c3");
    const QString sumatra = "-reuse-instance | -view | single page | -named-dest | c3 | /d/m.pdf";
    kept("Sumatra associated", "C:/Tools/SumatraPDF.exe", win, sumatra);
    row("no association", command("", win), "/d/SumatraPDF.exe | " + sumatra);
    row("unknown viewer", command("C:/Other/viewer.exe", win), "/d/SumatraPDF.exe | " + sumatra);
    row("Linux name on Windows", command("C:/evince", win), "/d/SumatraPDF.exe | " + sumatra);
    kept("Acrobat on Linux", "/wine/AcroRd32.exe", lin,
        "/n | /A | toolbar=0&pagemode=bookmarks&nameddest=c3 | /d/m.pdf");
    for (const char* name : {"evince", "atril", "xreader"})
        kept(name, "/usr/bin/" + QLatin1String(name), lin, "--named-dest | c3 | /d/m.pdf");
    kept("okular", "/usr/bin/okular", lin, "/d/m.pdf#c3");
    kept("zathura", "/usr/bin/zathura", lin, "/d/m.pdf");
    for (const char* name :
        {"chromium", "chromium-browser", "google-chrome", "google-chrome-stable", "chrome", "firefox", "firefox-esr"})
        kept(name, "/usr/bin/" + QLatin1String(name), lin, "file:///d/m.pdf#nameddest=c3");
    row("Linux none", command("", lin), "xdg-open | /d/m.pdf");
    row("Linux unknown", command("/usr/bin/mupdf", lin), "xdg-open | /d/m.pdf");
    row("name is whole", command("/usr/bin/myevince", lin), "xdg-open | /d/m.pdf");

    associate("unused.desktop", "Exec=unused"); // puts the fake xdg-mime into PATH
    row("field code", entryProgram("[Desktop Entry]\nExec=kiv-no-such-viewer %U\n"), "kiv-no-such-viewer");
    row("absolute", entryProgram("[Desktop Entry]\nExec=/opt/v/bin/viewer --x %f\n"), "/opt/v/bin/viewer");
    row("quoted", entryProgram("[Desktop Entry]\nExec=\"/opt/My Viewer/viewer\" %f\n"), "/opt/My Viewer/viewer");
    row("action groups ignored",
        entryProgram("[Desktop Action new]\nExec=/bin/other\n[Desktop Entry]\nName=V\nExec=/bin/main %f\n"),
        "/bin/main");
    row("found in PATH", entryProgram("[Desktop Entry]\nExec=xdg-mime %f\n"), m_dir.path() + "/bin/xdg-mime");
    row("no Exec", entryProgram("[Desktop Entry]\nName=V\n"), "");
    row("empty quotes", entryProgram("[Desktop Entry]\nExec=\"\" %f\n"), "");
    row("no entry", entryProgram(QByteArray()), "");
}

void TestExternPDF::texts()
{
    QFETCH(QString, actual);
    QFETCH(QString, expected);
    QCOMPARE(actual, expected);
}

void TestExternPDF::viewerFromDesktop()
{
    associate("kiv-viewer.desktop", "Exec=/nonexistent/okular %U");
    LogCapture log;
    const QString head = "ExternPDF::ExternPDF(const QString&, const QString&) Default PDF Reader: ";
    ExternPDF pdf("pdf", m_document);
    QCOMPARE(pdf.objectName(), "pdf");
    QCOMPARE(pdf.program(), "/nonexistent/okular");
    const ExternPDF::Command command = pdf.commandFor("chap3", "manual.pdf");
    QCOMPARE(command.program, "/nonexistent/okular");
    QCOMPARE(command.arguments, QStringList(m_document + "#chap3"));

    associate("", "");
    ExternPDF none("pdf", m_document);
    QCOMPARE(none.commandFor("chap3", "manual.pdf").program, "xdg-open");
    QCOMPARE(none.commandFor("chap3", "manual.pdf").arguments, QStringList(m_document));
    QCOMPARE(log.texts(), QStringList({head + "\"/nonexistent/okular\"", head + "\"\""}));

    // A desktop id naming a sub-directory: "vendor-viewer.desktop" in "vendor/".
    write(m_dir.path() + "/share/applications/vendor/viewer.desktop", "[Desktop Entry]\nExec=/usr/bin/evince %U\n");
    associate("vendor-viewer.desktop", "");
    QFile::remove(m_dir.path() + "/share/applications/vendor-viewer.desktop");
    QCOMPARE(ExternPDFPrivate::defaultPdfProgram(), "/usr/bin/evince");
}

void TestExternPDF::view()
{
    associate("kiv-viewer.desktop", "Exec=/nonexistent/evince %U");
    ExternPDF pdf("pdf", m_document);
    LogCapture log;
    pdf.view("chap3", "other.pdf");
    QVERIFY(pdf.findChildren<QProcess*>().isEmpty());
    QCOMPARE(log.texts(),
        QStringList("void ExternPDF::view(const QString&, const QString&) Document not found: \"" + m_dir.path()
            + "/docs/other.pdf\""));

    // A viewer that cannot start: its command goes to the log.
    log.clear();
    pdf.view("chap3");
    QCOMPARE(pdf.findChildren<QProcess*>().size(), 1); // owned by the launcher
    QCOMPARE(
        log.texts(), QStringList({"\"/nonexistent/evince\"", "\"--named-dest\"", "\"chap3\"", '"' + m_document + '"'}));
    for (const LogCapture::Message& message : log.messages()) {
        QCOMPARE(message.category, "core.debLevel.low");
        QCOMPARE(message.type, QtDebugMsg);
    }
}

QTEST_GUILESS_MAIN(TestExternPDF)

#include "tst_externpdf.moc"
