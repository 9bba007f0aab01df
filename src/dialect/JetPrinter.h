#pragma once

#include <dialect/Ast.h>

namespace oVELDRA::dialect {

/// A statement as text of the dialect again; parsing it gives the same tree.
[[nodiscard]] QString printJet(const ParsedStatement& parsed);

} // namespace oVELDRA::dialect
