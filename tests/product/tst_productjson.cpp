#include "ic/IcJson.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/ModuleJson.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlDriveConfiguration.h"
#include "product/XmlIrqs.h"
#include "product/XmlProductModule.h"
#include "values/XmlValueBool2.h"
#include "values/XmlValueChoice.h"
#include "values/XmlValueDb.h"
#include "values/XmlValueUnsigned.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

#include <limits>
#include <memory>

namespace {

QJsonObject jsonObject(const char* text)
{
    return QJsonDocument::fromJson(text).object();
}

QString indented(const QJsonObject& json)
{
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Indented));
}

/// A module whose first axis parameter carries `value` (owned by the module).
std::unique_ptr<XmlProductModule> moduleWithValue(XmlValueInterface* value)
{
    auto module = std::make_unique<XmlProductModule>();
    auto* block = new XmlAxisParameters;
    auto* parameter = new XmlAxisParameter;
    parameter->setValue(value);
    block->appendAxisParameter(parameter);
    module->appendAxisParameters(block);
    return module;
}

XmlValueInterface* makeValue(const QByteArray& kind)
{
    if (kind == "flag")
        return new XmlValueBool2(QStringLiteral("offset"), true);
    if (kind == "datum")
        return new XmlValueDb(QStringLiteral("R_Sense"), 4294967295u);
    if (kind == "choice") {
        auto* choice = new XmlValueChoice(7, QStringLiteral("mA"), QStringLiteral("wr"));
        choice->appendElement(new XmlValueChoiceElement(5, QStringLiteral("five & more"), QString()));
        choice->appendElement(nullptr);
        choice->appendElement(new XmlValueChoiceElement(1, QStringLiteral("one"), QStringLiteral("the first")));
        choice->appendElement(new XmlValueChoiceElement(5, QStringLiteral("again"), QString()));
        return choice;
    }
    auto* number = new XmlValueUnsigned(0, 10, 0, 0, QString(), QStringLiteral("R"), 0);
    number->setFormatMul(std::numeric_limits<float>::infinity());
    number->setFormatDiv(0.3f);
    return number;
}

} // namespace

class TestProductJson : public QObject
{
    Q_OBJECT
private slots:
    void maskKeepsItsText_data();
    void maskKeepsItsText();
    void valueKinds_data();
    void valueKinds();
    void nullsAreSkippedOrNull();
    void versionsSplitExactly_data();
    void versionsSplitExactly();
};

void TestProductJson::maskKeepsItsText_data()
{
    QTest::addColumn<QString>("mask");
    QTest::addColumn<qulonglong>("value");
    QTest::newRow("all 64 bits") << "FFFFFFFFFFFFFFFF" << Q_UINT64_C(0xFFFFFFFFFFFFFFFF);
    QTest::newRow("2^53 + 1, one above exact doubles") << "20000000000001" << Q_UINT64_C(0x20000000000001);
    QTest::newRow("as written, prefix and zeros") << "0x00F0" << Q_UINT64_C(0xF0);
}

void TestProductJson::maskKeepsItsText()
{
    QFETCH(QString, mask);
    QFETCH(qulonglong, value);
    XmlProductIC ic;
    auto* set = new XmlRegisterSet;
    auto* reg = new XmlValueRegister(0, QStringLiteral("R"), 64, 0);
    auto* variant = new XmlRegisterVariant(QStringLiteral("DEFAULT"));
    variant->appendField(new XmlValueRegisterField(QStringLiteral("F"), 0, mask, QString(), QString()));
    variant->appendImpactedBy(new XmlRegisterVariantImpactedBy(1, 0, mask, 0, value));
    reg->appendVariant(variant);
    set->appendValueRegister(reg);
    ic.setRegisterSet(set);

    const QJsonObject json = IcJson::toJson(&ic);
    const QJsonObject variantJson
        = json[QLatin1String("registerSet")][QLatin1String("registers")][0][QLatin1String("variants")][0].toObject();
    const QJsonObject field = variantJson[QLatin1String("fields")][0].toObject();
    const QJsonObject impactedBy = variantJson[QLatin1String("impactedBy")][0].toObject();
    for (const QJsonObject& entry : {field, impactedBy}) {
        QCOMPARE(entry[QLatin1String("maskText")].toString(), mask);
        QCOMPARE(entry[QLatin1String("mask")].toDouble(), double(value));
    }
    // Range ends are plain numbers and round the same way.
    QCOMPARE(impactedBy[QLatin1String("rangeTo")].toDouble(), double(value));
    QCOMPARE(variantJson[QLatin1String("maskText")].toString(), QString::number(value, 16).toUpper());
    // The text survives the document's own write and read; the number only up to 2^53.
    const QJsonObject reread = QJsonDocument::fromJson(QJsonDocument(field).toJson()).object();
    QCOMPARE(reread[QLatin1String("maskText")].toString().toULongLong(nullptr, 16), value);
}

