#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One digital output of a module.
class KIVCORE_EXPORT XmlDigitalOutput : public XmlParameterInterface
{
public:
    XmlDigitalOutput()
        : XmlParameterInterface(DigitalOutputKind)
    { }

    QString toString() override;
};
