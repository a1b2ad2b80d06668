#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>
#include <QtGlobal>

class ESIXmlProfile;
class QJsonObject;

/// A device of an ESI file, owning and deleting its profiles, with its identification texts as written in
/// the file; deleted by the descriptions that hold it.
class KIVCORE_EXPORT ESIXmlDevice
{
public:
    ESIXmlDevice() = default;
    ~ESIXmlDevice();
    Q_DISABLE_COPY(ESIXmlDevice)

    QString getPhysics() const { return m_physics; }
    void setDevicePhysics(const QString& physics) { m_physics = physics; }
    QString getType() const { return m_type; }
    void setType(const QString& type) { m_type = type; }
    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString getGroupType() const { return m_groupType; }
    void setGroupType(const QString& groupType) { m_groupType = groupType; }

    /// The "ProductCode" attribute text as written ("#x00010200").
    QString getProductCodeText() const { return m_productCode; }
    void setProductCode(const QString& productCode) { m_productCode = productCode; }
    /// The "RevisionNo" attribute text as written.
    QString getRevisionNoText() const { return m_revisionNo; }
    void setRevisionNo(const QString& revisionNo) { m_revisionNo = revisionNo; }

    /// The text after its first two characters (the "#x" prefix) read as hexadecimal; 0 when unreadable.
    /// A decimal text is not recognised: "1" gives 0 and "123" gives 3.
    quint32 getProductCode() const;
    /// Read like getProductCode().
    quint32 getRevisionNo() const;

    /// Takes ownership; null is stored as given.
    void addProfile(ESIXmlProfile* profile) { m_profiles.append(profile); }
    const QList<ESIXmlProfile*>& getProfiles() const { return m_profiles; }

    QString toString(QString indent) const;
    /// Writes "Device" (one object per profile), "ProductCode" and "RevisionNo" as numbers.
    void toJson(QJsonObject& json) const;

private:
    QString m_physics;
    QString m_type;
    QString m_productCode;
    QString m_revisionNo;
    QString m_name;
    QString m_groupType;
    QList<ESIXmlProfile*> m_profiles;
};
