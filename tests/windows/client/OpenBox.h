#pragma once

#include <functional>
#include <oVELDRA.h>
#include <windows.h>

namespace client {

/// Lets the component open a message box, of an import without a file number, and closes it again. While it has the
/// keyboard `look` is called with it; `host` is a window of the host's, which had the keyboard before.
void withOpenBox(_cloVELDRAMain& component, HWND host, const std::function<void(HWND box)>& look);

/// A window of the host's, as long as it lives.
class HostWindow
{
public:
    HostWindow();
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    [[nodiscard]] HWND handle() const { return m_handle; }

private:
    HWND m_handle;
};

} // namespace client
