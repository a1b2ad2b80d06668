#include "esi/EsiCatalog.h"

#include "esi/EsiCatalog_p.h"

#include <QAtomicInt>
#include <QDir>
#include <QFileInfo>
#include <QSqlRecord>
#include <QStandardPaths>
#include <QVariant>

namespace {

/// "KIVE" in the database's application_id: tells our catalogs from other programs' databases.
constexpr qint32 kApplicationId = 0x4B495645;

const char kSchema[][420] = {
    "CREATE TABLE files(id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE, size INTEGER NOT NULL, "
    "mtime INTEGER NOT NULL, status INTEGER NOT NULL, error TEXT, line INTEGER, col INTEGER)",
    "CREATE TABLE devices(file_id INTEGER NOT NULL, position INTEGER NOT NULL, vendor_id INTEGER NOT NULL, "
    "vendor_name TEXT, product_code INTEGER NOT NULL, revision INTEGER NOT NULL, type TEXT, name TEXT, "
    "names TEXT, group_type TEXT, group_name TEXT, search TEXT, PRIMARY KEY(file_id, position)) WITHOUT ROWID",
    "CREATE INDEX devices_identity ON devices(vendor_id, product_code, revision)",
};

const QLatin1String kDeviceColumns("SELECT f.path, d.position, d.vendor_id, d.vendor_name, d.product_code, "
                                   "d.revision, d.type, d.name, d.names, d.group_type, d.group_name "
                                   "FROM devices d JOIN files f ON f.id = d.file_id");
const QLatin1String kDeviceOrder(" ORDER BY d.vendor_id, d.product_code, d.revision, f.path, d.position");

EsiDeviceIdentity identityFrom(const QSqlQuery& query)
{
    EsiDeviceIdentity identity;
    identity.file = query.value(0).toString();
    identity.position = query.value(1).toInt();
    identity.vendorId = static_cast<quint32>(query.value(2).toLongLong());
    identity.vendorName = query.value(3).toString();
    identity.productCode = static_cast<quint32>(query.value(4).toLongLong());
    identity.revision = static_cast<quint32>(query.value(5).toLongLong());
    identity.type = query.value(6).toString();
    identity.name = query.value(7).toString();
    const QString names = query.value(8).toString();
    if (!names.isEmpty())
        identity.names = names.split(QLatin1Char('\n'));
    identity.group = query.value(9).toString();
    identity.groupName = query.value(10).toString();
    return identity;
}

} // namespace

QString EsiCatalogSql::searchText(const EsiDeviceIdentity& identity)
{
    const QString text = identity.type + QLatin1Char('\n') + identity.names.join(QLatin1Char('\n'));
    return text.toCaseFolded();
}

bool EsiCatalog::Private::failQuery(const QSqlError& sqlError, const QString& doing)
{
    const QString code = sqlError.nativeErrorCode();
    // SQLite's result codes: 5 busy, 6 locked, 26 not a database.
    if (code == QLatin1String("5") || code == QLatin1String("6"))
        return fail(Error::Locked,
            path + QStringLiteral(": the database is locked by another program (waited ") + QString::number(busyTimeout)
                + QStringLiteral(" ms); try again when it is done"));
    if (code == QLatin1String("26"))
        return fail(Error::NotCatalog, path + QStringLiteral(": not an ESI catalog (not an SQLite database)"));
    return fail(Error::Database, path + QStringLiteral(": ") + doing + QStringLiteral(": ") + sqlError.text());
}

bool EsiCatalog::Private::exec(const QString& sql, const QString& doing)
{
    QSqlQuery query(database());
    if (query.exec(sql))
        return true;
    return failQuery(query.lastError(), doing);
}

EsiCatalog::EsiCatalog()
    : d(new Private)
{
    static QAtomicInt counter;
    d->connection = QStringLiteral("kivcore-esi-catalog-") + QString::number(counter.fetchAndAddRelaxed(1));
}

EsiCatalog::~EsiCatalog()
{
    close();
}

QString EsiCatalog::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + QStringLiteral("/esi-catalog.sqlite");
}

void EsiCatalog::setBusyTimeout(int milliseconds)
{
    d->busyTimeout = qMax(0, milliseconds);
}

void EsiCatalog::setThreadCount(int threads)
{
    d->threads = qMax(0, threads);
}

bool EsiCatalog::isOpen() const
{
    return QSqlDatabase::contains(d->connection) && d->database().isOpen();
}

QString EsiCatalog::path() const
{
    return d->path;
}

EsiCatalog::Error EsiCatalog::error() const
{
    return d->error;
}

QString EsiCatalog::errorString() const
{
    return d->errorString;
}

void EsiCatalog::close()
{
    if (!QSqlDatabase::contains(d->connection))
        return;
    {
        QSqlDatabase database = d->database();
        database.close();
    }
    QSqlDatabase::removeDatabase(d->connection);
}

bool EsiCatalog::open(const QString& path, bool create)
{
    close();
    d->path = path;
    d->error = Error::None;
    d->errorString.clear();
    const QFileInfo info(path);
    if (!info.exists()) {
        if (!create)
            return d->fail(Error::CannotOpen,
                path + QStringLiteral(": no ESI catalog there; make one with 'kivtool esi index DIR'"));
        if (!QDir().mkpath(info.absolutePath()))
            return d->fail(Error::CannotOpen, path + QStringLiteral(": cannot create its folder"));
    }
    if (QSqlDatabase::drivers().indexOf(QStringLiteral("QSQLITE")) < 0)
        return d->fail(Error::CannotOpen, QStringLiteral("Qt's SQLite driver (QSQLITE) is not installed"));
    if (!d->openDatabase(create)) {
        close(); // after every handle on the connection is gone
        return false;
    }
    return true;
}

