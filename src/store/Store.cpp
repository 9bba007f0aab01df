#include "Schema.h"
#include "StoreConnection.h"
#include "StoreError.h"
#include "sqlite/SqliteEngine.h"

#include <oVELDRA/Store.h>

namespace oVELDRA {

using namespace Qt::StringLiterals;

namespace {

/// The file of a `sqlite:` URL. Error 5 for any other URL.
QString sqliteFile(const QString& url)
{
    const QString scheme = u"sqlite:"_s;
    if (!url.startsWith(scheme, Qt::CaseInsensitive) || url.size() == scheme.size()) {
        throw RuntimeError(5, u"No se reconoce la dirección de la base de datos: '%1'."_s.arg(url), u"oVELDRA.store"_s);
    }
    return url.mid(scheme.size());
}

void createTables(store::SqliteEngine& engine, Database schema)
{
    const dialect::Catalog present = engine.catalog();
    engine.atomically([&] {
        for (const store::TableSchema& table : store::schemaOf(schema)) {
            if (present.find(table.table.name)) {
                throw store::storeError(store::Trouble::AlreadyThere, table.table.name);
            }
            for (const QByteArray& command : engine.printer().createTable(table.table, table.indexes)) {
                engine.run(command.constData());
            }
        }
    });
}

} // namespace

std::shared_ptr<ConexionDB> connectStore(const QString& url, Access access)
{
    using store::SqliteEngine;
    return std::make_shared<store::StoreConnection>(
        std::make_unique<SqliteEngine>(sqliteFile(url), access, SqliteEngine::Opening::Existing), access);
}

std::shared_ptr<ConexionDB> createStore(const QString& url, Database schema)
{
    using store::SqliteEngine;
    auto engine = std::make_unique<SqliteEngine>(sqliteFile(url), Access::ReadWrite, SqliteEngine::Opening::Create);
    createTables(*engine, schema);
    return std::make_shared<store::StoreConnection>(std::move(engine), Access::ReadWrite);
}

} // namespace oVELDRA
