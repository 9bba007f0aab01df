#pragma once

#include "Console.h"
#include "RowConverter.h"
#include "SourceTable.h"
#include "TransferReport.h"

#include <oVELDRA/Store.h>

#include <store/Engine.h>

namespace oVELDRA::data {

/// Takes the rejected rows of a transfer.
class RejectionListener
{
public:
    RejectionListener() = default;
    RejectionListener(const RejectionListener&) = delete;
    RejectionListener& operator=(const RejectionListener&) = delete;
    virtual ~RejectionListener() = default;

    virtual void add(const Rejection& rejection) = 0;
    /// There are no more. Called before anything is made permanent; an error here stops the transfer.
    virtual void finish() = 0;
};

/// Moves the rows of a source into a database of the store, in one transaction, and proves that they arrived: it reads
/// back what it wrote and compares row counts and, for the stock of inputs, the sums of each declaration.
///
/// Rows are never all in memory: what is kept of them are the keys of the tables that have one, and the sums.
class Transfer
{
public:
    /// All must outlive it. `destination` is open for writing, without a transaction.
    Transfer(Source& source, store::EngineConnection& destination, Database database, Console& console);

    /// Is told of every rejected row, as it is met. Must outlive the run.
    void setListener(RejectionListener* listener) { m_listener = listener; }

    /// Makes the destination's tables when it has none of them; a destination that lacks some, or has rows in them, is
    /// refused. Commits when the proof holds and no row was rejected, or `acceptRejections`; otherwise nothing stays.
    ///
    /// Throws RuntimeError; then nothing stays either.
    [[nodiscard]] TransferReport run(bool acceptRejections);

private:
    void move(bool acceptRejections);
    /// The destination's tables that this is about, all of them there and without rows.
    [[nodiscard]] std::vector<dialect::Table> preparedTables();
    void refuseRows(const std::vector<dialect::Table>& tables);
    void moveTable(const dialect::Table& table);
    void moveRows(const dialect::Table& table, SourceTable& source, MovedTable& report);
    void reject(const Rejection& rejection, MovedTable& report);
    void noteUncopiedTables(const std::vector<dialect::Table>& tables);
    void readBack(const dialect::Table& table, MovedTable& report);
    void showProgress(const QString& what, qint64 done, qint64 total);
    [[nodiscard]] QString sourceTable(const QString& table) const;

    Source& m_source;
    store::EngineConnection& m_destination;
    Database m_database;
    Console& m_console;
    RejectionListener* m_listener = nullptr;
    TransferReport m_report;
};

} // namespace oVELDRA::data
