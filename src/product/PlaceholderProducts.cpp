// Placeholder until the module and IC products land: both roots still read as no product.
#include "ic/XmlProductIC.h"
#include "product/KIVXmlParser.h"
#include "product/XmlProductModule.h"
XmlProductModule* KIVXmlParser::parseProductModule(QXmlStreamReader*) { return nullptr; }
XmlProductIC* KIVXmlParser::parseProductIC(QXmlStreamReader*) { return nullptr; }
