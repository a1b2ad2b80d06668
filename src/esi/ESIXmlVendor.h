#pragma once

#include "kivcore_export.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

class QJsonObject;

/// The vendor of an ESI file (id, name, comment, the hexadecimal text of its 16x14 icon), deleted by the
/// XmlEtherCATInfo that holds it.
class KIVCORE_EXPORT ESIXmlVendor
{
public:
    ESIXmlVendor() = default;
    Q_DISABLE_COPY(ESIXmlVendor)

    QString getId() const { return m_id; }
    void setId(const QString& id) { m_id = id; }
    QString getName() const { return m_name; }
    void setName(const QString& name) { m_name = name; }
    QString getComment() const { return m_comment; }
    void setComment(const QString& comment) { m_comment = comment; }
    /// The icon as the file writes it: hexadecimal text, not decoded.
    QByteArray getImageData16x14() const { return m_imageData16x14; }
    void setImageData16x14(const QByteArray& data) { m_imageData16x14 = data; }

    /// The id text as a number: decimal when it starts with a digit 1-9, otherwise the text after its first
    /// two characters (the "#x" of ESI hexadecimal numbers) read as hexadecimal; 0 when it does not convert.
    /// Unsigned 32 bits, not int: real vendor ids such as 3502166480 are above the signed range.
    quint32 id() const;

    QString toString(QString indent) const;
    /// Writes "VID" (id() as a number) and "Icon" (the image data as text).
    void toJson(QJsonObject& json) const;

private:
    QString m_id;
    QString m_name;
    QString m_comment;
    QByteArray m_imageData16x14;
};
