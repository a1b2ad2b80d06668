// EsiCatalog::index: the folder scan. Files are read on several threads; every write goes through the
// catalog's one connection, on the calling thread, inside one transaction.

#include "esi/EsiCatalog.h"

#include "esi/EsiCatalog_p.h"

#include <QDateTime>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <QThread>
#include <QVariant>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

/// How a file stands in the catalog ("files.status").
enum FileStatus
{
    FileOk = 0,
    FileCannotOpen = 1,
    FileNotEsi = 2,
    FileInvalid = 3,
};

FileStatus fileStatus(EsiCatalogReader::Status status)
{
    switch (status) {
    case EsiCatalogReader::Status::Ok:
        return FileOk;
    case EsiCatalogReader::Status::CannotOpen:
        return FileCannotOpen;
    case EsiCatalogReader::Status::NotEsi:
        return FileNotEsi;
    case EsiCatalogReader::Status::Invalid:
        break;
    }
    return FileInvalid;
}

struct FoundFile
{
    QString path;
    qint64 size = 0;
    qint64 mtime = 0;
    qint64 id = -1; ///< its row in "files", -1: new
};

struct ReadResult
{
    int file = 0; ///< index in the list of files to read
    FileStatus status = FileOk;
    QVector<EsiDeviceIdentity> devices;
    QString reason;
    qint64 line = 0;
    qint64 column = 0;
};

/// Hands the readers' results to the writing thread. Standard mutex and condition variable: their waits
/// go through pthreads, which the thread sanitizer follows, where QMutex's contended path does not.
class ResultQueue
{
public:
    void push(ReadResult&& result)
    {
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_results.append(std::move(result));
        }
        m_ready.notify_one();
    }

    /// What has arrived, waiting up to `milliseconds` for the first.
    QVector<ReadResult> take(unsigned long milliseconds)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (m_results.isEmpty())
            m_ready.wait_for(lock, std::chrono::milliseconds(milliseconds));
        QVector<ReadResult> taken;
        taken.swap(m_results);
        return taken;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_ready;
    QVector<ReadResult> m_results;
};

/// The files under `root` (a canonical path), searched recursively; symbolic links to folders are not
/// followed, so a link cannot make the scan loop.
QVector<FoundFile> findFiles(const QString& root)
{
    QVector<FoundFile> files;
    QDirIterator it(
        root, {QStringLiteral("*.xml")}, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        const QFileInfo info = it.fileInfo();
        files.append({info.absoluteFilePath(), info.size(), info.lastModified().toMSecsSinceEpoch()});
    }
    return files;
}

/// A condition that keeps a statement to the files under the folder; `prefix` ends with "/".
QString underFolder(const QString& prefix)
{
    return QStringLiteral("substr(f.path, 1, ") + QString::number(prefix.size()) + QStringLiteral(") = ?");
}

} // namespace

