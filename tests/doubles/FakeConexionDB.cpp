#include "FakeConexionDB.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::doubles {

namespace {

class FakeRecordset final : public Recordset
{
public:
    FakeRecordset(QStringList columns, QList<FakeConexionDB::Row> rows)
        : m_columns(std::move(columns)), m_rows(std::move(rows))
    {}

    [[nodiscard]] bool atEof() const override { return m_position >= m_rows.size(); }

    void moveNext() override
    {
        if (atEof()) {
            throw RuntimeError(3021);
        }
        ++m_position;
    }

    void moveFirst() override
    {
        if (m_rows.isEmpty()) {
            throw RuntimeError(3021);
        }
        m_position = 0;
    }

    [[nodiscard]] qsizetype recordCount() const override { return m_rows.size(); }

    [[nodiscard]] QVariant value(QStringView field) const override
    {
        qsizetype column = 0;
        while (column < m_columns.size() && field.compare(m_columns.at(column), Qt::CaseInsensitive) != 0) {
            ++column;
        }
        if (column == m_columns.size()) {
            throw RuntimeError(3265);
        }
        if (atEof()) {
            throw RuntimeError(3021);
        }
        return m_rows.at(m_position).value(column);
    }

private:
    QStringList m_columns;
    QList<FakeConexionDB::Row> m_rows;
    qsizetype m_position = 0;
};

/// The answer whose turn it is for the longest prefix of `statement`, or nothing.
template <typename Answer>
std::optional<Answer> take(QMap<QString, QList<Answer>>& script, const QString& statement)
{
    auto best = script.end();
    for (auto entry = script.begin(); entry != script.end(); ++entry) {
        if (statement.startsWith(entry.key()) && (best == script.end() || entry.key().size() > best.key().size())) {
            best = entry;
        }
    }
    if (best == script.end()) {
        return std::nullopt;
    }
    return best->size() > 1 ? best->takeFirst() : best->constFirst();
}

RuntimeError unscripted(QStringView kind, const QString& statement)
{
    return {5, u"No scripted answer for the %1: %2"_s.arg(kind, statement), u"FakeConexionDB"_s};
}

} // namespace

class FakeConexionDB::Burst final : public WriteBurst
{
public:
    explicit Burst(FakeConexionDB& connection) : m_connection(connection) { ++m_connection.m_depth; }
    Burst(const Burst&) = delete;
    Burst& operator=(const Burst&) = delete;
    ~Burst() override
    {
        if (!m_ended) {
            end(u"<end>"_s);
        }
    }

    void commit() override
    {
        if (m_ended) {
            return;
        }
        const bool outermost = m_connection.m_depth == 1;
        end(u"<commit>"_s);
        if (!outermost) {
            return;
        }
        if (const auto failure = std::exchange(m_connection.m_commitFailure, std::nullopt)) {
            throw RuntimeError(*failure);
        }
        ++m_connection.m_commits;
    }

private:
    void end(const QString& event)
    {
        m_ended = true;
        if (--m_connection.m_depth == 0) {
            m_connection.m_events.append(event);
        }
    }

    FakeConexionDB& m_connection;
    bool m_ended = false;
};

void FakeConexionDB::willGiveRows(const QString& prefix, const QStringList& columns, const QList<Row>& rows)
{
    m_queries[prefix].append(Rows{columns, rows});
}

void FakeConexionDB::willNotOpen(const QString& prefix, const RuntimeError& why)
{
    m_queries[prefix].append(why);
}

void FakeConexionDB::willAffect(const QString& prefix, qint64 records)
{
    m_commands[prefix].append(records);
}

void FakeConexionDB::willThrow(const QString& prefix, const RuntimeError& error)
{
    m_commands[prefix].append(error);
}

void FakeConexionDB::failStatement(qsizetype ordinal, const RuntimeError& error)
{
    m_failures.insert(m_run + ordinal, error);
}

void FakeConexionDB::clear()
{
    m_statements.clear();
    m_events.clear();
    m_bursts = 0;
    m_commits = 0;
}

std::optional<RuntimeError> FakeConexionDB::noteStatement()
{
    m_statements.append(m_sql);
    m_events.append(m_sql);
    ++m_run;
    const auto failure = m_failures.constFind(m_run);
    return failure == m_failures.constEnd() ? std::nullopt : std::optional(*failure);
}

std::unique_ptr<Recordset> FakeConexionDB::openRecordset(bool& ok)
{
    ok = false;
    if (const auto failure = noteStatement()) {
        m_lastError = *failure;
        return nullptr;
    }
    const auto answer = take(m_queries, m_sql);
    if (!answer) {
        m_lastError = unscripted(u"query", m_sql);
        return nullptr;
    }
    if (const auto* why = std::get_if<RuntimeError>(&*answer)) {
        m_lastError = *why;
        return nullptr;
    }
    ok = true;
    const auto& [columns, rows] = std::get<Rows>(*answer);
    return std::make_unique<FakeRecordset>(columns, rows);
}

qint64 FakeConexionDB::execute()
{
    if (const auto failure = noteStatement()) {
        m_lastError = *failure;
        throw RuntimeError(*failure);
    }
    const auto answer = take(m_commands, m_sql);
    const auto* records = answer ? std::get_if<qint64>(&*answer) : nullptr;
    if (records == nullptr) {
        m_lastError = answer ? std::get<RuntimeError>(*answer) : unscripted(u"command", m_sql);
        throw RuntimeError(m_lastError);
    }
    return *records;
}

std::unique_ptr<WriteBurst> FakeConexionDB::beginBurst()
{
    if (m_depth == 0) {
        ++m_bursts;
        m_events.append(u"<begin>"_s);
    }
    return std::make_unique<Burst>(*this);
}

} // namespace oVELDRA::doubles
