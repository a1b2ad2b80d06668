#include "base/KivCoreVersion.h"

QString KivCore::version()
{
    return QStringLiteral(KIVCORE_VERSION_STRING);
}
