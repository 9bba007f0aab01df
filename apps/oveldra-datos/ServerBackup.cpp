#include "ServerBackup.h"

#include "Interruption.h"

#include <store/StoreError.h>

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace oVELDRA::data {

using store::PostgresAddress;
using store::Trouble;

namespace {

constexpr int pollMilliseconds = 100;
constexpr qint64 bytesPerKilobyte = 1024;

/// The server's address travels in the environment: a command line can be read by all users of the machine, and takes
/// some names for something else.
QProcessEnvironment environmentOf(const PostgresAddress& address)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto set = [&environment](const QString& name, const QString& value) {
        if (!value.isEmpty()) {
            environment.insert(name, value);
        }
    };
    set(u"PGHOST"_s, address.host);
    set(u"PGPORT"_s, address.port > 0 ? QString::number(address.port) : QString());
    set(u"PGUSER"_s, address.user);
    set(u"PGPASSWORD"_s, address.password);
    set(u"PGDATABASE"_s, address.database);
    return environment;
}

/// A schema's name as a pattern that only it matches.
QString exactly(const QString& schema)
{
    QString name = schema;
    return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

void waitForEnd(QProcess& process, const QString& target, Console& console)
{
    while (!process.waitForFinished(pollMilliseconds)) {
        if (process.state() == QProcess::NotRunning) {
            break;
        }
        if (Interruption::requested()) {
            process.kill();
            process.waitForFinished();
            Interruption::check();
        }
        console.progress(u"Copiando (KB)"_s, QFileInfo(target).size() / bytesPerKilobyte, 0);
    }
}

} // namespace

QString postgresProgram(const QString& name)
{
    QString inPath = QStandardPaths::findExecutable(name);
    if (!inPath.isEmpty()) {
        return inPath;
    }
    const QDir versions(u"/usr/lib/postgresql"_s);
    QString newest;
    int newestVersion = 0;
    const QStringList folders = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& folder : folders) {
        const QString program = versions.filePath(folder + u"/bin/"_s + name);
        if (folder.toInt() > newestVersion && QFileInfo(program).isExecutable()) {
            newest = program;
            newestVersion = folder.toInt();
        }
    }
    return newest;
}

void backUpServer(const PostgresAddress& source, const QString& target, Console& console)
{
    const QString program = postgresProgram(u"pg_dump"_s);
    if (program.isEmpty()) {
        throw store::storeError(Trouble::Other, u"falta el programa pg_dump: instale el paquete postgresql-client"_s);
    }
    QProcess process;
    process.setProcessEnvironment(environmentOf(source));
    process.setStandardInputFile(QProcess::nullDevice());
    // Never a question: nobody answers it at night.
    process.start(program, {u"--format=custom"_s, u"--no-password"_s, u"--strict-names"_s,
                            u"--schema="_s + exactly(source.schema), u"--file="_s + target});
    waitForEnd(process, target, console);
    if (process.error() == QProcess::FailedToStart) {
        throw store::storeError(Trouble::Other, u"%1: %2"_s.arg(program, process.errorString()));
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        Interruption::check();
        const QString words = QString::fromUtf8(process.readAllStandardError()).trimmed();
        throw store::storeError(Trouble::Other, words.isEmpty() ? u"pg_dump terminó de golpe"_s : words);
    }
}

} // namespace oVELDRA::data
