#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class ESIXmlDevice;
class ESIXmlGroup;
class QJsonObject;

/// The "Descriptions" section of an ESI file, owning and deleting its groups and devices; deleted by the
/// XmlEtherCATInfo that holds it.
class KIVCORE_EXPORT ESIXmlDescriptions
{
public:
    ESIXmlDescriptions() = default;
    ~ESIXmlDescriptions();
    Q_DISABLE_COPY(ESIXmlDescriptions)

    /// Takes ownership; null is stored as given.
    void addGroup(ESIXmlGroup* group) { m_groups.append(group); }
    /// Takes ownership; null is stored as given.
    void addDevice(ESIXmlDevice* device) { m_devices.append(device); }
    const QList<ESIXmlGroup*>& getGroups() const { return m_groups; }
    const QList<ESIXmlDevice*>& getDevices() const { return m_devices; }

    /// Groups first, then devices.
    QString toString(QString indent) const;
    /// The same text appended to `text`: the whole file's text is built in one buffer, not copied per level.
    void appendTo(QString& text, const QString& indent) const;
    /// Writes "Descriptions" (one object per device); groups are not exported.
    void toJson(QJsonObject& json) const;

private:
    QList<ESIXmlGroup*> m_groups;
    QList<ESIXmlDevice*> m_devices;
};
