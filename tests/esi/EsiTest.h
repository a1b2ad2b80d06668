#pragma once

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"

#include <QByteArray>
#include <QDebug>
#include <QFile>
#include <QString>
#include <QTemporaryFile>

#include <memory>

namespace EsiTest {

/// Runs ESIXmlParser::parseInfo over `xml` through a temporary file, as callers do with real files.
/// `fileLine` receives the text of the parser's first debug line (its short name and the file object).
inline std::unique_ptr<XmlEtherCATInfo> parse(const QByteArray& xml, QString* fileLine = nullptr)
{
    QTemporaryFile file;
    if (!file.open())
        return nullptr;
    file.write(xml);
    file.seek(0);
    if (fileLine) {
        fileLine->clear();
        QDebug(fileLine) << "ESIXmlParser::parseInfo()" << static_cast<QFile*>(&file);
        *fileLine = fileLine->trimmed();
    }
    return std::unique_ptr<XmlEtherCATInfo>(ESIXmlParser::parseInfo(&file));
}

/// Lines joined as the debug texts write them: each line after a newline.
inline QString lines(std::initializer_list<const char*> parts)
{
    QString text;
    for (const char* part : parts) {
        text += QLatin1Char('\n');
        text += QString::fromUtf8(part);
    }
    return text;
}

} // namespace EsiTest