bool EsiCatalog::index(
    const QString& folder, EsiScanResult* result, const std::function<void(const EsiScanProgress&)>& progress)
{
    EsiScanResult local;
    EsiScanResult& out = result ? *result : local;
    out = EsiScanResult();
    QElapsedTimer timer;
    timer.start();
    d->error = Error::None;
    d->errorString.clear();
    if (!isOpen())
        return d->fail(Error::CannotOpen, QStringLiteral("the catalog is not open"));
    const QFileInfo rootInfo(folder);
    if (!rootInfo.isDir())
        return d->fail(Error::NoFolder, folder + QStringLiteral(": no such folder"));
    const QString root = rootInfo.canonicalFilePath();
    const QString prefix = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');

    QVector<FoundFile> found = findFiles(root);
    out.filesFound = found.size();

    QSqlDatabase database = d->database();
    // Taken first, so that a locked catalog fails before any file is read.
    if (!d->exec(QStringLiteral("BEGIN IMMEDIATE"), QStringLiteral("starting the scan")))
        return false;
    const auto rollBack = [this] {
        QSqlQuery(d->database()).exec(QStringLiteral("ROLLBACK"));
        return false;
    };

    // What the catalog knows of the folder: unchanged files stay, vanished ones go.
    struct Known
    {
        qint64 id;
        qint64 size;
        qint64 mtime;
    };
    QHash<QString, Known> known;
    {
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.prepare(QStringLiteral("SELECT f.id, f.path, f.size, f.mtime FROM files f WHERE ") + underFolder(prefix));
        query.addBindValue(prefix);
        if (!query.exec())
            return d->failQuery(query.lastError(), QStringLiteral("reading the catalog")), rollBack();
        while (query.next())
            known.insert(query.value(1).toString(),
                {query.value(0).toLongLong(), query.value(2).toLongLong(), query.value(3).toLongLong()});
    }
    QVector<FoundFile> toRead;
    for (FoundFile& file : found) {
        const auto entry = known.find(file.path);
        if (entry == known.end()) {
            toRead << file;
            continue;
        }
        file.id = entry->id;
        if (entry->size == file.size && entry->mtime == file.mtime)
            ++out.filesUnchanged;
        else
            toRead << file;
        known.erase(entry);
    }
    {
        QSqlQuery dropDevices(database);
        QSqlQuery dropFile(database);
        dropDevices.prepare(QStringLiteral("DELETE FROM devices WHERE file_id = ?"));
        dropFile.prepare(QStringLiteral("DELETE FROM files WHERE id = ?"));
        for (const Known& vanished : qAsConst(known)) {
            dropDevices.addBindValue(vanished.id);
            dropFile.addBindValue(vanished.id);
            if (!dropDevices.exec() || !dropFile.exec())
                return d->failQuery(dropFile.lastError(), QStringLiteral("dropping vanished files")), rollBack();
            ++out.filesRemoved;
        }
    }

    // The largest files first, so that no core is left with a big one at the end.
    std::sort(toRead.begin(), toRead.end(), [](const FoundFile& a, const FoundFile& b) { return a.size > b.size; });
    EsiScanProgress state;
    state.filesTotal = toRead.size();
    for (const FoundFile& file : toRead)
        state.bytesTotal += file.size;

    ResultQueue queue;
    std::atomic<bool> cancelled {false};
    std::atomic<int> nextFile {0};
    // Plain threads taking the next file in turn: their start and join are what the thread sanitizer
    // follows, where a pool's hand-over runs inside Qt.
    const int threadCount
        = qBound(1, d->threads > 0 ? d->threads : QThread::idealThreadCount(), qMax(1, int(toRead.size())));
    std::vector<std::thread> readers;
    readers.reserve(size_t(threadCount));
    for (int t = 0; t < threadCount; ++t) {
        readers.emplace_back([&toRead, &queue, &cancelled, &nextFile] {
            for (int index = nextFile.fetch_add(1); index < toRead.size(); index = nextFile.fetch_add(1)) {
                ReadResult read;
                read.file = index;
                if (!cancelled.load()) {
                    EsiCatalogReader reader;
                    reader.read(toRead.at(index).path);
                    read.status = fileStatus(reader.status());
                    read.devices = reader.devices();
                    read.reason = reader.errorString();
                    read.line = reader.errorLine();
                    read.column = reader.errorColumn();
                }
                queue.push(std::move(read));
            }
        });
    }

    QSqlQuery updateFile(database);
    QSqlQuery insertFile(database);
    QSqlQuery dropDevices(database);
    QSqlQuery insertDevice(database);
    updateFile.prepare(
        QStringLiteral("UPDATE files SET size = ?, mtime = ?, status = ?, error = ?, line = ?, col = ? WHERE id = ?"));
    insertFile.prepare(
        QStringLiteral("INSERT INTO files(path, size, mtime, status, error, line, col) VALUES (?, ?, ?, ?, ?, ?, ?)"));
    dropDevices.prepare(QStringLiteral("DELETE FROM devices WHERE file_id = ?"));
    insertDevice.prepare(QStringLiteral(
        "INSERT INTO devices(file_id, position, vendor_id, vendor_name, product_code, revision, type, name, names, "
        "group_type, group_name, search) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"));

    const auto write = [&](const ReadResult& read) {
        const FoundFile& file = toRead.at(read.file);
        // A file that could not be opened is read again next time, whatever its dates say.
        const qint64 mtime = read.status == FileCannotOpen ? -1 : file.mtime;
        const QVariant noText(QVariant::String);
        const QVariantList fields {file.size, mtime, int(read.status),
            read.status == FileOk ? noText : QVariant(read.reason), read.line, read.column};
        qint64 id = file.id;
        QSqlQuery& statement = id >= 0 ? updateFile : insertFile;
        if (id < 0)
            statement.addBindValue(file.path);
        for (const QVariant& field : fields)
            statement.addBindValue(field);
        if (id >= 0)
            statement.addBindValue(id);
        if (!statement.exec())
            return d->failQuery(statement.lastError(), QStringLiteral("recording ") + file.path);
        if (id < 0) {
            id = statement.lastInsertId().toLongLong();
        } else {
            dropDevices.addBindValue(id);
            if (!dropDevices.exec())
                return d->failQuery(dropDevices.lastError(), QStringLiteral("recording ") + file.path);
        }
        for (const EsiDeviceIdentity& device : read.devices) {
            const QVariantList values {id, device.position, qlonglong(device.vendorId), device.vendorName,
                qlonglong(device.productCode), qlonglong(device.revision), device.type, device.name,
                device.names.join(QLatin1Char('\n')), device.group, device.groupName,
                EsiCatalogSql::searchText(device)};
            for (const QVariant& value : values)
                insertDevice.addBindValue(value);
            if (!insertDevice.exec())
                return d->failQuery(insertDevice.lastError(), QStringLiteral("recording ") + file.path);
        }
        return true;
    };

    bool ok = true;
    QSet<QString> readNow;
    while (state.filesDone < toRead.size()) {
        const QVector<ReadResult> arrived = queue.take(200);
        for (const ReadResult& read : arrived) {
            ++state.filesDone;
            state.bytesDone += toRead.at(read.file).size;
            readNow.insert(toRead.at(read.file).path);
            if (ok && !write(read)) {
                ok = false;
                cancelled.store(true);
            }
        }
        state.elapsedMs = timer.elapsed();
        if (ok && progress)
            progress(state);
    }
    for (std::thread& reader : readers)
        reader.join();
    updateFile.finish();
    insertFile.finish();
    dropDevices.finish();
    insertDevice.finish();
    if (!ok)
        return rollBack();
    out.filesRead = toRead.size();
    out.bytesRead = state.bytesTotal;

    // The folder's state after the scan: its devices, its other XML files and every failing file.
    {
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.prepare(QStringLiteral("SELECT count(*), (SELECT count(*) FROM files f WHERE status = 2 AND ")
            + underFolder(prefix) + QStringLiteral(") FROM devices d JOIN files f ON f.id = d.file_id WHERE ")
            + underFolder(prefix));
        query.addBindValue(prefix);
        query.addBindValue(prefix);
        if (!query.exec() || !query.next())
            return d->failQuery(query.lastError(), QStringLiteral("counting devices")), rollBack();
        out.devices = query.value(0).toInt();
        out.filesNotEsi = query.value(1).toInt();
    }
    {
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.prepare(QStringLiteral("SELECT f.path, f.error, f.line, f.col FROM files f WHERE status IN (1, 3) AND ")
            + underFolder(prefix) + QStringLiteral(" ORDER BY f.path"));
        query.addBindValue(prefix);
        if (!query.exec())
            return d->failQuery(query.lastError(), QStringLiteral("listing failures")), rollBack();
        while (query.next()) {
            const QString path = query.value(0).toString();
            out.failures.append({path, query.value(1).toString(), query.value(2).toLongLong(),
                query.value(3).toLongLong(), !readNow.contains(path)});
        }
    }
    if (!d->exec(QStringLiteral("COMMIT"), QStringLiteral("saving the scan")))
        return rollBack();
    out.elapsedMs = timer.elapsed();
    if (out.filesFound == out.filesNotEsi)
        return d->fail(Error::NoEsiFiles, folder + QStringLiteral(": no ESI files (*.xml with root \"EtherCATInfo\")"));
    return true;
}
