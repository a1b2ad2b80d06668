#include "product/KIVXmlParser.h"

#include "ic/XmlPinMap.h"
#include "ic/XmlProductIC.h"
#include "product/XmlProductModule.h"

#include <QDebug>
#include <QFile>
#include <QXmlStreamReader>

namespace {

/// Frees a result that a later root replaced. A module does not delete its pin map (its keeper does),
/// and no one else can reach this one any more.
void deleteReplacedProduct(XmlProductInterface* product)
{
    if (auto* module = qobject_cast<XmlProductModule*>(product))
        delete module->getPinMap();
    delete product;
}

} // namespace

XmlProductInterface* KIVXmlParser::parseProduct(QFile* file)
{
    QXmlStreamReader reader(file);
    XmlProductInterface* result = nullptr;
    while (!reader.atEnd() && !reader.hasError()) {
        switch (reader.readNext()) {
        case QXmlStreamReader::Invalid:
            return result;
        case QXmlStreamReader::StartDocument:
            break;
        case QXmlStreamReader::StartElement: {
            const QStringRef name = reader.name();
            XmlProductInterface* product = nullptr;
            if (name == QLatin1String("product_module")) {
                product = parseProductModule(&reader);
            } else if (name == QLatin1String("product_ic")) {
                product = parseProductIC(&reader);
            } else {
                // Not skipped: its children are tested as root candidates in turn.
                qDebug() << "static XmlProductInterface* KIVXmlParser::parseProduct(QFile*)"
                         << "Unknown root node type!" << name;
                break;
            }
            // A later root replaces an earlier result, which nothing outside the parser can reach.
            deleteReplacedProduct(result);
            result = product;
            break;
        }
        default:
            // Deliberate: any other token (a comment, a DTD, the end of the document) drops the input,
            // so a comment ahead of the root ends the parse before the root is seen.
            reader.clear();
            break;
        }
    }
    return result;
}

QString& KIVXmlParser::replaceUnicode(QString& text)
{
    // Same matches, in the same order, as the expression (\\u[0-9a-fA-F]{4}) searched from the position
    // after each replacement; scanning by hand avoids building a regular expression for every text.
    auto isHex = [](QChar c) {
        const ushort u = c.unicode();
        return (u >= '0' && u <= '9') || (u >= 'a' && u <= 'f') || (u >= 'A' && u <= 'F');
    };
    // Looking for the backslash alone is a plain character scan; most texts hold none.
    int pos = text.indexOf(QLatin1Char('\\'));
    while (pos >= 0) {
        if (pos + 6 <= text.size() && text.at(pos + 1) == QLatin1Char('u') && isHex(text.at(pos + 2))
            && isHex(text.at(pos + 3)) && isHex(text.at(pos + 4)) && isHex(text.at(pos + 5))) {
            const ushort code = text.midRef(pos + 2, 4).toUShort(nullptr, 16);
            text.replace(pos, 6, QChar(code));
        }
        pos = text.indexOf(QLatin1Char('\\'), pos + 1);
    }
    return text;
}
