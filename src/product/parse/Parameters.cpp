// Parse functions of the parameter family: five parameter kinds, interrupts, coordinates and their
// seven containers, each declared by its tables.

#include "ic/XmlValueRegister.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "product/parse/ProductParse_p.h"
#include "values/XmlValueBool.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueSigned.h"
#include "values/XmlValueUnsigned.h"

using namespace KivParse;

namespace {

/// Axis and global parameters accept every numeric, boolean, choice and register value.
template<typename Leaf>
const ChildRule<Leaf> kParameterRules[] = {
    {QLatin1String("desc"), &storeDescription<Leaf>},
    {QLatin1String("value_signed"), &storeValue<Leaf, &KIVXmlParser::parseValueSigned>},
    {QLatin1String("value_unsigned"), &storeValue<Leaf, &KIVXmlParser::parseValueUnsigned>},
    {QLatin1String("value_bool"), &storeValue<Leaf, &KIVXmlParser::parseValueBool>},
    {QLatin1String("value_choice"), &storeValue<Leaf, &KIVXmlParser::parseValueChoice>},
    {QLatin1String("value_register"), &storeValue<Leaf, &KIVXmlParser::parseValueRegister>},
};

const ChildRule<XmlDigitalInput> kDigitalInputRules[] = {
    {QLatin1String("desc"), &storeDescription<XmlDigitalInput>},
    {QLatin1String("value_bool"), &storeValue<XmlDigitalInput, &KIVXmlParser::parseValueBool>},
    {QLatin1String("value_unsigned"), &storeValue<XmlDigitalInput, &KIVXmlParser::parseValueUnsigned>},
};

const ChildRule<XmlDigitalOutput> kDigitalOutputRules[] = {
    {QLatin1String("desc"), &storeDescription<XmlDigitalOutput>},
    {QLatin1String("value_bool"), &storeValue<XmlDigitalOutput, &KIVXmlParser::parseValueBool>},
    {QLatin1String("value_unsigned"), &storeValue<XmlDigitalOutput, &KIVXmlParser::parseValueUnsigned>},
    {QLatin1String("value_signed"), &storeValue<XmlDigitalOutput, &KIVXmlParser::parseValueSigned>},
};

const ChildRule<XmlAnalogInput> kAnalogInputRules[] = {
    {QLatin1String("desc"), &storeDescription<XmlAnalogInput>},
    {QLatin1String("value_unsigned"), &storeValue<XmlAnalogInput, &KIVXmlParser::parseValueUnsigned>},
};

const ChildRule<XmlIrq> kIrqRules[] = {
    {QLatin1String("desc"), &storeDescription<XmlIrq>},
    {QLatin1String("value_bool"), &storeValue<XmlIrq, &KIVXmlParser::parseValueBool>},
};

const ChildRule<XmlCoordinate> kCoordinateRules[] = {
    {QLatin1String("desc"), &storeDescription<XmlCoordinate>},
    {QLatin1String("value_signed"), &storeValue<XmlCoordinate, &KIVXmlParser::parseValueSigned>},
};

const ChildRule<XmlAxisParameters> kAxisParametersRules[] = {
    {QLatin1String("axis_parameter"),
        &appendChild<XmlAxisParameters, &KIVXmlParser::parseAxisParameter, &XmlAxisParameters::appendAxisParameter>},
};

const ChildRule<XmlGlobalParameters> kGlobalParametersRules[] = {
    {QLatin1String("global_parameter"),
        &appendChild<XmlGlobalParameters, &KIVXmlParser::parseGlobalParameter,
            &XmlGlobalParameters::appendGlobalParameter>},
};

const ChildRule<XmlDigitalInputs> kDigitalInputsRules[] = {
    {QLatin1String("digital_input"),
        &appendChild<XmlDigitalInputs, &KIVXmlParser::parseDigitalInput, &XmlDigitalInputs::appendDigitalInput>},
};

const ChildRule<XmlDigitalOutputs> kDigitalOutputsRules[] = {
    {QLatin1String("digital_output"),
        &appendChild<XmlDigitalOutputs, &KIVXmlParser::parseDigitalOutput, &XmlDigitalOutputs::appendDigitalOutput>},
};

const ChildRule<XmlAnalogInputs> kAnalogInputsRules[] = {
    {QLatin1String("analog_input"),
        &appendChild<XmlAnalogInputs, &KIVXmlParser::parseAnalogInput, &XmlAnalogInputs::appendAnalogInput>},
};

const ChildRule<XmlIrqs> kIrqsRules[] = {
    {QLatin1String("irq"), &appendChild<XmlIrqs, &KIVXmlParser::parseIrq, &XmlIrqs::appendIrq>},
};

const ChildRule<XmlCoordinates> kCoordinatesRules[] = {
    {QLatin1String("coordinate"),
        &appendChild<XmlCoordinates, &KIVXmlParser::parseCoordinate, &XmlCoordinates::appendCoordinate>},
};

const ElementInfo kAxisParameterInfo {QLatin1String("axis_parameter"), OtherChild::Report,
    "static XmlAxisParameter* KIVXmlParser::parseAxisParameter(QXmlStreamReader*)"};
const ElementInfo kGlobalParameterInfo {QLatin1String("global_parameter"), OtherChild::Report,
    "static XmlGlobalParameter* KIVXmlParser::parseGlobalParameter(QXmlStreamReader*)"};
const ElementInfo kDigitalInputInfo {QLatin1String("digital_input"), OtherChild::Report,
    "static XmlDigitalInput* KIVXmlParser::parseDigitalInput(QXmlStreamReader*)"};
const ElementInfo kDigitalOutputInfo {QLatin1String("digital_output"), OtherChild::Report,
    "static XmlDigitalOutput* KIVXmlParser::parseDigitalOutput(QXmlStreamReader*)", kCouldNotParse};
const ElementInfo kAnalogInputInfo {QLatin1String("analog_input"), OtherChild::Report,
    "static XmlAnalogInput* KIVXmlParser::parseAnalogInput(QXmlStreamReader*)"};
const ElementInfo kIrqInfo {
    QLatin1String("irq"), OtherChild::Report, "static XmlIrq* KIVXmlParser::parseIrq(QXmlStreamReader*)"};
const ElementInfo kCoordinateInfo {QLatin1String("coordinate"), OtherChild::Report,
    "static XmlCoordinate* KIVXmlParser::parseCoordinate(QXmlStreamReader*)"};

const ElementInfo kAxisParametersInfo {QLatin1String("axis_parameters"), OtherChild::Report,
    "static XmlAxisParameters* KIVXmlParser::parseAxisParameters(QXmlStreamReader*)"};
const ElementInfo kGlobalParametersInfo {QLatin1String("global_parameters"), OtherChild::Report,
    "static XmlGlobalParameters* KIVXmlParser::parseGlobalParameters(QXmlStreamReader*)"};
const ElementInfo kDigitalInputsInfo {QLatin1String("digital_inputs"), OtherChild::Report,
    "static XmlDigitalInputs* KIVXmlParser::parseDigitalInputs(QXmlStreamReader*)"};
const ElementInfo kDigitalOutputsInfo {QLatin1String("digital_outputs"), OtherChild::Report,
    "static XmlDigitalOutputs* KIVXmlParser::parseDigitalOutputs(QXmlStreamReader*)"};
const ElementInfo kAnalogInputsInfo {QLatin1String("analog_inputs"), OtherChild::Report,
    "static XmlAnalogInputs* KIVXmlParser::parseAnalogInputs(QXmlStreamReader*)"};
const ElementInfo kIrqsInfo {
    QLatin1String("irqs"), OtherChild::Report, "static XmlIrqs* KIVXmlParser::parseIrqs(QXmlStreamReader*)"};
const ElementInfo kCoordinatesInfo {QLatin1String("coordinates"), OtherChild::Report,
    "static XmlCoordinates* KIVXmlParser::parseCoordinates(QXmlStreamReader*)"};

} // namespace

