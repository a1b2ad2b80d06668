#pragma once

#include "values/XmlValueChoiceElement.h"

#include <QList>

/// A value picked from a list of permitted values ("value_choice"), owning its elements and deleting them
/// front to back with itself. min and max follow
/// the smallest and largest element value but are not reported as present; the unit is kept unbracketed.
class KIVCORE_EXPORT XmlValueChoice : public XmlValueInterface
{
    Q_OBJECT
public:
    XmlValueChoice(unsigned int def, QString unit, QString access);
    ~XmlValueChoice() override;

    bool hasDefault() override { return true; }
    bool hasUnit() override { return true; }

    /// Takes ownership; duplicates are kept.
    void appendElement(XmlValueChoiceElement* element);
    /// The elements in file order; they stay owned by the choice.
    const QList<XmlValueChoiceElement*>& getElements() const { return m_elements; }

    /// The description of the first element with this value; otherwise "suggest:" and the description of
    /// the last element ("suggest:" alone when there is none).
    QString getStringFromValue(unsigned long long value) override;
    /// One entry per element; of equal values the later element's texts win.
    XmlValueDescriptions getValueDescriptions() override;
    QString toString(QString indent) override;

private:
    QList<XmlValueChoiceElement*> m_elements;
};
