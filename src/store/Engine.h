#pragma once

#include "Bindings.h"
#include "RecordData.h"

#include <dialect/Catalog.h>
#include <dialect/Plan.h>

#include <QByteArray>

#include <memory>

namespace oVELDRA::store {

/// A statement that an engine has prepared. Everything throws RuntimeError.
class EngineStatement
{
public:
    EngineStatement() = default;
    EngineStatement(const EngineStatement&) = delete;
    EngineStatement& operator=(const EngineStatement&) = delete;
    virtual ~EngineStatement() = default;

    /// Runs a command; answers the rows affected.
    virtual qint64 execute(const Bindings& bindings) = 0;
    /// Runs a query; adds as many of its columns as `data` has, all rows.
    virtual void query(const Bindings& bindings, RecordData& data) = 0;
};

/// What the store needs of an engine's connection. Everything throws RuntimeError.
class EngineConnection
{
public:
    EngineConnection() = default;
    EngineConnection(const EngineConnection&) = delete;
    EngineConnection& operator=(const EngineConnection&) = delete;
    virtual ~EngineConnection() = default;

    [[nodiscard]] virtual const dialect::EnginePrinter& printer() const = 0;
    /// The tables that the database holds now, without their keys.
    [[nodiscard]] virtual dialect::Catalog catalog() = 0;
    [[nodiscard]] virtual std::unique_ptr<EngineStatement> prepare(const QByteArray& sql) = 0;

    /// Starts a transaction that excludes other writers from here on.
    virtual void begin() = 0;
    virtual void commit() = 0;
    /// Takes back the transaction, if there is one. Never throws.
    virtual void rollback() noexcept = 0;
    /// False also after the engine gave a transaction up by itself (a full disk).
    [[nodiscard]] virtual bool inTransaction() const = 0;

    /// Runs `body` so that an error leaves nothing of it, inside or outside of a transaction.
    virtual void atomically(const std::function<void()>& body) = 0;
};

} // namespace oVELDRA::store
