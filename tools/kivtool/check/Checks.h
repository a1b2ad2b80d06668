#pragma once

class ProductGrammar;
class Reporter;
class XmlProductIC;
class XmlProductModule;
class XmlValueInterface;

// The checks of `kivtool check`, by family. Each reads the model and finds the element an object came
// from in the source tree through the grammar; the identifiers are listed in Finding.cpp.

/// KIV002 and KIV003 over the elements as written; `esi` chooses the ESI file's names.
void checkTexts(Reporter& reporter, bool esi);
/// KIV051 to KIV053 of one value descriptor, found at `node`.
void checkValue(XmlValueInterface* value, int node, Reporter& reporter);
/// KIV101 to KIV111 and the values of the fields.
void checkIc(XmlProductIC* ic, const ProductGrammar& grammar, Reporter& reporter);
/// KIV201 to KIV204 and the values of the parameters and entries.
void checkModule(XmlProductModule* module, const ProductGrammar& grammar, Reporter& reporter);
/// KIV301.
void checkEsi(Reporter& reporter);
