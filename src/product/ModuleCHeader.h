#pragma once

#include "kivcore_export.h"
#include "values/CHeaderResult.h"

class XmlProductModule;

/// The numbers of a module product file as a C header for host software and firmware: the number of axes;
/// axis parameter numbers (PREFIX_AP_NAME) and global parameter bank and number pairs (PREFIX_GP_NAME,
/// PREFIX_GP_NAME_BANK), each with its range, default, access and named values; digital and analog input
/// and output numbers (PREFIX_DI_, _DO_, _AI_); CANopen object indices and sub-indices with their data
/// types (PREFIX_CO_OBJECT_INDEX, PREFIX_CO_OBJECT_ENTRY_SUB). Macros only. Only reads the model.
class KIVCORE_EXPORT ModuleCHeader
{
public:
    ModuleCHeader() = delete;

    /// Names come from the parameter names. An axis parameter of several axes is written once; a value that
    /// differs between the axes is written per axis (PREFIX_AP_NAME_AXIS1_DEFAULT). Two things that give one
    /// identifier are an error naming both (the header must then not be written). The self-test option is
    /// not used: a module has no fields to exercise. A null module gives an empty result.
    static CHeaderResult generate(XmlProductModule* module, const CHeaderOptions& options);
};
