#pragma once

#include <oVELDRA/Store.h>

#include <QString>
#include <QStringList>

namespace oVELDRA::data {

/// The database of a name that a user wrote. BadUsageError for another name.
[[nodiscard]] Database baseOf(const QString& name);

/// Which database it is that has these tables. RuntimeError -2147217865 when it has none that are known; BadUsageError
/// when it could be more than one, which the user must then choose from.
[[nodiscard]] Database baseWithTables(const QStringList& tables);

} // namespace oVELDRA::data
