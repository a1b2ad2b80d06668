#pragma once

#include "kivcore_export.h"
#include "product/XmlParameterInterface.h"

/// One global parameter of a bank, owning its value descriptor and deleted by its XmlGlobalParameters bank.
/// Read and written with command 10.
class KIVCORE_EXPORT XmlGlobalParameter : public XmlParameterInterface
{
public:
    XmlGlobalParameter()
        : XmlParameterInterface(GlobalParameterKind)
    { }

    QString toString() override;
};
