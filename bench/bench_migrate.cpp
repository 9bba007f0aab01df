// `migrar` of a database with 100,000 articles, against the least that it takes: mdb-export reading the same table, its
// output thrown away, and SQLite's own interface inserting the same rows one by one in one transaction.
#include "BareSqlite.h"
#include "GrownAccessFile.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <store/Engines.h>

#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>

#include <oveldra-datos/AccessFile.h>
#include <oveldra-datos/Command.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

constexpr quint32 articles = 100000;
constexpr quint32 definitionOfArticles = 64;
constexpr int runs = 5;
constexpr double bar = 1.5;

class SilentConsole final : public data::Console
{
public:
    [[nodiscard]] bool wantsJson() const override { return false; }
    void say(const QString& /*line*/) override {}
    void result(const QJsonObject& /*object*/) override {}
    void write(const QString& /*text*/) override {}
    void complain(const QString& line) override { std::fprintf(stderr, "%s\n", qPrintable(line)); }
    void progress(const QString& /*what*/, qint64 /*done*/, qint64 /*total*/) override {}
};

[[noreturn]] void fail(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::exit(2);
}

/// The bytes that mdb-export gives, or only the time when its output is thrown away.
QByteArray exportArticles(const QString& file, bool thrownAway)
{
    QProcess process;
    if (thrownAway) {
        process.setStandardOutputFile(QProcess::nullDevice());
    }
    process.start(u"mdb-export"_s, {file, u"INS"_s});
    if (!process.waitForFinished(-1) || process.exitCode() != 0) {
        fail("mdb-export does not run");
    }
    return process.readAllStandardOutput();
}

std::vector<bench::Article> articlesOf(const QString& file)
{
    data::AccessFile access(file);
    const std::unique_ptr<data::SourceTable> table = access.open(u"INS"_s);
    std::vector<bench::Article> result;
    data::SourceRow row;
    while (table->next(row)) {
        const auto text = [&row](size_t column) { return row.cells[column].text.toStdString(); };
        const auto number = [&row](size_t column) { return static_cast<int>(row.cells[column].number); };
        result.push_back(
            {text(0), text(1), text(2), row.cells[3].number, row.cells[4].number, text(6), number(7), number(8)});
    }
    return result;
}

void insertArticles(const QString& file, const std::vector<bench::Article>& rows)
{
    const auto engine = store::openEngine(u"sqlite:"_s + file, Access::ReadWrite, store::Opening::Create);
    store::createTables(*engine, Database::Inputs);
    sqlite3* const database = dynamic_cast<store::SqliteEngine&>(*engine).handle();
    engine->begin();
    {
        const store::SqliteStatementHandle statement = bench::prepare(database, bench::insertArticle);
        for (const bench::Article& row : rows) {
            bench::insert(statement.get(), row);
        }
    }
    engine->commit();
}

} // namespace

int main()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina));
    const QTemporaryDir folder;
    const QString origin = folder.filePath(u"insumos.mdb"_s);
    bench::growAccessFile(QStringLiteral(OVELDRA_ACCESS_SAMPLES "/insumos.mdb"), definitionOfArticles, articles,
                          origin);
    if (exportArticles(origin, false).count('\n') != articles + 1) {
        fail("the grown file does not have the rows");
    }
    const std::vector<bench::Article> rows = articlesOf(origin);
    const data::Command migrar = data::migrar();
    SilentConsole console;
    int run = 0;
    const auto fresh = [&] { return folder.filePath(u"base%1.sqlite"_s.arg(++run)); };
    const bench::Pair pair = bench::compare(
        runs,
        [&] {
            if (migrar.run({{origin, u"sqlite:"_s + fresh()}, {}}, console) != data::Success) {
                fail("migrar does not arrive");
            }
        },
        [&] {
            static_cast<void>(exportArticles(origin, true));
            insertArticles(fresh(), rows);
        });
    return bench::report("migrar, 100,000 articles", pair, bar) ? 0 : 1;
}
