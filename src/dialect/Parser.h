#pragma once

#include <dialect/Ast.h>

#include <QStringView>

namespace oVELDRA::dialect {

/// Reads one statement of the dialect: `select`, `insert … values`, `update` or `delete` on one table.
///
/// Throws RuntimeError -2147217900 that names the clause and shows the text from the first token that does not fit.
/// The result refers to `text`, which must outlive it.
[[nodiscard]] ParsedStatement parse(QStringView text);

} // namespace oVELDRA::dialect
