#pragma once

#include <dialect/PostgresPrinter.h>
#include <store/Engines.h>

#include <QSqlDatabase>
#include <QString>

#include <optional>

struct pg_conn;
struct pg_result;

namespace oVELDRA::store {

/// Where a database of the server is.
struct PostgresAddress
{
    QString host; ///< a name, an address or the folder of the server's socket
    int port = 0; ///< 0: the usual one
    QString user;
    QString password;
    QString database;
    QString schema = QStringLiteral("public");

    /// Reads an URL as connectStore() takes it. RuntimeError 5 for what is none.
    [[nodiscard]] static PostgresAddress of(const QString& url);
};

/// The shared engine: one connection, a schema of the server's database for each database of ours. The connection is
/// that of Qt's driver for PostgreSQL; the statements go to it through libpq, because the driver writes bound values
/// into the text of each run, which the server then has to read anew.
///
/// A connection that broke is opened again by the next operation; the one that met it reports it.
class PostgresEngine final : public EngineConnection
{
public:
    /// Throws RuntimeError as connectStore() says.
    PostgresEngine(PostgresAddress address, Access access, Opening opening);
    ~PostgresEngine() override;

    [[nodiscard]] const dialect::EnginePrinter& printer() const override { return m_printer; }
    [[nodiscard]] dialect::Catalog catalog() override;
    [[nodiscard]] std::unique_ptr<EngineStatement> prepare(const QByteArray& sql) override;
    void run(const QByteArray& text) override;
    [[nodiscard]] std::unique_ptr<EngineCursor> openCursor(const QByteArray& sql) override;
    void begin() override;
    void beginSnapshot() override;
    void commit() override;
    void rollback() noexcept override;
    [[nodiscard]] bool inTransaction() const override;
    [[nodiscard]] bool survivesErrors() const override { return false; }
    void atomically(const std::function<void()>& body) override;

    /// libpq's connection, for what the engine has no operation for; null after it broke. Stays the engine's.
    [[nodiscard]] pg_conn* handle() const;

private:
    friend class PostgresStatement;
    friend class PostgresCursor;

    void open(Opening opening);
    void configure(Opening opening);
    void close();
    /// Opens the connection again when it broke.
    void ensureOpen();
    /// Runs a command on the connection that is open.
    void command(const QByteArray& text);
    /// The error of what failed. The transaction that it ends is taken back, the connection that it met broken closed.
    [[nodiscard]] RuntimeError failure(const pg_result* result);

    PostgresAddress m_address;
    Access m_access;
    QString m_name; ///< of Qt's connection
    std::optional<QSqlDatabase> m_database;
    int m_opened = 0;     ///< how often: statements prepared for an earlier connection are gone
    int m_savepoints = 0; ///< how deep; inside of them an error does not end the transaction
    int m_named = 0;      ///< statements and cursors, ever, for their names
    dialect::PostgresPrinter m_printer;
};

} // namespace oVELDRA::store
