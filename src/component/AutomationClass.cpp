// The class as automation clients see it, over the very same C++ class.

#include "DpiScope.h"
#include "HostWindows.h"

#include <oVELDRA/cloVELDRAMain.h>

#include <core/Application.h>

#include <array>
#include <automation/Connections.h>
#include <automation/Object.h>
#include <automation/Texts.h>
#include <oVELDRA.h>

namespace oVELDRA {

namespace {

using automation::newText;
using automation::textFrom;

class AutomationClass final : public automation::Object<::_cloVELDRAMain>
{
public:
    HRESULT STDMETHODCALLTYPE get_OK(VARIANT_BOOL* value) override
    {
        return read(value, [this] { return toVariantBool(m_object.get_OK()); });
    }
    HRESULT STDMETHODCALLTYPE get_CATNRO(BSTR* value) override { return readText<&cloVELDRAMain::get_CATNRO>(value); }
    HRESULT STDMETHODCALLTYPE get_PRDDES(BSTR* value) override { return readText<&cloVELDRAMain::get_PRDDES>(value); }
    HRESULT STDMETHODCALLTYPE get_PRDNCM(BSTR* value) override { return readText<&cloVELDRAMain::get_PRDNCM>(value); }
    HRESULT STDMETHODCALLTYPE get_PRDPAI(BSTR* value) override { return readText<&cloVELDRAMain::get_PRDPAI>(value); }
    HRESULT STDMETHODCALLTYPE get_PRDPRE(double* value) override
    {
        return read(value, [this] { return m_object.get_PRDPRE(); });
    }
    HRESULT STDMETHODCALLTYPE get_PRDSUF(BSTR* value) override { return readText<&cloVELDRAMain::get_PRDSUF>(value); }
    HRESULT STDMETHODCALLTYPE get_PRDUNI(BSTR* value) override { return readText<&cloVELDRAMain::get_PRDUNI>(value); }
    HRESULT STDMETHODCALLTYPE put_BaseNcm(BSTR* path) override { return writeText<&cloVELDRAMain::put_BaseNcm>(path); }
    HRESULT STDMETHODCALLTYPE put_BaseTornel(BSTR* path) override
    {
        return writeText<&cloVELDRAMain::put_BaseTornel>(path);
    }
    HRESULT STDMETHODCALLTYPE put_BaseInsumos(BSTR* path) override
    {
        return writeText<&cloVELDRAMain::put_BaseInsumos>(path);
    }
    HRESULT STDMETHODCALLTYPE put_Interno_Externo(BSTR* interno) override
    {
        return writeText<&cloVELDRAMain::put_Interno_Externo>(interno);
    }
    HRESULT STDMETHODCALLTYPE ConectarDB(VARIANT* po_DBINS, VARIANT* po_DBNCM, VARIANT* po_DBTOR,
                                         VARIANT_BOOL* connected) override
    {
        using automation::connectionArgument;
        return read(connected, [&] {
            const HostWindowsBlocked modal; // for the box of an error
            return toVariantBool(m_object.ConectarDB(connectionArgument(po_DBINS), connectionArgument(po_DBNCM),
                                                     connectionArgument(po_DBTOR)));
        });
    }
    HRESULT STDMETHODCALLTYPE Mostrar() override { return run<&cloVELDRAMain::Mostrar>(); }
    HRESULT STDMETHODCALLTYPE Importar() override { return run<&cloVELDRAMain::Importar>(); }
    HRESULT STDMETHODCALLTYPE MostrarDIT() override { return run<&cloVELDRAMain::MostrarDIT>(); }
    HRESULT STDMETHODCALLTYPE get_PRDNRO(BSTR* value) override { return readText<&cloVELDRAMain::get_PRDNRO>(value); }
    HRESULT STDMETHODCALLTYPE put_ADUANA(BSTR* aduana) override
    {
        return writeText<&cloVELDRAMain::put_ADUANA>(aduana);
    }
    HRESULT STDMETHODCALLTYPE VerINSxSBT() override { return run<&cloVELDRAMain::VerINSxSBT>(); }
    HRESULT STDMETHODCALLTYPE put_IdSUB(BSTR* id) override { return writeText<&cloVELDRAMain::put_IdSUB>(id); }

private:
    static VARIANT_BOOL toVariantBool(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }

    template <typename Answer, typename Make>
    [[nodiscard]] HRESULT read(Answer* value, Make make) noexcept
    {
        const DpiScope scaled;
        return answer(value, make);
    }
    template <auto getter>
    [[nodiscard]] HRESULT readText(BSTR* value) noexcept
    {
        return read(value, [this] { return newText((m_object.*getter)()); });
    }
    template <auto putter>
    [[nodiscard]] HRESULT writeText(const BSTR* text) noexcept
    {
        const DpiScope scaled;
        return guarded([&] { (m_object.*putter)(textFrom(text != nullptr ? *text : nullptr)); });
    }
    template <auto operation>
    [[nodiscard]] HRESULT run() noexcept
    {
        const DpiScope scaled;
        return guarded([&] {
            const HostWindowsBlocked modal;
            (m_object.*operation)();
        });
    }

    cloVELDRAMain m_object;
};

IUnknown* makeObject()
{
    const DpiScope scaled;
    return static_cast<::_cloVELDRAMain*>(new AutomationClass);
}

const std::array classes{automation::CreatableClass{__uuidof(::cloVELDRAMain), L"oVELDRA.cloVELDRAMain",
                                                    L"Componente oVELDRA", &makeObject}};
const std::array interfaces{automation::PublicInterface{__uuidof(::_cloVELDRAMain), L"_cloVELDRAMain"}};

} // namespace

const automation::Library& automation::library()
{
    static const Library description{LIBID_oVELDRA, L"oVELDRA", classes, interfaces, &core::endOwnApplication};
    return description;
}

} // namespace oVELDRA
