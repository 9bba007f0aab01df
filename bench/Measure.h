#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <limits>
#include <vector>

namespace bench {

/// Seconds that a body takes.
template <typename Body>
double seconds(Body body)
{
    const auto start = std::chrono::steady_clock::now();
    body();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

struct Pair
{
    double ours = std::numeric_limits<double>::max();
    double limit = std::numeric_limits<double>::max();
};

/// The best of several runs of each, taken in turn so that both meet the same machine.
template <typename Ours, typename Limit>
Pair compare(int runs, Ours ours, Limit limit)
{
    Pair result;
    for (int run = 0; run < runs; ++run) {
        result.limit = std::min(result.limit, seconds(limit));
        result.ours = std::min(result.ours, seconds(ours));
    }
    return result;
}

/// Prints a ratio of times against its bar; false when it is over.
inline bool report(const char* work, const Pair& pair, double bar)
{
    const double ratio = pair.ours / pair.limit;
    const bool held = ratio <= bar;
    std::printf("%-58s %6.2f x the limit, bar %5.2f  %s\n", work, ratio, bar, held ? "held" : "MISSED");
    return held;
}

/// Times of which some are disturbed in either direction, as those of whole processes are.
class Samples
{
public:
    void add(double seconds) { m_seconds.push_back(seconds); }
    /// Of an odd number of samples; with an even one, the upper of the two in the middle.
    [[nodiscard]] double median() const
    {
        std::vector<double> sorted = m_seconds;
        std::sort(sorted.begin(), sorted.end());
        return sorted.at(sorted.size() / 2);
    }

private:
    std::vector<double> m_seconds;
};

/// Prints the ratio of two medians against its bar, and the medians in milliseconds; false when it is over.
inline bool reportMedians(const char* work, const Samples& ours, const Samples& limit, double bar)
{
    constexpr double milliseconds = 1000;
    const bool held = report(work, {ours.median(), limit.median()}, bar);
    std::printf("%58s %6.1f ms, the limit %.1f ms\n", "", ours.median() * milliseconds, limit.median() * milliseconds);
    return held;
}

} // namespace bench
