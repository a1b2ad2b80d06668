#pragma once

// Every public header of the library.

#include "product/KIVXmlParser.h"
#include "product/XmlProductInterface.h"
#include "product/XmlProductModule.h"

#include "values/XmlValueInterface.h"

#include "ic/XmlProductIC.h"
