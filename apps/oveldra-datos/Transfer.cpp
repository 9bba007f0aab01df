#include "Transfer.h"

#include "Interruption.h"

#include <dialect/StatementError.h>
#include <store/BulkInsert.h>
#include <store/Engines.h>
#include <store/RowStream.h>
#include <store/Schema.h>
#include <store/StoreError.h>

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Table;
using dialect::Value;

namespace {

// Rows between two looks at the clock and at a request to stop.
constexpr qint64 progressRows = 500;

RuntimeError refusal(const QString& text)
{
    return {dialect::databaseErrorNumber, text, u"oVELDRA.datos"_s, static_cast<int>(store::Trouble::AlreadyThere)};
}

/// Columns that tell a table's rows apart for people, whether the store keeps them unique or not.
std::vector<int> identityOf(const Table& table)
{
    static const std::vector<std::vector<QStringView>> identities = {
        {u"INTDCL", u"ARTITM", u"ARTSBT"},
        {u"ARTDCL", u"ARTITM", u"ARTSBT", u"EXTINT", u"EXTSBT"},
        {u"001", u"002", u"003"},
        {u"sim", u"sufijo"},
        {u"interno", u"id", u"idsub"},
        {u"interno", u"id"},
        {u"interno"}};
    if (!table.key.empty()) {
        return table.key;
    }
    for (const auto& names : identities) {
        std::vector<int> places;
        std::transform(names.begin(), names.end(), std::back_inserter(places),
                       [&table](QStringView name) { return table.find(name); });
        if (std::find(places.begin(), places.end(), -1) == places.end()) {
            return places;
        }
    }
    return {};
}

qint64 countRows(SourceTable& table)
{
    SourceRow row;
    qint64 rows = 0;
    while (table.next(row)) {
        ++rows;
    }
    return rows;
}

/// The values of a source's row that the sums of the stock are made of.
class StockCells
{
public:
    StockCells(const Table& table, const RowConverter& converter) : m_table(table.name)
    {
        for (const QStringView column : StockTotals::columnsOf(table.name)) {
            m_places.push_back(converter.sourcePlace(column));
        }
        m_values.resize(m_places.size());
    }

    void addTo(StockTotals& totals, const SourceRow& row)
    {
        if (m_places.empty()) {
            return;
        }
        for (size_t i = 0; i < m_places.size(); ++i) {
            m_values[i] = m_places[i] < 0 ? Value() : row.cells[static_cast<size_t>(m_places[i])];
        }
        totals.add(m_table, m_values);
    }

private:
    QString m_table;
    std::vector<int> m_places;
    std::vector<Value> m_values;
};

/// Counts what is in columns that are not copied.
void countUncopied(const SourceRow& row, const std::vector<size_t>& places, std::vector<UncopiedColumn>& columns)
{
    for (size_t i = 0; i < places.size(); ++i) {
        const bool troubled = std::any_of(row.troubles.begin(), row.troubles.end(),
                                          [&](const CellTrouble& trouble) { return trouble.column == places[i]; });
        const Value& cell = row.cells[places[i]];
        const bool clear = cell.type == dialect::ValueType::Boolean && cell.number == 0;
        columns[i].filled += troubled || (!cell.isNull() && !clear) ? 1 : 0;
    }
}

} // namespace

Transfer::Transfer(Source& source, store::EngineConnection& destination, Database database, Console& console)
    : m_source(source), m_destination(destination), m_database(database), m_console(console)
{}

TransferReport Transfer::run(bool acceptRejections)
{
    m_report = {};
    m_destination.begin();
    try {
        move(acceptRejections);
    } catch (...) {
        m_destination.rollback();
        throw;
    }
    if (!m_report.committed) {
        m_destination.rollback();
    }
    return std::move(m_report);
}

void Transfer::move(bool acceptRejections)
{
    const std::vector<Table> tables = preparedTables();
    for (const Table& table : tables) {
        moveTable(table);
    }
    noteUncopiedTables(tables);
    for (size_t i = 0; i < tables.size(); ++i) {
        readBack(tables[i], m_report.tables[i]);
    }
    m_report.failures = proofFailures(m_report);
    if (m_listener) {
        m_listener->finish();
    }
    if (m_report.failures.isEmpty() && (m_report.rejectionCount == 0 || acceptRejections)) {
        m_destination.commit();
        m_report.committed = true;
    }
}

std::vector<Table> Transfer::preparedTables()
{
    const std::vector<store::TableSchema>& schemas = store::schemaOf(m_database);
    dialect::Catalog present = store::tablesOf(m_destination);
    const bool none = std::none_of(schemas.begin(), schemas.end(), [&present](const store::TableSchema& schema) {
        return present.find(schema.table.name);
    });
    if (none) {
        store::createTables(m_destination, m_database);
        present = store::tablesOf(m_destination);
    }
    std::vector<Table> tables;
    QStringList absent;
    for (const store::TableSchema& schema : schemas) {
        const Table* const table = present.find(schema.table.name);
        if (!table) {
            absent.append(schema.table.name);
            continue;
        }
        tables.push_back(*table);
        for (const dialect::Column& column : schema.table.columns) {
            if (table->find(column.name) < 0) {
                absent.append(schema.table.name + u'.' + column.name);
            }
        }
    }
    if (!absent.isEmpty()) {
        throw refusal(u"La base de destino no está completa, falta %1. No se modificó."_s.arg(absent.join(u", "_s)));
    }
    refuseRows(tables);
    return tables;
}

