#include "HtmlOutput.h"

#include "InputFile.h"

#include "ic/XmlProductIC.h"
#include "product/XmlProductModule.h"

namespace {

QString escaped(const QString& text)
{
    return text.toHtmlEscaped();
}

/// The IC page is a bare "<html>" fragment; give it a head with the encoding and a title, and a body.
QString wrapICPage(XmlProductIC* ic)
{
    QString page = ic->toHtml();
    if (page.startsWith(QLatin1String("<html>")))
        page.remove(0, 6);
    if (page.endsWith(QLatin1String("</html>")))
        page.chop(7);
    QString html;
    html.reserve(page.size() + 512);
    html += QLatin1String("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>");
    html += escaped(ic->name());
    html += QLatin1String("</title>\n<style>\nbody { font-family: sans-serif; margin: 2em; }\n"
                          "table { border-collapse: collapse; margin: 0.5em 0; }\n"
                          "td { vertical-align: top; }\n</style>\n</head>\n<body>");
    html += page;
    html += QLatin1String("\n</body>\n</html>\n");
    return html;
}

} // namespace

QString htmlDocument(const InputFile& input)
{
    if (XmlProductModule* module = input.module())
        return module->toHtml();
    if (XmlProductIC* ic = input.ic())
        return wrapICPage(ic);
    return QString();
}
