#include "BusySeat.h"
#include "HookedConsole.h"
#include "RecordedConsole.h"
#include "doubles/PostgresServer.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/Store.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <csignal>
#include <optional>
#include <oveldra-datos/Command.h>
#include <oveldra-datos/ServerBackup.h>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using doubles::PostgresServer;
using doubles::thrownBy;

/// The command that makes copies while others work, of the server's schemas.
class tst_RespaldarServidor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_server.start(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void theCopyIsRestoredByTheServersOwnTool();
    void theCopyIsOfOneMoment();
    void theToolFailing_data();
    void theToolFailing();
    void anInterruptionStopsTheTool();
    void programsOfTheServerAreFound();

private:
    [[nodiscard]] QString file(const QString& name) const { return m_folder->filePath(name); }
    [[nodiscard]] QStringList filesThere() const { return QDir(m_folder->path()).entryList(QDir::Files); }
    /// Copies with a script in place of pg_dump.
    [[nodiscard]] std::optional<RuntimeError> respaldarWithTool(Console& console, const QByteArray& script) const;
    /// Runs a client of the server; its words, "" when it succeeded silently.
    [[nodiscard]] QString client(const QString& program, const QStringList& arguments) const;

    std::unique_ptr<QTemporaryDir> m_folder;
    PostgresServer m_server;
};

std::optional<RuntimeError> tst_RespaldarServidor::respaldarWithTool(Console& console, const QByteArray& script) const
{
    const QString url = m_server.url(u"fallido"_s);
    if (thrownBy([&] { std::ignore = connectStore(url); })) {
        std::ignore = createStore(url, Database::Inputs);
    }
    QFile tool(file(u"pg_dump"_s));
    if (!tool.open(QIODevice::WriteOnly) || tool.write("#!/bin/sh\n" + script + '\n') < 0) {
        qFatal("cannot write the tool");
    }
    tool.close();
    tool.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", m_folder->path().toLocal8Bit() + ':' + path);
    auto error = thrownBy([&] { data::respaldar().run({{url, file(u"copia.dump"_s)}, {}}, console); });
    qputenv("PATH", path);
    return error;
}

QString tst_RespaldarServidor::client(const QString& program, const QStringList& arguments) const
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(PostgresServer::program(program),
                  QStringList{u"-h"_s, m_server.host(), u"-p"_s, QString::number(PostgresServer::port()), u"-U"_s,
                              PostgresServer::user(), u"-d"_s, u"postgres"_s} +
                      arguments);
    process.waitForFinished();
    const QString words = QString::fromUtf8(process.readAll()).trimmed();
    return process.exitCode() == 0 ? words : u"error: "_s + words;
}

void tst_RespaldarServidor::theCopyIsRestoredByTheServersOwnTool()
{
    // A name that is quoted in every language on the way.
    const QString schema = u"El \"stock\".* ñ"_s;
    const QString url = m_server.url(QString::fromLatin1(QUrl::toPercentEncoding(schema)));
    const auto other = createStore(m_server.url(u"otro"_s), Database::Host);
    {
        const auto source = createStore(url, Database::Inputs);
        fill(*source, 10);
    }
    const QString dump = file(u"insumos.dump"_s);
    RecordedConsole console(RecordedConsole::Format::Json);
    QCOMPARE(data::respaldar().run({{url, dump}, {}}, console), 0);
    QCOMPARE(console.results()[0][u"format"_s].toString(), u"pg_dump"_s);
    QCOMPARE(filesThere(), QStringList(u"insumos.dump"_s));

    const QString quoted = u'"' + QString(schema).replace(u'"', u"\"\""_s) + u'"';
    const QString dropped = client(u"psql"_s, {u"-Xqc"_s, u"drop schema "_s + quoted + u" cascade"});
    QVERIFY2(!dropped.startsWith(u"error"_s), qPrintable(dropped));
    QVERIFY(thrownBy([&] { std::ignore = connectStore(url); }));
    QCOMPARE(client(u"pg_restore"_s, {u"--no-owner"_s, u"--exit-on-error"_s, dump}), QString());
    const auto restored = connectStore(url);
    QCOMPARE(count(*restored, u"INS"_s), 10 * articlesEach);
    importOne(*restored, 11, 1);
    restored->setSql(u"select INTDES from INTINS where INTDCL = 'dit00000011  '"_s); // the collation came along
    bool ok = false;
    QCOMPARE(restored->openRecordset(ok)->value(u"INTDES").toString(), u"Declaración"_s);
    QVERIFY(thrownBy([&] { importOne(*restored, 11, 1); })); // and the keys
}

