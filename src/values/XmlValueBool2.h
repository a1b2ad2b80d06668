#pragma once

#include "values/XmlValueInterface.h"

/// A named flag with one fixed boolean value ("value_bool2"). Its type code 12 has no name, so it reads
/// as "tbd".
class KIVCORE_EXPORT XmlValueBool2 : public XmlValueInterface
{
public:
    XmlValueBool2(QString name, bool value);

    QString getName() const { return m_name; }
    bool getValue() const { return m_value != 0; }

    /// Always "tbd".
    QString getStringFromValue(unsigned long long value) override;
    QString toString(QString indent) override;
    /// The header row only: neither name nor value is shown. Callers rely on that fixed table.
    QString toHtml();

private:
    int m_value;
    QString m_name;
};
