#pragma once

#include <oVELDRA/RuntimeError.h>

#include <QString>

namespace oVELDRA::data {

/// What can be wrong with an Access file. The values are the native numbers of the errors.
enum class AccessTrouble : int {
    NoFile = 3024,
    Password = 3031,
    Damaged = 3049,
    NoPermission = 3051,
    Unsupported = 3274,
    NoAccessFile = 3343
};

/// The error of a trouble (number -2147467259), with `detail` (a file, a table) in its description.
[[nodiscard]] RuntimeError accessError(AccessTrouble trouble, const QString& detail);

} // namespace oVELDRA::data
