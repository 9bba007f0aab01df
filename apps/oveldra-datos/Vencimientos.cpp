#include "Vencimientos.h"

#include "KnownTables.h"
#include "OpenStock.h"
#include "ReportWriter.h"
#include "Snapshot.h"
#include "StockTotals.h"

#include <QJsonObject>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;
using dialect::Value;

namespace {

constexpr int usualDays = 30;
constexpr int mostDays = 36500;

struct Wish
{
    QString stock;
    QDate today; ///< what days left are counted from
    int days = usualDays;
    bool expired = false; ///< also what expired before today

    [[nodiscard]] Term term() const
    {
        const QDate longAgo(1, 1, 1);
        return {expired ? longAgo : today, today.addDays(days)};
    }
};

Wish wishOf(const Arguments& arguments, QDate today)
{
    Wish wish{arguments.operands.front(), today};
    if (arguments.has(u"dias"_s)) {
        bool number = false;
        wish.days = arguments.options[u"dias"_s].toInt(&number);
        if (!number || wish.days < 0 || wish.days > mostDays) {
            throw BadUsageError(
                u"--dias es un número de 0 a %1; no '%2'."_s.arg(mostDays).arg(arguments.options[u"dias"_s]));
        }
    }
    if (arguments.has(u"desde"_s)) {
        wish.today = QDate::fromString(arguments.options[u"desde"_s], u"yyyy-MM-dd"_s);
        if (!wish.today.isValid()) {
            throw BadUsageError(u"--desde es una fecha como 2024-03-15; no '%1'."_s.arg(arguments.options[u"desde"_s]));
        }
    }
    wish.expired = arguments.has(u"vencidas"_s);
    return wish;
}

enum Column : size_t { Expiry, DaysLeft, Number, File, Customs, Description, Articles, Quantity, CifValue, Columns };

std::vector<ReportColumn> reportColumns()
{
    return {{u"INTVEN"_s, u"Vencimiento"_s},
            {u"dias"_s, u"Días"_s, true},
            {u"INTDCL"_s, u"Declaración"_s},
            {u"INTNRO"_s, u"Interno"_s},
            {u"INTADU"_s, u"Aduana"_s},
            {u"INTDES"_s, u"Descripción"_s},
            {u"articulos"_s, u"Artículos"_s, true},
            {u"cantidad"_s, u"Cantidad"_s, true},
            {u"cif"_s, u"CIF"_s, true}};
}

ReportWriter::Row rowOf(const OpenDeclaration& declaration, QDate today)
{
    const auto number = [](auto count) { return Value::ofNumber(static_cast<double>(count)); };
    return {{Expiry, Value::ofDate(declaration.expiry)},
            {DaysLeft, number(today.daysTo(declaration.expiry))},
            {Number, declaration.number},
            {File, declaration.file},
            {Customs, declaration.customs},
            {Description, declaration.description},
            {Articles, number(declaration.articles)},
            {Quantity, number(declaration.quantity)},
            {CifValue, number(declaration.value)}};
}

QString titleOf(const Wish& wish)
{
    const auto day = [](QDate date) { return dialect::textOf(Value::ofDate(date), {}); };
    const QString title =
        u"Declaraciones con saldo que vencen del %1 al %2"_s.arg(day(wish.today), day(wish.term().to));
    return wish.expired ? title + u", y las ya vencidas"_s : title;
}

void write(ReportWriter& writer, const std::vector<OpenDeclaration>& declarations, const Wish& wish)
{
    CompensatedSum quantity;
    CompensatedSum value;
    if (!declarations.empty()) {
        std::vector<size_t> columns(Columns);
        for (size_t column = 0; column < Columns; ++column) {
            columns[column] = column;
        }
        writer.begin(titleOf(wish), std::move(columns));
    }
    for (const OpenDeclaration& declaration : declarations) {
        writer.row(rowOf(declaration, wish.today));
        quantity.add(declaration.quantity);
        value.add(declaration.value);
    }
    const auto count = static_cast<qint64>(declarations.size());
    const auto number = [](double amount) { return dialect::textOf(Value::ofNumber(amount), {}); };
    const QString total = u"Declaraciones: %1 · cantidad abierta: %2 · CIF: %3"_s.arg(count).arg(
        number(quantity.value()), number(value.value()));
    writer.end({declarations.empty() ? QString(titleOf(wish) + u": ninguna.") : total},
               {{u"desde"_s, dialect::isoDate(wish.today)},
                {u"hasta"_s, dialect::isoDate(wish.term().to)},
                {u"vencidas"_s, wish.expired},
                {u"declaraciones"_s, count},
                {u"cantidad"_s, quantity.value()},
                {u"cif"_s, value.value()}});
}

int run(const Arguments& arguments, Console& console, const runtime::Clock& clock)
{
    const ReportFormat format = formatOf(arguments, console);
    const Wish wish = wishOf(arguments, clock.today());
    Snapshot stock(wish.stock);
    requireTables(stock.tables(), Database::Inputs, {u"INTINS", u"INS"});
    const std::vector<OpenDeclaration> declarations = openDeclarations(
        stock.engine(), stock.tables(), wish.term(), [&console](const QString& line) { console.complain(line); });
    write(*makeReportWriter(format, console, u"vencimientos"_s, reportColumns()), declarations, wish);
    return declarations.empty() ? Success : Findings;
}

constexpr QStringView help = uR"(Lista las declaraciones que vencen (INTVEN) dentro de tantos días y todavía
tienen saldo, con lo que queda abierto: artículos con saldo, cantidad (suma de
ARTDSC) y valor CIF (suma de ARTDSC por ARTPRE). Van por vencimiento y después
por número. Solo lee: no cambia nada.

Las declaraciones sin saldo, o sin vencimiento, no se listan. Los saldos
negativos no cuentan como abiertos: verificar los muestra.

Códigos de salida: 0 no vence nada, 1 hay declaraciones en la lista, 2 la
orden está mal escrita, 3 no se pudo leer la base.

Ejemplos:
  oveldra-datos vencimientos sqlite:insumos.sqlite
  oveldra-datos vencimientos sqlite:insumos.sqlite --dias 60 --vencidas
  oveldra-datos vencimientos sqlite:insumos.sqlite --desde 2024-12-31 --json
)";

} // namespace

Command vencimientos()
{
    return vencimientos(std::make_shared<runtime::SystemClock>());
}

Command vencimientos(std::shared_ptr<const runtime::Clock> clock)
{
    return {u"vencimientos"_s,
            u"Lista las declaraciones que están por vencer y lo que tienen abierto."_s,
            {u"STOCK"_s},
            help.toString(),
            {{u"dias"_s, u"N"_s, u"Hasta cuántos días desde hoy (por omisión, 30)."_s},
             {u"desde"_s, u"FECHA"_s, u"Otro día en lugar de hoy, como 2024-03-15."_s},
             {u"vencidas"_s, {}, u"También las que ya vencieron y tienen saldo."_s},
             formatOption()},
            [clock = std::move(clock)](const Arguments& arguments, Console& console) {
                return run(arguments, console, *clock);
            }};
}

} // namespace oVELDRA::data
