#include "Checks.h"

#include "ProductGrammar.h"
#include "Reporter.h"

#include "ic/XmlProductIC.h"
#include "ic/XmlRegisterSet.h"
#include "ic/XmlRegisterVariant.h"
#include "ic/XmlRegisterVariantImpactedBy.h"
#include "ic/XmlRegisterVariantImpacts.h"
#include "ic/XmlValueRegister.h"
#include "ic/XmlValueRegisterField.h"
#include "values/XmlValueChoice.h"

#include <QHash>

namespace {

const std::initializer_list<const char*> kFieldValues {"value_signed", "value_unsigned", "value_bool", "value_choice",
    "value_date", "value_time", "value_version", "value_ascii"};

/// The element of the i-th model object, or the owner's element when the two lists disagree.
int pick(const QVector<int>& nodes, int i, int fallback)
{
    return i < nodes.size() ? nodes.at(i) : fallback;
}

QString registerText(XmlValueRegister* reg)
{
    return reg->name() + QStringLiteral(" (") + hexText(reg->address()) + QLatin1Char(')');
}

/// The values a selector's bits can take: the mask moved down to bit 0.
quint64 selectorMax(const XmlRegisterVariantImpactedBy* entry)
{
    const quint64 mask = entry->getMaskValue();
    const int shift = entry->getShift();
    return shift >= 0 && shift < 64 ? mask >> shift : 0;
}

bool canHold(const XmlRegisterVariantImpactedBy* entry)
{
    return entry->getMaskValue() != 0 && entry->getRangeFrom() <= entry->getRangeTo()
        && entry->getRangeFrom() <= selectorMax(entry);
}

bool choosable(XmlRegisterVariant* variant)
{
    for (const XmlRegisterVariantImpactedBy* entry : qAsConst(*variant->getImpactedsBy())) {
        if (!canHold(entry))
            return false;
    }
    return true;
}

/// True when some selector value satisfies both: only two conditions on the same bits with ranges that
/// do not meet keep two variants apart.
bool overlap(XmlRegisterVariant* a, XmlRegisterVariant* b)
{
    for (const XmlRegisterVariantImpactedBy* x : qAsConst(*a->getImpactedsBy())) {
        for (const XmlRegisterVariantImpactedBy* y : qAsConst(*b->getImpactedsBy())) {
            if (x->getAddress() == y->getAddress() && x->getMaskValue() == y->getMaskValue()
                && x->getShift() == y->getShift()
                && (x->getRangeTo() < y->getRangeFrom() || y->getRangeTo() < x->getRangeFrom()))
                return false;
        }
    }
    return true;
}

quint64 fieldBits(XmlValueRegister* reg)
{
    quint64 bits = 0;
    for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants())) {
        for (XmlValueRegisterField* field : qAsConst(*variant->getRegisterFields()))
            bits |= field->getMaskValue();
    }
    return bits;
}

bool impacts(XmlValueRegister* selector, unsigned int address)
{
    for (XmlRegisterVariant* variant : qAsConst(*selector->getRegisterVariants())) {
        for (const XmlRegisterVariantImpacts* entry : qAsConst(*variant->getImpacts())) {
            if (entry->getAddress() == address)
                return true;
        }
    }
    return false;
}

bool impactedBy(XmlValueRegister* reg, unsigned int selector)
{
    for (XmlRegisterVariant* variant : qAsConst(*reg->getRegisterVariants())) {
        for (const XmlRegisterVariantImpactedBy* entry : qAsConst(*variant->getImpactedsBy())) {
            if (entry->getAddress() == selector)
                return true;
        }
    }
    return false;
}

int lowestBit(quint64 mask)
{
    int bit = 0;
    while (bit < 64 && !(mask & (quint64(1) << bit)))
        ++bit;
    return bit;
}

class IcChecker
{
public:
    IcChecker(XmlRegisterSet* set, const ProductGrammar& grammar, Reporter& reporter)
        : m_set(set)
        , m_grammar(grammar)
        , m_reporter(reporter)
    { }

    void run(int setNode);

private:
    void checkField(XmlValueRegister* reg, XmlValueRegisterField* field, int node);
    void checkSelectors(XmlValueRegister* reg, XmlRegisterVariant* variant, int node);
    void checkVariants(XmlValueRegister* reg, const QVector<int>& nodes, int fallback);

    XmlRegisterSet* m_set;
    const ProductGrammar& m_grammar;
    Reporter& m_reporter;
};

