#pragma once

#include <runtime/Clock.h>

#include <QDate>

namespace oVELDRA::doubles {

/// A clock that shows the date it was given.
class FixedClock final : public runtime::Clock
{
public:
    explicit FixedClock(QDate date = QDate(2024, 3, 15)) : m_date(date) {}

    [[nodiscard]] QDate today() const override { return m_date; }
    void set(QDate date) { m_date = date; }

private:
    QDate m_date;
};

} // namespace oVELDRA::doubles
