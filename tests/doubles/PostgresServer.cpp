#include "PostgresServer.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QVersionNumber>

#include <csignal>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::doubles {

namespace {

constexpr int patience = 60'000; // milliseconds
constexpr uid_t nobody = 65534;  // and its group
constexpr rlim_t pageSize = 8192;

/// The folder of the newest version of the server that the system has, or nothing.
QString newestVersionFolder()
{
    const QDir versions(u"/usr/lib/postgresql"_s);
    QString newest;
    for (const QString& version : versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (QFileInfo(versions.filePath(version + u"/bin/postgres"_s)).isExecutable() &&
            (newest.isEmpty() || QVersionNumber::fromString(newest) < QVersionNumber::fromString(version))) {
            newest = version;
        }
    }
    return newest.isEmpty() ? newest : versions.filePath(newest + u"/bin"_s);
}

/// The folder of the server and its tools: the one that the user's `postgres` really is in, else the system's newest.
QString programFolder()
{
    const QString inPath = QStandardPaths::findExecutable(u"postgres"_s);
    return inPath.isEmpty() ? newestVersionFolder() : QFileInfo(QFileInfo(inPath).canonicalFilePath()).path();
}

QProcessEnvironment serverEnvironment()
{
    QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
    own.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    own.insert(u"TZ"_s, u"UTC"_s);
    return own;
}

/// Prepares a program to run as a user that the server accepts, and to end at once with this process.
void prepare(QProcess& process, const QString& folder, int mostPages = 0)
{
    process.setProcessEnvironment(serverEnvironment());
    process.setWorkingDirectory(folder);
    process.setChildProcessModifier([mostPages] {
        if (mostPages > 0) {
            // Half a page more: a page of which only a part could be written is a full disk to the server.
            const rlim_t bytes = static_cast<rlim_t>(mostPages) * pageSize + pageSize / 2;
            const rlimit limit{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &limit);
        }
        if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0)) {
            _exit(EXIT_FAILURE);
        }
        prctl(PR_SET_PDEATHSIG, SIGQUIT); // after the change of user, which would clear it
    });
}

} // namespace

// In /tmp wherever the user's temporary files are: the path of a socket must be short, and nobody must reach it.
PostgresServer::PostgresServer(Durability durability) : m_durability(durability), m_folder(u"/tmp/oveldra-pg-XXXXXX"_s)
{
    for (const QString& name : QProcessEnvironment::systemEnvironment().keys()) {
        if (name.startsWith(u"PG")) {
            qunsetenv(name.toLocal8Bit().constData());
        }
    }
}

PostgresServer::~PostgresServer()
{
    signalAndWait(SIGINT);
}

void PostgresServer::start()
{
    if (isRunning()) {
        return;
    }
    if (!QFileInfo::exists(data())) {
        makeCluster();
    }
    prepare(m_server, host(), m_mostPages);
    m_server.setStandardOutputFile(QProcess::nullDevice());
    m_server.setStandardErrorFile(log());
    const QString durable = m_durability == Durability::Full ? u"on"_s : u"off"_s;
    const QStringList settings{u"fsync="_s + durable,
                               u"full_page_writes="_s + durable,
                               u"recovery_init_sync_method=syncfs"_s, // not file by file after each sudden stop
                               u"shared_buffers=16MB"_s,
                               u"max_wal_size=1GB"_s,
                               u"max_connections=40"_s};
    QStringList arguments{u"-D"_s, data(), u"-k"_s, host(), u"-h"_s, {}, u"-p"_s, QString::number(port())};
    for (const QString& setting : settings) {
        arguments << u"-c"_s << setting;
    }
    m_server.start(program(u"postgres"_s), arguments);
    const QDeadlineTimer deadline(patience);
    while (!isReady()) {
        if (m_server.waitForFinished(5) || !isRunning() || deadline.hasExpired()) {
            qFatal("PostgreSQL does not start in %ls: %s", qUtf16Printable(host()), logEnd().constData());
        }
    }
}

void PostgresServer::stopAtOnce()
{
    signalAndWait(SIGQUIT);
}

void PostgresServer::restart()
{
    signalAndWait(SIGINT);
    start();
}

QString PostgresServer::url(const QString& schema) const
{
    return u"postgresql:///postgres?host=%1&port=%2&user=%3&schema=%4"_s.arg(host()).arg(port()).arg(user(), schema);
}

QString PostgresServer::program(const QString& name)
{
    const QString folder = programFolder();
    if (folder.isEmpty()) {
        qFatal("PostgreSQL is not installed: scripts/setup test installs it");
    }
    return QDir(folder).filePath(name);
}

void PostgresServer::makeCluster()
{
    if (!m_folder.isValid() || (geteuid() == 0 && chown(QFile::encodeName(host()).constData(), nobody, nobody) != 0)) {
        qFatal("no folder for PostgreSQL: %ls", qUtf16Printable(m_folder.errorString()));
    }
    QProcess initdb;
    prepare(initdb, host());
    initdb.setProcessChannelMode(QProcess::MergedChannels);
    initdb.start(program(u"initdb"_s), {u"--no-sync"_s, u"--encoding=UTF8"_s, u"--locale=C.UTF-8"_s, u"--auth=trust"_s,
                                        u"--wal-segsize=1"_s, u"--username="_s + user(), u"--pgdata="_s + data()});
    if (!initdb.waitForFinished(patience) || initdb.exitStatus() != QProcess::NormalExit || initdb.exitCode() != 0) {
        qFatal("initdb failed: %ls\n%s", qUtf16Printable(initdb.errorString()), initdb.readAll().constData());
    }
}

/// Whether the server has written of itself, and not an earlier one, that it takes connections.
bool PostgresServer::isReady() const
{
    QFile file(QDir(data()).filePath(u"postmaster.pid"_s));
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArrayList lines = file.readAll().split('\n');
    return lines.constFirst().toLongLong() == m_server.processId() && lines.contains("ready   ");
}

void PostgresServer::signalAndWait(int signal)
{
    if (!isRunning()) {
        return;
    }
    kill(static_cast<pid_t>(m_server.processId()), signal);
    if (!m_server.waitForFinished(patience)) {
        m_server.kill();
        m_server.waitForFinished();
        qFatal("PostgreSQL does not stop in %ls: %s", qUtf16Printable(host()), logEnd().constData());
    }
}

QByteArray PostgresServer::logEnd() const
{
    constexpr qsizetype enough = 4000;
    QFile file(log());
    return file.open(QIODevice::ReadOnly) ? file.readAll().right(enough) : m_server.errorString().toUtf8();
}

} // namespace oVELDRA::doubles
