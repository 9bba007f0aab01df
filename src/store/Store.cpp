#include "Engines.h"
#include "StoreConnection.h"

#include <oVELDRA/Store.h>

namespace oVELDRA {

std::shared_ptr<ConexionDB> connectStore(const QString& url, Access access)
{
    return std::make_shared<store::StoreConnection>(store::openEngine(url, access, store::Opening::Existing), access);
}

std::shared_ptr<ConexionDB> createStore(const QString& url, Database schema)
{
    std::unique_ptr<store::EngineConnection> engine = store::openEngine(url, Access::ReadWrite, store::Opening::Create);
    store::createTables(*engine, schema);
    return std::make_shared<store::StoreConnection>(std::move(engine), Access::ReadWrite);
}

} // namespace oVELDRA
