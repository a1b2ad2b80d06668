#pragma once

// The one root dispatch of the library's file readers: the token loop over a whole file that hands each
// start element with a known root name to its parse function and reports the others.

#include <QDebug>
#include <QIODevice>
#include <QLatin1String>
#include <QXmlStreamReader>

#include <cstddef>

namespace KivXml {

template<typename Result> struct RootRule
{
    QLatin1String name;
    Result* (*parse)(QXmlStreamReader* reader);
};

/// What the root loop does with the tokens that are neither the document start nor a start element.
enum class OtherRootToken
{
    /// Drops the input (QXmlStreamReader::clear), which ends reading: deliberately, so a comment or DTD
    /// ahead of the root ends the parse before the root is seen.
    DropInput,
    /// Reports end tags ("is EndElement: ") and character data ("is Characters: "); ignores the rest.
    Report,
};

struct RootInfo
{
    const char* reporter; ///< first item of every message
    OtherRootToken other;
};

/// Reads `device` to its end or first error. A start element named in `rules` is parsed by its rule and
/// becomes the result; a later root replaces an earlier result, which nothing else can reach and which
/// `release` frees. Other start elements are reported and not skipped: their children are tested as root
/// candidates in turn. Returns the result, null when no root was found.
template<typename Result, std::size_t N>
Result* readRoot(QIODevice* device, const RootInfo& info, const RootRule<Result> (&rules)[N], void (*release)(Result*))
{
    QXmlStreamReader reader(device);
    Result* result = nullptr;
    while (!reader.atEnd() && !reader.hasError()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        switch (token) {
        case QXmlStreamReader::Invalid:
            return result;
        case QXmlStreamReader::StartDocument:
            break;
        case QXmlStreamReader::StartElement: {
            const QStringRef name = reader.name();
            const RootRule<Result>* rule = rules;
            while (rule != rules + N && name != rule->name)
                ++rule;
            if (rule == rules + N) {
                qDebug() << info.reporter << "Unknown root node type!" << name;
                break;
            }
            Result* parsed = rule->parse(&reader);
            release(result);
            result = parsed;
            break;
        }
        default:
            if (info.other == OtherRootToken::DropInput)
                reader.clear();
            else if (token == QXmlStreamReader::EndElement)
                qDebug() << info.reporter << "is EndElement: " << reader.name();
            else if (token == QXmlStreamReader::Characters)
                qDebug() << info.reporter << "is Characters: " << reader.text();
            break;
        }
    }
    return result;
}

} // namespace KivXml
