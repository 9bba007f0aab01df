#pragma once

#include <oVELDRA/Recordset.h>

#include <QString>

namespace oVELDRA::listings {

/// What the listing shows of loss and waste.
enum class LossAndWaste {
    AsKept,    ///< as the discharge keeps them: per cent or quantities
    Quantities ///< as quantities
};

/// The meaning of the user's setting: "S" with or without blanks around it are quantities, any other text is not.
[[nodiscard]] LossAndWaste lossAndWasteOf(const QString& setting);

/// An export that took a quantity of a declared input, as the listing shows it.
struct DischargeLine
{
    QString exportNumber;
    QString input;
    double relation = 0;   ///< quantity of input per unit of product
    double conversion = 0; ///< the product's multiplier
    QString quantity;      ///< exported quantity, as text
    double loss = 0;
    double waste = 0;
    double cifUnit = 0;
    double cifTotal = 0; ///< of the quantity of input that was discharged
    QString invoice;

    bool operator==(const DischargeLine&) const = default;
};

/// The line of a row of `DIP`. RuntimeError 3265 for a field that is not there.
[[nodiscard]] DischargeLine dischargeLine(const Recordset& discharge, LossAndWaste shown);

} // namespace oVELDRA::listings
