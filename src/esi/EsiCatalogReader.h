#pragma once

#include "kivcore_export.h"

#include <QString>
#include <QStringList>
#include <QVector>
#include <QtGlobal>

class QIODevice;

/// One device of an ESI file as the catalog lists it: its identity as the bus reports it (vendor id,
/// product code, revision number) and what a person needs to recognise it.
struct KIVCORE_EXPORT EsiDeviceIdentity
{
    quint32 vendorId = 0;
    QString vendorName;
    quint32 productCode = 0;
    quint32 revision = 0;
    QString type; ///< the "Type" text, the order code
    QString name; ///< in the reader's language, or the first fallback present (see EsiCatalogReader)
    QStringList names; ///< every name the device has, in file order (all languages)
    QString group; ///< the "GroupType" text
    QString groupName; ///< that group's name in the file's "Groups", in the same language order
    QString file; ///< the path the reader was given
    int position = 0; ///< index among the file's devices, from 0, in file order

    bool operator==(const EsiDeviceIdentity& other) const;
    bool operator!=(const EsiDeviceIdentity& other) const { return !(*this == other); }
};

/// Lists the devices of one ESI file in a single streaming pass, reading identities the way ESI files
/// mean them, where the ESIXml model keeps its own historical readings: numbers are "#x" hexadecimal or
/// decimal, a device's name is only its own "Name" child (never one inside "Slots" or another section),
/// and a device without an English name takes another language's. Everything else (dictionaries,
/// process data, EEPROM, images) is skipped whole.
///
/// Names follow this order: the reader's language, then 1033 (English), then a name without "LcId",
/// then the first name of any other language. The file's declared encoding (or BOM) decides how it is
/// decoded. A file that is not well-formed, whose root is not "EtherCATInfo", or whose identities cannot
/// be read fails as a whole: no devices, and the reason with its line and column.
class KIVCORE_EXPORT EsiCatalogReader
{
public:
    enum class Status
    {
        Ok,
        CannotOpen, ///< the file cannot be opened for reading
        NotEsi, ///< well-formed up to its root, which is not "EtherCATInfo"
        Invalid, ///< not well-formed, truncated, or an identity that cannot be read
    };

    explicit EsiCatalogReader(int languageId = 1033);

    /// Reads the file at `path`. True when it was read whole.
    bool read(const QString& path);
    /// Reads `device`, open for reading; `fileName` is what the identities and messages name.
    bool read(QIODevice* device, const QString& fileName);

    Status status() const { return m_status; }
    const QVector<EsiDeviceIdentity>& devices() const { return m_devices; }
    QString errorString() const { return m_error; }
    /// Where the failure was found, from 1; 0 when it concerns no position (cannot open).
    qint64 errorLine() const { return m_line; }
    qint64 errorColumn() const { return m_column; }
    /// "FILE:LINE:COLUMN: REASON", or "FILE: REASON" without a position; empty after a success.
    QString errorMessage() const;

    /// An ESI number: "#x" (or "0x") followed by hexadecimal digits, or decimal digits; surrounding blanks
    /// are ignored. False for anything else and for values above 32 bits unsigned.
    static bool parseNumber(const QString& text, quint32* value);

private:
    friend class EsiCatalogParse;
    void fail(Status status, const QString& reason, qint64 line, qint64 column);

    int m_language;
    QString m_file;
    Status m_status = Status::Ok;
    QString m_error;
    qint64 m_line = 0;
    qint64 m_column = 0;
    QVector<EsiDeviceIdentity> m_devices;
};
