#include "ModelMask.h"

#include "TextMask.h"

#include "ic/XmlGroup.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlProductModule.h"
#include "values/XmlValueASCII.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDate.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueTime.h"
#include "values/XmlValueUnsigned.h"
#include "values/XmlValueVersion.h"

#include <QRegularExpression>

namespace {

/// A numeric kind stores its unit bracketed ("[mA]") and brackets any unit it is given that does not
/// start with "[": the bracket stays in front of the placeholder.
QString maskedUnit(const QString& unit, TextMask& mask)
{
    if (!unit.startsWith(QLatin1Char('[')))
        return mask.text(unit);
    const QString rest = mask.text(unit.mid(1));
    return QLatin1Char('[') + rest;
}

/// The long text as the element stores it: its getter falls back to the short text, its debug text,
/// "<tab>XmlValueChoiceElement(value: V, desc_short: S, desc_long: L)", does not.
QString storedLongText(XmlValueChoiceElement* element)
{
    const QString text = element->toString(QString());
    const QString head = QLatin1String("\tXmlValueChoiceElement(value: ") + QString::number(element->getValue())
        + QLatin1String(", desc_short: ") + element->getDescriptionShort() + QLatin1String(", desc_long: ");
    if (!text.startsWith(head) || !text.endsWith(QLatin1Char(')')))
        return element->getDescriptionLong();
    return text.mid(head.size(), text.size() - head.size() - 1);
}

XmlValueInterface* maskedChoice(XmlValueChoice* choice, TextMask& mask)
{
    auto* copy = new XmlValueChoice(
        unsigned(choice->getDefault()), mask.text(choice->getUnit()), mask.access(choice->getAccessAsString()));
    // The element turns an "&" into \x26; placeholders hold none, and the stored \x26 comes back unmasked.
    for (XmlValueChoiceElement* element : choice->getElements()) {
        copy->appendElement(new XmlValueChoiceElement(
            element->getValue(), mask.text(element->getDescriptionShort()), mask.text(storedLongText(element))));
    }
    return copy;
}

/// A copy of `value` with its texts masked, or null for a null or unknown descriptor (which keeps its
/// texts: no page or manual shows the texts of the remaining kinds).
XmlValueInterface* maskedValue(XmlValueInterface* value, TextMask& mask)
{
    if (!value)
        return nullptr;
    const QString access = mask.access(value->getAccessAsString());
    if (dynamic_cast<XmlValueSigned*>(value)) {
        return new XmlValueSigned(int(value->getMin()), int(value->getMax()), int(value->getDefault()),
            value->getDecimals(), maskedUnit(value->getUnit(), mask), access, value->getOptions());
    }
    if (dynamic_cast<XmlValueUnsigned*>(value)) {
        auto* copy
            = new XmlValueUnsigned(unsigned(value->getMin()), unsigned(value->getMax()), unsigned(value->getDefault()),
                value->getDecimals(), maskedUnit(value->getUnit(), mask), access, value->getOptions());
        copy->setFormatString(mask.text(value->getFormatString()));
        copy->setFormatMul(value->getFormatMul());
        copy->setFormatDiv(value->getFormatDiv());
        return copy;
    }
    if (auto* boolean = dynamic_cast<XmlValueBool*>(value)) {
        return new XmlValueBool(value->getDefault() != 0, access, mask.text(boolean->getDescFalseShort()),
            mask.text(boolean->getDescTrueShort()), mask.text(boolean->getDescFalseLong()),
            mask.text(boolean->getDescTrueLong()));
    }
    if (auto* choice = dynamic_cast<XmlValueChoice*>(value))
        return maskedChoice(choice, mask);
    if (auto* readOut = dynamic_cast<XmlValueReadOut*>(value)) {
        const QString descShort = mask.text(readOut->getDescriptionShort());
        const QString descLong = mask.text(readOut->getDescriptionLong());
        switch (value->getType()) {
        case XmlValueTypeDate:
            return new XmlValueDate(access, descShort, descLong);
        case XmlValueTypeTime:
            return new XmlValueTime(access, descShort, descLong);
        case XmlValueTypeVersion:
            return new XmlValueVersion(access, descShort, descLong);
        case XmlValueTypeASCII:
            return new XmlValueASCII(access, descShort, descLong);
        default:
            break;
        }
    }
    return nullptr;
}

/// Replaces the descriptor that `get` returns by a masked copy through `set`; the setters keep what they
/// replace, so the original is deleted here.
template<typename Owner, typename Getter, typename Setter>
void maskValueOf(Owner* owner, Getter get, Setter set, TextMask& mask)
{
    XmlValueInterface* original = (owner->*get)();
    if (XmlValueInterface* copy = maskedValue(original, mask)) {
        (owner->*set)(copy);
        delete original;
    }
}

/// The descriptor for the masked copy of its owner: a masked copy, or, for a kind without texts to mask,
/// the descriptor itself, which the old owner then lets go so that deleting it leaves the descriptor alone.
template<typename Owner> XmlValueInterface* valueForCopy(Owner* owner, XmlValueInterface* value, TextMask& mask)
{
    if (XmlValueInterface* copy = maskedValue(value, mask))
        return copy;
    owner->setValue(nullptr);
    return value;
}

void maskField(XmlValueRegisterField* field, TextMask& mask)
{
    field->setName(mask.text(field->getName()));
    field->setMaskString(mask.text(field->getMaskAsString()));
    // The long getter falls back to the short text; with the short one empty it gives the stored long one.
    const QString descShort = field->getDescriptionShort();
    field->setDescriptionShort(QString());
    const QString descLong = field->getDescriptionLong();
    field->setDescriptionShort(mask.text(descShort));
    if (!descLong.isEmpty())
        field->setDescriptionLong(mask.text(descLong));
    maskValueOf(field, &XmlValueRegisterField::getValue, &XmlValueRegisterField::setValue, mask);
}

void maskVariant(XmlRegisterVariant* variant, TextMask& mask)
{
    variant->setName(mask.text(variant->getName()));
    for (QString& line : *variant->getDescriptions())
        line = mask.text(line);
    for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields())) {
        if (field)
            maskField(field, mask);
    }
    // Only the mask text is a text here; an entry without a setter for it is replaced.
    for (XmlRegisterVariantImpactedBy*& entry : *variant->getImpactedsBy()) {
        const QString maskText = entry ? mask.text(entry->getMaskAsString()) : QString();
        if (!entry || maskText == entry->getMaskAsString())
            continue;
        auto* copy = new XmlRegisterVariantImpactedBy(
            entry->getAddress(), entry->getShift(), maskText, entry->getRangeFrom(), entry->getRangeTo());
        delete entry;
        entry = copy;
    }
}

