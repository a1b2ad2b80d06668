#pragma once

#include "kivcore_export.h"

#include <QString>

/// One pin of an IC (type, name, what it does and what its low, high and floating states mean), deleted by
/// the pin group that holds it.
class KIVCORE_EXPORT XmlPin
{
public:
    XmlPin(unsigned int id, QString type, QString name, QString descShort, QString descLong, QString descLow,
        QString descHigh, QString descFloating, QString defaultState);

    unsigned int getId() const { return m_id; }
    void setId(unsigned int id) { m_id = id; }
    QString getType() const { return m_type; }
    void setType(QString type) { m_type = type; }
    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString getDescriptionShort() const { return m_descShort; }
    void setDescriptionShort(QString text) { m_descShort = text; }
    QString getDescriptionLong() const { return m_descLong; }
    void setDescriptionLong(QString text) { m_descLong = text; }
    QString getDescriptionLow() const { return m_descLow; }
    void setDescriptionLow(QString text) { m_descLow = text; }
    QString getDescriptionHigh() const { return m_descHigh; }
    void setDescriptionHigh(QString text) { m_descHigh = text; }
    QString getDescriptionFloating() const { return m_descFloating; }
    void setDescriptionFloating(QString text) { m_descFloating = text; }
    QString getDefaultState() const { return m_defaultState; }
    void setDefaultState(QString state) { m_defaultState = state; }
    /// The long description.
    QString getDescription() const { return m_descLong; }

    /// Upper-case hexadecimal without prefix.
    QString getStringFromValue(unsigned long long value) const;
    QString toString(QString indent) const;
    QString toHtml() const;

private:
    unsigned int m_id;
    QString m_type;
    QString m_name;
    QString m_descShort;
    QString m_descLong;
    QString m_descLow;
    QString m_descHigh;
    QString m_descFloating;
    QString m_defaultState;
};
