#pragma once

#include <QVariant>

#include <oaidl.h>

namespace oVELDRA::automation {

/// An argument of ConectarDB() as cloVELDRAMain takes it.
///
/// A host's connection is any automation object with SetSql, OpenRecordset and Execute, or one of ADO, told by its
/// ConnectionString and CursorLocation. Another object comes as one that is no connection, a null pointer as an omitted
/// argument.
[[nodiscard]] QVariant connectionArgument(const VARIANT* argument);

} // namespace oVELDRA::automation
