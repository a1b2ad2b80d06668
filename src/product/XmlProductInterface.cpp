#include "product/XmlProductInterface.h"

XmlProductInterface::XmlProductInterface(int type)
    : m_type(type)
{
}

XmlProductInterface::~XmlProductInterface() = default;
