#include "RegisterCommands.h"

#include "Arguments.h"
#include "InputFile.h"
#include "Output.h"

#include "ic/RegisterValues.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlValueRegister.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

int usage(const QString& message, const QString& command)
{
    return fail(2,
        QStringLiteral("kivtool: ") + message + QStringLiteral("\nTry 'kivtool help ") + command
            + QStringLiteral("'."));
}

/// "REG=VALUE" split at its first "="; false when there is none or either side is empty.
bool splitPair(const QString& text, QString* name, QString* value)
{
    const int equals = text.indexOf(QLatin1Char('='));
    if (equals <= 0 || equals == text.size() - 1)
        return false;
    *name = text.left(equals);
    *value = text.mid(equals + 1);
    return true;
}

QString bitsColumn(quint64 mask)
{
    const QString text = RegisterValues::bitsText(mask);
    return text.startsWith(QLatin1String("bits ")) ? text.mid(5) : text.mid(4);
}

QString meaning(const RegisterFieldValue& field)
{
    QString text = field.text;
    if (!field.unit.isEmpty())
        text += QLatin1Char(' ') + field.unit;
    if (!field.inRange && field.kind != QLatin1String("Choice")) // a choice's text says it already
        text += QStringLiteral("  (outside ") + field.range + QLatin1Char(')');
    return text;
}

void appendTable(QString& out, const QList<RegisterFieldValue>& fields, const QString& indent)
{
    int bitsWidth = 4;
    int nameWidth = 5;
    int rawWidth = 3;
    for (const RegisterFieldValue& field : fields) {
        bitsWidth = qMax(bitsWidth, bitsColumn(field.mask).size());
        nameWidth = qMax(nameWidth, field.name.size());
        rawWidth = qMax(rawWidth, QString::number(field.raw).size());
    }
    out += indent + QStringLiteral("bits").leftJustified(bitsWidth) + QStringLiteral("  ")
        + QStringLiteral("field").leftJustified(nameWidth) + QStringLiteral("  ")
        + QStringLiteral("raw").rightJustified(rawWidth) + QStringLiteral("  meaning\n");
    for (const RegisterFieldValue& field : fields)
        out += indent + bitsColumn(field.mask).leftJustified(bitsWidth) + QStringLiteral("  ")
            + field.name.leftJustified(nameWidth) + QStringLiteral("  ")
            + QString::number(field.raw).rightJustified(rawWidth) + QStringLiteral("  ") + meaning(field)
            + QLatin1Char('\n');
}

void appendDetails(QString& out, const RegisterDecoding& decoding, const QString& indent)
{
    appendTable(out, decoding.fields, indent);
    if (decoding.uncovered)
        out += indent + QStringLiteral("not covered by any field: ")
            + RegisterValues::hexValue(decoding.uncovered, decoding.size) + QStringLiteral(" (")
            + RegisterValues::bitsText(decoding.uncovered) + QStringLiteral(")\n");
    for (const QString& warning : decoding.warnings)
        out += indent + QStringLiteral("warning: ") + warning + QLatin1Char('\n');
}

QString headLine(const RegisterDecoding& decoding)
{
    QString line = decoding.name + QStringLiteral(" at ") + RegisterValues::hexValue(decoding.address, 8)
        + QStringLiteral(" = ") + RegisterValues::hexValue(decoding.value, decoding.size);
    switch (decoding.choice.outcome) {
    case RegisterVariantChoice::Decided:
        if (decoding.variant != QLatin1String("DEFAULT"))
            line += QStringLiteral(", variant \"") + decoding.variant + QLatin1Char('"');
        break;
    case RegisterVariantChoice::Undecided:
        line += QStringLiteral(", variant not decided");
        break;
    case RegisterVariantChoice::NoVariant:
        line += QStringLiteral(", no variant applies");
        break;
    }
    return line + QLatin1Char('\n');
}

QJsonObject fieldJson(const RegisterFieldValue& field)
{
    QJsonArray alerts;
    for (const QString& alert : field.alerts)
        alerts.append(alert);
    return QJsonObject {{QStringLiteral("name"), field.name}, {QStringLiteral("shift"), field.shift},
        {QStringLiteral("mask"), RegisterValues::hexValue(field.mask, 0)},
        {QStringLiteral("bits"), RegisterValues::bitsText(field.mask)},
        // exact up to 2^53; rawHex holds every bit
        {QStringLiteral("raw"), double(field.raw)}, {QStringLiteral("rawHex"), RegisterValues::hexValue(field.raw, 0)},
        {QStringLiteral("text"), field.text}, {QStringLiteral("unit"), field.unit},
        {QStringLiteral("kind"), field.kind}, {QStringLiteral("inRange"), field.inRange},
        {QStringLiteral("range"), field.range}, {QStringLiteral("alerts"), alerts}};
}

