#pragma once

#include "kivcore_export.h"

#include <QMap>
#include <QObject>
#include <QPair>
#include <QString>

/// Type codes of the value descriptors. XmlValueBool2 uses 12, which has no name.
enum XmlValueType
{
    XmlValueTypeSigned = 0,
    XmlValueTypeUnsigned = 1,
    XmlValueTypeBool = 2,
    XmlValueTypeChoice = 3,
    XmlValueTypeChoiceElement = 4,
    XmlValueTypeRegister = 5,
    XmlValueTypeRegisterField = 6,
    XmlValueTypeDate = 7,
    XmlValueTypeTime = 8,
    XmlValueTypeVersion = 9,
    XmlValueTypeASCII = 10,
    XmlValueTypeDb = 11,
    XmlValueTypeBool2 = 12,
};

/// Value description map: value -> (short description, long description).
using XmlValueDescriptions = QMap<unsigned int, QPair<QString, QString>>;

/// Abstract base of every typed value descriptor (range, default, decimals, unit, access and their
/// renderings), deleted by the parameter, field, entry or item that holds it. min, max and default are always held as
/// signed 64-bit numbers; unsigned kinds store their values zero-extended, signed kinds sign-extended. Owns nothing but
/// its strings.
class KIVCORE_EXPORT XmlValueInterface : public QObject
{
    Q_OBJECT
public:
    explicit XmlValueInterface(int type);
    ~XmlValueInterface() override;

    virtual QString toString(QString indent) = 0;
    /// A small four-column table; the data row deliberately ends with the unit, without a row end.
    virtual QString toLatex(QString indent);
    virtual long long getMin();
    virtual bool hasMin();
    virtual long long getMax();
    virtual bool hasMax();
    virtual long long getDefault();
    virtual bool hasDefault();
    virtual int getDecimals();
    virtual bool hasDecimals();
    virtual QString getUnit();
    virtual bool hasUnit();
    virtual unsigned int getOptions();
    virtual bool hasOptions();
    virtual int getAccess();
    virtual bool hasAccess();
    virtual QString getAccessAsString();
    /// Sets the mask from the letters and stores the canonical string of that mask.
    virtual void setAccessString(QString access);
    virtual QString getStringFromValue(unsigned long long value) = 0;
    virtual XmlValueDescriptions getValueDescriptions();

    int getType() const { return m_type; }
    QString getTypeAsString() const;
    static QString getTypeAsString(int type);

    void setMin(const long long& min) { m_min = min; }
    void setMax(const long long& max) { m_max = max; }
    void setDefault(const long long& def) { m_default = def; }
    /// Brackets the unit: "mA" becomes "[mA]"; an empty unit or one starting with "[" stays as it is.
    void setUnit(const QString& unit);
    void setFormatString(const QString& format) { m_formatString = format; }
    QString getFormatString() const { return m_formatString; }
    void setFormatMul(const float& mul) { m_formatMul = mul; }
    float getFormatMul() const { return m_formatMul; }
    void setFormatDiv(const float& div) { m_formatDiv = div; }
    float getFormatDiv() const { return m_formatDiv; }

    /// Mask of the access letters r w e x c i d a present anywhere in the text, in any case.
    static int accessStringToAccess(QString access);
    /// Canonical upper-case text of a mask in the order R W C I D E A X; bits above 128 are ignored.
    static QString accessToAccessString(int access);

protected:
    /// Stores the access text as written (not canonical) and the mask of its letters.
    void setAccessAsWritten(const QString& access);
    /// The fields of the numeric kinds: range, default, decimals, bracketed unit, access as written, options.
    void setNumberFields(long long min, long long max, long long def, int decimals, const QString& unit,
        const QString& access, unsigned int options);
    /// The descriptor table; `dataRowEnd` closes the data row, `lastRow` (when not empty) follows it.
    QString latexTable(const QString& indent, QLatin1String dataRowEnd, const QString& lastRow);

    const int m_type;
    long long m_min = 0;
    long long m_max = 0;
    long long m_default = 0;
    long long m_decimals = 0;
    unsigned int m_options = 0;
    QString m_unit;
    QString m_formatString;
    float m_formatMul = 1.0f;
    float m_formatDiv = 1.0f;
    int m_access = 0;
    QString m_accessString;
};
