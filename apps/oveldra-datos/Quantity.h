#pragma once

#include <dialect/Value.h>

namespace oVELDRA::data {

/// A quantity as the program reads it: Null, and text that is no number, count as 0.
[[nodiscard]] double quantityOf(const dialect::Value& value);

} // namespace oVELDRA::data
