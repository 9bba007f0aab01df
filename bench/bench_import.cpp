// What the import of a declaration costs over inserting the same rows by a bound statement, how it grows, and how much
// memory it takes.

#include "BareSqlite.h"
#include "Import.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <QCoreApplication>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/resource.h>
#include <vector>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using bench::Article;
using bench::declaration;
using bench::importSeconds;
using bench::subitemsPerItem;

namespace {

using Connection = std::shared_ptr<ConexionDB>;

/// A host database with one declaration, and an empty stock.
class Databases
{
public:
    explicit Databases(int items) { bench::makeHost(hostUrl(), items); }

    [[nodiscard]] QString hostUrl() const { return u"sqlite:"_s + m_folder.filePath(u"tornel.sqlite"_s); }
    /// A new, empty stock each time.
    [[nodiscard]] QString newInputs()
    {
        QString url = u"sqlite:"_s + m_folder.filePath(u"insumos%1.sqlite"_s.arg(++m_made));
        static_cast<void>(createStore(url, Database::Inputs));
        return url;
    }

private:
    QTemporaryDir m_folder;
    int m_made = 0;
};

std::vector<Article> importedArticles(const QString& inputsUrl)
{
    const Connection db = connectStore(inputsUrl, Access::ReadOnly);
    std::vector<Article> articles;
    bool ok = false;
    db->setSql(u"select * from INS"_s);
    for (const auto rows = db->openRecordset(ok); !rows->atEof(); rows->moveNext()) {
        articles.push_back({declaration.toStdString(), rows->value(u"ARTNRO").toString().toStdString(),
                            rows->value(u"ARTUNI").toString().toStdString(), rows->value(u"ARTCAT").toDouble(),
                            rows->value(u"ARTPRE").toDouble(), rows->value(u"ARTNCM").toString().toStdString(),
                            rows->value(u"ARTITM").toInt(), rows->value(u"ARTSBT").toInt()});
    }
    return articles;
}

double boundSeconds(const std::vector<Article>& articles, const QString& inputsUrl, bool oneTransaction)
{
    const Connection db = connectStore(inputsUrl);
    sqlite3* const database = bench::handleOf(*db);
    const auto statement = bench::prepare(database, bench::insertArticle);
    return bench::seconds([&] {
        if (oneTransaction) {
            sqlite3_exec(database, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        }
        for (const Article& article : articles) {
            bench::insert(statement.get(), article);
        }
        if (oneTransaction) {
            sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
        }
    });
}

bool againstBoundInserts()
{
    Databases databases(1000);
    const QString imported = databases.newInputs();
    importSeconds(databases.hostUrl(), imported);
    const std::vector<Article> articles = importedArticles(imported);
    bench::Pair together;
    for (int run = 0; run < 3; ++run) {
        together.limit = std::min(together.limit, boundSeconds(articles, databases.newInputs(), true));
        together.ours = std::min(together.ours, importSeconds(databases.hostUrl(), databases.newInputs()));
    }
    const bench::Pair apart{together.ours, boundSeconds(articles, databases.newInputs(), false)};
    const bool held = bench::report("import of 100,000 subitems, against one transaction", together, 3.0);
    return bench::report("import of 100,000 subitems, against single inserts", apart, 1.0 / 3.0) && held;
}

void growth()
{
    std::printf("growth, microseconds per subitem:");
    for (const int items : {100, 1000, 10000}) {
        Databases databases(items);
        const double time = importSeconds(databases.hostUrl(), databases.newInputs());
        std::printf("  %d: %.2f", items * subitemsPerItem, time * 1e6 / (items * subitemsPerItem));
        std::fflush(stdout);
    }
    std::printf("\n");
}

/// Memory is that of a process that does nothing but import.
bool memory()
{
    constexpr double barMegabytes = 200;
    Databases databases(1000);
    QProcess importer;
    importer.start(QCoreApplication::applicationFilePath(),
                   {u"only-import"_s, databases.hostUrl(), databases.newInputs()});
    importer.waitForFinished(-1);
    const double megabytes = importer.readAllStandardOutput().trimmed().toDouble();
    const bool held = importer.exitCode() == 0 && megabytes > 0 && megabytes < barMegabytes;
    std::printf("%-58s %6.0f MB peak, bar %.0f MB  %s\n", "import of 100,000 subitems, the whole process", megabytes,
                barMegabytes, held ? "held" : "MISSED");
    return held;
}

int onlyImport(const QStringList& arguments)
{
    importSeconds(arguments.value(2), arguments.value(3));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%.1f\n", static_cast<double>(usage.ru_maxrss) / 1024);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    if (argc == 4 && std::strcmp(argv[1], "only-import") == 0) {
        return onlyImport(QCoreApplication::arguments());
    }
    bool held = againstBoundInserts();
    held = memory() && held;
    growth();
    return held ? 0 : 1;
}
