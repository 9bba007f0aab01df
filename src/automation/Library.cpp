#include "Library.h"

#include "Errors.h"

#include <atomic>
#include <oleauto.h>
#include <string>
#include <windows.h>

using Microsoft::WRL::ComPtr;

namespace oVELDRA::automation {

namespace {

std::atomic<long> things{0};

} // namespace

void InUse::begin() noexcept
{
    ++things;
}

void InUse::end() noexcept
{
    --things;
}

bool InUse::byAnybody() noexcept
{
    return things != 0;
}

ComPtr<ITypeInfo> typeInfoOf(const GUID& interfaceId)
{
    ComPtr<ITypeLib> typeLibrary;
    ComPtr<ITypeInfo> description;
    HRESULT found = LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, &typeLibrary);
    if (SUCCEEDED(found)) {
        found = typeLibrary->GetTypeInfoOfGuid(interfaceId, &description);
    }
    if (FAILED(found)) {
        throw RuntimeError(numberOf(found));
    }
    return description;
}

bool hasSurplusArguments(ITypeInfo& description, DISPID member, WORD kind, const DISPPARAMS& arguments)
{
    // One after the other: descriptions do not agree on how they number functions that are looked up.
    FUNCDESC* function = nullptr;
    for (UINT index = 0; SUCCEEDED(description.GetFuncDesc(index, &function)); ++index) {
        const bool called = function->memid == member && (kind & function->invkind) != 0;
        const auto parameters = static_cast<UINT>(function->cParams);
        description.ReleaseFuncDesc(function);
        if (called) {
            return arguments.cArgs > parameters;
        }
    }
    return false;
}

std::wstring modulePath()
{
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&things), &module);
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

} // namespace oVELDRA::automation
