#pragma once

#include "Finding.h"
#include "StockWalk.h"

namespace oVELDRA::data {

/// Discharges that point nowhere. Each is reported once: one whose declaration has no header as that, whether its
/// article is there or not; one whose declaration is there, but not its article, as that.
class DischargeCheck final : public StockObserver
{
public:
    explicit DischargeCheck(FindingSink& sink) : m_sink(sink) {}

    void discharge(const StockDischarge& discharge) override;

private:
    FindingSink& m_sink;
};

} // namespace oVELDRA::data
