#pragma once

#include <store/Engines.h>

#include <memory>

namespace oVELDRA::data {

/// A database opened to be read as it is at one moment, whatever others write meanwhile. Nothing can be written.
class Snapshot
{
public:
    /// Throws RuntimeError as store::openEngine() does.
    explicit Snapshot(const QString& url) : m_engine(store::openEngine(url, Access::ReadOnly, store::Opening::Existing))
    {
        m_engine->beginSnapshot();
        m_tables = store::tablesOf(*m_engine);
    }
    ~Snapshot() { m_engine->rollback(); }
    Snapshot(const Snapshot&) = delete;
    Snapshot& operator=(const Snapshot&) = delete;

    [[nodiscard]] store::EngineConnection& engine() { return *m_engine; }
    [[nodiscard]] const dialect::Catalog& tables() const { return m_tables; }

private:
    std::unique_ptr<store::EngineConnection> m_engine;
    dialect::Catalog m_tables;
};

} // namespace oVELDRA::data
