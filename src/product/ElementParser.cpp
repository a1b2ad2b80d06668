#include "product/ElementParser_p.h"

#include "product/KIVXmlParser.h"

#include <QDebug>

namespace KivParse {

void handleUnknownChild(QXmlStreamReader* reader, const ElementInfo& info)
{
    if (info.noteBeforeUnknown)
        qDebug() << info.noteBeforeUnknown;
    if (info.report == UnknownChild::CouldNotParse)
        qDebug() << info.signature << "could not parse:" << reader->name();
    else
        qDebug() << info.signature << reader->name();
    if (info.dropTokenAfterUnknown)
        reader->readNext();
}

QString readTextChild(QXmlStreamReader* reader)
{
    reader->readNext();
    return reader->text().toString();
}

QString readUnicodeTextChild(QXmlStreamReader* reader)
{
    QString text = readTextChild(reader);
    KIVXmlParser::replaceUnicode(text);
    return text;
}

QString attrText(const QXmlStreamAttributes& attributes, QLatin1String name)
{
    return attributes.value(name).toString();
}

int attrInt(const QXmlStreamAttributes& attributes, QLatin1String name)
{
    return attributes.value(name).toInt(nullptr, 10);
}

unsigned int attrUInt(const QXmlStreamAttributes& attributes, QLatin1String name)
{
    return attributes.value(name).toUInt(nullptr, 10);
}

unsigned int attrUIntAuto(const QXmlStreamAttributes& attributes, QLatin1String name)
{
    return attributes.value(name).toUInt(nullptr, 0);
}

float attrFloat(const QXmlStreamAttributes& attributes, QLatin1String name)
{
    return attributes.value(name).toFloat();
}

bool consumeUntilEndTag(QXmlStreamReader* reader, QLatin1String name)
{
    while (!reader->atEnd() && reader->tokenType() != QXmlStreamReader::EndDocument) {
        if (reader->readNext() == QXmlStreamReader::EndElement && reader->name() == name)
            return true;
    }
    return false;
}

} // namespace KivParse
