#pragma once

namespace oVELDRA::declarations {

/// The number of the errors that the screens raise themselves, for their own traps to report.
inline constexpr int ApplicationError = -2147221504;

} // namespace oVELDRA::declarations
