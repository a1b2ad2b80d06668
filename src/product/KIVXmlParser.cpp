#include "product/KIVXmlParser.h"

#include <QString>

QString& KIVXmlParser::replaceUnicode(QString& text)
{
    // Same result as searching the expression (\\u[0-9a-fA-F]{4}) again from the position after each
    // replacement: a made character sits before that position, so it never joins a later match, and one
    // pass over the original text with every match decoded gives the same string.
    auto isHex = [](QChar c) {
        const ushort u = c.unicode();
        return (u >= '0' && u <= '9') || (u >= 'a' && u <= 'f') || (u >= 'A' && u <= 'F');
    };
    // Looking for the backslash alone is a plain character scan; most texts hold none and stay untouched.
    int pos = text.indexOf(QLatin1Char('\\'));
    if (pos < 0)
        return text;
    QString decoded;
    decoded.reserve(text.size());
    int copied = 0; // text before this index is in `decoded`
    const int size = text.size();
    while (pos >= 0) {
        if (pos + 6 <= size && text.at(pos + 1) == QLatin1Char('u') && isHex(text.at(pos + 2))
            && isHex(text.at(pos + 3)) && isHex(text.at(pos + 4)) && isHex(text.at(pos + 5))) {
            decoded += text.midRef(copied, pos - copied);
            decoded += QChar(text.midRef(pos + 2, 4).toUShort(nullptr, 16));
            copied = pos + 6;
            pos = text.indexOf(QLatin1Char('\\'), copied);
        } else {
            pos = text.indexOf(QLatin1Char('\\'), pos + 1);
        }
    }
    if (copied == 0)
        return text;
    decoded += text.midRef(copied);
    text = decoded;
    return text;
}
