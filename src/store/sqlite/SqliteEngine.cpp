#include "SqliteEngine.h"

#include "SqliteFunctions.h"

#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <array>
#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace oVELDRA::store {

using namespace Qt::StringLiterals;
using dialect::ColumnKind;

namespace {

// How long a statement waits for another seat's write before it reports that the database is busy.
constexpr int busyMilliseconds = 5000;

/// Adds a text; false when the cell holds none (Null).
bool addText(sqlite3_stmt* statement, int column, RecordData& data)
{
    // The text must be asked for before its length.
    const auto* const text = static_cast<const char*>(static_cast<const void*>(sqlite3_column_text(statement, column)));
    if (!text) {
        return false;
    }
    data.addText({text, static_cast<size_t>(sqlite3_column_bytes(statement, column))});
    return true;
}

void addColumn(sqlite3_stmt* statement, int column, RecordData& data)
{
    // A text column holds texts or Null: asking for the type as well would cost as much as the text.
    if (data.kind(static_cast<size_t>(column)) == ColumnKind::Text) {
        if (!addText(statement, column, data)) {
            data.addNull();
        }
        return;
    }
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        data.addNull();
        break;
    case SQLITE_INTEGER:
        data.addInteger(sqlite3_column_int64(statement, column));
        break;
    case SQLITE_FLOAT:
        data.addReal(sqlite3_column_double(statement, column));
        break;
    default:
        addText(statement, column, data);
        break;
    }
}

