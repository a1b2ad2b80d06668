#pragma once
// Placeholder until the module product lands.
#include "product/XmlProductInterface.h"
class KIVCORE_EXPORT XmlProductModule : public XmlProductInterface
{
    Q_OBJECT
public:
    XmlProductModule() : XmlProductInterface(1) {}
};
