// What opening the declaration browser costs over stepping the same query through SQLite's own interface.

#include "BareSqlite.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <core/Component.h>
#include <core/Prompts.h>
#include <declarations/frmDIT.h>
#include <runtime/Clock.h>
#include <runtime/Settings.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

constexpr int listed = 100000;

volatile double sink = 0;

/// Declarations over all days of this year, as the import and the editor leave them, every seventh one not available;
/// and half as many of last year.
void loadDeclarations(ConexionDB& db)
{
    const QDate newYear(QDate::currentDate().year(), 1, 1);
    const auto burst = db.beginBurst();
    for (int i = 0; i < listed + listed / 2; ++i) {
        const QString number = QString::number(i).rightJustified(7, u'0');
        const QDate day = newYear.addDays(i % 3 == 2 ? -1 - i % 364 : i % 364);
        bench::run(db, u"insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTCTC,INTIOK) values ('TOR" +
                           number + u"','26073IT14" + number + u"A',datevalue('" + day.toString(u"dd/MM/yyyy") +
                           u"'),'Chapas y caños de acero " + number + u"',datevalue('" +
                           day.addYears(2).toString(u"dd/MM/yyyy") + u"'),'073','CTC-" + number + u"'," +
                           (i % 7 == 0 ? u"0)" : u"1)"));
    }
    burst->commit();
}

bool openBrowser(const QString& url)
{
    const auto db = connectStore(url);
    core::ScreenPrompts prompts;
    runtime::UserSettings settings;
    const runtime::SystemClock clock;
    core::Component component(prompts, settings, clock);
    component.state.g_DBINS.assign(db);
    int rows = 0;
    const auto ours = [&] {
        declarations::frmDIT form(component, {});
        form.Form_Load();
        form.show();
        QCoreApplication::processEvents();
        auto* const list = form.findChild<QAbstractItemView*>(u"lstVDIT"_s);
        list->viewport()->repaint();
        rows = list->model()->rowCount();
    };
    const auto statement =
        bench::prepare(bench::handleOf(*db), "SELECT * FROM INTINS WHERE INTFOF BETWEEN ?1 AND ?2 ORDER BY rowid");
    const std::string year = std::to_string(QDate::currentDate().year());
    const std::string from = year + "-01-01";
    const std::string to = year + "-12-31";
    bench::bindText(statement.get(), 1, from);
    bench::bindText(statement.get(), 2, to);
    const bench::Pair pair = bench::compare(7, ours, [&] { sink = sink + bench::readRows(statement.get()); });
    if (rows != listed) {
        std::fprintf(stderr, "%d rows\n", rows);
        std::exit(2);
    }
    return bench::report("browser over 100,000 declarations until painted", pair, 3.0);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    const QTemporaryDir folder;
    const QString url = u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s);
    loadDeclarations(*createStore(url, Database::Inputs));
    return openBrowser(url) ? 0 : 1;
}
