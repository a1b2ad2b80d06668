#pragma once

#include "esi/EsiCatalogReader.h"
#include "kivcore_export.h"

#include <QString>
#include <QVector>
#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

/// Where a folder scan stands, for progress displays.
struct KIVCORE_EXPORT EsiScanProgress
{
    int filesDone = 0;
    int filesTotal = 0; ///< files to read (changed or new), not the unchanged ones
    qint64 bytesDone = 0;
    qint64 bytesTotal = 0;
    qint64 elapsedMs = 0;
};

/// A file of the scanned folder that could not be read, with the reason and where it was found.
struct KIVCORE_EXPORT EsiScanFailure
{
    QString file;
    QString reason;
    qint64 line = 0; ///< 0: no position (the file cannot be opened)
    qint64 column = 0;
    bool fromEarlierScan = false; ///< unchanged since the scan that recorded it, so not read again
};

/// What a folder scan did.
struct KIVCORE_EXPORT EsiScanResult
{
    int filesFound = 0; ///< *.xml files under the folder
    int filesRead = 0; ///< read this time: new or changed size or modification time
    int filesUnchanged = 0;
    int filesRemoved = 0; ///< vanished since the last scan, dropped with their devices
    int filesNotEsi = 0; ///< XML files of another kind (root other than "EtherCATInfo")
    int devices = 0; ///< devices of the folder in the catalog after the scan
    qint64 bytesRead = 0;
    qint64 elapsedMs = 0;
    QVector<EsiScanFailure> failures; ///< every failing file of the folder, sorted by path
};

/// What to look for; unset fields match everything. `text` matches a case-insensitive part of any name
/// (every language) or the type.
struct KIVCORE_EXPORT EsiCatalogQuery
{
    std::optional<quint32> vendorId;
    std::optional<quint32> productCode;
    std::optional<quint32> revision;
    /// With vendor, product and revision set: when that revision is missing, take the highest revision
    /// below it, else the lowest above it, of the same vendor and product.
    bool nearest = false;
    QString text;
};

/// An index of the devices in a folder of ESI files, kept in an SQLite database (Qt's QSQLITE driver).
/// Re-indexing reads only files whose size or modification time changed and drops vanished ones; files are
/// read in parallel, and everything a scan writes is committed in one transaction, so an interrupted or
/// failed scan leaves the catalog as it was. A database that another program made, or a newer kivcore,
/// is refused, never changed.
///
/// An EsiCatalog belongs to the thread that opened it (as its database connection does).
class KIVCORE_EXPORT EsiCatalog
{
public:
    enum class Error
    {
        None,
        CannotOpen, ///< the database file cannot be opened or created (or does not exist, read-only)
        NotCatalog, ///< the file is not an ESI catalog (another program's database, or no database at all)
        Newer, ///< a catalog written by a newer version, whose layout this one does not know
        Locked, ///< another program held the database beyond the busy timeout
        NoFolder, ///< the folder to scan does not exist or is not a folder
        NoEsiFiles, ///< the folder holds no ESI file
        Database, ///< any other database failure
    };

    /// The layout version kept in the database's user_version.
    static constexpr int kSchemaVersion = 1;

    EsiCatalog();
    ~EsiCatalog();
    EsiCatalog(const EsiCatalog&) = delete;
    EsiCatalog& operator=(const EsiCatalog&) = delete;

    /// A file under the user's cache folder (QStandardPaths::CacheLocation).
    static QString defaultPath();

    /// Opens (and with `create`, creates) the catalog at `path`. False with error() set when the file is
    /// not a catalog, is newer, is locked, or cannot be opened; without `create`, also when it is missing.
    bool open(const QString& path, bool create = true);
    void close();
    bool isOpen() const;
    QString path() const;

    /// How long a locked database is waited for before giving up (default 5000 ms). Before open().
    void setBusyTimeout(int milliseconds);
    /// How many files are read at once (default: the available cores).
    void setThreadCount(int threads);

    /// Brings the catalog up to date with `folder` (searched recursively for *.xml). A file that fails is
    /// recorded with its reason and listed in the result; the scan goes on. False (and nothing written)
    /// when the folder or the database fails; NoEsiFiles when the folder has no ESI file.
    bool index(
        const QString& folder, EsiScanResult* result, const std::function<void(const EsiScanProgress&)>& progress = {});

    /// The devices that match, ordered by vendor, product, revision, file and position. With
    /// `query.nearest`, `substituted` tells whether another revision stands in for the one asked.
    QVector<EsiDeviceIdentity> find(const EsiCatalogQuery& query, bool* substituted = nullptr);

    Error error() const;
    QString errorString() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
