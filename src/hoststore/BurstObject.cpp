#include "BurstObject.h"

#include <utility>

namespace oVELDRA::hoststore {

BurstObject::BurstObject(std::shared_ptr<ConexionDB> connection, std::unique_ptr<WriteBurst> burst)
    : m_connection(std::move(connection)), m_burst(std::move(burst))
{}

HRESULT BurstObject::Commit()
{
    return guarded([&] { m_burst->commit(); });
}

} // namespace oVELDRA::hoststore
