#pragma once

#include "kivcore_export.h"

#include <QObject>
#include <QString>

/// A warning text attached to a register field ("value_alert"), not owned by the field: one read from a
/// file is a QObject child of its field and goes with it. Not a value descriptor.
class KIVCORE_EXPORT XmlValueAlert : public QObject
{
    Q_OBJECT
public:
    explicit XmlValueAlert(QString text);

    void setText(QString text) { m_text = text; }
    QString getText() const { return m_text; }
    QString toString(QString indent);

private:
    QString m_text;
};
