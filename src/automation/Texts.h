#pragma once

#include <QString>

#include <oaidl.h>
#include <oleauto.h>

namespace oVELDRA::automation {

/// The text of a string of automation, whose null pointer is the empty text.
[[nodiscard]] QString textFrom(const OLECHAR* text);

/// The same of one that was given to us; it is freed.
[[nodiscard]] QString takenText(BSTR text);

/// A new string for the caller, who frees it. Throws std::bad_alloc.
[[nodiscard]] BSTR newText(QStringView text);

} // namespace oVELDRA::automation
