#include "TransferText.h"

#include <QJsonArray>
#include <QLocale>

#include <algorithm>
#include <array>
#include <set>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

constexpr int nameWidth = 22;
constexpr int figureWidth = 20;
constexpr int decimals = 2;
constexpr size_t rejectionsShown = 20;

QString line(const QString& name, std::initializer_list<QString> figures)
{
    QString text = name.leftJustified(nameWidth);
    for (const QString& figure : figures) {
        text += u' ' + figure.rightJustified(figureWidth);
    }
    return text;
}

QString count(qint64 rows)
{
    return QLocale().toString(rows);
}

QString amount(double value)
{
    return QLocale().toString(value, 'f', decimals);
}

bool hasStock(const TransferReport& report)
{
    return std::any_of(report.tables.begin(), report.tables.end(),
                       [](const MovedTable& table) { return !StockTotals::columnsOf(table.table).empty(); });
}

void sayTables(const TransferReport& report, Console& console)
{
    console.say(line(u"Filas"_s, {u"Origen"_s, u"Rechazadas"_s, u"Destino"_s}));
    for (const MovedTable& table : report.tables) {
        console.say(line(table.table, {count(table.read), count(table.rejected), count(table.written)}));
    }
}

void saySums(const TransferReport& report, Console& console)
{
    console.say(line(u"Sumas"_s, {u"Origen"_s, u"Rechazado"_s, u"Destino"_s}));
    const auto sum = [&](const QString& name, CompensatedSum StockSums::*which) {
        const double rejected = (report.rejected.all().*which).value();
        const double source = (report.kept.all().*which).value() + rejected;
        const double written = (report.written.all().*which).value();
        console.say(line(name, {amount(source), amount(rejected), amount(written)}));
    };
    sum(u"Cantidad declarada"_s, &StockSums::quantity);
    sum(u"Saldo"_s, &StockSums::balance);
    sum(u"Valor CIF"_s, &StockSums::cif);
    sum(u"Cantidad descargada"_s, &StockSums::discharged);
    console.say(u"Declaraciones comparadas una por una: %1."_s.arg(
        count(static_cast<qint64>(report.kept.declarations().size()))));
}

void sayUncopied(const TransferReport& report, Console& console)
{
    QStringList empty;
    for (const UncopiedTable& table : report.uncopiedTables) {
        if (table.rows == 0) {
            empty.append(table.table);
            continue;
        }
        console.say(u"ATENCIÓN: no se copió la tabla %1 (%2)."_s.arg(
            table.table, table.rows ? u"%1 filas"_s.arg(count(*table.rows)) : u"no se puede leer"_s));
    }
    for (const MovedTable& table : report.tables) {
        for (const UncopiedColumn& column : table.uncopied) {
            const QString name = table.table + u'.' + column.column;
            if (column.filled == 0) {
                empty.append(name);
            } else {
                console.say(
                    u"ATENCIÓN: no se copió la columna %1 (%2 filas con datos)."_s.arg(name, count(column.filled)));
            }
        }
    }
    if (!empty.isEmpty()) {
        console.say(u"No se copiaron, y no tienen datos: %1."_s.arg(empty.join(u", "_s)));
    }
}

void sayMissing(const TransferReport& report, Console& console)
{
    QStringList tables;
    QStringList columns;
    for (const MovedTable& table : report.tables) {
        if (!table.inSource) {
            tables.append(table.table);
        }
        for (const QString& column : table.missingColumns) {
            columns.append(table.table + u'.' + column);
        }
        if (table.announced && *table.announced < table.read) {
            console.say(u"La tabla %1 del origen anuncia %2 filas y tiene %3."_s.arg(
                table.table, count(*table.announced), count(table.read)));
        }
    }
    if (!tables.isEmpty()) {
        console.say(u"El origen no tiene estas tablas, que quedan sin filas: %1."_s.arg(tables.join(u", "_s)));
    }
    if (!columns.isEmpty()) {
        console.say(u"El origen no tiene estas columnas, que quedan vacías: %1."_s.arg(columns.join(u", "_s)));
    }
}

void sayRejections(const TransferReport& report, Console& console)
{
    if (report.rejectionCount == 0) {
        return;
    }
    console.say(u"Filas rechazadas: %1."_s.arg(count(report.rejectionCount)));
    const size_t shown = std::min(report.rejections.size(), rejectionsShown);
    for (size_t i = 0; i < shown; ++i) {
        const Rejection& rejection = report.rejections[i];
        console.say(
            u"  %1, fila %2 (%3): %4"_s.arg(rejection.table, count(rejection.row), rejection.key, rejection.reason));
    }
    const qint64 more = report.rejectionCount - static_cast<qint64>(shown);
    if (more > 0) {
        console.say(u"  … y %1 más; con --rechazos quedan todas en un archivo."_s.arg(count(more)));
    }
}

