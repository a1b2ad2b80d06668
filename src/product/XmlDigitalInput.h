#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One digital input of a module, owning its value descriptor; deleted by the XmlDigitalInputs that hold
/// it.
class KIVCORE_EXPORT XmlDigitalInput : public XmlParameterInterface
{
public:
    XmlDigitalInput()
        : XmlParameterInterface(DigitalInputKind)
    { }

    QString toString() override;
};
