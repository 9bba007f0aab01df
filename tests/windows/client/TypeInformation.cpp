#include "Commands.h"
#include "Host.h"

#include <array>
#include <string>
#include <vector>

namespace client {

namespace {

enum class Parameters { None, Text, Connections };

/// A member as a host's compiler reads it from the type library.
struct Member
{
    const wchar_t* name;
    INVOKEKIND kind;
    VARTYPE answer;
    Parameters parameters;
};

/// In the order of their slots.
constexpr std::array<Member, 20> members{{
    {L"OK", INVOKE_PROPERTYGET, VT_BOOL, Parameters::None},
    {L"CATNRO", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"PRDDES", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"PRDNCM", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"PRDPAI", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"PRDPRE", INVOKE_PROPERTYGET, VT_R8, Parameters::None},
    {L"PRDSUF", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"PRDUNI", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"BaseNcm", INVOKE_PROPERTYPUT, VT_VOID, Parameters::Text},
    {L"BaseTornel", INVOKE_PROPERTYPUT, VT_VOID, Parameters::Text},
    {L"BaseInsumos", INVOKE_PROPERTYPUT, VT_VOID, Parameters::Text},
    {L"Interno_Externo", INVOKE_PROPERTYPUT, VT_VOID, Parameters::Text},
    {L"ConectarDB", INVOKE_FUNC, VT_BOOL, Parameters::Connections},
    {L"Mostrar", INVOKE_FUNC, VT_VOID, Parameters::None},
    {L"Importar", INVOKE_FUNC, VT_VOID, Parameters::None},
    {L"MostrarDIT", INVOKE_FUNC, VT_VOID, Parameters::None},
    {L"PRDNRO", INVOKE_PROPERTYGET, VT_BSTR, Parameters::None},
    {L"ADUANA", INVOKE_PROPERTYPUT, VT_VOID, Parameters::Text},
    {L"VerINSxSBT", INVOKE_FUNC, VT_VOID, Parameters::None},
    {L"IdSUB", INVOKE_PROPERTYPUT, VT_VOID, Parameters::Text},
}};

/// The functions of IUnknown and IDispatch, which some systems list with the members.
constexpr size_t inherited = 7;
constexpr MEMBERID firstInherited = 0x60000000;

class Description
{
public:
    Description(ITypeInfo& information, UINT index) : m_information(information)
    {
        checkResult(information.GetFuncDesc(index, &m_function), S_OK, "a member's description can be had");
    }
    ~Description() { m_information.ReleaseFuncDesc(m_function); }
    Description(const Description&) = delete;
    Description& operator=(const Description&) = delete;

