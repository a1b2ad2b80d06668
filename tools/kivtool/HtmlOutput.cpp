#include "HtmlOutput.h"

#include "InputFile.h"
#include "ModelMask.h"
#include "Output.h"
#include "TextMask.h"

#include "ic/XmlProductIC.h"
#include "product/XmlProductModule.h"

namespace {

const QLatin1String kCharset("<meta charset=\"utf-8\">");

// No network, no plug-ins, no forms and no script: a page that later carries its own script adds it to
// script-src by hash or nonce.
const QLatin1String kSecurityPolicy(
    "\n<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'; "
    "img-src data:; base-uri 'none'; form-action 'none'\">");

/// The IC page is a bare "<html>" fragment; give it a head with the encoding, the policy and a title,
/// and a body.
QString wrapICPage(XmlProductIC* ic)
{
    QString page = ic->toHtml();
    if (page.startsWith(QLatin1String("<html>")))
        page.remove(0, 6);
    if (page.endsWith(QLatin1String("</html>")))
        page.chop(7);
    QString html;
    html.reserve(page.size() + 768);
    html += QLatin1String("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n");
    html += kCharset;
    html += kSecurityPolicy;
    html += QLatin1String("\n<title>");
    html += ic->name();
    html += QLatin1String("</title>\n<style>\nbody { font-family: sans-serif; margin: 2em; }\n"
                          "table { border-collapse: collapse; margin: 0.5em 0; }\n"
                          "td { vertical-align: top; }\n</style>\n</head>\n<body>");
    html += page;
    html += QLatin1String("\n</body>\n</html>\n");
    return html;
}

/// The module's page escapes its texts itself; it gets the policy, and the file's \x26 shows as "&" there
/// as on the IC's page (the page's own markup holds no backslash).
QString finishModulePage(QString page)
{
    const int charset = page.indexOf(kCharset);
    if (charset >= 0)
        page.insert(charset + kCharset.size(), kSecurityPolicy);
    return page.replace(QLatin1String("\\x26"), QLatin1String("&amp;"));
}

} // namespace

QString htmlDocument(const InputFile& input)
{
    QString page;
    if (XmlProductModule* module = input.module()) {
        page = finishModulePage(module->toHtml());
    } else if (XmlProductIC* ic = input.ic()) {
        // The IC's renderers write their texts as they are: they render placeholders, and the texts come
        // back escaped.
        TextMask mask;
        maskIC(ic, mask);
        page = mask.unmask(wrapICPage(ic), TextMask::Target::Html);
    }
    // A signed value's options appear as a character, often NUL; no control character reaches a page.
    return visibleControls(page);
}
