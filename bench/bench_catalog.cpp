// What the position search and the product list cost over stepping the same queries through SQLite's own interface.

#include "BareSqlite.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <catalog/frmProducto.h>
#include <core/Component.h>
#include <core/Prompts.h>
#include <nomenclature/FrmPosicion.h>
#include <runtime/Clock.h>
#include <runtime/Settings.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <tariff/CsvReader.h>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using bench::bindText;
using bench::run;

namespace {

constexpr int products = 20000;
constexpr int walkedPositions = 500;
constexpr double listSeconds = 0.005; // what filling the list may take on top

volatile qint64 sink = 0;

/// The component with its real collaborators, over databases in a folder.
struct Setup
{
    Setup(const QString& inputsUrl, const QString& nomenclatureUrl)
    {
        component.state.g_DBINS.assign(connectStore(inputsUrl));
        component.state.g_DBNCM.assign(connectStore(nomenclatureUrl, Access::ReadOnly));
        component.state.currentCatalog = u"GRANDE"_s;
    }

    core::ScreenPrompts prompts;
    runtime::UserSettings settings;
    runtime::SystemClock clock;
    core::Component component{prompts, settings, clock};
};

void loadTariff(ConexionDB& db, const QString& name, const QString& columns)
{
    QFile csv(QStringLiteral(OVELDRA_TARIFF "/") + name);
    if (!csv.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(csv.fileName()));
        std::exit(2);
    }
    const auto burst = db.beginBurst();
    const QString text = QString::fromUtf8(csv.readAll());
    tariff::CsvReader rows(text);
    std::ignore = rows.next(); // the names of the columns
    while (const auto row = rows.next()) {
        QStringList values;
        for (QString cell : *row) {
            values.append(cell.isEmpty() ? u"Null"_s : QString(u'\'' + cell.replace(u'\'', u"''"_s) + u'\''));
        }
        run(db, u"insert into "_s + columns + u" values (" + values.join(u',') + u')');
    }
    burst->commit();
}

void loadProducts(ConexionDB& db)
{
    const auto burst = db.beginBurst();
    for (int i = 0; i < products; ++i) {
        run(db, u"insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDPAI) values ('GRANDE','P"_s + QString::number(i) +
                    u"','Producto de exportación " + QString::number(i) + u"','8501.52.10.900L','200')");
    }
    burst->commit();
}

/// Steps through a query and reads its texts.
void stepThrough(sqlite3_stmt* statement)
{
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            const unsigned char* const text = sqlite3_column_text(statement, column);
            sink = sink + (text ? text[0] : 0);
        }
    }
    sqlite3_reset(statement);
}

bool search(Setup& setup, sqlite3* database, const QString& text)
{
    nomenclature::FrmPosicion form(setup.component);
    const auto ours = [&] {
        form.setSearchText(text);
        int enter = 13;
        form.TxtNCMF_KeyPress(enter);
    };
    // The search begins where the pattern's first wildcard is; "%" alone begins nowhere.
    const QString prefix = text.section(u'.', 0, 0).remove(u'%');
    const std::string sql =
        std::string("SELECT [001], [002], [003], [012], [020] FROM NCM WHERE ") +
        (prefix.isEmpty() ? "" : "rtrim([001]) COLLATE NOCASE >= ?2 AND rtrim([001]) COLLATE NOCASE < ?3 AND ") +
        "oveldra_like([001], ?1) ORDER BY [001] COLLATE OVELDRA, [002] COLLATE OVELDRA, [003] COLLATE OVELDRA, "
        "rowid";
    const auto statement = bench::prepare(database, sql.c_str());
    const std::string pattern = QString(text).replace(u'.', u'%').append(u'%').toStdString();
    const std::string first = prefix.toStdString();
    std::string end = first;
    if (!end.empty()) {
        ++end.back();
        bindText(statement.get(), 2, first);
        bindText(statement.get(), 3, end);
    }
    bindText(statement.get(), 1, pattern);
    bench::Pair pair = bench::compare(7, ours, [&] { stepThrough(statement.get()); });
    pair.ours = std::max(0.0, pair.ours - listSeconds);
    const QString work = u"search \"%1\" until the list is filled, less 5 ms"_s.arg(text);
    return bench::report(qPrintable(work), pair, 2.0);
}

