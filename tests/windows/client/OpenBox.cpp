#include "OpenBox.h"

#include "Host.h"

namespace client {

namespace {

// What a timer's routine finds: it is given nothing of ours.
HWND hostWindow = nullptr;
const std::function<void(HWND)>* lookNow = nullptr;

/// Called by the component's event loop.
void CALLBACK lookAtBox(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/)
{
    const HWND active = GetActiveWindow();
    if (active == nullptr || active == hostWindow || lookNow == nullptr) {
        return;
    }
    KillTimer(nullptr, timer);
    (*lookNow)(active);
    lookNow = nullptr;
    PostMessageW(active, WM_KEYDOWN, VK_ESCAPE, 0);
    PostMessageW(active, WM_KEYUP, VK_ESCAPE, 0);
}

} // namespace

void withOpenBox(_cloVELDRAMain& component, HWND host, const std::function<void(HWND box)>& look)
{
    constexpr UINT interval = 20; // milliseconds
    hostWindow = host;
    lookNow = &look;
    check(SetTimer(nullptr, 0, interval, &lookAtBox) != 0, "the host has a timer");
    checkResult(component.Importar(), S_OK, "the box for a missing file number is shown");
    check(lookNow == nullptr, "the box had the keyboard");
}

HostWindow::HostWindow()
    : m_handle(CreateWindowExW(0, L"STATIC", L"Anfitrion", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50, 300, 200, nullptr,
                               nullptr, nullptr, nullptr))
{
    check(m_handle != nullptr, "the host has a window");
}

HostWindow::~HostWindow()
{
    DestroyWindow(m_handle);
}

} // namespace client
