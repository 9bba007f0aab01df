#pragma once

#include "Command.h"

#include <runtime/Clock.h>

#include <memory>

namespace oVELDRA::data {

/// The command with a clock of the caller's, whose today is what `--desde` is without that option.
[[nodiscard]] Command vencimientos(std::shared_ptr<const runtime::Clock> clock);

} // namespace oVELDRA::data
