#pragma once

#include "Console.h"

#include <store/postgres/PostgresEngine.h>

#include <QString>

namespace oVELDRA::data {

/// Copies a schema of the server, as it is at this moment, into the file `target` while others go on working, in
/// pg_dump's custom format. Throws RuntimeError, with pg_dump's own words when it fails; what is in the file then is
/// worth nothing.
void backUpServer(const store::PostgresAddress& source, const QString& target, Console& console);

/// The program of PostgreSQL's clients with that name, in PATH or where Debian keeps it (the newest one); empty when it
/// is not installed.
[[nodiscard]] QString postgresProgram(const QString& name);

} // namespace oVELDRA::data
