#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QString>

class InputFile;

/// One difference between two files: an element added or removed (with its whole JSON), or changed (with
/// the old and new value of each attribute that differs, and only those).
struct DiffChange
{
    enum Kind
    {
        Added,
        Removed,
        Changed,
    };
    Kind kind = Changed;
    QString path; ///< e.g. "register 0x91 BRG_DECAY / variant Mixed decay / field t_slow"
    QJsonValue oldValue; ///< null when added
    QJsonValue newValue; ///< null when removed
};

/// "added", "removed" or "changed".
QString changeKindName(DiffChange::Kind kind);

/// The model of a file as the diff compares it: the library's JSON export for modules and ICs
/// (docs/json.md), and for ESI files an export of the device data that also keeps names and texts.
QJsonObject diffModel(const InputFile& input);

/// What changed from `oldModel` to `newModel` (both from diffModel of files of one kind). Elements are
/// paired by identity, never by position, so reordering alone changes nothing; attributes the model
/// derives from others (a variant's mask, canonical access letters, a choice's min and max) are left out,
/// so that one edit shows once.
QList<DiffChange> diffModels(const QJsonObject& oldModel, const QJsonObject& newModel);
