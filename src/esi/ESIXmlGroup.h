#pragma once

#include "kivcore_export.h"

#include <QByteArray>
#include <QString>

/// A device group of an ESI file (type key, English name, 16x14 icon text), deleted by the descriptions
/// that hold it.
class KIVCORE_EXPORT ESIXmlGroup
{
public:
    ESIXmlGroup() = default;
    Q_DISABLE_COPY(ESIXmlGroup)

    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString getType() const { return m_type; }
    void setType(const QString& type) { m_type = type; }
    /// The icon as the file writes it: hexadecimal text, not decoded.
    QByteArray getImageData16x14() const { return m_imageData16x14; }
    void setImageData16x14(const QByteArray& data) { m_imageData16x14 = data; }

    QString toString(QString indent) const;

private:
    QString m_name;
    QString m_type;
    QByteArray m_imageData16x14;
};
