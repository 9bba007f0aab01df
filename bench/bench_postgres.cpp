// What the store costs over libpq on a server: the component's concatenated texts through ConexionDB against the same
// statements prepared once, over connections with the same settings.

#include "Measure.h"
#include "doubles/PostgresServer.h"

#include <oVELDRA/Store.h>

#include <core/SharedState.h>
#include <declarations/ImportarInterno.h>
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
constexpr int subitemsPerItem = 100;
const QString declaration = u"26073IT14000011A"_s;

using Connection = std::shared_ptr<ConexionDB>;

volatile double sink = 0; // what was read, so that reading cannot be left out

void run(ConexionDB& db, const QString& sql)
{
    db.setSql(sql);
    db.execute();
}

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
           "\"), '\u0130\u212A\u03A3', '\uE000\uE001\u03C3') COLLATE \"und-x-icu\") COLLATE \"C\") = $" + std::to_string(parameter);
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

void makeHost(const QString& url)
{
    const Connection host = createStore(url, Database::Host);
    const auto burst = host->beginBurst();
    run(*host,
        u"insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values ('T','1,08','1','1')"_s);
    for (int item = 1; item <= items; ++item) {
        run(*host, u"insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values ('T',"_s +
                       QString::number(item) + u",'5050','101,25','33,33','0','0')");
        for (int subitem = 1; subitem <= subitemsPerItem; ++subitem) {
            run(*host,
                u"insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,NCM,FOB)"
                " values ('T',"_s +
                    QString::number(item) + u',' + QString::number(subitem) + u",'AC-" + QString::number(subitem) +
                    u"','01','" + QString::number(1 + subitem % 7) + u",5','1','7208.90.00.110H','" +
                    QString::number(subitem) + u"')");
        }
    }
    burst->commit();
}

class NoProgress final : public declarations::ImportProgress
{
public:
    void limits(int /*minimum*/, int /*maximum*/) override {}
    void advance() override {}
};

double importSeconds(const QString& hostUrl, const QString& stockUrl)
{
    core::SharedState state;
    state.sInternoExt = u"T"_s;
    state.g_DBTOR.assign(connectStore(hostUrl, Access::ReadOnly));
    state.g_DBINS.assign(createStore(stockUrl, Database::Inputs));
    NoProgress progress;
    QString status;
    const double time = bench::seconds([&] {
        status = declarations::ImportarInterno(state, progress, u"T"_s, declaration, u"15/01/2026"_s, u"banco"_s,
                                               u"15/01/2028"_s, u"073"_s, 1, false);
    });
    if (status != u"OK") {
        std::fprintf(stderr, "%s\n", qPrintable(status));
        std::exit(2);
    }
    return time;
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
    makeHost(host);
    const QString first = newUrl();
    importSeconds(host, first);
    const std::vector<Article> articles = importedArticles(first);
    bench::Pair together;
    for (int round = 0; round < 3; ++round) {
        together.limit = std::min(together.limit, boundSeconds(articles, newUrl()));
        together.ours = std::min(together.ours, importSeconds(host, newUrl()));
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
