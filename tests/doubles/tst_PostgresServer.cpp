#include "doubles/PostgresServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <memory>
#include <sys/prctl.h>
#include <sys/wait.h>

using namespace Qt::StringLiterals;
using oVELDRA::doubles::Durability;
using oVELDRA::doubles::PostgresServer;

namespace {

/// What the server's own client prints for a command; "error: …" when it fails.
QString answer(const PostgresServer& server, const QString& command)
{
    QProcess psql;
    psql.start(PostgresServer::program(u"psql"_s),
               {u"-XAtq"_s, u"-h"_s, server.host(), u"-p"_s, QString::number(PostgresServer::port()), u"-U"_s,
                PostgresServer::user(), u"-d"_s, u"postgres"_s, u"-c"_s, command});
    psql.waitForFinished();
    const QString output = QString::fromUtf8(psql.readAllStandardOutput()).trimmed();
    return psql.exitCode() == 0 ? output : u"error: "_s + QString::fromUtf8(psql.readAllStandardError()).trimmed();
}

/// The process of the server itself.
pid_t processOf(const QString& folder)
{
    QFile file(folder + u"/data/postmaster.pid"_s);
    return file.open(QIODevice::ReadOnly) ? static_cast<pid_t>(file.readLine().trimmed().toLongLong()) : 0;
}

/// Dies without any farewell while a server is up, whose folder it has told.
[[noreturn]] void startAndDie()
{
    PostgresServer server;
    server.start();
    std::puts(server.host().toUtf8().constData());
    std::fflush(stdout);
    std::raise(SIGKILL);
    std::abort();
}

} // namespace

class tst_PostgresServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersWithFixedSettings()
    {
        PostgresServer server;
        QVERIFY(!server.isRunning());
        server.start();
        QVERIFY(server.isRunning());
        QCOMPARE(answer(server, u"select current_user, current_setting('server_encoding'), current_setting('TimeZone'),"
                                " current_setting('listen_addresses'), current_setting('fsync')"_s),
                 u"oveldra|UTF8|UTC||off"_s);
        QVERIFY(answer(server, u"select nothing"_s).startsWith(u"error: "));
    }

    void whatWasCommittedOutlivesAnImmediateStop()
    {
        PostgresServer server(Durability::Full);
        server.start();
        QCOMPARE(answer(server, u"show fsync"_s), u"on"_s);
        QCOMPARE(answer(server, u"create table t (n int); insert into t values (7)"_s), QString());
        server.stopAtOnce();
        QVERIFY(!server.isRunning());
        QVERIFY(answer(server, u"select 1"_s).startsWith(u"error: "));
        server.start();
        QCOMPARE(answer(server, u"select n from t"_s), u"7"_s);
        server.restart();
        QCOMPARE(answer(server, u"select n from t"_s), u"7"_s);
    }

    void theDiskIsFullForLargeFiles()
    {
        PostgresServer server;
        server.limitFilesTo(200);
        server.start();
        QCOMPARE(answer(server, u"create table t as select generate_series(1, 1000) as n"_s), QString());
        const QString refusal = answer(server, u"insert into t select generate_series(1, 100000)"_s);
        QVERIFY2(refusal.startsWith(u"error: ") && refusal.contains(u"Check free disk space."), qPrintable(refusal));
        QCOMPARE(answer(server, u"select count(*) from t"_s), u"1000"_s);
        server.limitFilesTo(0);
        server.restart();
        QCOMPARE(answer(server, u"insert into t select generate_series(1, 100000)"_s), QString());
    }

    void twoServersBesideEachOther()
    {
        PostgresServer one;
        PostgresServer other;
        one.start();
        other.start();
        QCOMPARE(answer(one, u"create table only_here ()"_s), QString());
        QCOMPARE(answer(other, u"select to_regclass('only_here') is null"_s), u"t"_s);
        QVERIFY(one.url(u"s"_s) != other.url(u"s"_s));
        other.stopAtOnce();
        QCOMPARE(answer(one, u"select 1"_s), u"1"_s);
    }

    void theUrlNamesTheSocketAndTheSchema()
    {
        const PostgresServer server;
        QCOMPARE(server.url(u"insumos"_s),
                 u"postgresql:///postgres?host="_s + server.host() + u"&port=5432&user=oveldra&schema=insumos"_s);
        // A longer path of a socket is cut, and nobody finds it.
        QVERIFY(QDir(server.host()).filePath(u".s.PGSQL.5432"_s).size() <= 107);
    }

    void settingsOfTheUserAreLeftOut()
    {
        qputenv("PGOPTIONS", "-c timezone=Asia/Tokyo");
        PostgresServer server;
        server.start();
        QCOMPARE(answer(server, u"show timezone"_s), u"UTC"_s);
    }

    void nothingStaysBehind()
    {
        auto server = std::make_unique<PostgresServer>();
        server->start();
        const pid_t process = processOf(server->host());
        QVERIFY(process > 0);
        QCOMPARE(kill(process, 0), 0);
        const QString folder = server->host();
        server.reset();
        QCOMPARE(kill(process, 0), -1);
        QVERIFY(!QDir(folder).exists());
    }

    void aProcessThatDiesTakesItsServerAlong()
    {
        prctl(PR_SET_CHILD_SUBREAPER, 1); // the server, an orphan then, becomes this process's child
        QProcess other;
        other.start(QCoreApplication::applicationFilePath(), {u"start-and-die"_s});
        other.waitForFinished();
        QCOMPARE(other.exitStatus(), QProcess::CrashExit);
        const QString folder = QString::fromUtf8(other.readAllStandardOutput()).trimmed();
        QVERIFY(QDir(folder).exists());
        const pid_t process = processOf(folder);
        bool ended = process == 0;
        const auto hasEnded = [&] { return ended = ended || waitpid(process, nullptr, WNOHANG) == process; };
        QTRY_VERIFY(hasEnded());
        QVERIFY(QDir(folder).removeRecursively());
    }
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(u"start-and-die"_s)) {
        startAndDie();
    }
    tst_PostgresServer test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_PostgresServer.moc"
