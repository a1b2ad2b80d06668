#include "ic/XmlRegisterSet.h"

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
    text.reserve(128 + 64 * m_groups.size() + 2048 * m_registers.size());
    text += QLatin1String("XmlRegisterSet(for: ") + m_for + QLatin1String(", name: ") + m_name + QLatin1String(")\n{");
    for (const XmlGroup* group : m_groups)
        text += QLatin1Char('\n') + group->toString(QString());
    for (XmlValueRegister* reg : m_registers)
        text += QLatin1Char('\n') + reg->toString(QString());
    text += QLatin1String("\n}");
    return text;
}
