#pragma once

// What the ESI parser's element tables share beyond the reading layer.

#include "xml/ChildActions_p.h"
#include "xml/ElementReader_p.h"

#include <QByteArray>
#include <QXmlStreamReader>

namespace EsiParse {

using namespace KivXml;

/// A child's text read as a decimal integer; unreadable text gives 0.
inline int readDecimal(QXmlStreamReader* reader)
{
    return readText(reader).toInt(nullptr, 10);
}

/// The icons are stored as the hexadecimal text the file holds, not decoded.
inline QByteArray readImage(QXmlStreamReader* reader)
{
    return readText(reader).toLocal8Bit();
}

/// True for a "Name" without an "LcId" attribute or with LcId "1033" (English).
bool isEnglishName(const QXmlStreamReader* reader);

/// A "Name" child: taken only in English. A name in another language is passed over; the loop meets its
/// text and end tag.
template<typename Owner> void storeEnglishName(QXmlStreamReader* reader, Owner* owner)
{
    if (isEnglishName(reader))
        owner->setName(readText(reader));
}

} // namespace EsiParse
