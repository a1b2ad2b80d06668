#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One digital output of a module, owning its value descriptor; deleted by the XmlDigitalOutputs that hold
/// it.
class KIVCORE_EXPORT XmlDigitalOutput : public XmlParameterInterface
{
public:
    XmlDigitalOutput()
        : XmlParameterInterface(DigitalOutputKind)
    { }

    QString toString() override;
};
