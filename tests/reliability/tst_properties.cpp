#include "LogCapture.h"
#include "ParseBytes_p.h"
#include "RenderAll.h"
#include "TestXml.h"

#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "product/XmlAxisParameter.h"
#include "product/XmlAxisParameters.h"
#include "product/XmlCANopenEntry.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlDigitalInput.h"
#include "product/XmlDigitalInputs.h"
#include "product/XmlProductModule.h"

#include <QDir>
#include <QtTest>

#include <random>

namespace {

struct Example
{
    QString name;
    QByteArray bytes;
    bool isEsi;
    QByteArray rootEnd; ///< the root's end tag: a prefix holding it is complete
};

QList<Example> examples()
{
    return {
        {"module", TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml")), false,
            "</product_module>"},
        {"IC", TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml")), false,
            "</product_ic>"},
        {"ESI", TestXml::readFile(QStringLiteral(KIVCORE_EXAMPLES_DIR "/esi/kiv-vendor-esi.xml")), true,
            "</EtherCATInfo>"},
    };
}

/// Prefix lengths to try. Every byte-prefix of the large examples would mean tens of thousands of parses
/// per file, too slow for the sanitizer suite, so: every length up to 512 bytes (the prolog, the root and
/// its first children cut at every byte), then one cut per line, alternately two bytes into the line's
/// start tag and at the line's end (each element is one line in these files, and every kind of element
/// occurs on many lines, so each kind is cut both ways at some depth), and the whole file.
QList<int> prefixLengths(const QByteArray& bytes)
{
    QList<int> lengths;
    const int dense = qMin(bytes.size(), 512);
    for (int length = 0; length < dense; ++length)
        lengths << length;
    int lineStart = 0;
    bool inTag = true;
    while (lineStart < bytes.size()) {
        int lineEnd = bytes.indexOf('\n', lineStart);
        if (lineEnd < 0)
            lineEnd = bytes.size();
        const int cut = inTag ? bytes.indexOf('<', lineStart) + 2 : lineEnd;
        if (cut >= dense && cut <= bytes.size() && cut > lengths.last())
            lengths << cut;
        inTag = !inTag;
        lineStart = lineEnd + 1;
    }
    if (lengths.last() != bytes.size())
        lengths << bytes.size();
    return lengths;
}

/// Bytes that change the structure of XML most when they appear in the wrong place.
constexpr char kMutationBytes[] = {'<', '>', '/', '"', '=', '&', ';', '\\', 'x', '0', '9', '-', ' ', '\0', '\xff'};

} // namespace

class TestProperties : public QObject
{
    Q_OBJECT
private slots:
    void everyPrefixIsNullOrComplete_data();
    void everyPrefixIsNullOrComplete();
    void mutationsNeverCrash_data();
    void mutationsNeverCrash();
    void nullEntriesAreSkipped_data();
    void nullEntriesAreSkipped();
    void hostileCountsStayBounded_data();
    void hostileCountsStayBounded();
};

void TestProperties::everyPrefixIsNullOrComplete_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < examples().size(); ++index)
        QTest::newRow(qPrintable(examples().at(index).name)) << index;
}

void TestProperties::everyPrefixIsNullOrComplete()
{
    QFETCH(int, index);
    const Example example = examples().at(index);
    QVERIFY(!example.bytes.isEmpty());
    const int complete = example.bytes.lastIndexOf(example.rootEnd) + example.rootEnd.size();
    const LogCapture quiet;
    ParsedBytes full;
    parseBytes(example.bytes, example.isEsi, &full);
    QVERIFY(!full.isNull());
    const QString fullText = full.debugText();

    const QList<int> lengths = prefixLengths(example.bytes);
    QVERIFY(lengths.size() > example.bytes.count('\n')); // at least one cut per line
    for (const int length : lengths) {
        ParsedBytes parsed;
        parseBytes(example.bytes.left(length), example.isEsi, &parsed);
        if (length < complete) {
            QVERIFY2(parsed.isNull(), qPrintable(QStringLiteral("prefix of %1 bytes").arg(length)));
        } else {
            QVERIFY2(!parsed.isNull(), qPrintable(QStringLiteral("prefix of %1 bytes").arg(length)));
            QCOMPARE(parsed.debugText(), fullText);
        }
    }
}

void TestProperties::mutationsNeverCrash_data()
{
    // Fewer rounds for the large examples: each parse and render of them costs ten times the small one's.
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("rounds");
    QTest::newRow("module") << 0 << 500;
    QTest::newRow("IC") << 1 << 500;
    QTest::newRow("ESI") << 2 << 2000;
}

