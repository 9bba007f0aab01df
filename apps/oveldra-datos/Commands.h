#pragma once

#include "Command.h"

#include <vector>

namespace oVELDRA::data {

/// The program's commands, in the order in which they are usually needed.
[[nodiscard]] std::vector<Command> allCommands();

} // namespace oVELDRA::data