QJsonObject decodingJson(const RegisterDecoding& decoding)
{
    QJsonArray fields;
    for (const RegisterFieldValue& field : decoding.fields)
        fields.append(fieldJson(field));
    QJsonArray warnings;
    for (const QString& warning : decoding.warnings)
        warnings.append(warning);
    QJsonObject object {{QStringLiteral("name"), decoding.name}, {QStringLiteral("address"), double(decoding.address)},
        {QStringLiteral("size"), decoding.size},
        {QStringLiteral("value"), RegisterValues::hexValue(decoding.value, decoding.size)},
        {QStringLiteral("variant"),
            decoding.variant.isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(decoding.variant)},
        {QStringLiteral("reason"), decoding.choice.reason}, {QStringLiteral("fields"), fields},
        {QStringLiteral("uncovered"), RegisterValues::hexValue(decoding.uncovered, decoding.size)},
        {QStringLiteral("warnings"), warnings}};
    if (decoding.choice.outcome == RegisterVariantChoice::Undecided) {
        QJsonArray names;
        QJsonArray requirements;
        for (const RegisterVariantCandidate& candidate : decoding.choice.candidates) {
            names.append(candidate.variant);
            requirements.append(candidate.requirement);
        }
        object.insert(QStringLiteral("candidates"), names);
        object.insert(QStringLiteral("requirements"), requirements);
    }
    return object;
}

XmlRegisterVariant* variantNamed(XmlValueRegister* reg, const QString& name)
{
    for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants())) {
        if (variant->getName() == name)
            return variant;
    }
    return nullptr;
}

int runDecode(XmlProductIC* ic, const Arguments& arguments)
{
    RegisterValues session(ic);
    QList<QPair<XmlValueRegister*, QString>> given;
    for (int i = 1; i < arguments.operands.size(); ++i) {
        QString name;
        QString value;
        if (!splitPair(arguments.operands.at(i), &name, &value))
            return usage(QStringLiteral("decode expects REG=VALUE, not ") + quoted(arguments.operands.at(i)),
                QStringLiteral("decode"));
        QString error;
        if (!session.setValue(name, value, &error))
            return fail(1, QStringLiteral("kivtool: ") + error);
        given << qMakePair(session.findRegister(name), value);
    }
    const bool json = arguments.isSet(QStringLiteral("json"));
    const bool candidates = arguments.isSet(QStringLiteral("candidates"));
    QString text;
    QJsonArray registers;
    for (const auto& pair : qAsConst(given)) {
        XmlValueRegister* reg = pair.first;
        const RegisterDecoding decoding = session.decode(reg, session.value(reg->address()));
        QList<RegisterDecoding> each;
        if (candidates && decoding.choice.outcome == RegisterVariantChoice::Undecided) {
            for (const RegisterVariantCandidate& candidate : decoding.choice.candidates)
                each << session.decode(reg, decoding.value, variantNamed(reg, candidate.variant));
        }
        if (json) {
            QJsonObject object = decodingJson(decoding);
            if (!each.isEmpty()) {
                QJsonArray decodings;
                for (const RegisterDecoding& candidate : qAsConst(each))
                    decodings.append(decodingJson(candidate));
                object.insert(QStringLiteral("candidateDecodings"), decodings);
            }
            registers.append(object);
            continue;
        }
        if (!text.isEmpty())
            text += QLatin1Char('\n');
        text += headLine(decoding);
        // Undecided: the candidates say what to set, each in its own line.
        if (!decoding.choice.reason.isEmpty() && decoding.choice.outcome != RegisterVariantChoice::Undecided)
            text += QStringLiteral("  ") + decoding.choice.reason + QLatin1Char('\n');
        for (const RegisterVariantCandidate& candidate : decoding.choice.candidates)
            text += QStringLiteral("  ") + candidate.requirement + QLatin1Char('\n');
        if (each.isEmpty() && decoding.choice.outcome == RegisterVariantChoice::Undecided)
            text += QStringLiteral("  (--candidates decodes each)\n");
        if (decoding.choice.outcome == RegisterVariantChoice::Decided) {
            appendDetails(text, decoding, QStringLiteral("  "));
        } else {
            for (const QString& warning : decoding.warnings)
                text += QStringLiteral("  warning: ") + warning + QLatin1Char('\n');
        }
        for (const RegisterDecoding& candidate : qAsConst(each)) {
            text += QStringLiteral("  as \"") + candidate.variant + QStringLiteral("\":\n");
            appendDetails(text, candidate, QStringLiteral("    "));
        }
    }
    if (json)
        text = QString::fromUtf8(
            QJsonDocument(QJsonObject {{QStringLiteral("registers"), registers}}).toJson(QJsonDocument::Indented));
    return writeOutput(text, arguments.value(QStringLiteral("output")));
}

