#include "PostgresEngine.h"

#include "Libpq.h"
#include "PostgresError.h"

#include <store/StoreError.h>

#include <QSqlDriver>
#include <QSqlError>
#include <QUrl>
#include <QUrlQuery>

#include <array>
#include <charconv>
#include <string>

namespace oVELDRA::store {

using namespace Qt::StringLiterals;
using dialect::ColumnKind;

namespace {

// A connection that is cut off without a word is given up after a minute and a half; the server gives up a seat that
// stops in the middle of a write scope, so that the others are not held up. A write scope is never open while a person
// is asked something.
constexpr auto connectOptions = "connect_timeout=5;application_name=oVELDRA;keepalives_idle=30;keepalives_interval=10;"
                                "keepalives_count=6;tcp_user_timeout=90000";
constexpr auto sessionSettings = "SET lock_timeout TO '10s'; SET idle_in_transaction_session_timeout TO '2min'; "
                                 "SET tcp_keepalives_idle TO 30; SET tcp_keepalives_interval TO 10; "
                                 "SET tcp_keepalives_count TO 6; SET jit TO off; SET search_path TO ";

template <typename Handle>
Handle* handleIn(const QVariant& handle)
{
    return handle.isValid() ? *static_cast<Handle* const*>(handle.constData()) : nullptr;
}

template <typename Number>
Number numberIn(std::string_view text)
{
    Number number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void addCell(std::string_view text, ColumnKind kind, RecordData& data)
{
    switch (kind) {
    case ColumnKind::Double:
        data.addReal(numberIn<double>(text));
        break;
    case ColumnKind::Integer:
    case ColumnKind::Boolean:
    case ColumnKind::SmallInteger:
        data.addInteger(numberIn<qint64>(text));
        break;
    default:
        data.addText(text);
        break;
    }
}

struct FreeResult
{
    void operator()(PGresult* result) const { libpq().clear(result); }
};
using Result = std::unique_ptr<PGresult, FreeResult>;

void addRows(const PGresult* result, RecordData& data)
{
    const int rows = libpq().ntuples(result);
    const auto columns = static_cast<int>(data.columnCount());
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (libpq().getisnull(result, row, column) != 0) {
                data.addNull();
                continue;
            }
            const auto length = static_cast<size_t>(libpq().getlength(result, row, column));
            addCell({libpq().getvalue(result, row, column), length}, data.kind(static_cast<size_t>(column)), data);
        }
        data.endRow();
    }
}

bool succeeded(const PGresult* result)
{
    const ExecStatusType status = libpq().resultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

/// The values of a run as texts that libpq takes: all in one buffer, each ended by a null character.
class TextValues
{
public:
    void fill(const Bindings& bindings)
    {
        m_buffer.clear();
        m_offsets.clear();
        for (const Bindings::Item& item : bindings.items()) {
            m_offsets.push_back(item.kind == Bindings::Kind::Null ? none : m_buffer.size());
            add(item, bindings);
        }
        m_values.clear();
        for (const size_t offset : m_offsets) {
            m_values.push_back(offset == none ? nullptr : m_buffer.data() + offset);
        }
    }

    [[nodiscard]] int count() const { return static_cast<int>(m_values.size()); }
    [[nodiscard]] const char* const* data() const { return m_values.data(); }

private:
    static constexpr size_t none = static_cast<size_t>(-1);

    void add(const Bindings::Item& item, const Bindings& bindings)
    {
        switch (item.kind) {
        case Bindings::Kind::Integer:
            addNumber(item.integer);
            break;
        case Bindings::Kind::Real:
            addNumber(item.real);
            break;
        case Bindings::Kind::Text:
            addText(bindings.text(item));
            break;
        default:
            break;
        }
    }

    template <typename Number>
    void addNumber(Number number)
    {
        std::array<char, 32> digits{};
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size() - 1, number);
        m_buffer.append(digits.data(), end.ptr);
        m_buffer += '\0';
    }

    void addText(std::string_view text)
    {
        if (text.find('\0') != std::string_view::npos) {
            throw storeError(Trouble::Other, u"un texto con un carácter nulo, que el servidor no admite"_s);
        }
        m_buffer += text;
        m_buffer += '\0';
    }

    std::string m_buffer;
    std::vector<size_t> m_offsets;
    std::vector<const char*> m_values;
};

QString quoted(const QString& name)
{
    QString result = name;
    result.replace(u'"', u"\"\""_s);
    return u'"' + result + u'"';
}

RuntimeError badAddress(const QString& url)
{
    return {5, u"No se reconoce la dirección de la base de datos: '%1'."_s.arg(url), u"oVELDRA.store"_s};
}

/// A column of the server's catalog; none when it is of a kind that the dialect does not know.
std::optional<dialect::Column> columnOf(const RecordData& rows, qsizetype row)
{
    const QString type = rows.variant(row, 2).toString();
    const int modifier = rows.variant(row, 3).toInt();
    const auto is = [&type](std::initializer_list<QStringView> names) {
        return std::find(names.begin(), names.end(), type) != names.end();
    };
    dialect::Column column{rows.variant(row, 1).toString(), ColumnKind::Text, 0};
    if (is({u"varchar", u"bpchar"})) {
        constexpr int headerLength = 4; // the server counts it in
        column.width = modifier > headerLength ? modifier - headerLength : 0;
    } else if (type == QLatin1StringView(dialect::PostgresPrinter::yesNoDomain)) {
        column.kind = ColumnKind::Boolean;
    } else if (type == u"int2") {
        column.kind = ColumnKind::SmallInteger;
    } else if (is({u"int4", u"int8"})) {
        column.kind = ColumnKind::Integer;
    } else if (is({u"float4", u"float8", u"numeric"})) {
        column.kind = ColumnKind::Double;
    } else if (is({u"date", u"timestamp"})) {
        column.kind = ColumnKind::Date;
    } else if (type != u"text") {
        return std::nullopt;
    }
    return column;
}

} // namespace