void IcChecker::run(int setNode)
{
    const QVector<int> nodes = m_grammar.accepted(setNode, "value_register");
    QHash<unsigned int, XmlValueRegister*> byAddress;
    QHash<QString, XmlValueRegister*> byName;
    const QList<XmlValueRegister*>& registers = *m_set->getRegisters();
    for (int i = 0; i < registers.size(); ++i) {
        XmlValueRegister* reg = registers.at(i);
        const int node = pick(nodes, i, setNode);
        if (XmlValueRegister* first = byAddress.value(reg->address()))
            m_reporter.report("KIV105", node,
                reg->name() + QStringLiteral(" has the address ") + hexText(reg->address()) + QStringLiteral(" of ")
                    + first->name() + QStringLiteral("; give one of them its own address"));
        else
            byAddress.insert(reg->address(), reg);
        if (XmlValueRegister* first = byName.value(reg->name()))
            m_reporter.report("KIV106", node,
                QStringLiteral("the name ") + reg->name() + QStringLiteral(" is taken by the register at ")
                    + hexText(first->address()) + QStringLiteral("; rename one of them"));
        else if (!reg->name().isEmpty())
            byName.insert(reg->name(), reg);

        const QVector<int> variantNodes = m_grammar.accepted(node, "register_variant");
        const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
        for (int v = 0; v < variants.size(); ++v) {
            XmlRegisterVariant* variant = variants.at(v);
            const int variantNode = pick(variantNodes, v, node);
            const QVector<int> fieldNodes = m_grammar.accepted(variantNode, "value_register_field");
            const QList<XmlValueRegisterField*>& fields = *variant->getRegisterFields();
            for (int f = 0; f < fields.size(); ++f) {
                const int fieldNode = pick(fieldNodes, f, variantNode);
                checkField(reg, fields.at(f), fieldNode);
                for (int g = 0; g < f; ++g) {
                    const quint64 common = fields.at(g)->getMaskValue() & fields.at(f)->getMaskValue();
                    if (common)
                        m_reporter.report("KIV101", fieldNode,
                            fields.at(f)->getName() + QStringLiteral(" shares the bits ") + hexText(common)
                                + QStringLiteral(" with ") + fields.at(g)->getName() + QStringLiteral(" in ")
                                + registerText(reg) + QStringLiteral("; give each field bits of its own"));
                }
            }
            checkSelectors(reg, variant, variantNode);
        }
        checkVariants(reg, variantNodes, node);
    }
}

void IcChecker::checkField(XmlValueRegister* reg, XmlValueRegisterField* field, int node)
{
    const quint64 mask = field->getMaskValue();
    if (field->getErrorMask())
        m_reporter.report("KIV103", node,
            QStringLiteral("mask ") + shownText(field->getMaskAsString()) + QStringLiteral(" and shift ")
                + QString::number(field->getShift())
                + (mask == 0 ? QStringLiteral(" disagree: the mask is 0 or not hexadecimal")
                             : QStringLiteral(" disagree: the mask's lowest bit is ") + QString::number(lowestBit(mask))
                            + QStringLiteral(" or it has a gap"))
                + QStringLiteral("; give one run of set bits starting at bit shift"));
    const int size = reg->getSize();
    if (size > 0 && size < 64 && (mask >> size) != 0)
        m_reporter.report("KIV102", node,
            QStringLiteral("mask ") + hexText(mask) + QStringLiteral(" of ") + field->getName()
                + QStringLiteral(" reaches above the ") + QString::number(size) + QStringLiteral(" bits of ")
                + registerText(reg) + QStringLiteral("; narrow the mask or correct the register's size"));

    const int valueNode = m_grammar.lastAccepted(node, kFieldValues);
    XmlValueInterface* value = field->getValue();
    checkValue(value, valueNode < 0 ? node : valueNode, m_reporter);
    if (!value || value->getType() != XmlValueTypeChoice || mask == 0)
        return;
    const quint64 largest = mask >> lowestBit(mask);
    const QVector<int> elementNodes = m_grammar.accepted(valueNode, "choice_element");
    const QList<XmlValueChoiceElement*>& elements = static_cast<XmlValueChoice*>(value)->getElements();
    for (int e = 0; e < elements.size(); ++e) {
        if (elements.at(e)->getValue() > largest)
            m_reporter.report("KIV104", pick(elementNodes, e, valueNode),
                QStringLiteral("choice value ") + QString::number(elements.at(e)->getValue())
                    + QStringLiteral(" does not fit field ") + field->getName() + QStringLiteral(" (at most ")
                    + QString::number(largest) + QStringLiteral("); widen the mask or remove the choice"));
    }
}

