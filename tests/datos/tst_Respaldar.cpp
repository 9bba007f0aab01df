#include "FileSizeLimit.h"
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
#include <QThread>
#include <QUrl>

#include <atomic>
#include <csignal>
#include <optional>
#include <oveldra-datos/Command.h>
#include <oveldra-datos/ServerBackup.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using doubles::PostgresServer;
using doubles::thrownBy;

namespace {

constexpr int damaged = 3049;
constexpr int alreadyThere = 3010;
constexpr int noPermission = 3051;

// Enough that a copy takes several steps.
constexpr int manyDeclarations = 400;
constexpr int articlesEach = 60;

qint64 count(ConexionDB& connection, const QString& table)
{
    connection.setSql(u"select count(*) as n from "_s + table);
    bool ok = false;
    const auto rows = connection.openRecordset(ok);
    return ok ? rows->value(u"n").toLongLong() : -1;
}

/// One more declaration with its articles, as the import writes them: all or nothing.
void importOne(ConexionDB& connection, qint64 number, int articles)
{
    const auto burst = connection.beginBurst();
    const QString declaration = u"DIT%1"_s.arg(number, 8, 10, QChar(u'0'));
    connection.setSql(
        u"insert into INTINS (INTNRO,INTDCL,INTDES,INTIOK) values ('T%1','%2','Declaración',1)"_s.arg(number).arg(
            declaration));
    connection.execute();
    for (int article = 1; article <= articles; ++article) {
        connection.setSql(u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
                          "('%1','ARTICULO-%2','07','10','1','10','8471.30.12.000A','%2','001')"_s.arg(declaration)
                              .arg(article, 3, 10, QChar(u'0')));
        connection.execute();
    }
    burst->commit();
}

/// A stock of inputs.
void fill(ConexionDB& connection, int declarations)
{
    const auto burst = connection.beginBurst();
    for (int number = 1; number <= declarations; ++number) {
        importOne(connection, number, articlesEach);
    }
    burst->commit();
}

/// The first value of a query that SQLite runs itself.
QByteArray sqliteValue(const QString& file, const char* sql)
{
    sqlite3* database = nullptr;
    sqlite3_stmt* statement = nullptr;
    QByteArray value = "cannot be read";
    if (sqlite3_open_v2(file.toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK &&
        sqlite3_prepare_v2(database, sql, -1, &statement, nullptr) == SQLITE_OK &&
        sqlite3_step(statement) == SQLITE_ROW) {
        value = static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(statement, 0)));
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
    return value;
}

/// Another seat that imports without a pause, in a thread of its own.
class BusySeat
{
public:
    explicit BusySeat(const QString& url, qint64 firstNumber)
        : m_thread(QThread::create([this, url, firstNumber] {
              const auto connection = connectStore(url);
              for (qint64 number = firstNumber; !m_enough; ++number) {
                  importOne(*connection, number, articlesEach);
                  ++m_imports;
              }
          }))
    {
        m_thread->start();
    }
    BusySeat(const BusySeat&) = delete;
    BusySeat& operator=(const BusySeat&) = delete;
    ~BusySeat()
    {
        m_enough = true;
        m_thread->wait();
    }
    [[nodiscard]] int imports() const { return m_imports; }

private:
    std::atomic<bool> m_enough = false;
    std::atomic<int> m_imports = 0;
    std::unique_ptr<QThread> m_thread;
};

/// What SQLite itself holds of a database, for a test to hold it up.
class ExclusiveLock
{
public:
    explicit ExclusiveLock(const QString& file)
    {
        sqlite3_open(file.toUtf8().constData(), &m_database);
        sqlite3_exec(m_database, "PRAGMA locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    }
    ExclusiveLock(const ExclusiveLock&) = delete;
    ExclusiveLock& operator=(const ExclusiveLock&) = delete;
    ~ExclusiveLock() { release(); }
    void release() { sqlite3_close(std::exchange(m_database, nullptr)); }

private:
    sqlite3* m_database = nullptr;
};

QByteArray contentOf(const QString& file)
{
    QFile content(file);
    return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray("cannot be read");
}

void write(const QString& file, const QByteArray& bytes)
{
    QFile content(file);
    if (!content.open(QIODevice::WriteOnly) || content.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(file));
    }
}

} // namespace

/// The command that makes copies while others work.
class tst_Respaldar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup() { m_source.reset(); }
    void theCopyIsTheWholeDatabaseInOneFile();
    void whatIsStillInTheLogIsCopied();
    void writingInTheMiddleIsNotCopied();
    void copiesWhileAnotherSeatWritesAreOfOneMoment();
    void anExistingFileIsKept();
    void anExistingFileIsReplacedWhenAsked();
    void aDatabaseInUseIsNotReplaced();
    void theSourceIsNoTarget();
    void aDamagedSourceLeavesTheOldCopy();
    void aFullDiskLeavesTheOldCopy();
    void anInterruptionLeavesTheOldCopy();
    void aLockedDatabaseIsWaitedFor();
    void waitingCanBeInterrupted();
    void whatIsNotThereIsSaid_data();
    void whatIsNotThereIsSaid();
    void theResultIsGivenAsJson();
    void theServersCopyIsRestoredByItsOwnTool();
    void theServersCopyIsOfOneMoment();
    void theServersToolFailing_data();
    void theServersToolFailing();
    void anInterruptionStopsTheServersTool();
    void programsOfTheServerAreFound();

private:
    [[nodiscard]] QString file(const QString& name) const { return m_folder->filePath(name); }
    /// The files in the folder, but for what SQLite leaves beside a database that was only read.
    [[nodiscard]] QStringList filesThere() const
    {
        QStringList files = QDir(m_folder->path()).entryList(QDir::Files);
        files.removeOne(u"insumos.sqlite-shm"_s);
        files.removeOne(u"insumos.sqlite-wal"_s);
        return files;
    }
    void useBigStock()
    {
        m_source.reset();
        QVERIFY(QFile::remove(file(u"insumos.sqlite"_s)));
        QVERIFY(QFile::copy(m_bigStock.filePath(u"grande.sqlite"_s), file(u"insumos.sqlite"_s)));
        m_source = connectStore(m_url);
    }
    int respaldar(Console& console, const QString& origin, const QString& target, bool replace = false) const
    {
        Arguments arguments{{origin, target}, {}};
        if (replace) {
            arguments.options.insert(u"reemplazar"_s, {});
        }
        return data::respaldar().run(arguments, console);
    }
    int respaldar(bool replace = false) const
    {
        RecordedConsole console;
        return respaldar(console, m_url, m_copy, replace);
    }
    /// Copies from the server with a script in place of pg_dump.
    [[nodiscard]] std::optional<RuntimeError> respaldarWithTool(Console& console, const QByteArray& script) const;
    /// Runs a client of the server; its words, "" when it succeeded silently.
    [[nodiscard]] QString client(const QString& program, const QStringList& arguments) const;

