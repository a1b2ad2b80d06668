#include "esi/ESIXmlSubItem.h"
#include "text/DebugText_p.h"

QString ESIXmlSubItem::toString(QString indent, int position) const
{
    QString s;
    s.reserve(48 + m_name.size() + 4 * indent.size());
    KivText::openBlock(s, indent, QString(QLatin1String("SubItem[") + QString::number(position) + QLatin1Char(']')));
    KivText::field(s, indent, QLatin1String("\tName: "), m_name);
    KivText::closeBlock(s, indent);
    return s;
}
