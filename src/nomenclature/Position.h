#pragma once

#include <QString>

namespace oVELDRA::nomenclature {

/// A tariff position as the tariff keeps it, in three columns. The point that joins the second part to the first is not
/// kept.
struct PositionParts
{
    QString subheading; ///< [001]: 8471.30.12
    QString opening;    ///< [002]: 000
    QString control;    ///< [003]: A

    bool operator==(const PositionParts&) const = default;
};

/// The parts of a joined position (8471.30.12.000A): characters 1 to 10, 12 to 14, and 15. Those that a shorter text
/// does not have are empty.
[[nodiscard]] PositionParts splitPosition(const QString& position);

/// The parts of a position that a user typed. The control character is always the last one, so that in a text of 14
/// characters it is the third of the opening, too. That is meant.
[[nodiscard]] PositionParts splitTypedPosition(const QString& position);

/// "8471.30.12" + "." + "000" + "A".
[[nodiscard]] QString joinedPosition(const PositionParts& parts);

/// Whether a typed text has a length that a position can have.
[[nodiscard]] bool isPositionLength(qsizetype length);

/// Commas, which the keypad types where the locale has a decimal comma, as the points of a position.
[[nodiscard]] QString commasToPoints(const QString& position);

/// The pattern of a `like` condition for positions that begin with a typed text. Every point stands for anything.
[[nodiscard]] QString searchPattern(const QString& prefix);

} // namespace oVELDRA::nomenclature
