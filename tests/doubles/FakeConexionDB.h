#pragma once

#include <oVELDRA/ConexionDB.h>

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <variant>

namespace oVELDRA::doubles {

/// A connection without a database: it notes the statements and answers them from a script.
///
/// An answer belongs to all statements that begin with its prefix (letter for letter); the longest matching prefix
/// decides. Several answers for one prefix are given in turn, and the last one stays. The prefix "" thus catches
/// everything else. A statement that no prefix matches, or a query scripted as a command and the other way round,
/// is an error that quotes it: nothing passes unnoticed.
///
/// It must outlive the write scopes it hands out.
class FakeConexionDB final : public ConexionDB
{
public:
    using Row = QVariantList;

    // --- script ---

    /// Queries: these rows. A Null field is an invalid QVariant. No rows: an empty result.
    void willGiveRows(const QString& prefix, const QStringList& columns, const QList<Row>& rows = {});
    /// Queries: cannot be opened, for this reason.
    void willNotOpen(const QString& prefix, const RuntimeError& why);
    /// Commands: this number of records affected.
    void willAffect(const QString& prefix, qint64 records);
    /// Commands: thrown.
    void willThrow(const QString& prefix, const RuntimeError& error);
    /// The `ordinal`-th statement from now on (1 is the next), query or command, fails whatever its script says.
    void failStatement(qsizetype ordinal, const RuntimeError& error);
    /// The next commit of an outermost write scope fails.
    void failCommit(const RuntimeError& error) { m_commitFailure = error; }

    // --- what happened ---

    /// The texts that were run, in order.
    [[nodiscard]] const QStringList& statements() const { return m_statements; }
    /// The same with "<begin>", "<commit>" and "<end>" (left without commit) of the outermost write scopes in between.
    [[nodiscard]] const QStringList& events() const { return m_events; }
    [[nodiscard]] int bursts() const { return m_bursts; }
    /// Successful commits of outermost write scopes.
    [[nodiscard]] int commits() const { return m_commits; }
    [[nodiscard]] bool burstIsOpen() const { return m_depth > 0; }
    /// Forgets what happened; the script stays.
    void clear();

    // --- the connection ---

    void setSql(const QString& text) override { m_sql = text; }
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override;
    qint64 execute() override;
    [[nodiscard]] RuntimeError lastError() const override { return m_lastError; }
    [[nodiscard]] std::unique_ptr<WriteBurst> beginBurst() override;

private:
    struct Rows
    {
        QStringList columns;
        QList<Row> rows;
    };
    using QueryAnswer = std::variant<Rows, RuntimeError>;
    using CommandAnswer = std::variant<qint64, RuntimeError>;
    class Burst;

    [[nodiscard]] std::optional<RuntimeError> noteStatement();

    QString m_sql;
    QMap<QString, QList<QueryAnswer>> m_queries;
    QMap<QString, QList<CommandAnswer>> m_commands;
    QMap<qsizetype, RuntimeError> m_failures; // by the statement's number since construction
    std::optional<RuntimeError> m_commitFailure;
    RuntimeError m_lastError{91};
    QStringList m_statements;
    QStringList m_events;
    qsizetype m_run = 0;
    int m_depth = 0;
    int m_bursts = 0;
    int m_commits = 0;
};

} // namespace oVELDRA::doubles
