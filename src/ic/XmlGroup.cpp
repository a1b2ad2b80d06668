#include "ic/XmlGroup.h"

XmlGroup::XmlGroup(QString name, unsigned int id)
    : m_name(name)
    , m_id(id)
{ }

QString XmlGroup::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text = indent + QLatin1String("XmlGroup(name: ") + m_name + QLatin1String(", id: ") + QString::number(m_id)
        + QLatin1Char(')');
    return text;
}
