#pragma once

#include "values/XmlValueInterface.h"

/// A named unsigned number of an IC's database ("value_db"), shaped like XmlValueBool2.
class KIVCORE_EXPORT XmlValueDb : public XmlValueInterface
{
public:
    XmlValueDb(QString name, unsigned int value);

    QString getName() const { return m_name; }
    unsigned int getValue() const { return m_value; }

    /// Always "tbd".
    QString getStringFromValue(unsigned long long value) override;
    QString toString(QString indent) override;
    /// The header row only, as XmlValueBool2::toHtml.
    QString toHtml();

private:
    unsigned int m_value;
    QString m_name;
};