void Transfer::refuseRows(const std::vector<Table>& tables)
{
    QStringList filled;
    for (const Table& table : tables) {
        store::RowStream rows(m_destination, table, {{0}, {}});
        if (rows.next()) {
            filled.append(table.name);
        }
    }
    if (!filled.isEmpty()) {
        throw refusal(u"La base de destino ya tiene filas en %1; no se mezclan con las del origen. No se modificó. "
                      "Elija una base vacía o una que no exista."_s.arg(filled.join(u", "_s)));
    }
}

QString Transfer::sourceTable(const QString& table) const
{
    const QStringList& tables = m_source.tables();
    const auto found = std::find_if(tables.begin(), tables.end(), [&table](const QString& name) {
        return name.compare(table, Qt::CaseInsensitive) == 0;
    });
    return found == tables.end() ? QString() : *found;
}

void Transfer::moveTable(const Table& table)
{
    MovedTable& report = m_report.tables.emplace_back();
    report.table = table.name;
    const QString name = sourceTable(table.name);
    if (name.isNull()) {
        return;
    }
    const std::unique_ptr<SourceTable> source = m_source.open(name);
    report.inSource = true;
    report.announced = source->announcedRows();
    moveRows(table, *source, report);
}

void Transfer::moveRows(const Table& table, SourceTable& source, MovedTable& report)
{
    RowConverter converter(table, source.columns(), identityOf(table));
    report.missingColumns = converter.missingColumns();
    for (const size_t place : converter.unknownColumns()) {
        report.uncopied.push_back({source.columns()[static_cast<qsizetype>(place)], 0});
    }
    if (converter.columns().empty()) {
        throw refusal(u"La tabla %1 del origen no tiene ninguna de las columnas de la del destino."_s.arg(table.name));
    }
    StockCells stock(table, converter);
    store::BulkInsert insert(m_destination, table, converter.columns());
    SourceRow row;
    std::vector<Value> values;
    while (source.next(row)) {
        const qint64 number = ++report.read;
        const QString reason = converter.convert(row, number, values);
        stock.addTo(reason.isNull() ? m_report.kept : m_report.rejected, row);
        countUncopied(row, converter.unknownColumns(), report.uncopied);
        if (reason.isNull()) {
            insert.add(values);
        } else {
            reject({table.name, number, converter.describe(row), reason}, report);
        }
        if (number % progressRows == 0) {
            showProgress(table.name, number, report.announced.value_or(0));
        }
    }
    insert.finish();
    showProgress(table.name, report.read, report.read);
}

void Transfer::reject(const Rejection& rejection, MovedTable& report)
{
    ++report.rejected;
    ++m_report.rejectionCount;
    if (m_report.rejections.size() < TransferReport::rejectionsKept) {
        m_report.rejections.push_back(rejection);
    }
    if (m_listener) {
        m_listener->add(rejection);
    }
}

void Transfer::noteUncopiedTables(const std::vector<Table>& tables)
{
    for (const QString& name : m_source.tables()) {
        const bool known = std::any_of(tables.begin(), tables.end(), [&name](const Table& table) {
            return table.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (known) {
            continue;
        }
        UncopiedTable& uncopied = m_report.uncopiedTables.emplace_back();
        uncopied.table = name;
        try {
            const std::unique_ptr<SourceTable> table = m_source.open(name);
            uncopied.rows = table->announcedRows();
            if (!uncopied.rows) {
                uncopied.rows = countRows(*table);
            }
        } catch (const RuntimeError&) {
            // What is not copied need not be readable: the report says that it is not.
            uncopied.rows.reset();
        }
    }
}

void Transfer::readBack(const Table& table, MovedTable& report)
{
    std::vector<int> columns;
    for (const QStringView column : StockTotals::columnsOf(table.name)) {
        columns.push_back(table.find(column));
    }
    const bool summed = !columns.empty();
    if (!summed) {
        columns.push_back(0);
    }
    store::RowStream rows(m_destination, table, {columns, {}});
    std::vector<Value> values(columns.size());
    while (rows.next()) {
        ++report.written;
        if (summed) {
            for (size_t i = 0; i < values.size(); ++i) {
                values[i] = rows.value(i);
            }
            m_report.written.add(table.name, values);
        }
        if (report.written % progressRows == 0) {
            showProgress(u"Comprobación de %1"_s.arg(table.name), report.written, report.read - report.rejected);
        }
    }
}

void Transfer::showProgress(const QString& what, qint64 done, qint64 total)
{
    Interruption::check();
    m_console.progress(what, done, total);
}

} // namespace oVELDRA::data
