#include "Commands.h"
#include "CountedConnection.h"
#include "Host.h"

namespace client {

void checkUnloading()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    constexpr int times = 10;
    for (int i = 0; i < times; ++i) {
        CountedConnection connection;
        ComPtr<_cloVELDRAMain> component = create();
        bool connected = false;
        checkResult(connect(*component.Get(), &connection, connected), S_OK, "the object is used");
        CoFreeUnusedLibrariesEx(0, 0);
        check(GetModuleHandleW(L"oVELDRA.dll") != nullptr, "the library stays while there is an object");
        component.Reset();
        const bool gone = holdsInTime([] {
            CoFreeUnusedLibrariesEx(0, 0);
            return GetModuleHandleW(L"oVELDRA.dll") == nullptr;
        });
        check(gone, "the library goes with the last object");
        checkNumber(connection.references(), 1, "nothing of the connection is kept");
    }
}

} // namespace client
