// What verifying a large stock takes: 1,000,000 articles with 3,000,000 discharges, in a SQLite file or, when a URL is
// given, in schemas of a server that are made for it (the URL's own schema with "_tenth", "_whole" and the like behind
// it; they stay there, empty).
// Prints the seconds and the peak memory of the verifying process, and fails when its memory grows with the tables:
// the whole may take half as much again as a tenth of it, and a fixed allowance.

#include "Measure.h"

#include <store/BulkInsert.h>
#include <store/Engines.h>

#include <QLocale>
#include <QTemporaryDir>

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <oveldra-datos/Command.h>
#include <string>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using dialect::Value;

namespace {

constexpr qint64 wholeStock = 1000000;
constexpr qint64 articlesEach = 100; // of a declaration
constexpr int dischargesEach = 3;    // of an article
constexpr double allowedGrowth = 1.5;
constexpr qint64 allowanceKb = 8192;

/// Whether the stock is right but for a few articles, or nothing in it is.
enum class Condition { Good, Bad };

/// Counts what it is told and forgets it.
class CountingConsole final : public data::Console
{
public:
    [[nodiscard]] bool wantsJson() const override { return false; }
    void say(const QString& /*line*/) override {}
    void result(const QJsonObject& /*object*/) override {}
    void write(const QString& /*text*/) override { ++m_rows; }
    void complain(const QString& line) override { std::fprintf(stderr, "%s\n", line.toUtf8().constData()); }
    void progress(const QString& /*what*/, qint64 /*done*/, qint64 /*total*/) override {}

    [[nodiscard]] qint64 rows() const { return m_rows; }

private:
    qint64 m_rows = 0;
};

/// Writes rows with some of a table's columns.
class Writer
{
public:
    Writer(store::EngineConnection& engine, const dialect::Catalog& tables, QStringView table,
           std::initializer_list<QStringView> columns)
        : m_insert(engine, *tables.find(table), places(*tables.find(table), columns))
    {}

    void add(std::initializer_list<Value> row) { m_insert.add(std::span(row.begin(), row.size())); }
    void finish() { m_insert.finish(); }

private:
    static std::vector<int> places(const dialect::Table& table, std::initializer_list<QStringView> columns)
    {
        std::vector<int> result;
        for (const QStringView column : columns) {
            result.push_back(table.find(column));
        }
        return result;
    }

    store::BulkInsert m_insert;
};

struct Article
{
    Value declaration;
    Value item;
    Value subitem;
    Value code;

    explicit Article(qint64 number)
        : declaration(Value::ofText(u"26073IT14%1A"_s.arg(number / articlesEach, 7, 10, QChar(u'0')))),
          item(numbered(number % articlesEach / 10)), subitem(numbered(number % 10)),
          code(Value::ofText(u"AC-%1"_s.arg(number % 5000)))
    {}

private:
    static Value numbered(qint64 place) { return Value::ofNumber(static_cast<double>(place + 1)); }
};

/// A number far from the one before: rows of a declaration are spread over the table, as years of work leave them.
qint64 spread(qint64 place, qint64 count)
{
    constexpr qint64 stride = 15485863; // a prime, so that every number comes once
    return place * stride % count;
}

void fill(store::EngineConnection& engine, const dialect::Catalog& tables, qint64 articles, Condition condition)
{
    const bool good = condition == Condition::Good;
    Writer headers(engine, tables, u"INTINS", {u"INTNRO", u"INTDCL", u"INTDES"});
    for (qint64 number = 0; good && number < articles; number += articlesEach) {
        headers.add({Value::ofText(u"TOR1"_s), Article(number).declaration, Value::ofText(u"Chapas de acero"_s)});
    }
    headers.finish();
    Writer rows(engine, tables, u"INS",
                {u"INTDCL", u"ARTITM", u"ARTSBT", u"ARTNRO", u"ARTUNI", u"ARTNCM", u"ARTCAT", u"ARTPRE", u"ARTDSC"});
    for (qint64 place = 0; place < articles; ++place) {
        const qint64 number = spread(place, articles);
        const Article article(number);
        const bool wrong = !good || number % 10000 == 0;
        rows.add({article.declaration, article.item, article.subitem, article.code, Value::ofText(u"07"_s),
                  Value::ofText(u"7208.90.00.110H"_s), Value::ofNumber(100), Value::ofNumber(3.5),
                  Value::ofNumber(wrong ? 1 : 100 - dischargesEach * 10.1)});
    }
    rows.finish();
    Writer discharges(engine, tables, u"DIP",
                      {u"ARTDCL", u"ARTITM", u"ARTSBT", u"ARTNRO", u"RALCAN", u"EXTINT", u"EXTSBT", u"EXTNOF"});
    for (qint64 place = 0; place < articles * dischargesEach; ++place) {
        const Article article(spread(place, articles * dischargesEach) / dischargesEach);
        discharges.add({article.declaration, article.item, article.subitem, article.code, Value::ofNumber(10.1),
                        Value::ofText(u"EXP%1"_s.arg(place % 100000)), Value::ofNumber(static_cast<double>(place % 7)),
                        Value::ofText(u"26001EC01%1B"_s.arg(place % 100000, 6, 10, QChar(u'0')))});
    }
    discharges.finish();
}

/// A database with a stock, whose tables are dropped behind it.
class StockBase
{
public:
    StockBase(QString url, qint64 articles, Condition condition)
        : m_url(std::move(url)), m_engine(store::openEngine(m_url, Access::ReadWrite, store::Opening::Create))
    {
        if (isFile()) {
            m_engine->run("PRAGMA cache_size=-400000"); // the indexes are filled in no order
        }
        store::createTables(*m_engine, Database::Inputs);
        m_engine->begin();
        fill(*m_engine, store::tablesOf(*m_engine), articles, condition);
        m_engine->commit();
    }
    ~StockBase()
    {
        try {
            for (const dialect::Table& table : m_engine->catalog().tables) {
                m_engine->run("DROP TABLE \"" + table.name.toUtf8() + '"');
            }
        } catch (const RuntimeError& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
    }
    StockBase(const StockBase&) = delete;
    StockBase& operator=(const StockBase&) = delete;

    [[nodiscard]] const QString& url() const { return m_url; }

private:
    [[nodiscard]] bool isFile() const { return m_url.startsWith(u"sqlite:"_s); }

    QString m_url;
    std::unique_ptr<store::EngineConnection> m_engine;
};

struct Cost
{
    double seconds = 0;
    double processor = 0; ///< of these, seconds of work: the rest was waiting for the disk or for other programs
    qint64 peakKb = 0;
    qint64 findings = 0;
};

/// The most memory that this process has had.
qint64 peakKb()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::atoll(line.c_str() + std::strlen("VmHWM:"));
        }
    }
    return 0;
}

