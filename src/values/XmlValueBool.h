#pragma once

#include "values/XmlValueInterface.h"

/// Two-state value ("value_bool") with a short and a long description for each state; min 0, max 1.
class KIVCORE_EXPORT XmlValueBool : public XmlValueInterface
{
    Q_OBJECT
public:
    XmlValueBool(bool def, QString access, QString descFalseShort, QString descTrueShort, QString descFalseLong,
        QString descTrueLong);

    bool hasDefault() override { return true; }

    QString getDescFalseShort() const { return m_descFalseShort; }
    QString getDescTrueShort() const { return m_descTrueShort; }
    QString getDescFalseLong() const { return m_descFalseLong; }
    QString getDescTrueLong() const { return m_descTrueLong; }
    QString getDescFalse() const { return m_descFalseShort; }
    QString getDescTrue() const { return m_descTrueShort; }

    /// "low" for 0, "high" for any other 64-bit value; the descriptions are not used.
    QString getStringFromValue(unsigned long long value) override;
    /// Always two entries, 0 and 1, even when their texts are empty.
    XmlValueDescriptions getValueDescriptions() override;
    QString toString(QString indent) override;

private:
    QString m_descFalseShort;
    QString m_descTrueShort;
    QString m_descFalseLong;
    QString m_descTrueLong;
};
