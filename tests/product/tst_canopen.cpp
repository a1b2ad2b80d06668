#include "LogCapture.h"
#include "TestXml.h"

#include "product/KIVXmlParser.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "values/XmlValueInterface.h"

#include <QtTest>

#include <memory>

namespace {

const QByteArray kObjectXml = "<canopen_object index=\"0x2010\" name=\"Brake_control\" object_type=\"VAR\" "
                              "data_type=\"UNSIGNED8\" segment=\"M\">"
                              "<desc>Releases the brake.</desc><desc>Second line</desc>"
                              "<canopen_entry subindex=\"0\" name=\"Entries\">"
                              "<value_unsigned min=\"0\" max=\"2\" default=\"2\" access=\"R\"/></canopen_entry>"
                              "<canopen_entry subindex=\"1\" name=\"Release\" pdo_mapped=\"true\"/>"
                              "</canopen_object>";

std::unique_ptr<XmlCANopenObject> parseObject(const QByteArray& xml)
{
    TestXml::Reader reader(xml);
    return std::unique_ptr<XmlCANopenObject>(KIVXmlParser::parseCANopenObject(reader));
}

std::unique_ptr<XmlCANopenEntry> parseEntry(const QByteArray& xml)
{
    TestXml::Reader reader(xml);
    return std::unique_ptr<XmlCANopenEntry>(KIVXmlParser::parseCANopenEntry(reader));
}

} // namespace

class TestCANopen : public QObject
{
    Q_OBJECT
private slots:
    void attributes();
    void segmentNames_data();
    void segmentNames();
    void pdoMapping_data();
    void pdoMapping();
    void entryValueKinds_data();
    void entryValueKinds();
    void debugTextAndDump();
    void unknownChildren();
    void latex();
    void latexWithoutEntryValue();
    void truncatedGivesNull_data();
    void truncatedGivesNull();
};

void TestCANopen::attributes()
{
    LogCapture log;
    auto object = parseObject("<canopen_object index=\"0x2000\"/>");
    QCOMPARE(object->getIndex(), 8192u);
    QCOMPARE(object->getName(), QString());
    auto octal = parseObject("<canopen_object index=\"010\"/>");
    QCOMPARE(octal->getIndex(), 8u);
    auto entry = parseEntry("<canopen_entry subindex=\"0x01\" name=\"n\"/>");
    QCOMPARE(entry->getSubIndex(), 0u);
    QCOMPARE(entry->getName(), QStringLiteral("n"));
    QVERIFY(!entry->getValue());
}

void TestCANopen::segmentNames_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    QTest::newRow("D") << "D"
                       << "Device Profile";
    QTest::newRow("M") << "M"
                       << "Manufacturer";
    QTest::newRow("C") << "C"
                       << "Communication";
    QTest::newRow("lower") << "m"
                           << "m";
    QTest::newRow("other") << "X"
                           << "X";
}

void TestCANopen::segmentNames()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    XmlCANopenObject object(1, QString(), QStringLiteral("VAR"), QStringLiteral("INTEGER8"), code);
    QCOMPARE(object.getSegment(), code);
    QCOMPARE(object.getSegmentAsString(), name);
    QCOMPARE(object.getObjectTypeAsString(), QStringLiteral("VAR"));
    QCOMPARE(object.getDataTypeAsString(), QStringLiteral("INTEGER8"));
}

void TestCANopen::pdoMapping_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<bool>("mapped");
    QTest::newRow("true") << QByteArray("pdo_mapped=\"true\"") << true;
    QTest::newRow("True") << QByteArray("pdo_mapped=\"True\"") << false;
    QTest::newRow("1") << QByteArray("pdo_mapped=\"1\"") << false;
    QTest::newRow("absent") << QByteArray() << false;
}

