#pragma once

#include "Command.h"
#include "SourceTable.h"

#include <oVELDRA/Store.h>

#include <vector>

namespace oVELDRA::data {

/// The options that the commands have in common that move a whole database.
[[nodiscard]] std::vector<Option> movingOptions();

/// Moves a database from a source to the URL that is the command's second operand, says what came of it and answers the
/// exit code: Success, Findings when rejected rows stopped it, Failed when the proof does not hold. Nothing is left in
/// the destination unless it is Success. Throws RuntimeError and BadUsageError.
[[nodiscard]] int moveBase(Source& source, const Arguments& arguments, Console& console);

} // namespace oVELDRA::data
