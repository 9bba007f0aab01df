#include "Host.h"

namespace client {

Apartment::Apartment(DWORD kind)
{
    checkResult(CoInitializeEx(nullptr, kind), S_OK, "the thread enters its apartment");
}

Apartment::~Apartment()
{
    CoUninitialize();
}

HRESULT tryCreate(ComPtr<_cloVELDRAMain>& component)
{
    return CoCreateInstance(CLSID_cloVELDRAMain, nullptr, CLSCTX_INPROC_SERVER, IID__cloVELDRAMain, &component);
}

ComPtr<_cloVELDRAMain> create()
{
    ComPtr<_cloVELDRAMain> component;
    const HRESULT result = tryCreate(component);
    if (result != S_OK || !component) {
        checkResult(result, S_OK, "an object is made");
    }
    return component;
}

HRESULT connect(_cloVELDRAMain& component, IDispatch* connection, bool& connected)
{
    VARIANT inputs;
    VariantInit(&inputs);
    V_VT(&inputs) = VT_DISPATCH;
    V_DISPATCH(&inputs) = connection; // lent for the call
    VARIANT nomenclature;
    VariantInit(&nomenclature);
    V_VT(&nomenclature) = VT_NULL;
    VARIANT tornel = nomenclature;
    VARIANT_BOOL answer = VARIANT_FALSE;
    const HRESULT result = component.ConectarDB(&inputs, &nomenclature, &tornel, &answer);
    connected = answer == VARIANT_TRUE;
    return result;
}

void takeThrownError(ThrownError& thrown)
{
    ComPtr<IErrorInfo> information;
    thrown.present = GetErrorInfo(0, &information) == S_OK && information;
    if (thrown.present) {
        information->GetDescription(thrown.description.receive());
        information->GetSource(thrown.source.receive());
    }
}

} // namespace client
