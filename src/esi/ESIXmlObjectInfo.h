#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class ESIXmlSubItem;
class QJsonObject;

/// The info of a dictionary object (its default value), owning and deleting its sub-items; deleted by its
/// object.
class KIVCORE_EXPORT ESIXmlObjectInfo
{
public:
    ESIXmlObjectInfo() = default;
    ~ESIXmlObjectInfo();
    Q_DISABLE_COPY(ESIXmlObjectInfo)

    /// 32 bits as the parser stores them: wider defaults keep their low 32 bits, and values from
    /// 0x80000000 up read back negative.
    int getDefaultValue() const { return m_defaultValue; }
    void setDefaultValue(int defaultValue) { m_defaultValue = defaultValue; }

    /// Takes ownership; null is stored as given.
    void addSubItem(ESIXmlSubItem* subItem) { m_subItems.append(subItem); }
    const QList<ESIXmlSubItem*>& getSubItems() const { return m_subItems; }

    QString toString(QString indent) const;
    /// Writes "DefaultValue" (the stored int as a number) and "Info" (array of the sub-items' names).
    void toJson(QJsonObject& json) const;

private:
    int m_defaultValue = 0;
    QList<ESIXmlSubItem*> m_subItems;
};
