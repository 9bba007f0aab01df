#pragma once

#include "Library.h"

#include <atomic>
#include <concepts>
#include <tuple>

namespace oVELDRA::automation {

// The interfaces of the automation runtime have no destructors: objects end by their count of references.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// What every object has in common: its interfaces, the first of which stands for the object, and its end with the last
/// reference. It begins with one, which is the maker's.
template <typename... Interfaces>
class Counted : public Interfaces...
{
public:
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
    {
        if (object == nullptr) {
            return E_POINTER;
        }
        void* found = nullptr;
        ((id == __uuidof(Interfaces) ? void(found = static_cast<Interfaces*>(this)) : void()), ...);
        const bool base = id == __uuidof(IUnknown) || (std::derived_from<Main, IDispatch> && id == __uuidof(IDispatch));
        *object = base ? static_cast<Main*>(this) : found;
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    Counted() = default;
    virtual ~Counted() = default;

private:
    using Main = std::tuple_element_t<0, std::tuple<Interfaces...>>;

    InUse m_inUse;
    std::atomic<ULONG> m_references{1};
};

#pragma GCC diagnostic pop

} // namespace oVELDRA::automation
