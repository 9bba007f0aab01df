#include "Commands.h"
#include "Host.h"
#include "OpenBox.h"

namespace client {

void checkModality()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    const HostWindow window;
    const HostWindow closed;
    EnableWindow(closed.handle(), FALSE);
    SetForegroundWindow(window.handle());
    check(holdsInTime([&] { return GetActiveWindow() == window.handle(); }), "the host's window is active");
    const ComPtr<_cloVELDRAMain> component = create();

    withOpenBox(*component.Get(), window.handle(), [&](HWND box) {
        check(IsWindowEnabled(box) != FALSE, "the box takes input");
        check(IsWindowEnabled(window.handle()) == FALSE, "the host's window takes no input while the box is open");
    });

    check(IsWindowEnabled(window.handle()) != FALSE, "the host's window takes input again");
    check(IsWindowEnabled(closed.handle()) == FALSE, "a window that took none before takes none afterwards");
    check(holdsInTime([&] { return GetActiveWindow() == window.handle(); }), "the host's window is active again");
}

} // namespace client
