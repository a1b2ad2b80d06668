#pragma once

#include "values/XmlValueReadOut.h"

/// Up to eight characters packed into the value, most significant byte first ("value_ascii").
class KIVCORE_EXPORT XmlValueASCII : public XmlValueReadOut
{
    Q_OBJECT
public:
    XmlValueASCII(QString access, QString descShort, QString descLong);
    QString getStringFromValue(unsigned long long value) override;
};
