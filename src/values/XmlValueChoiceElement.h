#pragma once

#include "values/XmlValueInterface.h"

/// One permitted value of a choice with its short and long description, deleted by the choice that holds
/// it. An "&" in a description is
/// stored as the four characters `\x26`, since the texts end up in documents where a bare one is markup.
class KIVCORE_EXPORT XmlValueChoiceElement : public XmlValueInterface
{
public:
    XmlValueChoiceElement(unsigned int value, QString descShort, QString descLong);

    unsigned int getValue() const { return m_value; }
    QString getDescriptionShort() const { return m_descShort; }
    QString getDescription() const { return m_descShort; }
    /// The long description, or the short one when there is none.
    QString getDescriptionLong() const;

    /// The short description for the own value, an empty text for any other.
    QString getStringFromValue(unsigned long long value) override;
    /// Shows the stored long description, without the fallback.
    QString toString(QString indent) override;

private:
    unsigned int m_value;
    QString m_descShort;
    QString m_descLong;
};