void IcChecker::checkSelectors(XmlValueRegister* reg, XmlRegisterVariant* variant, int node)
{
    const QVector<int> byNodes = m_grammar.accepted(node, "register_variant_impacted_by");
    const QList<XmlRegisterVariantImpactedBy*>& entries = *variant->getImpactedsBy();
    for (int i = 0; i < entries.size(); ++i) {
        const XmlRegisterVariantImpactedBy* entry = entries.at(i);
        const int entryNode = pick(byNodes, i, node);
        XmlValueRegister* selector = m_set->getRegister(entry->getAddress());
        if (!selector) {
            m_reporter.report("KIV107", entryNode,
                QStringLiteral("no register has the address ") + hexText(entry->getAddress())
                    + QStringLiteral("; name the selecting register's address"));
            continue;
        }
        const quint64 missing = entry->getMaskValue() & ~fieldBits(selector);
        if (entry->getMaskValue() == 0 || missing)
            m_reporter.report("KIV108", entryNode,
                QStringLiteral("mask ") + shownText(entry->getMaskAsString()) + QStringLiteral(" selects ")
                    + (entry->getMaskValue() == 0 ? QStringLiteral("no bits")
                                                  : QStringLiteral("bits ") + hexText(missing)
                                + QStringLiteral(" that no field of ") + selector->name() + QStringLiteral(" has"))
                    + QStringLiteral("; use the mask of the selecting field"));
        else if (!canHold(entry))
            m_reporter.report("KIV109", entryNode,
                QStringLiteral("no value of ") + selector->name() + QStringLiteral(" bits ")
                    + hexText(entry->getMaskValue()) + QStringLiteral(" lies in ")
                    + QString::number(entry->getRangeFrom()) + QStringLiteral(" to ")
                    + QString::number(entry->getRangeTo()) + QStringLiteral(" (they hold 0 to ")
                    + QString::number(selectorMax(entry)) + QStringLiteral("), so variant ")
                    + shownText(variant->getName()) + QStringLiteral(" never applies; correct the range or the shift"));
        if (!impacts(selector, reg->address()))
            m_reporter.report("KIV111", entryNode,
                selector->name() + QStringLiteral(" selects this variant of ") + reg->name()
                    + QStringLiteral(", but no variant of ") + selector->name()
                    + QStringLiteral(" lists it in <register_variant_impacts address=\"") + hexText(reg->address())
                    + QStringLiteral("\"/>; add that entry"));
    }
    const QVector<int> impactNodes = m_grammar.accepted(node, "register_variant_impacts");
    const QList<XmlRegisterVariantImpacts*>& impactsList = *variant->getImpacts();
    for (int i = 0; i < impactsList.size(); ++i) {
        const unsigned int address = impactsList.at(i)->getAddress();
        XmlValueRegister* target = m_set->getRegister(address);
        if (!target || !impactedBy(target, reg->address()))
            m_reporter.report("KIV111", pick(impactNodes, i, node),
                reg->name() + QStringLiteral(" says it changes the layout of ")
                    + (target ? target->name() : QStringLiteral("the register at ") + hexText(address))
                    + (target ? QStringLiteral(", but no variant of it is impacted by ") + reg->name()
                              : QStringLiteral(", which does not exist"))
                    + QStringLiteral("; add the impacted-by entry or remove this one"));
    }
}

void IcChecker::checkVariants(XmlValueRegister* reg, const QVector<int>& nodes, int fallback)
{
    const QList<XmlRegisterVariant*>& variants = *reg->getRegisterVariants();
    if (variants.size() < 2)
        return;
    for (int b = 1; b < variants.size(); ++b) {
        if (!choosable(variants.at(b)))
            continue;
        for (int a = 0; a < b; ++a) {
            if (!choosable(variants.at(a)) || !overlap(variants.at(a), variants.at(b)))
                continue;
            m_reporter.report("KIV110", pick(nodes, b, fallback),
                QStringLiteral("variants ") + shownText(variants.at(a)->getName()) + QStringLiteral(" and ")
                    + shownText(variants.at(b)->getName()) + QStringLiteral(" of ") + reg->name()
                    + QStringLiteral(" can both apply at once; give them selector ranges that do not meet"));
            break;
        }
    }
}

} // namespace

void checkIc(XmlProductIC* ic, const ProductGrammar& grammar, Reporter& reporter)
{
    if (!ic || !ic->registerSet())
        return;
    const int setNode = grammar.lastAccepted(reporter.tree().root(), {"register_set"});
    IcChecker(ic->registerSet(), grammar, reporter).run(setNode);
}
