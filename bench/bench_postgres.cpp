// What the store costs over libpq on a server: the component's concatenated texts through ConexionDB against the same
// statements prepared once, over connections with the same settings.

#include "Import.h"
#include "Measure.h"
#include "doubles/PostgresServer.h"

#include <oVELDRA/Store.h>

#include <store/StoreConnection.h>
#include <store/postgres/PostgresEngine.h>

#include <QCoreApplication>
#include <QLocale>

#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <libpq-fe.h>
#include <string>
#include <vector>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

constexpr int products = 2000;
constexpr int rounds = 3000;
constexpr int items = 1000;

using bench::run;
using Connection = std::shared_ptr<ConexionDB>;

volatile double sink = 0; // what was read, so that reading cannot be left out

PGconn* handleOf(ConexionDB& db)
{
    auto& stored = dynamic_cast<store::StoreConnection&>(db);
    return dynamic_cast<store::PostgresEngine&>(stored.engine()).handle();
}

struct FreeResult
{
    void operator()(PGresult* result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, FreeResult>;

Result checked(PGconn* server, PGresult* result)
{
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        std::fprintf(stderr, "%s\n", PQerrorMessage(server));
        std::exit(2);
    }
    return Result(result);
}

void prepare(PGconn* server, const char* name, const std::string& sql)
{
    checked(server, PQprepare(server, name, sql.c_str(), 0, nullptr));
}

template <size_t count>
Result runPrepared(PGconn* server, const char* name, const std::array<const char*, count>& values)
{
    return checked(server, PQexecPrepared(server, name, static_cast<int>(count), values.data(), nullptr, nullptr, 0));
}

/// Equality as the server's indexes know it.
std::string equals(const std::string& column, int parameter)
{
    return "(lower(translate(rtrim(\"" + column +
           "\"), '\u0130\u212A\u03A3', '\uE000\uE001\u03C3') COLLATE \"und-x-icu\") COLLATE \"C\") = $" +
           std::to_string(parameter);
}

bool oneRowSelect(const QString& url)
{
    const Connection db = createStore(url, Database::Inputs);
    {
        const auto burst = db->beginBurst();
        for (int i = 0; i < products; ++i) {
            run(*db, u"insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU) values ("
                     "'C','P"_s +
                         QString::number(i) +
                         u"','Motor eléctrico','8501.52.10.900L','1','07','12,5','SIN SUFIJOS','200','3,25')");
        }
        burst->commit();
    }
    static constexpr std::array fields = {u"CATNRO", u"PRDNRO", u"PRDDES", u"PRDNCM", u"PRDMUL",
                                          u"PRDUNI", u"PRDPRE", u"PRDSUF", u"PRDPAI", u"PRDKGU"};
    const auto ours = [&] {
        for (int i = 0; i < rounds; ++i) {
            bool ok = false;
            db->setSql(u"select * from PRD where CATNRO = 'C' and PRDNRO = 'P"_s + QString::number(i % products) +
                       u'\'');
            const auto row = db->openRecordset(ok);
            for (const char16_t* const field : fields) {
                const QVariant value = row->value(field);
                sink = sink + (value.typeId() == QMetaType::QString ? static_cast<double>(value.toString().size())
                                                                    : value.toDouble());
            }
        }
    };
    const Connection other = connectStore(url);
    PGconn* const server = handleOf(*other);
    prepare(server, "product",
            "SELECT \"CATNRO\",\"PRDNRO\",\"PRDDES\",\"PRDNCM\",\"PRDMUL\",\"PRDUNI\",\"PRDPRE\",\"PRDSUF\","
            "\"PRDPAI\",\"PRDKGU\" FROM \"PRD\" WHERE " +
                equals("CATNRO", 1) + " AND " + equals("PRDNRO", 2));
    const auto limit = [&] {
        for (int i = 0; i < rounds; ++i) {
            const std::string product = 'p' + std::to_string(i % products);
            const Result row = runPrepared<2>(server, "product", {"c", product.c_str()});
            for (int field = 0; field < PQnfields(row.get()); ++field) {
                const char* const value = PQgetvalue(row.get(), 0, field);
                sink = sink + (PQftype(row.get(), field) == 701 ? std::strtod(value, nullptr) : value[0]);
            }
        }
    };
    return bench::report("one-row select, all fields read", bench::compare(7, ours, limit), 1.3);
}

constexpr auto insertArticle = "INSERT INTO \"INS\" (\"INTDCL\",\"ARTNRO\",\"ARTUNI\",\"ARTCAT\",\"ARTPRE\","
                               "\"ARTDSC\",\"ARTNCM\",\"ARTITM\",\"ARTSBT\") VALUES ($1,$2,$3,$4,$5,$6,$7,$8,$9)";

bool insert(const QString& ourUrl, const QString& limitUrl)
{
    const Connection db = createStore(ourUrl, Database::Inputs);
    const auto ours = [&] {
        for (int i = 0; i < rounds; ++i) {
            const QString quantity = QString::number(i % 1000) + u",5";
            run(*db, u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values ("
                     "'26073IT14000011A','AC-0001','01','"_s +
                         quantity + u"','38,333333','" + quantity + u"','7208.90.00.110H','001','002')");
        }
    };
    const Connection other = createStore(limitUrl, Database::Inputs);
    PGconn* const server = handleOf(*other);
    prepare(server, "article", insertArticle);
    const auto limit = [&] {
        for (int i = 0; i < rounds; ++i) {
            const std::string quantity = std::to_string(i % 1000) + ".5";
            runPrepared<9>(server, "article",
                           {"26073IT14000011A", "AC-0001", "01", quantity.c_str(), "38.333333", quantity.c_str(),
                            "7208.90.00.110H", "1", "2"});
        }
    };
    return bench::report("insert, each on its own", bench::compare(5, ours, limit), 1.3);
}

using Article = std::array<std::string, 9>;

/// The imported articles, as texts that the server reads.
std::vector<Article> importedArticles(const QString& stockUrl)
{
    const Connection db = connectStore(stockUrl);
    const Result rows = checked(handleOf(*db), PQexec(handleOf(*db), "SELECT \"INTDCL\",\"ARTNRO\",\"ARTUNI\","
                                                                     "\"ARTCAT\",\"ARTPRE\",\"ARTDSC\",\"ARTNCM\","
                                                                     "\"ARTITM\",\"ARTSBT\" FROM \"INS\""));
    std::vector<Article> articles(static_cast<size_t>(PQntuples(rows.get())));
    for (size_t row = 0; row < articles.size(); ++row) {
        for (size_t field = 0; field < articles[row].size(); ++field) {
            articles[row][field] = PQgetvalue(rows.get(), static_cast<int>(row), static_cast<int>(field));
        }
    }
    return articles;
}

double boundSeconds(const std::vector<Article>& articles, const QString& stockUrl)
{
    const Connection db = createStore(stockUrl, Database::Inputs);
    PGconn* const server = handleOf(*db);
    prepare(server, "article", insertArticle);
    return bench::seconds([&] {
        checked(server, PQexec(server, "BEGIN"));
        for (const Article& article : articles) {
            std::array<const char*, 9> values{};
            for (size_t field = 0; field < values.size(); ++field) {
                values[field] = article[field].c_str();
            }
            runPrepared(server, "article", values);
        }
        checked(server, PQexec(server, "COMMIT"));
    });
}

bool import(const std::function<QString()>& newUrl)
{
    const QString host = newUrl();
    bench::makeHost(host, items);
    const QString first = newUrl();
    static_cast<void>(createStore(first, Database::Inputs));
    bench::importSeconds(host, first);
    const std::vector<Article> articles = importedArticles(first);
    bench::Pair together;
    for (int round = 0; round < 3; ++round) {
        together.limit = std::min(together.limit, boundSeconds(articles, newUrl()));
        const QString stock = newUrl();
        static_cast<void>(createStore(stock, Database::Inputs));
        together.ours = std::min(together.ours, bench::importSeconds(host, stock));
    }
    return bench::report("import of 100,000 subitems, against one transaction", together, 1.5);
}

} // namespace

/// Runs all benchmarks on a private server, or the one that is named: select, insert or import.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(u"es_AR"_s));
    doubles::PostgresServer server(doubles::Durability::Full);
    server.start();
    int made = 0;
    const auto next = [&] { return server.url(u"banco"_s + QString::number(++made)); };

    const auto wanted = [&](const char* name) { return argc < 2 || std::strcmp(argv[1], name) == 0; };
    bool held = true;
    if (wanted("select")) {
        held = oneRowSelect(next()) && held;
    }
    if (wanted("insert")) {
        const QString ours = next();
        held = insert(ours, next()) && held;
    }
    if (wanted("import")) {
        held = import(next) && held;
    }
    return held ? 0 : 1;
}
