#include "HostWindows.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

namespace oVELDRA {

namespace {

bool isOwn(HWND window)
{
    const auto windows = QGuiApplication::allWindows();
    return std::ranges::any_of(windows, [window](const QWindow* own) {
        return own->handle() != nullptr && reinterpret_cast<HWND>(own->winId()) == window;
    });
}

bool takesInput(HWND window)
{
    return GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId() && IsWindowVisible(window) &&
           IsWindowEnabled(window);
}

} // namespace

HostWindowsBlocked::HostWindowsBlocked() : m_active(GetActiveWindow())
{
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr) {
        if (takesInput(window) && !isOwn(window)) {
            m_blocked.push_back(window);
        }
    }
    for (const HWND blocked : m_blocked) {
        EnableWindow(blocked, FALSE);
    }
}

HostWindowsBlocked::~HostWindowsBlocked()
{
    // A window that the host closed meanwhile is no window any more; the calls then do nothing.
    for (const HWND window : m_blocked) {
        EnableWindow(window, TRUE);
    }
    if (std::ranges::find(m_blocked, m_active) != m_blocked.end()) {
        SetForegroundWindow(m_active);
    }
}

} // namespace oVELDRA
