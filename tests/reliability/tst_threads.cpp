#include "LogCapture.h"
#include "ParseBytes_p.h"
#include "TestXml.h"

#include <QDir>
#include <QtTest>

#include <thread>
#include <vector>

namespace {

struct Input
{
    QByteArray bytes;
    bool isEsi;
};

/// The examples and, when the folder is there, the real ESI files.
QList<Input> inputs()
{
    QList<Input> list {
        {TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml")), false},
        {TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml")), false},
        {TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/esi/kiv-vendor-esi.xml")), true},
    };
    const QDir samples(QStringLiteral(KIVCORE_ESI_SAMPLES_DIR));
    for (const QFileInfo& file :
        samples.entryInfoList({QStringLiteral("*.xml")}, QDir::Files, QDir::Size | QDir::Reversed)) {
        if (file.size() < 512 * 1024 && list.size() < 8)
            list.append({TestXml::readFile(file.absoluteFilePath()), true});
    }
    return list;
}

} // namespace

class TestThreads : public QObject
{
    Q_OBJECT
private slots:
    void parallelParsesMatchSerialOnes();
};

void TestThreads::parallelParsesMatchSerialOnes()
{
    const QList<Input> files = inputs();
    // The library logs what it skips; a handler that collects messages is itself shared, so keep it away.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QStringList expected;
    for (const Input& input : files) {
        ParsedBytes parsed;
        parseBytes(input.bytes, input.isEsi, &parsed);
        QVERIFY(!parsed.isNull());
        expected << parsed.debugText();
    }

    constexpr int kThreads = 4;
    constexpr int kRounds = 6;
    std::vector<QStringList> results(kThreads);
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&files, &results, thread] {
            // Each thread walks the files from a different start, so that different files overlap in time.
            for (int round = 0; round < kRounds; ++round) {
                for (int step = 0; step < files.size(); ++step) {
                    const Input& input = files.at((step + thread) % files.size());
                    ParsedBytes parsed;
                    parseBytes(input.bytes, input.isEsi, &parsed);
                    if (parsed.product)
                        RenderAll::product(parsed.product);
                    results[size_t(thread)] << parsed.debugText();
                }
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    qInstallMessageHandler(nullptr);

    for (int thread = 0; thread < kThreads; ++thread) {
        QCOMPARE(results[size_t(thread)].size(), kRounds * files.size());
        for (int index = 0; index < results[size_t(thread)].size(); ++index) {
            const int file = (index % files.size() + thread) % files.size();
            QVERIFY2(results[size_t(thread)].at(index) == expected.at(file),
                qPrintable(QStringLiteral("thread %1, parse %2").arg(thread).arg(index)));
        }
    }
}

QTEST_GUILESS_MAIN(TestThreads)
#include "tst_threads.moc"
