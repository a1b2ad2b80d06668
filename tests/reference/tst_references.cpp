#include "HtmlCheck.h"
#include "LogCapture.h"
#include "ParseBytes_p.h"
#include "TestXml.h"

#include "ic/IcJson.h"
#include "ic/XmlDatabase.h"
#include "ic/XmlGroup.h"
#include "ic/XmlPinMap.h"
#include "ic/XmlPins.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"
#include "product/ModuleJson.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlGlobalParameters.h"

#include <QDate>
#include <QDir>
#include <QJsonDocument>
#include <QLocale>
#include <QtTest>

// Every renderer's whole text for the examples, against reviewed files in tests/data/reference/<example>/.
// After a deliberate change of an output text, regenerate them with
//   KIVCORE_UPDATE_REFERENCES=1 build/tests/reference/tst_references
// and review the diff before committing it.

namespace {

const char kUpdateHint[]
    = "if the change is deliberate: KIVCORE_UPDATE_REFERENCES=1 build/tests/reference/tst_references";

using Fragment = QPair<QString, QString>; // file name, text
using Fragments = QList<Fragment>;

QString json(const QJsonObject& object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
}

Fragments moduleFragments(XmlProductModule* module)
{
    // The header carries today's date; the reference holds a placeholder in its place.
    const QString today = QLocale::system().toString(QDate::currentDate(), QStringLiteral("yyyy-MMM-d")).toUpper();
    Fragments list {{"debug.txt", module->toString()}, {"page.html", module->toHtml()},
        {"header.tex", module->toLaTeXHeader().replace(today, QLatin1String("@TODAY@"))},
        {"axis.tex", module->toLaTeXAxisParam()}, {"module.json", json(ModuleJson::toJson(module))}};
    if (XmlPinMap* pinMap = module->getPinMap())
        list << Fragment {"pinmap.txt", pinMap->toString(QString())} << Fragment {"pinmap.html", pinMap->toHtml()};
    for (int bank = 0; bank < module->getGlobalParameters()->size(); ++bank)
        list.append({QStringLiteral("bank-%1.tex").arg(bank), module->toLaTeXGlobalParamBank(bank)});
    for (int kind = 0; kind <= 3; ++kind)
        list.append({QStringLiteral("io-%1.tex").arg(kind), module->toLaTeXIOs(kind)});
    for (const XmlCANopenObject* object : qAsConst(*module->getCANopenObjects()))
        list.append(
            {QStringLiteral("object-%1.tex").arg(object->getIndex(), 4, 16, QLatin1Char('0')), object->toLatex()});
    return list;
}

Fragments icFragments(XmlProductIC* ic)
{
    Fragments list {{"debug.txt", ic->toString()}, {"page.html", ic->toHtml()},
        {"regmap.tex", ic->toLaTeXRegisterMap()}, {"regmap-defaults.tex", ic->toLaTeXRegisterMapDefaults()},
        {"overview.tex", ic->toLaTeXRegisterOverview()}, {"ic.json", json(IcJson::toJson(ic))}};
    if (XmlPins* pins = ic->pins())
        list << Fragment {"pins.txt", pins->toString(QString())} << Fragment {"pins.html", pins->toHtml()};
    if (XmlDatabase* database = ic->database())
        list.append({"database.txt", database->toString()});
    QString variants; // a register's variants as LaTeX tables, in file order
    for (XmlValueRegister* reg : qAsConst(*ic->registerSet()->getRegisters())) {
        for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants()))
            variants += variant->toLatex(QStringLiteral("\t")) + QLatin1Char('\n');
    }
    list.append({"variants.tex", variants});
    for (XmlGroup* group : qAsConst(*ic->registerSet()->getGroups()))
        list.append(
            {QStringLiteral("overview-group-%1.tex").arg(group->getID()), ic->toLaTeXRegisterOverviewByGroup(group)});
    return list;
}

