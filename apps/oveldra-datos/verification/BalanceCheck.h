#pragma once

#include "Finding.h"
#include "StockWalk.h"

namespace oVELDRA::data {

/// Articles whose open balance is not what was declared less what was discharged.
///
/// Repeated articles are one stock, as discharges cannot tell them apart: their sums are compared, in one finding.
class BalanceCheck final : public StockObserver
{
public:
    BalanceCheck(Tolerance tolerance, FindingSink& sink) : m_tolerance(tolerance), m_sink(sink) {}

    void groupEnds(const StockGroup& group) override;

private:
    Tolerance m_tolerance;
    FindingSink& m_sink;
};

} // namespace oVELDRA::data
