#pragma once

#include "kivcore_export.h"
#include "values/CHeaderResult.h"

class XmlProductIC;

/// The register map of an IC product file as a C header for firmware: per register its address, width,
/// access and reset value; per field its position, mask, width and reset value (PREFIX_REG_FIELD_Pos, _Msk,
/// _Width, _Reset), the named values of choice and bool fields, one set of field macros per variant of a
/// register with several layouts (PREFIX_REG_VARIANT_FIELD_...) with the selecting register's address,
/// mask, shift and range; helpers to put a value into a field and take it out; compile-time checks that
/// masks lie within their register and that the fields of a layout do not overlap. Macros and static
/// inline functions only, so it serves C99, C11 and C++ alike. Only reads the model.
class KIVCORE_EXPORT IcCHeader
{
public:
    IcCHeader() = delete;

    /// Names from the file are made valid, unique C identifiers; two things that give one identifier are an
    /// error naming both (the header must then not be written). Overlapping fields, masks beyond their
    /// register, masks that do not match their shift and registers without fields are warnings; the checks
    /// such a register would fail are left out. With `options.selfTestInclude`, also a C program that puts
    /// and takes 0, 1 and the largest value of every field and checks that only the field's bits change.
    /// A null product gives an empty result.
    static CHeaderResult generate(XmlProductIC* ic, const CHeaderOptions& options);
};