    const FUNCDESC* operator->() const { return m_function; }

private:
    ITypeInfo& m_information;
    FUNCDESC* m_function = nullptr;
};

struct Attributes
{
    TYPEKIND kind;
    WORD flags;
    WORD functions;
    GUID guid;
};

Attributes attributesOf(ITypeInfo& information)
{
    TYPEATTR* raw = nullptr;
    checkResult(information.GetTypeAttr(&raw), S_OK, "the attributes of the type can be had");
    const Attributes attributes{raw->typekind, raw->wTypeFlags, raw->cFuncs, raw->guid};
    information.ReleaseTypeAttr(raw);
    return attributes;
}

void checkReference(const ELEMDESC& parameter, VARTYPE type, bool optional, const std::string& what)
{
    checkNumber(parameter.tdesc.vt, VT_PTR, what + " goes by reference");
    checkNumber(parameter.tdesc.lptdesc->vt, type, what + " has its type");
    constexpr USHORT directions = PARAMFLAG_FIN | PARAMFLAG_FOUT | PARAMFLAG_FRETVAL;
    checkNumber(parameter.paramdesc.wParamFlags & directions, PARAMFLAG_FIN | PARAMFLAG_FOUT, what + " goes both ways");
    checkNumber(parameter.paramdesc.wParamFlags & PARAMFLAG_FOPT, optional ? PARAMFLAG_FOPT : 0,
                what + (optional ? " may be left out" : " must be there"));
}

/// Parameters before the one that is the answer.
void checkParameters(const Description& function, const Member& member)
{
    const std::string name = printed(member.name);
    switch (member.parameters) {
    case Parameters::None:
        break;
    case Parameters::Text:
        checkReference(function->lprgelemdescParam[0], VT_BSTR, false, name + "'s text");
        break;
    case Parameters::Connections:
        checkReference(function->lprgelemdescParam[0], VT_VARIANT, false, name + "'s inputs database");
        checkReference(function->lprgelemdescParam[1], VT_VARIANT, true, name + "'s nomenclature");
        checkReference(function->lprgelemdescParam[2], VT_VARIANT, true, name + "'s own database");
        break;
    }
}

SHORT parameterCount(const Member& member)
{
    constexpr SHORT connections = 3;
    switch (member.parameters) {
    case Parameters::None:
        return 0;
    case Parameters::Text:
        return 1;
    case Parameters::Connections:
        return connections;
    }
    return 0;
}

void checkPlace(const Description& function, const Member& member, size_t slot, ITypeInfo& information)
{
    const std::string name = printed(member.name);
    Text found;
    UINT names = 0;
    checkResult(information.GetNames(function->memid, found.receive(), 1, &names), S_OK, name + " has a name");
    checkText(found.view(), member.name, name + " has its name");
    checkNumber(function->memid, static_cast<long long>(slot), name + " has its identifier");
    checkNumber(function->invkind, member.kind, name + " is of its kind");
    checkNumber(function->oVft, static_cast<long long>((inherited + slot - 1) * sizeof(void*)),
                name + " stands in its slot");
}

/// As hosts with late binding see it.
void checkByName(ITypeInfo& information)
{
    const Attributes attributes = attributesOf(information);
    checkNumber(attributes.kind, TKIND_DISPATCH, "the type is one for late binding");
    check((attributes.flags & TYPEFLAG_FDUAL) != 0, "the type is dual");
    check(attributes.guid == IID__cloVELDRAMain, "the type is the interface's");
    std::vector<UINT> own;
    for (UINT index = 0; index < attributes.functions; ++index) {
        const Description function(information, index);
        if (function->memid < firstInherited) {
            own.push_back(index);
        }
    }
    checkNumber(static_cast<long long>(own.size()), static_cast<long long>(members.size()), "there are 20 members");
    for (size_t i = 0; i < members.size(); ++i) {
        const Member& member = members[i];
        const std::string name = printed(member.name);
        const Description function(information, own[i]);
        checkPlace(function, member, i + 1, information);
        checkNumber(function->funckind, FUNC_DISPATCH, name + " is for late binding");
        checkNumber(function->elemdescFunc.tdesc.vt, member.answer, name + " answers with its type");
        checkNumber(function->cParams, parameterCount(member), name + " has its parameters");
        checkParameters(function, member);
    }
}

/// As hosts see it that call by slot.
void checkBySlot(ITypeInfo& information)
{
    HREFTYPE reference = 0;
    constexpr UINT otherView = static_cast<UINT>(-1);
    checkResult(information.GetRefTypeOfImplType(otherView, &reference), S_OK, "the type has its view by slots");
    ComPtr<ITypeInfo> bySlot;
    checkResult(information.GetRefTypeInfo(reference, &bySlot), S_OK, "the view by slots can be had");
    const Attributes attributes = attributesOf(*bySlot.Get());
    checkNumber(attributes.kind, TKIND_INTERFACE, "the other view is one by slots");
    checkNumber(attributes.functions, static_cast<long long>(members.size()), "the view by slots has 20 members");
    for (size_t i = 0; i < members.size(); ++i) {
        const Member& member = members[i];
        const std::string name = printed(member.name);
        const Description function(*bySlot.Get(), static_cast<UINT>(i));
        checkPlace(function, member, i + 1, *bySlot.Get());
        checkNumber(function->callconv, CC_STDCALL, name + " is called in the system's way");
        checkNumber(function->elemdescFunc.tdesc.vt, VT_HRESULT, name + " answers with a result by slot");
        const bool answers = member.answer != VT_VOID;
        checkNumber(function->cParams, parameterCount(member) + (answers ? 1 : 0),
                    name + " has its parameters by slot");
        checkParameters(function, member);
        if (answers) {
            const ELEMDESC& last = function->lprgelemdescParam[function->cParams - 1];
            checkNumber(last.paramdesc.wParamFlags & PARAMFLAG_FRETVAL, PARAMFLAG_FRETVAL, name + " gives its answer");
            checkNumber(last.tdesc.vt, VT_PTR, name + " gives its answer by reference");
            checkNumber(last.tdesc.lptdesc->vt, member.answer, name + " gives its answer's type");
        }
    }
}

} // namespace

void checkTypeInformation()
{
    const Apartment apartment(COINIT_APARTMENTTHREADED);
    const ComPtr<_cloVELDRAMain> component = create();
    UINT count = 0;
    checkResult(component->GetTypeInfoCount(&count), S_OK, "the object says whether it has type information");
    checkNumber(count, 1, "the object has type information");
    ComPtr<ITypeInfo> information;
    checkResult(component->GetTypeInfo(1, LOCALE_USER_DEFAULT, &information), DISP_E_BADINDEX,
                "there is no second one");
    checkResult(component->GetTypeInfo(0, LOCALE_USER_DEFAULT, &information), S_OK, "the object gives it");
    checkByName(*information.Get());
    checkBySlot(*information.Get());

    ComPtr<ITypeLib> library;
    checkResult(LoadRegTypeLib(LIBID_oVELDRA, 1, 0, LOCALE_NEUTRAL, &library), S_OK, "the type library is registered");
    ComPtr<ITypeInfo> coclass;
    checkResult(library->GetTypeInfoOfGuid(CLSID_cloVELDRAMain, &coclass), S_OK, "the type library has the class");
    checkNumber(attributesOf(*coclass.Get()).kind, TKIND_COCLASS, "the class is one that can be made");
    ComPtr<ITypeInfo> registered;
    checkResult(library->GetTypeInfoOfGuid(IID__cloVELDRAMain, &registered), S_OK,
                "the type library has the interface");
    checkByName(*registered.Get());
}

} // namespace client
