#include "base/LineEditStyle.h"

LineEditStyle::LineEditStyle(QStyle* style)
    : QProxyStyle(style)
{ }

int LineEditStyle::pixelMetric(QStyle::PixelMetric m, const QStyleOption* o, const QWidget* w) const
{
    if (int(m) == 85)
        return 1;
    return QProxyStyle::pixelMetric(m, o, w);
}
