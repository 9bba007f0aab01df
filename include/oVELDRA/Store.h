#pragma once

#include <oVELDRA/ConexionDB.h>
#include <oVELDRA/Export.h>

#include <QString>

#include <memory>

namespace oVELDRA {

/// How a database is opened. Nomenclature and host databases are opened read-only.
enum class Access { ReadWrite, ReadOnly };

/// The three databases whose tables the component knows.
enum class Database {
    Inputs,       ///< CAT, PRD, RIP, INTINS, INS, DIP
    Nomenclature, ///< NCM, sufidos
    Host          ///< caratula, item, groupsubitems
};

/// Opens an existing database. URLs: `sqlite:FILE` (absolute or relative path) and `sqlite::memory:`.
///
/// Throws RuntimeError with number -2147467259 and one of these native numbers: 3024 no such file, 3343 the file is no
/// database, 3049 damaged file, 3051 no permission, 3435 the file is on a network folder (a shared file must be served
/// by a database server; only read-only access is possible there); number 5 for an URL that it does not know.
///
/// Errors of statements carry these numbers: -2147217900 syntax, -2147217904 unknown column, -2147217913 types that do
/// not match, -2147217865 unknown table, and -2147467259 with the native numbers 3022 duplicate key, 3027 read-only,
/// 3163 text too long for its column, 3218 locked by another seat, 3026 disk full, 3049 damaged file, 3343 no database.
[[nodiscard]] OVELDRA_EXPORT std::shared_ptr<ConexionDB> connectStore(const QString& url,
                                                                      Access access = Access::ReadWrite);

/// Makes a database with the tables and indexes of `schema`, and opens it for writing. Existing tables are never
/// touched: a database that already holds one of them is refused with RuntimeError -2147467259, native number 3010.
[[nodiscard]] OVELDRA_EXPORT std::shared_ptr<ConexionDB> createStore(const QString& url, Database schema);

} // namespace oVELDRA
