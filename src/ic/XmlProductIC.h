#pragma once
// Placeholder until the IC product lands.
#include "product/XmlProductInterface.h"
class KIVCORE_EXPORT XmlProductIC : public XmlProductInterface
{
    Q_OBJECT
public:
    XmlProductIC() : XmlProductInterface(0) {}
};
