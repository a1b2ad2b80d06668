#pragma once

#include "values/XmlValueInterface.h"

/// Common shape of the read-out kinds (date, time, version, text): numbers on the wire, shown as text,
/// with a short and a long description. Range 0 to the kind's max; nothing but access counts as present.
class KIVCORE_EXPORT XmlValueReadOut : public XmlValueInterface
{
public:
    QString getDescriptionShort() const { return m_descShort; }
    QString getDescriptionLong() const { return m_descLong; }

    /// A single entry, key 0, holding the two descriptions.
    XmlValueDescriptions getValueDescriptions() override;
    QString toString(QString indent) override;
    /// The base table with its data row closed, then a full-width row with the short description.
    QString toLatex(QString indent) override;

protected:
    XmlValueReadOut(
        int type, long long max, const char* className, QString access, QString descShort, QString descLong);

private:
    const char* m_className;
    QString m_descShort;
    QString m_descLong;
};
