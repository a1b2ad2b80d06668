#include "esi/ESIXmlGroup.h"

#include "esi/ESIXmlText_p.h"

QString ESIXmlGroup::toString(QString indent) const
{
    QString s;
    s.reserve(48 + m_type.size() + m_name.size() + 5 * indent.size());
    EsiText::openBlock(s, indent, QLatin1String("Group"));
    EsiText::field(s, indent, QLatin1String("\tType: "), m_type);
    EsiText::field(s, indent, QLatin1String("\tName: "), m_name);
    EsiText::closeBlock(s, indent);
    return s;
}
