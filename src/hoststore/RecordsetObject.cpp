#include "RecordsetObject.h"

#include <automation/Texts.h>
#include <automation/Variants.h>
#include <utility>

namespace oVELDRA::hoststore {

RecordsetObject::RecordsetObject(std::unique_ptr<Recordset> records) : m_records(std::move(records)) {}

HRESULT RecordsetObject::get_Fields(BSTR name, VARIANT* value)
{
    return answer(value, [&] {
        VARIANT field;
        VariantInit(&field);
        automation::putField(m_records->value(automation::textFrom(name)), field);
        return field;
    });
}

HRESULT RecordsetObject::get_EOF(VARIANT_BOOL* value)
{
    return answer(value, [&] { return m_records->atEof() ? VARIANT_TRUE : VARIANT_FALSE; });
}

HRESULT RecordsetObject::get_RecordCount(LONG* value)
{
    return answer(value, [&] { return static_cast<LONG>(m_records->recordCount()); });
}

HRESULT RecordsetObject::MoveNext()
{
    return guarded([&] { m_records->moveNext(); });
}

HRESULT RecordsetObject::MoveFirst()
{
    return guarded([&] { m_records->moveFirst(); });
}

} // namespace oVELDRA::hoststore
