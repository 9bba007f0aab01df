#pragma once

#include "StockTotals.h"

#include <oVELDRA/Store.h>

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace oVELDRA::data {

/// A row of the source that was not kept.
struct Rejection
{
    QString table;
    qint64 row = 0; ///< its number in the source's table, from 1
    QString key;
    QString reason;
};

/// A column of the source that the destination does not have.
struct UncopiedColumn
{
    QString column;
    qint64 filled = 0; ///< rows that have something in it
};

/// A table of the source that the destination does not have.
struct UncopiedTable
{
    QString table;
    std::optional<qint64> rows; ///< nothing when it cannot be read
};

struct MovedTable
{
    QString table;
    bool inSource = false;
    std::optional<qint64> announced; ///< what the source says of itself
    qint64 read = 0;
    qint64 rejected = 0;
    qint64 written = 0; ///< counted in the destination
    QStringList missingColumns;
    std::vector<UncopiedColumn> uncopied;
};

/// What a transfer did, and its proof.
struct TransferReport
{
    static constexpr size_t rejectionsKept = 1000;

    std::vector<MovedTable> tables;
    std::vector<UncopiedTable> uncopiedTables;

    // Of the tables with a stock of inputs: what the source has and was kept, what of it was rejected, and what the
    // destination has, read back.
    StockTotals kept;
    StockTotals rejected;
    StockTotals written;

    std::vector<Rejection> rejections; ///< the first ones
    qint64 rejectionCount = 0;
    QStringList failures; ///< why the proof does not hold; empty when it does
    bool committed = false;
};

/// Compares what was read with what was written, table by table and declaration by declaration: why the proof does not
/// hold, in Spanish; empty when it does.
[[nodiscard]] QStringList proofFailures(const TransferReport& report);

} // namespace oVELDRA::data
