#pragma once

#include <oVELDRA/RuntimeError.h>

#include <QString>

namespace oVELDRA::store {

/// What can go wrong in a database, whatever the engine. The values are the native numbers of the errors.
enum class Trouble : int {
    AlreadyThere = 3010,
    DuplicateKey = 3022,
    NoFile = 3024,
    DiskFull = 3026,
    ReadOnly = 3027,
    Damaged = 3049,
    Broken = 3050, ///< reading or writing failed
    NoPermission = 3051,
    Locked = 3218,
    NoDatabase = 3343,
    NetworkFolder = 3435,
    NoSchema = 3011,
    ServerGone = 3151,
    Other = 3146
};

/// The error of a trouble, with `detail` (a table, a file, an engine's own text) in its description.
[[nodiscard]] RuntimeError storeError(Trouble trouble, const QString& detail = {});

} // namespace oVELDRA::store
