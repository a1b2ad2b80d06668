#pragma once
// Placeholder: the utilities land shortly.
#include "kivcore_export.h"
#include <QString>
class KIVCORE_EXPORT BasicTools
{
public:
    static QString iToHex(quint8 v, int digits, QString prefix);
    static QString iToHex(quint16 v, int digits, QString prefix);
    static QString iToHex(quint32 v, int digits, QString prefix);
    static QString iToHex(quint64 v, int digits, QString prefix);
    static QString iToHex(qint64 v, int digits, QString prefix);
};
