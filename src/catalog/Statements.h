#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QString>

#include <memory>

namespace oVELDRA::catalog {

/// The rows of a query, perhaps none. Throws the connection's own reason when it cannot be opened.
[[nodiscard]] inline std::unique_ptr<Recordset> rowsOf(ConexionDB& connection, const QString& statement)
{
    bool ok = false;
    connection.setSql(statement);
    std::unique_ptr<Recordset> rows = connection.openRecordset(ok);
    if (!ok || !rows) {
        throw RuntimeError(connection.lastError());
    }
    return rows;
}

/// Runs a command and answers the number of records affected.
inline qint64 run(ConexionDB& connection, const QString& statement)
{
    connection.setSql(statement);
    return connection.execute();
}

} // namespace oVELDRA::catalog
