#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One analog input of a module.
class KIVCORE_EXPORT XmlAnalogInput : public XmlParameterInterface
{
public:
    XmlAnalogInput()
        : XmlParameterInterface(AnalogInputKind)
    { }

    QString toString() override;
};
