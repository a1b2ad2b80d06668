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
#include "values/XmlValueInterface.h"

#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

/// The module of a file, with its pin map freed too (the module deliberately leaves it to its keeper).
struct ParsedModule
{
    std::unique_ptr<XmlProductModule> module;
    std::unique_ptr<XmlPinMap> pinMap;
    XmlProductModule* operator->() const { return module.get(); }
    explicit operator bool() const { return bool(module); }
};

ParsedModule parseModule(const QByteArray& xml)
{
    ParsedModule parsed;
    std::unique_ptr<XmlProductInterface> product = TestXml::parseProduct(xml);
    if (!product)
        return parsed;
    parsed.module.reset(qobject_cast<XmlProductModule*>(product.get()));
    if (!parsed.module)
        return parsed;
    product.release();
    parsed.pinMap.reset(parsed.module->getPinMap());
    return parsed;
}

const QByteArray kTwoAxes = "<product_module>"
                            "<axis_parameters axis=\"1\"><axis_parameter type=\"4\" identifier=\"speed\" name=\"v1\"/>"
                            "</axis_parameters>"
                            "<axis_parameters axis=\"0\"><axis_parameter type=\"6\" identifier=\"current\"/>"
                            "<axis_parameter type=\"4\" identifier=\"speed\" name=\"first\"/></axis_parameters>"
                            "<axis_parameters axis=\"256\"><axis_parameter type=\"4\" name=\"wrapped\"/>"
                            "<axis_parameter type=\"7\" identifier=\"standby\"/></axis_parameters>"
                            "</product_module>";

/// Checks that every opened tag is closed in order (void elements aside) and that no stray "<" or "&" is
/// left from unescaped text. Returns the first problem, or an empty text.
QString htmlProblem(const QString& html)
{
    static const QRegularExpression tag(QStringLiteral("<(/?)([a-zA-Z][a-zA-Z0-9]*)[^<>]*>"));
    static const QStringList voids {"meta", "br"};
    QStringList open;
    const QString doctype = QStringLiteral("<!DOCTYPE html>");
    int last = html.startsWith(doctype) ? doctype.size() : 0;
    auto it = tag.globalMatch(html);
    while (it.hasNext()) {
        const QRegularExpressionMatch match = it.next();
        const QString between = html.mid(last, match.capturedStart() - last);
        if (between.contains(QLatin1Char('<')) || between.contains(QLatin1Char('>')))
            return QStringLiteral("stray bracket in: ") + between;
        if (between.contains(QRegularExpression(QStringLiteral("&(?!(amp|lt|gt|quot);)"))))
            return QStringLiteral("stray ampersand in: ") + between;
        last = match.capturedEnd();
        const QString name = match.captured(2);
        if (voids.contains(name))
            continue;
        if (match.captured(1).isEmpty()) {
            open.append(name);
        } else if (open.isEmpty() || open.takeLast() != name) {
            return QStringLiteral("unbalanced </") + name + QLatin1Char('>');
        }
    }
    return open.isEmpty() ? QString()
                          : QStringLiteral("unclosed <") + open.join(QLatin1String("><")) + QLatin1Char('>');
}

} // namespace

class TestModuleProduct : public QObject
{
    Q_OBJECT
private slots:
    void emptyModule();
    void headerAndDebugText();
    void repeatedContainerReplacesEarlier();
    void lookups_data();
    void lookups();
    void unknownChildNoteAndDroppedToken();
    void tokenAdvanceBeforePinMapAndDatabase();
    void pinMapOutlivesModule();
    void releaseTakesPinMap();
    void clearOperations();
    void truncatedModuleGivesNull_data();
    void truncatedModuleGivesNull();
    void htmlPage();
    void htmlDriveSettings();
    void exampleFile();
};

