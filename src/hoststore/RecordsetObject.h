#pragma once

#include <oVELDRA/Recordset.h>

#include <automation/Object.h>
#include <memory>
#include <oVELDRAStore.h>

namespace oVELDRA::hoststore {

/// The rows of a query for automation clients. They stay readable after the connection is closed.
class RecordsetObject final : public automation::Object<::_Recordset>
{
public:
    explicit RecordsetObject(std::unique_ptr<Recordset> records);

    HRESULT STDMETHODCALLTYPE get_Fields(BSTR name, VARIANT* value) override;
    HRESULT STDMETHODCALLTYPE get_EOF(VARIANT_BOOL* value) override;
    HRESULT STDMETHODCALLTYPE get_RecordCount(LONG* value) override;
    HRESULT STDMETHODCALLTYPE MoveNext() override;
    HRESULT STDMETHODCALLTYPE MoveFirst() override;

private:
    std::unique_ptr<Recordset> m_records;
};

} // namespace oVELDRA::hoststore
