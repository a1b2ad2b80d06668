#pragma once

// The one child loop of the ESI parse functions. Each element declares its children as a table of
// name -> action and how it treats any other child; the end-of-document discard and the own-end-tag return
// live here only. It differs from the product parser's loop: other children are ignored, skipped or
// reported per element, and child texts are read as the single next token.

#include <QLatin1String>
#include <QList>
#include <QString>
#include <QXmlStreamReader>

#include <cstddef>

namespace EsiParse {

/// What an element does with a child start tag that its table does not list.
enum class OtherChild
{
    Ignore, ///< nothing: its descendants are met as children of the element
    Skip, ///< skipped up to its end tag
    Report, ///< a debug line; its descendants are met (and reported) in turn
};

template<typename Obj> struct ChildRule
{
    QLatin1String name;
    void (*apply)(QXmlStreamReader* reader, Obj* obj);
};

struct ElementInfo
{
    QLatin1String name; ///< own element name: its end tag returns the result
    OtherChild other = OtherChild::Ignore;
    const char* shortName = nullptr; ///< first item of a report, e.g. "ESIXmlParser::parseDevice()"
    const char* note = nullptr; ///< an item written between the short name and the child's name
    bool dropTokenAfterReport = false; ///< read and ignore one more token after a report
};

/// Acts on a child start tag that no rule names.
void handleOtherChild(QXmlStreamReader* reader, const ElementInfo& info);

/// A child's text: reads one more token and takes its text, so leading whitespace, a comment or an
/// empty child yields what that token holds.
QString readText(QXmlStreamReader* reader);

/// True for a "Name" without an "LcId" attribute or with LcId "1033" (English).
bool isEnglishName(const QXmlStreamReader* reader);

/// Skips the reader's current element up to the next end tag of its name.
void skipElement(QXmlStreamReader* reader);

/// The action of table rows whose child is skipped up to its end tag.
template<typename Obj> void skipChild(QXmlStreamReader* reader, Obj*)
{
    skipElement(reader);
}

template<typename T> void discard(T* result)
{
    delete result;
}

template<typename T> void discard(QList<T*>* result)
{
    qDeleteAll(*result);
    delete result;
}

/// Runs the child loop for `result`, whose start tag is the reader's current token. Returns `result` at
/// its own end tag; when the document (or the reader) ends first, deletes it with everything attached and
/// returns null.
template<typename Obj>
Obj* parseElement(
    QXmlStreamReader* reader, Obj* result, const ElementInfo& info, const ChildRule<Obj>* rules, std::size_t ruleCount)
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
                rule->apply(reader, result);
            else
                handleOtherChild(reader, info);
        } else if (token == QXmlStreamReader::EndElement && reader->name() == info.name) {
            return result;
        }
    }
    discard(result);
    return nullptr;
}

template<typename Obj, std::size_t N>
Obj* parseElement(QXmlStreamReader* reader, Obj* result, const ElementInfo& info, const ChildRule<Obj> (&rules)[N])
{
    return parseElement(reader, result, info, rules, N);
}

} // namespace EsiParse
