#pragma once

#include "Engine.h"

#include <dialect/Value.h>

#include <memory>

namespace oVELDRA::store {

/// Reads a table from its first row to its last, holding a block of rows at a time.
///
/// Needs an open transaction of the engine for as long as it lives (see EngineConnection::openCursor()), and the engine
/// to outlive it.
class RowStream
{
public:
    RowStream(EngineConnection& engine, const dialect::Table& table, const dialect::TableScan& scan);

    /// To the next row, and to the first one at first; false behind the last one.
    [[nodiscard]] bool next();

    /// A wanted column of the row, by its place in the scan.
    [[nodiscard]] dialect::Value value(size_t place) const { return m_block.value(m_row, place); }
    /// The sort key of the row, by its place in the scan's sort columns.
    [[nodiscard]] dialect::Value key(size_t place) const { return m_block.value(m_row, m_wanted + place); }

private:
    size_t m_wanted;
    std::shared_ptr<const ColumnKinds> m_kinds;
    std::unique_ptr<EngineCursor> m_cursor;
    RecordData m_block;
    qsizetype m_row = -1;
};

} // namespace oVELDRA::store
