#include "xml/ElementWalk_p.h"

namespace KivXml {

namespace {

bool readerGoesOn(const QXmlStreamReader* reader)
{
    return !reader->atEnd() && !reader->hasError();
}

} // namespace

bool readToRootElement(QXmlStreamReader* reader)
{
    while (readerGoesOn(reader)) {
        if (reader->readNext() == QXmlStreamReader::StartElement)
            return true;
    }
    return false;
}

bool readNextChild(QXmlStreamReader* reader)
{
    while (readerGoesOn(reader)) {
        switch (reader->readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::EndElement:
            return false;
        default:
            break;
        }
    }
    return false;
}

void skipElementTree(QXmlStreamReader* reader)
{
    int depth = 1;
    while (depth > 0 && readerGoesOn(reader)) {
        switch (reader->readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
}

QString readElementOwnText(QXmlStreamReader* reader)
{
    QString text;
    int depth = 1;
    while (depth > 0 && readerGoesOn(reader)) {
        switch (reader->readNext()) {
        case QXmlStreamReader::StartElement:
            ++depth;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        case QXmlStreamReader::Characters:
        case QXmlStreamReader::EntityReference:
            if (depth == 1)
                text += reader->text();
            break;
        default:
            break;
        }
    }
    return text;
}

} // namespace KivXml
