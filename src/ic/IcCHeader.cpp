#include "ic/IcCHeader.h"

#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "values/CHeaderWriter_p.h"

#include <QMap>

using KivCHeader::commentText;
using KivCHeader::hexLiteral;
using KivCHeader::identifier;
using KivCHeader::namePart;
using KivCHeader::oneLine;
using KivCHeader::quotedName;
using KivCHeader::unsignedLiteral;

namespace {

QString hex(quint64 value)
{
    return QStringLiteral("0x") + QString::number(value, 16).toUpper();
}

int lowestBit(quint64 mask)
{
    int bit = 0;
    while (bit < 64 && !(mask & (1ull << bit)))
        ++bit;
    return bit;
}

int highestBit(quint64 mask)
{
    int bit = 63;
    while (bit >= 0 && !(mask & (1ull << bit)))
        --bit;
    return bit;
}

quint64 widthMask(int width)
{
    return width >= 64 ? ~0ull : (1ull << width) - 1;
}

/// What the header says of one field, worked out once.
struct Field
{
    XmlValueRegisterField* field = nullptr;
    QString id; ///< PREFIX_REG[_VARIANT]_FIELD
    QString source; ///< for messages
    quint64 mask = 0;
    int pos = 0;
    int width = 0;
    bool runOfBits = false; ///< one run of bits: the helpers give the value back
    quint64 reset = 0; ///< in field units
};

/// Position, width and reset value of `field` as its mask gives them (the shift is only compared).
Field describe(XmlValueRegisterField* field)
{
    Field info;
    info.field = field;
    info.mask = field->getMaskValue();
    if (info.mask != 0) {
        info.pos = lowestBit(info.mask);
        info.width = highestBit(info.mask) - info.pos + 1;
        info.runOfBits = (info.mask >> info.pos) == widthMask(info.width);
    }
    const qint64 def = field->getValue() ? field->getValue()->getDefault() : 0;
    info.reset = quint64(def) & widthMask(info.width);
    return info;
}

quint64 reset(const QList<Field>& fields)
{
    quint64 value = 0;
    for (const Field& field : fields) {
        if (field.width > 0)
            value |= (field.reset << field.pos) & field.mask;
    }
    return value;
}

quint64 layoutReset(XmlRegisterVariant* variant)
{
    QList<Field> fields;
    for (XmlValueRegisterField* field : *variant->getRegisterFields()) {
        if (field)
            fields << describe(field);
    }
    return reset(fields);
}

class Generator
{
public:
    Generator(XmlProductIC* ic, const CHeaderOptions& options)
        : m_ic(ic)
        , m_options(options)
        , m_writer(options, ic->name())
    { }

    CHeaderResult run();

private:
    QList<Field> fields(XmlRegisterVariant* variant, const QString& base, const QString& owner);
    void writeRegister(XmlValueRegister* reg);
    void writeFields(const QList<Field>& fields, XmlValueRegister* reg, const QString& owner);
    void writeSelection(XmlRegisterVariant* variant, const QString& base, const QString& owner);
    XmlRegisterVariant* resetVariant(XmlValueRegister* reg) const;
    void writeHelpers();
    void addSelfTest(const Field& field);
    QString selfTest() const;

