#include "ic/XmlValueRegister.h"

#include "base/BasicTools.h"
#include "base/ReserveHint_p.h"
#include "ic/HtmlTables_p.h"
#include "ic/IcText_p.h"
#include "ic/XmlRegisterVariant.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlValueRegister::XmlValueRegister(unsigned int address, QString name, int size, unsigned int groupID)
    : XmlValueInterface(XmlValueTypeRegister)
    , m_address(address)
    , m_name(name)
    , m_size(size)
    , m_groupID(groupID)
{ }

XmlValueRegister::~XmlValueRegister()
{
    qDeleteAll(m_registerVariants);
}

void XmlValueRegister::appendVariant(XmlRegisterVariant* variant)
{
    if (!variant)
        return;
    m_access |= variant->getAccess();
    m_accessString = accessToAccessString(m_access);
    m_registerVariants.append(variant);
}

QString XmlValueRegister::getStringFromValue(unsigned long long value)
{
    return KivIcText::upperHex(value);
}

QString XmlValueRegister::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(128, m_registerVariants.size(), 1024));
    text += indent + QLatin1String("XmlValueRegister(address: ") + QString::number(m_address)
        + QLatin1String(", name: ") + m_name + QLatin1String(", size: ") + QString::number(m_size)
        + QLatin1String(", group: ") + QString::number(m_groupID) + QLatin1String(")\n") + indent + QLatin1Char('{');
    for (XmlRegisterVariant* variant : qAsConst(m_registerVariants))
        text += QLatin1Char('\n') + variant->toString(indent);
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlValueRegister::toHtml()
{
    QString html;
    html.reserve(KivReserve::chars(512, m_registerVariants.size(), 2048));
    html += QLatin1String(KivHtml::kWideTableOpen);
    // The width sits on the header cell of the address but on the value cells of name and size: kept.
    html += QLatin1String("\n<tr>\n<td width=\"10%\">Address</td>\n<td>Name</td>\n<td>Size</td>"
                          "\n<td>Group(s)</td>\n</tr>");
    html += QLatin1String("\n<tr>\n<td>") + QString::number(m_address) + QLatin1String(" (")
        + BasicTools::iToHex(quint32(m_address), 2, QStringLiteral("0x")) + QLatin1String(")</td>")
        + QLatin1String("\n<td width=\"10%\">") + m_name + QLatin1String("</td>")
        + QLatin1String("\n<td width=\"10%\">") + QString::number(m_size) + QLatin1String("</td>")
        + QLatin1String("\n<td>(") + QString::number(m_groupID) + QLatin1String(")</td>\n</tr>");
    for (XmlRegisterVariant* variant : qAsConst(m_registerVariants))
        KivHtml::appendChildRow(html, variant->toHtml());
    html += QLatin1String(KivHtml::kTableClose);
    return html;
}

namespace {

using namespace KivParse;

const ElementInfo kRegisterInfo {
    QLatin1String("value_register"), "static XmlValueRegister* KIVXmlParser::parseValueRegister(QXmlStreamReader*)"};

const ChildRule<XmlValueRegister> kRegisterRules[] = {
    {QLatin1String("register_variant"),
        [](QXmlStreamReader* r, XmlValueRegister* reg) { reg->appendVariant(KIVXmlParser::parseRegisterVariant(r)); }},
};

} // namespace

XmlValueRegister* KIVXmlParser::parseValueRegister(QXmlStreamReader* reader)
{
    // Created after its attributes are read: the constructor takes them.
    const QXmlStreamAttributes attributes = reader->attributes();
    auto* reg = new XmlValueRegister(attrUIntAuto(attributes, QLatin1String("address")),
        attrText(attributes, QLatin1String("name")), attrInt(attributes, QLatin1String("size")),
        attrUIntAuto(attributes, QLatin1String("group")));
    return parseElement(reader, reg, kRegisterInfo, kRegisterRules);
}
