#include "BusySeat.h"
#include "FileSizeLimit.h"
#include "HookedConsole.h"
#include "RecordedConsole.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/Store.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <oveldra-datos/Command.h>
#include <sqlite3.h>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using doubles::thrownBy;

namespace {

constexpr int damaged = 3049;
constexpr int alreadyThere = 3010;
constexpr int noPermission = 3051;

// Enough that a copy takes several steps.
constexpr int manyDeclarations = 400;

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

/// The command that makes copies while others work, of files.
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
    [[nodiscard]] int respaldar(bool replace = false) const
    {
        RecordedConsole console;
        return respaldar(console, m_url, m_copy, replace);
    }

    QTemporaryDir m_bigStock;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_url;
    QString m_copy;
    std::shared_ptr<ConexionDB> m_source;
};

void tst_Respaldar::initTestCase()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
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
    const auto error = thrownBy([&] { std::ignore = respaldar(); });
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
    const auto error = thrownBy([&] { std::ignore = respaldar(true); });
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
    const auto error = thrownBy([&] { std::ignore = respaldar(true); });
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
        const auto error = thrownBy([&] { std::ignore = respaldar(true); });
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

QTEST_GUILESS_MAIN(tst_Respaldar)
#include "tst_Respaldar.moc"
