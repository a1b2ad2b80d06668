#include "Models.h"

#include "RenderAll.h"

#include "esi/ESIXmlParser.h"
#include "esi/XmlEtherCATInfo.h"
#include "ic/RegisterValues.h"
#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlValueRegister.h"
#include "product/KIVXmlParser.h"
#include "product/XmlCANopenObject.h"
#include "product/XmlProductModule.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QXmlStreamReader>

#include <unistd.h>

namespace {

XmlProductModule* moduleOf(Model* model)
{
    return qobject_cast<XmlProductModule*>(model->product);
}

XmlProductIC* icOf(Model* model)
{
    return qobject_cast<XmlProductIC*>(model->product);
}

/// Every register gets a known value first, so the selectors decide the variants; then each register is
/// decoded once. Returns the number of fields decoded.
long long decodeAllRegisters(XmlProductIC* ic)
{
    RegisterValues session(ic);
    const QList<XmlValueRegister*>& registers = *ic->registerSet()->getRegisters();
    quint64 pattern = 0x9E3779B97F4A7C15ull;
    for (XmlValueRegister* reg : registers) {
        pattern = pattern * 6364136223846793005ull + 1442695040888963407ull;
        session.setValue(reg, pattern & RegisterValues::sizeMask(reg->getSize()));
    }
    long long fields = 0;
    for (XmlValueRegister* reg : registers)
        fields += session.decode(reg, session.value(reg->address())).fields.size();
    return fields;
}

} // namespace

InputKind inputKind(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return InputKind::Unknown;
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QStringRef name = reader.name();
        if (name == QLatin1String("product_module"))
            return InputKind::Module;
        if (name == QLatin1String("product_ic"))
            return InputKind::IC;
        return name == QLatin1String("EtherCATInfo") ? InputKind::ESI : InputKind::Unknown;
    }
    return InputKind::Unknown;
}

QString kindName(InputKind kind)
{
    switch (kind) {
    case InputKind::Module:
        return QStringLiteral("module");
    case InputKind::IC:
        return QStringLiteral("ic");
    case InputKind::ESI:
        return QStringLiteral("esi");
    case InputKind::Unknown:
        break;
    }
    return QStringLiteral("unknown");
}

Model::~Model()
{
    KIVXmlParser::deleteProduct(product);
    delete esi;
}

Model* parseFile(const QString& path, InputKind kind)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return nullptr;
    auto* model = new Model;
    if (kind == InputKind::ESI)
        model->esi = ESIXmlParser::parseInfo(&file);
    else
        model->product = KIVXmlParser::parseProduct(&file);
    return model;
}

long long readAllTokens(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    QXmlStreamReader reader(&file);
    long long tokens = 0;
    long long attributes = 0;
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement)
            attributes += reader.attributes().size();
        ++tokens;
    }
    return tokens + attributes;
}

QList<Renderer> renderersFor(InputKind kind)
{
    switch (kind) {
    case InputKind::Module:
        return {
            {QStringLiteral("toString"), [](Model* m) { return (long long)moduleOf(m)->toString().size(); }},
            {QStringLiteral("toHtml"), [](Model* m) { return (long long)moduleOf(m)->toHtml().size(); }},
            {QStringLiteral("toLaTeXAxisParam"),
                [](Model* m) { return (long long)moduleOf(m)->toLaTeXAxisParam().size(); }},
            {QStringLiteral("toLaTeXGlobalParamBank"),
                [](Model* m) {
                    long long total = 0;
                    for (int index = 0; index < moduleOf(m)->getGlobalParameters()->size(); ++index)
                        total += moduleOf(m)->toLaTeXGlobalParamBank(index).size();
                    return total;
                }},
            {QStringLiteral("toLaTeXIOs"),
                [](Model* m) {
                    long long total = 0;
                    for (int kind = 0; kind < 4; ++kind)
                        total += moduleOf(m)->toLaTeXIOs(kind).size();
                    return total;
                }},
            {QStringLiteral("CANopen toLatex"),
                [](Model* m) {
                    long long total = 0;
                    for (const XmlCANopenObject* object : qAsConst(*moduleOf(m)->getCANopenObjects()))
                        total += object->toLatex().size();
                    return total;
                }},
        };
    case InputKind::IC:
        return {
            {QStringLiteral("toString"), [](Model* m) { return (long long)icOf(m)->toString().size(); }},
            {QStringLiteral("toHtml"), [](Model* m) { return (long long)icOf(m)->toHtml().size(); }},
            {QStringLiteral("toLaTeXRegisterMap"),
                [](Model* m) { return (long long)icOf(m)->toLaTeXRegisterMap().size(); }},
            {QStringLiteral("toLaTeXRegisterMapDefaults"),
                [](Model* m) { return (long long)icOf(m)->toLaTeXRegisterMapDefaults().size(); }},
            {QStringLiteral("toLaTeXRegisterOverview"),
                [](Model* m) { return (long long)icOf(m)->toLaTeXRegisterOverview().size(); }},
            {QStringLiteral("RegisterValues decode all"), [](Model* m) { return decodeAllRegisters(icOf(m)); }},
        };
    case InputKind::ESI:
        return {
            {QStringLiteral("toString"), [](Model* m) { return (long long)m->esi->toString().size(); }},
            {QStringLiteral("toJson"),
                [](Model* m) {
                    QJsonObject json;
                    m->esi->toJson(json);
                    return (long long)QJsonDocument(json).toJson(QJsonDocument::Compact).size();
                }},
        };
    case InputKind::Unknown:
        break;
    }
    return {};
}

long long residentBytes()
{
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = statm.readAll().split(' ');
    return fields.size() > 1 ? fields.at(1).toLongLong() * sysconf(_SC_PAGESIZE) : 0;
}
