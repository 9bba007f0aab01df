#pragma once

#include "Checking.h"
#include "Text.h"

#include <oVELDRA.h>
#include <wrl/client.h>

namespace client {

using Microsoft::WRL::ComPtr;

/// A thread's membership in an apartment, for as long as it lives.
class Apartment
{
public:
    explicit Apartment(DWORD kind);
    ~Apartment();
    Apartment(const Apartment&) = delete;
    Apartment& operator=(const Apartment&) = delete;
};

/// What CoCreateInstance() answers.
[[nodiscard]] HRESULT tryCreate(ComPtr<_cloVELDRAMain>& component);

/// A new object; the program ends when it cannot be had.
[[nodiscard]] ComPtr<_cloVELDRAMain> create();

/// Hands the component what is the host's for all three databases.
[[nodiscard]] HRESULT connect(_cloVELDRAMain& component, IDispatch* connection, bool& connected);

/// The thread's error of automation.
struct ThrownError
{
    bool present = false;
    Text description;
    Text source;
};
void takeThrownError(ThrownError& thrown);

/// What the program waits for may come from another thread's window messages or from another program; it is looked at
/// until it holds or a limit is over.
template <typename Condition>
[[nodiscard]] bool holdsInTime(Condition condition)
{
    constexpr DWORD patience = 20'000; // milliseconds
    constexpr DWORD pause = 10;
    for (const ULONGLONG end = GetTickCount64() + patience; !condition();) {
        if (GetTickCount64() > end) {
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, pause, QS_ALLINPUT);
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

} // namespace client
