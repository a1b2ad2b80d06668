#include "ic/XmlProductIC.h"

#include "ic/HtmlTables_p.h"
#include "ic/IcText_p.h"
#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPins.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlValueRegister.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlProductIC::XmlProductIC()
    : XmlProductInterface(0)
{ }

XmlProductIC::~XmlProductIC()
{
    delete m_registerSet;
    delete m_database;
    delete m_pins;
}

void XmlProductIC::appendMainDescription(QString text)
{
    if (!text.isEmpty())
        m_mainDescription.append(KivIcText::replaceAmpersandEscape(text));
}

void XmlProductIC::insertRegisterHasWritten(unsigned char address, int value)
{
    m_registerHasWritten.insert(address, value);
    m_writeOrder.removeOne(address);
    m_writeOrder.append(address);
}

QMap<unsigned char, int>* XmlProductIC::registerHasWritten(QList<unsigned char>** order)
{
    if (order)
        *order = &m_writeOrder;
    return &m_registerHasWritten;
}

QString XmlProductIC::toString()
{
    QString text;
    text.reserve(256);
    text += QLatin1String("Product: IC\nName: ") + m_name + QLatin1String("\nVersion: ") + m_version
        + QLatin1String("\nAuthor: ") + m_author;
    for (int i = 0; i < m_mainDescription.size(); ++i) {
        text += QLatin1String("\nDescription[") + QString::number(i) + QLatin1String("]: ") + m_mainDescription.at(i);
    }
    if (m_registerSet)
        text += QLatin1Char('\n') + m_registerSet->toString();
    return text;
}

QString XmlProductIC::toHtml()
{
    QString html;
    html.reserve(4096);
    html += QLatin1String("<html>\n<h3>") + m_name + QLatin1String("</h3>\nVersion: ") + m_version
        + QLatin1String("\n<h4>Descriptions</h4>");
    for (const QString& description : qAsConst(m_mainDescription))
        html += QLatin1Char('\n') + description + QLatin1String("<br>");
    if (m_registerSet) {
        html += QLatin1String("\n<h3>Register</h3>");
        for (XmlValueRegister* reg : qAsConst(*m_registerSet->getRegisters()))
            html += reg->toHtml();
        const QList<XmlGroup*>& groups = *m_registerSet->getGroups();
        if (!groups.isEmpty()) {
            html += QLatin1String("\n<h3>Register groups</h3>");
            html += QLatin1String(KivHtml::kTableOpen);
            html += QLatin1String("\n<tr>\n<td>Name</td>\n<td>ID</td>\n</tr>");
            for (const XmlGroup* group : groups)
                KivHtml::appendRow(html, {group->getName(), QString::number(group->getID())});
            html += QLatin1String(KivHtml::kTableClose);
        }
    }
    html += QLatin1String("\n</html>");
    return html;
}

QString XmlProductIC::toLaTeXHeader()
{
    return QString();
}

namespace {

using namespace KivParse;

// A second "register_set", "pins" or "database" replaces the first through a setter that keeps the old
// object; nothing outside the parser can reach it any more, so it is freed here.
const ChildRule<XmlProductIC> kProductRules[] = {
    {QLatin1String("desc"),
        [](QXmlStreamReader* r, XmlProductIC* ic) { ic->appendMainDescription(readUnicodeTextChild(r)); }},
    {QLatin1String("database"),
        [](QXmlStreamReader* r, XmlProductIC* ic) {
            replaceAndFree(ic->database(), [&] { ic->setDatabase(KIVXmlParser::parseDatabase(r)); });
        }},
    {QLatin1String("pins"),
        [](QXmlStreamReader* r, XmlProductIC* ic) {
            replaceAndFree(ic->pins(), [&] { ic->setPins(KIVXmlParser::parsePins(r)); });
        }},
    {QLatin1String("register_set"),
        [](QXmlStreamReader* r, XmlProductIC* ic) {
            replaceAndFree(ic->registerSet(), [&] { ic->setRegisterSet(KIVXmlParser::parseRegisterSet(r)); });
        }},
};

// Deliberately kept: the token right after an unknown child's start tag is dropped unexamined, as product
// files have always been read.
const ElementInfo kProductInfo {QLatin1String("product_ic"),
    "static XmlProductIC* KIVXmlParser::parseProductIC(QXmlStreamReader*)", UnknownChild::Plain, nullptr, true};

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
