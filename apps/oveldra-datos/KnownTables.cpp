#include "KnownTables.h"

#include <oVELDRA/RuntimeError.h>

#include <QStringList>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

// The numbers that the store's statements give, too.
constexpr int unknownTable = -2147217865;
constexpr int unknownColumn = -2147217904;

QString kindOf(Database schema)
{
    switch (schema) {
    case Database::Inputs:
        return u"de insumos"_s;
    case Database::Nomenclature:
        return u"de nomenclador"_s;
    case Database::Host:
        break;
    }
    return u"de declaraciones"_s;
}

} // namespace

void requireTables(const dialect::Catalog& tables, Database schema, std::initializer_list<QStringView> names)
{
    QStringList missing;
    for (const QStringView name : names) {
        if (!tables.find(name)) {
            missing.append(name.toString());
        }
    }
    if (!missing.isEmpty()) {
        throw RuntimeError(
            unknownTable,
            u"La base de datos no es una base %1: no tiene %2 %3."_s.arg(
                kindOf(schema), missing.size() == 1 ? u"la tabla"_s : u"las tablas"_s, missing.join(u", "_s)),
            u"oVELDRA.datos"_s);
    }
}

int requiredColumn(const dialect::Table& table, QStringView column)
{
    const int place = table.find(column);
    if (place < 0) {
        throw RuntimeError(unknownColumn, u"La tabla %1 no tiene la columna %2."_s.arg(table.name, column),
                           u"oVELDRA.datos"_s);
    }
    return place;
}

} // namespace oVELDRA::data
