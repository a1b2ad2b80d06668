#pragma once

#include "kivcore_export.h"
#include "values/XmlValueInterface.h"

#include <QList>
#include <QString>

class XmlValueAlert;

/// A bit field of a register variant, owning and deleting its typed value descriptor but not its alerts
/// (alerts read from a file are QObject children of the field); deleted by its variant. It holds name,
/// position (shift and mask) and descriptions. The register/variant indexes and the dependency value are
/// plain storage for the tools that pick variants.
class KIVCORE_EXPORT XmlValueRegisterField : public XmlValueInterface
{
    Q_OBJECT
public:
    /// "\x26" in the name becomes "&". The mask is read as hexadecimal; the error mask is set when the
    /// number of zeros below the mask's highest set bit differs from shift (a hole or a wrong shift).
    XmlValueRegisterField(QString name, int shift, QString mask, QString descShort, QString descLong);
    ~XmlValueRegisterField() override;

    QString getName() const { return m_name; }
    /// Stored as given, without "\x26" replacement.
    void setName(const QString& name) { m_name = name; }
    int getShift() const { return m_shift; }
    void setShift(int shift) { m_shift = shift; }
    unsigned long long getMaskValue() const { return m_maskValue; }
    QString getMaskAsString() const { return m_maskString; }
    /// Replaces the text only: mask value and error mask stay as they were.
    void setMaskString(const QString& mask) { m_maskString = mask; }
    QString getDescriptionShort() const { return m_descShort; }
    void setDescriptionShort(const QString& text) { m_descShort = text; }
    /// The long description, or the short one when the long one is empty.
    QString getDescriptionLong() const;
    void setDescriptionLong(const QString& text) { m_descLong = text; }
    /// Same storage as the short description.
    QString getDescription() const { return m_descShort; }
    void setDescription(const QString& text) { m_descShort = text; }

    XmlValueInterface* getValue() { return m_value; }
    /// Takes ownership and copies the value's min and max. Deliberately does not delete a value it
    /// replaces: callers that swap descriptors keep the old one.
    void setValue(XmlValueInterface* value);

    /// The value's access; 0 without a value.
    int getAccess() override;
    /// The value's access string; empty without a value.
    QString getAccessAsString() override;
    /// Always "unknown".
    QString getStringFromValue(unsigned long long value) override;

    unsigned char getRegisterIndex() const { return m_registerIndex; }
    void setRegisterIndex(const unsigned char& index) { m_registerIndex = index; }
    unsigned char getDependencyRegisterIndex() const { return m_dependencyRegisterIndex; }
    void setDependencyRegisterIndex(unsigned char index) { m_dependencyRegisterIndex = index; }
    unsigned long long getDependencyValue() const { return m_dependencyValue; }
    void setDependencyValue(unsigned long long value) { m_dependencyValue = value; }
    unsigned char getVariantIndex() const { return m_variantIndex; }
    void setVariantIndex(const unsigned char& index) { m_variantIndex = index; }

    /// Does not take ownership.
    void addAlert(const XmlValueAlert* alert);
    /// Removes every occurrence; does not delete.
    void removeAlert(const XmlValueAlert* alert);
    QList<const XmlValueAlert*> getAlerts() const { return m_alerts; }

    bool getErrorMask() const { return m_errorMask; }

    /// The field's bits of a register value, shifted down. The shift is arithmetic, so a field that
    /// includes bit 31 is sign-filled (tools rely on it). A 16-bit field is sign-extended from 16 bits when
    /// its descriptor is signed and cut to 16 bits when unsigned.
    static int getCastedRegisterFieldValue(XmlValueRegisterField* field, int registerValue);

    QString toString(QString indent) override;
    /// The header has four cells and the value row five: kept, the help pages were laid out for it.
    QString toHtml();

private:
    XmlValueInterface* m_value = nullptr;
    QString m_name;
    QString m_descShort;
    QString m_descLong;
    int m_shift;
    QString m_maskString;
    unsigned long long m_maskValue;
    unsigned long long m_dependencyValue = 0;
    unsigned char m_registerIndex = 0;
    unsigned char m_dependencyRegisterIndex = 0;
    unsigned char m_variantIndex = 0;
    QList<const XmlValueAlert*> m_alerts;
    bool m_errorMask = false;
};
