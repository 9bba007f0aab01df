#pragma once

#include <oVELDRA/RuntimeError.h>

#include <optional>
#include <sqlite3.h>

namespace oVELDRA::store {

/// Defines the functions and the collation that dialect::SqlitePrinter uses. An error inside one of them is left in
/// `pending`, which must outlive the connection. Answers SQLite's result code.
[[nodiscard]] int defineSqliteFunctions(sqlite3* database, std::optional<RuntimeError>& pending);

} // namespace oVELDRA::store
