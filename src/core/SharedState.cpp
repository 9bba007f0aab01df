#include "SharedState.h"

namespace oVELDRA::core {

namespace {

class UnconnectedConexion final : public ConexionDB
{
public:
    void setSql(const QString& /*text*/) override {}

    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override
    {
        ok = false;
        return nullptr;
    }

    qint64 execute() override { throw lastError(); }

    [[nodiscard]] RuntimeError lastError() const override { return RuntimeError(3709); }
};

} // namespace

ConexionDB& ConnectionSlot::operator*()
{
    if (m_connection) {
        return *m_connection;
    }
    if (!m_unconnected) {
        m_unconnected = std::make_unique<UnconnectedConexion>();
    }
    return *m_unconnected;
}

} // namespace oVELDRA::core
