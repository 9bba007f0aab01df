#pragma once

#include <dialect/Value.h>

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace oVELDRA::data {

/// A cell that has a value which no value of ours can stand for.
struct CellTrouble
{
    size_t column = 0; ///< its place in SourceTable::columns()
    QString reason;    ///< in Spanish, without the column's name
};

struct SourceRow
{
    std::vector<dialect::Value> cells; ///< one a column; Null in place of a cell with trouble
    std::vector<CellTrouble> troubles;
};

/// A table that rows are taken from, in its own order.
class SourceTable
{
public:
    SourceTable() = default;
    SourceTable(const SourceTable&) = delete;
    SourceTable& operator=(const SourceTable&) = delete;
    virtual ~SourceTable() = default;

    [[nodiscard]] virtual QString name() const = 0;
    [[nodiscard]] virtual const QStringList& columns() const = 0;
    /// How many rows the source says it has; nothing when it does not know.
    [[nodiscard]] virtual std::optional<qint64> announcedRows() const = 0;
    /// Reads the next row into `row`, whose memory is reused; false behind the last one. Throws RuntimeError.
    [[nodiscard]] virtual bool next(SourceRow& row) = 0;
};

/// What holds such tables.
class Source
{
public:
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    virtual ~Source() = default;

    /// The names of its tables, as the source writes them.
    [[nodiscard]] virtual const QStringList& tables() const = 0;
    /// One of its tables, by a name of tables(). The source must outlive it. Throws RuntimeError.
    [[nodiscard]] virtual std::unique_ptr<SourceTable> open(const QString& table) = 0;
};

} // namespace oVELDRA::data
