#pragma once

#include "Console.h"

#include <store/sqlite/SqliteEngine.h>

#include <QString>

namespace oVELDRA::data {

/// Copies a database, as it is at this moment, into the empty file `target`, while others go on reading and writing it.
/// What was written is then checked as a whole, and needs no log beside it. Throws RuntimeError; what is in the file
/// then is worth nothing.
void backUpSqlite(store::SqliteEngine& source, const QString& target, Console& console);

} // namespace oVELDRA::data
