#pragma once

#include <QDate>

namespace oVELDRA::runtime {

/// Where the screens get today's date from, so that a test can set it.
class Clock
{
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    [[nodiscard]] virtual QDate today() const = 0;
};

/// The machine's clock.
class SystemClock final : public Clock
{
public:
    [[nodiscard]] QDate today() const override { return QDate::currentDate(); }
};

} // namespace oVELDRA::runtime
