// kivcatalogbench: the ESI catalog over a generated folder of ESI files. Prints one line of JSON:
// first scan with 1 and 2 threads (MB/s), re-scan with nothing changed, find by identity, database size.
//
//   kivcatalogbench FOLDER WORK_DIR

#include "esi/EsiCatalog.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

namespace {

struct Scan
{
    double seconds = 0;
    double cpuSeconds = 0; ///< all threads: on a shared machine, wall time alone says little
    EsiScanResult result;
};

bool scan(const QString& folder, const QString& db, int threads, Scan* out)
{
    EsiCatalog catalog;
    catalog.setThreadCount(threads);
    if (!catalog.open(db))
        return false;
    QElapsedTimer timer;
    timer.start();
    const std::clock_t cpu = std::clock();
    const bool ok = catalog.index(folder, &out->result);
    out->seconds = timer.nsecsElapsed() / 1e9;
    out->cpuSeconds = double(std::clock() - cpu) / CLOCKS_PER_SEC;
    if (!ok)
        std::fprintf(stderr, "kivcatalogbench: %s\n", qPrintable(catalog.errorString()));
    return ok;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? 0 : values[values.size() / 2];
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: kivcatalogbench FOLDER WORK_DIR\n");
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString work = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(work);
    const QString db1 = work + QStringLiteral("/catalog-1.sqlite");
    const QString db2 = work + QStringLiteral("/catalog-2.sqlite");
    QFile::remove(db1);
    QFile::remove(db2);

    // A first scan warms the page cache, so that both timed scans read from memory alike.
    Scan warm, one, two, again;
    if (!scan(folder, work + QStringLiteral("/warm.sqlite"), 2, &warm))
        return 1;
    QFile::remove(work + QStringLiteral("/warm.sqlite"));
    if (!scan(folder, db1, 1, &one) || !scan(folder, db2, 2, &two) || !scan(folder, db2, 2, &again))
        return 1;

    // Identities from the middle of the folder: the generator gives file i the products 0x100000 + i * 0x100.
    EsiCatalog catalog;
    if (!catalog.open(db2, false))
        return 1;
    std::vector<double> finds;
    int found = 0;
    QElapsedTimer timer;
    for (int i = 0; i < 50; ++i) {
        EsiCatalogQuery query;
        query.vendorId = 0xA7C;
        query.productCode = 0x100000 + quint32(i * 4) * 0x100 + 1;
        query.revision = 0x00030000 + 0x100; // missing: --nearest takes 0x00030000
        query.nearest = true;
        timer.start();
        found += catalog.find(query).size();
        finds.push_back(timer.nsecsElapsed() / 1e6);
    }
    const double megabytes = one.result.bytesRead / 1e6;
    std::printf("{\"files\": %d, \"devices\": %d, \"megabytes\": %.1f, \"scan1_s\": %.2f, \"scan1_mbps\": %.1f, "
                "\"scan1_cpu_s\": %.2f, \"scan2_s\": %.2f, \"scan2_mbps\": %.1f, \"scan2_cpu_s\": %.2f, \"rescan_s\": "
                "%.3f, \"rescan_read\": %d, "
                "\"find_ms_median\": %.3f, \"find_ms_max\": %.3f, \"find_found\": %d, \"db_bytes\": %lld}\n",
        one.result.filesFound, one.result.devices, megabytes, one.seconds, megabytes / one.seconds, one.cpuSeconds,
        two.seconds, megabytes / two.seconds, two.cpuSeconds, again.seconds, again.result.filesRead, median(finds),
        *std::max_element(finds.begin(), finds.end()), found, (long long)QFileInfo(db2).size());
    return 0;
}