void tst_RespaldarServidor::theCopyIsOfOneMoment()
{
    const QString url = m_server.url(u"ocupado"_s);
    {
        const auto source = createStore(url, Database::Inputs);
        fill(*source, 20);
    }
    const QString dump = file(u"ocupado.dump"_s);
    {
        const BusySeat seat(url, 21);
        QTRY_VERIFY(seat.imports() > 0);
        RecordedConsole console;
        QCOMPARE(data::respaldar().run({{url, dump}, {}}, console), 0);
        const int imports = seat.imports();
        QTRY_VERIFY(seat.imports() > imports);
    }
    const QString dropped = client(u"psql"_s, {u"-Xqc"_s, u"drop schema ocupado cascade"_s});
    QVERIFY2(!dropped.startsWith(u"error"_s), qPrintable(dropped));
    QCOMPARE(client(u"pg_restore"_s, {u"--no-owner"_s, u"--exit-on-error"_s, dump}), QString());
    const auto restored = connectStore(url);
    const qint64 declarations = count(*restored, u"INTINS"_s);
    QVERIFY(declarations > 20);
    QCOMPARE(count(*restored, u"INS"_s), declarations * articlesEach);
}

void tst_RespaldarServidor::theToolFailing_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("said");
    QTest::newRow("with its reason") << QByteArray("echo 'pg_dump: error: no quiero' >&2; exit 1")
                                     << u"pg_dump: error: no quiero"_s;
    QTest::newRow("saying what it was asked") << QByteArray("echo \"$@\" >&2; exit 1") << u"--schema=\"fallido\""_s;
    QTest::newRow("half way") << QByteArray(
                                     "for a; do case $a in --file=*) echo medio > \"${a#--file=}\";; esac; done; "
                                     "kill -9 $$")
                              << u"pg_dump terminó de golpe"_s;
}

void tst_RespaldarServidor::theToolFailing()
{
    QFETCH(const QByteArray, script);
    QFETCH(const QString, said);
    RecordedConsole console;
    const auto error = respaldarWithTool(console, script);
    QVERIFY(error);
    QVERIFY2(error->description().contains(said), qPrintable(error->description()));
    QCOMPARE(filesThere(), QStringList(u"pg_dump"_s));
}

void tst_RespaldarServidor::anInterruptionStopsTheTool()
{
    int reports = 0;
    HookedConsole console([&reports](const QString&, qint64, qint64) {
        if (++reports == 1) {
            std::raise(SIGTERM);
        }
    });
    const auto error = respaldarWithTool(console, "exec sleep 1000");
    QVERIFY(error);
    QCOMPARE(error->number(), 18);
    QCOMPARE(filesThere(), QStringList(u"pg_dump"_s));
}

void tst_RespaldarServidor::programsOfTheServerAreFound()
{
    QVERIFY(QFileInfo(postgresProgram(u"pg_dump"_s)).isExecutable());
    QVERIFY(QFileInfo(postgresProgram(u"initdb"_s)).isExecutable()); // beside PATH, on Debian
    QCOMPARE(postgresProgram(u"pg_no_existe"_s), QString());
}

QTEST_GUILESS_MAIN(tst_RespaldarServidor)
#include "tst_RespaldarServidor.moc"
