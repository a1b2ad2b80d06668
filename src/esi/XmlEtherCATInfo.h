#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QString>

class ESIXmlDescriptions;
class ESIXmlVendor;
class QJsonObject;

/// The parsed ESI file, owning and deleting its vendor (may be null) and its descriptions sections; the
/// caller of ESIXmlParser::parseInfo owns and deletes it.
class KIVCORE_EXPORT XmlEtherCATInfo
{
public:
    XmlEtherCATInfo() = default;
    ~XmlEtherCATInfo();
    Q_DISABLE_COPY(XmlEtherCATInfo)

    ESIXmlVendor* getVendor() const { return m_vendor; }
    /// Takes ownership and deletes the vendor held before.
    void setVendor(ESIXmlVendor* vendor);

    /// Takes ownership; null is stored as given.
    void appendDescriptions(ESIXmlDescriptions* descriptions) { m_descriptions.append(descriptions); }
    /// Takes ownership of the members and deletes the descriptions held before.
    void setDescriptions(const QList<ESIXmlDescriptions*>& descriptions);
    const QList<ESIXmlDescriptions*>& getDescriptions() const { return m_descriptions; }

    /// "\tEtherCATInfo", "\n{", the vendor block (or "NULL"), every descriptions block (or "NULL"), "\n}".
    /// The blocks are indented by one tab.
    QString toString() const;
    /// Writes "EtherCATInfo" (one object per descriptions) and, with a vendor, "VID" and "Icon".
    void toJson(QJsonObject& json) const;

private:
    ESIXmlVendor* m_vendor = nullptr;
    QList<ESIXmlDescriptions*> m_descriptions;
};
