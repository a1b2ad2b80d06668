// kivbench: parse throughput against the XML reader's own token rate, renderer times and model memory.
//
//   kivbench --memory FILE          one line of JSON: file size and resident growth of one parse
//   kivbench DIR... [benchmark flags]  benchmarks for every *.xml file in the directories, and the
//                                      scaling benchmarks of formerly quadratic paths (inputs in memory)

#include "Models.h"
#include "Scaling.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <malloc.h>

#include <cstdio>
#include <map>
#include <memory>

namespace {

std::map<QString, std::unique_ptr<Model>> g_models;

Model* cachedModel(const QString& path, InputKind kind)
{
    std::unique_ptr<Model>& model = g_models[path];
    if (!model)
        model.reset(parseFile(path, kind));
    return model.get();
}

int printMemory(const QString& path)
{
    const InputKind kind = inputKind(path);
    // One small parse first: the reader's buffers and Qt's one-time set-up are not the model.
    QTemporaryFile warmUp;
    if (warmUp.open()) {
        warmUp.write(kind == InputKind::ESI ? "<EtherCATInfo><Vendor><Id>1</Id></Vendor></EtherCATInfo>"
                                            : "<product_ic><desc>x</desc></product_ic>");
        warmUp.close();
        std::unique_ptr<Model> discarded(parseFile(warmUp.fileName(), kind));
    }
    const long long before = residentBytes();
    std::unique_ptr<Model> model(parseFile(path, kind));
    const long long after = residentBytes();
    std::printf("{\"file\": \"%s\", \"kind\": \"%s\", \"bytes\": %lld, \"rss_growth\": %lld, \"ok\": %s}\n",
        qPrintable(QFileInfo(path).fileName()), qPrintable(kindName(kind)), (long long)QFileInfo(path).size(),
        after - before, model && (model->product || model->esi) ? "true" : "false");
    return 0;
}

void registerFile(const QString& path)
{
    const InputKind kind = inputKind(path);
    if (kind == InputKind::Unknown)
        return;
    const QString name = QFileInfo(path).fileName();
    const long long bytes = QFileInfo(path).size();

    benchmark::RegisterBenchmark(qPrintable(QStringLiteral("ceiling/") + name), [path, bytes](benchmark::State& state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(readAllTokens(path));
        state.SetBytesProcessed(state.iterations() * bytes);
    })->Unit(benchmark::kMillisecond);

    benchmark::RegisterBenchmark(qPrintable(QStringLiteral("parse/") + name),
        [path, kind, bytes](benchmark::State& state) {
            for (auto _ : state) {
                std::unique_ptr<Model> model(parseFile(path, kind));
                state.PauseTiming(); // freeing the model is not parsing
                model.reset();
                state.ResumeTiming();
            }
            state.SetBytesProcessed(state.iterations() * bytes);
        })
        ->Unit(benchmark::kMillisecond);

    for (const Renderer& renderer : renderersFor(kind)) {
        benchmark::RegisterBenchmark(qPrintable(QStringLiteral("render/%1/%2").arg(renderer.name, name)),
            [path, kind, renderer](benchmark::State& state) {
                Model* model = cachedModel(path, kind);
                if (!model || (!model->product && !model->esi)) {
                    state.SkipWithError("the file does not parse");
                    return;
                }
                for (auto _ : state)
                    benchmark::DoNotOptimize(renderer.render(model));
            })
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int argc, char* argv[])
{
    // glibc raises its mmap threshold only up to 32 MB: texts of the small files are reused from the heap
    // run after run while those of the large files are mapped (and page-faulted) afresh every run. One
    // fixed policy for both sizes keeps the scaling ratios about our code, not about that threshold.
    mallopt(M_MMAP_THRESHOLD, 512 * 1024 * 1024);
    mallopt(M_TRIM_THRESHOLD, 1024 * 1024 * 1024);
    QCoreApplication app(argc, argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    if (argc == 3 && QByteArray(argv[1]) == "--memory")
        return printMemory(QString::fromLocal8Bit(argv[2]));

    // Leading arguments that are directories name the inputs; the rest belong to the benchmark library.
    int first = 1;
    while (first < argc && QFileInfo(QString::fromLocal8Bit(argv[first])).isDir()) {
        const QDir dir(QString::fromLocal8Bit(argv[first]));
        for (const QFileInfo& file : dir.entryInfoList({QStringLiteral("*.xml")}, QDir::Files, QDir::Name))
            registerFile(file.absoluteFilePath());
        ++first;
    }
    registerScalingBenchmarks();
    argv[first - 1] = argv[0];
    int remaining = argc - first + 1;
    benchmark::Initialize(&remaining, argv + first - 1);
    benchmark::RunSpecifiedBenchmarks();
    g_models.clear();
    return 0;
}
