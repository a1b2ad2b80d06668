// Value limits of bit fields, the fixed-point filter and plot axis scaling.
#include "base/BasicTools.h"

#include <cmath>
#include <limits>

namespace {

// The 32-bit mask 0xFFFFFFFF << (bits - 1), sign-extended; 0 once the shift leaves 32 bits.
qint64 signedMinimum(quint8 bits)
{
    const int shift = bits - 1;
    const quint32 m = shift < 32 ? quint32(0xFFFFFFFFu << shift) : 0u;
    return qint64(qint32(m));
}

int roundToInt(double v)
{
    const double r = std::round(v); // halves away from zero
    if (!(r >= double(std::numeric_limits<int>::min())))
        return std::numeric_limits<int>::min();
    if (r > double(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return int(r);
}

} // namespace

qint64 BasicTools::valLimit(qint64& min, qint64& max, quint8 bits, bool isSigned)
{
    min = 0;
    max = -1;
    if (bits == 0)
        return max;
    if (isSigned) {
        if (bits > 63) {
            min = -1;
            max = 0;
        } else {
            min = signedMinimum(bits);
            max = ~min;
        }
    } else if (bits <= 31) {
        max = (qint64(1) << bits) - 1;
    } else if (bits == 32) {
        max = 4294967295LL;
    }
    return max;
}

double BasicTools::valLimit(double& min, double& max, quint8 bits, bool isSigned)
{
    min = 0.0;
    max = 18446744073709551616.0;
    if (bits == 0)
        return max;
    if (isSigned) {
        if (bits < 64) {
            const qint64 m = signedMinimum(bits);
            min = double(m);
            max = double(-m - 1);
        } else {
            min = -1.0;
            max = 0.0;
        }
    } else if (bits < 32) {
        max = double((quint64(1) << bits) - 1);
    } else if (bits == 32) {
        max = 4294967295.0;
    }
    return max;
}

int BasicTools::getFilteredInt(qint64* acc, int input, int previous, quint8 shift, quint8 fraction)
{
    if (!acc)
        return input;
    const quint32 difference = quint32(input) - quint32(previous); // wraps like 32-bit hardware
    const quint32 scaled = difference << ((int(fraction) - int(shift)) & 31);
    *acc += qint64(qint32(scaled));
    if (fraction >= 64)
        return *acc < 0 ? -1 : 0;
    return int(*acc >> fraction);
}

void BasicTools::adjustLinearAxis(double& min, double& max, quint32& ticks)
{
    if (min == max || !std::isfinite(min) || !std::isfinite(max)) {
        ticks = 0;
        return;
    }
    const double x = std::fabs(max - min) * 0.25;
    const double p = std::pow(10.0, std::floor(std::log10(x)));
    double step = p;
    if (x > 5 * p)
        step = 5 * p;
    else if (x > 2 * p)
        step = 2 * p;
    const double lo = std::floor(min / step);
    const double hi = std::ceil(max / step);
    ticks = quint32(qMax(hi - lo, 4.0));
    min = lo * step;
    max = hi * step;
}

int BasicTools::adjustLinearAxis(int& min, int& max)
{
    double lo = min;
    double hi = max;
    quint32 ticks = 0;
    adjustLinearAxis(lo, hi, ticks);
    min = roundToInt(lo);
    max = roundToInt(hi);
    return max;
}

void BasicTools::adjustLog10Axis(int& min, int& max)
{
    if (min > 0)
        min = roundToInt(std::pow(10.0, std::floor(std::log10(double(min)))));
    if (max > 0)
        max = roundToInt(std::pow(10.0, std::ceil(std::log10(double(max)))));
}