bool EsiCatalog::Private::openDatabase(bool create)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    database.setDatabaseName(path);
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=") + QString::number(busyTimeout);
    if (!create)
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    database.setConnectOptions(options);
    if (!database.open())
        return fail(Error::CannotOpen, path + QStringLiteral(": ") + database.lastError().text());

    QSqlQuery query(database);
    if (!query.exec(QStringLiteral("SELECT (SELECT application_id FROM pragma_application_id), "
                                   "(SELECT user_version FROM pragma_user_version), "
                                   "(SELECT count(*) FROM sqlite_master)"))
        || !query.next())
        return failQuery(query.lastError(), QStringLiteral("reading its version"));
    const qint32 applicationId = query.value(0).toInt();
    const int version = query.value(1).toInt();
    const int objects = query.value(2).toInt();
    query.finish();
    if (applicationId == 0 && version == 0 && objects == 0 && create) {
        const QString doing = QStringLiteral("creating the catalog");
        bool ok = exec(QStringLiteral("BEGIN IMMEDIATE"), doing);
        for (const char* statement : kSchema)
            ok = ok && exec(QLatin1String(statement), doing);
        ok = ok && exec(QStringLiteral("PRAGMA application_id = ") + QString::number(kApplicationId), doing)
            && exec(QStringLiteral("PRAGMA user_version = ") + QString::number(kSchemaVersion), doing)
            && exec(QStringLiteral("COMMIT"), doing);
        if (!ok)
            QSqlQuery(database).exec(QStringLiteral("ROLLBACK"));
        return ok;
    }
    if (applicationId != kApplicationId || version <= 0)
        return fail(Error::NotCatalog,
            path + QStringLiteral(": not an ESI catalog (another program's database); choose another --db file"));
    if (version > kSchemaVersion)
        return fail(Error::Newer,
            path + QStringLiteral(": written by a newer version (catalog layout ") + QString::number(version)
                + QStringLiteral(", this one reads up to ") + QString::number(kSchemaVersion)
                + QStringLiteral("); use that version or another --db file"));
    return true;
}

QVector<EsiDeviceIdentity> EsiCatalog::find(const EsiCatalogQuery& asked, bool* substituted)
{
    if (substituted)
        *substituted = false;
    QVector<EsiDeviceIdentity> devices;
    if (!isOpen()) {
        d->fail(Error::CannotOpen, QStringLiteral("the catalog is not open"));
        return devices;
    }
    const EsiCatalogQuery& query = asked;
    const bool nearest = query.nearest && query.vendorId && query.productCode && query.revision;
    QStringList conditions;
    QVariantList values;
    const auto where = [&](const QString& condition, const QVariant& value) {
        conditions << condition;
        values << value;
    };
    if (query.vendorId)
        where(QStringLiteral("d.vendor_id = ?"), qlonglong(*query.vendorId));
    if (query.productCode)
        where(QStringLiteral("d.product_code = ?"), qlonglong(*query.productCode));
    if (!query.text.isEmpty())
        where(QStringLiteral("instr(d.search, ?) > 0"), query.text.toCaseFolded());
    const auto run = [&](const QString& sql, const QVariantList& bound, QSqlQuery* statement) {
        statement->setForwardOnly(true);
        if (!statement->prepare(sql))
            return d->failQuery(statement->lastError(), QStringLiteral("looking up devices"));
        for (const QVariant& value : bound)
            statement->addBindValue(value);
        if (!statement->exec())
            return d->failQuery(statement->lastError(), QStringLiteral("looking up devices"));
        return true;
    };

    bool byRevision = query.revision.has_value();
    quint32 revision = query.revision.value_or(0);
    if (nearest) {
        // The asked revision, else the highest below it, else the lowest above it: never another product.
        const QString base = QStringLiteral(" FROM devices d WHERE ") + conditions.join(QLatin1String(" AND "));
        const QVariant asked = qlonglong(*query.revision);
        const QString sql[] = {
            QStringLiteral("SELECT revision") + base + QStringLiteral(" AND d.revision = ? LIMIT 1"),
            QStringLiteral("SELECT max(revision)") + base + QStringLiteral(" AND d.revision < ?"),
            QStringLiteral("SELECT min(revision)") + base + QStringLiteral(" AND d.revision > ?"),
        };
        byRevision = false;
        for (const QString& step : sql) {
            QSqlQuery statement(d->database());
            if (!run(step, values + QVariantList {asked}, &statement))
                return devices;
            if (statement.next() && !statement.value(0).isNull()) {
                revision = static_cast<quint32>(statement.value(0).toLongLong());
                byRevision = true;
                break;
            }
        }
        if (!byRevision)
            return devices;
        if (substituted)
            *substituted = revision != *query.revision;
    }
    if (byRevision)
        where(QStringLiteral("d.revision = ?"), qlonglong(revision));

    QString sql = kDeviceColumns;
    if (!conditions.isEmpty())
        sql += QStringLiteral(" WHERE ") + conditions.join(QLatin1String(" AND "));
    sql += kDeviceOrder;
    QSqlQuery statement(d->database());
    if (!run(sql, values, &statement))
        return devices;
    while (statement.next())
        devices << identityFrom(statement);
    return devices;
}