void TestProperties::mutationsNeverCrash()
{
    QFETCH(int, index);
    QFETCH(int, rounds);
    const Example example = examples().at(index);
    std::mt19937 random(20261122u + uint(index)); // fixed: every run tries the same inputs
    const QList<QByteArray> lines = example.bytes.split('\n');
    const LogCapture quiet;
    int nonNull = 0;
    for (int round = 0; round < rounds; ++round) {
        QByteArray mutated;
        if (round % 3 != 2) {
            // One byte replaced by a structural one.
            mutated = example.bytes;
            const int at = int(random() % uint(mutated.size()));
            mutated[at] = kMutationBytes[random() % sizeof(kMutationBytes)];
        } else {
            // Element level: a line (one element in these files) dropped, doubled or moved.
            QList<QByteArray> edited = lines;
            const int at = 1 + int(random() % uint(edited.size() - 1));
            const int to = 1 + int(random() % uint(edited.size() - 1));
            switch (random() % 3) {
            case 0:
                edited.removeAt(at);
                break;
            case 1:
                edited.insert(to, edited.at(at));
                break;
            default:
                edited.move(at, to);
            }
            mutated = edited.join('\n');
        }
        ParsedBytes parsed;
        parseBytes(mutated, example.isEsi, &parsed);
        if (parsed.isNull())
            continue;
        ++nonNull;
        // Every renderer runs; each writes at least its heading.
        const qint64 written = parsed.product ? RenderAll::product(parsed.product) : RenderAll::esi(parsed.esi.get());
        QVERIFY(written > 0);
    }
    // Most single-byte changes land in text or attribute values and keep the file readable.
    QVERIFY2(nonNull > rounds / 4, qPrintable(QString::number(nonNull)));
}

namespace {

/// A module built by hand; `withNulls` adds null entries inside its lists (the append operations take any
/// pointer). Null blocks, banks and objects at the top are in both: their list positions head the tables.
XmlProductModule* handBuiltModule(bool withNulls)
{
    auto* module = new XmlProductModule;
    module->appendAxisParameters(nullptr);
    auto* block = new XmlAxisParameters;
    if (withNulls)
        block->appendAxisParameter(nullptr);
    block->appendAxisParameter(new XmlAxisParameter); // no value descriptor
    module->appendAxisParameters(block);
    module->appendGlobalParameters(nullptr);
    module->appendCANopenObject(nullptr);
    auto* object = new XmlCANopenObject(
        0x1000, QStringLiteral("o"), QStringLiteral("VAR"), QStringLiteral("U32"), QStringLiteral("C"));
    object->appendCANopenEntry(new XmlCANopenEntry(0, QStringLiteral("e"), false));
    if (withNulls)
        object->appendCANopenEntry(nullptr);
    module->appendCANopenObject(object);
    module->appendDriveConfiguration(nullptr);
    module->setDigitalInputs(new XmlDigitalInputs);
    if (withNulls)
        module->getDigitalInputs()->getDigitalInputs()->append(nullptr);
    module->getDigitalInputs()->getDigitalInputs()->append(new XmlDigitalInput);
    return module;
}

XmlProductIC* handBuiltIc(bool withNulls)
{
    auto* ic = new XmlProductIC;
    auto* set = new XmlRegisterSet;
    if (withNulls)
        set->appendValueRegister(nullptr);
    auto* reg = new XmlValueRegister(1, QStringLiteral("R"), 8, 0);
    if (withNulls)
        reg->appendVariant(nullptr);
    auto* variant = new XmlRegisterVariant(QStringLiteral("DEFAULT"));
    if (withNulls)
        variant->appendField(nullptr);
    variant->appendField(new XmlValueRegisterField(QStringLiteral("f"), 0, QStringLiteral("1"), QString(), QString()));
    reg->appendVariant(variant);
    set->appendValueRegister(reg);
    if (withNulls)
        set->appendGroup(nullptr);
    ic->setRegisterSet(set);
    return ic;
}

/// The texts of the renderers whose output does not depend on the date. The module's debug text is left
/// out: a container writes one line per item there, an empty one for a null item.
QStringList renderedTexts(XmlProductInterface* product)
{
    QStringList texts;
    if (auto* module = qobject_cast<XmlProductModule*>(product)) {
        texts << module->toHtml() << module->toLaTeXAxisParam();
        for (int index = 0; index < module->getGlobalParameters()->size(); ++index)
            texts << module->toLaTeXGlobalParamBank(index);
        for (int kind = 0; kind <= 3; ++kind)
            texts << module->toLaTeXIOs(kind);
        for (const XmlCANopenObject* object : qAsConst(*module->getCANopenObjects())) {
            if (object)
                texts << object->toLatex();
        }
    } else if (auto* ic = qobject_cast<XmlProductIC*>(product)) {
        texts << ic->toString() << ic->toHtml() << ic->toLaTeXRegisterMap() << ic->toLaTeXRegisterMapDefaults()
              << ic->toLaTeXRegisterOverview();
    }
    return texts;
}

} // namespace

