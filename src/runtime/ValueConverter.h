#pragma once

#include <QString>
#include <QVariant>

namespace oVELDRA::runtime {

/// A recordset's field or a typed text as a number: Null, empty and non-numeric text give 0, otherwise as CDbl().
[[nodiscard]] double toNumber(const QVariant& value);

/// A recordset's field as text: Null gives "", numbers as CStr(), dates as "dd/mm/yyyy".
[[nodiscard]] QString toText(const QVariant& value);

} // namespace oVELDRA::runtime
