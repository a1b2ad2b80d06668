#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "product/XmlAnalogInputs.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCoordinates.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlDigitalOutputs.h"
#include "product/XmlGlobalParameters.h"
#include "product/XmlIrqs.h"
#include "values/XmlValueInterface.h"

#include <QtTest>

#include <QHash>

#include <functional>
#include <memory>

namespace {

const QString kBoolText = QStringLiteral("\tXmlValueBool(desc_short_false: off, desc_short_true: on, "
                                         "desc_long_false: , desc_long_true: , def: false, access: RW)");
const QByteArray kBoolXml = "<value_bool desc_short_false=\"off\" desc_short_true=\"on\" access=\"RW\"/>";

template<typename T> std::function<QString(QXmlStreamReader*)> printer(T* (*parse)(QXmlStreamReader*))
{
    return [parse](QXmlStreamReader* reader) {
        std::unique_ptr<T> object(parse(reader));
        return object ? object->toString() : QStringLiteral("null");
    };
}

/// Parses the first element of `xml` with the parse function of its name and returns its debug text, or
/// "null" when the parse function gives up.
QString parseAndPrint(const QByteArray& xml)
{
    static const QHash<QString, std::function<QString(QXmlStreamReader*)>> printers {
        {"axis_parameter", printer(&KIVXmlParser::parseAxisParameter)},
        {"global_parameter", printer(&KIVXmlParser::parseGlobalParameter)},
        {"digital_input", printer(&KIVXmlParser::parseDigitalInput)},
        {"digital_output", printer(&KIVXmlParser::parseDigitalOutput)},
        {"analog_input", printer(&KIVXmlParser::parseAnalogInput)},
        {"irq", printer(&KIVXmlParser::parseIrq)},
        {"coordinate", printer(&KIVXmlParser::parseCoordinate)},
        {"axis_parameters", printer(&KIVXmlParser::parseAxisParameters)},
        {"global_parameters", printer(&KIVXmlParser::parseGlobalParameters)},
        {"digital_inputs", printer(&KIVXmlParser::parseDigitalInputs)},
        {"digital_outputs", printer(&KIVXmlParser::parseDigitalOutputs)},
        {"analog_inputs", printer(&KIVXmlParser::parseAnalogInputs)},
        {"irqs", printer(&KIVXmlParser::parseIrqs)},
        {"coordinates", printer(&KIVXmlParser::parseCoordinates)},
    };
    TestXml::Reader reader(xml);
    return printers.value(reader.get()->name().toString())(reader);
}

} // namespace

class TestParameters : public QObject
{
    Q_OBJECT
private slots:
    void leafDebugText_data();
    void leafDebugText();
    void typeIsTruncatedOnlyForParameterKinds();
    void lastValueChildWins();
    void unknownChildMessages_data();
    void unknownChildMessages();
    void containerDebugText_data();
    void containerDebugText();
    void containerCollectsNestedItems();
    void commandsAndKindNames();
    void truncatedGivesNull_data();
    void truncatedGivesNull();
};

void TestParameters::leafDebugText_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("expected");
    QTest::newRow("axis, no value") << QByteArray("<axis_parameter type=\"4\" name=\"Max speed\" identifier=\"v\">"
                                                  "<desc>first</desc><desc>20 \\u00b0C</desc></axis_parameter>")
                                    << QStringLiteral("AxisParameter(type: 4, name: Max speed, desc[0]first, "
                                                      "desc[1]20 \u00b0C)");
    QTest::newRow("global bool") << "<global_parameter type=\"77\" name=\"Auto start\">" + kBoolXml
            + "</global_parameter>"
                                 << "GlobalParameter(type: 77, name: Auto start\n        value: " + kBoolText + ")";
    QTest::newRow("digital input") << "<digital_input type=\"2\" name=\"IN_2\">" + kBoolXml + "</digital_input>"
                                   << "DigitalInput(type: 2, name: IN_2\n        value: " + kBoolText + ")";
    QTest::newRow("digital output") << "<digital_output type=\"1\" name=\"OUT\">" + kBoolXml + "</digital_output>"
                                    << "DigitalOutput(type: 1, name: OUT\n        value: " + kBoolText + ")";
    QTest::newRow("analog input")
        << QByteArray("<analog_input type=\"3\" name=\"AIN_0\"><value_unsigned min=\"0\" max=\"4095\" unit=\"mV\" "
                      "access=\"R\"/></analog_input>")
        << QStringLiteral("AnalogInput(type: 3, name: AIN_0\n        value: \tXmlValueUnsigned(min: 0, max: 4095, "
                          "def: 0, decimals: 0, unit: [mV], formatString: %1 , formatMul: 1, formatDiv: 1, "
                          "access: R, options: 0))");
    QTest::newRow("irq") << "<irq type=\"300\" name=\"Timer\"><desc>t</desc>" + kBoolXml + "</irq>"
                         << "XmlIrq(type: 300, name: Timer, desc[0]t\n        value: " + kBoolText + ")";
    QTest::newRow("coordinate") << QByteArray("<coordinate type=\"-2\" name=\"C\"/>")
                                << QStringLiteral("XmlCoordinate(type: -2, name: C)");
}

