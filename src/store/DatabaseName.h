#pragma once

#include <oVELDRA/Store.h>

#include <QString>

#include <array>

namespace oVELDRA::store {

/// All there are.
inline constexpr std::array databases = {Database::Inputs, Database::Nomenclature, Database::Host};

/// What people and scripts call a database: insumos, ncm or tornel.
[[nodiscard]] QString nameOf(Database database);

/// The database of a name, in whatever case it is written. RuntimeError 5 for another name.
[[nodiscard]] Database databaseNamed(const QString& name);

} // namespace oVELDRA::store