PostgresAddress PostgresAddress::of(const QString& url)
{
    const QUrl parsed(url, QUrl::TolerantMode); // blanks and accents need no escapes
    const QUrlQuery query(parsed);
    const auto item = [&query](const QString& key) { return query.queryItemValue(key, QUrl::FullyDecoded); };
    PostgresAddress address;
    address.host = query.hasQueryItem(u"host"_s) ? item(u"host"_s) : parsed.host(QUrl::FullyDecoded);
    bool portRead = true;
    address.port = query.hasQueryItem(u"port"_s) ? item(u"port"_s).toInt(&portRead) : parsed.port(0);
    address.user = query.hasQueryItem(u"user"_s) ? item(u"user"_s) : parsed.userName(QUrl::FullyDecoded);
    address.password = parsed.password(QUrl::FullyDecoded);
    address.database = parsed.path(QUrl::FullyDecoded).mid(1);
    if (query.hasQueryItem(u"schema"_s)) {
        address.schema = item(u"schema"_s);
    }
    const bool known = std::all_of(query.queryItems().cbegin(), query.queryItems().cend(), [](const auto& pair) {
        return pair.first == u"host" || pair.first == u"port" || pair.first == u"user" || pair.first == u"schema";
    });
    if (!parsed.isValid() || !known || !portRead || address.database.isEmpty() || address.schema.isEmpty()) {
        throw badAddress(url);
    }
    return address;
}

/// A statement that is prepared when it is first run, and again on every connection that takes the place of a broken
/// one.
class PostgresStatement final : public EngineStatement
{
public:
    PostgresStatement(PostgresEngine& engine, QByteArray sql)
        : m_engine(engine), m_sql(std::move(sql)), m_name("oveldra_" + QByteArray::number(++engine.m_named))
    {}

    ~PostgresStatement() override
    {
        if (m_prepared == m_engine.m_opened && m_engine.handle()) {
            const Result closed(libpq().exec(m_engine.handle(), QByteArray("DEALLOCATE " + m_name).constData()));
        }
    }

    PostgresStatement(const PostgresStatement&) = delete;
    PostgresStatement& operator=(const PostgresStatement&) = delete;

    qint64 execute(const Bindings& bindings) override
    {
        const Result result = run(bindings);
        return numberIn<qint64>(libpq().cmdTuples(result.get()));
    }

