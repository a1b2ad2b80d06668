#pragma once

#include "values/XmlValueInterface.h"

/// Signed 32-bit number ("value_signed"): range, default, decimals, unit, access and option bits.
class KIVCORE_EXPORT XmlValueSigned : public XmlValueInterface
{
public:
    XmlValueSigned(int min, int max, int def, int decimals, QString unit, QString access, unsigned int options);

    bool hasMin() override { return true; }
    bool hasMax() override { return true; }
    bool hasDefault() override { return true; }
    bool hasDecimals() override { return m_decimals != 0; }
    bool hasUnit() override { return true; }
    /// Deliberately true here and false for the unsigned kind.
    bool hasOptions() override { return true; }

    /// The 64 bits as a signed decimal number; no scaling, decimals or unit.
    QString getStringFromValue(unsigned long long value) override;
    /// Writes the options as one UTF-16 character, not as a number: kept so, readers of the text rely on it.
    QString toString(QString indent) override;
};
