// What the article listing costs over stepping the same query through SQLite's own interface, how fast the article
// report is written, and that its memory does not grow with its pages.

#include "BareSqlite.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <core/Component.h>
#include <core/Prompts.h>
#include <declarations/ArticleReport.h>
#include <declarations/ReportOutput.h>
#include <declarations/frmDITART.h>
#include <runtime/Clock.h>
#include <runtime/Settings.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <cstring>
#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

constexpr int listed = 50000;
const QString declaration = u"26073IT14000011A"_s;

volatile double sink = 0;

/// A declaration of so many articles, as an import leaves it: items in their order, a hundred subitems each. Every
/// third article is nearly used up.
void loadArticles(ConexionDB& db, int articles)
{
    sqlite3* const database = bench::handleOf(db);
    const auto statement = bench::prepare(database, bench::insertArticle);
    sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr);
    for (int i = 0; i < articles; ++i) {
        bench::insert(statement.get(), {declaration.toStdString(), "AC-" + std::to_string(i), "07", 40.0 + i % 977,
                                        1.5 + i % 31, "7208.90.00.110H", 1 + i / 100, i % 100});
    }
    sqlite3_exec(database, "UPDATE INS SET ARTDSC = ARTCAT / 5, ARTCTC = 'CTC-2024/1' WHERE rowid % 3 = 0", nullptr,
                 nullptr, nullptr);
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
}

bool listing(const QString& url)
{
    const auto db = connectStore(url);
    core::ScreenPrompts prompts;
    const runtime::SystemClock clock;
    runtime::UserSettings settings;
    core::Component component(prompts, settings, clock);
    component.state.g_DBINS.assign(db);
    component.state.g_sFmtCantidad = u"00.000000"_s;
    component.state.declaration.number = declaration;
    declarations::frmDITART form(component);
    form.show();
    auto* const list = form.findChild<QAbstractItemView*>(u"lstV"_s);
    QCoreApplication::processEvents();
    const auto ours = [&] {
        form.lp_CargarListado();
        QCoreApplication::processEvents();
        list->viewport()->repaint();
    };
    const auto statement =
        bench::prepare(bench::handleOf(*db), "SELECT * FROM INS WHERE rtrim([INTDCL]) COLLATE NOCASE "
                                             "= ?1 ORDER BY ARTITM, ARTSBT, rowid");
    const std::string number = declaration.toStdString();
    bench::bindText(statement.get(), 1, number);
    const bench::Pair pair = bench::compare(7, ours, [&] { sink = bench::readRows(statement.get()); });
    if (list->model()->rowCount() != listed) {
        std::fprintf(stderr, "%d rows\n", list->model()->rowCount());
        std::exit(2);
    }
    return bench::report("listing of 50,000 articles until painted", pair, 3.0);
}

/// A line of /proc/self/status, in megabytes.
double statusMegabytes(const char* what)
{
    QFile status(u"/proc/self/status"_s);
    if (status.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = status.readAll().split('\n');
        for (const QByteArray& line : lines) {
            if (line.startsWith(what)) {
                return line.simplified().split(' ').value(1).toDouble() / 1024;
            }
        }
    }
    return -1;
}

/// Writes the report and prints its pages, the seconds that took, the megabytes before it (the rows among them) and
/// those that came on top at most.
int onlyReport(const QString& url, const QString& fileName)
{
    const auto db = connectStore(url, Access::ReadOnly);
    db->setSql(u"select format(ARTITM,'000') as pARTITM,format(ARTSBT,'000') as pARTSBT,ARTNRO,ARTNCM,ARTCTC,ARTUNI,"
               "format(ARTCAT,'00.00') as pARTCAT,format(ARTPRE,'00.000000') as pARTPRE,"
               "format(ARTDSC,'00.00') as pARTDSC, format((ARTDSC * 100) / ARTCAT,'00.00') as pPROC from INS "
               "where INTDCL = '26073IT14000011A' order by ARTITM,ARTSBT "_s);
    bool ok = false;
    declarations::BandedReport report(declarations::articleReport(QDate::currentDate()), db->openRecordset(ok));
    malloc_trim(0); // what opening the rows took for a while shall not hide what the pages take
    QFile peak(u"/proc/self/clear_refs"_s);
    if (!peak.open(QIODevice::WriteOnly) || peak.write("5") != 1 || !peak.flush()) {
        return 2;
    }
    const double before = statusMegabytes("VmRSS:");
    const double seconds = bench::seconds([&] { declarations::savePdf(report, fileName, u"DIT"_s); });
    std::printf("%d %.3f %.1f %.1f\n", report.pageCount(), seconds, before, statusMegabytes("VmHWM:") - before);
    return 0;
}

/// What onlyReport() found for so many articles, in a process of its own.
struct Measured
{
    double pages = 0;
    double seconds = 0;
    double before = 0;
    double onTop = 0;
};

Measured measuredReport(const QTemporaryDir& folder, int articles)
{
    const QString url = u"sqlite:"_s + folder.filePath(u"%1.sqlite"_s.arg(articles));
    loadArticles(*createStore(url, Database::Inputs), articles);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), {u"only-report"_s, url, folder.filePath(u"informe.pdf"_s)});
    process.waitForFinished(-1);
    const QList<QByteArray> numbers = process.readAllStandardOutput().trimmed().split(' ');
    if (process.exitCode() != 0 || numbers.size() != 4) {
        std::fprintf(stderr, "the report failed\n");
        std::exit(2);
    }
    return {numbers[0].toDouble(), numbers[1].toDouble(), numbers[2].toDouble(), numbers[3].toDouble()};
}

bool reports(const QTemporaryDir& folder)
{
    constexpr double barMegabytes = 4;
    std::printf("report to PDF:\n");
    double least = 0;
    double most = 0;
    for (const int articles : {5000, 20000, 80000}) {
        const Measured found = measuredReport(folder, articles);
        std::printf("  %6d articles: %5.0f pages, %4.0f pages a second, %6.1f MB with the rows, %4.1f MB on top\n",
                    articles, found.pages, found.pages / found.seconds, found.before, found.onTop);
        std::fflush(stdout);
        least = articles == 5000 ? found.onTop : std::min(least, found.onTop);
        most = std::max(most, found.onTop);
    }
    const bool held = most - least <= barMegabytes;
    std::printf("%-58s %6.1f MB more, bar %.0f MB  %s\n", "sixteen times the pages", most - least, barMegabytes,
                held ? "held" : "MISSED");
    return held;
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    if (argc == 4 && std::strcmp(argv[1], "only-report") == 0) {
        const QStringList arguments = QCoreApplication::arguments();
        return onlyReport(arguments.at(2), arguments.at(3));
    }
    const QTemporaryDir folder;
    const QString url = u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s);
    loadArticles(*createStore(url, Database::Inputs), listed);
    bool held = listing(url);
    held = reports(folder) && held;
    return held ? 0 : 1;
}
