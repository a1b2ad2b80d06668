#pragma once

// The one child loop that every element parse function of the product parser shares. Each element
// declares its accepted children as a table of name -> action; the loop, the unknown-child report, the
// own-end-tag return and the delete-and-null at the end of the document live here only.

#include <QLatin1String>
#include <QString>
#include <QXmlStreamAttributes>
#include <QXmlStreamReader>

#include <cstddef>

namespace KivParse {

/// How an element reports a child element that it does not accept.
enum class UnknownChild {
    Plain, ///< signature, child name
    CouldNotParse, ///< signature, "could not parse:", child name
};

template<typename Obj>
struct ChildRule
{
    QLatin1String name;
    void (*apply)(QXmlStreamReader* reader, Obj* obj);
};

struct ElementInfo
{
    QLatin1String name; ///< own element name: its end tag returns the object
    const char* signature; ///< the reporting parse function's full signature
    UnknownChild report = UnknownChild::Plain;
    const char* noteBeforeUnknown = nullptr; ///< a one-item message written ahead of the unknown-child report
    bool dropTokenAfterUnknown = false; ///< read and ignore the token after an unknown start tag
};

/// Writes the unknown-child message for the reader's current start element, with the element's deviations.
void handleUnknownChild(QXmlStreamReader* reader, const ElementInfo& info);

/// A text child: reads exactly one more token and returns its text (the first run of character data).
QString readTextChild(QXmlStreamReader* reader);

/// The same, with the escapes of the text replaced.
QString readUnicodeTextChild(QXmlStreamReader* reader);

// Attribute conversions; a text that does not convert gives 0, as an absent attribute does.
QString attrText(const QXmlStreamAttributes& attributes, QLatin1String name);
int attrInt(const QXmlStreamAttributes& attributes, QLatin1String name); ///< signed 32-bit, base 10
unsigned int attrUInt(const QXmlStreamAttributes& attributes, QLatin1String name); ///< unsigned 32-bit, base 10
unsigned int attrUIntAuto(const QXmlStreamAttributes& attributes, QLatin1String name); ///< base 0: 0x hex, 0 octal
float attrFloat(const QXmlStreamAttributes& attributes, QLatin1String name);

/// Runs the child loop for `obj`, whose start tag is the reader's current token. Returns `obj` at its own
/// end tag; when the document (or the reader) ends first, deletes `obj` with everything attached to it and
/// returns null.
template<typename Obj>
Obj* parseElement(QXmlStreamReader* reader, Obj* obj, const ElementInfo& info, const ChildRule<Obj>* rules,
    std::size_t ruleCount)
{
    while (!reader->atEnd() && reader->tokenType() != QXmlStreamReader::EndDocument) {
        const QXmlStreamReader::TokenType token = reader->readNext();
        if (token == QXmlStreamReader::StartElement) {
            const QStringRef name = reader->name();
            const ChildRule<Obj>* rule = rules;
            const ChildRule<Obj>* const end = rules + ruleCount;
            while (rule != end && name != rule->name)
                ++rule;
            if (rule != end)
                rule->apply(reader, obj);
            else
                handleUnknownChild(reader, info);
        } else if (token == QXmlStreamReader::EndElement && reader->name() == info.name) {
            return obj;
        }
    }
    delete obj;
    return nullptr;
}

template<typename Obj, std::size_t N>
Obj* parseElement(QXmlStreamReader* reader, Obj* obj, const ElementInfo& info, const ChildRule<Obj> (&rules)[N])
{
    return parseElement(reader, obj, info, rules, N);
}

/// An element without accepted children: every child start tag is unknown.
template<typename Obj>
Obj* parseElement(QXmlStreamReader* reader, Obj* obj, const ElementInfo& info)
{
    return parseElement<Obj>(reader, obj, info, nullptr, 0);
}

/// Reads tokens up to and including the end tag `name`. Returns false (and the caller frees its object)
/// when the document ends first. Used by the value elements that consume their whole element.
bool consumeUntilEndTag(QXmlStreamReader* reader, QLatin1String name);

/// A setter that replaces without deleting leaves the earlier object unreachable from outside the parser,
/// so the parse function frees it after the replacement.
template<typename T, typename Setter>
void replaceAndFree(T* previous, Setter&& store)
{
    store();
    delete previous;
}

} // namespace KivParse