void TestProductJson::valueKinds_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("expected"); // the keys to check, as JSON
    QTest::newRow("named flag: type code without a name") << QByteArray(
        "flag") << QByteArray(R"({"kind": "tbd", "typeCode": 12, "name": "offset", "value": true, "present": []})");
    QTest::newRow("database number, full 32 bits") << QByteArray(
        "datum") << QByteArray(R"({"kind": "Db", "typeCode": 11, "name": "R_Sense", "value": 4294967295})");
    QTest::newRow("choice: order, duplicates, stored ampersand, long text fallback, null element left out")
        << QByteArray("choice")
        << QByteArray(R"({"kind": "Choice", "min": 1, "max": 5, "default": 7, "unit": "mA", "access": "wr",
            "accessLetters": "RW", "accessMask": 3, "present": ["default", "unit"],
            "elements": [{"value": 5, "descShort": "five \\x26 more", "descLong": "five \\x26 more"},
                         {"value": 1, "descShort": "one", "descLong": "the first"},
                         {"value": 5, "descShort": "again", "descLong": "again"}]})");
    QTest::newRow("factors: infinity is null, floats shortest") << QByteArray(
        "number") << QByteArray(R"({"kind": "Unsigned", "formatMul": null, "formatDiv": 0.3, "formatString": "%1 ",
            "present": ["min", "max", "default", "unit"]})");
}

void TestProductJson::valueKinds()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, expected);
    const auto module = moduleWithValue(makeValue(kind));
    const QJsonObject json = ModuleJson::toJson(module.get());
    const QJsonObject value
        = json[QLatin1String("axisParameters")][0][QLatin1String("parameters")][0][QLatin1String("value")].toObject();
    const QJsonObject keys = QJsonDocument::fromJson(expected).object();
    QVERIFY(!keys.isEmpty());
    for (auto it = keys.constBegin(); it != keys.constEnd(); ++it)
        QVERIFY2(value[it.key()] == it.value(), qPrintable(it.key() + QLatin1String(" in ") + indented(value)));
}

void TestProductJson::nullsAreSkippedOrNull()
{
    XmlProductModule module;
    module.appendAxisParameters(nullptr);
    auto* block = new XmlAxisParameters;
    block->setAxis(3);
    block->appendAxisParameter(nullptr);
    block->appendAxisParameter(new XmlAxisParameter);
    module.appendAxisParameters(block);
    module.appendGlobalParameters(nullptr);
    auto* object = new XmlCANopenObject(1, QStringLiteral("o"), QString(), QString(), QStringLiteral("M"));
    object->appendCANopenEntry(nullptr);
    module.appendCANopenObject(object);
    auto* configuration = new XmlDriveConfiguration(2, QStringLiteral("c"));
    configuration->appendDriveApSettings(nullptr);
    module.appendDriveConfiguration(configuration);
    auto* irqs = new XmlIrqs;
    irqs->appendIrq(nullptr);
    module.setIrqs(irqs);
    XmlPinMap pinMap;
    module.setPinMap(&pinMap);

    QCOMPARE(ModuleJson::toJson(&module), jsonObject(R"({
        "product": "module", "name": "", "nameInFirmwareVersion": "", "nameOfFirmwareType": "",
        "version": "HW: ; SW: ", "hardwareVersion": "", "softwareVersion": "",
        "axisParameters": [{"axis": 3, "parameters": [
            {"type": 0, "name": "", "identifier": "", "descriptions": [], "value": null}]}],
        "globalParameters": [], "digitalInputs": null, "digitalOutputs": null, "analogInputs": null,
        "irqs": [], "coordinates": null,
        "canopenObjects": [{"index": 1, "name": "o", "objectType": "", "dataType": "", "segment": "M",
            "segmentName": "Manufacturer", "descriptions": [], "entries": []}],
        "driveConfigurations": [{"id": 2, "name": "c", "apSettings": []}],
        "pinMap": [], "database": null})"));

    XmlProductIC ic;
    QCOMPARE(IcJson::toJson(&ic), jsonObject(R"({"product": "ic", "name": "", "version": "", "author": "",
        "date": "", "descriptions": [], "registerSet": null, "pins": null, "database": null})"));
    QCOMPARE(ModuleJson::toJson(nullptr), QJsonObject());
    QCOMPARE(IcJson::toJson(nullptr), QJsonObject());
}

void TestProductJson::versionsSplitExactly_data()
{
    QTest::addColumn<QString>("hardware");
    QTest::addColumn<QString>("software");
    const char* const rows[][3] = {{"plain", "1.3", "4.07"}, {"empty", "", ""},
        {"separator in the hardware text", "A; SW: B", "2"}, {"separator in the software text", "1", "; SW: ; SW: x"},
        {"separators and line breaks in both", "a\nSoftwareVersion: ; SW: b", "c; SW: d\n"}};
    for (const auto& row : rows)
        QTest::newRow(row[0]) << row[1] << row[2];
}

void TestProductJson::versionsSplitExactly()
{
    QFETCH(QString, hardware);
    QFETCH(QString, software);
    XmlProductModule module;
    module.setName(QStringLiteral("; SW: "));
    module.setHardwareVersion(hardware);
    module.setSoftwareVersion(software);
    const QJsonObject json = ModuleJson::toJson(&module);
    QCOMPARE(json[QLatin1String("hardwareVersion")].toString(), hardware);
    QCOMPARE(json[QLatin1String("softwareVersion")].toString(), software);
    QCOMPARE(json[QLatin1String("version")].toString(), module.getVersion());
}

QTEST_GUILESS_MAIN(TestProductJson)
#include "tst_productjson.moc"
