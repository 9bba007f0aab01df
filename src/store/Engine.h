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

/// The rows of a query that is still running, for readers that must not keep them all.
class EngineCursor
{
public:
    EngineCursor() = default;
    EngineCursor(const EngineCursor&) = delete;
    EngineCursor& operator=(const EngineCursor&) = delete;
    virtual ~EngineCursor() = default;

    /// Adds the next rows, at most that many (more than 0), to `block`; adds none at the end of the result.
    virtual void fetch(RecordData& block, qsizetype most) = 0;
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

    /// Runs a command of the engine's own, without parameters.
    virtual void run(const QByteArray& command) = 0;
    /// Runs a query without parameters and hands out its rows as they come. Several cursors may be read in turns. They
    /// need a transaction that is open for as long as they are: begin() or beginSnapshot().
    [[nodiscard]] virtual std::unique_ptr<EngineCursor> openCursor(const QByteArray& sql) = 0;

    /// Starts a transaction that excludes other writers from here on.
    virtual void begin() = 0;
    /// Starts a transaction that only reads, and sees the database as it is now whatever others write. Sorting what is
    /// larger than memory goes to temporary files from here on. rollback() ends it.
    virtual void beginSnapshot() = 0;
    virtual void commit() = 0;
    /// Takes back the transaction, if there is one. Never throws.
    virtual void rollback() noexcept = 0;
    /// False also after the engine gave a transaction up by itself (a full disk).
    [[nodiscard]] virtual bool inTransaction() const = 0;

    /// Whether a transaction goes on after a statement in it has failed; otherwise only what runs in atomically() may
    /// fail in it.
    [[nodiscard]] virtual bool survivesErrors() const = 0;

    /// Runs `body` so that an error leaves nothing of it, inside or outside of a transaction.
    virtual void atomically(const std::function<void()>& body) = 0;
};

} // namespace oVELDRA::store
