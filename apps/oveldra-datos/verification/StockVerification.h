#pragma once

#include "FindingSpool.h"
#include "QuantitySum.h"
#include "RowTally.h"

#include <oVELDRA/Store.h>

#include <QStringList>

#include <optional>

namespace oVELDRA::data {

struct VerificationWish
{
    QString inputs;                      ///< URL of the database to verify
    std::optional<QString> nomenclature; ///< URL of the tariff; without it positions are not looked up
    Tolerance tolerance;
};

/// Runs all checks over a database of inputs, as it is at one moment, and writes nothing to it. Answers what was left
/// out, a Spanish line for each.
///
/// Throws RuntimeError, as store::openEngine() says, for tables or columns that are not there (see KnownTables.h), and
/// when temporary files cannot be written.
[[nodiscard]] QStringList verifyStock(const VerificationWish& wish, FindingSpool& spool, RowTally& tally);

} // namespace oVELDRA::data
