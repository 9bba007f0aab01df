#pragma once

#include <oVELDRA/Store.h>

#include <dialect/Catalog.h>

#include <vector>

namespace oVELDRA::store {

/// A table as it is made: its columns and key, and its indexes, each a list of columns.
struct TableSchema
{
    dialect::Table table;
    std::vector<std::vector<int>> indexes;
};

/// The tables of one of the three databases.
[[nodiscard]] const std::vector<TableSchema>& schemaOf(Database database);

/// Notes in a table that was found in a database what its key is, when it is one of ours.
void adoptKey(dialect::Table& table);

} // namespace oVELDRA::store
