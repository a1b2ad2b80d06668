#include "ic/XmlValueRegister.h"

#include "base/BasicTools.h"
#include "base/ReserveHint_p.h"
#include "ic/XmlRegisterVariant.h"
#include "text/Html_p.h"
#include "text/Numbers_p.h"

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
    return KivText::upperHex(value);
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
    html += QLatin1String(KivText::kWideTableOpen);
    // The width sits on the header cell of the address but on the value cells of name and size: kept.
    html += QLatin1String("\n<tr>\n<td width=\"10%\">Address</td>\n<td>Name</td>\n<td>Size</td>"
                          "\n<td>Group(s)</td>\n</tr>");
    html += QLatin1String("\n<tr>\n<td>") + QString::number(m_address) + QLatin1String(" (")
        + BasicTools::iToHex(quint32(m_address), 2, QStringLiteral("0x")) + QLatin1String(")</td>")
        + QLatin1String("\n<td width=\"10%\">") + m_name + QLatin1String("</td>")
        + QLatin1String("\n<td width=\"10%\">") + QString::number(m_size) + QLatin1String("</td>")
        + QLatin1String("\n<td>(") + QString::number(m_groupID) + QLatin1String(")</td>\n</tr>");
    for (XmlRegisterVariant* variant : qAsConst(m_registerVariants))
        KivText::appendChildRow(html, variant->toHtml());
    html += QLatin1String(KivText::kTableClose);
    return html;
}