    QTemporaryDir m_bigStock;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_url;
    QString m_copy;
    std::shared_ptr<ConexionDB> m_source;
    PostgresServer m_server;
};

void tst_Respaldar::initTestCase()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
    m_server.start();
    const auto big = createStore(u"sqlite:"_s + m_bigStock.filePath(u"grande.sqlite"_s), Database::Inputs);
    fill(*big, manyDeclarations);
}

void tst_Respaldar::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_url = u"sqlite:"_s + file(u"insumos.sqlite"_s);
    m_copy = file(u"copia.sqlite"_s);
    m_source = createStore(m_url, Database::Inputs);
}

std::optional<RuntimeError> tst_Respaldar::respaldarWithTool(Console& console, const QByteArray& script) const
{
    const QString url = m_server.url(u"fallido"_s);
    if (thrownBy([&] { std::ignore = connectStore(url); })) {
        std::ignore = createStore(url, Database::Inputs);
    }
    const QString program = file(u"pg_dump"_s);
    write(program, "#!/bin/sh\n" + script + '\n');
    QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner);
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", m_folder->path().toLocal8Bit() + ':' + path);
    auto error = thrownBy([&] { respaldar(console, url, file(u"copia.dump"_s)); });
    qputenv("PATH", path);
    return error;
}

