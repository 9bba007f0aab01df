#include "PrivateCups.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>
#include <arpa/inet.h>
#include <csignal>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace oVELDRA::doubles {

namespace {

constexpr int patience = 20'000; // milliseconds

/// The settings of the user, and of the print system, that a client obeys.
constexpr auto foreignSettings = {"CUPS_SERVERROOT", "CUPS_USER", "CUPS_ENCRYPTION", "CUPS_DATADIR",  "PRINTER",
                                  "LPDEST",          "IPP_PORT",  "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"};

QString found(const QString& program)
{
    const QString inPath = QStandardPaths::findExecutable(program);
    return inPath.isEmpty() ? QStandardPaths::findExecutable(program, {u"/usr/sbin"_s}) : inPath;
}

/// A port of the loopback interface that nobody listens on.
quint16 freePort()
{
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    const bool bound = bind(handle, generic, size) == 0 && getsockname(handle, generic, &size) == 0;
    close(handle);
    return bound ? ntohs(address.sin_port) : quint16{0};
}

void write(const QString& path, const QString& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
        qFatal("cannot write %ls", qUtf16Printable(path));
    }
}

} // namespace

QStringList PrivateCups::missingPrograms()
{
    QStringList missing;
    for (const QString& program : {u"cupsd"_s, u"lpadmin"_s, u"lpstat"_s}) {
        if (found(program).isEmpty()) {
            missing.append(program);
        }
    }
    return missing;
}

PrivateCups::PrivateCups() : m_port(freePort())
{
    writeProgramFolder();
    writeConfiguration();
}

PrivateCups::~PrivateCups()
{
    stop();
}

bool PrivateCups::start()
{
    m_server.setProcessEnvironment(environment());
    m_server.setChildProcessModifier(
        [] { prctl(PR_SET_PDEATHSIG, SIGTERM); }); // a test that crashes leaves nothing behind
    m_server.setStandardOutputFile(QProcess::nullDevice());
    m_server.setStandardErrorFile(path(u"console"_s));
    m_server.start(found(u"cupsd"_s), {u"-f"_s, u"-c"_s, path(u"cupsd.conf"_s), u"-s"_s, path(u"cups-files.conf"_s)});
    const bool answers =
        m_server.waitForStarted() &&
        QTest::qWaitFor(
            [this] {
                QProcess lpstat;
                lpstat.setProcessEnvironment(environment());
                lpstat.start(found(u"lpstat"_s), {u"-r"_s});
                return m_server.state() == QProcess::NotRunning ||
                       (lpstat.waitForFinished() && lpstat.readAll().startsWith("scheduler is running"));
            },
            patience);
    if (answers && m_server.state() != QProcess::NotRunning) {
        return true;
    }
    for (const QString& name : {u"console"_s, u"error_log"_s}) {
        QFile log(path(name));
        if (log.open(QIODevice::ReadOnly)) {
            qWarning().noquote() << name << log.readAll().right(2000);
        }
    }
    stop();
    return false;
}

void PrivateCups::stop()
{
    if (m_server.state() == QProcess::NotRunning) {
        return;
    }
    m_server.terminate();
    if (!m_server.waitForFinished(patience)) {
        m_server.kill();
        m_server.waitForFinished();
    }
}

void PrivateCups::adopt() const
{
    for (const char* name : foreignSettings) {
        qunsetenv(name);
    }
    const QProcessEnvironment own = environment();
    for (const char* name : {"CUPS_SERVER", "CUPS_SERVERROOT", "HOME"}) {
        qputenv(name, own.value(QLatin1StringView(name)).toLocal8Bit());
    }
}

bool PrivateCups::addQueue(const QString& name, const QString& device) const
{
    return run(u"lpadmin"_s, {u"-p"_s, name, u"-E"_s, u"-v"_s, device.isEmpty() ? u"keep:/"_s + name : device});
}

bool PrivateCups::removeQueue(const QString& name) const
{
    QDir(path(u"arrived/"_s + name)).removeRecursively();
    return run(u"lpadmin"_s, {u"-x"_s, name});
}

