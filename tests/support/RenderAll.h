#pragma once

#include <QByteArray>

class XmlEtherCATInfo;
class XmlProductInterface;

namespace RenderAll {

/// Runs every renderer of the product (its JSON export included) with every valid argument (and a few invalid ones) and returns the
/// total length of the texts, so that nothing is optimised away. Used by the property tests and the
/// fuzz targets: a renderer must survive any model the parser can build.
qint64 product(XmlProductInterface* product);

/// Debug text and JSON export of an ESI model.
qint64 esi(XmlEtherCATInfo* info);

} // namespace RenderAll