QString tst_Respaldar::client(const QString& program, const QStringList& arguments) const
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

void tst_Respaldar::theCopyIsTheWholeDatabaseInOneFile()
{
    fill(*m_source, 20);
    m_source.reset();
    RecordedConsole console;
    QCOMPARE(respaldar(console, m_url, m_copy), 0);
    QVERIFY2(console.report().startsWith(u"Se respaldó "_s), qPrintable(console.report()));
    QCOMPARE(filesThere(), QStringList({u"copia.sqlite"_s, u"insumos.sqlite"_s}));
    QCOMPARE(sqliteValue(m_copy, "PRAGMA journal_mode"), QByteArray("delete"));
    QCOMPARE(sqliteValue(m_copy, "PRAGMA integrity_check"), QByteArray("ok"));
    const auto copy = connectStore(u"sqlite:"_s + m_copy);
    QCOMPARE(count(*copy, u"INTINS"_s), 20);
    QCOMPARE(count(*copy, u"INS"_s), 20 * articlesEach);
    importOne(*copy, 21, 1); // it is a database to go on with
    QCOMPARE(count(*copy, u"INTINS"_s), 21);
}

void tst_Respaldar::whatIsStillInTheLogIsCopied()
{
    importOne(*m_source, 1, 3);
    QVERIFY(QFileInfo(file(u"insumos.sqlite-wal"_s)).size() > 0);
    QCOMPARE(respaldar(), 0);
    QCOMPARE(count(*connectStore(u"sqlite:"_s + m_copy, Access::ReadOnly), u"INS"_s), 3);
}

void tst_Respaldar::writingInTheMiddleIsNotCopied()
{
    useBigStock();
    int steps = 0;
    HookedConsole console([&](const QString& what, qint64, qint64) {
        if (what == u"Copiando" && steps < 20) {
            importOne(*m_source, manyDeclarations + ++steps, articlesEach);
        }
    });
    QCOMPARE(respaldar(console, m_url, m_copy), 0);
    QVERIFY(steps > 1);
    QCOMPARE(count(*m_source, u"INTINS"_s), manyDeclarations + steps);
    const auto copy = connectStore(u"sqlite:"_s + m_copy, Access::ReadOnly);
    QCOMPARE(count(*copy, u"INTINS"_s), manyDeclarations);
    QCOMPARE(count(*copy, u"INS"_s), manyDeclarations * articlesEach);
}

void tst_Respaldar::copiesWhileAnotherSeatWritesAreOfOneMoment()
{
    useBigStock();
    const BusySeat seat(m_url, manyDeclarations + 1);
    qint64 before = manyDeclarations;
    for (int round = 0; round < 5; ++round) {
        const int imports = seat.imports();
        QTRY_VERIFY(seat.imports() > imports); // it is not held up by the copies
        QCOMPARE(respaldar(true), 0);
        const auto copy = connectStore(u"sqlite:"_s + m_copy, Access::ReadOnly);
        const qint64 declarations = count(*copy, u"INTINS"_s);
        QVERIFY(declarations > before);
        QCOMPARE(count(*copy, u"INS"_s), declarations * articlesEach);
        QCOMPARE(sqliteValue(m_copy, "SELECT max(INTDCL) FROM INTINS"),
                 u"DIT%1"_s.arg(declarations, 8, 10, QChar(u'0')).toUtf8());
        before = declarations;
    }
}

void tst_Respaldar::anExistingFileIsKept()
{
    write(m_copy, "la de ayer");
    const auto error = thrownBy([&] { respaldar(); });
    QVERIFY(error);
    QCOMPARE(error->nativeNumber(), alreadyThere);
    QCOMPARE(contentOf(m_copy), QByteArray("la de ayer"));
}

void tst_Respaldar::anExistingFileIsReplacedWhenAsked()
{
    write(m_copy, "la de ayer");
    write(m_copy + u"-shm"_s, "de quien la miró");
    importOne(*m_source, 1, 3);
    QCOMPARE(respaldar(true), 0);
    QCOMPARE(count(*connectStore(u"sqlite:"_s + m_copy, Access::ReadOnly), u"INS"_s), 3);
}

