#pragma once

#include <QLoggingCategory>

/// The library's own category "core.debLevel.low", for diagnostics that only matter when tracing.
Q_DECLARE_LOGGING_CATEGORY(lcCoreDebLevelLow)
