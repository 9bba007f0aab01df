#include "Commands.h"

namespace oVELDRA::data {

std::vector<Command> allCommands()
{
    return {crear(), migrar(), copiar(), verificar(), vencimientos(), respaldar()};
}

} // namespace oVELDRA::data
