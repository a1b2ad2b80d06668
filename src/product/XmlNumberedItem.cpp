#include "product/XmlNumberedItem.h"

#include "product/XmlCoordinate.h"
#include "product/XmlIrq.h"
#include "text/DebugText_p.h"
#include "values/XmlValueInterface.h"

XmlNumberedItem::~XmlNumberedItem()
{
    delete m_value;
}

QString XmlNumberedItem::toStringWithPrefix(QLatin1String prefix) const
{
    return KivText::leafText(prefix, m_type, m_name, m_descriptions, m_value);
}

QString XmlIrq::toString() const
{
    return toStringWithPrefix(QLatin1String("XmlIrq("));
}

QString XmlCoordinate::toString() const
{
    return toStringWithPrefix(QLatin1String("XmlCoordinate("));
}
