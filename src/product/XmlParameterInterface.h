#pragma once

#include "kivcore_export.h"

#include <QObject>
#include <QString>
#include <QStringList>

class XmlValueInterface;

/// Base of the module's numbered firmware settings and signals (axis and global parameters, analog and
/// digital inputs, digital outputs), owning and deleting one value descriptor; it holds number, name,
/// identifier and description lines.
class KIVCORE_EXPORT XmlParameterInterface : public QObject
{
    Q_OBJECT
public:
    /// Kinds of parameter, fixed by each subclass's constructor.
    enum Kind
    {
        AxisParameterKind = 0,
        GlobalParameterKind = 1,
        AnalogInputKind = 2,
        DigitalInputKind = 3,
        DigitalOutputKind = 4,
    };

    explicit XmlParameterInterface(int parameterType);
    /// Deletes the value descriptor.
    ~XmlParameterInterface() override;

    /// Debug text; the kinds override it with their own prefix, which for every known kind is the same
    /// as parameterTypeAsString() followed by "(".
    virtual QString toString();

    int parameterType() const { return m_parameterType; }
    /// The kind's name as the debug text writes it ("AxisParameter", "GlobalParameter", ...).
    static QString parameterTypeAsString(int kind);
    QString parameterTypeAsString() const { return parameterTypeAsString(m_parameterType); }

    /// The command numbers of the module's command language that read and write this parameter. A global
    /// parameter is deliberately written with its read command number: the firmware expects it so.
    int readCommand() const;
    int writeCommand() const;

    /// The parameter's number in its block or bank (the firmware calls it the type).
    unsigned char type() const { return m_type; }
    void setType(unsigned char type) { m_type = type; }
    QString name() const { return m_name; }
    void setName(QString name) { m_name = name; }
    QString identifier() const { return m_identifier; }
    void setIdentifier(QString identifier) { m_identifier = identifier; }
    QStringList descriptions() const { return m_descriptions; }
    void appendDescription(QString description) { m_descriptions.append(description); }
    XmlValueInterface* value() const { return m_value; }
    /// Takes ownership of `value`; deliberately does not delete a descriptor it replaces (the caller
    /// that swaps descriptors keeps the old one).
    void setValue(XmlValueInterface* value) { m_value = value; }

protected:
    /// The debug text shared by the kinds, after the kind's own prefix such as "AxisParameter(".
    QString toStringWithPrefix(QLatin1String prefix) const;

private:
    const int m_parameterType;
    unsigned char m_type = 0;
    QString m_name;
    QString m_identifier;
    QStringList m_descriptions;
    XmlValueInterface* m_value = nullptr;
};
