#pragma once

#include "values/XmlValueReadOut.h"

/// A version 0xMMMMmmmm ("value_version"), each half's nibbles read as one decimal number: 0x00020010 is 2.10.
class KIVCORE_EXPORT XmlValueVersion : public XmlValueReadOut
{
public:
    XmlValueVersion(QString access, QString descShort, QString descLong);
    QString getStringFromValue(unsigned long long value) override;
};
