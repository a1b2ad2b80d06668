#pragma once

// The child actions that element tables are built from, for every parser of the library. A table row
// names a child and one of these; only what no row shape covers is written out beside its table.

#include "xml/ElementReader_p.h"

#include <QList>
#include <QXmlStreamReader>

#include <type_traits>

namespace KivXml {

template<typename Class, typename Member> constexpr Class* memberClass(Member Class::*)
{
    return nullptr;
}

/// `owner` as the class that declares the member `M`. Applying a base's member through a derived pointer
/// draws a false strict-aliasing warning from GCC 12.
template<auto M, typename Owner> auto* through(Owner* owner)
{
    return static_cast<std::remove_pointer_t<decltype(memberClass(M))>*>(owner);
}

/// A child whose text, read by `Read`, is handed to the owner's `Set` (or append) operation.
template<typename Owner, auto Read, auto Set> void storeRead(QXmlStreamReader* reader, Owner* owner)
{
    (through<Set>(owner)->*Set)(Read(reader));
}

/// A plain text child stored with `Set`.
template<typename Owner, auto Set> void storeText(QXmlStreamReader* reader, Owner* owner)
{
    (through<Set>(owner)->*Set)(readText(reader));
}

/// A child element parsed by `Parse` and handed to the owner's append (or taking set) operation `Append`.
template<typename Owner, auto Parse, auto Append> void appendChild(QXmlStreamReader* reader, Owner* owner)
{
    (through<Append>(owner)->*Append)(Parse(reader));
}

/// A child element parsed by `Parse` and appended to a list result.
template<typename Item, auto Parse> void appendToList(QXmlStreamReader* reader, QList<Item*>* list)
{
    list->append(Parse(reader));
}

/// A child element parsed by `Parse` whose content the owner's `Append` copies; the parsed object is
/// freed right after.
template<typename Owner, auto Parse, auto Append> void appendCopy(QXmlStreamReader* reader, Owner* owner)
{
    auto* parsed = Parse(reader);
    (through<Append>(owner)->*Append)(parsed);
    delete parsed;
}

/// A single child element parsed by `Parse` and stored with `Set`. A repeated element replaces the earlier
/// object through a setter that deliberately keeps it; nothing outside the parser can reach it any more,
/// so it is freed here.
template<typename Owner, auto Parse, auto Get, auto Set> void replaceChild(QXmlStreamReader* reader, Owner* owner)
{
    auto* previous = (through<Get>(owner)->*Get)();
    (through<Set>(owner)->*Set)(Parse(reader));
    delete previous;
}

/// A child that is skipped up to its end tag.
template<typename Owner> void skipChild(QXmlStreamReader* reader, Owner*)
{
    skipElement(reader);
}

/// A child that is a plain container: nothing is done, its children are met by the same loop.
template<typename Owner> void enterChild(QXmlStreamReader*, Owner*)
{ }

} // namespace KivXml
