#include "Bases.h"

#include "Command.h"

#include <oVELDRA/RuntimeError.h>

#include <dialect/StatementError.h>
#include <store/Schema.h>

#include <algorithm>
#include <array>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

struct NamedBase
{
    QStringView name;
    Database database;
};

constexpr std::array bases = {NamedBase{u"insumos", Database::Inputs}, NamedBase{u"ncm", Database::Nomenclature},
                              NamedBase{u"tornel", Database::Host}};

/// The bases of which at least so many tables are there.
template <typename Enough>
std::vector<NamedBase> basesWith(const QStringList& tables, Enough enough)
{
    std::vector<NamedBase> result;
    for (const NamedBase& base : bases) {
        const auto& schemas = store::schemaOf(base.database);
        const auto there = std::count_if(schemas.begin(), schemas.end(), [&tables](const store::TableSchema& schema) {
            return tables.contains(schema.table.name, Qt::CaseInsensitive);
        });
        if (enough(static_cast<size_t>(there), schemas.size())) {
            result.push_back(base);
        }
    }
    return result;
}

} // namespace

QString nameOf(Database database)
{
    const auto* const found = std::find_if(bases.begin(), bases.end(),
                                           [database](const NamedBase& base) { return base.database == database; });
    return found->name.toString();
}

Database baseOf(const QString& name)
{
    const auto* const found =
        std::find_if(bases.begin(), bases.end(), [&name](const NamedBase& base) { return base.name == name; });
    if (found == bases.end()) {
        throw BadUsageError(u"No existe la base '%1': elija insumos, ncm o tornel."_s.arg(name));
    }
    return found->database;
}

Database baseWithTables(const QStringList& tables)
{
    const auto whole = basesWith(tables, [](size_t there, size_t all) { return there == all; });
    if (whole.size() == 1) {
        return whole.front().database;
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
    return some.front().database;
}

} // namespace oVELDRA::data
