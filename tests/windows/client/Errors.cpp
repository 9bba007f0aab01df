#include "Commands.h"
#include "Host.h"

#include <array>
#include <string>
#include <vector>

namespace client {

namespace {

constexpr int typeMismatch = 13;
constexpr int overflow = 6;
constexpr DISPID idOfOk = 1;
constexpr DISPID idOfInterno = 12;
constexpr DISPID idOfConectarDB = 13;
constexpr DISPID idOfMostrar = 14;
constexpr DISPID idOfIdSub = 20;
constexpr DISPID idOfNothing = 21;
constexpr const wchar_t* mismatchText = L"No coinciden los tipos";

/// The result of a call that ended with a runtime error, as hosts in Basic expect it.
constexpr HRESULT resultOf(int number)
{
    return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

struct Call
{
    HRESULT result = S_OK;
    HRESULT exceptionResult = S_OK;
    Text description;
    Text source;
};

/// Calls by name with texts as arguments, the first one first.
void invoke(IDispatch& object, DISPID id, WORD kind, const std::vector<std::wstring_view>& texts, Call& call)
{
    std::vector<Text> owned(texts.size());
    std::vector<VARIANTARG> arguments(texts.size());
    for (size_t i = 0; i < texts.size(); ++i) {
        VARIANTARG& argument = arguments[texts.size() - 1 - i];
        VariantInit(&argument);
        V_VT(&argument) = VT_BSTR;
        *owned[i].place() = SysAllocStringLen(texts[i].data(), static_cast<UINT>(texts[i].size()));
        V_BSTR(&argument) = owned[i].get();
    }
    DISPID value = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &value;
        parameters.cNamedArgs = 1;
    }
    VARIANT answer;
    VariantInit(&answer);
    EXCEPINFO exception{};
    UINT wrong = 0;
    call.result = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                                kind == DISPATCH_PROPERTYPUT ? nullptr : &answer, &exception, &wrong);
    VariantClear(&answer);
    if (exception.pfnDeferredFillIn) {
        exception.pfnDeferredFillIn(&exception);
    }
    call.exceptionResult = exception.wCode != 0 ? resultOf(exception.wCode) : exception.scode;
    *call.description.receive() = exception.bstrDescription;
    *call.source.receive() = exception.bstrSource;
    SysFreeString(exception.bstrHelpFile);
}

void checkBySlot(_cloVELDRAMain& component)
{
    Text word(L"abc");
    checkResult(component.put_IdSUB(word.place()), resultOf(typeMismatch), "a word is no number");
    checkText(word.view(), L"abc", "the caller's text is left alone by a failure, too");
    ThrownError thrown;
    takeThrownError(thrown);
    check(thrown.present, "the error is described");
    checkText(thrown.description.view(), mismatchText, "the error has its description");
    check(!thrown.source.view().empty(), "the error has a source");
    report("source", thrown.source.view());

    Text empty;
    checkResult(component.put_IdSUB(empty.place()), resultOf(typeMismatch), "nothing is no number");
    takeThrownError(thrown);
    checkText(thrown.description.view(), mismatchText, "nothing has the description of a word");
    Text large(L"99999999999");
    checkResult(component.put_IdSUB(large.place()), resultOf(overflow), "a number may be too large");
    takeThrownError(thrown);
    checkText(thrown.description.view(), L"Desbordamiento", "a number that is too large has its description");
    Text right(L"123");
    checkResult(component.put_IdSUB(right.place()), S_OK, "a number is taken after the failures");
    takeThrownError(thrown);
    check(!thrown.present, "a success leaves no error behind");
}

void checkThrown(const Call& call, int number, const wchar_t* description, const std::string& what)
{
    checkResult(call.result, DISP_E_EXCEPTION, what + " is an exception");
    checkResult(call.exceptionResult, resultOf(number), what + " has its number");
    checkText(call.description.view(), description, what + " has its description");
    check(!call.source.view().empty(), what + " has a source");
}

void checkByName(IDispatch& object)
{
    Call call;
    invoke(object, idOfIdSub, DISPATCH_PROPERTYPUT, {L"abc"}, call);
    checkThrown(call, typeMismatch, mismatchText, "a word for a number, by name,");
    report("source by name", call.source.view());
    invoke(object, idOfIdSub, DISPATCH_PROPERTYPUT, {L"99999999999"}, call);
    checkThrown(call, overflow, L"Desbordamiento", "a number that is too large, by name,");
    invoke(object, idOfIdSub, DISPATCH_PROPERTYPUT, {L"123"}, call);
    checkResult(call.result, S_OK, "a number is taken by name");

    invoke(object, idOfMostrar, DISPATCH_METHOD, {L"one too many"}, call);
    checkResult(call.result, DISP_E_BADPARAMCOUNT, "an operation takes no arguments");
    invoke(object, idOfConectarDB, DISPATCH_METHOD, {L"a", L"b", L"c", L"d"}, call);
    checkResult(call.result, DISP_E_BADPARAMCOUNT, "an operation takes no more arguments than it has");
    invoke(object, idOfInterno, DISPATCH_PROPERTYGET, {}, call);
    checkResult(call.result, DISP_E_MEMBERNOTFOUND, "what can only be written cannot be read");
    invoke(object, idOfOk, DISPATCH_PROPERTYPUT, {L"1"}, call);
    checkResult(call.result, DISP_E_MEMBERNOTFOUND, "what can only be read cannot be written");
    invoke(object, idOfNothing, DISPATCH_METHOD, {}, call);
    checkResult(call.result, DISP_E_MEMBERNOTFOUND, "there is no member of another identifier");

    // A host that does not want to know.
    DISPID value = DISPID_PROPERTYPUT;
    Text word(L"abc");
    VARIANTARG argument;
    VariantInit(&argument);
    V_VT(&argument) = VT_BSTR;
    V_BSTR(&argument) = word.get();
    DISPPARAMS parameters{&argument, &value, 1, 1};
    checkResult(object.Invoke(idOfIdSub, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYPUT, &parameters, nullptr,
                              nullptr, nullptr),
                DISP_E_EXCEPTION, "a failure needs no place for its description");
}

HRESULT identify(IDispatch& object, const std::wstring& name, DISPID& id)
{
    std::wstring writable = name;
    LPOLESTR names[] = {writable.data()};
    return object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
}

void checkNames(IDispatch& object)
{
    DISPID id = DISPID_UNKNOWN;
    checkResult(identify(object, L"ConectarDB", id), S_OK, "a member is found by its name");
    checkNumber(id, idOfConectarDB, "it is the member of its slot");
    checkResult(identify(object, L"idsub", id), S_OK, "a member is found in any letter case");
    checkNumber(id, idOfIdSub, "it is the member of its slot in any letter case");
    checkResult(identify(object, L"IdSUC", id), DISP_E_UNKNOWNNAME, "a name that is not there is unknown");
    checkNumber(id, DISPID_UNKNOWN, "and has no identifier");
}

} // namespace

void checkErrors()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    const ComPtr<_cloVELDRAMain> component = create();
    checkBySlot(*component.Get());
    checkByName(*component.Get());
    checkNames(*component.Get());
}

} // namespace client
