// The entry point of the product parser: the root dispatch over a whole file, and the release of what
// it returns.

#include "ic/XmlPinMap.h"
#include "ic/XmlProductIC.h"
#include "product/XmlProductModule.h"
#include "product/parse/ProductParse_p.h"
#include "xml/RootReader_p.h"

#include <QFile>

using namespace KivParse;

namespace {

template<auto Parse> XmlProductInterface* parseRoot(QXmlStreamReader* reader)
{
    return Parse(reader);
}

const RootRule<XmlProductInterface> kRootRules[] = {
    {QLatin1String("product_module"), &parseRoot<&KIVXmlParser::parseProductModule>},
    {QLatin1String("product_ic"), &parseRoot<&KIVXmlParser::parseProductIC>},
};

const RootInfo kRootInfo {"static XmlProductInterface* KIVXmlParser::parseProduct(QFile*)", OtherRootToken::DropInput};

} // namespace

XmlProductInterface* KIVXmlParser::parseProduct(QFile* file)
{
    return readRoot(file, kRootInfo, kRootRules, &KIVXmlParser::deleteProduct);
}

void KIVXmlParser::deleteProduct(XmlProductInterface* product)
{
    // A module leaves its pin map to its keeper; here the keeper is the one releasing the product.
    if (auto* module = qobject_cast<XmlProductModule*>(product))
        delete module->getPinMap();
    delete product;
}
