// Placeholder until the module product lands: the root reads as no product.
#include "product/KIVXmlParser.h"
#include "product/XmlProductModule.h"
XmlProductModule* KIVXmlParser::parseProductModule(QXmlStreamReader*) { return nullptr; }
