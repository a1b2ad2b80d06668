// Product description files: any bytes parse to null or to a product that every renderer survives.

#include "FuzzInput.h"
#include "RenderAll.h"

#include "product/KIVXmlParser.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    silenceQtMessages();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (XmlProductInterface* product = KIVXmlParser::parseProduct(fuzzInputFile(data, size))) {
        RenderAll::product(product);
        KIVXmlParser::deleteProduct(product);
    }
    return 0;
}
