// Builds against the installed package only: proves the headers, the export header and the CMake
// package are complete.
#include <kivcore.h>

#include <cstdio>

int main()
{
    QString text = QStringLiteral("A\\u00e9B");
    KIVXmlParser::replaceUnicode(text);
    if (text.size() != 3)
        return 1;
    std::printf("kivcore consumer: ok (kivcore %s)\n", qPrintable(KivCore::version()));
    return 0;
}
