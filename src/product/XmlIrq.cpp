#include "product/XmlIrq.h"

#include "product/ParameterText_p.h"

XmlIrq::~XmlIrq()
{
    delete m_value;
}

QString XmlIrq::toString() const
{
    return KivText::leafText(QLatin1String("XmlIrq("), m_type, m_name, m_descriptions, m_value);
}
