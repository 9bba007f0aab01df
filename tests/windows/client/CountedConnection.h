#pragma once

#include <atomic>
#include <oaidl.h>
#include <windows.h>

namespace client {

// The system's interfaces have no virtual destructors: they would stand in the slots.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// An automation object that knows how many references to it there are. The program owns it, so that a reference that
/// is given up too often shows, too.
class CountedObject : public IDispatch
{
public:
    CountedObject() = default;
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;
    virtual ~CountedObject() = default;

    /// The program's own one included.
    [[nodiscard]] long references() const { return m_references; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** information) override;

private:
    std::atomic<long> m_references = 1;
};

#pragma GCC diagnostic pop

/// A result without rows.
class CountedRecordset final : public CountedObject
{
public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind, DISPPARAMS* arguments,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;
};

/// A host's own connection with the three operations that it must have, over databases without rows.
class CountedConnection final : public CountedObject
{
public:
    [[nodiscard]] const CountedRecordset& recordset() const { return m_recordset; }
    [[nodiscard]] long opened() const { return m_opened; }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind, DISPPARAMS* arguments,
                                     VARIANT* result, EXCEPINFO* exception, UINT* wrongArgument) override;

private:
    CountedRecordset m_recordset;
    std::atomic<long> m_opened = 0;
};

} // namespace client
