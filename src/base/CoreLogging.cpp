#include "base/CoreLogging_p.h"

Q_LOGGING_CATEGORY(lcCoreDebLevelLow, "core.debLevel.low")
