#pragma once

#include "kivcore_export.h"

#include <QString>

/// One (axis parameter number, value) pair of a drive configuration group, deleted by that group.
/// Immutable.
class KIVCORE_EXPORT XmlDriveApSetting
{
public:
    XmlDriveApSetting(unsigned char type, int value)
        : m_type(type)
        , m_value(value)
    { }

    /// The number of the axis parameter that the value is written to.
    unsigned char type() const { return m_type; }
    int value() const { return m_value; }
    QString toString() const;

private:
    const unsigned char m_type;
    const int m_value;
};