void TestModuleProduct::emptyModule()
{
    auto module = parseModule("<product_module/>");
    QVERIFY(module);
    QCOMPARE(module->type(), 1);
    QVERIFY(module->getAxisParameters()->isEmpty());
    QVERIFY(!module->getDigitalInputs() && !module->getPinMap() && !module->getDatabase());
    QCOMPARE(module->toString(),
        QStringLiteral("Product: MODULE\nName: \nNameInFWVersion: \nNameFWType: \nHardwareVersion: \n"
                       "SoftwareVersion: "));
    QCOMPARE(module->getVersion(), QStringLiteral("HW: ; SW: "));
}

void TestModuleProduct::headerAndDebugText()
{
    LogCapture log;
    auto module = parseModule("<product_module><name>AB-12</name><name_fw_version>12</name_fw_version>"
                              "<name_fw_type>KIVL</name_fw_type><hardware_version>1.1</hardware_version>"
                              "<software_version>2.0</software_version>"
                              "<global_parameters bank=\"3\"/><axis_parameters axis=\"0\"/>"
                              "<canopen_object index=\"0x1000\" name=\"Device\"/>"
                              "<coordinates/><irqs/><analog_inputs/><digital_outputs/><digital_inputs/>"
                              "<drive_configuration id=\"1\"/>"
                              "<database>\n<value_db name=\"R_Sense\" value=\"5\"/></database>"
                              "</product_module>");
    QVERIFY(module);
    QCOMPARE(module->getName(), QStringLiteral("AB-12"));
    QCOMPARE(module->getVersion(), QStringLiteral("HW: 1.1; SW: 2.0"));
    // Drive configurations are not part of the debug text; the containers follow in a fixed order.
    KIV_COMPARE_TEXT(module->toString(),
        QStringLiteral("Product: MODULE\nName: AB-12\nNameInFWVersion: 12\nNameFWType: KIVL\nHardwareVersion: 1.1\n"
                       "SoftwareVersion: 2.0\nAxisParameters(axis=0)\nGloblParameters(bank=3)\n"
                       "XmlCANopenObject( index: 0x1000, name: Device, objectType: , dataType: , segment: \n)\n"
                       "XmlDigitalInputs()\nXmlDigitalOutputs()\nXmlAnalogInputs()\nXmlIrqs()\nXmlCoordinates()\n"
                       "XmlDatabase(for:  , name: )\n{\nR_Sense: 5\nV_SRTL: 0\nV_SRTH: 0\noffset: 0\n}"));
    QCOMPARE(module->driveConfigurations()->size(), 1);
}

void TestModuleProduct::repeatedContainerReplacesEarlier()
{
    auto module = parseModule("<product_module>"
                              "<digital_inputs><digital_input type=\"1\"/></digital_inputs>"
                              "<digital_inputs><digital_input type=\"2\"/><digital_input type=\"3\"/></digital_inputs>"
                              "<irqs><irq/></irqs><irqs/>"
                              "<pin_map>\n<pin_mapping pin_ic=\"1\"/></pin_map><pin_map>\n</pin_map>"
                              "</product_module>");
    QVERIFY(module);
    QCOMPARE(module->getDigitalInputs()->getDigitalInputs()->size(), 2);
    QCOMPARE(int(module->getDigitalInputs()->getDigitalInputs()->first()->type()), 2);
    QVERIFY(module->getIrqs()->getIrqs()->isEmpty());
    QVERIFY(module->getPinMap()->getPinMappings()->isEmpty());
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
    auto module = parseModule(kTwoAxes);
    XmlAxisParameter* parameter = type >= 0 ? module->getAxisParameterValue(axis, static_cast<unsigned char>(type))
                                            : module->getAxisParameterValue(axis, identifier);
    QCOMPARE(parameter != nullptr, !found.isNull());
    if (parameter)
        QCOMPARE(parameter->name(), found);
}

