#pragma once

#include "Variants.h"

#include <initializer_list>
#include <map>
#include <string_view>

namespace oVELDRA::automation {

/// An automation object of somebody else's, whose members are reached by name. What it answers with an error is thrown
/// as RuntimeError.
class LateObject
{
public:
    explicit LateObject(Microsoft::WRL::ComPtr<IDispatch> object);

    /// Whether it has all of these members. Names are literals: they are kept by reference.
    [[nodiscard]] bool knows(std::initializer_list<std::wstring_view> names);

    /// Calls an operation, or reads a property. Arguments in the order of the parameters.
    Variant call(std::wstring_view name, std::initializer_list<Variant*> arguments = {});
    void put(std::wstring_view name, Variant& value);

    /// Calls the default member.
    Variant callDefault(std::initializer_list<Variant*> arguments = {});

private:
    [[nodiscard]] HRESULT find(std::wstring_view name, DISPID& id);
    [[nodiscard]] DISPID idOf(std::wstring_view name);
    Variant invoke(DISPID id, WORD kind, std::initializer_list<Variant*> arguments, DISPID* named);

    Microsoft::WRL::ComPtr<IDispatch> m_object;
    std::map<std::wstring_view, DISPID> m_ids; // asked for once
};

} // namespace oVELDRA::automation
