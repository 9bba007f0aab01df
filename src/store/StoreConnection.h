#pragma once

#include "Engine.h"
#include "StaticRecordset.h"

#include <oVELDRA/ConexionDB.h>
#include <oVELDRA/Store.h>

#include <QHash>

#include <array>
#include <memory>

namespace oVELDRA::store {

/// The database-access object over an engine: it reads the dialect, keeps the plans of the statements it has seen and
/// runs them.
class StoreConnection final : public ConexionDB, public std::enable_shared_from_this<StoreConnection>
{
public:
    StoreConnection(std::unique_ptr<EngineConnection> engine, Access access);
    ~StoreConnection() override;

    void setSql(const QString& text) override { m_sql = text; }
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override;
    qint64 execute() override;
    [[nodiscard]] RuntimeError lastError() const override { return m_lastError; }
    [[nodiscard]] std::unique_ptr<WriteBurst> beginBurst() override;

    [[nodiscard]] EngineConnection& engine() { return *m_engine; }

private:
    friend class StoreBurst;

    /// A plan with its statements, prepared when first run.
    struct Prepared
    {
        std::unique_ptr<dialect::Plan> plan;
        std::shared_ptr<const ColumnNames> names;
        std::shared_ptr<const ColumnKinds> fetchedKinds;
        std::shared_ptr<const ColumnKinds> resultKinds;
        std::array<std::unique_ptr<EngineStatement>, 2> statements;
        std::unique_ptr<EngineStatement> rowStatement; ///< writes one row, for what is worked out here
    };

    [[nodiscard]] std::unique_ptr<Recordset> runQuery();
    qint64 runCommand();
    /// The plan of the statement to run; its literals are lifted out first.
    [[nodiscard]] Prepared& preparedStatement();
    void liftLiterals();
    [[nodiscard]] Prepared makePrepared();
    /// Works out the parameters and picks the text that can do with them.
    [[nodiscard]] dialect::Matching bind(Prepared& prepared);
    [[nodiscard]] EngineStatement& statementFor(Prepared& prepared, dialect::Matching matching);
    [[nodiscard]] RecordData computed(const Prepared& prepared, const RecordData& fetched) const;
    [[nodiscard]] bool writesUnindexedKey(const dialect::Plan& plan, const dialect::EngineText& text) const;
    qint64 executeWithKeyCheck(const dialect::Plan& plan, EngineStatement& statement);
    qint64 executeHere(Prepared& prepared, EngineStatement& rows);

    void enterBurst() { ++m_burstDepth; }
    void leaveBurst();
    void ensureTransaction();

    std::unique_ptr<EngineConnection> m_engine;
    Access m_access;
    QString m_sql;
    RuntimeError m_lastError{0, {}};
    dialect::Catalog m_catalog;

    QString m_shape;
    dialect::Literals m_literals;
    std::optional<dialect::LazySeparators> m_separators;
    Bindings m_bindings;
    QHash<QString, std::shared_ptr<Prepared>> m_plans;
    QString m_latestShape; ///< statements come in runs of one shape: a look here saves reading them
    std::shared_ptr<Prepared> m_latest;

    int m_burstDepth = 0;
    bool m_transactionBegun = false;
    bool m_transactionLost = false;
};

} // namespace oVELDRA::store
