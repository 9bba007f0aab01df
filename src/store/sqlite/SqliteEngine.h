#pragma once

#include "SqliteHandle.h"

#include <oVELDRA/Store.h>

#include <dialect/SqlitePrinter.h>
#include <store/Engines.h>

#include <optional>

namespace oVELDRA::store {

/// The embedded engine, on SQLite's C interface: one connection, write-ahead log, a file per database.
class SqliteEngine final : public EngineConnection
{
public:
    /// `file` is a path or ":memory:". Throws RuntimeError as connectStore() says.
    SqliteEngine(const QString& file, Access access, Opening opening);
    ~SqliteEngine() override;

    [[nodiscard]] const dialect::EnginePrinter& printer() const override { return m_printer; }
    [[nodiscard]] dialect::Catalog catalog() override;
    [[nodiscard]] std::unique_ptr<EngineStatement> prepare(const QByteArray& sql) override;
    void run(const QByteArray& command) override;
    [[nodiscard]] std::unique_ptr<EngineCursor> openCursor(const QByteArray& sql) override;
    void begin() override;
    void beginSnapshot() override;
    void commit() override;
    void rollback() noexcept override;
    [[nodiscard]] bool inTransaction() const override;
    [[nodiscard]] bool survivesErrors() const override { return true; }
    void atomically(const std::function<void()>& body) override;

    /// SQLite's connection, for what the engine has no operation for. Stays the engine's.
    [[nodiscard]] sqlite3* handle() const { return m_database.get(); }

private:
    void open(const QString& file, Access access, Opening opening);
    void configure(Access access);

    std::optional<RuntimeError> m_pending; ///< an error inside a function of ours; before the handle, which it outlives
    SqliteHandle m_database;
    dialect::SqlitePrinter m_printer;
};

/// Whether a file system of that name (as the operating system calls it) is on another machine.
[[nodiscard]] bool isNetworkFileSystem(const QByteArray& type);

} // namespace oVELDRA::store
