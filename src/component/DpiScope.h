#pragma once

#include <windows.h>

namespace oVELDRA {

/// While it lives, windows that this thread makes are scaled by the monitor that they are on, whatever the host's
/// process declared of itself. The host's own windows stay as they are.
class DpiScope
{
public:
    DpiScope() noexcept : m_before(SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2))
    {
        if (m_before == nullptr) { // not every system knows it for threads; without it title bars are not scaled
            m_before = SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
        }
    }
    DpiScope(const DpiScope&) = delete;
    DpiScope& operator=(const DpiScope&) = delete;
    ~DpiScope()
    {
        if (m_before != nullptr) {
            SetThreadDpiAwarenessContext(m_before);
        }
    }

private:
    DPI_AWARENESS_CONTEXT m_before;
};

} // namespace oVELDRA