/// What this process has had of the processors.
double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// The verifying process: verifies and prints its cost.
int verify(const char* url)
{
    CountingConsole console;
    const double seconds = bench::seconds([&] {
        data::verificar().run({{QString::fromUtf8(url)}, {{u"formato"_s, u"csv"_s}}}, console);
    });
    std::printf("%.2f %.2f %lld %lld\n", seconds, processorSeconds(), static_cast<long long>(peakKb()),
                static_cast<long long>(console.rows() - 1));
    return 0;
}

Cost costOf(const QString& url)
{
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string command = '\'' + program + "' --verify '" + url.toStdString() + '\'';
    FILE* const process = popen(command.c_str(), "r");
    Cost cost;
    long long peak = 0;
    long long findings = 0;
    if (!process || std::fscanf(process, "%lf %lf %lld %lld", &cost.seconds, &cost.processor, &peak, &findings) != 4) {
        std::fprintf(stderr, "the verifying process gave no result\n");
        std::exit(2);
    }
    pclose(process);
    cost.peakKb = peak;
    cost.findings = findings;
    return cost;
}

/// Verifies a tenth and the whole; false when memory grows with the tables, or the findings are not what was made.
bool compare(const QString& tenthUrl, const QString& wholeUrl, Condition condition, qint64 articles)
{
    const auto measure = [condition](const QString& url, qint64 count) {
        const StockBase base(url, count, condition);
        return costOf(base.url());
    };
    const Cost tenth = measure(tenthUrl, articles / 10);
    const Cost whole = measure(wholeUrl, articles);
    const qint64 expected = condition == Condition::Good ? articles / 10000 : articles * (2 + dischargesEach);
    const auto allowed = static_cast<qint64>(allowedGrowth * static_cast<double>(tenth.peakKb)) + allowanceKb;
    const bool right = whole.findings == expected;
    const bool held = whole.peakKb <= allowed;
    std::printf("%-46s %5.1f s (%.1f s of work), peak %5.1f MB; a tenth %4.1f s, %5.1f MB; at most %5.1f MB  %s\n",
                condition == Condition::Good ? "verify 1,000,000 articles, 3,000,000 discharges"
                                             : "verify 200,000 articles, all of them wrong",
                whole.seconds, whole.processor, static_cast<double>(whole.peakKb) / 1024, tenth.seconds,
                static_cast<double>(tenth.peakKb) / 1024, static_cast<double>(allowed) / 1024,
                held ? "held" : "MISSED");
    if (!right) {
        std::printf("%lld findings where %lld were made\n", static_cast<long long>(whole.findings),
                    static_cast<long long>(expected));
    }
    return held && right;
}

} // namespace

int main(int argc, char** argv)
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
    try {
        if (argc == 3 && std::strcmp(argv[1], "--verify") == 0) {
            return verify(argv[2]);
        }
        const QTemporaryDir folder;
        const QString url = argc > 1 ? QString::fromUtf8(argv[1]) : u"sqlite:"_s + folder.filePath(u"stock"_s);
        const bool good = compare(url + u"_tenth", url + u"_whole", Condition::Good, wholeStock);
        const bool bad = compare(url + u"_bad_tenth", url + u"_bad_whole", Condition::Bad, wholeStock / 5);
        return good && bad ? 0 : 1;
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}
