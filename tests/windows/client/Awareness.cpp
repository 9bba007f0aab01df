#include "Commands.h"
#include "Host.h"
#include "OpenBox.h"

namespace client {

namespace {

DPI_AWARENESS awarenessOf(HWND window)
{
    return GetAwarenessFromDpiAwarenessContext(GetWindowDpiAwarenessContext(window));
}

DPI_AWARENESS awarenessOfThread()
{
    return GetAwarenessFromDpiAwarenessContext(GetThreadDpiAwarenessContext());
}

} // namespace

void checkAwareness()
{
    // A host of the old days, which knows nothing of scales.
    check(SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_UNAWARE) != nullptr, "the host is unaware of scales");
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    const HostWindow window;
    const ComPtr<_cloVELDRAMain> component = create();
    checkNumber(awarenessOfThread(), DPI_AWARENESS_UNAWARE, "the host is unaware after an object was made");

    withOpenBox(*component.Get(), window.handle(), [&](HWND box) {
        checkNumber(awarenessOf(box), DPI_AWARENESS_PER_MONITOR_AWARE, "the box follows the scale of its monitor");
        checkNumber(awarenessOf(window.handle()), DPI_AWARENESS_UNAWARE, "the host's window is as it was made");
    });

    checkNumber(awarenessOfThread(), DPI_AWARENESS_UNAWARE, "the host is unaware after a box was shown");
    const HostWindow later;
    checkNumber(awarenessOf(later.handle()), DPI_AWARENESS_UNAWARE, "a later window of the host's is alike");
}

} // namespace client
