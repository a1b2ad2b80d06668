// Parse function of the "database" element (IC products and modules).

#include "ic/XmlDatabase.h"
#include "product/parse/ProductParse_p.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueDb.h"

using namespace KivParse;

namespace {

const ElementInfo kDatabaseInfo {QLatin1String("database"), OtherChild::Report,
    "static XmlDatabase* KIVXmlParser::parseDatabase(QXmlStreamReader*)", kCouldNotParse};

// The database keeps only the numbers, so the descriptors are freed once they are copied.
const ChildRule<XmlDatabase> kDatabaseRules[] = {
    {QLatin1String("value_db"), &appendCopy<XmlDatabase, &KIVXmlParser::parseValueDb, &XmlDatabase::appendValueDb>},
    {QLatin1String("value_bool2"),
        &appendCopy<XmlDatabase, &KIVXmlParser::parseValueBool2, &XmlDatabase::appendValueBool2>},
};

} // namespace

XmlDatabase* KIVXmlParser::parseDatabase(QXmlStreamReader* reader)
{
    auto* database = new XmlDatabase();
    const QXmlStreamAttributes attributes = reader->attributes();
    database->setFor(attrText(attributes, QLatin1String("for")));
    database->setName(attrText(attributes, QLatin1String("name")));
    return parseElement(reader, database, kDatabaseInfo, kDatabaseRules);
}