void tst_Respaldar::aDatabaseInUseIsNotReplaced()
{
    const auto other = createStore(u"sqlite:"_s + m_copy, Database::Inputs);
    importOne(*other, 1, 2);
    const auto error = thrownBy([&] { respaldar(true); });
    QVERIFY(error);
    QVERIFY2(error->description().contains(u"en uso"_s), qPrintable(error->description()));
    QCOMPARE(count(*other, u"INS"_s), 2);
}

void tst_Respaldar::theSourceIsNoTarget()
{
    importOne(*m_source, 1, 2);
    m_source.reset();
    RecordedConsole console;
    QFile::link(file(u"insumos.sqlite"_s), file(u"otro.sqlite"_s));
    for (const QString& target : {u"insumos.sqlite"_s, u"otro.sqlite"_s}) {
        QVERIFY_THROWS_EXCEPTION(BadUsageError, respaldar(console, m_url, file(target), true));
    }
    QVERIFY_THROWS_EXCEPTION(BadUsageError, respaldar(console, m_url, u"sqlite:"_s + m_copy));
    QCOMPARE(count(*connectStore(m_url), u"INS"_s), 2);
}

void tst_Respaldar::aDamagedSourceLeavesTheOldCopy()
{
    fill(*m_source, 20);
    m_source.reset();
    const QString source = file(u"insumos.sqlite"_s);
    QByteArray bytes = contentOf(source);
    constexpr qsizetype page = 4096;
    QVERIFY(bytes.size() > 20 * page);
    bytes.replace(10 * page, page, QByteArray(page, '\x5a'));
    write(source, bytes);
    write(m_copy, "la de ayer");
    const auto error = thrownBy([&] { respaldar(true); });
    QVERIFY(error);
    QCOMPARE(error->nativeNumber(), damaged);
    QCOMPARE(contentOf(m_copy), QByteArray("la de ayer"));
    QCOMPARE(filesThere(), QStringList({u"copia.sqlite"_s, u"insumos.sqlite"_s}));
}

void tst_Respaldar::aFullDiskLeavesTheOldCopy()
{
    useBigStock();
    m_source.reset();
    write(m_copy, "la de ayer");
    {
        const FileSizeLimit diskFull(1'000'000);
        const auto error = thrownBy([&] { respaldar(true); });
        QVERIFY(error);
        QVERIFY2(error->description().startsWith(u"No se pudo escribir la copia"_s), qPrintable(error->description()));
    }
    QCOMPARE(contentOf(m_copy), QByteArray("la de ayer"));
    QCOMPARE(filesThere(), QStringList({u"copia.sqlite"_s, u"insumos.sqlite"_s}));
}

void tst_Respaldar::anInterruptionLeavesTheOldCopy()
{
    useBigStock();
    m_source.reset();
    write(m_copy, "la de ayer");
    int reports = 0;
    HookedConsole console([&reports](const QString&, qint64, qint64) {
        if (++reports == 2) {
            std::raise(SIGINT);
        }
    });
    const auto error = thrownBy([&] { respaldar(console, m_url, m_copy, true); });
    QVERIFY(error);
    QCOMPARE(error->number(), 18);
    QCOMPARE(contentOf(m_copy), QByteArray("la de ayer"));
    QCOMPARE(filesThere(), QStringList({u"copia.sqlite"_s, u"insumos.sqlite"_s}));
}

void tst_Respaldar::aLockedDatabaseIsWaitedFor()
{
    importOne(*m_source, 1, 3);
    m_source.reset();
    ExclusiveLock lock(file(u"insumos.sqlite"_s));
    int waited = 0;
    HookedConsole console([&](const QString& what, qint64, qint64) {
        if (what.startsWith(u"Esperando"_s) && ++waited == 2) {
            lock.release();
        }
    });
    QCOMPARE(respaldar(console, m_url, m_copy), 0);
    QCOMPARE(waited, 2);
    QCOMPARE(count(*connectStore(u"sqlite:"_s + m_copy, Access::ReadOnly), u"INS"_s), 3);
}

