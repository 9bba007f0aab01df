#include "LateObject.h"

#include "Errors.h"
#include "Texts.h"

#include <algorithm>
#include <dispex.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

using Microsoft::WRL::ComPtr;

namespace oVELDRA::automation {

LateObject::LateObject(ComPtr<IDispatch> object) : m_object(std::move(object)) {}

bool LateObject::knows(std::initializer_list<std::wstring_view> names)
{
    return std::ranges::all_of(names, [this](std::wstring_view name) {
        DISPID id = DISPID_UNKNOWN;
        return SUCCEEDED(find(name, id));
    });
}

Variant LateObject::call(std::wstring_view name, std::initializer_list<Variant*> arguments)
{
    // Whether it is a function or a property that is read is the object's own matter.
    return invoke(idOf(name), DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, nullptr);
}

void LateObject::put(std::wstring_view name, Variant& value)
{
    DISPID newValue = DISPID_PROPERTYPUT;
    invoke(idOf(name), DISPATCH_PROPERTYPUT, {&value}, &newValue);
}

Variant LateObject::callDefault(std::initializer_list<Variant*> arguments)
{
    return invoke(DISPID_VALUE, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments, nullptr);
}

HRESULT LateObject::find(std::wstring_view name, DISPID& id)
{
    const auto earlier = m_ids.find(name);
    if (earlier != m_ids.end()) {
        id = earlier->second;
        return S_OK;
    }
    std::wstring text(name);
    LPOLESTR names[] = {text.data()};
    HRESULT found = m_object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    ComPtr<IDispatchEx> script;
    if (FAILED(found) && SUCCEEDED(m_object.As(&script))) {
        // Classes of scripts may tell their members in this way only.
        const BSTR known = newText(QStringView(text));
        found = script->GetDispID(known, fdexNameCaseInsensitive, &id);
        SysFreeString(known);
    }
    if (SUCCEEDED(found)) {
        m_ids.emplace(name, id);
    }
    return found;
}

DISPID LateObject::idOf(std::wstring_view name)
{
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = find(name, id);
    if (FAILED(found)) {
        throw RuntimeError(numberOf(found));
    }
    return id;
}

Variant LateObject::invoke(DISPID id, WORD kind, std::initializer_list<Variant*> arguments, DISPID* named)
{
    // They travel backwards, and stay the caller's.
    std::vector<VARIANT> values;
    values.reserve(arguments.size());
    std::ranges::transform(std::rbegin(arguments), std::rend(arguments), std::back_inserter(values),
                           [](const Variant* argument) { return **argument; });
    DISPPARAMS parameters{values.data(), named, static_cast<UINT>(values.size()), named != nullptr ? 1U : 0U};
    Variant answer;
    EXCEPINFO details{};
    UINT wrongArgument = 0;
    const HRESULT done = m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                          named != nullptr ? nullptr : answer.place(), &details, &wrongArgument);
    if (FAILED(done)) {
        throw errorOf(done, details);
    }
    return answer;
}

} // namespace oVELDRA::automation
