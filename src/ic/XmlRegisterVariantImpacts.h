#pragma once

#include "kivcore_export.h"

#include <QObject>
#include <QString>

/// Names a register whose layout depends on the register that holds this entry's variant; deleted by that
/// variant.
class KIVCORE_EXPORT XmlRegisterVariantImpacts : public QObject
{
    Q_OBJECT
public:
    explicit XmlRegisterVariantImpacts(unsigned int address);

    unsigned int getAddress() const { return m_address; }
    QString toString(QString indent) const;

private:
    unsigned int m_address;
};
