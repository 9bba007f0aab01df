#include "OpenStock.h"

#include "KnownTables.h"
#include "Quantity.h"
#include "StockTotals.h"

#include <oVELDRA/RuntimeError.h>

#include <dialect/TextComparison.h>
#include <store/RowStream.h>

#include <algorithm>
#include <unordered_map>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

// Half of the last of eight decimals, the most that the program writes.
constexpr double leastLeft = 0.000000005;

store::RowStream openTable(store::EngineConnection& engine, const dialect::Catalog& tables, QStringView name,
                           std::initializer_list<QStringView> columns)
{
    const dialect::Table& table = *tables.find(name);
    dialect::TableScan scan;
    for (const QStringView column : columns) {
        scan.columns.push_back(requiredColumn(table, column));
    }
    return {engine, table, scan};
}

/// What a declaration has left.
struct Left
{
    qint64 articles = 0;
    CompensatedSum quantity;
    CompensatedSum value;
};

using LeftByNumber = std::unordered_map<QString, Left>; // by folded number

QString keyOf(const Value& number)
{
    return dialect::folded(dialect::textOf(number, {}));
}

/// The day of a value; none for Null, and for what is no date.
std::optional<QDate> dayOf(const Value& value)
{
    try {
        return value.isNull() ? std::nullopt : std::optional(dialect::dateOf(value));
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

std::vector<OpenDeclaration> headersOf(store::EngineConnection& engine, const dialect::Catalog& tables,
                                       const Term& term, const std::function<void(const QString&)>& complain)
{
    std::vector<OpenDeclaration> headers;
    store::RowStream rows =
        openTable(engine, tables, u"INTINS", {u"INTDCL", u"INTNRO", u"INTADU", u"INTDES", u"INTVEN"});
    while (rows.next()) {
        const Value number = rows.value(0);
        const Value expiry = rows.value(4);
        const std::optional<QDate> day = dayOf(expiry);
        if (!day && !expiry.isNull()) {
            complain(u"El vencimiento de la declaración %1 no es una fecha: '%2'."_s.arg(dialect::textOf(number, {}),
                                                                                         dialect::textOf(expiry, {})));
        }
        if (day && *day >= term.from && *day <= term.to && !number.isNull()) {
            headers.push_back({number, rows.value(1), rows.value(2), rows.value(3), *day});
        }
    }
    return headers;
}

void addArticles(store::EngineConnection& engine, const dialect::Catalog& tables, LeftByNumber& left)
{
    store::RowStream rows = openTable(engine, tables, u"INS", {u"INTDCL", u"ARTDSC", u"ARTPRE"});
    while (rows.next()) {
        const Value number = rows.value(0);
        const double balance = quantityOf(rows.value(1));
        if (number.isNull() || !(balance > leastLeft)) {
            continue;
        }
        const auto found = left.find(keyOf(number));
        if (found != left.end()) {
            ++found->second.articles;
            found->second.quantity.add(balance);
            found->second.value.add(balance * quantityOf(rows.value(2)));
        }
    }
}

} // namespace

std::vector<OpenDeclaration> openDeclarations(store::EngineConnection& engine, const dialect::Catalog& tables,
                                              const Term& term, const std::function<void(const QString&)>& complain)
{
    std::vector<OpenDeclaration> headers = headersOf(engine, tables, term, complain);
    LeftByNumber left;
    for (const OpenDeclaration& header : headers) {
        left.try_emplace(keyOf(header.number));
    }
    addArticles(engine, tables, left);
    std::vector<OpenDeclaration> result;
    for (OpenDeclaration& header : headers) {
        const Left& own = left.at(keyOf(header.number));
        if (own.articles > 0) {
            header.articles = own.articles;
            header.quantity = own.quantity.value();
            header.value = own.value.value();
            result.push_back(std::move(header));
        }
    }
    std::stable_sort(result.begin(), result.end(), [](const OpenDeclaration& a, const OpenDeclaration& b) {
        return a.expiry != b.expiry ? a.expiry < b.expiry : dialect::spanishOrder(a.number.text, b.number.text) < 0;
    });
    return result;
}

} // namespace oVELDRA::data