class SqliteStatement final : public EngineStatement
{
public:
    SqliteStatement(sqlite3* database, std::optional<RuntimeError>& pending, const QByteArray& sql)
        : m_database(database), m_pending(pending)
    {
        sqlite3_stmt* statement = nullptr;
        const int code = sqlite3_prepare_v3(database, sql.constData(), static_cast<int>(sql.size()) + 1,
                                            SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
        m_statement.reset(statement);
        if (code != SQLITE_OK) {
            throw sqliteError(sqlite3_extended_errcode(database), database);
        }
    }

    qint64 execute(const Bindings& bindings) override
    {
        const Reset reset(m_statement.get());
        bind(bindings);
        while (step()) {
        }
        return sqlite3_changes64(m_database);
    }

    void query(const Bindings& bindings, RecordData& data) override
    {
        const Reset reset(m_statement.get());
        bind(bindings);
        while (nextRow(data)) {
        }
    }

    /// Adds one more row of the run; false at its end.
    bool nextRow(RecordData& data)
    {
        if (!step()) {
            return false;
        }
        const auto columns = static_cast<int>(data.columnCount());
        for (int column = 0; column < columns; ++column) {
            addColumn(m_statement.get(), column, data);
        }
        data.endRow();
        return true;
    }

private:
    /// Ends the run whatever happens; an open run would keep the database locked.
    class Reset
    {
    public:
        explicit Reset(sqlite3_stmt* statement) : m_statement(statement) {}
        ~Reset() { sqlite3_reset(m_statement); }
        Reset(const Reset&) = delete;
        Reset& operator=(const Reset&) = delete;

    private:
        sqlite3_stmt* m_statement;
    };

    void bind(const Bindings& bindings)
    {
        int place = 0;
        for (const Bindings::Item& item : bindings.items()) {
            const int code = bindItem(++place, item, bindings);
            if (code != SQLITE_OK) {
                throw sqliteError(code, m_database);
            }
        }
    }

    // Texts are not copied: the bindings outlive the run, and the next run binds anew.
    int bindItem(int place, const Bindings::Item& item, const Bindings& bindings)
    {
        sqlite3_stmt* const statement = m_statement.get();
        switch (item.kind) {
        case Bindings::Kind::Integer:
            return sqlite3_bind_int64(statement, place, item.integer);
        case Bindings::Kind::Real:
            return sqlite3_bind_double(statement, place, item.real);
        case Bindings::Kind::Text: {
            const std::string_view text = bindings.text(item);
            return sqlite3_bind_text64(statement, place, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
        }
        case Bindings::Kind::Computation:
            return sqlite3_bind_pointer(statement, place, const_cast<BoundComputation*>(item.computation),
                                        dialect::SqlitePrinter::computationPointerType, nullptr);
        case Bindings::Kind::Null:
            break;
        }
        return sqlite3_bind_null(statement, place);
    }

    bool step()
    {
        const int code = sqlite3_step(m_statement.get());
        if (code == SQLITE_ROW) {
            return true;
        }
        if (code == SQLITE_DONE) {
            return false;
        }
        if (const auto pending = std::exchange(m_pending, std::nullopt)) {
            throw RuntimeError(*pending);
        }
        throw sqliteError(sqlite3_extended_errcode(m_database), m_database);
    }

    sqlite3* m_database;
    std::optional<RuntimeError>& m_pending;
    SqliteStatementHandle m_statement;
};

class SqliteCursor final : public EngineCursor
{
public:
    SqliteCursor(sqlite3* database, std::optional<RuntimeError>& pending, const QByteArray& sql)
        : m_statement(database, pending, sql)
    {}

    void fetch(RecordData& block, qsizetype most) override
    {
        // Behind its last row a statement would start anew.
        for (qsizetype row = 0; row < most && !m_atEnd; ++row) {
            m_atEnd = !m_statement.nextRow(block);
        }
    }

private:
    SqliteStatement m_statement;
    bool m_atEnd = false;
};

ColumnKind kindOf(const QString& declared)
{
    const auto has = [&declared](QStringView word) { return declared.contains(word, Qt::CaseInsensitive); };
    if (has(u"CHAR") || has(u"TEXT") || has(u"CLOB")) {
        return ColumnKind::Text;
    }
    if (has(u"SMALLINT")) {
        return ColumnKind::SmallInteger;
    }
    if (has(u"INT")) {
        return ColumnKind::Integer;
    }
    if (has(u"BOOL") || has(u"BIT") || has(u"YESNO")) {
        return ColumnKind::Boolean;
    }
    if (has(u"DATE") || has(u"TIME")) {
        return ColumnKind::Date;
    }
    const bool number = has(u"REAL") || has(u"DOUB") || has(u"FLOA") || has(u"NUM") || has(u"DEC") || has(u"CURR");
    return number ? ColumnKind::Double : ColumnKind::Text;
}

/// The width in a declaration such as VARCHAR(17); 0 without one.
int widthOf(const QString& declared)
{
    const qsizetype open = declared.indexOf(u'(');
    const qsizetype close = declared.indexOf(u')', open);
    return open < 0 || close < 0 ? 0 : QStringView(declared).mid(open + 1, close - open - 1).toInt();
}

/// Whether a drive letter stands for a folder of another machine; the file system's name is the other machine's then.
bool isRemoteDrive([[maybe_unused]] const QString& root)
{
#ifdef Q_OS_WIN
    return GetDriveTypeW(QDir::toNativeSeparators(root).toStdWString().c_str()) == DRIVE_REMOTE;
#else
    return false;
#endif
}

/// SQLite's locks do not hold on folders of other machines.
void refuseNetworkFolder(const QString& file)
{
    const QStorageInfo storage(QFileInfo(file).absolutePath());
    const bool share = QDir::toNativeSeparators(file).startsWith(u"\\\\"_s) || file.startsWith(u"//"_s);
    if (share || isRemoteDrive(storage.rootPath()) || isNetworkFileSystem(storage.fileSystemType())) {
        throw storeError(Trouble::NetworkFolder, file);
    }
}

} // namespace

bool isNetworkFileSystem(const QByteArray& type)
{
    static constexpr std::array names = {"nfs",   "nfs4",  "cifs", "smb",  "smb2",       "smb3",
                                         "smbfs", "ncpfs", "afs",  "ceph", "fuse.sshfs", "fuse.glusterfs"};
    return std::any_of(names.begin(), names.end(), [&type](const char* name) { return type == name; });
}

SqliteEngine::SqliteEngine(const QString& file, Access access, Opening opening)
{
    open(file, access, opening);
    configure(access);
}

SqliteEngine::~SqliteEngine() = default;

void SqliteEngine::open(const QString& file, Access access, Opening opening)
{
    const bool inMemory = file == u":memory:";
    if (!inMemory) {
        const QFileInfo info(file);
        if (opening == Opening::Existing && !info.isFile()) {
            throw storeError(Trouble::NoFile, file);
        }
        if (access == Access::ReadWrite) {
            refuseNetworkFolder(file);
        }
        if (info.exists() && (!info.isReadable() || (access == Access::ReadWrite && !info.isWritable()))) {
            throw storeError(Trouble::NoPermission, file);
        }
    }
    int flags = SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    flags |= access == Access::ReadOnly && !inMemory ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    flags |= opening == Opening::Create || inMemory ? SQLITE_OPEN_CREATE : 0;
    sqlite3* database = nullptr;
    const int code = sqlite3_open_v2(file.toUtf8().constData(), &database, flags, nullptr);
    m_database.reset(database);
    if (code != SQLITE_OK) {
        throw sqliteError(code, database, file);
    }
}

void SqliteEngine::configure(Access access)
{
    sqlite3* const database = m_database.get();
    sqlite3_busy_timeout(database, busyMilliseconds);
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    const int code = defineSqliteFunctions(database, m_pending);
    if (code != SQLITE_OK) {
        throw sqliteError(code, database);
    }
    if (access == Access::ReadWrite) {
        run("PRAGMA journal_mode=WAL");
        run("PRAGMA synchronous=NORMAL");
    }
    run("PRAGMA foreign_keys=OFF");
    run("PRAGMA temp_store=MEMORY");
}

dialect::Catalog SqliteEngine::catalog()
{
    dialect::Catalog result;
    RecordData columns(std::make_shared<ColumnKinds>(3, ColumnKind::Text));
    prepare("SELECT t.name, c.name, c.type FROM sqlite_schema t, pragma_table_info(t.name) c "
            "WHERE t.type = 'table' AND t.name NOT LIKE 'sqlite_%' ORDER BY t.rowid, c.cid")
        ->query({}, columns);
    for (qsizetype row = 0; row < columns.rows(); ++row) {
        const QString table = columns.variant(row, 0).toString();
        if (result.tables.empty() || result.tables.back().name != table) {
            result.tables.push_back({table, {}, {}});
        }
        const QString declared = columns.variant(row, 2).toString();
        const ColumnKind kind = kindOf(declared);
        const int width = kind == ColumnKind::Text ? widthOf(declared) : 0;
        result.tables.back().columns.push_back({columns.variant(row, 1).toString(), kind, width});
    }
    return result;
}

std::unique_ptr<EngineStatement> SqliteEngine::prepare(const QByteArray& sql)
{
    return std::make_unique<SqliteStatement>(m_database.get(), m_pending, sql);
}

std::unique_ptr<EngineCursor> SqliteEngine::openCursor(const QByteArray& sql)
{
    return std::make_unique<SqliteCursor>(m_database.get(), m_pending, sql);
}

void SqliteEngine::begin()
{
    run("BEGIN IMMEDIATE");
}

void SqliteEngine::beginSnapshot()
{
    run("PRAGMA temp_store=FILE");
    run("BEGIN");
    // The transaction sees what there is when it first reads.
    run("SELECT count(*) FROM sqlite_schema");
}

void SqliteEngine::commit()
{
    run("COMMIT");
}

void SqliteEngine::rollback() noexcept
{
    if (inTransaction()) {
        sqlite3_exec(m_database.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

bool SqliteEngine::inTransaction() const
{
    return sqlite3_get_autocommit(m_database.get()) == 0;
}

void SqliteEngine::atomically(const std::function<void()>& body)
{
    run("SAVEPOINT oveldra");
    try {
        body();
        run("RELEASE oveldra");
    } catch (...) {
        if (inTransaction()) {
            sqlite3_exec(m_database.get(), "ROLLBACK TO oveldra; RELEASE oveldra", nullptr, nullptr, nullptr);
        }
        throw;
    }
}

void SqliteEngine::run(const QByteArray& command)
{
    const int code = sqlite3_exec(m_database.get(), command.constData(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) {
        throw sqliteError(code, m_database.get());
    }
}

} // namespace oVELDRA::store
