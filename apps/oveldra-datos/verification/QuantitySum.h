#pragma once

#include "../StockTotals.h"

#include <cmath>
#include <limits>

namespace oVELDRA::data {

/// A sum of quantities that knows how large they were: what is wrong in its last places is in proportion to that.
class QuantitySum
{
public:
    void add(double quantity)
    {
        m_sum.add(quantity);
        m_magnitude += std::abs(quantity);
    }

    [[nodiscard]] double value() const { return m_sum.value(); }
    /// The sum of the absolute values.
    [[nodiscard]] double magnitude() const { return m_magnitude; }

private:
    CompensatedSum m_sum;
    double m_magnitude = 0;
};

/// What two quantities may differ by and still count as the same.
struct Tolerance
{
    double amount = 0.01;

    /// Whether a difference of numbers of that magnitude is more than allowed. Binary fractions of decimal numbers are
    /// given a few last places: 100 - 99.99 is not more than 0.01. What is no number is always too much.
    [[nodiscard]] bool isExceededBy(double difference, double magnitude) const
    {
        constexpr double lastPlaces = 4 * std::numeric_limits<double>::epsilon();
        return !std::isfinite(difference) || std::abs(difference) > amount + lastPlaces * magnitude;
    }
};

} // namespace oVELDRA::data
