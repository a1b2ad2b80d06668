#include "ic/XmlGroup.h"

#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlGroup::XmlGroup(QString name, unsigned int id)
    : m_name(name)
    , m_id(id)
{ }

QString XmlGroup::toString(QString indent) const
{
    indent += QLatin1Char('\t');
    QString text = indent + QLatin1String("XmlGroup(name: ") + m_name + QLatin1String(", id: ") + QString::number(m_id)
        + QLatin1Char(')');
    return text;
}

namespace {
const KivParse::ElementInfo kGroupInfo {
    QLatin1String("group"), "static XmlGroup* KIVXmlParser::parseGroup(QXmlStreamReader*)"};
}

XmlGroup* KIVXmlParser::parseGroup(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* group = new XmlGroup(
        KivParse::attrText(attributes, QLatin1String("name")), KivParse::attrUIntAuto(attributes, QLatin1String("id")));
    return KivParse::parseElement(reader, group, kGroupInfo);
}
