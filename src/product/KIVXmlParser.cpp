#include "product/KIVXmlParser.h"

#include <QString>

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