void tst_Respaldar::waitingCanBeInterrupted()
{
    m_source.reset();
    const ExclusiveLock lock(file(u"insumos.sqlite"_s));
    int waited = 0;
    HookedConsole console([&waited](const QString& what, qint64, qint64) {
        if (what.startsWith(u"Esperando"_s) && ++waited == 1) {
            std::raise(SIGTERM);
        }
    });
    const auto error = thrownBy([&] { respaldar(console, m_url, m_copy); });
    QVERIFY(error);
    QCOMPARE(error->number(), 18);
    QCOMPARE(filesThere(), QStringList(u"insumos.sqlite"_s));
}

void tst_Respaldar::whatIsNotThereIsSaid_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("target");
    QTest::addColumn<int>("native");
    QTest::newRow("no source") << u"otro.sqlite"_s << u"copia.sqlite"_s << 3024;
    QTest::newRow("no database") << u"carta.txt"_s << u"copia.sqlite"_s << 3343;
    QTest::newRow("no folder") << u"insumos.sqlite"_s << u"no/esta/copia.sqlite"_s << noPermission;
    QTest::newRow("a file for a folder") << u"insumos.sqlite"_s << u"carta.txt/copia.sqlite"_s << noPermission;
}

void tst_Respaldar::whatIsNotThereIsSaid()
{
    QFETCH(const QString, source);
    QFETCH(const QString, target);
    QFETCH(const int, native);
    m_source.reset();
    write(file(u"carta.txt"_s), QByteArray(5000, 'x'));
    RecordedConsole console;
    const auto error = thrownBy([&] { respaldar(console, u"sqlite:"_s + file(source), file(target)); });
    QVERIFY(error);
    QCOMPARE(error->nativeNumber(), native);
    QCOMPARE(filesThere(), QStringList({u"carta.txt"_s, u"insumos.sqlite"_s}));
}

void tst_Respaldar::theResultIsGivenAsJson()
{
    RecordedConsole console(RecordedConsole::Format::Json);
    QCOMPARE(respaldar(console, m_url, m_copy), 0);
    QCOMPARE(console.results().size(), 1);
    QCOMPARE(console.results()[0], (QJsonObject{{u"source"_s, m_url},
                                                {u"file"_s, m_copy},
                                                {u"format"_s, u"sqlite"_s},
                                                {u"bytes"_s, QFileInfo(m_copy).size()}}));
}

void tst_Respaldar::theServersCopyIsRestoredByItsOwnTool()
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
    QCOMPARE(respaldar(console, url, dump), 0);
    QCOMPARE(console.results()[0][u"format"_s].toString(), u"pg_dump"_s);
    QCOMPARE(filesThere().filter(u"insumos.dump"_s), QStringList(u"insumos.dump"_s));

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

void tst_Respaldar::theServersCopyIsOfOneMoment()
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
        QCOMPARE(respaldar(console, url, dump), 0);
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

void tst_Respaldar::theServersToolFailing_data()
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

void tst_Respaldar::theServersToolFailing()
{
    QFETCH(const QByteArray, script);
    QFETCH(const QString, said);
    RecordedConsole console;
    const auto error = respaldarWithTool(console, script);
    QVERIFY(error);
    QVERIFY2(error->description().contains(said), qPrintable(error->description()));
    QCOMPARE(filesThere().filter(u"copia.dump"_s), QStringList());
}

void tst_Respaldar::anInterruptionStopsTheServersTool()
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
    QCOMPARE(filesThere().filter(u"copia.dump"_s), QStringList());
}

void tst_Respaldar::programsOfTheServerAreFound()
{
    QVERIFY(QFileInfo(postgresProgram(u"pg_dump"_s)).isExecutable());
    QVERIFY(QFileInfo(postgresProgram(u"initdb"_s)).isExecutable()); // beside PATH, on Debian
    QCOMPARE(postgresProgram(u"pg_no_existe"_s), QString());
}

QTEST_GUILESS_MAIN(tst_Respaldar)
#include "tst_Respaldar.moc"
