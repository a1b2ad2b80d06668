#include "JsonOutput.h"

#include "InputFile.h"

#include "esi/XmlEtherCATInfo.h"
#include "ic/IcJson.h"
#include "product/ModuleJson.h"

QJsonObject jsonObject(const InputFile& input)
{
    switch (input.kind()) {
    case FileKind::Module:
        return ModuleJson::toJson(input.module());
    case FileKind::IC:
        return IcJson::toJson(input.ic());
    case FileKind::ESI:
        break;
    }
    QJsonObject json;
    if (XmlEtherCATInfo* info = input.esi())
        info->toJson(json);
    return json;
}
