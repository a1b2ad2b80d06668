#pragma once

#include "kivcore_export.h"

#include <QObject>

/// Common base of the parsed products, which the caller of KIVXmlParser::parseProduct owns and releases
/// with KIVXmlParser::deleteProduct. type() is 0 for an IC product and 1 for a module product.
class KIVCORE_EXPORT XmlProductInterface : public QObject
{
    Q_OBJECT
public:
    explicit XmlProductInterface(int type);
    ~XmlProductInterface() override;

    int type() const { return m_type; }

private:
    const int m_type;
};
