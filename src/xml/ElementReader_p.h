#pragma once

// The one element loop of every parser in the library (product modules, ICs, values, ESI). Each element
// declares its accepted children as a table of name -> action and, in its ElementInfo, how it treats
// any other child; the loop, the own-end-tag return and the discard at the end of the document live
// here only. This is the only place (with ElementReader.cpp and RootReader_p.h) that advances a reader.

#include <QLatin1String>
#include <QList>
#include <QString>
#include <QXmlStreamAttributes>
#include <QXmlStreamReader>
#include <QtAlgorithms>

#include <cstddef>

namespace KivXml {

/// What an element does with a child start tag that its table does not list.
enum class OtherChild
{
    Report, ///< a debug line; not skipped: its descendants are met (and reported) as the element's children
    Ignore, ///< nothing; its descendants are met as the element's children
    Skip, ///< skipped up to the next end tag of its name (no nesting count)
};

template<typename Obj> struct ChildRule
{
    QLatin1String name;
    void (*apply)(QXmlStreamReader* reader, Obj* obj);
};

/// An element's own name and its deviations from the plain loop.
struct ElementInfo
{
    QLatin1String name; ///< own element name: its end tag returns the object
    OtherChild other = OtherChild::Report;
    const char* reporter = nullptr; ///< first item of a report: a function signature or short name
    const char* note = nullptr; ///< an item written between the reporter and the child's name
    const char* noteBefore = nullptr; ///< a one-item message written ahead of the report
    bool dropTokenAfterReport = false; ///< read and drop one more token after a report
};

/// Acts on a child start tag that no rule names, as `info` says.
void handleOtherChild(QXmlStreamReader* reader, const ElementInfo& info);

/// A child's text: reads exactly one more token and returns its text, so only the first run of
/// character data counts, and leading whitespace, a comment or an empty child yield what that token holds.
QString readText(QXmlStreamReader* reader);

/// Reads one token and drops it unseen.
void dropToken(QXmlStreamReader* reader);

/// Reads tokens up to and including the next end tag called `name`. Counts no nesting: an inner element
/// of the same name ends the skip early. False when the document (or the reader) ends first.
template<typename Name> bool skipUntilEndTag(QXmlStreamReader* reader, const Name& name)
{
    while (!reader->atEnd() && reader->tokenType() != QXmlStreamReader::EndDocument) {
        if (reader->readNext() == QXmlStreamReader::EndElement && reader->name() == name)
            return true;
    }
    return false;
}

/// Skips the reader's current element up to the next end tag of its name.
void skipElement(QXmlStreamReader* reader);

// Attribute conversions; a text that does not convert gives 0, as an absent attribute does.
QString attrText(const QXmlStreamAttributes& attributes, QLatin1String name);
int attrInt(const QXmlStreamAttributes& attributes, QLatin1String name); ///< signed 32-bit, base 10
unsigned int attrUInt(const QXmlStreamAttributes& attributes, QLatin1String name); ///< unsigned 32-bit, base 10
unsigned int attrUIntAuto(const QXmlStreamAttributes& attributes, QLatin1String name); ///< base 0: 0x hex, 0 octal
float attrFloat(const QXmlStreamAttributes& attributes, QLatin1String name);

/// How the end of the document frees a half-built result: an object goes with everything attached to
/// it; a list goes with its members.
template<typename T> void discard(T* result)
{
    delete result;
}

template<typename T> void discard(QList<T*>* result)
{
    qDeleteAll(*result);
    delete result;
}

/// Runs the child loop for `obj`, whose start tag is the reader's current token. Returns `obj` at its own
/// end tag; when the document (or the reader) ends first, discards `obj` and returns null.
template<typename Obj>
Obj* parseElement(
    QXmlStreamReader* reader, Obj* obj, const ElementInfo& info, const ChildRule<Obj>* rules, std::size_t ruleCount)
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
                handleOtherChild(reader, info);
        } else if (token == QXmlStreamReader::EndElement && reader->name() == info.name) {
            return obj;
        }
    }
    discard(obj);
    return nullptr;
}

template<typename Obj, std::size_t N>
Obj* parseElement(QXmlStreamReader* reader, Obj* obj, const ElementInfo& info, const ChildRule<Obj> (&rules)[N])
{
    return parseElement(reader, obj, info, rules, N);
}

/// An element without accepted children: every child start tag is an other child.
template<typename Obj> Obj* parseElement(QXmlStreamReader* reader, Obj* obj, const ElementInfo& info)
{
    return parseElement<Obj>(reader, obj, info, nullptr, 0);
}

/// For the elements that read their attributes only and then consume the rest of their element: the
/// object, or null (and freed) when the document ends first.
template<typename Obj> Obj* consumeElement(QXmlStreamReader* reader, Obj* obj, QLatin1String name)
{
    if (skipUntilEndTag(reader, name))
        return obj;
    discard(obj);
    return nullptr;
}

} // namespace KivXml
