#include "esi/ESIXmlSubItem.h"

#include "esi/ESIXmlText_p.h"

QString ESIXmlSubItem::toString(QString indent, int position) const
{
    QString s;
    s.reserve(48 + m_name.size() + 4 * indent.size());
    EsiText::openBlock(s, indent, QString(QLatin1String("SubItem[") + QString::number(position) + QLatin1Char(']')));
    EsiText::field(s, indent, QLatin1String("\tName: "), m_name);
    EsiText::closeBlock(s, indent);
    return s;
}