QString binary(quint64 value, int size)
{
    const int digits = size <= 0 || size > 64 ? 64 : size;
    QString text = QStringLiteral("0b");
    for (int bit = digits - 1; bit >= 0; --bit) {
        text += ((value >> bit) & 1u) ? QLatin1Char('1') : QLatin1Char('0');
        if (bit != 0 && bit % 4 == 0)
            text += QLatin1Char('_');
    }
    return text;
}

int runEncode(XmlProductIC* ic, const Arguments& arguments)
{
    RegisterValues session(ic);
    for (const QString& context : arguments.values.value(QStringLiteral("context"))) {
        QString name;
        QString value;
        if (!splitPair(context, &name, &value))
            return usage(
                QStringLiteral("--context expects REG=VALUE, not ") + quoted(context), QStringLiteral("encode"));
        QString error;
        if (!session.setValue(name, value, &error))
            return fail(1, QStringLiteral("kivtool: ") + error);
    }
    QString error;
    XmlValueRegister* reg = session.findRegister(arguments.operands.at(1), &error);
    if (!reg)
        return fail(1, QStringLiteral("kivtool: ") + error);
    RegisterEncodeOptions options;
    options.force = arguments.isSet(QStringLiteral("force"));
    if (arguments.isSet(QStringLiteral("base"))) {
        // The base is read as a value of the register itself, in a scratch session.
        RegisterValues scratch(ic);
        if (!scratch.setValue(reg->name(), arguments.value(QStringLiteral("base")), &error))
            return fail(1, QStringLiteral("kivtool: --base: ") + error);
        options.hasBase = true;
        options.base = scratch.value(reg->address());
    }
    QList<QPair<QString, QString>> fields;
    for (int i = 2; i < arguments.operands.size(); ++i) {
        QString name;
        QString value;
        if (!splitPair(arguments.operands.at(i), &name, &value))
            return usage(QStringLiteral("encode expects FIELD=VALUE, not ") + quoted(arguments.operands.at(i)),
                QStringLiteral("encode"));
        fields << qMakePair(name, value);
    }
    const RegisterEncoding result = session.encode(reg, fields, options);
    if (!result.ok)
        return fail(1,
            QStringLiteral("kivtool: ") + result.error
                + (result.forceable ? QStringLiteral(" (--force writes it anyway)") : QString()));
    for (const QString& warning : result.warnings)
        fail(0, QStringLiteral("kivtool: warning: ") + warning);
    const QString hex = RegisterValues::hexValue(result.value, result.size);
    QString text;
    if (arguments.isSet(QStringLiteral("json"))) {
        QJsonArray warnings;
        for (const QString& warning : result.warnings)
            warnings.append(warning);
        const QJsonObject object {{QStringLiteral("name"), result.name},
            {QStringLiteral("address"), double(result.address)}, {QStringLiteral("size"), result.size},
            {QStringLiteral("value"), hex}, {QStringLiteral("decimal"), QString::number(result.value)},
            {QStringLiteral("variant"), result.variant}, {QStringLiteral("warnings"), warnings}};
        text = QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Indented));
    } else if (arguments.isSet(QStringLiteral("all-bases"))) {
        text = QStringLiteral("hex      ") + hex + QStringLiteral("\ndecimal  ") + QString::number(result.value)
            + QStringLiteral("\nbinary   ") + binary(result.value, result.size) + QLatin1Char('\n');
    } else {
        text = hex + QLatin1Char('\n');
    }
    return writeOutput(text, arguments.value(QStringLiteral("output")));
}

} // namespace

int runRegisterCommand(const InputFile& input, const Arguments& arguments)
{
    XmlProductIC* ic = input.ic();
    if (!ic)
        return fail(1,
            QStringLiteral("kivtool: ") + input.path() + QStringLiteral(": ") + arguments.command
                + QStringLiteral(" needs an IC file (root product_ic); this is ")
                + (input.kind() == FileKind::ESI
                        ? QStringLiteral("an ESI file, which has no registers")
                        : QStringLiteral("a module file, whose parameters are not registers")));
    return arguments.command == QLatin1String("decode") ? runDecode(ic, arguments) : runEncode(ic, arguments);
}
