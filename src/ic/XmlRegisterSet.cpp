#include "ic/XmlRegisterSet.h"

#include "base/ReserveHint_p.h"
#include "ic/XmlGroup.h"
#include "ic/XmlValueRegister.h"

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
