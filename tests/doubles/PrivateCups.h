#pragma once

#include <QByteArrayList>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace oVELDRA::doubles {

/// A print server of the test's own: it knows nothing of the system's one, and its printers keep what they are sent.
/// It listens on a socket in its folder and on a port of the loopback interface. Run by any user.
class PrivateCups
{
public:
    /// The programs it needs that are not installed; empty when it can be used.
    [[nodiscard]] static QStringList missingPrograms();

    PrivateCups();
    ~PrivateCups();
    PrivateCups(const PrivateCups&) = delete;
    PrivateCups& operator=(const PrivateCups&) = delete;

    /// Starts the server, with the queues that it had, and waits until it answers. False, with a warning that has the
    /// end of its log, when it does not.
    [[nodiscard]] bool start();
    void stop();

    /// Makes this process a client of this server and of none of the user's settings. Only before the process has
    /// asked any print server for anything.
    void adopt() const;

    /// What makes another program such a client, with everything else as `base` has it.
    [[nodiscard]] QProcessEnvironment environment(QProcessEnvironment base) const;

    /// Makes a queue that takes documents and prints them unchanged: to `device`, or to a printer that keeps them.
    [[nodiscard]] bool addQueue(const QString& name, const QString& device = {}) const;
    [[nodiscard]] bool removeQueue(const QString& name) const;
    /// Runs a tool of the print system, for example `cupsdisable`, on this server. False, with a warning, when it
    /// fails.
    [[nodiscard]] bool run(const QString& tool, const QStringList& arguments) const;

    /// Where other print servers reach a queue.
    [[nodiscard]] QString address(const QString& queue) const;
    /// What the printer of a queue was sent, a document each, in the order of the jobs.
    [[nodiscard]] QByteArrayList arrived(const QString& queue) const;

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QProcessEnvironment environment() const
    {
        return environment(QProcessEnvironment::systemEnvironment());
    }
    void writeProgramFolder() const;
    void writeConfiguration() const;

    QTemporaryDir m_folder;
    quint16 m_port = 0;
    QProcess m_server;
};

} // namespace oVELDRA::doubles
