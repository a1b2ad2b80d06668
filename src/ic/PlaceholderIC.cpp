// Placeholder until the IC product lands: the root reads as no product.
#include "ic/XmlProductIC.h"
#include "product/KIVXmlParser.h"
XmlProductIC* KIVXmlParser::parseProductIC(QXmlStreamReader*) { return nullptr; }
