#include "CountedConnection.h"

#include <cwchar>
#include <oleauto.h>
#include <span>

namespace client {

namespace {

/// Names are numbered as they stand in the list, from 1.
HRESULT identify(std::span<const wchar_t* const> known, LPOLESTR* names, UINT count, DISPID* ids)
{
    if (count != 1) {
        return DISP_E_UNKNOWNNAME; // no names of parameters
    }
    for (size_t i = 0; i < known.size(); ++i) {
        if (_wcsicmp(known[i], names[0]) == 0) {
            ids[0] = static_cast<DISPID>(i + 1);
            return S_OK;
        }
    }
    ids[0] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
}

/// The names' places in identify().
constexpr const wchar_t* connectionNames[] = {L"SetSql", L"OpenRecordset", L"Execute"};
enum ConnectionMember : DISPID { SetSql = 1, OpenRecordset, Execute };

constexpr const wchar_t* recordsetNames[] = {L"EOF", L"RecordCount", L"MoveNext", L"MoveFirst", L"Fields"};
enum RecordsetMember : DISPID { AtEnd = 1, RecordCount, MoveNext, MoveFirst };

void answer(VARIANT* result, const VARIANT& value)
{
    if (result) {
        *result = value;
    } else {
        VARIANT unwanted = value;
        VariantClear(&unwanted);
    }
}

VARIANT number(long value)
{
    VARIANT variant;
    VariantInit(&variant);
    V_VT(&variant) = VT_I4;
    V_I4(&variant) = value;
    return variant;
}

} // namespace

HRESULT CountedObject::QueryInterface(REFIID iid, void** object)
{
    const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    if (known) {
        AddRef();
    }
    return known ? S_OK : E_NOINTERFACE;
}

ULONG CountedObject::AddRef()
{
    return static_cast<ULONG>(++m_references);
}

ULONG CountedObject::Release()
{
    return static_cast<ULONG>(--m_references);
}

HRESULT CountedObject::GetTypeInfoCount(UINT* count)
{
    *count = 0;
    return S_OK;
}

HRESULT CountedObject::GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** information)
{
    *information = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT CountedRecordset::GetIDsOfNames(REFIID /*iid*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids)
{
    return identify(recordsetNames, names, count, ids);
}

HRESULT CountedRecordset::Invoke(DISPID id, REFIID /*iid*/, LCID /*locale*/, WORD /*kind*/, DISPPARAMS* /*arguments*/,
                                 VARIANT* result, EXCEPINFO* /*exception*/, UINT* /*wrongArgument*/)
{
    switch (id) {
    case AtEnd: {
        VARIANT end;
        VariantInit(&end);
        V_VT(&end) = VT_BOOL;
        V_BOOL(&end) = VARIANT_TRUE;
        answer(result, end);
        return S_OK;
    }
    case RecordCount:
        answer(result, number(0));
        return S_OK;
    case MoveFirst:
        return S_OK;
    default:
        return DISP_E_MEMBERNOTFOUND; // nothing of a row's can be asked for
    }
}

HRESULT CountedConnection::GetIDsOfNames(REFIID /*iid*/, LPOLESTR* names, UINT count, LCID /*locale*/, DISPID* ids)
{
    return identify(connectionNames, names, count, ids);
}

HRESULT CountedConnection::Invoke(DISPID id, REFIID /*iid*/, LCID /*locale*/, WORD /*kind*/, DISPPARAMS* arguments,
                                  VARIANT* result, EXCEPINFO* /*exception*/, UINT* /*wrongArgument*/)
{
    switch (id) {
    case SetSql:
        return arguments->cArgs == 1 ? S_OK : DISP_E_BADPARAMCOUNT;
    case OpenRecordset: {
        if (arguments->cArgs != 1) {
            return DISP_E_BADPARAMCOUNT;
        }
        // The flag may come as a variant by reference or as a reference to the flag itself.
        VARIANTARG& ok = arguments->rgvarg[0];
        if (V_VT(&ok) == (VT_BYREF | VT_VARIANT)) {
            VariantClear(V_VARIANTREF(&ok));
            V_VT(V_VARIANTREF(&ok)) = VT_BOOL;
            V_BOOL(V_VARIANTREF(&ok)) = VARIANT_TRUE;
        } else if (V_VT(&ok) == (VT_BYREF | VT_BOOL)) {
            *V_BOOLREF(&ok) = VARIANT_TRUE;
        } else {
            return DISP_E_TYPEMISMATCH;
        }
        ++m_opened;
        m_recordset.AddRef();
        VARIANT rows;
        VariantInit(&rows);
        V_VT(&rows) = VT_DISPATCH;
        V_DISPATCH(&rows) = &m_recordset;
        answer(result, rows);
        return S_OK;
    }
    case Execute:
        answer(result, number(0));
        return S_OK;
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}

} // namespace client
