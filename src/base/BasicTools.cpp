#include "base/BasicTools.h"
static QString hexText(quint64 v, int digits, const QString& prefix)
{
    return prefix + QString::number(v, 16).toUpper().rightJustified(digits, QLatin1Char('0'));
}
QString BasicTools::iToHex(quint8 v, int d, QString p) { return hexText(v, d, p); }
QString BasicTools::iToHex(quint16 v, int d, QString p) { return hexText(v, d, p); }
QString BasicTools::iToHex(quint32 v, int d, QString p) { return hexText(v, d, p); }
QString BasicTools::iToHex(quint64 v, int d, QString p) { return hexText(v, d, p); }
QString BasicTools::iToHex(qint64 v, int d, QString p) { return hexText(quint64(v), d, p); }
