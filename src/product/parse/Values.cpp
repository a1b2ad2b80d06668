// The value parse functions of the product parser: one per value element.

#include "product/parse/ProductParse_p.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueDb.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueUnsigned.h"
#include "values/XmlValueVersion.h"

#include <QDebug>

using namespace KivParse;

namespace {

/// The read-out kinds all take (access, short description, long description), as written.
template<typename Kind> Kind* parseReadOut(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    return new Kind(attrText(attributes, QLatin1String("access")), attrText(attributes, QLatin1String("desc_short")),
        attrText(attributes, QLatin1String("desc_long")));
}

void appendChoiceElement(QXmlStreamReader* reader, XmlValueChoice* choice)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const QString descShort = attrUnicodeText(attributes, QLatin1String("desc_short"));
    const QString descLong = attrUnicodeText(attributes, QLatin1String("desc_long"));
    const unsigned int value = attrUInt(attributes, QLatin1String("value"));
    choice->appendElement(new XmlValueChoiceElement(value, descShort, descLong));
}

const ChildRule<XmlValueChoice> kChoiceChildren[] = {
    {QLatin1String("choice_element"), &appendChoiceElement},
};

// The choice reports unknown children under the short form of its signature.
const ElementInfo kChoiceInfo {QLatin1String("value_choice"), OtherChild::Report, "KIVXmlParser::parseValueChoice()"};

} // namespace

XmlValueSigned* KIVXmlParser::parseValueSigned(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const int min = attrInt(attributes, QLatin1String("min"));
    const int max = attrInt(attributes, QLatin1String("max"));
    const int def = attrInt(attributes, QLatin1String("default"));
    const int decimals = attrInt(attributes, QLatin1String("decimals"));
    const QString unit = attrUnicodeText(attributes, QLatin1String("unit"));
    const QString access = attrText(attributes, QLatin1String("access"));
    const unsigned int options = attrUInt(attributes, QLatin1String("options"));
    // A signed value carries no display format, even when its element names one.
    return new XmlValueSigned(min, max, def, decimals, unit, access, options);
}

XmlValueUnsigned* KIVXmlParser::parseValueUnsigned(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const unsigned int min = attrUInt(attributes, QLatin1String("min"));
    const unsigned int max = attrUInt(attributes, QLatin1String("max"));
    const unsigned int def = attrUInt(attributes, QLatin1String("default"));
    const int decimals = attrInt(attributes, QLatin1String("decimals"));
    const QString unit = attrUnicodeText(attributes, QLatin1String("unit"));
    const QString formatString = attrText(attributes, QLatin1String("formatString"));
    const float formatMul = attrFloat(attributes, QLatin1String("formatMul"));
    const float formatDiv = attrFloat(attributes, QLatin1String("formatDiv"));
    const QString access = attrText(attributes, QLatin1String("access"));
    const unsigned int options = attrUInt(attributes, QLatin1String("options"));

    auto* value = new XmlValueUnsigned(min, max, def, decimals, unit, access, options);
    if (!formatString.isEmpty())
        value->setFormatString(formatString);
    // 0 also stands for a missing or non-numeric factor: the default 1 stays.
    if (formatMul != 0.0f)
        value->setFormatMul(formatMul);
    if (formatDiv != 0.0f)
        value->setFormatDiv(formatDiv);
    return value;
}

XmlValueBool* KIVXmlParser::parseValueBool(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const QString falseShort = attrUnicodeText(attributes, QLatin1String("desc_short_false"));
    const QString trueShort = attrUnicodeText(attributes, QLatin1String("desc_short_true"));
    const QString falseLong = attrUnicodeText(attributes, QLatin1String("desc_long_false"));
    const QString trueLong = attrUnicodeText(attributes, QLatin1String("desc_long_true"));
    // Any text starting with "true" in any case: "1" and "yes" read as false.
    const bool def = attrText(attributes, QLatin1String("default")).toLower().startsWith(QLatin1String("true"));
    const QString access = attrText(attributes, QLatin1String("access"));
    return new XmlValueBool(def, access, falseShort, trueShort, falseLong, trueLong);
}

XmlValueBool2* KIVXmlParser::parseValueBool2(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const QString name = attrText(attributes, QLatin1String("name"));
    const bool value = attributes.value(QLatin1String("value")) == QLatin1String("true");
    // ", " is an item of its own, so the line reads ... "name" ,  1 with two blanks before the number.
    qDebug() << "static XmlValueBool2* KIVXmlParser::parseValueBool2(QXmlStreamReader*)" << name << ", " << int(value);
    return consumeElement(reader, new XmlValueBool2(name, value), QLatin1String("value_bool2"));
}

XmlValueChoice* KIVXmlParser::parseValueChoice(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const unsigned int def = attrUInt(attributes, QLatin1String("default"));
    const QString unit = attrUnicodeText(attributes, QLatin1String("unit"));
    const QString access = attrText(attributes, QLatin1String("access"));
    return parseElement(reader, new XmlValueChoice(def, unit, access), kChoiceInfo, kChoiceChildren);
}

XmlValueDate* KIVXmlParser::parseValueDate(QXmlStreamReader* reader)
{
    return parseReadOut<XmlValueDate>(reader);
}

XmlValueTime* KIVXmlParser::parseValueTime(QXmlStreamReader* reader)
{
    return parseReadOut<XmlValueTime>(reader);
}

XmlValueVersion* KIVXmlParser::parseValueVersion(QXmlStreamReader* reader)
{
    return parseReadOut<XmlValueVersion>(reader);
}

XmlValueASCII* KIVXmlParser::parseValueASCII(QXmlStreamReader* reader)
{
    return parseReadOut<XmlValueASCII>(reader);
}

XmlValueDb* KIVXmlParser::parseValueDb(QXmlStreamReader* reader)
{
    const QXmlStreamAttributes attributes = reader->attributes();
    const QString name = attrText(attributes, QLatin1String("name"));
    const unsigned int value = attrUInt(attributes, QLatin1String("value"));
    return consumeElement(reader, new XmlValueDb(name, value), QLatin1String("value_db"));
}

XmlValueAlert* KIVXmlParser::parseValueAlert(QXmlStreamReader* reader)
{
    const QString text = attrText(reader->attributes(), QLatin1String("text"));
    return consumeElement(reader, new XmlValueAlert(text), QLatin1String("value_alert"));
}
