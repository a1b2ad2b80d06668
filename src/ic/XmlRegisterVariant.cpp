#include "ic/XmlRegisterVariant.h"

#include "base/ReserveHint_p.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegisterField.h"
#include "text/Ampersand_p.h"
#include "text/Html_p.h"
#include "text/Latex_p.h"
#include "text/Numbers_p.h"

namespace {
const QLatin1String kDefaultVariant("DEFAULT");
}

XmlRegisterVariant::XmlRegisterVariant(QString name)
    : XmlValueInterface(XmlValueTypeRegister)
    , m_name(KivText::replaceAmpersandEscape(name))
{ }

XmlRegisterVariant::~XmlRegisterVariant()
{
    qDeleteAll(m_registerFields);
    qDeleteAll(m_impacts);
    qDeleteAll(m_impactedBy);
}

void XmlRegisterVariant::appendDescription(QString text)
{
    if (!text.isEmpty())
        m_descriptions.append(KivText::replaceAmpersandEscape(text));
}

void XmlRegisterVariant::appendField(XmlValueRegisterField* field)
{
    if (!field)
        return;
    m_registerFields.append(field);
    m_variantAccess |= field->getAccess();
    m_variantAccessString = accessToAccessString(m_variantAccess);
    m_maskValue |= field->getMaskValue();
    m_maskString = KivText::upperHex(m_maskValue);
}

void XmlRegisterVariant::appendImpacts(XmlRegisterVariantImpacts* impacts)
{
    if (impacts)
        m_impacts.append(impacts);
}

void XmlRegisterVariant::clearImpacts()
{
    qDeleteAll(m_impacts);
    m_impacts.clear();
}

void XmlRegisterVariant::appendImpactedBy(XmlRegisterVariantImpactedBy* impactedBy)
{
    if (impactedBy)
        m_impactedBy.append(impactedBy);
}

int XmlRegisterVariant::getAccess()
{
    return m_variantAccess;
}

QString XmlRegisterVariant::getAccessAsString()
{
    return m_variantAccessString;
}

void XmlRegisterVariant::setAccessString(QString access)
{
    m_variantAccess = accessStringToAccess(access);
    m_variantAccessString = accessToAccessString(m_variantAccess);
    XmlValueInterface::setAccessString(m_variantAccessString);
}

QString XmlRegisterVariant::getStringFromValue(unsigned long long)
{
    return QStringLiteral("unknown");
}

QString XmlRegisterVariant::toString(QString indent)
{
    indent += QLatin1Char('\t');
    QString text;
    text.reserve(KivReserve::chars(256, m_registerFields.size(), 256));
    // The doubled closing parenthesis is what log readers match on; kept.
    text += indent + QLatin1String("XmlRegisterVariant(name: ") + m_name + QLatin1String("), access: ")
        + m_variantAccessString + QLatin1String(")\n") + indent + QLatin1Char('{');
    for (int i = 0; i < m_descriptions.size(); ++i) {
        text += QLatin1String("\n\t") + indent + QLatin1String("description[") + QString::number(i)
            + QLatin1String("]: ") + m_descriptions.at(i);
    }
    for (XmlValueRegisterField* field : qAsConst(m_registerFields))
        text += QLatin1Char('\n') + field->toString(indent);
    for (const XmlRegisterVariantImpacts* impacts : qAsConst(m_impacts))
        text += QLatin1Char('\n') + impacts->toString(indent);
    for (const XmlRegisterVariantImpactedBy* impactedBy : qAsConst(m_impactedBy))
        text += QLatin1Char('\n') + impactedBy->toString(indent);
    text += QLatin1Char('\n') + indent + QLatin1Char('}');
    return text;
}

