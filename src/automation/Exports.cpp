// What the system calls in an automation library. Compiled into each of them.

#include "Counted.h"
#include "Errors.h"
#include "Library.h"
#include "Registration.h"

#include <windows.h>

using namespace oVELDRA;
using namespace oVELDRA::automation;

namespace {

/// Makes objects of one class.
class ClassFactory final : public Counted<IClassFactory>
{
public:
    explicit ClassFactory(const CreatableClass& creatable) : m_class(creatable) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override
    {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        if (outer != nullptr) {
            return CLASS_E_NOAGGREGATION;
        }
        HRESULT result = S_OK;
        const HRESULT made = guarded(id, library().name, [&] {
            Microsoft::WRL::ComPtr<IUnknown> fresh;
            *fresh.GetAddressOf() = m_class.make(); // Attach() of the cross-compiler's header adds a reference
            result = fresh->QueryInterface(id, object);
        });
        return FAILED(made) ? made : result;
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override
    {
        if (lock) {
            InUse::begin();
        } else {
            InUse::end();
        }
        return S_OK;
    }

private:
    const CreatableClass& m_class;
};

} // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object)
{
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    for (const CreatableClass& creatable : library().classes) {
        if (creatable.id == classId) {
            HRESULT result = S_OK;
            const HRESULT made = guarded(interfaceId, library().name, [&] {
                Microsoft::WRL::ComPtr<IClassFactory> factory;
                *factory.GetAddressOf() = new ClassFactory(creatable);
                result = factory->QueryInterface(interfaceId, object);
            });
            return FAILED(made) ? made : result;
        }
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow()
{
    return !InUse::byAnybody() && library().prepareToUnload() ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer()
{
    return registerLibrary(library(), Scope::Machine);
}

STDAPI DllUnregisterServer()
{
    return unregisterLibrary(library(), Scope::Machine);
}

/// `regsvr32 /n /i:user` for the user alone; with another text, or none, for the machine.
STDAPI DllInstall(BOOL install, PCWSTR commandLine)
{
    const bool user = commandLine != nullptr && CompareStringOrdinal(commandLine, -1, L"user", -1, TRUE) == CSTR_EQUAL;
    const Scope scope = user ? Scope::User : Scope::Machine;
    return install ? registerLibrary(library(), scope) : unregisterLibrary(library(), scope);
}
