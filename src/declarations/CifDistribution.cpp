#include "CifDistribution.h"

#include <oVELDRA/RuntimeError.h>

#include <runtime/Numbers.h>

#include <cmath>

namespace oVELDRA::declarations {

namespace {

constexpr int Overflow = 6;
constexpr int DivisionByZero = 11;

double finite(double value)
{
    if (!std::isfinite(value)) {
        throw RuntimeError(Overflow);
    }
    return value;
}

double divided(double dividend, double divisor)
{
    if (divisor == 0) {
        throw RuntimeError(dividend == 0 ? Overflow : DivisionByZero);
    }
    return finite(dividend / divisor);
}

} // namespace

ItemValues itemValues(const ItemAmounts& amounts, const ExchangeFactors& factors, bool adjustments)
{
    ItemValues item;
    item.fob = finite(amounts.fob * factors.fob);
    item.cif = item.fob + amounts.freight * factors.freight + amounts.insurance * factors.insurance;
    if (adjustments) {
        // Adjustments are in the currency of the FOB.
        item.cif += amounts.increments * factors.fob - amounts.deductions * factors.fob;
    }
    item.cif = finite(item.cif);
    return item;
}

ItemValues forSharing(const ItemValues& item)
{
    return {item.fob, runtime::roundThrough(item.cif, u"00.00")};
}

double sharedCif(double subitemFob, const ExchangeFactors& factors, const ItemValues& item)
{
    return divided(finite(subitemFob * factors.fob * item.cif), item.fob);
}

double unitValue(double cif, double quantity)
{
    return runtime::roundThrough(divided(cif, quantity), u"00.000000");
}

QString subitemNumber(qsizetype position, qsizetype count)
{
    return QString::number(count == 1 ? 0 : position).rightJustified(3, u'0');
}

} // namespace oVELDRA::declarations
