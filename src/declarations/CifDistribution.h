#pragma once

#include <QString>

namespace oVELDRA::declarations {

/// What one unit of the host's currency amounts is worth.
struct ExchangeFactors
{
    double fob = 0;
    double freight = 0;
    double insurance = 0;
};

/// An item's amounts as the host keeps them.
struct ItemAmounts
{
    double fob = 0;
    double freight = 0;
    double insurance = 0;
    double increments = 0;
    double deductions = 0;
};

/// An item's values after exchange.
struct ItemValues
{
    double fob = 0;
    double cif = 0;
};

/// FOB and CIF of an item. With `adjustments`, the increments are added and the deductions taken off. RuntimeError 6
/// for a result too large for a double; so for all that follow.
[[nodiscard]] ItemValues itemValues(const ItemAmounts& amounts, const ExchangeFactors& factors, bool adjustments);

/// An item's values for sharing its CIF among several subitems: the CIF is rounded to two decimals.
[[nodiscard]] ItemValues forSharing(const ItemValues& item);

/// A subitem's part of an item's CIF, in proportion to its FOB. RuntimeError 11 for an item whose FOB is 0, 6 when the
/// subitem's part is 0, too.
[[nodiscard]] double sharedCif(double subitemFob, const ExchangeFactors& factors, const ItemValues& item);

/// CIF per unit of quantity, rounded to six decimals. RuntimeError 11 for a quantity of 0, 6 when the CIF is 0, too.
[[nodiscard]] double unitValue(double cif, double quantity);

/// The number of the `position`-th of an item's `count` subitems. They count from "001", but an only one is "000": that
/// is how it is meant.
[[nodiscard]] QString subitemNumber(qsizetype position, qsizetype count);

} // namespace oVELDRA::declarations