void sayOutcome(const TransferReport& report, Console& console)
{
    for (const QString& failure : report.failures) {
        console.say(u"La prueba no cierra: %1."_s.arg(failure));
    }
    if (report.committed) {
        console.say(u"La prueba cierra: el destino tiene todo lo que se leyó%1."_s.arg(
            report.rejectionCount == 0 ? QString() : u", menos lo rechazado"_s));
    } else if (!report.failures.isEmpty()) {
        console.say(u"No se guardó nada."_s);
    } else {
        console.say(u"No se guardó nada: hay filas rechazadas. Corríjalas en el origen, o acepte perderlas con "
                    "--aceptar-rechazos."_s);
    }
}

QJsonObject jsonOf(const StockSums& sums)
{
    return {{u"articles"_s, sums.articles},       {u"quantity"_s, sums.quantity.value()},
            {u"balance"_s, sums.balance.value()}, {u"cif"_s, sums.cif.value()},
            {u"discharges"_s, sums.discharges},   {u"discharged"_s, sums.discharged.value()}};
}

StockSums together(StockSums sums, const StockSums& more)
{
    sums.articles += more.articles;
    sums.discharges += more.discharges;
    for (CompensatedSum StockSums::*const which :
         {&StockSums::quantity, &StockSums::balance, &StockSums::cif, &StockSums::discharged}) {
        (sums.*which).add((more.*which).value());
    }
    return sums;
}

QJsonObject comparison(const StockSums& kept, const StockSums& rejected, const StockSums& written)
{
    return {{u"source"_s, jsonOf(together(kept, rejected))},
            {u"rejected"_s, jsonOf(rejected)},
            {u"destination"_s, jsonOf(written)},
            {u"equal"_s, kept.equals(written)}};
}

QJsonArray declarationsOf(const TransferReport& report)
{
    std::set<QString> names;
    for (const StockTotals* const totals : {&report.kept, &report.rejected, &report.written}) {
        for (const auto& [name, sums] : totals->declarations()) {
            names.insert(name);
        }
    }
    QJsonArray declarations;
    for (const QString& name : names) {
        QJsonObject declaration = comparison(report.kept.of(name), report.rejected.of(name), report.written.of(name));
        declaration.insert(u"declaration"_s, name);
        declarations.append(declaration);
    }
    return declarations;
}

QJsonValue numberOrNull(const std::optional<qint64>& number)
{
    return number ? QJsonValue(*number) : QJsonValue();
}

QJsonObject jsonOf(const MovedTable& table)
{
    QJsonArray uncopied;
    for (const UncopiedColumn& column : table.uncopied) {
        uncopied.append(QJsonObject{{u"column"_s, column.column}, {u"filled"_s, column.filled}});
    }
    return {{u"table"_s, table.table},
            {u"inSource"_s, table.inSource},
            {u"announced"_s, numberOrNull(table.announced)},
            {u"read"_s, table.read},
            {u"rejected"_s, table.rejected},
            {u"written"_s, table.written},
            {u"missingColumns"_s, QJsonArray::fromStringList(table.missingColumns)},
            {u"uncopiedColumns"_s, uncopied}};
}

} // namespace

void say(const TransferReport& report, Console& console)
{
    sayTables(report, console);
    if (hasStock(report)) {
        saySums(report, console);
    }
    sayMissing(report, console);
    sayUncopied(report, console);
    sayRejections(report, console);
    sayOutcome(report, console);
}

QJsonObject jsonOf(const TransferReport& report)
{
    QJsonArray tables;
    for (const MovedTable& table : report.tables) {
        tables.append(jsonOf(table));
    }
    QJsonArray uncopied;
    for (const UncopiedTable& table : report.uncopiedTables) {
        uncopied.append(QJsonObject{{u"table"_s, table.table}, {u"rows"_s, numberOrNull(table.rows)}});
    }
    QJsonArray rejections;
    for (const Rejection& rejection : report.rejections) {
        rejections.append(QJsonObject{{u"table"_s, rejection.table},
                                      {u"row"_s, rejection.row},
                                      {u"key"_s, rejection.key},
                                      {u"reason"_s, rejection.reason}});
    }
    QJsonObject result{
        {u"committed"_s, report.committed}, {u"tables"_s, tables},
        {u"uncopiedTables"_s, uncopied},    {u"rejectionCount"_s, report.rejectionCount},
        {u"rejections"_s, rejections},      {u"failures"_s, QJsonArray::fromStringList(report.failures)}};
    if (hasStock(report)) {
        result.insert(u"totals"_s, comparison(report.kept.all(), report.rejected.all(), report.written.all()));
        result.insert(u"declarations"_s, declarationsOf(report));
    }
    return result;
}

} // namespace oVELDRA::data
