#pragma once

#include "kivcore_export.h"

#include <QJsonObject>

class XmlProductIC;

/// The model of an IC product file as JSON, for scripts that read product files (layout in docs/json.md,
/// schema in docs/schema/ic.schema.json). Only reads the model.
class KIVCORE_EXPORT IcJson
{
public:
    IcJson() = delete;

    /// Header texts, descriptions, register set, pins and database. A missing register set, pins, database
    /// or value descriptor is a JSON null under its key; null entries of lists are left out. Masks are
    /// numbers, exact only up to 2^53, so each keeps its hexadecimal text beside it. An empty object for a
    /// null product.
    static QJsonObject toJson(XmlProductIC* ic);
};
