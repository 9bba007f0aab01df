#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace oVELDRA::doubles {

/// Whether a server's reported commits outlive a crash of the machine, or are only fast.
enum class Durability { Fast, Full };

/// A PostgreSQL server of the test's own, in a folder of its own, reachable only through the socket in it. Run by any
/// user; for root it runs as nobody. Several may run beside each other.
///
/// The server dies at once when this process does, however it does, or when the thread that started it ends; only its
/// folder stays behind then. What cannot be started ends the program with the server's own words.
class PostgresServer
{
public:
    /// Takes the settings of libpq (PGHOST, PGOPTIONS ...) out of this process's environment, so that they change
    /// nothing for the test's connections. Starts nothing yet.
    explicit PostgresServer(Durability durability = Durability::Fast);
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// From the next start on a file that grows over that many pages (of 8 kB) finds the disk full; 0 ends it. The
    /// server's own log has files of 128 pages, which must fit.
    void limitFilesTo(int pages) { m_mostPages = pages; }

    /// Starts the server with the databases that it had, and returns when it takes connections.
    void start();
    /// What `pg_ctl stop -m immediate` does: connections break, and the next start has to recover from the log.
    void stopAtOnce();
    /// Stops the server in an orderly way, unless it is stopped, and starts it.
    void restart();
    [[nodiscard]] bool isRunning() const { return m_server.state() != QProcess::NotRunning; }

    /// The URL of a schema, which need not exist, in the one database that there is.
    [[nodiscard]] QString url(const QString& schema) const;
    /// The folder of the socket: what libpq calls the host.
    [[nodiscard]] QString host() const { return m_folder.path(); }
    [[nodiscard]] static int port() { return 5432; }
    [[nodiscard]] static QString user() { return QStringLiteral("oveldra"); }

    /// The full path of one of the programs that come with the server (`psql`, `pg_dump` ...).
    [[nodiscard]] static QString program(const QString& name);

private:
    void makeCluster();
    [[nodiscard]] bool isReady() const;
    void signalAndWait(int signal);
    [[nodiscard]] QString data() const { return m_folder.filePath(QStringLiteral("data")); }
    [[nodiscard]] QString log() const { return m_folder.filePath(QStringLiteral("log")); }
    [[nodiscard]] QByteArray logEnd() const;

    Durability m_durability;
    int m_mostPages = 0;
    QTemporaryDir m_folder;
    QProcess m_server;
};

} // namespace oVELDRA::doubles
