#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlDriveApSetting.h"

#include <QString>

/// A named group of axis-parameter settings, owning and deleting its settings; deleted by its drive
/// configuration.
class KIVCORE_EXPORT XmlDriveApSettings : public XmlItemContainer<XmlDriveApSetting>
{
public:
    explicit XmlDriveApSettings(QString name)
        : m_name(name)
    { }

    QString name() const { return m_name; }
    /// The group's own list.
    QList<XmlDriveApSetting*>* driveApSettings() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendDriveApSetting(XmlDriveApSetting* setting) { m_items.append(setting); }
    QString toString() const;

private:
    QString m_name;
};
