#include "Engines.h"

#include "Schema.h"
#include "StoreError.h"
#include "sqlite/SqliteEngine.h"
#ifdef OVELDRA_POSTGRESQL
#include "postgres/PostgresEngine.h"
#endif

namespace oVELDRA::store {

using namespace Qt::StringLiterals;

std::unique_ptr<EngineConnection> openEngine(const QString& url, Access access, Opening opening)
{
    const QString file = u"sqlite:"_s;
    if (url.startsWith(file, Qt::CaseInsensitive) && url.size() > file.size()) {
        return std::make_unique<SqliteEngine>(url.mid(file.size()), access, opening);
    }
    if (url.startsWith(u"postgresql:"_s, Qt::CaseInsensitive)) {
#ifdef OVELDRA_POSTGRESQL
        return std::make_unique<PostgresEngine>(PostgresAddress::of(url), access, opening);
#else
        throw RuntimeError(5, u"Esta versión del componente no trae la conexión con servidores: '%1'."_s.arg(url),
                           u"oVELDRA.store"_s);
#endif
    }
    throw RuntimeError(5, u"No se reconoce la dirección de la base de datos: '%1'."_s.arg(url), u"oVELDRA.store"_s);
}

dialect::Catalog tablesOf(EngineConnection& engine)
{
    dialect::Catalog tables = engine.catalog();
    for (dialect::Table& table : tables.tables) {
        adoptKey(table);
    }
    return tables;
}

void createTables(EngineConnection& engine, Database schema)
{
    const dialect::Catalog present = engine.catalog();
    engine.atomically([&] {
        for (const QByteArray& command : engine.printer().setUp()) {
            engine.run(command);
        }
        for (const TableSchema& table : schemaOf(schema)) {
            if (present.find(table.table.name)) {
                throw storeError(Trouble::AlreadyThere, table.table.name);
            }
            for (const QByteArray& command : engine.printer().createTable(table.table, table.indexes)) {
                engine.run(command);
            }
        }
    });
}

} // namespace oVELDRA::store
