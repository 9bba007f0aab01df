#include "Commands.h"
#include "Host.h"

#include <atomic>
#include <thread>

namespace client {

namespace {

/// Error 5, as hosts in Basic expect it: not from this thread.
constexpr HRESULT wrongThread = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 5);

void checkWorks(_cloVELDRAMain& component)
{
    Text id(L"123");
    checkResult(component.put_IdSUB(id.place()), S_OK, "a text arrives");
    checkText(id.view(), L"123", "and comes back as it was");
    Text product(L"not yet written");
    checkResult(component.get_PRDNRO(product.receive()), S_OK, "a text comes");
    checkText(product.view(), L"", "it is the one that was sent");
    Text word(L"abc");
    checkResult(component.put_IdSUB(word.place()), MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, 13),
                "an error comes with its number");
}

/// The object of another thread, over the mail of the apartments, while that thread waits.
void checkMarshalled(IStream& mail)
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    ComPtr<_cloVELDRAMain> proxy;
    checkResult(CoGetInterfaceAndReleaseStream(&mail, IID__cloVELDRAMain, &proxy), S_OK,
                "a second thread gets a proxy");
    checkWorks(*proxy.Get());
}

/// An object that a second thread makes itself.
void checkMadeElsewhere()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    ComPtr<_cloVELDRAMain> component;
    checkResult(tryCreate(component), wrongThread, "a second thread is refused an object of its own");
    check(!component, "what could not be made is null");
}

template <typename Work>
void runBeside(Work work, std::string_view what)
{
    std::atomic<bool> done = false;
    std::jthread beside([&] {
        work();
        done = true;
    });
    check(holdsInTime([&] { return done.load(); }), what);
}

} // namespace

void checkApartments()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    const ComPtr<_cloVELDRAMain> component = create();
    ComPtr<IStream> mail;
    checkResult(CoMarshalInterThreadInterfaceInStream(IID__cloVELDRAMain, component.Get(), &mail), S_OK,
                "an object can be lent to a second thread");
    IStream* const letter = mail.Detach(); // its reader releases it
    runBeside([letter] { checkMarshalled(*letter); }, "a second thread is through with the lent object");
    runBeside([] { checkMadeElsewhere(); }, "a second thread is through with its own object");
    Text id(L"123");
    checkResult(component->put_IdSUB(id.place()), S_OK, "the first thread's object works afterwards");
}

void checkManyThreads()
{
    const Apartment apartment(COINIT_MULTITHREADED);
    const ComPtr<_cloVELDRAMain> component = create();
    ComPtr<IMultiQI> proxy; // what every proxy has
    checkResult(component.As(&proxy), S_OK, "an apartment of many threads gets a proxy");
    checkWorks(*component.Get());
}

} // namespace client
