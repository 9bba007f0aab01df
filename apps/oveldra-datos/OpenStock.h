#pragma once

#include <dialect/Catalog.h>
#include <store/Engine.h>

#include <QDate>

#include <functional>
#include <vector>

namespace oVELDRA::data {

/// A declaration of INTINS with what of its articles has not been discharged.
struct OpenDeclaration
{
    dialect::Value number;
    dialect::Value file;
    dialect::Value customs;
    dialect::Value description;
    QDate expiry;
    qint64 articles = 0; ///< that have something left
    double quantity = 0; ///< left of all of them
    double value = 0;    ///< the CIF value of what is left
};

/// Days from which to which, both included.
struct Term
{
    QDate from;
    QDate to;
};

/// The declarations whose term (INTVEN) ends in `term` and that have something left, by the end of their term and then
/// by number. Reads INTINS and INS, one after the other, without holding more than the declarations of the term; needs
/// an open transaction.
///
/// Something is left of an article when its balance, written with eight decimals, is more than zero. Declarations
/// without an end of their term are passed over; `complain` is told of one whose end is no date.
[[nodiscard]] std::vector<OpenDeclaration> openDeclarations(store::EngineConnection& engine,
                                                            const dialect::Catalog& tables, const Term& term,
                                                            const std::function<void(const QString&)>& complain);

} // namespace oVELDRA::data
