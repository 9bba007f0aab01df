#include "Registration.h"

#include <array>
#include <combaseapi.h>
#include <string>
#include <vector>

namespace oVELDRA::automation {

namespace {

/// One value of the registry; an empty name is a key's default value.
struct Entry
{
    std::wstring key;
    std::wstring name;
    std::wstring text;
};

/// The system's marshaller by type library.
constexpr auto automationMarshaller = L"{00020424-0000-0000-C000-000000000046}";

#ifdef _WIN64
constexpr auto ownPlatform = L"win64";
constexpr auto otherPlatform = L"win32";
#else
constexpr auto ownPlatform = L"win32";
constexpr auto otherPlatform = L"win64";
#endif

std::wstring textOf(const GUID& id)
{
    std::array<wchar_t, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::wstring folderOf(const std::wstring& path)
{
    return path.substr(0, path.find_last_of(L'\\'));
}

std::wstring classKey(const CreatableClass& creatable)
{
    return L"CLSID\\" + textOf(creatable.id);
}

std::wstring interfaceKey(const PublicInterface& known)
{
    return L"Interface\\" + textOf(known.id);
}

std::wstring typeLibraryKey(const Library& library)
{
    return L"TypeLib\\" + textOf(library.id);
}

std::wstring versionKey(const Library& library)
{
    return typeLibraryKey(library) + L"\\1.0";
}

std::wstring platformKey(const Library& library, const wchar_t* platform)
{
    return versionKey(library) + L"\\0\\" + platform;
}

std::vector<Entry> entriesOf(const Library& library)
{
    const std::wstring path = modulePath();
    const std::wstring typeLibrary = textOf(library.id);
    std::vector<Entry> entries{
        {versionKey(library), {}, library.name},
        {versionKey(library) + L"\\FLAGS", {}, L"0"},
        {versionKey(library) + L"\\HELPDIR", {}, folderOf(path)},
        {platformKey(library, ownPlatform), {}, path},
    };
    for (const CreatableClass& creatable : library.classes) {
        const std::wstring key = classKey(creatable);
        entries.push_back({key, {}, creatable.description});
        entries.push_back({key + L"\\InprocServer32", {}, path});
        entries.push_back({key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"});
        entries.push_back({key + L"\\ProgID", {}, creatable.name});
        entries.push_back({key + L"\\TypeLib", {}, typeLibrary});
        entries.push_back({key + L"\\Version", {}, L"1.0"});
        entries.push_back({creatable.name, {}, creatable.description});
        entries.push_back({std::wstring(creatable.name) + L"\\CLSID", {}, textOf(creatable.id)});
    }
    for (const PublicInterface& known : library.interfaces) {
        const std::wstring key = interfaceKey(known);
        entries.push_back({key, {}, known.name});
        entries.push_back({key + L"\\ProxyStubClsid32", {}, automationMarshaller});
        entries.push_back({key + L"\\TypeLib", {}, typeLibrary});
        entries.push_back({key + L"\\TypeLib", L"Version", L"1.0"});
    }
    return entries;
}

/// The root of the classes of a scope.
class Classes
{
public:
    explicit Classes(Scope scope)
        : m_opened(RegCreateKeyExW(scope == Scope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE, L"Software\\Classes",
                                   0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key, nullptr))
    {}
    Classes(const Classes&) = delete;
    Classes& operator=(const Classes&) = delete;
    ~Classes()
    {
        if (m_opened == ERROR_SUCCESS) {
            RegCloseKey(m_key);
        }
    }

    [[nodiscard]] LSTATUS opened() const { return m_opened; }

    [[nodiscard]] LSTATUS write(const Entry& entry) const
    {
        return RegSetKeyValueW(m_key, entry.key.c_str(), entry.name.c_str(), REG_SZ, entry.text.c_str(),
                               static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t)));
    }

    [[nodiscard]] bool has(const std::wstring& key) const
    {
        HKEY found = nullptr;
        if (RegOpenKeyExW(m_key, key.c_str(), 0, KEY_READ, &found) != ERROR_SUCCESS) {
            return false;
        }
        RegCloseKey(found);
        return true;
    }

    /// With all that is below it.
    [[nodiscard]] LSTATUS remove(const std::wstring& key) const
    {
        const LSTATUS removed = RegDeleteTreeW(m_key, key.c_str());
        return removed == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : removed;
    }

private:
    HKEY m_key = nullptr;
    LSTATUS m_opened;
};

LSTATUS removeAll(const Library& library, const Classes& classes)
{
    std::vector<std::wstring> keys;
    for (const CreatableClass& creatable : library.classes) {
        keys.push_back(classKey(creatable));
    }
    for (const PublicInterface& known : library.interfaces) {
        keys.push_back(interfaceKey(known));
    }
    if (classes.has(platformKey(library, otherPlatform))) {
        keys.push_back(platformKey(library, ownPlatform));
    } else {
        keys.push_back(typeLibraryKey(library));
        for (const CreatableClass& creatable : library.classes) {
            keys.emplace_back(creatable.name);
        }
    }
    LSTATUS result = ERROR_SUCCESS;
    for (const std::wstring& key : keys) {
        const LSTATUS removed = classes.remove(key);
        result = result == ERROR_SUCCESS ? removed : result;
    }
    return result;
}

} // namespace

HRESULT registerLibrary(const Library& library, Scope scope)
{
    const Classes classes(scope);
    LSTATUS result = classes.opened();
    if (result != ERROR_SUCCESS) {
        return HRESULT_FROM_WIN32(static_cast<unsigned long>(result));
    }
    for (const Entry& entry : entriesOf(library)) {
        result = classes.write(entry);
        if (result != ERROR_SUCCESS) {
            removeAll(library, classes);
            return HRESULT_FROM_WIN32(static_cast<unsigned long>(result));
        }
    }
    return S_OK;
}

HRESULT unregisterLibrary(const Library& library, Scope scope)
{
    const Classes classes(scope);
    const LSTATUS result = classes.opened() == ERROR_SUCCESS ? removeAll(library, classes) : classes.opened();
    return HRESULT_FROM_WIN32(static_cast<unsigned long>(result));
}

} // namespace oVELDRA::automation