void TestProperties::nullEntriesAreSkipped_data()
{
    QTest::addColumn<bool>("isModule");
    QTest::newRow("module") << true;
    QTest::newRow("IC") << false;
}

void TestProperties::nullEntriesAreSkipped()
{
    // A null entry inside a list renders as if it were not there; every renderer (date included) survives.
    QFETCH(bool, isModule);
    XmlProductInterface* plain
        = isModule ? static_cast<XmlProductInterface*>(handBuiltModule(false)) : handBuiltIc(false);
    XmlProductInterface* withNulls
        = isModule ? static_cast<XmlProductInterface*>(handBuiltModule(true)) : handBuiltIc(true);
    const qint64 written = RenderAll::product(withNulls);
    const QStringList expected = renderedTexts(plain);
    const QStringList actual = renderedTexts(withNulls);
    QString expectedText;
    QString actualText;
    if (isModule) {
        expectedText = qobject_cast<XmlProductModule*>(plain)->toString();
        actualText = qobject_cast<XmlProductModule*>(withNulls)->toString();
    }
    KIVXmlParser::deleteProduct(plain);
    KIVXmlParser::deleteProduct(withNulls);

    QVERIFY(written > 0);
    QCOMPARE(actual.size(), expected.size());
    for (int index = 0; index < expected.size(); ++index)
        KIV_COMPARE_TEXT(actual.at(index), expected.at(index));
    if (isModule) {
        // The module's debug text writes a null container item as its empty line, a null CANopen entry as
        // its empty numbered entry.
        expectedText.replace(QLatin1String("AxisParameters(axis=0"), QLatin1String("AxisParameters(axis=0\n"));
        expectedText.replace(QLatin1String("XmlDigitalInputs("), QLatin1String("XmlDigitalInputs(\n"));
        expectedText.replace(QLatin1String("pdoMapped: false)\n"), QLatin1String("pdoMapped: false)\n\tentry[1]: \n"));
        KIV_COMPARE_TEXT(actualText, expectedText);
    }
}

/// Small files whose counts and sizes once sized buffers (70,000 empty axis blocks aborted with bad_alloc),
/// padded one number to the width a register claims, or took quadratic time: every renderer must finish
/// with output in proportion to the file.
void TestProperties::hostileCountsStayBounded_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<int>("maxCharsPerByte");
    const QByteArray module = "<product_module><name>H</name>";
    const QByteArray ic = "<product_ic name=\"H\"><register_set for=\"H\" name=\"r\">";
    const QByteArray icEnd = "</register_set></product_ic>";
    const QByteArray wideRegister = "<value_register address=\"0x10\" name=\"W\" size=\"%1\" group=\"0\">"
                                    "<register_variant name=\"V\"><value_register_field name=\"f\" mask=\"FF\">"
                                    "<value_unsigned default=\"5\"/></value_register_field></register_variant>"
                                    "</value_register>";
    QTest::newRow("empty axis blocks") << module + QByteArray("<axis_parameters/>").repeated(70000)
            + "</product_module>" << 64;
    QTest::newRow("empty registers") << ic + QByteArray("<value_register/>").repeated(50000) + icEnd << 64;
    QTest::newRow("register of 2000000000 bits")
        << ic + QByteArray(wideRegister).replace("%1", "2000000000") + icEnd << 64;
    QTest::newRow("register of 2147483647 bits")
        << ic + QByteArray(wideRegister).replace("%1", "2147483647") + icEnd << 64;
    QTest::newRow("one long run of escapes")
        << "<product_ic name=\"H\"><desc>" + QByteArray("\\u0041").repeated(100000) + "</desc></product_ic>" << 1;
    QByteArray settings = module + "<axis_parameters axis=\"0\">";
    for (int i = 0; i < 5000; ++i)
        settings += "<axis_parameter type=\"" + QByteArray::number(i % 256) + "\" name=\"p\"/>";
    settings += "</axis_parameters><drive_configuration id=\"1\" name=\"c\"><drive_ap_settings name=\"g\">"
        + QByteArray("<drive_ap_setting type=\"300\" value=\"1\"/>").repeated(5000)
        + "</drive_ap_settings></drive_configuration></product_module>";
    QTest::newRow("drive settings") << settings << 32;
}

void TestProperties::hostileCountsStayBounded()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, maxCharsPerByte);
    LogCapture log;
    ParsedBytes parsed;
    parseBytes(xml, false, &parsed);
    QVERIFY(parsed.product);
    const qint64 chars = RenderAll::product(parsed.product);
    QVERIFY2(chars <= qint64(maxCharsPerByte) * xml.size(), qPrintable(QString::number(chars)));
}

QTEST_GUILESS_MAIN(TestProperties)
#include "tst_properties.moc"
