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

/// Opens an existing database. URLs:
///
/// - `sqlite:FILE` (absolute or relative path) and `sqlite::memory:`;
/// - `postgresql://USER@HOST:PORT/DATABASE?schema=NAME`: a schema (default `public`) of a database of a PostgreSQL
///   server, version 14 or later with ICU. `host`, `port` and `user` may also stand behind the question mark, a host
///   being the folder of a socket then. Passwords come from where libpq looks for them (PGPASSWORD, .pgpass); one in
///   the URL works, too. Needs a QCoreApplication and Qt's QPSQL driver.
///
/// Throws RuntimeError with number -2147467259 and one of these native numbers: 3024 no such file, 3343 the file is no
/// database, 3049 damaged file, 3051 no permission, 3435 the file is on a network folder (a shared file must be served
/// by a database server; only read-only access is possible there), 3151 no connection with the server, 3011 no such
/// schema on it; number 5 for an URL that it does not know.
///
/// A connection with a server that breaks is reported by the statement that meets it (3151); what was not committed is
/// gone, and the next statement opens the connection anew.
///
/// Errors of statements carry these numbers: -2147217900 syntax, -2147217904 unknown column, -2147217913 types that do
/// not match, -2147217865 unknown table, and -2147467259 with the native numbers 3022 duplicate key, 3027 read-only,
/// 3163 text too long for its column, 3218 locked by another seat, 3026 disk full, 3049 damaged file, 3343 no database,
/// 3151 no connection.
[[nodiscard]] OVELDRA_EXPORT std::shared_ptr<ConexionDB> connectStore(const QString& url,
                                                                      Access access = Access::ReadWrite);

/// Makes a database with the tables and indexes of `schema`, and opens it for writing: the file, or the schema in a
/// server's database, which must be there. Existing tables are never
/// touched: a database that already holds one of them is refused with RuntimeError -2147467259, native number 3010.
[[nodiscard]] OVELDRA_EXPORT std::shared_ptr<ConexionDB> createStore(const QString& url, Database schema);

} // namespace oVELDRA
