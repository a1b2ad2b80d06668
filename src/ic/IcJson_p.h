#pragma once

#include <QJsonValue>

class XmlDatabase;
class XmlPinMap;
class XmlValueInterface;

/// The IC-side parts that a module file carries too.
namespace KivIcJson {

/// The value descriptor (null when missing) with, for a register, variant or field used as a value, that
/// object's own keys beside the shared ones: a parameter or CANopen entry may carry a whole register.
QJsonValue value(XmlValueInterface* value);

/// The database object, or null.
QJsonValue database(XmlDatabase* database);
/// The array of pin mappings, or null.
QJsonValue pinMap(XmlPinMap* pinMap);

} // namespace KivIcJson
