#include "text/Html_p.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueDb.h"

XmlValueBool2::XmlValueBool2(QString name, bool value)
    : XmlValueInterface(XmlValueTypeBool2)
    , m_value(value ? 1 : 0)
    , m_name(name)
{ }

QString XmlValueBool2::getStringFromValue(unsigned long long)
{
    return QStringLiteral("tbd");
}

QString XmlValueBool2::toString(QString indent)
{
    indent += QLatin1Char('\t');
    return indent + QLatin1String("XmlValueBool2(name: ") + m_name + QLatin1String(", value: ")
        + QString::number(m_value) + QLatin1Char(')');
}

QString XmlValueBool2::toHtml()
{
    return KivText::namedValueHtmlTable();
}

XmlValueDb::XmlValueDb(QString name, unsigned int value)
    : XmlValueInterface(XmlValueTypeDb)
    , m_value(value)
    , m_name(name)
{ }

QString XmlValueDb::getStringFromValue(unsigned long long)
{
    return QStringLiteral("tbd");
}

QString XmlValueDb::toString(QString indent)
{
    indent += QLatin1Char('\t');
    return indent + QLatin1String("XmlValueDb(name: ") + m_name + QLatin1String(", value: ") + QString::number(m_value)
        + QLatin1Char(')');
}

QString XmlValueDb::toHtml()
{
    return KivText::namedValueHtmlTable();
}

XmlValueAlert::XmlValueAlert(QString text)
    : m_text(text)
{ }

QString XmlValueAlert::toString(QString indent)
{
    indent += QLatin1Char('\t');
    return indent + QLatin1String("XmlValueAlert(text: ") + m_text + QLatin1Char(')');
}