void TestModuleProduct::unknownChildNoteAndDroppedToken()
{
    LogCapture log;
    // The token after the unknown start tag is "name"'s start tag: it is dropped, so the name stays empty.
    auto module = parseModule("<product_module><wrap><name>lost</name></wrap><name_fw_type>T</name_fw_type>"
                              "</product_module>");
    QVERIFY(module);
    QCOMPARE(module->getName(), QString());
    QCOMPARE(module->getNameOfFirmwareType(), QStringLiteral("T"));
    QCOMPARE(log.texts(),
        QStringList({"test", "static XmlProductModule* KIVXmlParser::parseProductModule(QXmlStreamReader*) \"wrap\""}));
}

void TestModuleProduct::tokenAdvanceBeforePinMapAndDatabase()
{
    LogCapture log;
    auto module = parseModule("<product_module>"
                              "<pin_map><pin_mapping pin_ic=\"1\"/>\n<pin_mapping pin_ic=\"2\"/></pin_map>"
                              "<database name=\"unseen\">\n<value_db name=\"V_SRTH\" value=\"305\"/></database>"
                              "</product_module>");
    QVERIFY(module);
    // Without character data after "<pin_map>" the advance lands on the first mapping, which is passed over.
    QCOMPARE(module->getPinMap()->getPinMappings()->size(), 1);
    QCOMPARE(module->getPinMap()->getPinMappings()->first()->getPinIc(), 2u);
    QCOMPARE(module->getDatabase()->getName(), QString());
    QCOMPARE(module->getDatabase()->getVSRTH(), 305u);
}

void TestModuleProduct::pinMapOutlivesModule()
{
    std::unique_ptr<XmlProductInterface> product = TestXml::parseProduct(
        "<product_module><pin_map>\n<pin_mapping pin_ic=\"4\" pin_board=\"9\"/></pin_map></product_module>");
    QVERIFY(product);
    XmlPinMap* pinMap = static_cast<XmlProductModule*>(product.get())->getPinMap();
    QVERIFY(pinMap);
    product.reset();
    // Still alive after the module is gone (the sanitizer run would report a use after free).
    QCOMPARE(pinMap->getPinMappings()->first()->getPinBoard(), 9u);
    delete pinMap;
}

void TestModuleProduct::releaseTakesPinMap()
{
    // The release function frees the pin map that the module leaves to its keeper (the sanitizer run would
    // report it as leaked otherwise); an IC and null go through it too.
    KIVXmlParser::ProductPtr module(TestXml::parseProduct(
        "<product_module><pin_map>\n<pin_mapping pin_ic=\"4\" pin_board=\"9\"/></pin_map></product_module>")
                                        .release());
    QVERIFY(module);
    QVERIFY(static_cast<XmlProductModule*>(module.get())->getPinMap());
    KIVXmlParser::ProductPtr ic(TestXml::parseProduct("<product_ic name=\"x\"></product_ic>").release());
    QCOMPARE(ic->type(), 0);
    KIVXmlParser::deleteProduct(nullptr);
}

void TestModuleProduct::clearOperations()
{
    LogCapture log;
    auto module = parseModule("<product_module><axis_parameters/><global_parameters/>"
                              "<canopen_object/><drive_configuration/>"
                              "<digital_inputs><digital_input/></digital_inputs><irqs><irq/></irqs>"
                              "<database>\n</database></product_module>");
    QVERIFY(module);
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
    QCOMPARE(module->getDigitalInputs(), inputs);
    QVERIFY(inputs->getDigitalInputs()->isEmpty());
    QVERIFY(module->getIrqs()->getIrqs()->isEmpty());
    QCOMPARE(module->getDatabase(), database);
}

void TestModuleProduct::truncatedModuleGivesNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("after pin map") << QByteArray("<product_module><pin_map>\n<pin_mapping/></pin_map><irqs/>");
    QTest::newRow("inside object") << QByteArray("<product_module><canopen_object><canopen_entry>");
    QTest::newRow("inside parameter") << QByteArray("<product_module><axis_parameters><axis_parameter>");
}

void TestModuleProduct::truncatedModuleGivesNull()
{
    QFETCH(QByteArray, xml);
    LogCapture log;
    // Everything built so far, the pin map included, is freed (the sanitizer run checks for leaks).
    QVERIFY(!TestXml::parseProduct(xml));
}

