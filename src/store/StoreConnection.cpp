#include "StoreConnection.h"

#include "Engines.h"
#include "RowWork.h"
#include "StoreError.h"

#include <dialect/Parser.h>
#include <dialect/StatementError.h>
#include <dialect/TextComparison.h>

#include <algorithm>

namespace oVELDRA::store {

using namespace Qt::StringLiterals;

namespace {

// The screens need a few hundred shapes at most. Past this bound somebody sends ever new ones: start over.
constexpr qsizetype mostPlans = 1000;

/// A row of a result, for the expressions of the select list.
class FetchedRow final : public dialect::RowSource
{
public:
    FetchedRow(const dialect::Plan& plan, const RecordData& data) : m_plan(plan), m_data(data) {}

    void moveTo(qsizetype row) { m_row = row; }

    [[nodiscard]] dialect::Value column(int index) const override
    {
        return cell([index](const dialect::Fetched& fetched) { return fetched.column == index; });
    }

    [[nodiscard]] dialect::Value aggregate(const dialect::Expr& expr) const override
    {
        return cell([&expr](const dialect::Fetched& fetched) { return fetched.expr == &expr; });
    }

private:
    template <typename Test>
    [[nodiscard]] dialect::Value cell(Test test) const
    {
        const auto found = std::find_if(m_plan.fetched.begin(), m_plan.fetched.end(), test);
        return m_data.value(m_row, static_cast<size_t>(found - m_plan.fetched.begin()));
    }

    const dialect::Plan& m_plan;
    const RecordData& m_data;
    qsizetype m_row = 0;
};

template <typename Columns>
std::shared_ptr<const ColumnKinds> kindsOf(const Columns& columns)
{
    auto kinds = std::make_shared<ColumnKinds>();
    kinds->reserve(columns.size());
    for (const auto& column : columns) {
        kinds->push_back(column.kind);
    }
    return kinds;
}

/// A text with a buffer of its own: the next statement writes over that of the shape.
QString ownCopy(const QString& text)
{
    return QString(text.constData(), text.size());
}

/// In a statement a text that cannot be converted is a mismatch of the statement's types.
RuntimeError asStatementError(const RuntimeError& error)
{
    return error.number() == 13 ? dialect::typeMismatch() : error;
}

} // namespace

/// The scope that beginBurst() hands out. The transaction starts with the first statement inside it.
class StoreBurst final : public WriteBurst
{
public:
    explicit StoreBurst(std::shared_ptr<StoreConnection> connection) : m_connection(std::move(connection))
    {
        m_connection->enterBurst();
    }

    ~StoreBurst() override
    {
        try {
            commit();
        } catch (const RuntimeError&) {
            // An error is being reported already; what could not be kept is gone as a whole.
        }
    }

    StoreBurst(const StoreBurst&) = delete;
    StoreBurst& operator=(const StoreBurst&) = delete;

