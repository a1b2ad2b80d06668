#pragma once

#include "values/XmlValueReadOut.h"

/// A BCD time of day 0xHHMMSS in the low 24 bits ("value_time"), shown as HH:MM:SS.
class KIVCORE_EXPORT XmlValueTime : public XmlValueReadOut
{
public:
    XmlValueTime(QString access, QString descShort, QString descLong);
    QString getStringFromValue(unsigned long long value) override;
};