    void query(const Bindings& bindings, RecordData& data) override { addRows(run(bindings).get(), data); }

private:
    Result run(const Bindings& bindings)
    {
        m_values.fill(bindings);
        m_engine.ensureOpen();
        if (m_prepared != m_engine.m_opened) {
            check(Result(libpq().prepare(m_engine.handle(), m_name.constData(), m_sql.constData(), 0, nullptr)));
            m_prepared = m_engine.m_opened;
        }
        return check(Result(libpq().execPrepared(m_engine.handle(), m_name.constData(), m_values.count(),
                                                 m_values.data(), nullptr, nullptr, 0)));
    }

    Result check(Result result)
    {
        if (!succeeded(result.get())) {
            throw m_engine.failure(result.get());
        }
        return result;
    }

    PostgresEngine& m_engine;
    QByteArray m_sql;
    QByteArray m_name;
    TextValues m_values;
    int m_prepared = 0;
};

/// A cursor of the server's.
class PostgresCursor final : public EngineCursor
{
public:
    PostgresCursor(PostgresEngine& engine, const QByteArray& sql)
        : m_engine(engine), m_name("oveldra_" + QByteArray::number(++engine.m_named))
    {
        m_engine.run("DECLARE " + m_name + " NO SCROLL CURSOR FOR " + sql);
    }

    ~PostgresCursor() override
    {
        if (m_engine.inTransaction()) {
            const Result closed(libpq().exec(m_engine.handle(), QByteArray("CLOSE " + m_name).constData()));
        }
    }

    PostgresCursor(const PostgresCursor&) = delete;
    PostgresCursor& operator=(const PostgresCursor&) = delete;

    void fetch(RecordData& block, qsizetype most) override
    {
        const QByteArray text = "FETCH FORWARD " + QByteArray::number(most) + " FROM " + m_name;
        const Result result(libpq().exec(m_engine.handle(), text.constData()));
        if (!succeeded(result.get())) {
            throw m_engine.failure(result.get());
        }
        addRows(result.get(), block);
    }

private:
    PostgresEngine& m_engine;
    QByteArray m_name;
};

PostgresEngine::PostgresEngine(PostgresAddress address, Access access, Opening opening)
    : m_address(std::move(address)), m_access(access)
{
    static int connections = 0;
    m_name = u"oVELDRA.store.%1"_s.arg(++connections);
    if (!QSqlDatabase::isDriverAvailable(u"QPSQL"_s)) {
        throw storeError(Trouble::Other, u"falta el controlador de PostgreSQL de Qt, QPSQL"_s);
    }
    open(opening);
}

PostgresEngine::~PostgresEngine()
{
    close();
}

void PostgresEngine::open(Opening opening)
{
    m_database = QSqlDatabase::addDatabase(u"QPSQL"_s, m_name);
    m_database->setHostName(m_address.host);
    m_database->setPort(m_address.port > 0 ? m_address.port : -1);
    m_database->setUserName(m_address.user);
    m_database->setPassword(m_address.password);
    m_database->setDatabaseName(m_address.database);
    m_database->setConnectOptions(QString::fromLatin1(connectOptions));
    try {
        if (!m_database->open()) {
            throw serverGone(firstLine(m_database->lastError().databaseText()));
        }
        ++m_opened;
        // Notices are for people at a terminal; the host's error output is not ours to write to.
        libpq().setNoticeProcessor(
            handle(), [](void*, const char*) {}, nullptr);
        configure(opening);
    } catch (...) {
        close();
        throw;
    }
}

void PostgresEngine::configure(Opening opening)
{
    const QByteArray schema = quoted(m_address.schema).toUtf8();
    command(sessionSettings + schema);
    RecordData state(std::make_shared<ColumnKinds>(2, ColumnKind::Text));
    PostgresStatement(*this, "SELECT current_schema(), current_setting('server_encoding')").query({}, state);
    if (state.variant(0, 1).toString() != u"UTF8") {
        throw storeError(Trouble::Other, u"la base de datos del servidor no está en UTF-8"_s);
    }
    const bool present = state.variant(0, 0).isValid();
    if (!present && opening == Opening::Existing) {
        throw storeError(Trouble::NoSchema, m_address.schema);
    }
    if (!present) {
        command("CREATE SCHEMA " + schema);
    }
    if (m_access == Access::ReadOnly) {
        command("SET default_transaction_read_only TO on");
    }
}

void PostgresEngine::close()
{
    m_savepoints = 0;
    m_database.reset();
    QSqlDatabase::removeDatabase(m_name);
}

