#pragma once

#include <guiddef.h>
#include <oaidl.h>
#include <span>
#include <string>
#include <unknwn.h>
#include <wrl/client.h>

namespace oVELDRA::automation {

/// A class that clients create by name.
struct CreatableClass
{
    GUID id;
    const wchar_t* name;        ///< as CreateObject() takes it
    const wchar_t* description; ///< for people who look into the registry
    /// Makes an object, with one reference that is the caller's. Throws RuntimeError.
    IUnknown* (*make)();
};

/// An interface that is told to the system, so that calls between apartments find their way by the type library.
struct PublicInterface
{
    GUID id;
    const wchar_t* name;
};

/// What a library offers. Each shared library defines its own.
struct Library
{
    GUID id;             ///< of its type library, version 1.0
    const wchar_t* name; ///< for people, and the source of errors that name none
    std::span<const CreatableClass> classes;
    std::span<const PublicInterface> interfaces;
    /// Lets go of what would keep the library from being unloaded; false when that is not possible now.
    bool (*prepareToUnload)();
};

[[nodiscard]] const Library& library();

/// Counts one thing of this library that somebody outside holds, for as long as it lives.
class InUse
{
public:
    InUse() noexcept { begin(); }
    InUse(const InUse&) = delete;
    InUse& operator=(const InUse&) = delete;
    ~InUse() { end(); }

    /// For clients that lock the library themselves.
    static void begin() noexcept;
    static void end() noexcept;
    [[nodiscard]] static bool byAnybody() noexcept;
};

/// The description of an interface in this library's own type library. Throws RuntimeError.
[[nodiscard]] Microsoft::WRL::ComPtr<ITypeInfo> typeInfoOf(const GUID& interfaceId);

/// Whether a call by name brings more arguments than the member has parameters. Not every system's description looks.
[[nodiscard]] bool hasSurplusArguments(ITypeInfo& description, DISPID member, WORD kind, const DISPPARAMS& arguments);

/// Path of the file of this library.
[[nodiscard]] std::wstring modulePath();

} // namespace oVELDRA::automation
