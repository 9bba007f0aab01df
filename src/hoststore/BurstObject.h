#pragma once

#include <oVELDRA/ConexionDB.h>

#include <automation/Object.h>
#include <memory>
#include <oVELDRAStore.h>

namespace oVELDRA::hoststore {

/// A write scope for automation clients, which ends when it is released.
class BurstObject final : public automation::Object<::_WriteBurst>
{
public:
    /// Keeps the connection alive, which the scope belongs to.
    BurstObject(std::shared_ptr<ConexionDB> connection, std::unique_ptr<WriteBurst> burst);

    HRESULT STDMETHODCALLTYPE Commit() override;

private:
    std::shared_ptr<ConexionDB> m_connection;
    std::unique_ptr<WriteBurst> m_burst;
};

} // namespace oVELDRA::hoststore
