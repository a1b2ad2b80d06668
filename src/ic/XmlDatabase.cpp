#include "ic/XmlDatabase.h"

#include "values/XmlValueBool2.h"
#include "values/XmlValueDb.h"

void XmlDatabase::appendValueDb(XmlValueDb* value)
{
    if (!value)
        return;
    const QString name = value->getName();
    if (name == QLatin1String("R_Sense"))
        m_rSense = value->getValue();
    else if (name == QLatin1String("V_SRTL"))
        m_vSRTL = value->getValue();
    else if (name == QLatin1String("V_SRTH"))
        m_vSRTH = value->getValue();
}

void XmlDatabase::appendValueBool2(XmlValueBool2* value)
{
    if (value)
        m_offset = value->getValue();
}

QString XmlDatabase::toString() const
{
    // "for:  " with two blanks is what log readers know; kept.
    QString text = QLatin1String("XmlDatabase(for:  ") + m_for + QLatin1String(", name: ") + m_name
        + QLatin1String(")\n{\nR_Sense: ") + QString::number(m_rSense) + QLatin1String("\nV_SRTL: ")
        + QString::number(m_vSRTL) + QLatin1String("\nV_SRTH: ") + QString::number(m_vSRTH)
        + QLatin1String("\noffset: ") + QString::number(m_offset ? 1 : 0) + QLatin1String("\n}");
    return text;
}
