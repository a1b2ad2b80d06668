#pragma once

#include "kivcore_export.h"

#include <QList>
#include <QMap>
#include <QString>

class XmlValueRegister;
class XmlGroup;

/// The register map of one IC, owning and deleting its registers and groups (in file order), with a lookup
/// by address; deleted by the IC product.
/// The lookup is keyed by the low 8 bits of the address on purpose: IC register addresses are 7 or 8 bits
/// wide and the product's write record uses the same key. A later register with the same low 8 bits
/// replaces the earlier map entry; the list keeps both.
class KIVCORE_EXPORT XmlRegisterSet
{
public:
    XmlRegisterSet() = default;
    ~XmlRegisterSet();
    Q_DISABLE_COPY(XmlRegisterSet)

    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString getFor() const { return m_for; }
    void setFor(QString forText) { m_for = forText; }

    QList<XmlValueRegister*>* getRegisters() { return &m_registers; }
    QList<XmlGroup*>* getGroups() { return &m_groups; }
    /// Not owning: the registers belong to the list.
    QMap<unsigned char, XmlValueRegister*>* getRegistersMap() { return &m_registersMap; }
    /// The first register in list order whose full address matches; null if none.
    XmlValueRegister* getRegister(unsigned int address) const;

    /// Takes ownership; null is ignored.
    void appendValueRegister(XmlValueRegister* reg);
    /// Takes ownership; null is ignored.
    void appendGroup(XmlGroup* group);

    QString toString() const;

private:
    QString m_name;
    QString m_for;
    QList<XmlValueRegister*> m_registers;
    QList<XmlGroup*> m_groups;
    QMap<unsigned char, XmlValueRegister*> m_registersMap;
};
