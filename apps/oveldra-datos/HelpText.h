#pragma once

#include "Command.h"

#include <QString>

#include <vector>

namespace oVELDRA::data {

// What the program says of itself, made from the commands' declarations: in lines of at most 80 characters, with a line
// end behind each.

/// What the program is, its commands, and how databases are named.
[[nodiscard]] QString programHelp(const std::vector<Command>& commands);

/// What a command does, with all its options.
[[nodiscard]] QString commandHelp(const Command& command);

/// How a command is called, on one line: its operands and its options.
[[nodiscard]] QString usageOf(const Command& command);

} // namespace oVELDRA::data
