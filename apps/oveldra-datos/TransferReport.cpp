#include "TransferReport.h"

#include <set>

namespace oVELDRA::data {

using namespace Qt::StringLiterals;

namespace {

/// All digits of a sum, so that a difference can be seen.
QString digits(const CompensatedSum& sum)
{
    return QString::number(sum.value(), 'g', 17);
}

QString declarationFailure(const QString& declaration, const StockSums& kept, const StockSums& written)
{
    QStringList differences;
    const auto compare = [&differences](const QString& what, const QString& source, const QString& destination) {
        if (source != destination) {
            differences.append(u"%1 %2 en el origen y %3 en el destino"_s.arg(what, source, destination));
        }
    };
    compare(u"artículos"_s, QString::number(kept.articles), QString::number(written.articles));
    compare(u"cantidad"_s, digits(kept.quantity), digits(written.quantity));
    compare(u"saldo"_s, digits(kept.balance), digits(written.balance));
    compare(u"CIF"_s, digits(kept.cif), digits(written.cif));
    compare(u"descargos"_s, QString::number(kept.discharges), QString::number(written.discharges));
    compare(u"descargado"_s, digits(kept.discharged), digits(written.discharged));
    return u"declaración '%1': %2"_s.arg(declaration, differences.join(u", "_s));
}

void compareTable(const MovedTable& table, QStringList& failures)
{
    if (table.announced && *table.announced > table.read) {
        failures.append(u"tabla %1: el origen anuncia %2 filas y se pudieron leer %3"_s.arg(table.table)
                            .arg(*table.announced)
                            .arg(table.read));
    }
    if (table.read - table.rejected != table.written) {
        failures.append(u"tabla %1: se leyeron %2 filas, se rechazaron %3 y el destino tiene %4"_s.arg(table.table)
                            .arg(table.read)
                            .arg(table.rejected)
                            .arg(table.written));
    }
}

} // namespace

QStringList proofFailures(const TransferReport& report)
{
    QStringList failures;
    for (const MovedTable& table : report.tables) {
        compareTable(table, failures);
    }
    std::set<QString> declarations;
    for (const StockTotals* const totals : {&report.kept, &report.written}) {
        for (const auto& [declaration, sums] : totals->declarations()) {
            declarations.insert(declaration);
        }
    }
    for (const QString& declaration : declarations) {
        const StockSums& kept = report.kept.of(declaration);
        const StockSums& written = report.written.of(declaration);
        if (!kept.equals(written)) {
            failures.append(declarationFailure(declaration, kept, written));
        }
    }
    return failures;
}

} // namespace oVELDRA::data
