#include "Errors.h"

#include "Texts.h"

#include <oleauto.h>
#include <wrl/client.h>

using Microsoft::WRL::ComPtr;

namespace oVELDRA::automation {

namespace {

/// An error number and the result by which the automation runtime answers the same.
struct Equivalent
{
    HRESULT result;
    int number;
};

constexpr Equivalent equivalents[] = {
    {E_OUTOFMEMORY, 7},
    {E_INVALIDARG, 5},
    {E_POINTER, 5},
    {E_NOINTERFACE, 430},
    {DISP_E_TYPEMISMATCH, 13},
    {DISP_E_BADVARTYPE, 13},
    {DISP_E_OVERFLOW, 6},
    {DISP_E_DIVBYZERO, 11},
    {DISP_E_BADINDEX, 9},
    {DISP_E_UNKNOWNNAME, 438},
    {DISP_E_MEMBERNOTFOUND, 438},
    {DISP_E_UNKNOWNINTERFACE, 430},
    {DISP_E_NONAMEDARGS, 446},
    {DISP_E_PARAMNOTFOUND, 448},
    {DISP_E_PARAMNOTOPTIONAL, 449},
    {DISP_E_BADPARAMCOUNT, 450},
};

} // namespace

HRESULT resultOf(int number) noexcept
{
    constexpr int LargestOfTheRuntime = 0xFFFF;
    if (number < 0) {
        return number;
    }
    return number > 0 && number <= LargestOfTheRuntime
               ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, static_cast<unsigned>(number))
               : E_FAIL;
}

int numberOf(HRESULT result) noexcept
{
    for (const Equivalent& equivalent : equivalents) {
        if (equivalent.result == result) {
            return equivalent.number;
        }
    }
    return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : static_cast<int>(result);
}

RuntimeError errorOf(HRESULT result, EXCEPINFO& details)
{
    if (result != DISP_E_EXCEPTION) {
        return RuntimeError(numberOf(result));
    }
    if (details.pfnDeferredFillIn != nullptr) {
        details.pfnDeferredFillIn(&details);
    }
    const QString source = takenText(details.bstrSource);
    const QString description = takenText(details.bstrDescription);
    SysFreeString(details.bstrHelpFile);
    const int number = details.wCode != 0 ? details.wCode : numberOf(details.scode);
    return {number, description.isEmpty() ? RuntimeError(number).description() : description, source};
}

HRESULT report(const RuntimeError& error, REFIID interfaceId, const wchar_t* source) noexcept
{
    ComPtr<ICreateErrorInfo> made;
    ComPtr<IErrorInfo> info;
    if (SUCCEEDED(CreateErrorInfo(&made)) && SUCCEEDED(made.As(&info))) {
        const std::wstring description = error.description().toStdWString();
        const std::wstring named = error.source().isEmpty() ? std::wstring(source) : error.source().toStdWString();
        made->SetGUID(interfaceId);
        // The interface takes texts that it does not change by pointers to changeable ones.
        made->SetDescription(const_cast<wchar_t*>(description.c_str()));
        made->SetSource(const_cast<wchar_t*>(named.c_str()));
        SetErrorInfo(0, info.Get());
    }
    return resultOf(error.number());
}

} // namespace oVELDRA::automation