void TestCANopen::pdoMapping()
{
    QFETCH(QByteArray, attribute);
    QFETCH(bool, mapped);
    auto entry = parseEntry("<canopen_entry " + attribute + "/>");
    QCOMPARE(entry->isPdoMapped(), mapped);
    QCOMPARE(entry->isPdoMappedAsString(), mapped ? QStringLiteral("true") : QStringLiteral("false"));
}

void TestCANopen::entryValueKinds_data()
{
    QTest::addColumn<QByteArray>("child");
    QTest::addColumn<int>("type");
    QTest::newRow("unsigned") << QByteArray("<value_unsigned/>") << int(XmlValueTypeUnsigned);
    QTest::newRow("signed") << QByteArray("<value_signed/>") << int(XmlValueTypeSigned);
    QTest::newRow("bool") << QByteArray("<value_bool/>") << int(XmlValueTypeBool);
    QTest::newRow("choice") << QByteArray("<value_choice><choice_element value=\"1\"/></value_choice>")
                            << int(XmlValueTypeChoice);
    QTest::newRow("date") << QByteArray("<value_date/>") << int(XmlValueTypeDate);
    QTest::newRow("time") << QByteArray("<value_time/>") << int(XmlValueTypeTime);
    QTest::newRow("version") << QByteArray("<value_version/>") << int(XmlValueTypeVersion);
    QTest::newRow("ascii") << QByteArray("<value_ascii/>") << int(XmlValueTypeASCII);
    QTest::newRow("register") << QByteArray("<value_register address=\"1\"/>") << int(XmlValueTypeRegister);
    // The last value child wins; the parser frees the one it replaces.
    QTest::newRow("two values") << QByteArray("<value_date/><value_time/>") << int(XmlValueTypeTime);
}

void TestCANopen::entryValueKinds()
{
    QFETCH(QByteArray, child);
    QFETCH(int, type);
    LogCapture log;
    auto entry = parseEntry("<canopen_entry>" + child + "</canopen_entry>");
    QVERIFY(entry);
    QVERIFY(entry->getValue());
    QCOMPARE(entry->getValue()->getType(), type);
    QVERIFY(log.matching(QStringLiteral("parseCANopenEntry")).isEmpty());
}

void TestCANopen::debugTextAndDump()
{
    LogCapture log;
    auto object = parseObject(kObjectXml);
    QVERIFY(object);
    const QString expected = QStringLiteral(
        "XmlCANopenObject( index: 0x2010, name: Brake_control, objectType: VAR, dataType: UNSIGNED8, segment: M"
        "\n\tdescription[0]: Releases the brake."
        "\n\tdescription[1]: Second line"
        "\n\tentry[0]: XmlCANopenEntry(subIndex: 0, name: Entries, pdoMapped: false)"
        "\n\t\tXmlValueUnsigned(min: 0, max: 2, def: 2, decimals: 0, unit: , formatString: %1 , formatMul: 1, "
        "formatDiv: 1, access: R, options: 0)"
        "\n\tentry[1]: XmlCANopenEntry(subIndex: 1, name: Release, pdoMapped: true)"
        "\n)");
    KIV_COMPARE_TEXT(object->toString(QString()), expected);
    KIV_COMPARE_TEXT(object->toString(QStringLiteral(">")).section(QLatin1Char('\n'), 1, 1),
        QStringLiteral("\t>description[0]: Releases the brake."));
    // The finished object is dumped once, at its end tag, in the debug stream's quoted form.
    QCOMPARE(log.texts().size(), 1);
    const QString dump = log.texts().first();
    QVERIFY(dump.startsWith(
        QStringLiteral("static XmlCANopenObject* KIVXmlParser::parseCANopenObject(QXmlStreamReader*) \"XmlCANopen")));
    QVERIFY(dump.contains(QStringLiteral("Brake_control")));
}

