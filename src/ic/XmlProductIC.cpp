#include "ic/XmlProductIC.h"

#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPins.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlValueRegister.h"
#include "text/Ampersand_p.h"
#include "text/Html_p.h"

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
        m_mainDescription.append(KivText::replaceAmpersandEscape(text));
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
            html += QLatin1String(KivText::kTableOpen);
            html += QLatin1String("\n<tr>\n<td>Name</td>\n<td>ID</td>\n</tr>");
            for (const XmlGroup* group : groups)
                KivText::appendRow(html, {group->getName(), QString::number(group->getID())});
            html += QLatin1String(KivText::kTableClose);
        }
    }
    html += QLatin1String("\n</html>");
    return html;
}

QString XmlProductIC::toLaTeXHeader()
{
    return QString();
}
