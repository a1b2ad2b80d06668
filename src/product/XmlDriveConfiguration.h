#pragma once

#include "base/XmlItemContainer.h"
#include "kivcore_export.h"
#include "product/XmlDriveApSettings.h"

#include <QString>

/// A ready-made drive set-up of a module, owning and deleting its setting groups; deleted by the module.
/// A numbered, named list of groups that a tool writes to the module's axis parameters.
class KIVCORE_EXPORT XmlDriveConfiguration : public XmlItemContainer<XmlDriveApSettings>
{
public:
    XmlDriveConfiguration(unsigned char id, QString name)
        : m_id(id)
        , m_name(name)
    { }

    unsigned char id() const { return m_id; }
    QString name() const { return m_name; }
    /// The configuration's own list.
    QList<XmlDriveApSettings*>* driveApSettings() { return &m_items; }
    /// Takes ownership; a null pointer is appended like any other.
    void appendDriveApSettings(XmlDriveApSettings* settings) { m_items.append(settings); }
    QString toString() const;

private:
    unsigned char m_id;
    QString m_name;
};