void TestModuleProduct::htmlPage()
{
    LogCapture log;
    auto module = parseModule("<product_module><name>A&lt;b&gt; &amp; C</name>"
                              "<axis_parameters axis=\"1\"><axis_parameter type=\"4\" name=\"x&lt;y\">"
                              "<desc>50% &amp; more</desc><value_bool desc_short_true=\"&lt;on&gt;\"/>"
                              "</axis_parameter><axis_parameter type=\"5\" name=\"bare\"/></axis_parameters>"
                              "<global_parameters bank=\"2\"/><digital_inputs/><digital_outputs/><analog_inputs/>"
                              "<irqs><irq name=\"i&amp;q\"/></irqs><coordinates/>"
                              "<canopen_object index=\"0x6060\" name=\"Mode&amp;\"><canopen_entry name=\"e\">"
                              "<value_unsigned unit=\"&lt;u&gt;\"/></canopen_entry></canopen_object>"
                              "<drive_configuration id=\"1\" name=\"c&lt;1&gt;\"><drive_ap_settings name=\"g\">"
                              "<drive_ap_setting type=\"4\" value=\"-3\"/></drive_ap_settings></drive_configuration>"
                              "</product_module>");
    QVERIFY(module);
    const QString html = module->toHtml();
    QVERIFY(html.startsWith(QStringLiteral("<!DOCTYPE html>\n<html")));
    QVERIFY(html.contains(QStringLiteral("<meta charset=\"utf-8\">")));
    const QString problem = htmlProblem(html);
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    const QStringList expectedPieces {"<title>A&lt;b&gt; &amp; C</title>", "<h3>Axis parameters for axis 1</h3>",
        "<h3>Global parameters for bank 2</h3>", "<h3>CANopen objects</h3>", "<h3>Digital inputs</h3>",
        "<h3>Digital outputs</h3>", "<h3>Analog inputs</h3>", "<h3>Irqs</h3>", "<h3>Coordinates</h3>",
        "<h3>Vostrane configuration for c&lt;1&gt; (id 1)</h3>", "<th>Type</th><th>Name</th>", "<th>Description</th>",
        "<th>Min</th><th>Default</th><th>Max</th><th>Unit</th><th>Access</th>", "<td>x&lt;y</td>",
        "<td>50% &amp; more<br>0 - <br>1 - &lt;on&gt;</td>", "<td>i&amp;q</td>", "Mode&amp;", "<td>[&lt;u&gt;]</td>",
        // The setting is named after the axis-0 parameter of its number; there is none here.
        "<td>g</td><td>4</td><td></td><td>-3</td>"};
    for (const QString& piece : expectedPieces)
        QVERIFY2(html.contains(piece), qPrintable(piece));
}

// Settings are named after the first axis-0 parameter of their type: blocks of other axes are passed over,
// axis 256 counts as axis 0 and setting type 300 as 44 (both compared as 8 bits), an unknown type stays
// unnamed. The page is compared whole with the reviewed one.
void TestModuleProduct::htmlDriveSettings()
{
    auto module = parseModule(TestXml::readFile(QStringLiteral(KIVCORE_TEST_DATA_DIR "/product/drive-settings.xml")));
    QVERIFY(module);
    KIV_COMPARE_TEXT(module->toHtml(),
        QString::fromUtf8(TestXml::readFile(QStringLiteral(KIVCORE_TEST_DATA_DIR "/product/drive-settings.html"))));
}

