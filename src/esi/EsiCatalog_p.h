#pragma once

// The database side of EsiCatalog, shared by its opening and query code (EsiCatalog.cpp) and its folder
// scan (EsiCatalogScan.cpp).

#include "esi/EsiCatalog.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QString>

struct EsiCatalog::Private
{
    QString connection; ///< the unique Qt connection name of this catalog
    QString path;
    int busyTimeout = 5000;
    int threads = 0; ///< 0: the available cores
    Error error = Error::None;
    QString errorString;

    QSqlDatabase database() const { return QSqlDatabase::database(connection, false); }

    bool fail(Error kind, const QString& message)
    {
        error = kind;
        errorString = message;
        return false;
    }
    /// A failed statement as an error: Locked for a busy database, NotCatalog for a file that is no
    /// database, Database otherwise.
    bool failQuery(const QSqlError& sqlError, const QString& doing);
    /// Opens the connection and checks (or, with `create`, makes) the catalog's layout.
    bool openDatabase(bool create);
    /// Runs `sql`; false with the error set.
    bool exec(const QString& sql, const QString& doing);
};

namespace EsiCatalogSql {

/// The whole search text of a device: its type and names, case-folded.
QString searchText(const EsiDeviceIdentity& identity);

} // namespace EsiCatalogSql
