#include "Commands.h"
#include "CountedConnection.h"
#include "Host.h"

#include <psapi.h>
#include <string>

namespace client {

namespace {

/// What a process can run out of.
struct Figures
{
    SIZE_T privateBytes = 0;
    long long handles = 0;
    long long gdiObjects = 0;
    long long userObjects = 0;
};

/// Handles of the kernel's objects are multiples of four; the system has no list of them for a program of its own.
long long countHandles()
{
    constexpr ULONG_PTR last = 0x10000;
    long long count = 0;
    for (ULONG_PTR value = 4; value < last; value += 4) {
        DWORD flags = 0;
        count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0 ? 1 : 0;
    }
    return count;
}

/// Objects of the screen have handles whose lower half alone tells them apart within a session.
template <typename Exists>
long long countObjects(Exists exists)
{
    constexpr ULONG_PTR last = 0xffff;
    long long count = 0;
    for (ULONG_PTR value = 1; value <= last; ++value) {
        count += exists(value) ? 1 : 0;
    }
    return count;
}

bool isOwnWindow(ULONG_PTR value)
{
    DWORD process = 0;
    GetWindowThreadProcessId(reinterpret_cast<HWND>(value), &process);
    return process == GetCurrentProcessId();
}

Figures figures()
{
    Figures found;
    PROCESS_MEMORY_COUNTERS memory{};
    check(GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory), "the process's memory can be asked for");
    found.privateBytes = memory.PagefileUsage;
    DWORD handles = 0;
    found.handles = GetProcessHandleCount(GetCurrentProcess(), &handles) && handles > 0 ? handles : countHandles();
    // Systems that do not keep these accounts say 0; a program with windows never has none.
    found.gdiObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    found.userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    if (found.gdiObjects == 0) {
        found.gdiObjects =
            countObjects([](ULONG_PTR value) { return GetObjectType(reinterpret_cast<HGDIOBJ>(value)); });
    }
    if (found.userObjects == 0) {
        found.userObjects = countObjects(
            [](ULONG_PTR value) { return isOwnWindow(value) || IsMenu(reinterpret_cast<HMENU>(value)) != 0; });
    }
    return found;
}

void reportFigures(const std::string& when)
{
    const Figures found = figures();
    report("private bytes " + when, static_cast<long long>(found.privateBytes));
    report("handles " + when, found.handles);
    report("gdi objects " + when, found.gdiObjects);
    report("user objects " + when, found.userObjects);
}

/// Results that would be a line for every round are only told when they are wrong.
void require(bool holds, std::string_view what)
{
    if (!holds) {
        check(false, what);
    }
}

void write(_cloVELDRAMain& component)
{
    using Writer = HRESULT (STDMETHODCALLTYPE _cloVELDRAMain::*)(BSTR*);
    for (const Writer writer :
         {&_cloVELDRAMain::put_BaseNcm, &_cloVELDRAMain::put_BaseTornel, &_cloVELDRAMain::put_BaseInsumos,
          &_cloVELDRAMain::put_Interno_Externo, &_cloVELDRAMain::put_ADUANA, &_cloVELDRAMain::put_IdSUB}) {
        Text text(L"123");
        require((component.*writer)(text.place()) == S_OK, "a property is written");
    }
    Text word(L"abc");
    require(FAILED(component.put_IdSUB(word.place())), "a word is refused");
}

void read(_cloVELDRAMain& component)
{
    using Reader = HRESULT (STDMETHODCALLTYPE _cloVELDRAMain::*)(BSTR*);
    for (const Reader reader : {&_cloVELDRAMain::get_CATNRO, &_cloVELDRAMain::get_PRDDES, &_cloVELDRAMain::get_PRDNCM,
                                &_cloVELDRAMain::get_PRDPAI, &_cloVELDRAMain::get_PRDSUF, &_cloVELDRAMain::get_PRDUNI,
                                &_cloVELDRAMain::get_PRDNRO}) {
        Text text;
        require((component.*reader)(text.receive()) == S_OK, "a property is read");
    }
    VARIANT_BOOL ok = VARIANT_TRUE;
    double price = 1;
    require(component.get_OK(&ok) == S_OK && component.get_PRDPRE(&price) == S_OK, "a value is read");
}

void liveThroughRounds(int rounds)
{
    for (int i = 0; i < rounds; ++i) {
        CountedConnection connection;
        ComPtr<_cloVELDRAMain> component = create();
        write(*component.Get());
        bool connected = false;
        require(connect(*component.Get(), &connection, connected) == S_OK && connected, "the connection is taken");
        require(connection.references() > 1, "the connection is kept");
        read(*component.Get());
        component.Reset();
        require(connection.references() == 1, "nothing of the connection is kept after a round");
    }
}

} // namespace

void countRounds(int rounds)
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    // What is made once, for the first object, is no loss.
    constexpr int first = 100;
    liveThroughRounds(first);
    reportFigures("before");
    liveThroughRounds(rounds);
    reportFigures("after");
}

} // namespace client
