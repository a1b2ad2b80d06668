#include "esi/XmlEtherCATInfo.h"

#include "esi/ESIXmlDescriptions.h"
#include "esi/ESIXmlVendor.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStringList>

XmlEtherCATInfo::~XmlEtherCATInfo()
{
    delete m_vendor;
    qDeleteAll(m_descriptions);
}

void XmlEtherCATInfo::setVendor(ESIXmlVendor* vendor)
{
    if (vendor == m_vendor)
        return;
    delete m_vendor;
    m_vendor = vendor;
}

void XmlEtherCATInfo::setDescriptions(const QList<ESIXmlDescriptions*>& descriptions)
{
    if (descriptions == m_descriptions)
        return;
    const QList<ESIXmlDescriptions*> previous = m_descriptions;
    m_descriptions = descriptions;
    for (ESIXmlDescriptions* old : previous) {
        if (!m_descriptions.contains(old))
            delete old;
    }
}

QString XmlEtherCATInfo::toString() const
{
    const QString indent(QLatin1Char('\t'));
    const QLatin1String null("\n\tNULL");
    QString text = QStringLiteral("\tEtherCATInfo\n{");
    text += m_vendor ? m_vendor->toString(indent) : QString(null);
    for (const ESIXmlDescriptions* descriptions : m_descriptions) {
        if (descriptions)
            descriptions->appendTo(text, indent);
        else
            text += null;
    }
    text += QLatin1String("\n}");
    return text;
}

void XmlEtherCATInfo::toJson(QJsonObject& json) const
{
    QJsonArray descriptions;
    for (const ESIXmlDescriptions* entry : m_descriptions) {
        if (!entry)
            continue;
        QJsonObject object;
        entry->toJson(object);
        descriptions.append(object);
    }
    json.insert(QStringLiteral("EtherCATInfo"), descriptions);
    if (m_vendor)
        m_vendor->toJson(json);
}
