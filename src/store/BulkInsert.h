#pragma once

#include "Bindings.h"
#include "Engine.h"

#include <dialect/Value.h>

#include <memory>
#include <span>
#include <vector>

namespace oVELDRA::store {

/// Writes many rows into a table, fast. Meant for one transaction around all of them: an error (of the database, as
/// connectStore() lists them) can come at any later row or at finish(), and says nothing of which row it was.
class BulkInsert
{
public:
    /// `columns` are the table's columns that the rows give. The engine must outlive it.
    BulkInsert(EngineConnection& engine, dialect::Table table, std::vector<int> columns);

    /// The values are written as they are: what does not fit its column must have been converted (see
    /// dialect::storedValue()).
    void add(std::span<const dialect::Value> row);

    /// Writes what is still waiting. Must be called once, behind the last row.
    void finish();

private:
    void write(EngineStatement& statement);

    EngineConnection& m_engine;
    dialect::Table m_table;
    std::vector<int> m_columns;
    int m_rowsAtOnce;
    int m_waiting = 0;
    Bindings m_bindings;
    std::unique_ptr<EngineStatement> m_full;
};

} // namespace oVELDRA::store
