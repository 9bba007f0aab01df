#include "ProgressLine.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace oVELDRA::data {

namespace {

constexpr auto pause = 100ms;
// Before that an estimate would jump about.
constexpr auto firstEstimate = 1s;

QString spoken(std::chrono::seconds rest)
{
    const auto number = [](auto part) { return QString::number(part.count()); };
    if (rest < 1min) {
        return number(rest) + u" s";
    }
    if (rest < 1h) {
        return number(std::chrono::floor<std::chrono::minutes>(rest)) + u" min " + number(rest % 1min) + u" s";
    }
    return number(std::chrono::floor<std::chrono::hours>(rest)) + u" h " +
           number(std::chrono::floor<std::chrono::minutes>(rest % 1h)) + u" min";
}

} // namespace

std::optional<QString> ProgressLine::next(const QString& what, qint64 done, qint64 total, Clock::time_point now)
{
    if (!m_shown || what != m_what) {
        m_what = what;
        m_begun = now;
    } else if (now - *m_shown < pause) {
        return std::nullopt;
    }
    m_shown = now;
    return words(done, total, now - m_begun);
}

QString ProgressLine::words(qint64 done, qint64 total, Clock::duration elapsed) const
{
    if (total <= 0) {
        return m_what + u": " + QLocale().toString(done);
    }
    const double share = std::clamp(static_cast<double>(done) / static_cast<double>(total), 0.0, 1.0);
    QString text = m_what + u": " + QString::number(static_cast<int>(share * 100)) + u" %";
    if (elapsed >= firstEstimate && share > 0) {
        const auto rest = std::chrono::duration<double>(elapsed) * ((1 - share) / share);
        text += u", faltan " + spoken(std::chrono::round<std::chrono::seconds>(rest));
    }
    return text;
}

} // namespace oVELDRA::data
