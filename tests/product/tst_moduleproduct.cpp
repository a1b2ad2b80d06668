#include "LogCapture.h"
#include "TestXml.h"

#include "ic/XmlDatabase.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPinMapping.h"
#include "product/KIVXmlParser.h"
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

#include <QtTest>

#include <memory>

// The module's parse: attribute conversions at their limits, the parser's deliberate token quirks, lookups
// and ownership. Whole output texts are in tst_references, the element rules in tst_elements.

namespace {

/// The module of a file, with its pin map freed too (the module deliberately leaves it to its keeper).
struct ParsedModule
{
    std::unique_ptr<XmlProductModule> module;
    std::unique_ptr<XmlPinMap> pinMap;
    XmlProductModule* operator->() const { return module.get(); }
};

ParsedModule parseModule(const QByteArray& children)
{
    ParsedModule parsed;
    parsed.module.reset(static_cast<XmlProductModule*>(
        TestXml::parseProduct("<product_module>" + children + "</product_module>").release()));
    if (parsed.module)
        parsed.pinMap.reset(parsed.module->getPinMap());
    return parsed;
}

template<typename T> std::unique_ptr<T> parse(T* (*function)(QXmlStreamReader*), const QByteArray& xml)
{
    TestXml::Reader reader(xml);
    return std::unique_ptr<T>(function(reader));
}

} // namespace

class TestModuleProduct : public QObject
{
    Q_OBJECT
private slots:
    void numberAttributes_data();
    void numberAttributes();
    void pdoMapping_data();
    void pdoMapping();
    void segmentNames_data();
    void segmentNames();
    void commandsAndKindNames();
    void lookups_data();
    void lookups();
    void unknownChildDropsNextToken();
    void tokenAdvanceBeforePinMapAndDatabase();
    void pinMapOwnership();
    void clearOperations();
};

void TestModuleProduct::numberAttributes_data()
{
    // Each element's own conversion: base 10 or automatic base, and the width it is cut to.
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<qlonglong>("number");
    QTest::newRow("parameter type keeps 8 bits") << QByteArray("<axis_parameter type=\"300\"/>") << 44LL;
    QTest::newRow("junk type") << QByteArray("<global_parameter type=\"x1\"/>") << 0LL;
    QTest::newRow("irq type is not cut") << QByteArray("<irq type=\"300\"/>") << 300LL;
    QTest::newRow("coordinate type is signed") << QByteArray("<coordinate type=\"-2\"/>") << -2LL;
    QTest::newRow("object index hex") << QByteArray("<canopen_object index=\"0x2000\"/>") << 8192LL;
    QTest::newRow("object index octal") << QByteArray("<canopen_object index=\"010\"/>") << 8LL;
    QTest::newRow("subindex is base 10") << QByteArray("<canopen_entry subindex=\"0x01\"/>") << 0LL;
    QTest::newRow("configuration id hex") << QByteArray("<drive_configuration id=\"0x10\"/>") << 16LL;
    QTest::newRow("configuration id low 8 bits") << QByteArray("<drive_configuration id=\"260\"/>") << 4LL;
    QTest::newRow("configuration id octal") << QByteArray("<drive_configuration id=\"010\"/>") << 8LL;
    QTest::newRow("setting type 256") << QByteArray("<drive_ap_setting type=\"256\"/>") << 0LL;
    QTest::newRow("setting type hex is no number") << QByteArray("<drive_ap_setting type=\"0x10\"/>") << 0LL;
    QTest::newRow("setting value negative") << QByteArray("<drive_ap_setting value=\"-5\"/>") << -5LL;
    QTest::newRow("axis number kept whole") << QByteArray("<axis_parameters axis=\"257\"/>") << 257LL;
}

