#include "LogCapture.h"
#include "TestXml.h"

#include "ic/IcJson.h"
#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPin.h"
#include "ic/XmlPinGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "ic/XmlPins.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/KIVXmlParser.h"
#include "product/ModuleJson.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlDriveConfiguration.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "product/XmlProductModule.h"
#include "values/XmlValueAlert.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDb.h"

#include <QHash>
#include <QJsonDocument>
#include <QtTest>

#include <functional>
#include <memory>
#include <type_traits>

// The rules every element parse function shares, one data row per element kind: how an unknown child is
// reported, that a document ending inside the element gives null and frees what was built (the sanitizer run
// reports leaks), and that a repeated single child replaces the earlier one (and frees it).

namespace {

template<typename T, typename = void> struct HasIndentedText : std::false_type
{
};
template<typename T>
struct HasIndentedText<T, std::void_t<decltype(std::declval<T&>().toString(QString()))>> : std::true_type
{
};

template<typename T> QString debugText(T* object)
{
    if constexpr (HasIndentedText<T>::value)
        return object->toString(QString());
    else
        return object->toString();
}

using Parse = std::function<QString(QXmlStreamReader*)>;

template<typename T> Parse parser(T* (*parse)(QXmlStreamReader*))
{
    return [parse](QXmlStreamReader* reader) {
        std::unique_ptr<T> object(parse(reader));
        if (!object)
            return QStringLiteral("null");
        QString text = debugText(object.get());
        // The products' debug texts leave out pin map, pins and database; their JSON shows all.
        if constexpr (std::is_same_v<T, XmlProductModule>) {
            text += QString::fromUtf8(QJsonDocument(ModuleJson::toJson(object.get())).toJson());
            delete object->getPinMap(); // the module leaves its pin map to its keeper
        } else if constexpr (std::is_same_v<T, XmlProductIC>) {
            text += QString::fromUtf8(QJsonDocument(IcJson::toJson(object.get())).toJson());
        }
        return text;
    };
}

/// The debug text of the first element of `xml`, parsed by the parse function of its name, or "null".
QString parseAndPrint(const QByteArray& xml)
{
    using P = KIVXmlParser;
    static const QHash<QString, Parse> parsers {
        {"product_module", parser(&P::parseProductModule)},
        {"axis_parameters", parser(&P::parseAxisParameters)},
        {"axis_parameter", parser(&P::parseAxisParameter)},
        {"global_parameters", parser(&P::parseGlobalParameters)},
        {"global_parameter", parser(&P::parseGlobalParameter)},
        {"digital_inputs", parser(&P::parseDigitalInputs)},
        {"digital_input", parser(&P::parseDigitalInput)},
        {"digital_outputs", parser(&P::parseDigitalOutputs)},
        {"digital_output", parser(&P::parseDigitalOutput)},
        {"analog_inputs", parser(&P::parseAnalogInputs)},
        {"analog_input", parser(&P::parseAnalogInput)},
        {"irqs", parser(&P::parseIrqs)},
        {"irq", parser(&P::parseIrq)},
        {"coordinates", parser(&P::parseCoordinates)},
        {"coordinate", parser(&P::parseCoordinate)},
        {"canopen_object", parser(&P::parseCANopenObject)},
        {"canopen_entry", parser(&P::parseCANopenEntry)},
        {"drive_configuration", parser(&P::parseDriveConfig)},
        {"drive_ap_settings", parser(&P::parseDriveApSettings)},
        {"drive_ap_setting", parser(&P::parseDriveApSetting)},
        {"value_choice", parser(&P::parseValueChoice)},
        {"value_bool2", parser(&P::parseValueBool2)},
        {"value_db", parser(&P::parseValueDb)},
        {"value_alert", parser(&P::parseValueAlert)},
        {"product_ic", parser(&P::parseProductIC)},
        {"register_set", parser(&P::parseRegisterSet)},
        {"group", parser(&P::parseGroup)},
        {"value_register", parser(&P::parseValueRegister)},
        {"register_variant", parser(&P::parseRegisterVariant)},
        {"value_register_field", parser(&P::parseValueRegisterField)},
        {"register_variant_impacts", parser(&P::parseRegisterVariantImpacts)},
        {"register_variant_impacted_by", parser(&P::parseRegisterVariantImpactedBy)},
        {"pins", parser(&P::parsePins)},
        {"pin_group", parser(&P::parsePinGroup)},
        {"pin", parser(&P::parsePin)},
        {"pin_map", parser(&P::parsePinMap)},
        {"pin_mapping", parser(&P::parsePinMapping)},
        {"database", parser(&P::parseDatabase)},
    };
    TestXml::Reader reader(xml);
    const Parse parse = parsers.value(reader.get()->name().toString());
    return parse ? parse(reader) : QStringLiteral("no parser");
}

QString signature(const char* type, const char* function)
{
    return QStringLiteral("static %1* KIVXmlParser::%2(QXmlStreamReader*)")
        .arg(QLatin1String(type), QLatin1String(function));
}

} // namespace