void TestParameters::leafDebugText()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, expected);
    KIV_COMPARE_TEXT(parseAndPrint(xml), expected);
}

void TestParameters::typeIsTruncatedOnlyForParameterKinds()
{
    TestXml::Reader axisReader("<axis_parameter type=\"300\" name=\"n\" identifier=\"id_1\"/>");
    std::unique_ptr<XmlAxisParameter> axis(KIVXmlParser::parseAxisParameter(axisReader));
    QCOMPARE(int(axis->type()), 44);
    QCOMPARE(axis->identifier(), QStringLiteral("id_1"));
    QVERIFY(!axis->value());

    TestXml::Reader irqReader("<irq type=\"300\"/>");
    std::unique_ptr<XmlIrq> irq(KIVXmlParser::parseIrq(irqReader));
    QCOMPARE(irq->getType(), 300);

    TestXml::Reader junkReader("<global_parameter type=\"x1\"/>");
    std::unique_ptr<XmlGlobalParameter> junk(KIVXmlParser::parseGlobalParameter(junkReader));
    QCOMPARE(int(junk->type()), 0);
    QCOMPARE(junk->name(), QString());
}

void TestParameters::lastValueChildWins()
{
    // The replaced descriptor is freed by the parser (the sanitizer run checks it).
    TestXml::Reader reader("<axis_parameter><value_unsigned max=\"7\"/>" + kBoolXml
        + "<value_choice default=\"2\"><choice_element value=\"2\" desc_short=\"two\"/></value_choice>"
          "</axis_parameter>");
    std::unique_ptr<XmlAxisParameter> parameter(KIVXmlParser::parseAxisParameter(reader));
    QVERIFY(parameter);
    QCOMPARE(parameter->value()->getType(), int(XmlValueTypeChoice));
    QCOMPARE(parameter->value()->getDefault(), 2LL);
}

void TestParameters::unknownChildMessages_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QString>("expected");
    QTest::newRow("output says could not parse")
        << QByteArray("<digital_output><bogus/></digital_output>")
        << QStringList {"static XmlDigitalOutput* KIVXmlParser::parseDigitalOutput(QXmlStreamReader*) could not "
                        "parse: \"bogus\""}
        << QStringLiteral("DigitalOutput(type: 0, name: )");
    QTest::newRow("input does not") << QByteArray("<digital_input><bogus/></digital_input>")
                                    << QStringList {"static XmlDigitalInput* "
                                                    "KIVXmlParser::parseDigitalInput(QXmlStreamReader*) \"bogus\""}
                                    << QStringLiteral("DigitalInput(type: 0, name: )");
    // A choice is no input value: its elements are then met as children of the input itself.
    QTest::newRow("choice in input")
        << QByteArray("<digital_input><value_choice><choice_element value=\"1\"/></value_choice></digital_input>")
        << QStringList {"static XmlDigitalInput* KIVXmlParser::parseDigitalInput(QXmlStreamReader*) "
                        "\"value_choice\"",
               "static XmlDigitalInput* KIVXmlParser::parseDigitalInput(QXmlStreamReader*) \"choice_element\""}
        << QStringLiteral("DigitalInput(type: 0, name: )");
    QTest::newRow("desc inside unknown is still taken")
        << QByteArray("<coordinate><wrap><desc>d</desc></wrap></coordinate>")
        << QStringList {"static XmlCoordinate* KIVXmlParser::parseCoordinate(QXmlStreamReader*) \"wrap\""}
        << QStringLiteral("XmlCoordinate(type: 0, name: , desc[0]d)");
    QTest::newRow("signed is no analog value")
        << QByteArray("<analog_input><value_signed/></analog_input>")
        << QStringList {"static XmlAnalogInput* KIVXmlParser::parseAnalogInput(QXmlStreamReader*) \"value_signed\""}
        << QStringLiteral("AnalogInput(type: 0, name: )");
}

void TestParameters::unknownChildMessages()
{
    QFETCH(QByteArray, xml);
    QFETCH(QStringList, messages);
    QFETCH(QString, expected);
    LogCapture log;
    KIV_COMPARE_TEXT(parseAndPrint(xml), expected);
    QCOMPARE(log.texts(), messages);
}

