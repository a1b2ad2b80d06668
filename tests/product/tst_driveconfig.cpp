#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "product/XmlDriveConfiguration.h"

#include <QtTest>

#include <memory>

class TestDriveConfig : public QObject
{
    Q_OBJECT
private slots:
    void configurationId_data();
    void configurationId();
    void settingAttributes_data();
    void settingAttributes();
    void debugText();
    void settingWithChildIsStillReturned();
    void truncatedGivesNull_data();
    void truncatedGivesNull();
};

void TestDriveConfig::configurationId_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<int>("expected");
    QTest::newRow("hex") << QByteArray("0x10") << 16;
    QTest::newRow("low 8 bits") << QByteArray("260") << 4;
    QTest::newRow("octal") << QByteArray("010") << 8;
    QTest::newRow("junk") << QByteArray("x") << 0;
}

void TestDriveConfig::configurationId()
{
    QFETCH(QByteArray, id);
    QFETCH(int, expected);
    TestXml::Reader reader("<drive_configuration id=\"" + id + "\" name=\"N\"/>");
    std::unique_ptr<XmlDriveConfiguration> configuration(KIVXmlParser::parseDriveConfig(reader));
    QCOMPARE(int(configuration->id()), expected);
    QCOMPARE(configuration->name(), QStringLiteral("N"));
}

void TestDriveConfig::settingAttributes_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::newRow("negative value") << QByteArray("<drive_ap_setting type=\"6\" value=\"-5\"/>") << 6 << -5;
    QTest::newRow("type 256") << QByteArray("<drive_ap_setting type=\"256\" value=\"1\"/>") << 0 << 1;
    QTest::newRow("hex is no number") << QByteArray("<drive_ap_setting type=\"0x10\" value=\"0x10\"/>") << 0 << 0;
}

void TestDriveConfig::settingAttributes()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, type);
    QFETCH(int, value);
    TestXml::Reader reader(xml);
    std::unique_ptr<XmlDriveApSetting> setting(KIVXmlParser::parseDriveApSetting(reader));
    QCOMPARE(int(setting->type()), type);
    QCOMPARE(setting->value(), value);
}

void TestDriveConfig::debugText()
{
    LogCapture log;
    TestXml::Reader reader("<drive_configuration id=\"1\" name=\"X\">"
                           "<drive_ap_settings name=\"Current\"><drive_ap_setting type=\"6\" value=\"128\"/>"
                           "<drive_ap_setting type=\"7\" value=\"-8\"/></drive_ap_settings>"
                           "<drive_ap_settings name=\"Empty\"/><other/></drive_configuration>");
    std::unique_ptr<XmlDriveConfiguration> configuration(KIVXmlParser::parseDriveConfig(reader));
    QVERIFY(configuration);
    KIV_COMPARE_TEXT(configuration->toString(),
        QStringLiteral("XmlDriveConfiguration(id: 1, name: X\nXmlDriveApSettings(name: Current\n"
                       "XmlDriveApSetting(type: 6 value: 128)\nXmlDriveApSetting(type: 7 value: -8))\n"
                       "XmlDriveApSettings(name: Empty))"));
    QCOMPARE(log.texts(),
        QStringList {"static XmlDriveConfiguration* KIVXmlParser::parseDriveConfig(QXmlStreamReader*) \"other\""});
    QCOMPARE(XmlDriveConfiguration(1, QStringLiteral("X")).toString(),
        QStringLiteral("XmlDriveConfiguration(id: 1, name: X)"));
}

void TestDriveConfig::settingWithChildIsStillReturned()
{
    LogCapture log;
    TestXml::Reader reader("<drive_ap_settings><drive_ap_setting type=\"1\"><x/></drive_ap_setting><y/>"
                           "</drive_ap_settings>");
    std::unique_ptr<XmlDriveApSettings> settings(KIVXmlParser::parseDriveApSettings(reader));
    QVERIFY(settings);
    QCOMPARE(settings->driveApSettings()->size(), 1);
    QCOMPARE(log.texts(),
        QStringList({"static XmlDriveApSetting* KIVXmlParser::parseDriveApSetting(QXmlStreamReader*) \"x\"",
            "static XmlDriveApSettings* KIVXmlParser::parseDriveApSettings(QXmlStreamReader*) \"y\""}));
}

void TestDriveConfig::truncatedGivesNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("configuration") << QByteArray("<drive_configuration><drive_ap_settings name=\"a\">"
                                                 "<drive_ap_setting type=\"1\"/></drive_ap_settings>");
    QTest::newRow("inside setting") << QByteArray("<drive_configuration><drive_ap_settings><drive_ap_setting>");
}

void TestDriveConfig::truncatedGivesNull()
{
    QFETCH(QByteArray, xml);
    TestXml::Reader reader(xml);
    QVERIFY(!KIVXmlParser::parseDriveConfig(reader));
}

QTEST_GUILESS_MAIN(TestDriveConfig)
#include "tst_driveconfig.moc"
