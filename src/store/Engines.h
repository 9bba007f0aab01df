#pragma once

#include "Engine.h"

#include <oVELDRA/Store.h>

#include <QString>

#include <memory>

namespace oVELDRA::store {

/// Whether a database must be there to be opened.
enum class Opening : quint8 {
    Existing, ///< it must be there
    Create    ///< made when it is not there: SQLite's file, the server's schema (the server's database must be there)
};

/// The engine of an URL, as connectStore() takes them. Throws RuntimeError as it says there.
[[nodiscard]] std::unique_ptr<EngineConnection> openEngine(const QString& url, Access access, Opening opening);

/// The tables that the database holds now, with the keys that tables of ours have.
[[nodiscard]] dialect::Catalog tablesOf(EngineConnection& engine);

/// Makes the tables and indexes of a schema, all or none. RuntimeError -2147467259, native number 3010, when one of
/// them is there already.
void createTables(EngineConnection& engine, Database schema);

} // namespace oVELDRA::store
