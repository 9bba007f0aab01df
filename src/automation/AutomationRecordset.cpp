#include "AutomationRecordset.h"

#include "Errors.h"

#include <utility>

using Microsoft::WRL::ComPtr;

namespace oVELDRA::automation {

AutomationRecordset::AutomationRecordset(LateObject object) : m_object(std::move(object)) {}

bool AutomationRecordset::atEof() const
{
    return m_object.call(L"EOF").toBool();
}

void AutomationRecordset::moveNext()
{
    m_object.call(L"MoveNext");
}

void AutomationRecordset::moveFirst()
{
    m_object.call(L"MoveFirst");
}

qsizetype AutomationRecordset::recordCount() const
{
    return static_cast<qsizetype>(m_object.call(L"RecordCount").toInteger());
}

ComPtr<IDispatch> AutomationRecordset::collection() const
{
    try {
        return m_object.call(L"Fields").object();
    } catch (const RuntimeError&) {
        return {}; // it wants a name: what it then gives is the field
    }
}

Variant AutomationRecordset::field(Variant& name) const
{
    if (m_hasCollection.value_or(true)) {
        if (auto fields = collection()) {
            m_hasCollection = true;
            return LateObject(std::move(fields)).callDefault({&name});
        }
        m_hasCollection = false;
    }
    return m_object.call(L"Fields", {&name});
}

QVariant AutomationRecordset::value(QStringView field) const
{
    Variant name(field);
    const Variant found = this->field(name);
    if (auto object = found.object()) {
        const Variant content = LateObject(std::move(object)).callDefault();
        return fieldFrom(*plainOf(*content));
    }
    return fieldFrom(*plainOf(*found));
}

} // namespace oVELDRA::automation
