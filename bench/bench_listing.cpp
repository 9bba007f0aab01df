// What the lines of the listing of discharges cost over stepping the same query through SQLite's own interface and
// writing each cell with snprintf.

#include "BareSqlite.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <core/Component.h>
#include <core/Prompts.h>
#include <listings/Pagination.h>
#include <listings/SystemPrinters.h>
#include <listings/frmListados.h>
#include <runtime/Clock.h>
#include <runtime/Settings.h>

#include <QApplication>
#include <QTemporaryDir>

#include <array>
#include <string>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using bench::run;

namespace {

constexpr int discharges = 200000;
const QString number = u"26001IT14000533F"_s;

void loadDischarges(ConexionDB& db)
{
    run(db, u"insert into INTINS (INTNRO,INTDCL,INTIOK) values ('IT260062','"_s + number + u"',1)");
    sqlite3* const database = bench::handleOf(db);
    const auto statement = bench::prepare(
        database, "INSERT INTO DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,ARTPRE,RALCAN,EXTINT,EXTSBT,EXTNOF,EXTFOF,EXTFAC,"
                  "DIPCAN,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,PRDMUL) VALUES (?1,'CAP-100N-0603',2,0,?2,?3,'EX260111',"
                  "111001,'26001EC01014020C',?4,'0003-00001501',?5,14,1.25,0.5,0,-1,100)");
    const std::string declaration = number.toStdString();
    sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr);
    for (int i = 0; i < discharges; ++i) {
        const std::string day = "2026-0" + std::to_string(1 + i % 9) + "-1" + std::to_string(i % 7);
        bench::bindText(statement.get(), 1, declaration);
        sqlite3_bind_double(statement.get(), 2, 0.004322 + i % 97);
        sqlite3_bind_double(statement.get(), 3, 1512.75 + i % 1009);
        bench::bindText(statement.get(), 4, day);
        sqlite3_bind_double(statement.get(), 5, 9000.5 + i % 1200);
        sqlite3_step(statement.get());
        sqlite3_reset(statement.get());
    }
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
}

/// The cells of one line in C, in the columns' order.
qsizetype writeCells(sqlite3_stmt* row, const std::array<int, 10>& columns)
{
    std::array<char, 64> cell{};
    qsizetype written = 0;
    const auto text = [&](int column, int width) {
        written += std::snprintf(cell.data(), cell.size(), "%-*.*s ", width, width,
                                 reinterpret_cast<const char*>(sqlite3_column_text(row, column)));
    };
    const auto real = [&](double value, int width, int decimals) {
        written += std::snprintf(cell.data(), cell.size(), "%*.*f ", width, decimals, value);
    };
    text(columns[0], 16);
    text(columns[1], 20);
    real(sqlite3_column_double(row, columns[2]), 12, 6);
    real(sqlite3_column_double(row, columns[3]), 9, 2);
    real(sqlite3_column_double(row, columns[4]), 9, 6);
    real(sqlite3_column_double(row, columns[5]), 13, 6);
    real(sqlite3_column_double(row, columns[6]), 13, 6);
    const double unitValue = sqlite3_column_double(row, columns[7]);
    real(unitValue, 12, 6);
    real(unitValue * sqlite3_column_double(row, columns[8]), 12, 2);
    text(columns[9], 10);
    return written;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    const QTemporaryDir folder;
    const auto inputs = createStore(u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s), Database::Inputs);
    loadDischarges(*inputs);

    core::ScreenPrompts prompts;
    runtime::UserSettings settings(folder.path());
    runtime::SystemClock clock;
    core::Component component{prompts, settings, clock};
    component.start();
    component.state.g_DBINS.assign(inputs);
    component.state.declaration.internalNumber = u"IT260062"_s;
    listings::SystemPrinters printers;
    listings::SystemSpooler spooler;
    listings::frmListados form(component, printers, spooler);

    qsizetype ourLength = 0;
    const listings::ListingLayout layout{false, component.state.g_sFmtCantidad, component.state.g_sFmtListado};
    const auto ours = [&] {
        if (!form.GenerarLineas() || form.lines().size() != discharges) {
            std::exit(2);
        }
        ourLength = listings::recordLines(form.lines(), layout).size();
    };

    sqlite3* const database = bench::handleOf(*inputs);
    const auto statement =
        bench::prepare(database, "SELECT * FROM DIP WHERE rtrim([ARTDCL]) COLLATE NOCASE = ?1 ORDER BY EXTFOF, rowid");
    const std::string declaration = number.toStdString();
    bench::bindText(statement.get(), 1, declaration);
    std::array<int, 10> columns{};
    constexpr std::array names{"EXTNOF", "ARTNRO", "RIPCAN", "PRDMUL", "DIPCAN",
                               "RIPPER", "RIPMER", "ARTPRE", "RALCAN", "EXTFAC"};
    for (int column = 0; column < sqlite3_column_count(statement.get()); ++column) {
        for (size_t i = 0; i < names.size(); ++i) {
            if (std::string(names[i]) == sqlite3_column_name(statement.get(), column)) {
                columns[i] = column;
            }
        }
    }
    qsizetype limitLength = 0;
    const auto limit = [&] {
        limitLength = 0;
        while (sqlite3_step(statement.get()) == SQLITE_ROW) {
            limitLength += writeCells(statement.get(), columns);
        }
        sqlite3_reset(statement.get());
    };
    const bool held =
        bench::report("lines of 200,000 discharges, with their texts", bench::compare(3, ours, limit), 3.0);
    std::printf("%lld characters, %lld in C\n", static_cast<long long>(ourLength), static_cast<long long>(limitLength));
    return held ? 0 : 1;
}
