#include "xml/ElementReader_p.h"

#include <QDebug>

namespace KivXml {

void handleOtherChild(QXmlStreamReader* reader, const ElementInfo& info)
{
    switch (info.other) {
    case OtherChild::Ignore:
        return;
    case OtherChild::Skip:
        skipElement(reader);
        return;
    case OtherChild::Report:
        break;
    }
    if (info.noteBefore)
        qDebug() << info.noteBefore;
    if (info.note)
        qDebug() << info.reporter << info.note << reader->name();
    else
        qDebug() << info.reporter << reader->name();
    if (info.dropTokenAfterReport)
        reader->readNext();
}

QString readText(QXmlStreamReader* reader)
{
    reader->readNext();
    return reader->text().toString();
}

void dropToken(QXmlStreamReader* reader)
{
    reader->readNext();
}

void skipElement(QXmlStreamReader* reader)
{
    skipUntilEndTag(reader, reader->name().toString());
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

} // namespace KivXml