void TestCANopen::unknownChildren()
{
    LogCapture log;
    auto entry = parseEntry("<canopen_entry><desc>not here</desc></canopen_entry>");
    QVERIFY(entry);
    QCOMPARE(log.texts(),
        QStringList {"static XmlCANopenEntry* KIVXmlParser::parseCANopenEntry(QXmlStreamReader*) \"desc\""});
    log.clear();
    auto object = parseObject("<canopen_object><sub/></canopen_object>");
    QCOMPARE(log.texts().first(),
        QStringLiteral("static XmlCANopenObject* KIVXmlParser::parseCANopenObject(QXmlStreamReader*) \"sub\""));
}

void TestCANopen::latex()
{
    LogCapture log;
    auto object = parseObject(kObjectXml);
    const QString expected
        = QStringLiteral("\\subsubsection{Object \\hexnum{2010}: Brake\\_control}\n"
                         "\\label{\\labelprefix subsub:obj2010}\n"
                         "Releases the brake.\\\n\n"
                         "Second line\n"
                         "\n\\begin{table}[H]\n"
                         "\\begin{tabular}{|c|c|c|c|} \\hline\n"
                         "\\rowcolor{gray} \\multicolumn{4}{|c|}{Object Description} \\\\ \\hline\n"
                         "\\rowcolor{gray} Index & Name & Object Type & Data Type \\\\ \\hline\n"
                         "\\hexnum{2010} & Brake\\_control & VAR & UNSIGNED8 \\\\ \\hline\n"
                         "\\end{tabular}\n"
                         "\\caption{Object Description (\\hexnum{2010})}\n"
                         "\\label{\\labelprefix tab:obj2010}\n"
                         "\\end{table}\n\n"
                         "\\begin{table}[H]\n"
                         "\\begin{tabular}{|c|c|c|c|c|c|c|c|} \\hline\n"
                         "\\rowcolor{gray} \\multicolumn{8}{|c|}{Entry Description} \\\\ \\hline\n"
                         "\\rowcolor{gray} Sub- & & PDO & & & & & \\\\ \n"
                         "\\rowcolor{gray} index & Name & Mapping & Min & Max & Default & Unit & Access \\\\ \\hline\n"
                         "0 & Entries & no & 0 & 2 & 2 &  & R \\\\ \\hline\n"
                         "1 & Release & yes &  &  &  &  &  \\\\ \\hline\n"
                         "\\end{tabular}\n"
                         "\\caption{Entry Description (\\hexnum{2010})}\n"
                         "\\label{\\labelprefix tab:ent2010}\n"
                         "\\end{table}\n");
    KIV_COMPARE_TEXT(object->toLatex(), expected);
}

void TestCANopen::latexWithoutEntryValue()
{
    XmlCANopenObject object(0x1A, QStringLiteral("Tiny"), QString(), QString(), QStringLiteral("C"));
    object.appendCANopenEntry(new XmlCANopenEntry(0, QStringLiteral("sub_0"), false));
    const QString latex = object.toLatex();
    QVERIFY(latex.startsWith(QStringLiteral("\\subsubsection{Object \\hexnum{001A}: Tiny}\n")));
    QVERIFY(latex.contains(QStringLiteral("\n0 & sub\\_0 & no &  &  &  &  &  \\\\ \\hline\n")));
}

void TestCANopen::truncatedGivesNull_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::newRow("object") << QByteArray("<canopen_object index=\"1\"><desc>d</desc>");
    QTest::newRow("inside entry") << QByteArray("<canopen_object><canopen_entry><value_unsigned/>");
    QTest::newRow("entry") << QByteArray("<canopen_entry><value_bool/>");
}

void TestCANopen::truncatedGivesNull()
{
    QFETCH(QByteArray, xml);
    LogCapture log;
    TestXml::Reader reader(xml);
    if (reader.get()->name() == QLatin1String("canopen_entry"))
        QVERIFY(!KIVXmlParser::parseCANopenEntry(reader));
    else
        QVERIFY(!KIVXmlParser::parseCANopenObject(reader));
    QVERIFY(log.texts().isEmpty()); // no dump of an object given up
}

QTEST_GUILESS_MAIN(TestCANopen)
#include "tst_canopen.moc"
