// Parse function of the "product_ic" root.

#include "ic/XmlDatabase.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "product/parse/ProductParse_p.h"

using namespace KivParse;

namespace {

using IC = XmlProductIC;

// A second "register_set", "pins" or "database" replaces the first; the first is freed.
const ChildRule<IC> kProductRules[] = {
    {QLatin1String("desc"), &storeRead<IC, &readUnicodeText, &IC::appendMainDescription>},
    {QLatin1String("database"), &replaceChild<IC, &KIVXmlParser::parseDatabase, &IC::database, &IC::setDatabase>},
    {QLatin1String("pins"), &replaceChild<IC, &KIVXmlParser::parsePins, &IC::pins, &IC::setPins>},
    {QLatin1String("register_set"),
        &replaceChild<IC, &KIVXmlParser::parseRegisterSet, &IC::registerSet, &IC::setRegisterSet>},
};

// Deliberately kept: the token right after an unknown child's start tag is dropped unexamined, as product
// files have always been read.
const ElementInfo kProductInfo {QLatin1String("product_ic"), OtherChild::Report,
    "static XmlProductIC* KIVXmlParser::parseProductIC(QXmlStreamReader*)", nullptr, nullptr, true};

} // namespace

XmlProductIC* KIVXmlParser::parseProductIC(QXmlStreamReader* reader)
{
    auto* ic = new XmlProductIC();
    const QXmlStreamAttributes attributes = reader->attributes();
    ic->setName(attrText(attributes, QLatin1String("name")));
    ic->setVersion(attrText(attributes, QLatin1String("version")));
    ic->setAuthor(attrText(attributes, QLatin1String("author")));
    ic->setDate(attrText(attributes, QLatin1String("date")));
    return parseElement(reader, ic, kProductInfo, kProductRules);
}
