#include <oVELDRA/ConexionDB.h>

// The virtual members that have a default, and with the destructors the one place of each class's type information.

namespace oVELDRA {

Recordset::~Recordset() = default;

WriteBurst::~WriteBurst() = default;

void WriteBurst::commit() {}

ConexionDB::~ConexionDB() = default;

RuntimeError ConexionDB::lastError() const
{
    return RuntimeError(91);
}

std::unique_ptr<WriteBurst> ConexionDB::beginBurst()
{
    return std::make_unique<WriteBurst>();
}

} // namespace oVELDRA