QString XmlRegisterVariant::toLatex(QString indent)
{
    const QString inner = indent + QLatin1Char('\t');
    const QString title = m_name == kDefaultVariant ? QStringLiteral("Variant 0") : m_name;
    QString text;
    text.reserve(KivReserve::chars(256, m_registerFields.size(), 512));
    text += QLatin1Char('\n') + indent + QLatin1String("\\begin{tabular}{|l|l|p{5.0cm}|l|}");
    text += QLatin1Char('\n') + inner + QLatin1String("\\hline");
    text += QLatin1Char('\n') + inner + QLatin1String("\\multicolumn{4}{|c|}{\\cellcolor{gray!50}") + title
        + QLatin1String("} \\\\ \\hline");
    text += QLatin1Char('\n') + inner + QLatin1String("Mask & Name & Description & Access \\\\ \\hline");
    for (int i = 0; i < m_registerFields.size(); ++i) {
        XmlValueRegisterField* field = m_registerFields.at(i);
        QString description = field->getDescription();
        if (description.isEmpty())
            description = QStringLiteral(" - ");
        description.replace(QLatin1Char('_'), QLatin1String("\\_"));
        text += QLatin1Char('\n') + inner + field->getMaskAsString() + QLatin1String(" & ")
            + KivText::latexDisplayName(field->getName()) + QLatin1String(" & ") + description + QLatin1String(" & ")
            + field->getAccessAsString() + QLatin1String("\\\\ \\hline");
        // A field without a descriptor has no value row (its row is already closed).
        XmlValueInterface* value = field->getValue();
        if (!value)
            continue;
        text += QLatin1Char('\n') + inner + QLatin1String(" & \\multicolumn{3}{|c|}{") + value->toLatex(inner)
            + QLatin1Char('\n') + inner + QLatin1Char('}');
        if (i + 1 < m_registerFields.size())
            text += QLatin1String(" \\\\ \\hline");
    }
    text += QLatin1Char('\n') + indent + QLatin1String("\\end{tabular}");
    return text;
}

QString XmlRegisterVariant::toHtml()
{
    QString html;
    html.reserve(KivReserve::chars(1024, m_registerFields.size(), 1024));
    html += QLatin1String(KivText::kWideTableOpen);
    if (m_name != kDefaultVariant) {
        html += QLatin1String("\n<tr>\n<td width=\"10%\">Variant name:</td>\n<td>") + m_name
            + QLatin1String("</td>\n</tr>");
    }
    html += QLatin1String("\n<tr>\n<td width=\"10%\">Mask:</td>\n<td>") + m_maskString + QLatin1Char('(')
        + QString::number(m_maskValue) + QLatin1String(")</td>\n</tr>");
    html += QLatin1String("\n<tr>\n<td width=\"10%\">Access:</td>\n<td>") + m_variantAccessString + QLatin1Char('(')
        + QString::number(m_variantAccess) + QLatin1String(")</td>\n</tr>");
    if (!m_descriptions.isEmpty()) {
        html += QLatin1String("\n<tr>\n<td width=\"10%\">Descriptions:</td>\n<td>")
            + m_descriptions.join(QLatin1String("<br>")) + QLatin1String("\n</td>\n</tr>");
    }
    for (int i = 0; i < m_registerFields.size(); ++i) {
        html += QLatin1String("\n<tr>\n<td width=\"10%\">RegisterField[") + QString::number(i)
            + QLatin1String("]:</td>\n<td>") + m_registerFields.at(i)->toHtml() + QLatin1String("</td>\n</tr>");
    }
    if (!m_impacts.isEmpty()) {
        QStringList entries;
        entries.reserve(m_impacts.size());
        for (const XmlRegisterVariantImpacts* impacts : qAsConst(m_impacts))
            entries.append(impacts->toString(QString()));
        html += QLatin1String("\n<tr>\n<td>Impacts:</td>\n<td>") + entries.join(QLatin1String("<br>"))
            + QLatin1String("\n</td>\n</tr>");
    }
    if (!m_impactedBy.isEmpty()) {
        QStringList entries;
        entries.reserve(m_impactedBy.size());
        for (const XmlRegisterVariantImpactedBy* impactedBy : qAsConst(m_impactedBy))
            entries.append(impactedBy->toString(QString()));
        html += QLatin1String("\n<tr>\n<td>Impacted by:</td>\n<td>") + entries.join(QLatin1String("<br>"))
            + QLatin1String("\n</td>\n</tr>");
    }
    html += QLatin1String(KivText::kTableClose);
    return html;
}
