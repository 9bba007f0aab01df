#include "Commands.h"
#include "CountedConnection.h"
#include "Host.h"

namespace client {

namespace {

/// An interface that no object has.
constexpr IID foreignInterface{0x5d0c1b52, 0x3f0e, 0x4a6d, {0x9b, 0x1c, 0x40, 0x8f, 0x6e, 0x2a, 0x77, 0x13}};
constexpr CLSID foreignClass{0x0e6b6b0d, 0x64a7, 0x4c6f, {0x8b, 0x35, 0x2c, 0x91, 0x5d, 0x0a, 0x4e, 0x21}};

template <typename Interface>
ComPtr<IUnknown> identityThrough(IUnknown& object, const IID& iid, std::string_view what)
{
    ComPtr<Interface> interfacePointer;
    checkResult(object.QueryInterface(iid, &interfacePointer), S_OK, what);
    ComPtr<IUnknown> identity;
    checkResult(interfacePointer->QueryInterface(IID_IUnknown, &identity), S_OK, "the way back is there");
    ComPtr<_cloVELDRAMain> component;
    checkResult(interfacePointer->QueryInterface(IID__cloVELDRAMain, &component), S_OK,
                "the way to the members is there");
    return identity;
}

void checkInterfaces(_cloVELDRAMain& component)
{
    const ComPtr<IUnknown> identity = identityThrough<IUnknown>(component, IID_IUnknown, "it is an object");
    const ComPtr<IUnknown> byName = identityThrough<IDispatch>(component, IID_IDispatch, "it can be called by name");
    const ComPtr<IUnknown> byErrors =
        identityThrough<ISupportErrorInfo>(component, IID_ISupportErrorInfo, "it describes its errors");
    const ComPtr<IUnknown> bySlot =
        identityThrough<_cloVELDRAMain>(component, IID__cloVELDRAMain, "it has its members");
    check(identity == byName && identity == byErrors && identity == bySlot, "it is one object by all ways");

    void* nothing = &component;
    checkResult(component.QueryInterface(foreignInterface, &nothing), E_NOINTERFACE, "it has no foreign interface");
    check(nothing == nullptr, "what was asked for in vain is null");

    ComPtr<ISupportErrorInfo> errors;
    checkResult(component.QueryInterface(IID_ISupportErrorInfo, &errors), S_OK, "it says whose errors it describes");
    checkResult(errors->InterfaceSupportsErrorInfo(IID__cloVELDRAMain), S_OK, "those of its members");
    checkResult(errors->InterfaceSupportsErrorInfo(foreignInterface), S_FALSE, "and no others");
}

void checkClassObject()
{
    CountedConnection outer;
    ComPtr<IUnknown> inner;
    checkResult(CoCreateInstance(CLSID_cloVELDRAMain, &outer, CLSCTX_INPROC_SERVER, IID_IUnknown, &inner),
                CLASS_E_NOAGGREGATION, "it is no part of another object");
    check(!inner, "what could not be made is null");
    checkNumber(outer.references(), 1, "nothing of the other object is kept");

    HMODULE module = GetModuleHandleW(L"oVELDRA.dll");
    check(module != nullptr, "the library has its name");
    using Getter = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);
    const auto getter = reinterpret_cast<Getter>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    check(getter != nullptr, "the library gives class objects");
    void* nothing = &outer;
    checkResult(getter(foreignClass, IID_IClassFactory, &nothing), CLASS_E_CLASSNOTAVAILABLE,
                "but none of other classes");
    check(nothing == nullptr, "what was asked for in vain is null");
    ComPtr<IClassFactory> factory;
    checkResult(getter(CLSID_cloVELDRAMain, IID_IClassFactory, &factory), S_OK, "the class has its class object");
    nothing = &outer;
    checkResult(factory->CreateInstance(nullptr, foreignInterface, &nothing), E_NOINTERFACE,
                "no object is made for a foreign interface");
    check(nothing == nullptr, "what could not be made is null");
    checkResult(getter(CLSID_cloVELDRAMain, foreignInterface, &nothing), E_NOINTERFACE,
                "the class object has no foreign interface");
}

} // namespace

void checkIdentity()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    const ComPtr<_cloVELDRAMain> component = create();
    checkInterfaces(*component.Get());
    checkClassObject();
}

} // namespace client
