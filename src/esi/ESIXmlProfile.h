#pragma once

#include "kivcore_export.h"

#include <QString>

class ESIXmlDictionary;
class QJsonObject;

/// A device profile (its number), owning and deleting its object dictionary, which may be null; deleted by
/// its device.
class KIVCORE_EXPORT ESIXmlProfile
{
public:
    ESIXmlProfile() = default;
    ~ESIXmlProfile();
    Q_DISABLE_COPY(ESIXmlProfile)

    QString getProfileNo() const { return m_profileNo; }
    void setProfileNo(const QString& profileNo) { m_profileNo = profileNo; }
    ESIXmlDictionary* getDictionary() const { return m_dictionary; }
    /// Takes ownership and deletes the dictionary held before.
    void setDictionary(ESIXmlDictionary* dictionary);

    QString toString(QString indent) const;
    /// Writes "ProfileNo", then lets the dictionary write its keys into the same object.
    void toJson(QJsonObject& json) const;

private:
    QString m_profileNo;
    ESIXmlDictionary* m_dictionary = nullptr;
};
