#pragma once

#include <dialect/Value.h>

#include <QString>
#include <QStringView>

#include <span>
#include <unordered_map>

namespace oVELDRA::data {

/// A sum that keeps what each addition rounds away: the same numbers in the same order give the same sum, and in any
/// order the same to the last digit or two, however many they are.
class CompensatedSum
{
public:
    void add(double number);
    [[nodiscard]] double value() const { return m_sum + m_lost; }

private:
    double m_sum = 0;
    double m_lost = 0;
};

/// What the stock of inputs adds up to: of a declaration, or altogether.
struct StockSums
{
    qint64 articles = 0; ///< rows of INS
    CompensatedSum quantity;
    CompensatedSum balance;
    CompensatedSum cif;    ///< quantity times unit value
    qint64 discharges = 0; ///< rows of DIP
    CompensatedSum discharged;

    /// Whether all of it is the same, to the last bit.
    [[nodiscard]] bool equals(const StockSums& other) const;
};

/// The sums of each declaration and of all of them. Its memory goes with the declarations, not with the rows.
class StockTotals
{
public:
    using Declarations = std::unordered_map<QString, StockSums>;

    /// The columns that matter of a table, in the order in which add() takes their values; none for most tables.
    [[nodiscard]] static std::span<const QStringView> columnsOf(QStringView table);

    /// Adds a row. What is no number counts as 0.
    void add(QStringView table, std::span<const dialect::Value> values);

    /// By declaration number as written; without a number under the empty text.
    [[nodiscard]] const Declarations& declarations() const { return m_declarations; }
    /// Those of a declaration, all 0 when there is none.
    [[nodiscard]] const StockSums& of(const QString& declaration) const;
    [[nodiscard]] const StockSums& all() const { return m_all; }

private:
    Declarations m_declarations;
    StockSums m_all;
    dialect::LazySeparators m_separators;
};

} // namespace oVELDRA::data
