#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QStringList>

#include <functional>

namespace tornel {

/// Counts the rows of a long load; told after every row. May throw to stop the load.
using RowCounter = std::function<void()>;

/// Writes rows into one table.
class TableLoader
{
public:
    /// The connection is not owned. `columns` is the list as it stands in the statement.
    TableLoader(oVELDRA::ConexionDB& connection, QStringView table, QStringView columns, RowCounter counter);

    /// The values as they stand in the statement (see SqlLiteral.h). Throws oVELDRA::RuntimeError.
    void insert(const QStringList& values);

private:
    oVELDRA::ConexionDB& m_connection;
    QString m_head;
    RowCounter m_counter;
};

} // namespace tornel
