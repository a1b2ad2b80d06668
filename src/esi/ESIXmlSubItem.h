#pragma once

#include "kivcore_export.h"

#include <QString>

/// A sub-item of an object's info, of which only the name is kept; deleted by the info that holds it.
class KIVCORE_EXPORT ESIXmlSubItem
{
public:
    ESIXmlSubItem() = default;
    Q_DISABLE_COPY(ESIXmlSubItem)

    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }

    /// Heads the block "SubItem[position]": the owner passes the sub-item's place in its list (from 0).
    QString toString(QString indent, int position) const;

private:
    QString m_name;
};
