#pragma once

#include <oVELDRA/Recordset.h>

#include <QString>

#include <memory>

namespace oVELDRA::core {
struct SharedState;
} // namespace oVELDRA::core

namespace oVELDRA::nomenclature {

/// The rows of a query of the nomenclature database, perhaps none. Throws the connection's reason when the query cannot
/// be opened.
[[nodiscard]] std::unique_ptr<Recordset> queryTariff(core::SharedState& state, const QString& statement);

} // namespace oVELDRA::nomenclature
