#pragma once

#include <store/StoreError.h>

#include <QString>

#include <memory>
#include <sqlite3.h>

namespace oVELDRA::store {

struct CloseSqlite
{
    void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using SqliteHandle = std::unique_ptr<sqlite3, CloseSqlite>;

struct FinalizeSqlite
{
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using SqliteStatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeSqlite>;

/// The error that a result code means; `detail` tells which table or file, when it is known.
[[nodiscard]] RuntimeError sqliteError(int code, sqlite3* database, const QString& detail = {});

} // namespace oVELDRA::store
