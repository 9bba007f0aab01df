#pragma once

#include <listings/DischargeLine.h>

#include <QString>

namespace oVELDRA::listings {

/// How the columns of the listing are laid out and their quantities written.
struct ListingLayout
{
    bool wide = false;      ///< room for quantities with eight decimals
    QString quantityFormat; ///< of relation and quantity
    QString lossFormat;     ///< of loss and waste

    /// The titles of the columns, with the line's end (CR LF).
    [[nodiscard]] QString titleLine() const;
    /// A run of "-" and a blank for each column, without a line's end.
    [[nodiscard]] QString ruleLine() const;
    /// A discharge, with the line's end. What is too long for its column is cut.
    [[nodiscard]] QString line(const DischargeLine& discharge) const;
};

} // namespace oVELDRA::listings
