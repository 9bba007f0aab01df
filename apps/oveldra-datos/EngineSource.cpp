#include "EngineSource.h"

#include <dialect/StatementError.h>
#include <store/RowStream.h>

#include <numeric>
#include <optional>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::ColumnKind;
using dialect::Value;
using dialect::ValueType;

namespace {

class EngineTable final : public SourceTable
{
public:
    EngineTable(store::EngineConnection& engine, const dialect::Table& table) : m_engine(engine), m_table(table)
    {
        for (const dialect::Column& column : table.columns) {
            m_columns.append(column.name);
        }
    }

    [[nodiscard]] QString name() const override { return m_table.name; }
    [[nodiscard]] const QStringList& columns() const override { return m_columns; }

    [[nodiscard]] std::optional<qint64> announcedRows() const override
    {
        const QByteArray scan = m_engine.printer().scan(m_table, {{0}, {}});
        store::RecordData count(std::make_shared<store::ColumnKinds>(1, ColumnKind::Double));
        m_engine.openCursor("SELECT count(*) FROM (" + scan + ") AS counted")->fetch(count, 1);
        return static_cast<qint64>(count.value(0, 0).number);
    }

    [[nodiscard]] bool next(SourceRow& row) override
    {
        if (!m_rows) {
            std::vector<int> all(m_table.columns.size());
            std::iota(all.begin(), all.end(), 0);
            m_rows.emplace(m_engine, m_table, dialect::TableScan{all, {}});
        }
        if (!m_rows->next()) {
            return false;
        }
        row.troubles.clear();
        row.cells.resize(m_table.columns.size());
        for (size_t i = 0; i < row.cells.size(); ++i) {
            Value& cell = row.cells[i];
            cell = m_rows->value(i);
            if (m_table.columns[i].kind == ColumnKind::SmallInteger && cell.type == ValueType::Boolean) {
                cell.type = ValueType::Number; // it keeps the number written, which is to be the same there
            }
        }
        return true;
    }

private:
    store::EngineConnection& m_engine;
    dialect::Table m_table;
    QStringList m_columns;
    std::optional<store::RowStream> m_rows;
};

} // namespace

EngineSource::EngineSource(const QString& url) : m_snapshot(url)
{
    for (const dialect::Table& table : m_snapshot.tables().tables) {
        m_tables.append(table.name);
    }
}

std::unique_ptr<SourceTable> EngineSource::open(const QString& table)
{
    const dialect::Table* const found = m_snapshot.tables().find(table);
    if (!found) {
        throw dialect::unknownTable(table);
    }
    return std::make_unique<EngineTable>(m_snapshot.engine(), *found);
}

} // namespace oVELDRA::data
