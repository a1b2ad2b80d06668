#include "esi/ESIXmlGroup.h"
#include "text/DebugText_p.h"

QString ESIXmlGroup::toString(QString indent) const
{
    QString s;
    s.reserve(48 + m_type.size() + m_name.size() + 5 * indent.size());
    KivText::openBlock(s, indent, QLatin1String("Group"));
    KivText::field(s, indent, QLatin1String("\tType: "), m_type);
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    KivText::closeBlock(s, indent);
    return s;
}
