#pragma once

#include "CommandLine.h"

#include <vector>

namespace oVELDRA::data {

/// Does what the command line asks for and answers the program's exit code. Nothing is thrown: errors are complained
/// about, and given as a result when JSON is wanted.
[[nodiscard]] int runProgram(const CommandLine& line, const std::vector<Command>& commands, Console& console);

} // namespace oVELDRA::data
