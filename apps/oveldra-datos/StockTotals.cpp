#include "StockTotals.h"

#include <oVELDRA/RuntimeError.h>

#include <array>
#include <cmath>

namespace oVELDRA::data {

namespace {

constexpr QStringView articles = u"INS";
constexpr std::array<QStringView, 4> articleColumns{u"INTDCL", u"ARTCAT", u"ARTPRE", u"ARTDSC"};
constexpr QStringView discharges = u"DIP";
constexpr std::array<QStringView, 2> dischargeColumns{u"ARTDCL", u"RALCAN"};

bool sameName(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

double numberOrZero(const dialect::Value& value, const dialect::LazySeparators& separators)
{
    if (value.isNull()) {
        return 0;
    }
    try {
        return dialect::numberOf(value, separators);
    } catch (const RuntimeError&) {
        return 0;
    }
}

} // namespace

void CompensatedSum::add(double number)
{
    const double sum = m_sum + number;
    // The smaller of the two loses digits; what it lost is exact.
    m_lost += std::abs(m_sum) >= std::abs(number) ? (m_sum - sum) + number : (number - sum) + m_sum;
    m_sum = sum;
}

bool StockSums::equals(const StockSums& other) const
{
    return articles == other.articles && discharges == other.discharges && quantity.value() == other.quantity.value() &&
           balance.value() == other.balance.value() && cif.value() == other.cif.value() &&
           discharged.value() == other.discharged.value();
}

std::span<const QStringView> StockTotals::columnsOf(QStringView table)
{
    if (sameName(table, articles)) {
        return articleColumns;
    }
    if (sameName(table, discharges)) {
        return dischargeColumns;
    }
    return {};
}

void StockTotals::add(QStringView table, std::span<const dialect::Value> values)
{
    const auto number = [&](size_t place) { return numberOrZero(values[place], m_separators); };
    StockSums& declaration = m_declarations[dialect::textOf(values[0], m_separators)];
    for (StockSums* const sums : {&declaration, &m_all}) {
        if (sameName(table, discharges)) {
            ++sums->discharges;
            sums->discharged.add(number(1));
        } else {
            ++sums->articles;
            sums->quantity.add(number(1));
            sums->cif.add(number(1) * number(2));
            sums->balance.add(number(3));
        }
    }
}

const StockSums& StockTotals::of(const QString& declaration) const
{
    static const StockSums none;
    const auto found = m_declarations.find(declaration);
    return found == m_declarations.end() ? none : found->second;
}

} // namespace oVELDRA::data
