#pragma once

// Child actions shared by the module side's element tables. Each element declares its children as
// KivParse::ChildRule entries built from these templates, so leaves and containers differ only by tables.

#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlNumberedItem.h"
#include "product/XmlParameterInterface.h"
#include "values/XmlValueInterface.h"

#include <cstddef>

namespace KivParse {

inline XmlValueInterface* currentValue(XmlParameterInterface* owner)
{
    return owner->value();
}
inline XmlValueInterface* currentValue(XmlNumberedItem* owner)
{
    return owner->getValue();
}
inline XmlValueInterface* currentValue(XmlCANopenEntry* owner)
{
    return owner->getValue();
}

/// A value child parsed by `Parse` and stored with setValue: the last one wins, and the one it replaces
/// (which the setter deliberately keeps) is freed here.
template<typename Owner, auto Parse> void storeValue(QXmlStreamReader* reader, Owner* owner)
{
    XmlValueInterface* previous = currentValue(owner);
    replaceAndFree(previous, [&] { owner->setValue(Parse(reader)); });
}

/// A "desc" child: one more description line, escapes replaced.
template<typename Owner> void storeDescription(QXmlStreamReader* reader, Owner* owner)
{
    owner->appendDescription(readUnicodeTextChild(reader));
}

/// A plain text child stored with `Set`.
template<typename Owner, auto Set> void storeText(QXmlStreamReader* reader, Owner* owner)
{
    (owner->*Set)(readTextChild(reader));
}

/// A child element parsed by `Parse` and handed to the owner's append operation `Append`.
template<typename Owner, auto Parse, auto Append> void appendChild(QXmlStreamReader* reader, Owner* owner)
{
    (owner->*Append)(Parse(reader));
}

/// A single child element parsed by `Parse` and stored with `Set`; a repeated element replaces the
/// earlier object, which the setter deliberately keeps, so it is freed here.
template<typename Owner, auto Parse, auto Get, auto Set> void replaceChild(QXmlStreamReader* reader, Owner* owner)
{
    replaceAndFree((owner->*Get)(), [&] { (owner->*Set)(Parse(reader)); });
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
