#include "base/CommandLine.h"

QString CommandLine::showDebManager()
{
    return QStringLiteral("-debug");
}

QString CommandLine::modeInternalUse()
{
    return QStringLiteral("-internalUse");
}

QString CommandLine::extendedAppeal()
{
    return QStringLiteral("-sexy");
}

QString CommandLine::simulateUSB_device()
{
    return QStringLiteral("-usbDevice");
}

QString CommandLine::setStyle()
{
    return QStringLiteral("-style");
}

QString CommandLine::runOnce()
{
    return QStringLiteral("-runOnce");
}

QString CommandLine::notificateWarnings()
{
    return QStringLiteral("-notificateWarnings");
}

QString CommandLine::notificateWarningsAsCritical()
{
    return QStringLiteral("-WarningsAsCritical");
}

QString CommandLine::touchMode()
{
    return QStringLiteral("-touchMode");
}
