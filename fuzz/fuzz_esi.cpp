// ESI files: any bytes parse to null or to a model whose debug text and JSON export can be written.

#include "FuzzInput.h"
#include "RenderAll.h"

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"

#include <memory>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    silenceQtMessages();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    std::unique_ptr<XmlEtherCATInfo> info(ESIXmlParser::parseInfo(fuzzInputFile(data, size)));
    if (info)
        RenderAll::esi(info.get());
    return 0;
}
