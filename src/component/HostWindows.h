#pragma once

#include <vector>
#include <windows.h>

namespace oVELDRA {

/// While it lives, the host's windows of this thread take no input: the component's windows are modal to all of them,
/// and Qt blocks its own only. Afterwards they are as they were, and the one that was active is so again.
class HostWindowsBlocked
{
public:
    HostWindowsBlocked();
    HostWindowsBlocked(const HostWindowsBlocked&) = delete;
    HostWindowsBlocked& operator=(const HostWindowsBlocked&) = delete;
    ~HostWindowsBlocked();

private:
    HWND m_active;
    std::vector<HWND> m_blocked;
};

} // namespace oVELDRA