void TestParameters::containerDebugText_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty axis block") << QByteArray("<axis_parameters/>") << QStringLiteral("AxisParameters(axis=0)");
    QTest::newRow("axis block")
        << QByteArray("<axis_parameters axis=\"1\"><axis_parameter type=\"4\" name=\"a\"/>"
                      "<axis_parameter type=\"5\" name=\"b\"/></axis_parameters>")
        << QStringLiteral("AxisParameters(axis=1\nAxisParameter(type: 4, name: a)\nAxisParameter(type: 5, name: b))");
    QTest::newRow("bank") << QByteArray("<global_parameters bank=\"2\"><global_parameter type=\"0\" name=\"u\"/>"
                                        "</global_parameters>")
                          << QStringLiteral("GloblParameters(bank=2\nGlobalParameter(type: 0, name: u))");
    QTest::newRow("digital inputs") << QByteArray("<digital_inputs><digital_input name=\"i\"/></digital_inputs>")
                                    << QStringLiteral("XmlDigitalInputs(\nDigitalInput(type: 0, name: i))");
    QTest::newRow("digital outputs") << QByteArray("<digital_outputs/>") << QStringLiteral("XmlDigitalOutputs()");
    QTest::newRow("analog inputs") << QByteArray("<analog_inputs><analog_input/></analog_inputs>")
                                   << QStringLiteral("XmlAnalogInputs(\nAnalogInput(type: 0, name: ))");
    QTest::newRow("irqs") << QByteArray("<irqs><irq type=\"1\"/><irq type=\"2\"/></irqs>")
                          << QStringLiteral("XmlIrqs(\nXmlIrq(type: 1, name: )\nXmlIrq(type: 2, name: ))");
    QTest::newRow("coordinates") << QByteArray("<coordinates><coordinate type=\"3\"/></coordinates>")
                                 << QStringLiteral("XmlCoordinates(\nXmlCoordinate(type: 3, name: ))");
}

void TestParameters::containerDebugText()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, expected);
    KIV_COMPARE_TEXT(parseAndPrint(xml), expected);
}

void TestParameters::containerCollectsNestedItems()
{
    LogCapture log;
    TestXml::Reader reader("<digital_inputs><group><digital_input type=\"7\"/></group></digital_inputs>");
    std::unique_ptr<XmlDigitalInputs> inputs(KIVXmlParser::parseDigitalInputs(reader));
    QCOMPARE(inputs->getDigitalInputs()->size(), 1);
    QCOMPARE(int(inputs->getDigitalInputs()->first()->type()), 7);
    QCOMPARE(log.texts(),
        QStringList {"static XmlDigitalInputs* KIVXmlParser::parseDigitalInputs(QXmlStreamReader*) \"group\""});
}

void TestParameters::commandsAndKindNames()
{
    XmlAxisParameter axis;
    XmlGlobalParameter global;
    XmlAnalogInput analog;
    XmlDigitalInput input;
    XmlDigitalOutput output;
    QCOMPARE(axis.readCommand(), 6);
    QCOMPARE(axis.writeCommand(), 5);
    QCOMPARE(global.readCommand(), 10);
    QCOMPARE(global.writeCommand(), 10);
    QCOMPARE(analog.readCommand(), 0);
    QCOMPARE(output.writeCommand(), 0);
    const QList<XmlParameterInterface*> all {&axis, &global, &analog, &input, &output};
    QStringList names;
    for (XmlParameterInterface* p : all)
        names << QString::number(p->parameterType()) + p->parameterTypeAsString();
    QCOMPARE(
        names, QStringList({"0AxisParameter", "1GlobalParameter", "2AnalogInput", "3DigitalInput", "4DigitalOutput"}));
    QCOMPARE(XmlParameterInterface::parameterTypeAsString(5), QStringLiteral("unknown"));
}

void TestParameters::truncatedGivesNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("leaf") << QByteArray("<axis_parameter><desc>x</desc><value_unsigned/>");
    QTest::newRow("container") << QByteArray("<axis_parameters><axis_parameter>" + kBoolXml + "</axis_parameter>");
    QTest::newRow("inside value") << QByteArray("<axis_parameters><axis_parameter><value_choice>");
}

void TestParameters::truncatedGivesNull()
{
    QFETCH(QByteArray, xml);
    QCOMPARE(parseAndPrint(xml), QStringLiteral("null"));
}

QTEST_GUILESS_MAIN(TestParameters)
#include "tst_parameters.moc"
