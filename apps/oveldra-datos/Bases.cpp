#include "Bases.h"

#include "Command.h"

#include <oVELDRA/RuntimeError.h>

#include <dialect/StatementError.h>
#include <store/DatabaseName.h>
#include <store/Schema.h>

#include <algorithm>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

/// The bases of which at least so many tables are there.
template <typename Enough>
std::vector<Database> basesWith(const QStringList& tables, Enough enough)
{
    std::vector<Database> result;
    for (const Database database : store::databases) {
        const auto& schemas = store::schemaOf(database);
        const auto there = std::count_if(schemas.begin(), schemas.end(), [&tables](const store::TableSchema& schema) {
            return tables.contains(schema.table.name, Qt::CaseInsensitive);
        });
        if (enough(static_cast<size_t>(there), schemas.size())) {
            result.push_back(database);
        }
    }
    return result;
}

} // namespace

Database baseOf(const QString& name)
{
    try {
        return store::databaseNamed(name);
    } catch (const RuntimeError& error) {
        throw BadUsageError(error.description());
    }
}

Database baseWithTables(const QStringList& tables)
{
    const auto whole = basesWith(tables, [](size_t there, size_t all) { return there == all; });
    if (whole.size() == 1) {
        return whole.front();
    }
    const auto some = basesWith(tables, [](size_t there, size_t) { return there > 0; });
    if (some.empty()) {
        throw RuntimeError(dialect::unknownTableNumber,
                           u"El origen no tiene ninguna tabla de las bases insumos, ncm o tornel."_s,
                           u"oVELDRA.datos"_s);
    }
    if (some.size() > 1) {
        throw BadUsageError(u"El origen tiene tablas de más de una base: elija una con --base."_s);
    }
    return some.front();
}

} // namespace oVELDRA::data
