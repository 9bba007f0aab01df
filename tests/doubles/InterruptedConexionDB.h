#pragma once

#include <oVELDRA/ConexionDB.h>

#include <functional>
#include <memory>
#include <utility>

namespace oVELDRA::doubles {

/// A real connection that something happens to: before each statement a hook is called with the statement's number
/// (the first is 1). What the hook throws is that statement's failure.
class InterruptedConexionDB final : public ConexionDB
{
public:
    using Hook = std::function<void(int statement)>;

    InterruptedConexionDB(std::shared_ptr<ConexionDB> real, Hook hook)
        : m_real(std::move(real)), m_hook(std::move(hook))
    {}

    [[nodiscard]] int statements() const { return m_statements; }

    void setSql(const QString& text) override { m_real->setSql(text); }

    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override
    {
        try {
            m_hook(++m_statements);
        } catch (const RuntimeError& error) {
            m_failure = error;
            ok = false;
            return nullptr;
        }
        std::unique_ptr<Recordset> rows = m_real->openRecordset(ok);
        m_failure = m_real->lastError();
        return rows;
    }

    qint64 execute() override
    {
        m_hook(++m_statements);
        return m_real->execute();
    }

    [[nodiscard]] RuntimeError lastError() const override { return m_failure; }
    [[nodiscard]] std::unique_ptr<WriteBurst> beginBurst() override { return m_real->beginBurst(); }

private:
    std::shared_ptr<ConexionDB> m_real;
    Hook m_hook;
    int m_statements = 0;
    RuntimeError m_failure{91};
};

} // namespace oVELDRA::doubles