bool openCatalog(Setup& setup, sqlite3* database)
{
    catalog::frmProducto form(setup.component);
    form.show();
    auto* const list = form.findChild<QAbstractItemView*>(u"lstV"_s);
    QCoreApplication::processEvents();
    const auto ours = [&] {
        form.lp_Cargar_Producto(false);
        QCoreApplication::processEvents();
        list->viewport()->repaint();
    };
    const auto statement = bench::prepare(database, "SELECT PRDNRO, PRDDES, PRDNCM, PRDPAI FROM PRD WHERE "
                                                    "rtrim([CATNRO]) COLLATE NOCASE = ?1 ORDER BY rowid");
    const std::string catalog = "GRANDE";
    bindText(statement.get(), 1, catalog);
    const bench::Pair pair = bench::compare(7, ours, [&] { stepThrough(statement.get()); });
    return bench::report("catalog of 20,000 products until painted", pair, 3.0);
}

bool walk(Setup& setup, sqlite3* database)
{
    nomenclature::FrmPosicion form(setup.component);
    form.setSearchText(u"84"_s);
    int enter = 13;
    form.TxtNCMF_KeyPress(enter);
    form.show();
    auto* const list = form.findChild<QAbstractItemView*>(u"LstNCM"_s);
    list->setFocus();
    const QModelIndex top = list->model()->index(0, 0);
    QStringList positions;
    for (int row = 1; row <= walkedPositions; ++row) {
        positions.append(list->model()->index(row, 0).data().toString());
    }
    const auto ours = [&] {
        list->setCurrentIndex(top);
        for (int step = 0; step < walkedPositions; ++step) {
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent key(type, Qt::Key_Down, Qt::NoModifier);
                QCoreApplication::sendEvent(list, &key);
            }
        }
    };
    // Every position makes two texts of its own, as the screen's do; in C, too, each is prepared before it can run.
    const auto runText = [database](const QString& sql) {
        stepThrough(bench::prepare(database, sql.toUtf8().constData()).get());
    };
    const auto limit = [&] {
        for (const QString& position : positions) {
            runText(
                u"SELECT [010], [004], [012], [020], [059], [019] FROM NCM WHERE rtrim([001]) COLLATE NOCASE = "
                "'%1' AND rtrim([002]) COLLATE NOCASE = '%2' AND rtrim([003]) COLLATE NOCASE = '%3' ORDER BY rowid"_s
                    .arg(position.left(10), position.mid(11, 3), position.mid(14, 1)));
            runText(u"SELECT sim, sufijo, detalle FROM sufidos WHERE rtrim([sim]) COLLATE NOCASE IN "
                    "('%1  .  .  .', '%2.  .  .', '%3.  .', '%4') ORDER BY rowid"_s.arg(
                        position.left(2), position.left(4), position.left(7), position.left(14)));
        }
    };
    return bench::report("arrow keys through 500 positions, both queries each", bench::compare(7, ours, limit), 2.0);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"en_US"_s)); // the tariff files write numbers with a point
    const QTemporaryDir folder;
    const QString inputsUrl = u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s);
    const QString nomenclatureUrl = u"sqlite:"_s + folder.filePath(u"nomenclador.sqlite"_s);
    const auto inputs = createStore(inputsUrl, Database::Inputs);
    loadProducts(*inputs);
    const auto nomenclature = createStore(nomenclatureUrl, Database::Nomenclature);
    loadTariff(*nomenclature, u"ncm.csv"_s, u"NCM ([001],[002],[003],[004],[010],[012],[019],[020],[059])"_s);
    loadTariff(*nomenclature, u"sufidos.csv"_s, u"sufidos (sim,sufijo,detalle)"_s);

    Setup setup(inputsUrl, nomenclatureUrl);
    bool held = true;
    for (const QString& text : {u"8471.3"_s, u"84"_s, u"%"_s}) {
        held = search(setup, bench::handleOf(*nomenclature), text) && held;
    }
    held = openCatalog(setup, bench::handleOf(*inputs)) && held;
    held = walk(setup, bench::handleOf(*nomenclature)) && held;
    return held ? 0 : 1;
}
