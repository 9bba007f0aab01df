#pragma once

#include <random>
#include <vector>

namespace oVELDRA::histories {

/// Chance that is the same for the same seed on every machine.
class Dice
{
public:
    explicit Dice(quint64 seed) : m_engine(seed) {}

    /// A number from 0 to below `bound`.
    [[nodiscard]] int below(int bound) { return static_cast<int>(m_engine() % static_cast<quint64>(bound)); }
    /// True in that many of a hundred cases.
    [[nodiscard]] bool chance(int percent) { return below(100) < percent; }
    template <typename Kind>
    [[nodiscard]] const Kind& oneOf(const std::vector<Kind>& many)
    {
        return many[static_cast<size_t>(below(static_cast<int>(many.size())))];
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace oVELDRA::histories
