#include "BulkInsert.h"

#include <algorithm>

namespace oVELDRA::store {

namespace {

// Values that one statement carries: rows go to a server together, so that they do not each wait for its answer.
constexpr size_t valuesAtOnce = 500;

} // namespace

BulkInsert::BulkInsert(EngineConnection& engine, dialect::Table table, std::vector<int> columns)
    : m_engine(engine), m_table(std::move(table)), m_columns(std::move(columns)),
      m_rowsAtOnce(static_cast<int>(std::max<size_t>(1, valuesAtOnce / m_columns.size()))),
      m_full(engine.prepare(engine.printer().insertRows(m_table, m_columns, m_rowsAtOnce)))
{}

void BulkInsert::add(std::span<const dialect::Value> row)
{
    for (const dialect::Value& value : row) {
        m_bindings.add(value);
    }
    if (++m_waiting == m_rowsAtOnce) {
        write(*m_full);
    }
}

void BulkInsert::finish()
{
    if (m_waiting > 0) {
        write(*m_engine.prepare(m_engine.printer().insertRows(m_table, m_columns, m_waiting)));
    }
}

void BulkInsert::write(EngineStatement& statement)
{
    statement.execute(m_bindings);
    m_bindings.clear();
    m_waiting = 0;
}

} // namespace oVELDRA::store
