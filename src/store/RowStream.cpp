#include "RowStream.h"

namespace oVELDRA::store {

namespace {

// Rows in memory at a time: enough that asking the engine for more costs nothing beside reading them.
constexpr qsizetype blockRows = 2000;

std::shared_ptr<const ColumnKinds> kindsOf(const dialect::Table& table, const dialect::TableScan& scan)
{
    auto kinds = std::make_shared<ColumnKinds>();
    for (const std::vector<int>* const columns : {&scan.columns, &scan.sort}) {
        for (const int column : *columns) {
            kinds->push_back(table.columns[static_cast<size_t>(column)].kind);
        }
    }
    return kinds;
}

} // namespace

RowStream::RowStream(EngineConnection& engine, const dialect::Table& table, const dialect::TableScan& scan)
    : m_wanted(scan.columns.size()), m_kinds(kindsOf(table, scan)),
      m_cursor(engine.openCursor(engine.printer().scan(table, scan))), m_block(m_kinds)
{}

bool RowStream::next()
{
    if (++m_row < m_block.rows()) {
        return true;
    }
    m_block = RecordData(m_kinds);
    m_cursor->fetch(m_block, blockRows);
    m_row = 0;
    return m_block.rows() > 0;
}

} // namespace oVELDRA::store
