#pragma once

#include "values/XmlValueInterface.h"

/// Unsigned 32-bit number ("value_unsigned"), stored zero-extended; the only kind whose element also
/// carries a display format (string, multiplier, divisor).
class KIVCORE_EXPORT XmlValueUnsigned : public XmlValueInterface
{
public:
    XmlValueUnsigned(unsigned int min, unsigned int max, unsigned int def, int decimals, QString unit, QString access,
        unsigned int options);

    bool hasMin() override { return true; }
    bool hasMax() override { return true; }
    bool hasDefault() override { return true; }
    bool hasDecimals() override { return m_decimals != 0; }
    bool hasUnit() override { return true; }

    /// The 64 bits as an unsigned decimal number; no scaling, decimals or unit.
    QString getStringFromValue(unsigned long long value) override;
    QString toString(QString indent) override;
};
