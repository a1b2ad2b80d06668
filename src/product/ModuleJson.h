#pragma once

#include "kivcore_export.h"

#include <QJsonObject>

class XmlProductModule;

/// The model of a module product file as JSON, for scripts that read product files (layout in
/// docs/json.md, schema in docs/schema/module.schema.json). Only reads the model.
class KIVCORE_EXPORT ModuleJson
{
public:
    ModuleJson() = delete;

    /// Header texts, axis-parameter blocks, global banks, inputs, outputs, interrupts, coordinates, CANopen
    /// objects, drive configurations, pin map and database. A missing container, pin map, database or
    /// value descriptor is a JSON null under its key; null entries of lists are left out. An empty object
    /// for a null module.
    static QJsonObject toJson(XmlProductModule* module);
};
