#include "SqliteBackup.h"

#include "Interruption.h"

#include <store/sqlite/SqliteHandle.h>

#include <chrono>
#include <optional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace oVELDRA::data {

using store::SqliteHandle;
using store::Trouble;

namespace {

constexpr int pagesPerStep = 256; // about 1 MB: often enough for progress, seldom enough to cost nothing
constexpr int virtualStepsPerCheck = 100'000;

// How long one attempt waits for another's lock, and for how long there are attempts when none of them gets anywhere.
constexpr int attemptMilliseconds = 500;
constexpr auto patience = 1min;

struct FinishBackup
{
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};
using BackupHandle = std::unique_ptr<sqlite3_backup, FinishBackup>;

RuntimeError copyError(int code, sqlite3* database, const QString& target)
{
    const RuntimeError plain = store::sqliteError(code, database);
    return {plain.number(), u"No se pudo escribir la copia '%1': %2"_s.arg(target, plain.description()), plain.source(),
            plain.nativeNumber()};
}

bool isBusy(int code)
{
    return (code & 0xFF) == SQLITE_BUSY || (code & 0xFF) == SQLITE_LOCKED;
}

SqliteHandle openTarget(const QString& target)
{
    sqlite3* database = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int code = sqlite3_open_v2(target.toUtf8().constData(), &database, flags, nullptr);
    SqliteHandle handle(database);
    if (code != SQLITE_OK) {
        throw copyError(code, database, target);
    }
    return handle;
}

/// Repeats an attempt for as long as others hold it up, up to the limit of our patience. Every attempt waits by itself.
template <typename Attempt>
int untilNotBusy(Console& console, Attempt attempt)
{
    const auto begun = std::chrono::steady_clock::now();
    int code = attempt();
    while (isBusy(code) && std::chrono::steady_clock::now() - begun < patience) {
        Interruption::check();
        console.progress(u"Esperando a que otro puesto suelte la base"_s, 0, 1);
        code = attempt();
    }
    return code;
}

/// Opens a view of the database that others' writing does not change; without it, every write would have the copy begin
/// anew.
void beginSnapshot(store::SqliteEngine& source, Console& console)
{
    std::optional<RuntimeError> failure;
    untilNotBusy(console, [&] {
        failure.reset();
        try {
            source.beginSnapshot();
        } catch (const RuntimeError& error) {
            source.rollback();
            failure = error;
        }
        const bool busy = failure && failure->nativeNumber() == static_cast<int>(Trouble::Locked);
        return busy ? SQLITE_BUSY : SQLITE_OK;
    });
    if (failure) {
        throw RuntimeError(*failure);
    }
}

void copyPages(sqlite3* source, const QString& target, Console& console)
{
    const SqliteHandle copy = openTarget(target);
    const BackupHandle backup(sqlite3_backup_init(copy.get(), "main", source, "main"));
    if (!backup) {
        throw copyError(sqlite3_extended_errcode(copy.get()), copy.get(), target);
    }
    int code = SQLITE_OK;
    while (code == SQLITE_OK) {
        Interruption::check();
        code = untilNotBusy(console, [&backup] { return sqlite3_backup_step(backup.get(), pagesPerStep); });
        const int pages = sqlite3_backup_pagecount(backup.get());
        console.progress(u"Copiando"_s, pages - sqlite3_backup_remaining(backup.get()), pages);
    }
    if (code != SQLITE_DONE) {
        throw copyError(code, copy.get(), target);
    }
}

/// Called by SQLite in the middle of long work; not 0 ends it.
int interruptLongWork(void* /*unused*/)
{
    return Interruption::requested() ? 1 : 0;
}

/// The first value of a query's first row.
QString firstValue(sqlite3* database, const char* sql, const QString& target)
{
    sqlite3_stmt* prepared = nullptr;
    int code = sqlite3_prepare_v2(database, sql, -1, &prepared, nullptr);
    const store::SqliteStatementHandle statement(prepared);
    if (code == SQLITE_OK) {
        code = sqlite3_step(statement.get());
    }
    Interruption::check();
    if (code != SQLITE_ROW) {
        throw copyError(code, database, target);
    }
    const auto* const text = static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(prepared, 0)));
    return QString::fromUtf8(text);
}

void check(const QString& target, Console& console)
{
    const SqliteHandle copy = openTarget(target);
    sqlite3_progress_handler(copy.get(), virtualStepsPerCheck, interruptLongWork, nullptr);
    console.progress(u"Comprobando la copia"_s, 0, 1);
    // Nobody else knows the file, and a folder on the network may have no locks. The copy came with its original's log
    // mode; without a log it is one file, which can be read wherever it is kept.
    firstValue(copy.get(), "PRAGMA locking_mode=EXCLUSIVE", target);
    if (firstValue(copy.get(), "PRAGMA journal_mode=DELETE", target) != u"delete") {
        throw copyError(SQLITE_IOERR, copy.get(), target);
    }
    const QString findings = firstValue(copy.get(), "PRAGMA integrity_check(1)", target);
    if (findings != u"ok") {
        throw store::storeError(Trouble::Damaged, u"la copia no es íntegra: "_s + findings.section(u'\n', 0, 0));
    }
}

} // namespace

void backUpSqlite(store::SqliteEngine& source, const QString& target, Console& console)
{
    sqlite3_busy_timeout(source.handle(), attemptMilliseconds);
    beginSnapshot(source, console);
    copyPages(source.handle(), target, console);
    source.rollback();
    check(target, console);
}

} // namespace oVELDRA::data
