#include "product/XmlCANopenEntry.h"

#include "values/XmlValueInterface.h"

XmlCANopenEntry::XmlCANopenEntry(unsigned int subIndex, QString name, bool pdoMapped)
    : m_subIndex(subIndex)
    , m_name(name)
    , m_pdoMapped(pdoMapped)
{ }

XmlCANopenEntry::~XmlCANopenEntry()
{
    delete m_value;
}

QString XmlCANopenEntry::isPdoMappedAsString() const
{
    return m_pdoMapped ? QStringLiteral("true") : QStringLiteral("false");
}

QString XmlCANopenEntry::toString(QString indent) const
{
    QString text;
    text.reserve(96 + m_name.size());
    text += QLatin1String("XmlCANopenEntry(subIndex: ");
    text += QString::number(m_subIndex);
    text += QLatin1String(", name: ");
    text += m_name;
    text += QLatin1String(", pdoMapped: ");
    text += isPdoMappedAsString();
    text += QLatin1Char(')');
    if (m_value) {
        text += QLatin1Char('\n');
        text += m_value->toString(indent);
    }
    return text;
}