void TestModuleProduct::exampleFile()
{
    LogCapture log;
    auto module = parseModule(TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml")));
    QVERIFY(module);
    QCOMPARE(module->getName(), QStringLiteral("KIVD-4307"));
    QCOMPARE(module->getAxisParameters()->size(), 2);
    for (XmlAxisParameters* block : *module->getAxisParameters()) {
        QCOMPARE(block->getAxisParameter()->size(), 57);
        for (XmlAxisParameter* parameter : *block->getAxisParameter())
            QVERIFY2(parameter->value(), qPrintable(parameter->name()));
    }
    QCOMPARE(module->getGlobalParameters()->size(), 2);
    QCOMPARE(module->getGlobalParameters()->at(0)->getGlobalParameter()->size(), 20);
    QCOMPARE(module->getGlobalParameters()->at(1)->getBank(), 2);
    QCOMPARE(module->getCANopenObjects()->size(), 9);
    QCOMPARE(module->getDigitalInputs()->getDigitalInputs()->size(), 4);
    QCOMPARE(module->getDigitalOutputs()->getDigitalOutputs()->size(), 3);
    QCOMPARE(module->getAnalogInputs()->getAnalogInputs()->size(), 3);
    QCOMPARE(module->getIrqs()->getIrqs()->size(), 6);
    QCOMPARE(module->getCoordinates()->getCoordinates()->size(), 4);
    QCOMPARE(module->driveConfigurations()->size(), 2);
    QCOMPARE(int(module->driveConfigurations()->first()->id()), 1);
    QCOMPARE(module->getPinMap()->getPinMappings()->size(), 5);
    QCOMPARE(module->getDatabase()->getRSense(), 150u);
    // Every CANopen object was dumped; the one other message is the offset flag's own parse note, so nothing in
    // the file is unknown.
    QCOMPARE(log.texts().size(), 10);
    QCOMPARE(log.matching(QStringLiteral("parseCANopenObject")).size(), 9);
    QVERIFY(log.texts().last().startsWith(QLatin1String("static XmlValueBool2* KIVXmlParser::parseValueBool2")));

    XmlAxisParameter* resolution = module->getAxisParameterValue(1, 35);
    QVERIFY(resolution);
    QCOMPARE(resolution->name(), QStringLiteral("Phase resolution"));
    QCOMPARE(resolution->value()->getType(), int(XmlValueTypeChoice));
    QCOMPARE(resolution->value()->getValueDescriptions().size(), 8);
    XmlAxisParameter* status = module->getAxisParameterValue(0, QStringLiteral("bridge_status"));
    QVERIFY(status);
    QCOMPARE(status->value()->getType(), int(XmlValueTypeRegister));
    QCOMPARE(module->getAnalogInputs()->getAnalogInputs()->at(1)->value()->getUnit(), QStringLiteral("[\u00b0C]"));

    const QString text = module->toString();
    QVERIFY(
        text.contains(QStringLiteral("\nGloblParameters(bank=2\nGlobalParameter(type: 100, name: Scratch word #0")));
    QVERIFY(text.contains(QStringLiteral("desc[1]One motor turn is 25600 phase steps, 360\u00b0.")));
    const QString axes = module->toLaTeXAxisParam();
    QCOMPARE(axes.count(QStringLiteral("\\begin{longtable}")), 2);
    QCOMPARE(axes.count(QStringLiteral("\\end{longtable}")), 1);
    QVERIFY(axes.contains(QStringLiteral("Load\\textunderscore adapt lowest current")));
    QVERIFY(axes.contains(QStringLiteral("255 is 100\\% of")));
    QVERIFY(module->toLaTeXGlobalParamBank(1).contains(QStringLiteral("in Bank 1}")));
    QVERIFY(module->toLaTeXIOs(1).contains(QStringLiteral("6 - Bridge temperature")));
    QVERIFY(module->getCANopenObjects()->at(5)->toLatex().contains(QStringLiteral("Bridge status\\_word")));
    const QString html = module->toHtml();
    QVERIFY(htmlProblem(html).isEmpty());
    QVERIFY(html.contains(QStringLiteral("<h3>Vostrane configuration for Long motor, 57 mm, 2.5 A (id 2)</h3>")));
    QVERIFY(html.contains(QStringLiteral("<td>Motion</td><td>35</td><td>Phase resolution</td><td>6</td>")));
}

QTEST_GUILESS_MAIN(TestModuleProduct)
#include "tst_moduleproduct.moc"