XmlAxisParameter* KIVXmlParser::parseAxisParameter(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kAxisParameterInfo, kParameterRules<XmlAxisParameter>);
}

XmlGlobalParameter* KIVXmlParser::parseGlobalParameter(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kGlobalParameterInfo, kParameterRules<XmlGlobalParameter>);
}

XmlDigitalInput* KIVXmlParser::parseDigitalInput(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kDigitalInputInfo, kDigitalInputRules);
}

XmlDigitalOutput* KIVXmlParser::parseDigitalOutput(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kDigitalOutputInfo, kDigitalOutputRules);
}

XmlAnalogInput* KIVXmlParser::parseAnalogInput(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kAnalogInputInfo, kAnalogInputRules);
}

XmlIrq* KIVXmlParser::parseIrq(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kIrqInfo, kIrqRules);
}

XmlCoordinate* KIVXmlParser::parseCoordinate(QXmlStreamReader* reader)
{
    return parseLeaf(reader, kCoordinateInfo, kCoordinateRules);
}

XmlAxisParameters* KIVXmlParser::parseAxisParameters(QXmlStreamReader* reader)
{
    auto* block = new XmlAxisParameters;
    block->setAxis(attrInt(reader->attributes(), QLatin1String("axis")));
    return parseElement(reader, block, kAxisParametersInfo, kAxisParametersRules);
}

XmlGlobalParameters* KIVXmlParser::parseGlobalParameters(QXmlStreamReader* reader)
{
    auto* bank = new XmlGlobalParameters;
    bank->setBank(attrInt(reader->attributes(), QLatin1String("bank")));
    return parseElement(reader, bank, kGlobalParametersInfo, kGlobalParametersRules);
}

XmlDigitalInputs* KIVXmlParser::parseDigitalInputs(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlDigitalInputs, kDigitalInputsInfo, kDigitalInputsRules);
}

XmlDigitalOutputs* KIVXmlParser::parseDigitalOutputs(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlDigitalOutputs, kDigitalOutputsInfo, kDigitalOutputsRules);
}

XmlAnalogInputs* KIVXmlParser::parseAnalogInputs(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlAnalogInputs, kAnalogInputsInfo, kAnalogInputsRules);
}

XmlIrqs* KIVXmlParser::parseIrqs(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlIrqs, kIrqsInfo, kIrqsRules);
}

XmlCoordinates* KIVXmlParser::parseCoordinates(QXmlStreamReader* reader)
{
    return parseElement(reader, new XmlCoordinates, kCoordinatesInfo, kCoordinatesRules);
}