    XmlProductIC* m_ic;
    CHeaderOptions m_options;
    KivCHeader::Writer m_writer;
    QMap<unsigned int, quint64> m_singleResets; ///< reset values of one-layout registers, by address
    bool m_wide = false; ///< some field lies beyond bit 31
    QString m_selfTestCalls;
    int m_selfTestFields = 0;
};

QList<Field> Generator::fields(XmlRegisterVariant* variant, const QString& base, const QString& owner)
{
    QList<Field> result;
    const QList<XmlValueRegisterField*>& list = *variant->getRegisterFields();
    for (int index = 0; index < list.size(); ++index) {
        if (!list.at(index))
            continue;
        Field info = describe(list.at(index));
        const XmlValueRegisterField* field = info.field;
        info.source = QStringLiteral("field ") + quotedName(field->getName()) + QStringLiteral(" of ") + owner;
        QString name = namePart(field->getName());
        if (name.isEmpty()) {
            name = QStringLiteral("FIELD") + QString::number(index);
            m_writer.warning(info.source + QStringLiteral(" has no name to build on; it is written as ") + name);
        }
        info.id = identifier({base, name});
        if (info.mask == 0)
            m_writer.warning(info.source + QStringLiteral(" has the empty mask 0; the self-test leaves it out"));
        else if (!info.runOfBits)
            m_writer.warning(info.source + QStringLiteral(": mask ") + hex(info.mask)
                + QStringLiteral(" is not one run of bits; the self-test leaves it out"));
        else if (field->getShift() != info.pos)
            m_writer.warning(info.source + QStringLiteral(": shift ") + QString::number(field->getShift())
                + QStringLiteral(" does not match mask ") + hex(info.mask) + QStringLiteral("; _Pos is ")
                + QString::number(info.pos) + QStringLiteral(", the mask's lowest bit"));
        result.append(info);
    }
    return result;
}

/// The variant that applies after a reset: the first whose selecting bits, taken from the reset values of
/// the selecting registers, lie in its range; the first variant when none can be told.
XmlRegisterVariant* Generator::resetVariant(XmlValueRegister* reg) const
{
    const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
    for (XmlRegisterVariant* variant : variants) {
        if (!variant || variant->getImpactedsBy()->isEmpty())
            continue;
        bool applies = true;
        for (XmlRegisterVariantImpactedBy* by : *variant->getImpactedsBy()) {
            const auto selector = m_singleResets.constFind(by ? by->getAddress() : 0);
            if (!by || selector == m_singleResets.constEnd() || by->getShift() < 0 || by->getShift() > 63) {
                applies = false;
                break;
            }
            const quint64 selected = (selector.value() & by->getMaskValue()) >> by->getShift();
            applies = applies && selected >= by->getRangeFrom() && selected <= by->getRangeTo();
        }
        if (applies)
            return variant;
    }
    for (XmlRegisterVariant* variant : variants) {
        if (variant)
            return variant;
    }
    return nullptr;
}

void Generator::writeHelpers()
{
    const QString set = m_writer.name({QStringLiteral("FIELD_SET")});
    const QString get = m_writer.name({QStringLiteral("FIELD_GET")});
    m_writer.claim(set, QStringLiteral("the field helper ") + set);
    m_writer.claim(get, QStringLiteral("the field helper ") + get);
    QString text = QStringLiteral(
        "/* Field helpers: msk and pos are a field's _Msk and _Pos. SET returns reg with the field set to value\n"
        "   (bits of value beyond the field are dropped); GET returns the field's value. */\n");
    const auto pair = [&](const QString& type, const QString& suffix) {
        text += QStringLiteral("static inline ") + type + QLatin1Char(' ') + set + suffix + QLatin1Char('(') + type
            + QStringLiteral(" reg, ") + type + QStringLiteral(" msk, uint32_t pos, ") + type
            + QStringLiteral(" value)\n{\n    return (reg & ~msk) | ((value << pos) & msk);\n}\n\n");
        text += QStringLiteral("static inline ") + type + QLatin1Char(' ') + get + suffix + QLatin1Char('(') + type
            + QStringLiteral(" reg, ") + type
            + QStringLiteral(" msk, uint32_t pos)\n{\n    return (reg & msk) >> pos;\n}\n\n");
    };
    pair(QStringLiteral("uint32_t"), QString());
    if (m_wide) {
        m_writer.claim(set + QStringLiteral("64"), QStringLiteral("the field helper ") + set + QStringLiteral("64"));
        m_writer.claim(get + QStringLiteral("64"), QStringLiteral("the field helper ") + get + QStringLiteral("64"));
        pair(QStringLiteral("uint64_t"), QStringLiteral("64"));
    }
    m_writer.raw(text);
}

void Generator::writeFields(const QList<Field>& fields, XmlValueRegister* reg, const QString& owner)
{
    const int size = reg->getSize();
    const int digits = qBound(1, (qBound(1, size, 64) + 3) / 4, 16);
    bool checkable = size >= 1 && size <= 64;
    QStringList masks;
    for (int index = 0; index < fields.size(); ++index) {
        const Field& field = fields.at(index);
        QString note = field.field->getDescriptionShort();
        const QString access = field.field->getAccessAsString();
        if (!access.isEmpty())
            note += QStringLiteral(" (") + access + QLatin1Char(')');
        m_writer.comment(field.field->getName() + QStringLiteral(": ") + note);
        m_writer.define(field.id + QStringLiteral("_Pos"), unsignedLiteral(quint64(field.pos)), field.source);
        m_writer.define(field.id + QStringLiteral("_Msk"), hexLiteral(field.mask, digits), field.source);
        m_writer.define(field.id + QStringLiteral("_Width"), unsignedLiteral(quint64(field.width)), field.source);
        m_writer.define(field.id + QStringLiteral("_Reset"), unsignedLiteral(field.reset), field.source);
        m_writer.defineNamedValues(field.id, field.field->getValue(), field.source);
        m_writer.blankLine();
        masks << field.id + QStringLiteral("_Msk");
        addSelfTest(field);
        if (size >= 1 && size <= 64 && (field.mask & ~widthMask(size))) {
            m_writer.warning(field.source + QStringLiteral(": mask ") + hex(field.mask)
                + QStringLiteral(" reaches beyond the register's ") + QString::number(size)
                + QStringLiteral(" bits; the register's compile-time checks are left out"));
            checkable = false;
        }
        for (int earlier = 0; earlier < index; ++earlier) {
            const quint64 common = fields.at(earlier).mask & field.mask;
            if (common) {
                m_writer.warning(owner + QStringLiteral(": fields ") + quotedName(fields.at(earlier).field->getName())
                    + QStringLiteral(" and ") + quotedName(field.field->getName()) + QStringLiteral(" overlap in bits ")
                    + hex(common) + QStringLiteral("; the register's compile-time checks are left out"));
                checkable = false;
                break;
            }
        }
    }
    if (!checkable)
        return;
    const QString limit
        = QStringLiteral(" & ~0x") + QString::number(widthMask(size), 16).toUpper() + QStringLiteral("ULL) == 0U");
    for (const QString& mask : masks)
        m_writer.check(QLatin1Char('(') + mask + limit, mask + QStringLiteral(" lies outside its register"));
    if (masks.size() > 1)
        m_writer.check(QStringLiteral("(0ULL + ") + masks.join(QLatin1String(" + ")) + QStringLiteral(") == (0ULL | ")
                + masks.join(QLatin1String(" | ")) + QLatin1Char(')'),
            masks.first() + QStringLiteral(" and the fields beside it overlap"));
}

void Generator::writeSelection(XmlRegisterVariant* variant, const QString& base, const QString& owner)
{
    const QList<XmlRegisterVariantImpactedBy*>& entries = *variant->getImpactedsBy();
    int index = 0;
    for (XmlRegisterVariantImpactedBy* by : entries) {
        if (!by)
            continue;
        const QString sel = entries.size() > 1 ? QStringLiteral("SEL") + QString::number(index) : QStringLiteral("SEL");
        ++index;
        XmlValueRegister* selector = m_ic->registerSet()->getRegister(by->getAddress());
        m_writer.comment(QStringLiteral("Applies while (") + (selector ? selector->name() : hex(by->getAddress()))
            + QStringLiteral(" & ") + hex(by->getMaskValue()) + QStringLiteral(") >> ")
            + QString::number(by->getShift()) + QStringLiteral(" lies in ") + QString::number(by->getRangeFrom())
            + QStringLiteral("..") + QString::number(by->getRangeTo()));
        const QString id = identifier({base, sel});
        m_writer.define(id + QStringLiteral("_ADDR"), hexLiteral(by->getAddress(), 2), owner);
        m_writer.define(id + QStringLiteral("_Msk"), hexLiteral(by->getMaskValue(), 1), owner);
        m_writer.define(id + QStringLiteral("_Pos"), unsignedLiteral(quint64(qMax(0, by->getShift()))), owner);
        m_writer.define(id + QStringLiteral("_MIN"), unsignedLiteral(by->getRangeFrom()), owner);
        m_writer.define(id + QStringLiteral("_MAX"), unsignedLiteral(by->getRangeTo()), owner);
    }
}

void Generator::writeRegister(XmlValueRegister* reg)
{
    const QString owner = QStringLiteral("register ") + quotedName(reg->name()) + QStringLiteral(" (")
        + hex(reg->address()) + QLatin1Char(')');
    QString name = namePart(reg->name());
    if (name.isEmpty()) {
        name = QStringLiteral("REG_") + QString::number(reg->address(), 16).toUpper();
        m_writer.warning(owner + QStringLiteral(" has no name to build on; it is written as ") + name);
    }
    const QString base = m_writer.name({name});
    QList<XmlRegisterVariant*> variants;
    for (XmlRegisterVariant* variant : *reg->getRegisterVariants()) {
        if (variant)
            variants << variant;
    }
    const int size = reg->getSize();
    const int digits = qBound(1, (qBound(1, size, 64) + 3) / 4, 16);

    QString title = reg->name() + QStringLiteral(" at ") + hex(reg->address()) + QStringLiteral(", ")
        + QString::number(size) + QStringLiteral(" bits");
    if (!reg->getAccessAsString().isEmpty())
        title += QStringLiteral(", ") + reg->getAccessAsString();
    if (variants.size() > 1)
        title += QStringLiteral(", ") + QString::number(variants.size()) + QStringLiteral(" layouts");
    if (variants.size() == 1 && !variants.first()->getDescriptions()->isEmpty())
        title += QStringLiteral(": ") + variants.first()->getDescriptions()->first();
    m_writer.heading(title);
    m_writer.define(base + QStringLiteral("_ADDR"), hexLiteral(reg->address(), 2), owner);
    m_writer.define(base + QStringLiteral("_WIDTH"), unsignedLiteral(quint64(qMax(0, size))), owner);
    m_writer.define(base + QStringLiteral("_ACCESS"), m_writer.access(reg->getAccess()), owner);

    if (size < 1 || size > 64)
        m_writer.warning(owner + QStringLiteral(" has the width ") + QString::number(size)
            + QStringLiteral("; its compile-time checks are left out"));

    bool anyField = false;
    QList<QList<Field>> layouts;
    QStringList layoutIds;
    QStringList layoutOwners;
    for (XmlRegisterVariant* variant : variants) {
        QString id = base;
        QString layoutOwner = owner;
        if (variants.size() > 1) {
            QString part = namePart(variant->getName());
            if (part.isEmpty())
                part = QStringLiteral("VARIANT") + QString::number(layouts.size());
            id = identifier({base, part});
            layoutOwner += QStringLiteral(", variant ") + quotedName(variant->getName());
        }
        layoutIds << id;
        layoutOwners << layoutOwner;
        layouts << fields(variant, id, layoutOwner);
        anyField = anyField || !layouts.last().isEmpty();
    }
    XmlRegisterVariant* atReset = resetVariant(reg);
    m_writer.define(base + QStringLiteral("_RESET"),
        hexLiteral(atReset ? reset(layouts.at(variants.indexOf(atReset))) : 0, digits), owner);
    if (variants.size() > 1)
        m_writer.comment(QStringLiteral("_RESET is that of the layout ") + atReset->getName()
            + QStringLiteral(", which applies after a reset"));
    m_writer.blankLine();
    if (!anyField)
        m_writer.warning(
            owner + QStringLiteral(" has no fields; only its address, width, access and reset value are written"));

    for (int index = 0; index < variants.size(); ++index) {
        XmlRegisterVariant* variant = variants.at(index);
        if (variants.size() > 1) {
            QString heading = QStringLiteral("Layout ") + variant->getName();
            if (!variant->getDescriptions()->isEmpty())
                heading += QStringLiteral(": ") + variant->getDescriptions()->first();
            m_writer.comment(heading);
            m_writer.define(layoutIds.at(index) + QStringLiteral("_RESET"),
                hexLiteral(reset(layouts.at(index)), digits), layoutOwners.at(index));
            writeSelection(variant, layoutIds.at(index), layoutOwners.at(index));
            m_writer.blankLine();
        }
        writeFields(layouts.at(index), reg, layoutOwners.at(index));
    }
}

void Generator::addSelfTest(const Field& field)
{
    if (m_options.selfTestInclude.isEmpty() || !field.runOfBits || field.width == 0)
        return;
    const bool wide = highestBit(field.mask) > 31;
    m_selfTestCalls += (wide ? QStringLiteral("    field64(") : QStringLiteral("    field32(")) + field.id
        + QStringLiteral("_Msk, ") + field.id + QStringLiteral("_Pos, ") + field.id + QStringLiteral("_Width, \"")
        + field.id + QStringLiteral("\");\n");
    ++m_selfTestFields;
}

QString Generator::selfTest() const
{
    QString include = m_options.selfTestInclude;
    include.replace(QLatin1Char('\\'), QLatin1String("\\\\")).replace(QLatin1Char('"'), QLatin1String("\\\""));
    const QString set = m_writer.name({QStringLiteral("FIELD_SET")});
    const QString get = m_writer.name({QStringLiteral("FIELD_GET")});
    QString text;
    text.reserve(m_selfTestCalls.size() + 4096);
    text += QStringLiteral("/* Self-test of ") + commentText(m_options.selfTestInclude)
        + QStringLiteral(": puts 0, 1 and the largest value into every field and takes it out again, over a\n"
                         "   register of zeros and one of ones, and checks that only the field's bits change. */\n");
    text += QStringLiteral("#include \"") + oneLine(include) + QStringLiteral("\"\n\n#include <stdio.h>\n\n");
    text += QStringLiteral("static unsigned long checks;\nstatic unsigned long failures;\n\n"
                           "static void expect(int ok, const char* field, const char* what)\n{\n    ++checks;\n"
                           "    if (!ok) {\n        ++failures;\n        fprintf(stderr, \"%s: %s\\n\", field, what);\n"
                           "    }\n}\n\n");
    const auto function = [&](const QString& type, const QString& bits, const QString& suffix, const QString& ones) {
        text += QStringLiteral("static void field") + bits + QLatin1Char('(') + type
            + QStringLiteral(" msk, uint32_t pos, uint32_t width, const char* name)\n{\n    const ") + type
            + QStringLiteral(" max = ") + ones + QStringLiteral(" >> (") + bits
            + QStringLiteral("U - width);\n    const ") + type
            + QStringLiteral(" values[3] = {0U, 1U, max};\n    const ") + type
            + QStringLiteral(" backgrounds[2] = {0U, ") + ones + QStringLiteral("};\n    int v;\n    int b;\n")
            + QStringLiteral("    for (v = 0; v < 3; ++v) {\n        for (b = 0; b < 2; ++b) {\n            const ")
            + type + QStringLiteral(" reg = ") + set + suffix
            + QStringLiteral("(backgrounds[b], msk, pos, values[v]);\n") + QStringLiteral("            expect(") + get
            + suffix
            + QStringLiteral("(reg, msk, pos) == values[v], name, \"value taken out differs from value put in\");\n"
                             "            expect((reg & ~msk) == (backgrounds[b] & ~msk), name, \"bits outside the "
                             "field changed\");\n"
                             "        }\n    }\n    expect(msk == (")
            + type + QStringLiteral(")(max << pos), name, \"_Msk is not _Width bits at _Pos\");\n}\n\n");
    };
    function(QStringLiteral("uint32_t"), QStringLiteral("32"), QString(), QStringLiteral("0xFFFFFFFFU"));
    if (m_wide)
        function(QStringLiteral("uint64_t"), QStringLiteral("64"), QStringLiteral("64"),
            QStringLiteral("0xFFFFFFFFFFFFFFFFULL"));
    text += QStringLiteral("int main(void)\n{\n");
    text += m_selfTestCalls;
    text += QStringLiteral("    printf(\"%lu checks of ") + QString::number(m_selfTestFields)
        + QStringLiteral(" fields, %lu failed\\n\", checks, failures);\n    return failures == 0 ? 0 : 1;\n}\n");
    return text;
}

CHeaderResult Generator::run()
{
    XmlRegisterSet* set = m_ic->registerSet();
    QList<XmlValueRegister*> registers;
    if (set) {
        for (XmlValueRegister* reg : *set->getRegisters()) {
            if (reg)
                registers << reg;
        }
    }
    // Reset values of one-layout registers first: they tell which layout of the others applies after a reset.
    for (XmlValueRegister* reg : registers) {
        const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
        if (variants.size() == 1 && variants.first())
            m_singleResets.insert(reg->address(), layoutReset(variants.first()));
        for (XmlRegisterVariant* variant : variants) {
            for (XmlValueRegisterField* field :
                variant ? *variant->getRegisterFields() : QList<XmlValueRegisterField*>()) {
                if (field && highestBit(field->getMaskValue()) > 31)
                    m_wide = true;
            }
        }
    }

    QString title = m_ic->name() + QStringLiteral(" registers");
    if (!m_ic->version().isEmpty())
        title += QStringLiteral(", version ") + m_ic->version();
    title += QStringLiteral(". Generated from its product file");
    if (!m_options.generator.isEmpty())
        title += QStringLiteral(" by ") + m_options.generator;
    title += QStringLiteral("; do not edit.");
    m_writer.begin(title);
    writeHelpers();
    for (XmlValueRegister* reg : registers)
        writeRegister(reg);
    CHeaderResult result = m_writer.finish();
    if (!m_options.selfTestInclude.isEmpty()) {
        result.selfTest = selfTest();
        result.selfTestFields = m_selfTestFields;
    }
    return result;
}

} // namespace

CHeaderResult IcCHeader::generate(XmlProductIC* ic, const CHeaderOptions& options)
{
    if (!ic)
        return {};
    return Generator(ic, options).run();
}
