#include "product/XmlCoordinate.h"

#include "product/ParameterText_p.h"

XmlCoordinate::~XmlCoordinate()
{
    delete m_value;
}

QString XmlCoordinate::toString() const
{
    return KivText::leafText(QLatin1String("XmlCoordinate("), m_type, m_name, m_descriptions, m_value);
}