    void commit() override
    {
        if (const auto connection = std::exchange(m_connection, nullptr)) {
            connection->leaveBurst();
        }
    }

private:
    std::shared_ptr<StoreConnection> m_connection;
};

StoreConnection::StoreConnection(std::unique_ptr<EngineConnection> engine, Access access)
    : m_engine(std::move(engine)), m_access(access)
{
    m_catalog = tablesOf(*m_engine);
}

StoreConnection::~StoreConnection() = default;

std::unique_ptr<Recordset> StoreConnection::openRecordset(bool& ok)
{
    ok = false;
    try {
        std::unique_ptr<Recordset> result = runQuery();
        ok = true;
        return result;
    } catch (const RuntimeError& error) {
        m_lastError = asStatementError(error);
    }
    return nullptr;
}

qint64 StoreConnection::execute()
{
    try {
        return runCommand();
    } catch (const RuntimeError& error) {
        m_lastError = asStatementError(error);
    }
    throw RuntimeError(m_lastError);
}

std::unique_ptr<WriteBurst> StoreConnection::beginBurst()
{
    if (m_access == Access::ReadOnly) {
        return ConexionDB::beginBurst();
    }
    return std::make_unique<StoreBurst>(shared_from_this());
}

std::unique_ptr<Recordset> StoreConnection::runQuery()
{
    Prepared& prepared = preparedStatement();
    const dialect::Plan& plan = *prepared.plan;
    if (!plan.isQuery()) {
        throw dialect::syntaxReason(u"la instrucción", u"no es una consulta que devuelva registros"_s);
    }
    ensureTransaction();
    EngineStatement& statement = statementFor(prepared, bind(prepared));
    RecordData data(prepared.fetchedKinds);
    statement.query(m_bindings, data);
    if (plan.here) {
        data = RowWork(plan, m_literals, *m_separators).result(data, prepared.resultKinds);
    } else if (!plan.direct) {
        data = computed(prepared, data);
    }
    return std::make_unique<StaticRecordset>(prepared.names, std::move(data));
}

qint64 StoreConnection::runCommand()
{
    Prepared& prepared = preparedStatement();
    const dialect::Plan& plan = *prepared.plan;
    if (plan.isQuery()) {
        throw dialect::syntaxReason(u"la instrucción", u"no se puede ejecutar una consulta de selección"_s);
    }
    if (m_access == Access::ReadOnly) {
        throw storeError(Trouble::ReadOnly);
    }
    ensureTransaction();
    const dialect::Matching matching = bind(prepared);
    EngineStatement& statement = statementFor(prepared, matching);
    if (plan.here) {
        return executeHere(prepared, statement);
    }
    if (writesUnindexedKey(plan, plan.texts[static_cast<size_t>(matching)])) {
        return executeWithKeyCheck(plan, statement);
    }
    if (plan.writtenKey.empty() || !m_engine->inTransaction() || m_engine->survivesErrors()) {
        return statement.execute(m_bindings);
    }
    // A duplicate key is an error that the rules count on: what was done before it must stay.
    qint64 affected = 0;
    m_engine->atomically([&] { affected = statement.execute(m_bindings); });
    return affected;
}

StoreConnection::Prepared& StoreConnection::preparedStatement()
{
    m_separators.emplace();
    if (m_latest && dialect::literalsOfShape(m_sql, m_latestShape, m_literals)) {
        return *m_latest;
    }
    liftLiterals();
    const auto known = m_plans.constFind(m_shape);
    std::shared_ptr<Prepared> prepared = known == m_plans.cend() ? nullptr : *known;
    if (!prepared) {
        prepared = std::make_shared<Prepared>(makePrepared());
        if (m_plans.size() >= mostPlans) {
            m_plans.clear();
        }
        m_plans.insert(ownCopy(m_shape), prepared);
    }
    m_latestShape = m_shape;
    m_latest = std::move(prepared);
    return *m_latest;
}

void StoreConnection::liftLiterals()
{
    try {
        dialect::liftLiterals(m_sql, m_shape, m_literals);
    } catch (const RuntimeError&) {
        // Lifting stops at what is no token, often far behind the real mistake: an apostrophe in a text is only missed
        // at the end. Reading the statement finds the first place that does not fit.
        static_cast<void>(dialect::parse(m_sql));
        throw;
    }
}

StoreConnection::Prepared StoreConnection::makePrepared()
{
    Prepared prepared;
    try {
        prepared.plan = dialect::makePlan(m_sql, m_catalog);
    } catch (const RuntimeError& error) {
        if (error.number() != dialect::unknownTableNumber && error.number() != dialect::unknownColumnNumber) {
            throw;
        }
        // Somebody may have made the table or column since the catalog was read.
        m_catalog = tablesOf(*m_engine);
        prepared.plan = dialect::makePlan(m_sql, m_catalog);
    }
    m_engine->printer().print(*prepared.plan);
    auto names = std::make_shared<ColumnNames>();
    for (const dialect::ResultColumn& column : prepared.plan->columns) {
        names->push_back(column.name);
    }
    prepared.names = std::move(names);
    prepared.fetchedKinds = prepared.plan->here ? RowWork::kindsOf(*prepared.plan) : kindsOf(prepared.plan->fetched);
    prepared.resultKinds = kindsOf(prepared.plan->columns);
    return prepared;
}

dialect::Matching StoreConnection::bind(Prepared& prepared)
{
    for (const dialect::Matching matching : {dialect::Matching::Plain, dialect::Matching::Exact}) {
        const dialect::EngineText& text = prepared.plan->texts[static_cast<size_t>(matching)];
        if (bindParameters(text, m_literals, *m_separators, m_bindings)) {
            return matching;
        }
    }
    throw storeError(Trouble::Other, u"valores que ninguna forma de la consulta admite"_s);
}

EngineStatement& StoreConnection::statementFor(Prepared& prepared, dialect::Matching matching)
{
    std::unique_ptr<EngineStatement>& statement = prepared.statements[static_cast<size_t>(matching)];
    if (!statement) {
        statement = m_engine->prepare(prepared.plan->texts[static_cast<size_t>(matching)].sql);
    }
    return *statement;
}

RecordData StoreConnection::computed(const Prepared& prepared, const RecordData& fetched) const
{
    RecordData result(prepared.resultKinds);
    FetchedRow row(*prepared.plan, fetched);
    const dialect::Surroundings surroundings{&m_literals, &*m_separators, &row};
    for (qsizetype i = 0; i < fetched.rows(); ++i) {
        row.moveTo(i);
        for (const dialect::ResultColumn& column : prepared.plan->columns) {
            if (column.expr) {
                result.addValue(dialect::evaluate(*column.expr, surroundings));
            } else {
                result.addCell(fetched, i, static_cast<size_t>(column.fetched));
            }
        }
        result.endRow();
    }
    return result;
}

/// Engines' unique indexes know which ASCII letters are the same, not that ñ and Ñ are.
bool StoreConnection::writesUnindexedKey(const dialect::Plan& plan, const dialect::EngineText& text) const
{
    if (plan.writtenKey.empty() || m_engine->printer().duplicateKeys(plan.table).isEmpty()) {
        return false;
    }
    if (plan.writtenKey.size() < plan.table.key.size()) {
        return true; // the rest of the key stands in the rows, with any letters
    }
    for (size_t i = 0; i < text.parameters.size(); ++i) {
        const dialect::Parameter& parameter = text.parameters[i];
        const dialect::Column* const target = parameter.computation ? parameter.computation->target : parameter.column;
        const bool key = target && std::any_of(plan.writtenKey.begin(), plan.writtenKey.end(), [&](int column) {
                             return target == &plan.table.columns[static_cast<size_t>(column)];
                         });
        const std::string_view written = m_bindings.text(m_bindings.items()[i]);
        const bool unindexed = parameter.computation ||
                               std::any_of(written.begin(), written.end(), [](char c) { return (c & 0x80) != 0; });
        if (key && unindexed) {
            return true;
        }
    }
    return false;
}

qint64 StoreConnection::executeWithKeyCheck(const dialect::Plan& plan, EngineStatement& statement)
{
    qint64 affected = 0;
    m_engine->atomically([&] {
        affected = statement.execute(m_bindings);
        RecordData duplicates(std::make_shared<ColumnKinds>(1, dialect::ColumnKind::Integer));
        m_engine->prepare(m_engine->printer().duplicateKeys(plan.table))->query({}, duplicates);
        if (duplicates.rows() > 0) {
            throw storeError(Trouble::DuplicateKey, plan.table.name);
        }
    });
    return affected;
}

qint64 StoreConnection::executeHere(Prepared& prepared, EngineStatement& rows)
{
    qint64 affected = 0;
    m_engine->atomically([&] {
        RecordData found(prepared.fetchedKinds);
        rows.query(m_bindings, found);
        if (!prepared.rowStatement) {
            prepared.rowStatement = m_engine->prepare(prepared.plan->here->write);
        }
        affected = RowWork(*prepared.plan, m_literals, *m_separators).write(found, *prepared.rowStatement);
    });
    return affected;
}

void StoreConnection::ensureTransaction()
{
    if (m_burstDepth == 0 || m_engine->inTransaction()) {
        return;
    }
    if (m_transactionBegun) {
        m_transactionLost = true; // the engine gave it up: what was done in it is gone
    }
    m_engine->begin();
    m_transactionBegun = true;
}

void StoreConnection::leaveBurst()
{
    if (--m_burstDepth > 0) {
        return;
    }
    const bool begun = std::exchange(m_transactionBegun, false);
    const bool lost = std::exchange(m_transactionLost, false) || (begun && !m_engine->inTransaction());
    if (m_engine->inTransaction()) {
        try {
            m_engine->commit();
        } catch (const RuntimeError&) {
            m_engine->rollback();
            throw;
        }
    }
    if (lost) {
        throw storeError(Trouble::Other, u"se perdieron los cambios de la operación"_s);
    }
}

} // namespace oVELDRA::store
