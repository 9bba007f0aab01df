#pragma once

#include "Library.h"

#include <windows.h>

namespace oVELDRA::automation {

/// Whom a library is registered for.
enum class Scope {
    User,   ///< HKEY_CURRENT_USER\Software\Classes, which needs no rights
    Machine ///< HKEY_LOCAL_MACHINE\Software\Classes
};

/// Makes the classes of a library known under this file's path. On failure nothing is left behind.
HRESULT registerLibrary(const Library& library, Scope scope);

/// Takes away what registerLibrary() wrote, and nothing else. What a registered library of the other word size (32 or
/// 64 bits) shares with this one stays. What is not there is no error.
HRESULT unregisterLibrary(const Library& library, Scope scope);

} // namespace oVELDRA::automation
