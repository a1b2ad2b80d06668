#pragma once

#include "kivcore_export.h"
#include "values/XmlValueInterface.h"

#include <QList>
#include <QString>

class XmlRegisterVariant;

/// One register of an IC (address, name, width, group number), owning and deleting its layouts (variants);
/// deleted by the register set. Its access mask is the union of its variants' masks.
class KIVCORE_EXPORT XmlValueRegister : public XmlValueInterface
{
    Q_OBJECT
public:
    XmlValueRegister(unsigned int address, QString name, int size, unsigned int groupID);
    ~XmlValueRegister() override;

    unsigned int address() const { return m_address; }
    void setAddress(unsigned int address) { m_address = address; }
    QString name() const { return m_name; }
    void setName(QString name) { m_name = name; }
    int getSize() const { return m_size; }
    void setSize(int size) { m_size = size; }
    unsigned int getGroupID() const { return m_groupID; }
    void setGroupID(unsigned int groupID) { m_groupID = groupID; }

    QList<XmlRegisterVariant*>* getRegisterVariants() { return &m_registerVariants; }
    /// Takes ownership and adds the variant's access to the register's; null is ignored.
    void appendVariant(XmlRegisterVariant* variant);

    /// Upper-case hexadecimal without prefix or padding.
    QString getStringFromValue(unsigned long long value) override;
    QString toString(QString indent) override;
    QString toHtml();

private:
    unsigned int m_address;
    QString m_name;
    int m_size;
    unsigned int m_groupID;
    QList<XmlRegisterVariant*> m_registerVariants;
};