class TestElements : public QObject
{
    Q_OBJECT
private slots:
    void unknownChildIsReported_data();
    void unknownChildIsReported();
    void unknownChildKeepsWhatItHolds_data();
    void unknownChildKeepsWhatItHolds();
    void truncatedGivesNull_data();
    void truncatedGivesNull();
    void repeatedChildReplacesEarlier_data();
    void repeatedChildReplacesEarlier();
};

void TestElements::unknownChildIsReported_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QStringList>("messages");
    const auto plain = [](const char* element, const char* type, const char* function) {
        QTest::newRow(element) << element << QStringList(signature(type, function) + " \"zz\"");
    };
    const auto couldNot = [](const char* element, const char* type, const char* function) {
        QTest::newRow(element) << element << QStringList(signature(type, function) + " could not parse: \"zz\"");
    };
    QTest::newRow("product_module") << "product_module"
                                    << QStringList {
                                           "test", signature("XmlProductModule", "parseProductModule") + " \"zz\""};
    plain("axis_parameters", "XmlAxisParameters", "parseAxisParameters");
    plain("axis_parameter", "XmlAxisParameter", "parseAxisParameter");
    plain("global_parameters", "XmlGlobalParameters", "parseGlobalParameters");
    plain("global_parameter", "XmlGlobalParameter", "parseGlobalParameter");
    plain("digital_inputs", "XmlDigitalInputs", "parseDigitalInputs");
    plain("digital_input", "XmlDigitalInput", "parseDigitalInput");
    plain("digital_outputs", "XmlDigitalOutputs", "parseDigitalOutputs");
    couldNot("digital_output", "XmlDigitalOutput", "parseDigitalOutput");
    plain("analog_inputs", "XmlAnalogInputs", "parseAnalogInputs");
    plain("analog_input", "XmlAnalogInput", "parseAnalogInput");
    plain("irqs", "XmlIrqs", "parseIrqs");
    plain("irq", "XmlIrq", "parseIrq");
    plain("coordinates", "XmlCoordinates", "parseCoordinates");
    plain("coordinate", "XmlCoordinate", "parseCoordinate");
    // The object is dumped at its end tag, in the debug stream's quoted form.
    QTest::newRow("canopen_object") << "canopen_object"
                                    << QStringList {signature("XmlCANopenObject", "parseCANopenObject") + " \"zz\"",
                                           signature("XmlCANopenObject", "parseCANopenObject")
                                               + " \"XmlCANopenObject( index: 0x0, name: , objectType: , dataType: , "
                                                 "segment: \\n)\""};
    plain("canopen_entry", "XmlCANopenEntry", "parseCANopenEntry");
    plain("drive_configuration", "XmlDriveConfiguration", "parseDriveConfig");
    plain("drive_ap_settings", "XmlDriveApSettings", "parseDriveApSettings");
    plain("drive_ap_setting", "XmlDriveApSetting", "parseDriveApSetting");
    QTest::newRow("value_choice") << "value_choice" << QStringList("KIVXmlParser::parseValueChoice() \"zz\"");
    plain("product_ic", "XmlProductIC", "parseProductIC");
    couldNot("register_set", "XmlRegisterSet", "parseRegisterSet");
    plain("group", "XmlGroup", "parseGroup");
    plain("value_register", "XmlValueRegister", "parseValueRegister");
    couldNot("register_variant", "XmlRegisterVariant", "parseRegisterVariant");
    couldNot("value_register_field", "XmlValueRegisterField", "parseValueRegisterField");
    couldNot("register_variant_impacts", "XmlRegisterVariantImpacts", "parseRegisterVariantImpacts");
    couldNot("register_variant_impacted_by", "XmlRegisterVariantImpactedBy", "parseRegisterVariantImpactedBy");
    couldNot("pins", "XmlPins", "parsePins");
    couldNot("pin_group", "XmlPinGroup", "parsePinGroup");
    couldNot("pin", "XmlPin", "parsePin");
    couldNot("pin_map", "XmlPinMap", "parsePinMap");
    couldNot("pin_mapping", "XmlPinMapping", "parsePinMapping");
    couldNot("database", "XmlDatabase", "parseDatabase");
}

