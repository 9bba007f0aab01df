#pragma once

#include <dialect/Ast.h>
#include <dialect/Catalog.h>

namespace oVELDRA::dialect {

/// Finds the columns of a statement in its table and the types of its expressions, and notes both in the tree.
///
/// Answers the table. Throws RuntimeError: -2147217865 unknown table, -2147217904 unknown column, -2147217913 types
/// that cannot be compared or computed with, -2147217900 aggregates where none may stand.
const Table& resolve(ParsedStatement& parsed, const Catalog& catalog);

} // namespace oVELDRA::dialect