bool PrivateCups::run(const QString& tool, const QStringList& arguments) const
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(found(tool), arguments);
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) {
        return true;
    }
    qWarning().noquote() << tool << arguments << process.errorString() << process.readAllStandardError();
    return false;
}

QString PrivateCups::address(const QString& queue) const
{
    return u"ipp://127.0.0.1:%1/printers/%2"_s.arg(m_port).arg(queue);
}

QByteArrayList PrivateCups::arrived(const QString& queue) const
{
    const QDir folder(path(u"arrived/"_s + queue));
    QStringList jobs = folder.entryList({u"*.job"_s}, QDir::Files);
    std::sort(jobs.begin(), jobs.end(), [](const QString& left, const QString& right) {
        return left.section(u'.', 0, 0).toInt() < right.section(u'.', 0, 0).toInt();
    });
    QByteArrayList documents;
    for (const QString& job : jobs) {
        QFile file(folder.filePath(job));
        if (!file.open(QIODevice::ReadOnly)) {
            qFatal("cannot read %ls", qUtf16Printable(file.fileName()));
        }
        documents.append(file.readAll());
    }
    return documents;
}

QProcessEnvironment PrivateCups::environment(QProcessEnvironment base) const
{
    for (const char* name : foreignSettings) {
        base.remove(QLatin1StringView(name));
    }
    base.insert(u"CUPS_SERVER"_s, path(u"socket"_s));
    base.insert(u"CUPS_SERVERROOT"_s, path(u"root"_s));
    base.insert(u"HOME"_s, m_folder.path());
    base.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    return base;
}

void PrivateCups::writeProgramFolder() const
{
    const QDir system(u"/usr/lib/cups"_s);
    for (const QString& name : {u"root"_s, u"spool"_s, u"temporary"_s, u"cache"_s, u"state"_s, u"arrived"_s,
                                u"programs/backend"_s, u"programs/filter"_s}) {
        QDir().mkpath(path(name));
    }
    QFile::link(system.filePath(u"daemon"_s), path(u"programs/daemon"_s));
    // Backends that only their owner may run are run as the server's own user. Those of the system belong to root.
    constexpr auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    const QString ipp = path(u"programs/backend/ipp"_s);
    QFile::copy(system.filePath(u"backend/ipp"_s), ipp);
    QFile::setPermissions(ipp, ownerOnly);
    const QString keep = path(u"programs/backend/keep"_s);
    write(keep, u"#!/bin/sh -e\n"
                "folder=%1${DEVICE_URI#keep:}\n"
                "mkdir -p \"$folder\"\n"
                "cat ${6:+\"$6\"} >\"$folder/$1\"\n"
                "mv \"$folder/$1\" \"$folder/$1.job\"\n"_s.arg(path(u"arrived"_s)));
    QFile::setPermissions(keep, ownerOnly);
}

void PrivateCups::writeConfiguration() const
{
    write(path(u"cups-files.conf"_s), u"ServerRoot %1/root\n"
                                      "ServerBin %1/programs\n"
                                      "RequestRoot %1/spool\n"
                                      "TempDir %1/temporary\n"
                                      "CacheDir %1/cache\n"
                                      "StateDir %1/state\n"
                                      "AccessLog %1/access_log\n"
                                      "ErrorLog %1/error_log\n"
                                      "PageLog %1/page_log\n"_s.arg(m_folder.path()));
    write(path(u"cupsd.conf"_s), u"Listen %1/socket\n"
                                 "Listen 127.0.0.1:%2\n"
                                 "Browsing No\n"
                                 "DefaultAuthType None\n"
                                 "WebInterface No\n"
                                 "<Location />\n"
                                 "Order allow,deny\n"
                                 "Allow all\n"
                                 "</Location>\n"
                                 "<Policy default>\n"
                                 "JobPrivateAccess all\n"
                                 "JobPrivateValues none\n"
                                 "<Limit All>\n"
                                 "Order deny,allow\n"
                                 "</Limit>\n"
                                 "</Policy>\n"_s.arg(m_folder.path())
                                     .arg(m_port));
}

} // namespace oVELDRA::doubles
