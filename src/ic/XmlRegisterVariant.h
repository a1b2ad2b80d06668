#pragma once

#include "kivcore_export.h"
#include "values/XmlValueInterface.h"

#include <QList>
#include <QString>
#include <QStringList>

class XmlValueRegisterField;
class XmlRegisterVariantImpacts;
class XmlRegisterVariantImpactedBy;

/// One complete bit layout of a register, owning and deleting its fields, impacts and impacted-by entries;
/// deleted by its register. A register with a fixed layout has one variant named
/// "DEFAULT"; otherwise the impacted-by entries say which bits of which register select this variant.
/// Mask and access are the unions of its fields'.
class KIVCORE_EXPORT XmlRegisterVariant : public XmlValueInterface
{
    Q_OBJECT
public:
    explicit XmlRegisterVariant(QString name);
    ~XmlRegisterVariant() override;

    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QStringList* getDescriptions() { return &m_descriptions; }
    /// Empty text is ignored; "\x26" becomes "&".
    void appendDescription(QString text);

    QList<XmlValueRegisterField*>* getRegisterFields() { return &m_registerFields; }
    /// Takes ownership and adds the field's mask and access; null is ignored.
    void appendField(XmlValueRegisterField* field);
    QList<XmlRegisterVariantImpacts*>* getImpacts() { return &m_impacts; }
    /// Takes ownership; null is ignored.
    void appendImpacts(XmlRegisterVariantImpacts* impacts);
    /// Deletes the impacts entries; the impacted-by entries stay.
    void clearImpacts();
    QList<XmlRegisterVariantImpactedBy*>* getImpactedsBy() { return &m_impactedBy; }
    /// Takes ownership; null is ignored.
    void appendImpactedBy(XmlRegisterVariantImpactedBy* impactedBy);

    unsigned long long getMaskValue() const { return m_maskValue; }
    int getAccess() override;
    QString getAccessAsString() override;
    void setAccessString(QString access) override;
    /// Always "unknown": a variant has no single value text.
    QString getStringFromValue(unsigned long long value) override;
    QString toString(QString indent) override;
    /// "DEFAULT" is titled "Variant 0". Fields without a value descriptor get no value row.
    QString toLatex(QString indent) override;
    QString toHtml();

private:
    QString m_name;
    QStringList m_descriptions;
    QString m_maskString;
    unsigned long long m_maskValue = 0;
    int m_variantAccess = 0;
    QString m_variantAccessString;
    QList<XmlValueRegisterField*> m_registerFields;
    QList<XmlRegisterVariantImpacts*> m_impacts;
    QList<XmlRegisterVariantImpactedBy*> m_impactedBy;
};