Fragments fragments(const ParsedBytes& parsed)
{
    if (auto* module = qobject_cast<XmlProductModule*>(parsed.product))
        return moduleFragments(module);
    if (auto* ic = qobject_cast<XmlProductIC*>(parsed.product))
        return icFragments(ic);
    QJsonObject object;
    parsed.esi->toJson(object);
    return {{"debug.txt", parsed.esi->toString()}, {"esi.json", json(object)}};
}

} // namespace

class TestReferences : public QObject
{
    Q_OBJECT
private slots:
    void wholeTexts_data();
    void wholeTexts();
};

void TestReferences::wholeTexts_data()
{
    QTest::addColumn<QString>("input");
    QTest::addColumn<bool>("isEsi");
    QTest::newRow("module") << KIVCORE_EXAMPLES_DIR "/module/kiv-module-example.xml" << false;
    QTest::newRow("module-small") << KIVCORE_TEST_DATA_DIR "/reference/inputs/module-small.xml" << false;
    // Drive settings are named after the first axis-0 parameter of their type: blocks of other axes are passed
    // over, axis 256 counts as axis 0 and setting type 300 as 44 (both compared as 8 bits).
    QTest::newRow("module-drive-settings")
        << KIVCORE_TEST_DATA_DIR "/reference/inputs/module-drive-settings.xml" << false;
    QTest::newRow("module-markup") << KIVCORE_TEST_DATA_DIR "/reference/inputs/module-markup.xml" << false;
    QTest::newRow("ic") << KIVCORE_EXAMPLES_DIR "/ic/kiv-ic-example.xml" << false;
    QTest::newRow("ic-small") << KIVCORE_TEST_DATA_DIR "/reference/inputs/ic-small.xml" << false;
    QTest::newRow("ic-markup") << KIVCORE_TEST_DATA_DIR "/reference/inputs/ic-markup.xml" << false;
    QTest::newRow("esi") << KIVCORE_EXAMPLES_DIR "/esi/kiv-vendor-esi.xml" << true;
    QTest::newRow("esi-small") << KIVCORE_TEST_DATA_DIR "/reference/inputs/esi-small.xml" << true;
}

void TestReferences::wholeTexts()
{
    QFETCH(QString, input);
    QFETCH(bool, isEsi);
    ParsedBytes parsed;
    {
        const LogCapture quiet; // the parse notes are checked elsewhere
        parseBytes(TestXml::readFile(input), isEsi, &parsed);
    }
    QVERIFY(!parsed.isNull());
    const QDir folder(QStringLiteral(KIVCORE_TEST_DATA_DIR "/reference/") + QTest::currentDataTag());
    const bool update = qEnvironmentVariableIsSet("KIVCORE_UPDATE_REFERENCES");
    if (update)
        QVERIFY(folder.mkpath(QStringLiteral(".")));
    for (const auto& fragment : fragments(parsed)) {
        const QString path = folder.filePath(fragment.first);
        const bool escaped = !qobject_cast<XmlProductIC*>(parsed.product); // the IC's page leaves texts as they are
        if (path.endsWith(QLatin1String(".html")))
            QVERIFY2(HtmlCheck::problem(fragment.second, escaped).isEmpty(), qPrintable(path));
        if (update) {
            QVERIFY(TestXml::writeFile(path, fragment.second.toUtf8()));
            continue;
        }
        const QByteArray expected = TestXml::readFile(path);
        QVERIFY2(!expected.isEmpty() || fragment.second.isEmpty(), qPrintable(path + " is missing; " + kUpdateHint));
        const QString diff = TestXml::firstDifference(
            fragment.second, QString::fromUtf8(expected.constData(), expected.size())); // whole: texts may hold NUL
        QVERIFY2(diff.isEmpty(), qPrintable(path + ": " + diff + "\n" + kUpdateHint));
    }
}

QTEST_GUILESS_MAIN(TestReferences)
#include "tst_references.moc"
