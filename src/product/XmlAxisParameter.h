#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One axis parameter of a module, owning its value descriptor and deleted by its XmlAxisParameters block.
/// Read with command 6 and written with command 5.
class KIVCORE_EXPORT XmlAxisParameter : public XmlParameterInterface
{
public:
    XmlAxisParameter()
        : XmlParameterInterface(AxisParameterKind)
    { }

    QString toString() override;
};
