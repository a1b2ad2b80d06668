#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One digital input of a module.
class KIVCORE_EXPORT XmlDigitalInput : public XmlParameterInterface
{
public:
    XmlDigitalInput()
        : XmlParameterInterface(DigitalInputKind)
    { }

    QString toString() override;
};
