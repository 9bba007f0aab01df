#pragma once

namespace oVELDRA::declarations {

/// How much of a declared quantity is still open, in per cent. RuntimeError 11 without a declared quantity (6 when
/// nothing is open either), 6 for a share too large for a double.
[[nodiscard]] double availableShare(double open, double declared);

/// Whether so little is open that the article is marked: less than 30 per cent once the share is rounded as it is
/// shown, to two decimals.
[[nodiscard]] bool isScarce(double share);

} // namespace oVELDRA::declarations