void TestElements::unknownChildIsReported()
{
    QFETCH(QString, element);
    QFETCH(QStringList, messages);
    LogCapture log;
    const QString text = parseAndPrint(QString("<%1><zz/></%1>").arg(element).toUtf8());
    QVERIFY(text != QLatin1String("null") && text != QLatin1String("no parser"));
    QCOMPARE(log.texts(), messages);
    // The unknown child leaves no trace in the element: the same text as without it.
    log.clear();
    QCOMPARE(text, parseAndPrint(QString("<%1></%1>").arg(element).toUtf8()));
}

void TestElements::unknownChildKeepsWhatItHolds_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QString>("text");
    const QString input = signature("XmlDigitalInput", "parseDigitalInput");
    // A choice is no input value: its elements are then met as children of the input itself.
    QTest::newRow("choice in input") << QByteArray(
        "<digital_input><value_choice><choice_element value=\"1\"/></value_choice></digital_input>")
                                     << QStringList {input + " \"value_choice\"", input + " \"choice_element\""}
                                     << QStringLiteral("DigitalInput(type: 0, name: )");
    QTest::newRow("desc inside unknown is still taken")
        << QByteArray("<irq><wrap><desc>d</desc></wrap></irq>")
        << QStringList(signature("XmlIrq", "parseIrq") + " \"wrap\"") << "XmlIrq(type: 0, name: , desc[0]d)";
    QTest::newRow("signed is no analog value")
        << QByteArray("<analog_input><value_signed/></analog_input>")
        << QStringList(signature("XmlAnalogInput", "parseAnalogInput") + " \"value_signed\"")
        << "AnalogInput(type: 0, name: )";
    QTest::newRow("items inside an unknown child are collected")
        << QByteArray("<irqs><group><irq type=\"7\"/></group></irqs>")
        << QStringList(signature("XmlIrqs", "parseIrqs") + " \"group\"") << "XmlIrqs(\nXmlIrq(type: 7, name: ))";
    QTest::newRow("a setting with a child is still taken")
        << QByteArray(
               "<drive_ap_settings name=\"s\"><drive_ap_setting type=\"1\"><x/></drive_ap_setting></drive_ap_settings>")
        << QStringList(signature("XmlDriveApSetting", "parseDriveApSetting") + " \"x\"")
        << "XmlDriveApSettings(name: s\nXmlDriveApSetting(type: 1 value: 0))";
}

void TestElements::unknownChildKeepsWhatItHolds()
{
    QFETCH(QByteArray, xml);
    QFETCH(QStringList, messages);
    QFETCH(QString, text);
    LogCapture log;
    QCOMPARE(parseAndPrint(xml), text);
    QCOMPARE(log.texts(), messages);
}

void TestElements::truncatedGivesNull_data()
{
    // Each cut lands after a complete child that the element already holds, so that there is something to free.
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("product_module") << QByteArray(
        "<product_module><pin_map>\n<pin_mapping/></pin_map><irqs><irq/></irqs>");
    QTest::newRow("axis_parameters") << QByteArray("<axis_parameters><axis_parameter><value_bool/></axis_parameter>");
    QTest::newRow("axis_parameter") << QByteArray("<axis_parameter><desc>x</desc><value_unsigned/>");
    QTest::newRow("inside value") << QByteArray("<axis_parameters><axis_parameter><value_choice>");
    QTest::newRow("global_parameters") << QByteArray("<global_parameters><global_parameter/>");
    QTest::newRow("digital_inputs") << QByteArray("<digital_inputs><digital_input><value_bool/></digital_input>");
    QTest::newRow("digital_outputs") << QByteArray("<digital_outputs><digital_output><value_bool/>");
    QTest::newRow("analog_inputs") << QByteArray("<analog_inputs><analog_input><value_unsigned/></analog_input>");
    QTest::newRow("irqs") << QByteArray("<irqs><irq><desc>d</desc></irq>");
    QTest::newRow("coordinates") << QByteArray("<coordinates><coordinate/>");
    QTest::newRow("canopen_object") << QByteArray(
        "<canopen_object index=\"1\"><desc>d</desc><canopen_entry><value_unsigned/>");
    QTest::newRow("canopen_entry") << QByteArray("<canopen_entry><value_bool/>");
    QTest::newRow("drive_configuration") << QByteArray("<drive_configuration><drive_ap_settings name=\"a\">"
                                                       "<drive_ap_setting type=\"1\"/></drive_ap_settings>");
    QTest::newRow("drive_ap_setting") << QByteArray("<drive_configuration><drive_ap_settings><drive_ap_setting>");
    QTest::newRow("value_choice") << QByteArray("<value_choice><choice_element value=\"1\"/>");
    QTest::newRow("value_choice in an unknown child") << QByteArray("<value_choice><choice_element/><group>");
    QTest::newRow("value_choice, broken markup") << QByteArray("<value_choice><choice_element></value_choice>");
    QTest::newRow("value_bool2") << QByteArray("<value_bool2 name=\"n\" value=\"true\"><x/>");
    QTest::newRow("value_db") << QByteArray("<value_db value=\"3\">");
    QTest::newRow("value_alert") << QByteArray("<value_alert text=\"t\"><x></y>");
    QTest::newRow("product_ic") << QByteArray("<product_ic name=\"x\"><desc>a</desc><register_set/>");
    QTest::newRow("register_set") << QByteArray("<register_set><group/><value_register/>");
    QTest::newRow("value_register") << QByteArray("<value_register address=\"1\"><register_variant name=\"v\">"
                                                  "<value_register_field name=\"f\" mask=\"1\">");
    QTest::newRow("register_variant") << QByteArray("<register_variant><value_register_field><value_alert/>"
                                                    "</value_register_field><register_variant_impacts/>");
    QTest::newRow("value_register_field") << QByteArray("<value_register_field><value_signed/><value_alert/>");
    QTest::newRow("pins") << QByteArray("<pins><pin_group id=\"1\"><pin id=\"1\"/>");
    QTest::newRow("pin_map") << QByteArray("<pin_map><pin_mapping pin_ic=\"1\" pin_board=\"2\"/><pin_mapping>");
    QTest::newRow("database") << QByteArray("<database name=\"d\"><value_db name=\"R_Sense\" value=\"1\"/>");
}

