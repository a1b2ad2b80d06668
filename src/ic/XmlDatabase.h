#pragma once

#include "kivcore_export.h"

#include <QString>

class XmlValueDb;
class XmlValueBool2;

/// The board-level quantities that turn register values into physical units (sense resistor, the two
/// full-scale sense voltages, the offset flag), deleted by the IC or module that holds it. Keeps only the
/// numbers of the value elements handed to it and owns no objects.
class KIVCORE_EXPORT XmlDatabase
{
public:
    XmlDatabase() = default;

    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString getFor() const { return m_for; }
    void setFor(QString forText) { m_for = forText; }
    unsigned int getRSense() const { return m_rSense; }
    void setRSense(unsigned int value) { m_rSense = value; }
    unsigned int getVSRTL() const { return m_vSRTL; }
    void setVSRTL(unsigned int value) { m_vSRTL = value; }
    unsigned int getVSRTH() const { return m_vSRTH; }
    void setVSRTH(unsigned int value) { m_vSRTH = value; }
    bool getOffset() const { return m_offset; }
    void setOffset(bool offset) { m_offset = offset; }

    /// Copies the value of a descriptor named "R_Sense", "V_SRTL" or "V_SRTH" (case-sensitive); other
    /// names and null change nothing. Does not take ownership.
    void appendValueDb(XmlValueDb* value);
    /// Every descriptor sets the offset, whatever its name: the last one wins. Does not take ownership.
    void appendValueBool2(XmlValueBool2* value);

    QString toString() const;

private:
    QString m_name;
    QString m_for;
    unsigned int m_rSense = 0;
    unsigned int m_vSRTL = 0;
    unsigned int m_vSRTH = 0;
    bool m_offset = false;
};
