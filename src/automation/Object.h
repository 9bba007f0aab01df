#pragma once

#include "Counted.h"
#include "Errors.h"
#include "Library.h"

#include <oleauto.h>

namespace oVELDRA::automation {

/// An object with a dual interface of the type library.
///
/// Calls by name go through the type library's description to the very functions of the interface, so the two ways in
/// cannot differ.
template <typename Interface>
class Object : public Counted<Interface, ISupportErrorInfo>
{
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        if (count == nullptr) {
            return E_POINTER;
        }
        *count = 1;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*language*/, ITypeInfo** description) override
    {
        if (description == nullptr) {
            return E_POINTER;
        }
        *description = nullptr;
        if (index != 0) {
            return DISP_E_BADINDEX;
        }
        return guarded([&] { typeInfo().CopyTo(description); });
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*language*/,
                                            DISPID* ids) override
    {
        ITypeInfo* description = nullptr;
        const HRESULT known = guarded([&] { description = typeInfo().Get(); });
        return FAILED(known) ? known : description->GetIDsOfNames(names, count, ids);
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID /*reserved*/, LCID /*language*/, WORD kind,
                                     DISPPARAMS* arguments, VARIANT* answer, EXCEPINFO* details,
                                     UINT* wrongArgument) override
    {
        ITypeInfo* description = nullptr;
        const HRESULT known = guarded([&] { description = typeInfo().Get(); });
        if (FAILED(known)) {
            return known;
        }
        if (arguments == nullptr || hasSurplusArguments(*description, member, kind, *arguments)) {
            return DISP_E_BADPARAMCOUNT;
        }
        // A new value may come as a script's variable, by reference; the description takes it for something else.
        DISPPARAMS given = *arguments;
        VARIANT newValue;
        if ((kind & DISPATCH_PROPERTYPUT) != 0 && given.cArgs == 1 && given.rgvarg[0].vt == (VT_BYREF | VT_VARIANT)) {
            newValue = *given.rgvarg[0].pvarVal;
            given.rgvarg = &newValue;
        }
        // An error that somebody else left on the thread is not this member's.
        SetErrorInfo(0, nullptr);
        return description->Invoke(static_cast<Interface*>(this), member, kind, &given, answer, details, wrongArgument);
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID id) override
    {
        return id == __uuidof(Interface) ? S_OK : S_FALSE;
    }

protected:
    /// Runs the body of a member, with the object kept alive: a host may release it while its screen is open.
    template <typename Body>
    [[nodiscard]] HRESULT guarded(Body&& body) noexcept
    {
        const Microsoft::WRL::ComPtr<Interface> alive(this);
        return automation::guarded(__uuidof(Interface), library().name, body);
    }

    /// The same for a member that answers: puts what `make` gives where the caller wants it.
    template <typename Answer, typename Make>
    [[nodiscard]] HRESULT answer(Answer* where, Make make) noexcept
    {
        if (where == nullptr) {
            return E_POINTER;
        }
        return guarded([&] { *where = make(); });
    }

private:
    [[nodiscard]] const Microsoft::WRL::ComPtr<ITypeInfo>& typeInfo()
    {
        if (!m_typeInfo) {
            m_typeInfo = typeInfoOf(__uuidof(Interface));
        }
        return m_typeInfo;
    }

    Microsoft::WRL::ComPtr<ITypeInfo> m_typeInfo; // once somebody calls by name
};

} // namespace oVELDRA::automation
