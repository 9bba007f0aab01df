#pragma once

#include <oVELDRA/Store.h>

#include <dialect/Catalog.h>

#include <QStringView>

#include <initializer_list>

namespace oVELDRA::data {

/// Refuses a database that lacks tables of that schema (RuntimeError -2147217865): it is another kind of database, or
/// not one of ours. The text names what is missing.
void requireTables(const dialect::Catalog& tables, Database schema, std::initializer_list<QStringView> names);

/// The place of a column in a table that requireTables() has let pass. RuntimeError -2147217904 when it has none.
[[nodiscard]] int requiredColumn(const dialect::Table& table, QStringView column);

} // namespace oVELDRA::data