/// Parameters and inputs have no setter for their description lines: each is replaced by a masked copy.
template<typename Parameter> void maskParameters(QList<Parameter*>& parameters, TextMask& mask)
{
    for (Parameter*& parameter : parameters) {
        if (!parameter)
            continue;
        auto* copy = new Parameter();
        copy->setType(parameter->type());
        copy->setName(mask.text(parameter->name()));
        copy->setIdentifier(mask.text(parameter->identifier()));
        for (const QString& line : parameter->descriptions())
            copy->appendDescription(mask.text(line));
        copy->setValue(valueForCopy(parameter, parameter->value(), mask));
        delete parameter;
        parameter = copy;
    }
}

XmlCANopenObject* maskedObject(XmlCANopenObject* object, TextMask& mask)
{
    auto* copy = new XmlCANopenObject(object->getIndex(), mask.text(object->getName()),
        mask.text(object->getObjectTypeAsString()), mask.text(object->getDataTypeAsString()),
        mask.text(object->getSegment()));
    for (const QString& line : object->getDescriptions())
        copy->appendDescription(mask.text(line));
    for (XmlCANopenEntry* entry : qAsConst(*object->getXmlCANopenEntries())) {
        if (!entry) {
            copy->appendCANopenEntry(nullptr);
            continue;
        }
        auto* entryCopy = new XmlCANopenEntry(entry->getSubIndex(), mask.text(entry->getName()), entry->isPdoMapped());
        entryCopy->setValue(valueForCopy(entry, entry->getValue(), mask));
        copy->appendCANopenEntry(entryCopy);
    }
    return copy;
}

} // namespace

void maskIC(XmlProductIC* ic, TextMask& mask)
{
    ic->setName(mask.text(ic->name()));
    ic->setVersion(mask.text(ic->version()));
    ic->setAuthor(mask.text(ic->author()));
    ic->setDate(mask.text(ic->date()));
    for (QString& line : *ic->mainDescription())
        line = mask.text(line);
    XmlRegisterSet* set = ic->registerSet();
    if (!set)
        return;
    for (XmlGroup* group : qAsConst(*set->getGroups())) {
        if (group)
            group->setName(mask.text(group->getName()));
    }
    for (XmlValueRegister* reg : qAsConst(*set->getRegisters())) {
        if (!reg)
            continue;
        reg->setName(mask.text(reg->name()));
        for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants())) {
            if (variant)
                maskVariant(variant, mask);
        }
    }
}

void maskModule(XmlProductModule* module, TextMask& mask)
{
    static const QRegularExpression wholeNumber(QStringLiteral("^-?[0-9]{1,9}$"));
    if (!wholeNumber.match(module->getNameInFirmwareVersion()).hasMatch())
        module->setNameInFirmwareVersion(QStringLiteral("0"));
    module->setName(mask.text(module->getName()));
    module->setNameOfFirmwareType(mask.text(module->getNameOfFirmwareType()));
    // The two versions have setters only; their joint text "HW: <hardware>; SW: <software>" tells them
    // apart once the software version is empty.
    const QString versions = module->getVersion();
    module->setSoftwareVersion(QString());
    const int softwareAt = module->getVersion().size();
    const QString hardware = versions.mid(4, softwareAt - 10);
    module->setHardwareVersion(mask.text(hardware));
    module->setSoftwareVersion(mask.text(versions.mid(softwareAt)));
    for (XmlAxisParameters* block : qAsConst(*module->getAxisParameters())) {
        if (block)
            maskParameters(*block->getAxisParameter(), mask);
    }
    for (XmlGlobalParameters* bank : qAsConst(*module->getGlobalParameters())) {
        if (bank)
            maskParameters(*bank->getGlobalParameter(), mask);
    }
    if (XmlDigitalInputs* inputs = module->getDigitalInputs())
        maskParameters(*inputs->getDigitalInputs(), mask);
    if (XmlDigitalOutputs* outputs = module->getDigitalOutputs())
        maskParameters(*outputs->getDigitalOutputs(), mask);
    if (XmlAnalogInputs* inputs = module->getAnalogInputs())
        maskParameters(*inputs->getAnalogInputs(), mask);
    for (XmlCANopenObject*& object : *module->getCANopenObjects()) {
        if (!object)
            continue;
        XmlCANopenObject* copy = maskedObject(object, mask);
        delete object;
        object = copy;
    }
}