void TestModuleProduct::numberAttributes()
{
    QFETCH(QByteArray, xml);
    QFETCH(qlonglong, number);
    const LogCapture quiet; // the object's dump
    TestXml::Reader reader(xml);
    const QString name = reader.get()->name().toString();
    qlonglong actual = -999;
    if (name == QLatin1String("axis_parameter"))
        actual = parse(&KIVXmlParser::parseAxisParameter, xml)->type();
    else if (name == QLatin1String("global_parameter"))
        actual = parse(&KIVXmlParser::parseGlobalParameter, xml)->type();
    else if (name == QLatin1String("irq"))
        actual = parse(&KIVXmlParser::parseIrq, xml)->getType();
    else if (name == QLatin1String("coordinate"))
        actual = parse(&KIVXmlParser::parseCoordinate, xml)->getType();
    else if (name == QLatin1String("canopen_object"))
        actual = parse(&KIVXmlParser::parseCANopenObject, xml)->getIndex();
    else if (name == QLatin1String("canopen_entry"))
        actual = parse(&KIVXmlParser::parseCANopenEntry, xml)->getSubIndex();
    else if (name == QLatin1String("drive_configuration"))
        actual = parse(&KIVXmlParser::parseDriveConfig, xml)->id();
    else if (name == QLatin1String("drive_ap_setting") && xml.contains("type"))
        actual = parse(&KIVXmlParser::parseDriveApSetting, xml)->type();
    else if (name == QLatin1String("drive_ap_setting"))
        actual = parse(&KIVXmlParser::parseDriveApSetting, xml)->value();
    else if (name == QLatin1String("axis_parameters"))
        actual = parse(&KIVXmlParser::parseAxisParameters, xml)->getAxis();
    QCOMPARE(actual, number);
}

void TestModuleProduct::pdoMapping_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<bool>("mapped");
    QTest::newRow("true") << QByteArray("pdo_mapped=\"true\"") << true;
    QTest::newRow("True") << QByteArray("pdo_mapped=\"True\"") << false;
    QTest::newRow("1") << QByteArray("pdo_mapped=\"1\"") << false;
    QTest::newRow("absent") << QByteArray() << false;
}

void TestModuleProduct::pdoMapping()
{
    QFETCH(QByteArray, attribute);
    QFETCH(bool, mapped);
    auto entry = parse(&KIVXmlParser::parseCANopenEntry, "<canopen_entry " + attribute + "/>");
    QCOMPARE(entry->isPdoMapped(), mapped);
    QCOMPARE(entry->isPdoMappedAsString(), mapped ? QStringLiteral("true") : QStringLiteral("false"));
}

void TestModuleProduct::segmentNames_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    const char* const rows[][2] = {{"D", "Device Profile"}, {"M", "Manufacturer"}, {"C", "Communication"}, {"m", "m"},
        {"X", "X"}}; // lower case is no code
    for (const auto& row : rows)
        QTest::newRow(row[0]) << row[0] << row[1];
}

void TestModuleProduct::segmentNames()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    XmlCANopenObject object(1, QString(), QStringLiteral("VAR"), QStringLiteral("INTEGER8"), code);
    QCOMPARE(object.getSegmentAsString(), name);
}

void TestModuleProduct::commandsAndKindNames()
{
    // The command numbers a host sends to read and write each parameter kind.
    XmlAxisParameter axis;
    XmlGlobalParameter global;
    XmlAnalogInput analog;
    XmlDigitalInput input;
    XmlDigitalOutput output;
    QCOMPARE(QList<int>({axis.readCommand(), axis.writeCommand(), global.readCommand(), global.writeCommand(),
                 analog.readCommand(), output.writeCommand()}),
        QList<int>({6, 5, 10, 10, 0, 0}));
    QStringList names;
    for (XmlParameterInterface* p : QList<XmlParameterInterface*> {&axis, &global, &analog, &input, &output})
        names << QString::number(p->parameterType()) + p->parameterTypeAsString();
    QCOMPARE(
        names, QStringList({"0AxisParameter", "1GlobalParameter", "2AnalogInput", "3DigitalInput", "4DigitalOutput"}));
    QCOMPARE(XmlParameterInterface::parameterTypeAsString(5), QStringLiteral("unknown"));
}

void TestModuleProduct::lookups_data()
{
    QTest::addColumn<int>("axis");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("found");
    QTest::newRow("axis 0 by type skips axis 1") << 0 << 4 << QString() << "first";
    QTest::newRow("axis 1 by type") << 1 << 4 << QString() << "v1";
    QTest::newRow("later block of same axis") << 0 << 7 << QString() << "";
    QTest::newRow("no match") << 1 << 6 << QString() << QString();
    QTest::newRow("by identifier") << 0 << -1 << "speed"
                                   << "first";
    QTest::newRow("identifier is case-sensitive") << 0 << -1 << "Speed" << QString();
    QTest::newRow("identifier in 8-bit wrapped block") << 0 << -1 << "standby"
                                                       << "";
    QTest::newRow("unknown axis") << 2 << 4 << QString() << QString();
}

