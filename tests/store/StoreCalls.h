#pragma once

#include <oVELDRA/Store.h>

#include <store/StoreConnection.h>

#include <QString>

#include <functional>
#include <memory>

// Short words for what tests do with a connection.

namespace oVELDRA {

using Connection = std::shared_ptr<ConexionDB>;

inline qint64 run(const Connection& connection, const QString& sql)
{
    connection->setSql(sql);
    return connection->execute();
}

/// The result of a query. Throws the connection's error.
inline std::unique_ptr<Recordset> open(const Connection& connection, const QString& sql)
{
    bool ok = false;
    connection->setSql(sql);
    std::unique_ptr<Recordset> rows = connection->openRecordset(ok);
    if (!ok) {
        throw RuntimeError(connection->lastError());
    }
    return rows;
}

inline QVariant one(const Connection& connection, const QString& sql, QStringView field)
{
    return open(connection, sql)->value(field);
}

inline qlonglong countOf(const Connection& connection, const QString& table)
{
    return one(connection, QStringLiteral("select count(*) as n from ") + table, u"n").toLongLong();
}

/// The error that a body throws; number 0 when it throws none.
inline RuntimeError errorOf(const std::function<void()>& body)
{
    try {
        body();
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, {}};
}

inline store::EngineConnection& engineOf(const Connection& connection)
{
    return dynamic_cast<store::StoreConnection&>(*connection).engine();
}

inline QString insertHeader(const QString& declaration)
{
    return QStringLiteral("insert into INTINS (INTNRO,INTDCL,INTIOK) values ('T','") + declaration +
           QStringLiteral("',1)");
}

} // namespace oVELDRA
