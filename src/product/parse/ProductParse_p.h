#pragma once

// What the product parser's element tables share beyond the reading layer: the escape-replacing text
// readers, the value and description rows, and the leaf pattern of the parameter family.

#include "product/KIVXmlParser.h"
#include "product/XmlParameterInterface.h"
#include "xml/ChildActions_p.h"
#include "xml/ElementReader_p.h"

#include <cstddef>
#include <type_traits>

namespace KivParse {

using namespace KivXml;

/// The note of the elements that report an unknown child as "<signature> could not parse: <name>".
inline constexpr char kCouldNotParse[] = "could not parse:";

/// A text child with its escapes replaced.
inline QString readUnicodeText(QXmlStreamReader* reader)
{
    QString text = readText(reader);
    KIVXmlParser::replaceUnicode(text);
    return text;
}

/// A text attribute with its escapes replaced.
inline QString attrUnicodeText(const QXmlStreamAttributes& attributes, QLatin1String name)
{
    QString text = attrText(attributes, name);
    KIVXmlParser::replaceUnicode(text);
    return text;
}

/// A "desc" child: one more description line, escapes replaced.
template<typename Owner> void storeDescription(QXmlStreamReader* reader, Owner* owner)
{
    storeRead<Owner, &readUnicodeText, &Owner::appendDescription>(reader, owner);
}

/// The getter of an owner's value descriptor: parameters call it value(), all others getValue().
template<typename Owner> constexpr auto valueGetter()
{
    if constexpr (std::is_base_of_v<XmlParameterInterface, Owner>)
        return &XmlParameterInterface::value;
    else
        return &Owner::getValue;
}

/// A value child parsed by `Parse`: the last one wins, and the one it replaces is freed.
template<typename Owner, auto Parse> void storeValue(QXmlStreamReader* reader, Owner* owner)
{
    replaceChild<Owner, Parse, valueGetter<Owner>(), &Owner::setValue>(reader, owner);
}

/// The leaf pattern of the parameter family: attributes "type", "name", "identifier", then the leaf's
/// own children. The type goes through the leaf's setter, so the parameter kinds keep its low 8 bits.
template<typename Leaf, std::size_t N>
Leaf* parseLeaf(QXmlStreamReader* reader, const ElementInfo& info, const ChildRule<Leaf> (&rules)[N])
{
    Leaf* leaf = new Leaf;
    const QXmlStreamAttributes attributes = reader->attributes();
    leaf->setType(attrInt(attributes, QLatin1String("type")));
    leaf->setName(attrText(attributes, QLatin1String("name")));
    leaf->setIdentifier(attrText(attributes, QLatin1String("identifier")));
    return parseElement(reader, leaf, info, rules);
}

} // namespace KivParse
