#pragma once

#include "kivcore_export.h"

#include <QObject>
#include <QString>

/// The name of a group number that registers give in their "group" attribute, deleted by the register set
/// that holds it. Registers refer to it by number only.
class KIVCORE_EXPORT XmlGroup : public QObject
{
    Q_OBJECT
public:
    XmlGroup(QString name, unsigned int id);

    QString getName() const { return m_name; }
    void setName(QString name) { m_name = name; }
    unsigned int getID() const { return m_id; }

    QString toString(QString indent) const;

private:
    QString m_name;
    unsigned int m_id;
};
