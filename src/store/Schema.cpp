#include "Schema.h"

#include "DatabaseName.h"

#include <initializer_list>

namespace oVELDRA::store {

using namespace Qt::StringLiterals;
using dialect::Column;
using dialect::ColumnKind;
using dialect::Table;

namespace {

using Names = std::initializer_list<QStringView>;

// Widths: a declaration number has at most 17 characters; codes and descriptions are as wide as the screens need,
// with room to spare. A text that does not fit is refused, never cut.
constexpr int declarationWidth = 17;
constexpr int codeWidth = 50;
constexpr int shortCodeWidth = 10;
constexpr int descriptionWidth = 255;

Column text(QStringView name, int width)
{
    return {name.toString(), ColumnKind::Text, width};
}

Column memo(QStringView name)
{
    return text(name, 0);
}

Column code(QStringView name)
{
    return text(name, codeWidth);
}

Column shortCode(QStringView name)
{
    return text(name, shortCodeWidth);
}

Column number(QStringView name)
{
    return {name.toString(), ColumnKind::Double, 0};
}

Column integer(QStringView name)
{
    return {name.toString(), ColumnKind::Integer, 0};
}

Column yesNo(QStringView name)
{
    return {name.toString(), ColumnKind::Boolean, 0};
}

Column date(QStringView name)
{
    return {name.toString(), ColumnKind::Date, 0};
}

std::vector<int> places(const Table& table, Names names)
{
    std::vector<int> result;
    for (const QStringView name : names) {
        result.push_back(table.find(name));
    }
    return result;
}

TableSchema define(QStringView name, std::vector<Column> columns, Names key, std::initializer_list<Names> indexes = {})
{
    TableSchema result;
    result.table.name = name.toString();
    result.table.columns = std::move(columns);
    result.table.key = places(result.table, key);
    for (const Names& index : indexes) {
        result.indexes.push_back(places(result.table, index));
    }
    return result;
}

std::vector<TableSchema> inputs()
{
    std::vector<TableSchema> tables;
    tables.push_back(define(u"CAT", {code(u"CATNRO"), text(u"CATDES", descriptionWidth)}, {u"CATNRO"}));
    tables.push_back(
        define(u"PRD",
               {code(u"CATNRO"), code(u"PRDNRO"), text(u"PRDDES", descriptionWidth), code(u"PRDNCM"), number(u"PRDMUL"),
                shortCode(u"PRDUNI"), number(u"PRDPRE"), memo(u"PRDSUF"), shortCode(u"PRDPAI"), number(u"PRDKGU")},
               {u"CATNRO", u"PRDNRO"}, {{u"CATNRO"}}));
    tables.push_back(
        define(u"RIP",
               {code(u"CATNRO"), code(u"PRDNRO"), code(u"ARTNRO"), text(u"RPADES", descriptionWidth), number(u"RIPCAN"),
                number(u"RIPMER"), number(u"RIPPER"), yesNo(u"TRPMER"), yesNo(u"TRPPER"), yesNo(u"DIPOBL")},
               {u"CATNRO", u"PRDNRO", u"ARTNRO"}));
    tables.push_back(define(u"INTINS",
                            {code(u"INTNRO"),
                             text(u"INTDCL", declarationWidth),
                             date(u"INTFOF"),
                             date(u"INTVEN"),
                             text(u"INTDES", descriptionWidth),
                             shortCode(u"INTADU"),
                             code(u"INTCTC"),
                             // The import writes 0 or 1 and the browser shows what was written.
                             {u"INTIOK"_s, ColumnKind::SmallInteger, 0}},
                            {u"INTDCL"}, {{u"INTNRO"}}));
    tables.push_back(define(u"INS",
                            {text(u"INTDCL", declarationWidth), code(u"ARTNRO"), shortCode(u"ARTUNI"),
                             number(u"ARTCAT"), number(u"ARTPRE"), number(u"ARTDSC"), code(u"ARTNCM"),
                             integer(u"ARTITM"), integer(u"ARTSBT"), code(u"ARTCTC")},
                            {}, {{u"INTDCL"}}));
    tables.push_back(define(u"DIP",
                            {text(u"ARTDCL", declarationWidth), code(u"ARTNRO"), integer(u"ARTITM"), integer(u"ARTSBT"),
                             number(u"ARTPRE"), number(u"RALCAN"), code(u"EXTINT"), integer(u"EXTSBT"), code(u"EXTNOF"),
                             date(u"EXTFOF"), code(u"EXTFAC"), number(u"DIPCAN"), number(u"RIPCAN"), number(u"RIPMER"),
                             number(u"RIPPER"), yesNo(u"TRPMER"), yesNo(u"TRPPER"), number(u"PRDMUL")},
                            {}, {{u"ARTDCL"}, {u"EXTINT", u"EXTSBT"}}));
    return tables;
}

std::vector<TableSchema> nomenclature()
{
    std::vector<TableSchema> tables;
    tables.push_back(define(u"NCM",
                            {text(u"001", 10), text(u"002", 3), text(u"003", 1), memo(u"004"), memo(u"010"),
                             shortCode(u"012"), number(u"019"), number(u"020"), shortCode(u"059")},
                            {}, {{u"001", u"002", u"003"}}));
    tables.push_back(
        define(u"sufidos", {text(u"sim", 14), text(u"sufijo", 5), text(u"detalle", descriptionWidth)}, {}, {{u"sim"}}));
    return tables;
}

std::vector<TableSchema> host()
{
    std::vector<TableSchema> tables;
    tables.push_back(define(
        u"caratula", {code(u"interno"), number(u"fobdivcambio"), number(u"fletedivcambio"), number(u"segurodivcambio")},
        {}, {{u"interno"}}));
    tables.push_back(define(u"item",
                            {code(u"interno"), integer(u"id"), number(u"FobTotal"), number(u"itflete"),
                             number(u"itseguro"), number(u"ajusteinc"), number(u"ajusteded")},
                            {}, {{u"interno", u"id"}}));
    tables.push_back(
        define(u"groupsubitems",
               {code(u"interno"), integer(u"id"), integer(u"idsub"), code(u"IDARTICULO"), shortCode(u"IDUNIDAD"),
                number(u"CANTIDAD"), number(u"PRECIOUNITARIO"), code(u"NCM"), number(u"FOB")},
               {}, {{u"interno", u"id", u"idsub"}}));
    return tables;
}

} // namespace

const std::vector<TableSchema>& schemaOf(Database database)
{
    static const std::vector<TableSchema> inputsTables = inputs();
    static const std::vector<TableSchema> nomenclatureTables = nomenclature();
    static const std::vector<TableSchema> hostTables = host();
    switch (database) {
    case Database::Inputs:
        return inputsTables;
    case Database::Nomenclature:
        return nomenclatureTables;
    case Database::Host:
        break;
    }
    return hostTables;
}

void adoptKey(Table& table)
{
    for (const Database database : databases) {
        for (const TableSchema& schema : schemaOf(database)) {
            if (schema.table.name.compare(table.name, Qt::CaseInsensitive) != 0) {
                continue;
            }
            for (const int column : schema.table.key) {
                table.key.push_back(table.find(schema.table.columns[static_cast<size_t>(column)].name));
            }
            if (std::find(table.key.begin(), table.key.end(), -1) != table.key.end()) {
                table.key.clear(); // another table of that name
            }
        }
    }
}

} // namespace oVELDRA::store
