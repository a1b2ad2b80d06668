#include "LogCapture.h"

#include "base/ExternPDF.h"
#include "base/ExternPDF_p.h"
#include "base/Global.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

using ExternPDFPrivate::Platform;
Q_DECLARE_METATYPE(ExternPDFPrivate::Platform)

class TestExternPDF : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void commandForViewer_data();
    void commandForViewer();
    void desktopEntryProgram_data();
    void desktopEntryProgram();
    void associationFromDesktop();
    void noAssociationOpensWithXdgOpen();
    void viewMissingDocumentStartsNothing();
    void viewFailureLogsCommand();

private:
    /// Makes the desktop answer `desktopId` for PDF documents, with a desktop entry whose Exec line is `exec`.
    void associate(const QByteArray& desktopId, const QByteArray& exec);
    QString write(const QString& path, const QByteArray& content);

    QTemporaryDir m_dir;
    QString m_document;
};

QString TestExternPDF::write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(content);
    return path;
}

void TestExternPDF::associate(const QByteArray& desktopId, const QByteArray& exec)
{
    const QString script = write(m_dir.path() + QLatin1String("/bin/xdg-mime"),
        "#!/bin/sh\n[ \"$1 $2 $3\" = \"query default application/pdf\" ] && echo '" + desktopId + "'\nexit 0\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (!desktopId.isEmpty())
        write(m_dir.path() + QLatin1String("/share/applications/") + QString::fromLatin1(desktopId),
            "[Desktop Entry]\nType=Application\nName=Viewer\n" + exec + "\n");
}

void TestExternPDF::initTestCase()
{
    QVERIFY(m_dir.isValid());
    // The desktop's association comes from our own xdg-mime and desktop entries, never from this machine's.
    qputenv("PATH", QString(m_dir.path() + QLatin1String("/bin:") + qEnvironmentVariable("PATH")).toLocal8Bit());
    qputenv("XDG_DATA_HOME", QString(m_dir.path() + QLatin1String("/share")).toLocal8Bit());
    qputenv("XDG_DATA_DIRS", QString(m_dir.path() + QLatin1String("/none")).toLocal8Bit());
    m_document = write(m_dir.path() + QLatin1String("/docs/manual.pdf"), "%PDF-1.4\n");
}

void TestExternPDF::commandForViewer_data()
{
    QTest::addColumn<QString>("associated");
    QTest::addColumn<Platform>("platform");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    const QString path = QStringLiteral("/docs/manual.pdf");
    const Platform win = Platform::Windows;
    const Platform lin = Platform::Unix;
    const QString sumatra = QStringLiteral("C:/Tools/SumatraPDF.exe");
    const QStringList sumatraArguments {"-reuse-instance", "-view", "single page", "-named-dest", "chap3", path};

    QTest::newRow("PDF-XChange") << "C:/Tools/PDFXCview.exe" << win << "C:/Tools/PDFXCview.exe"
                                 << QStringList {"/A", "toolbar=1&pagemode=bookmarks&nameddest=chap3", path};
    QTest::newRow("Acrobat, any case") << "C:/Adobe/ACRORD32.EXE" << win << "C:/Adobe/ACRORD32.EXE"
                                       << QStringList {
                                              "/n", "/A", "toolbar=0&pagemode=bookmarks&nameddest=chap3", path};
    QTest::newRow("chrome") << "C:/Chrome/chrome.exe" << win << "C:/Chrome/chrome.exe"
                            << QStringList {"file:////docs/manual.pdf#nameddest=chap3"};
    QTest::newRow("firefox") << "C:/Firefox/firefox.exe" << win << "C:/Firefox/firefox.exe"
                             << QStringList {"file:////docs/manual.pdf#nameddest=chap3"};
    QTest::newRow("Foxit") << "C:/Foxit/FoxitReader.exe" << win << "C:/Foxit/FoxitReader.exe"
                           << QStringList {"/A", path, "nameddest=chap3"};
    QTest::newRow("Foxit portable") << "D:/FoxitReaderPortable.exe" << win << "D:/FoxitReaderPortable.exe"
                                    << QStringList {"/A", path, "nameddest=chap3"};
    QTest::newRow("Sumatra associated") << sumatra << win << sumatra << sumatraArguments;
    QTest::newRow("no association") << "" << win << "/docs/SumatraPDF.exe" << sumatraArguments;
    QTest::newRow("unknown viewer") << "C:/Other/viewer.exe" << win << "/docs/SumatraPDF.exe" << sumatraArguments;
    QTest::newRow("Linux name on Windows") << "C:/evince" << win << "/docs/SumatraPDF.exe" << sumatraArguments;

    QTest::newRow("Acrobat on Linux") << "/wine/AcroRd32.exe" << lin << "/wine/AcroRd32.exe"
                                      << QStringList {"/n", "/A", "toolbar=0&pagemode=bookmarks&nameddest=chap3", path};
    for (const char* name : {"evince", "atril", "xreader"}) {
        const QString program = QLatin1String("/usr/bin/") + QLatin1String(name);
        QTest::newRow(name) << program << lin << program << QStringList {"--named-dest", "chap3", path};
    }
    QTest::newRow("okular") << "/usr/bin/okular" << lin << "/usr/bin/okular" << QStringList {"/docs/manual.pdf#chap3"};
    QTest::newRow("zathura") << "/usr/bin/zathura" << lin << "/usr/bin/zathura" << QStringList {path};
    for (const char* name :
        {"chromium", "chromium-browser", "google-chrome", "google-chrome-stable", "firefox", "firefox-esr"}) {
        const QString program = QLatin1String("/usr/bin/") + QLatin1String(name);
        QTest::newRow(name) << program << lin << program << QStringList {"file:///docs/manual.pdf#nameddest=chap3"};
    }
    QTest::newRow("Linux none") << "" << lin << "xdg-open" << QStringList {path};
    QTest::newRow("Linux unknown") << "/usr/bin/mupdf" << lin << "xdg-open" << QStringList {path};
    QTest::newRow("name is whole") << "/usr/bin/myevince" << lin << "xdg-open" << QStringList {path};
}

void TestExternPDF::commandForViewer()
{
    QFETCH(QString, associated);
    QFETCH(Platform, platform);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    const ExternPDFPrivate::Viewer viewer
        = ExternPDFPrivate::chooseViewer(associated, QStringLiteral("/docs"), platform);
    QCOMPARE(viewer.program, program);
    QCOMPARE(
        ExternPDFPrivate::arguments(viewer, QStringLiteral("chap3"), QStringLiteral("/docs/manual.pdf")), arguments);
}

void TestExternPDF::desktopEntryProgram_data()
{
    QTest::addColumn<QByteArray>("entry");
    QTest::addColumn<QString>("program");
    QTest::newRow("field code") << QByteArray("[Desktop Entry]\nExec=kiv-no-such-viewer %U\n") << "kiv-no-such-viewer";
    QTest::newRow("absolute") << QByteArray("[Desktop Entry]\nExec=/opt/v/bin/viewer --x %f\n") << "/opt/v/bin/viewer";
    QTest::newRow("quoted") << QByteArray("[Desktop Entry]\nExec=\"/opt/My Viewer/viewer\" %f\n")
                            << "/opt/My Viewer/viewer";
    QTest::newRow("action groups ignored") << QByteArray("[Desktop Action new]\nExec=/bin/other\n"
                                                         "[Desktop Entry]\nName=V\nExec=/bin/main %f\n")
                                           << "/bin/main";
    QTest::newRow("found in PATH") << QByteArray("[Desktop Entry]\nExec=xdg-mime %f\n")
                                   << QString(m_dir.path() + QLatin1String("/bin/xdg-mime"));
    QTest::newRow("no Exec") << QByteArray("[Desktop Entry]\nName=V\n") << "";
}

void TestExternPDF::desktopEntryProgram()
{
    QFETCH(QByteArray, entry);
    QFETCH(QString, program);
    associate("unused.desktop", "Exec=unused"); // puts the fake xdg-mime into PATH
    QCOMPARE(
        ExternPDFPrivate::desktopEntryProgram(write(m_dir.path() + QLatin1String("/entry.desktop"), entry)), program);
    QCOMPARE(ExternPDFPrivate::desktopEntryProgram(m_dir.path() + QLatin1String("/missing.desktop")), QString());
}

void TestExternPDF::associationFromDesktop()
{
    associate("kiv-viewer.desktop", "Exec=/nonexistent/okular %U");
    LogCapture log;
    ExternPDF pdf(QStringLiteral("pdf"), m_document);
    QCOMPARE(log.texts(),
        QStringList(QStringLiteral(
            "ExternPDF::ExternPDF(const QString&, const QString&) Default PDF Reader: \"/nonexistent/okular\"")));
    QCOMPARE(pdf.objectName(), QStringLiteral("pdf"));
    QCOMPARE(pdf.program(), QStringLiteral("/nonexistent/okular"));
    const ExternPDF::Command command = pdf.commandFor(QStringLiteral("chap3"), QStringLiteral("manual.pdf"));
    QCOMPARE(command.program, QStringLiteral("/nonexistent/okular"));
    QCOMPARE(command.arguments, QStringList(QString(m_document + QLatin1String("#chap3"))));

    // A desktop id naming a sub-directory: "vendor-viewer.desktop" in "vendor/".
    associate("", "");
    write(m_dir.path() + QLatin1String("/share/applications/vendor/viewer.desktop"),
        "[Desktop Entry]\nExec=/usr/bin/evince %U\n");
    associate("vendor-viewer.desktop", "");
    QFile::remove(m_dir.path() + QLatin1String("/share/applications/vendor-viewer.desktop"));
    QCOMPARE(ExternPDFPrivate::defaultPdfProgram(), QStringLiteral("/usr/bin/evince"));
}

void TestExternPDF::noAssociationOpensWithXdgOpen()
{
    associate("", "");
    LogCapture log;
    ExternPDF pdf(QStringLiteral("pdf"), m_document);
    QCOMPARE(log.texts(),
        QStringList(QStringLiteral("ExternPDF::ExternPDF(const QString&, const QString&) Default PDF Reader: \"\"")));
    const ExternPDF::Command command = pdf.commandFor(QStringLiteral("chap3"), QStringLiteral("manual.pdf"));
    QCOMPARE(command.program, QStringLiteral("xdg-open"));
    QCOMPARE(command.arguments, QStringList(m_document));
}

void TestExternPDF::viewMissingDocumentStartsNothing()
{
    associate("kiv-viewer.desktop", "Exec=/nonexistent/evince %U");
    ExternPDF pdf(QStringLiteral("pdf"), m_document);
    LogCapture log;
    pdf.view(QStringLiteral("chap3"), QStringLiteral("other.pdf"));
    QVERIFY(pdf.findChildren<QProcess*>().isEmpty());
    const QString missing = m_dir.path() + QLatin1String("/docs/other.pdf");
    QCOMPARE(log.texts(),
        QStringList(QLatin1String("void ExternPDF::view(const QString&, const QString&) Document not found: \"")
            + missing + QLatin1Char('"')));
    QCOMPARE(log.messages().first().category, QStringLiteral("core.debLevel.low"));
}

void TestExternPDF::viewFailureLogsCommand()
{
    associate("kiv-viewer.desktop", "Exec=/nonexistent/evince %U");
    ExternPDF pdf(QStringLiteral("pdf"), m_document);
    LogCapture log;
    pdf.view(QStringLiteral("chap3"));
    QCOMPARE(pdf.findChildren<QProcess*>().size(), 1); // owned by the launcher
    const QStringList expected {QStringLiteral("\"/nonexistent/evince\""), QStringLiteral("\"--named-dest\""),
        QStringLiteral("\"chap3\""), QString(QLatin1Char('"') + m_document + QLatin1Char('"'))};
    QCOMPARE(log.texts(), expected);
    for (const LogCapture::Message& message : log.messages()) {
        QCOMPARE(message.category, QStringLiteral("core.debLevel.low"));
        QCOMPARE(message.type, QtDebugMsg);
    }
}

QTEST_GUILESS_MAIN(TestExternPDF)

#include "tst_externpdf.moc"
