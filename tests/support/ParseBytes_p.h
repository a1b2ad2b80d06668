#pragma once

#include "RenderAll.h"

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"
#include "ic/XmlProductIC.h"
#include "product/KIVXmlParser.h"
#include "product/XmlProductInterface.h"
#include "product/XmlProductModule.h"

#include <QByteArray>
#include <QTemporaryFile>

#include <memory>

/// A parse result of either parser, freed the way its keeper frees it.
struct ParsedBytes
{
    ParsedBytes() = default;
    ParsedBytes(const ParsedBytes&) = delete;
    ParsedBytes& operator=(const ParsedBytes&) = delete;
    ~ParsedBytes() { KIVXmlParser::deleteProduct(product); }

    bool isNull() const { return !product && !esi; }
    /// The debug text, or an empty text for a null result.
    QString debugText() const
    {
        if (auto* module = qobject_cast<XmlProductModule*>(product))
            return module->toString();
        if (auto* ic = qobject_cast<XmlProductIC*>(product))
            return ic->toString();
        return esi ? esi->toString() : QString();
    }

    XmlProductInterface* product = nullptr;
    std::unique_ptr<XmlEtherCATInfo> esi;
};

/// Parses `bytes` through a file, as callers do, with the parser the file kind asks for.
inline void parseBytes(const QByteArray& bytes, bool isEsi, ParsedBytes* parsed)
{
    QTemporaryFile file;
    if (!file.open())
        return;
    file.write(bytes);
    file.seek(0);
    if (isEsi)
        parsed->esi.reset(ESIXmlParser::parseInfo(&file));
    else
        parsed->product = KIVXmlParser::parseProduct(&file);
}
