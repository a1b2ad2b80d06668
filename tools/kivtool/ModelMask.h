#pragma once

class TextMask;
class XmlProductIC;
class XmlProductModule;

// Swap the texts of a parsed product for the placeholders of `mask` in place, so that the library's
// renderings of it can be unmasked with every text escaped exactly once. Objects that have no setter
// for a text (value descriptors, parameters, CANopen objects) are replaced by masked copies, and the
// originals deleted. Afterwards the product is good for rendering only.

/// Header, descriptions, groups, registers, variants, fields and their value descriptors: every text the
/// IC's page and register documentation show. Pins, database and alerts appear in neither and stay.
void maskIC(XmlProductIC* ic, TextMask& mask);

/// Header, parameters, inputs, outputs and CANopen objects with their value descriptors: every text
/// of the module's manual. A firmware number that is no whole number becomes 0, as the manual counts it.
void maskModule(XmlProductModule* module, TextMask& mask);
