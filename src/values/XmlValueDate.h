#pragma once

#include "values/XmlValueReadOut.h"

/// A BCD date 0xYYYYMMDD ("value_date"), shown as YYYY-MM-DD.
class KIVCORE_EXPORT XmlValueDate : public XmlValueReadOut
{
public:
    XmlValueDate(QString access, QString descShort, QString descLong);
    QString getStringFromValue(unsigned long long value) override;
};
