#include "AvailableShare.h"

#include <oVELDRA/RuntimeError.h>

#include <runtime/Numbers.h>

#include <cmath>

namespace oVELDRA::declarations {

double availableShare(double open, double declared)
{
    constexpr int overflow = 6;
    constexpr int divisionByZero = 11;
    if (declared == 0.0) {
        throw RuntimeError(open == 0.0 ? overflow : divisionByZero);
    }
    const double share = open * 100 / declared;
    if (!std::isfinite(share)) {
        throw RuntimeError(overflow);
    }
    return share;
}

bool isScarce(double share)
{
    constexpr double scarce = 30;
    return runtime::roundThrough(share, u"00.00") < scarce;
}

} // namespace oVELDRA::declarations
