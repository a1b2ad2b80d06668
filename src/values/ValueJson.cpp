#include "values/ValueJson_p.h"

#include "values/XmlValueBool.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueChoiceElement.h"
#include "values/XmlValueDb.h"
#include "values/XmlValueReadOut.h"

namespace KivValueJson {

namespace {

QJsonObject choiceElement(XmlValueChoiceElement* element)
{
    return {
        {QStringLiteral("value"), qint64(element->getValue())},
        {QStringLiteral("descShort"), element->getDescriptionShort()},
        // The model hands out the long text only with its fallback to the short one.
        {QStringLiteral("descLong"), element->getDescriptionLong()},
    };
}

struct Presence
{
    const char* key;
    bool (XmlValueInterface::*has)();
};

// The fields whose presence a kind reports, in the order of the descriptor's keys.
const Presence kPresence[] = {
    {"min", &XmlValueInterface::hasMin},
    {"max", &XmlValueInterface::hasMax},
    {"default", &XmlValueInterface::hasDefault},
    {"decimals", &XmlValueInterface::hasDecimals},
    {"unit", &XmlValueInterface::hasUnit},
    {"options", &XmlValueInterface::hasOptions},
};

/// Names of the fields the kind reports as present (its has...() answers).
QJsonArray presentFields(XmlValueInterface* value)
{
    QJsonArray present;
    for (const Presence& field : kPresence) {
        if ((value->*field.has)())
            present.append(QLatin1String(field.key));
    }
    return present;
}

/// The keys only some kinds have, found by the class rather than the type code, which a caller's own
/// subclass could reuse.
void insertKindFields(QJsonObject& json, XmlValueInterface* value)
{
    if (auto* boolean = dynamic_cast<XmlValueBool*>(value)) {
        json.insert(QStringLiteral("descFalseShort"), boolean->getDescFalseShort());
        json.insert(QStringLiteral("descTrueShort"), boolean->getDescTrueShort());
        json.insert(QStringLiteral("descFalseLong"), boolean->getDescFalseLong());
        json.insert(QStringLiteral("descTrueLong"), boolean->getDescTrueLong());
    } else if (auto* choice = dynamic_cast<XmlValueChoice*>(value)) {
        json.insert(QStringLiteral("elements"), array(choice->getElements(), choiceElement));
    } else if (auto* element = dynamic_cast<XmlValueChoiceElement*>(value)) {
        json = merged(json, choiceElement(element));
    } else if (auto* readOut = dynamic_cast<XmlValueReadOut*>(value)) {
        json.insert(QStringLiteral("descShort"), readOut->getDescriptionShort());
        json.insert(QStringLiteral("descLong"), readOut->getDescriptionLong());
    } else if (auto* flag = dynamic_cast<XmlValueBool2*>(value)) {
        json.insert(QStringLiteral("name"), flag->getName());
        json.insert(QStringLiteral("value"), flag->getValue());
    } else if (auto* datum = dynamic_cast<XmlValueDb*>(value)) {
        json.insert(QStringLiteral("name"), datum->getName());
        json.insert(QStringLiteral("value"), qint64(datum->getValue()));
    }
}

} // namespace

QJsonValue descriptor(XmlValueInterface* value)
{
    if (!value)
        return QJsonValue(QJsonValue::Null);
    const int access = value->getAccess();
    QJsonObject json {
        {QStringLiteral("kind"), value->getTypeAsString()},
        {QStringLiteral("typeCode"), value->getType()},
        {QStringLiteral("min"), value->getMin()},
        {QStringLiteral("max"), value->getMax()},
        {QStringLiteral("default"), value->getDefault()},
        {QStringLiteral("decimals"), value->getDecimals()},
        {QStringLiteral("unit"), value->getUnit()},
        {QStringLiteral("options"), qint64(value->getOptions())},
        {QStringLiteral("access"), value->getAccessAsString()},
        {QStringLiteral("accessLetters"), XmlValueInterface::accessToAccessString(access)},
        {QStringLiteral("accessMask"), access},
        {QStringLiteral("present"), presentFields(value)},
        {QStringLiteral("formatString"), value->getFormatString()},
        {QStringLiteral("formatMul"), shortestFloat(value->getFormatMul())},
        {QStringLiteral("formatDiv"), shortestFloat(value->getFormatDiv())},
    };
    insertKindFields(json, value);
    return json;
}

QJsonObject merged(QJsonObject json, const QJsonObject& extra)
{
    for (auto it = extra.constBegin(); it != extra.constEnd(); ++it)
        json.insert(it.key(), it.value());
    return json;
}

QJsonArray texts(const QStringList& lines)
{
    return QJsonArray::fromStringList(lines);
}

QJsonValue shortestFloat(float value)
{
    if (!qIsFinite(value))
        return QJsonValue(QJsonValue::Null);
    // Nine significant digits always give the float back; fewer usually do.
    for (int digits = 1; digits < 9; ++digits) {
        const QString text = QString::number(double(value), 'g', digits);
        if (text.toFloat() == value)
            return text.toDouble();
    }
    return QString::number(double(value), 'g', 9).toDouble();
}

} // namespace KivValueJson
