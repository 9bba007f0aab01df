#pragma once

#include <oVELDRA/RuntimeError.h>

#include <QString>

struct pg_result;

namespace oVELDRA::store {

/// The error of a statement that the server refused, by its SQLSTATE.
[[nodiscard]] RuntimeError postgresError(const pg_result* result);

/// Whether the connection is of no use after an error: the server is ending it, or libpq itself met the error.
[[nodiscard]] bool endsConnection(const pg_result* result);

/// The first line of the server's or its library's words, which may be many.
[[nodiscard]] QString firstLine(const QString& words);

/// The error of a connection that could not be opened, or that is gone.
[[nodiscard]] RuntimeError serverGone(const QString& detail = {});

} // namespace oVELDRA::store
