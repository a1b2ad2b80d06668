#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One analog input of a module, owning its value descriptor; deleted by the XmlAnalogInputs that hold it.
class KIVCORE_EXPORT XmlAnalogInput : public XmlParameterInterface
{
public:
    XmlAnalogInput()
        : XmlParameterInterface(AnalogInputKind)
    { }

    QString toString() override;
};