pg_conn* PostgresEngine::handle() const
{
    return m_database ? handleIn<PGconn>(m_database->driver()->handle()) : nullptr;
}

void PostgresEngine::ensureOpen()
{
    if (!m_database) {
        open(Opening::Existing);
    }
}

void PostgresEngine::command(const QByteArray& text)
{
    const Result result(libpq().exec(handle(), text.constData()));
    if (!succeeded(result.get())) {
        throw failure(result.get());
    }
}

RuntimeError PostgresEngine::failure(const pg_result* result)
{
    if (libpq().status(handle()) == CONNECTION_BAD || endsConnection(result)) {
        close();
        return serverGone(u"se cortó en medio de la operación"_s);
    }
    RuntimeError error = postgresError(result);
    if (m_savepoints == 0) {
        rollback();
    }
    return error;
}

dialect::Catalog PostgresEngine::catalog()
{
    RecordData columns(std::make_shared<ColumnKinds>(
        ColumnKinds{ColumnKind::Text, ColumnKind::Text, ColumnKind::Text, ColumnKind::Integer}));
    prepare("SELECT c.relname, a.attname, t.typname, a.atttypmod FROM pg_class c "
            "JOIN pg_namespace n ON n.oid = c.relnamespace AND n.nspname = current_schema() "
            "JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped "
            "JOIN pg_type t ON t.oid = a.atttypid "
            "WHERE c.relkind IN ('r', 'p') "
            "ORDER BY c.oid, a.attnum")
        ->query({}, columns);
    dialect::Catalog result;
    const QString rowMark = QString::fromLatin1(dialect::PostgresPrinter::rowMark).remove(u'"');
    for (qsizetype row = 0; row < columns.rows(); ++row) {
        const QString table = columns.variant(row, 0).toString();
        if (result.tables.empty() || result.tables.back().name != table) {
            result.tables.push_back({table, {}, {}, dialect::PostgresPrinter::placeMark});
        }
        if (columns.variant(row, 1).toString() == rowMark) {
            result.tables.back().rowMark = dialect::PostgresPrinter::rowMark;
        } else if (const std::optional<dialect::Column> column = columnOf(columns, row)) {
            result.tables.back().columns.push_back(*column);
        }
    }
    return result;
}

std::unique_ptr<EngineStatement> PostgresEngine::prepare(const QByteArray& sql)
{
    return std::make_unique<PostgresStatement>(*this, sql);
}

void PostgresEngine::run(const QByteArray& text)
{
    ensureOpen();
    command(text);
}

std::unique_ptr<EngineCursor> PostgresEngine::openCursor(const QByteArray& sql)
{
    return std::make_unique<PostgresCursor>(*this, sql);
}

void PostgresEngine::begin()
{
    // Whoever else writes to the schema waits; the lock is let go when the transaction ends, however it does.
    run("BEGIN; SELECT pg_advisory_xact_lock(" + dialect::PostgresPrinter::lockKey("current_schema()") + ')');
}

void PostgresEngine::beginSnapshot()
{
    run("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
}

void PostgresEngine::commit()
{
    run("COMMIT");
}

void PostgresEngine::rollback() noexcept
{
    m_savepoints = 0;
    if (inTransaction()) {
        const Result result(libpq().exec(handle(), "ROLLBACK"));
    }
}

bool PostgresEngine::inTransaction() const
{
    const PGTransactionStatusType status = libpq().transactionStatus(handle()); // PQTRANS_UNKNOWN without one
    return status == PQTRANS_INTRANS || status == PQTRANS_INERROR;
}

void PostgresEngine::atomically(const std::function<void()>& body)
{
    if (!inTransaction()) {
        run("BEGIN");
        try {
            body();
            commit();
        } catch (...) {
            rollback();
            throw;
        }
        return;
    }
    run("SAVEPOINT oveldra");
    ++m_savepoints;
    try {
        body();
        run("RELEASE oveldra");
        --m_savepoints;
    } catch (...) {
        // Without a savepoint left the connection or the whole transaction is gone.
        if (m_savepoints > 0) {
            --m_savepoints;
            run("ROLLBACK TO oveldra; RELEASE oveldra");
        }
        throw;
    }
}

} // namespace oVELDRA::store