void TestElements::truncatedGivesNull()
{
    QFETCH(QByteArray, xml);
    LogCapture log;
    QCOMPARE(parseAndPrint(xml), QStringLiteral("null"));
    QVERIFY(log.matching(QStringLiteral("parseCANopenObject")).isEmpty()); // no dump of an object given up
}

void TestElements::repeatedChildReplacesEarlier_data()
{
    QTest::addColumn<QString>("element");
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("module inputs") << "product_module"
                                   << QByteArray("<digital_inputs><digital_input type=\"1\"/></digital_inputs>")
                                   << QByteArray("<digital_inputs><digital_input type=\"2\"/></digital_inputs>");
    QTest::newRow("module irqs") << "product_module" << QByteArray("<irqs><irq/></irqs>") << QByteArray("<irqs/>");
    QTest::newRow("module database") << "product_module"
                                     << QByteArray("<database>\n<value_db name=\"R_Sense\" value=\"3\"/></database>")
                                     << QByteArray("<database>\n</database>");
    QTest::newRow("module pin map") << "product_module"
                                    << QByteArray("<pin_map>\n<pin_mapping pin_ic=\"1\"/></pin_map>")
                                    << QByteArray("<pin_map>\n</pin_map>");
    QTest::newRow("parameter value") << "axis_parameter" << QByteArray("<value_unsigned max=\"7\"/>")
                                     << QByteArray(
                                            "<value_choice default=\"2\"><choice_element value=\"2\"/></value_choice>");
    QTest::newRow("entry value") << "canopen_entry" << QByteArray("<value_date/>") << QByteArray("<value_time/>");
    QTest::newRow("field value") << "value_register_field" << QByteArray("<value_unsigned max=\"9\"/>")
                                 << QByteArray("<value_signed min=\"-4\"/>");
    QTest::newRow("IC register set") << "product_ic" << QByteArray("<register_set name=\"a\"><group/></register_set>")
                                     << QByteArray("<register_set name=\"b\"/>");
    QTest::newRow("IC pins") << "product_ic" << QByteArray("<pins packaging=\"a\"><pin_group/></pins>")
                             << QByteArray("<pins packaging=\"b\"/>");
    QTest::newRow("IC database") << "product_ic" << QByteArray("<database name=\"a\"/>")
                                 << QByteArray("<database name=\"b\"/>");
}

void TestElements::repeatedChildReplacesEarlier()
{
    QFETCH(QString, element);
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    const QByteArray open = '<' + element.toUtf8() + '>';
    const QByteArray close = "</" + element.toUtf8() + '>';
    const LogCapture quiet;
    const QString both = parseAndPrint(open + first + second + close);
    QCOMPARE(both, parseAndPrint(open + second + close));
    QVERIFY(both != parseAndPrint(open + first + close));
}

QTEST_GUILESS_MAIN(TestElements)
#include "tst_elements.moc"
