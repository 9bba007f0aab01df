#pragma once

#include "LateObject.h"

#include <oVELDRA/Recordset.h>

#include <optional>

namespace oVELDRA::automation {

/// A recordset of the host's, or one of ADO: `EOF`, `RecordCount`, `MoveNext`, `MoveFirst` and `Fields(name)`.
///
/// A field is the value itself or an object whose default member is the value. `Fields` may also be a collection, whose
/// default member then gives the field.
class AutomationRecordset final : public Recordset
{
public:
    explicit AutomationRecordset(LateObject object);

    [[nodiscard]] bool atEof() const override;
    void moveNext() override;
    void moveFirst() override;
    [[nodiscard]] qsizetype recordCount() const override;
    [[nodiscard]] QVariant value(QStringView field) const override;

private:
    [[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> collection() const;
    [[nodiscard]] Variant field(Variant& name) const;

    mutable LateObject m_object;                 // keeps what it has found of the object's members
    mutable std::optional<bool> m_hasCollection; // known once a field was read
};

} // namespace oVELDRA::automation
