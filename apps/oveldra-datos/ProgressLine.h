#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace oVELDRA::data {

/// The words of a progress line, and when it is time for them: at most ten times a second.
class ProgressLine
{
public:
    using Clock = std::chrono::steady_clock;

    /// The line to show at that moment, or nothing when the one before is too young. `total` 0: unknown. With another
    /// `what` the work, and the estimate of what is left of it, begin anew.
    [[nodiscard]] std::optional<QString> next(const QString& what, qint64 done, qint64 total, Clock::time_point now);

private:
    [[nodiscard]] QString words(qint64 done, qint64 total, Clock::duration elapsed) const;

    QString m_what;
    Clock::time_point m_begun;
    std::optional<Clock::time_point> m_shown;
};

} // namespace oVELDRA::data