void TestModuleProduct::lookups()
{
    QFETCH(int, axis);
    QFETCH(int, type);
    QFETCH(QString, identifier);
    QFETCH(QString, found);
    auto module
        = parseModule("<axis_parameters axis=\"1\"><axis_parameter type=\"4\" identifier=\"speed\" name=\"v1\"/>"
                      "</axis_parameters><axis_parameters axis=\"0\"><axis_parameter type=\"6\"/>"
                      "<axis_parameter type=\"4\" identifier=\"speed\" name=\"first\"/></axis_parameters>"
                      "<axis_parameters axis=\"256\"><axis_parameter type=\"4\" name=\"wrapped\"/>"
                      "<axis_parameter type=\"7\" identifier=\"standby\"/></axis_parameters>");
    XmlAxisParameter* parameter = type >= 0 ? module->getAxisParameterValue(axis, static_cast<unsigned char>(type))
                                            : module->getAxisParameterValue(axis, identifier);
    QCOMPARE(parameter != nullptr, !found.isNull());
    if (parameter)
        QCOMPARE(parameter->name(), found);
}

void TestModuleProduct::unknownChildDropsNextToken()
{
    LogCapture log;
    // The token after the unknown start tag is "name"'s start tag: it is dropped, so the name stays empty.
    auto module = parseModule("<wrap><name>lost</name></wrap><name_fw_type>T</name_fw_type>");
    QCOMPARE(module->getName(), QString());
    QCOMPARE(module->getNameOfFirmwareType(), QStringLiteral("T"));
}

void TestModuleProduct::tokenAdvanceBeforePinMapAndDatabase()
{
    const LogCapture quiet;
    auto module = parseModule("<pin_map><pin_mapping pin_ic=\"1\"/>\n<pin_mapping pin_ic=\"2\"/></pin_map>"
                              "<database name=\"unseen\">\n<value_db name=\"V_SRTH\" value=\"305\"/></database>");
    // Without character data after "<pin_map>" the advance lands on the first mapping, which is passed over.
    QCOMPARE(module->getPinMap()->getPinMappings()->size(), 1);
    QCOMPARE(module->getPinMap()->getPinMappings()->first()->getPinIc(), 2u);
    QCOMPARE(module->getDatabase()->getName(), QString());
    QCOMPARE(module->getDatabase()->getVSRTH(), 305u);
}

void TestModuleProduct::pinMapOwnership()
{
    const QByteArray xml
        = "<product_module><pin_map>\n<pin_mapping pin_ic=\"4\" pin_board=\"9\"/></pin_map></product_module>";
    std::unique_ptr<XmlProductInterface> product = TestXml::parseProduct(xml);
    QVERIFY(product);
    XmlPinMap* pinMap = static_cast<XmlProductModule*>(product.get())->getPinMap();
    product.reset();
    // Still alive after the module is gone (the sanitizer run would report a use after free).
    QCOMPARE(pinMap->getPinMappings()->first()->getPinBoard(), 9u);
    delete pinMap;
    // The release function frees the pin map that the module leaves to its keeper (the sanitizer run would
    // report it as leaked otherwise); an IC and null go through it too.
    KIVXmlParser::ProductPtr module(TestXml::parseProduct(xml).release());
    QVERIFY(static_cast<XmlProductModule*>(module.get())->getPinMap());
    KIVXmlParser::ProductPtr ic(TestXml::parseProduct("<product_ic name=\"x\"></product_ic>").release());
    QCOMPARE(ic->type(), 0);
    KIVXmlParser::deleteProduct(nullptr);
}

void TestModuleProduct::clearOperations()
{
    const LogCapture quiet;
    auto module = parseModule("<axis_parameters/><global_parameters/><canopen_object/><drive_configuration/>"
                              "<digital_inputs><digital_input/></digital_inputs><irqs><irq/></irqs>"
                              "<database>\n</database>");
    XmlDigitalInputs* inputs = module->getDigitalInputs();
    XmlDatabase* database = module->getDatabase();
    module->clearAxisParameters();
    module->clearGlobalParameters();
    module->clearCANopenObjects();
    module->clearDriveConfigurations();
    module->clearDigitalInputs();
    module->clearIrqs();
    module->clearCoordinates(); // no container: nothing to do
    module->clearDatabase();
    QVERIFY(module->getAxisParameters()->isEmpty() && module->getGlobalParameters()->isEmpty());
    QVERIFY(module->getCANopenObjects()->isEmpty() && module->driveConfigurations()->isEmpty());
    QCOMPARE(module->getDigitalInputs(), inputs); // containers are emptied, not freed
    QVERIFY(inputs->getDigitalInputs()->isEmpty());
    QVERIFY(module->getIrqs()->getIrqs()->isEmpty());
    QCOMPARE(module->getDatabase(), database);
}

QTEST_GUILESS_MAIN(TestModuleProduct)
#include "tst_moduleproduct.moc"
