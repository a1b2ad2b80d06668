#pragma once

// Nesting-aware walking of a document, for readers that take elements as XML defines them: a child is
// skipped with everything below it, and an element's text is all its character data. The element loop of
// ElementReader_p.h keeps the models' historical reading (no nesting count, the first token as the text);
// this walk is its strict sibling, for readers that must not inherit those readings (the ESI catalog).

#include <QString>
#include <QXmlStreamReader>

namespace KivXml {

/// Reads up to the document's first start element. False when the document ends or fails first.
bool readToRootElement(QXmlStreamReader* reader);

/// With the reader on an element's start tag, or after one of its children was walked completely: reads
/// up to the next child start tag (true) or the element's own end tag (false; also at an error or the end
/// of the document, which the reader then reports).
bool readNextChild(QXmlStreamReader* reader);

/// With the reader on a start tag: reads through its matching end tag, inner elements of the same name
/// included.
void skipElementTree(QXmlStreamReader* reader);

/// With the reader on a start tag: the element's character data (CDATA and entities included; comments,
/// processing instructions and the text of child elements left out), read through its end tag.
QString readElementOwnText(QXmlStreamReader* reader);

} // namespace KivXml
