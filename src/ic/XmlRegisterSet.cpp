#include "ic/XmlRegisterSet.h"

#include "base/ReserveHint_p.h"
#include "ic/XmlGroup.h"
#include "ic/XmlValueRegister.h"
#include "product/ElementParser_p.h"
#include "product/KIVXmlParser.h"

XmlRegisterSet::~XmlRegisterSet()
{
    qDeleteAll(m_registers);
    qDeleteAll(m_groups);
}

XmlValueRegister* XmlRegisterSet::getRegister(unsigned int address) const
{
    for (XmlValueRegister* reg : m_registers) {
        if (reg->address() == address)
            return reg;
    }
    return nullptr;
}

void XmlRegisterSet::appendValueRegister(XmlValueRegister* reg)
{
    if (!reg)
        return;
    m_registers.append(reg);
    m_registersMap.insert(static_cast<unsigned char>(reg->address()), reg);
}

void XmlRegisterSet::appendGroup(XmlGroup* group)
{
    if (group)
        m_groups.append(group);
}

QString XmlRegisterSet::toString() const
{
    QString text;
    text.reserve(KivReserve::chars(128 + 64 * qint64(m_groups.size()), m_registers.size(), 2048));
    text += QLatin1String("XmlRegisterSet(for: ") + m_for + QLatin1String(", name: ") + m_name + QLatin1String(")\n{");
    // Plain appends: a concatenation appended with += reserves the exact new length, so once the reserve
    // is used up every register would copy the whole text where the allocator cannot grow it in place.
    for (const XmlGroup* group : m_groups) {
        text += QLatin1Char('\n');
        text += group->toString(QString());
    }
    for (XmlValueRegister* reg : m_registers) {
        text += QLatin1Char('\n');
        text += reg->toString(QString());
    }
    text += QLatin1String("\n}");
    return text;
}

namespace {

using namespace KivParse;

const ElementInfo kRegisterSetInfo {QLatin1String("register_set"),
    "static XmlRegisterSet* KIVXmlParser::parseRegisterSet(QXmlStreamReader*)", UnknownChild::CouldNotParse};

const ChildRule<XmlRegisterSet> kRegisterSetRules[] = {
    {QLatin1String("group"),
        [](QXmlStreamReader* r, XmlRegisterSet* set) { set->appendGroup(KIVXmlParser::parseGroup(r)); }},
    {QLatin1String("value_register"),
        [](QXmlStreamReader* r, XmlRegisterSet* set) {
            set->appendValueRegister(KIVXmlParser::parseValueRegister(r));
        }},
};

} // namespace

XmlRegisterSet* KIVXmlParser::parseRegisterSet(QXmlStreamReader* reader)
{
    auto* set = new XmlRegisterSet();
    const QXmlStreamAttributes attributes = reader->attributes();
    set->setFor(attrText(attributes, QLatin1String("for")));
    set->setName(attrText(attributes, QLatin1String("name")));
    return parseElement(reader, set, kRegisterSetInfo, kRegisterSetRules);
}
