// What the store costs over SQLite's own interface: the component's concatenated texts through ConexionDB against the
// same statements prepared once and bound, on files with the same settings.

#include "BareSqlite.h"
#include "Measure.h"

#include <oVELDRA/Store.h>

#include <QLocale>
#include <QTemporaryDir>

#include <cstdlib>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using bench::bindText;
using bench::handleOf;
using bench::prepare;
using bench::run;

namespace {

constexpr int products = 2000;
constexpr int rounds = 20000;
constexpr int articles = 100000;

using Connection = std::shared_ptr<ConexionDB>;

volatile double sink = 0; // what was read, so that reading cannot be left out

QString code(int number)
{
    return u"P"_s + QString::number(number);
}

/// Steps through a prepared query and reads every column as what it is.
void stepThrough(sqlite3_stmt* statement)
{
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            switch (sqlite3_column_type(statement, column)) {
            case SQLITE_TEXT:
                sink = sink + sqlite3_column_text(statement, column)[0];
                break;
            case SQLITE_NULL:
                break;
            default:
                sink = sink + sqlite3_column_double(statement, column);
                break;
            }
        }
    }
    sqlite3_reset(statement);
}

double read(const QVariant& value)
{
    return value.typeId() == QMetaType::QString ? static_cast<double>(value.toString().size()) : value.toDouble();
}

bool oneRowSelect(const QString& url)
{
    const Connection db = connectStore(url);
    for (int i = 0; i < products; ++i) {
        run(*db,
            u"insert into PRD (CATNRO,PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU) values ('C','"_s +
                code(i) + u"','Motor eléctrico','8501.52.10.900L','1','07','12,5','SIN SUFIJOS','200','3,25')");
    }
    static constexpr std::array fields = {u"CATNRO", u"PRDNRO", u"PRDDES", u"PRDNCM", u"PRDMUL",
                                          u"PRDUNI", u"PRDPRE", u"PRDSUF", u"PRDPAI", u"PRDKGU"};
    const auto ours = [&] {
        for (int i = 0; i < rounds; ++i) {
            bool ok = false;
            db->setSql(u"select * from PRD where CATNRO = '"_s + u"C" + u"' and PRDNRO = '" + code(i % products) +
                       u'\'');
            const auto row = db->openRecordset(ok);
            for (const char16_t* const field : fields) {
                sink = sink + read(row->value(field));
            }
        }
    };
    const Connection other = connectStore(url);
    const auto statement = prepare(
        handleOf(*other), "SELECT \"CATNRO\",\"PRDNRO\",\"PRDDES\",\"PRDNCM\",\"PRDMUL\",\"PRDUNI\",\"PRDPRE\","
                          "\"PRDSUF\",\"PRDPAI\",\"PRDKGU\" FROM PRD WHERE rtrim(\"CATNRO\") COLLATE NOCASE = ?1 "
                          "AND rtrim(\"PRDNRO\") COLLATE NOCASE = ?2");
    const auto limit = [&] {
        for (int i = 0; i < rounds; ++i) {
            const std::string product = code(i % products).toStdString();
            bindText(statement.get(), 1, "C");
            bindText(statement.get(), 2, product);
            stepThrough(statement.get());
        }
    };
    return bench::report("one-row select, all fields read", bench::compare(7, ours, limit), 1.6);
}

bool insert(const QString& ourUrl, const QString& limitUrl)
{
    const Connection db = connectStore(ourUrl);
    const auto ours = [&] {
        for (int i = 0; i < rounds; ++i) {
            const QString quantity = QString::number(i % 1000) + u",5";
            run(*db, u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values ('"_s +
                         u"26073IT14000011A" + u"','" + u"AC-0001" + u"','" + u"01" + u"','" + quantity + u"','" +
                         u"38,333333" + u"','" + quantity + u"','" + u"7208.90.00.110H" + u"','" + u"001" + u"','" +
                         u"002" + u"')");
        }
    };
    const Connection other = connectStore(limitUrl);
    const auto statement = prepare(handleOf(*other), bench::insertArticle);
    bench::Article article{"26073IT14000011A", "AC-0001", "01", 0, 38.333333, "7208.90.00.110H", 1, 2};
    const auto limit = [&] {
        for (int i = 0; i < rounds; ++i) {
            article.quantity = i % 1000 + 0.5;
            bench::insert(statement.get(), article);
        }
    };
    return bench::report("insert, each on its own", bench::compare(5, ours, limit), 1.6);
}

bool wholeRecordset(const QString& url)
{
    const Connection db = connectStore(url);
    {
        const auto burst = db->beginBurst();
        for (int i = 0; i < articles; ++i) {
            run(*db,
                u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values ('D','AC-"_s +
                    QString::number(i % 5000) + u"','01','" + QString::number(i) +
                    u"','38,333333','12,25','7208.90.00.110H','" + QString::number(1 + i / 100) + u"','" +
                    QString::number(i % 100) + u"')");
        }
        burst->commit();
    }
    static constexpr std::array fields = {u"INTDCL", u"ARTNRO", u"ARTUNI", u"ARTCAT", u"ARTPRE",
                                          u"ARTDSC", u"ARTNCM", u"ARTITM", u"ARTSBT", u"ARTCTC"};
    const auto ours = [&] {
        bool ok = false;
        db->setSql(u"select * from INS where INTDCL = 'D'"_s);
        for (const auto rows = db->openRecordset(ok); !rows->atEof(); rows->moveNext()) {
            for (const char16_t* const field : fields) {
                sink = sink + read(rows->value(field));
            }
        }
    };
    const Connection other = connectStore(url);
    const auto statement = prepare(
        handleOf(*other), "SELECT \"INTDCL\",\"ARTNRO\",\"ARTUNI\",\"ARTCAT\",\"ARTPRE\",\"ARTDSC\",\"ARTNCM\","
                          "\"ARTITM\",\"ARTSBT\",\"ARTCTC\" FROM INS WHERE rtrim(\"INTDCL\") COLLATE NOCASE = ?1");
    const auto limit = [&] {
        bindText(statement.get(), 1, "D");
        stepThrough(statement.get());
    };
    return bench::report("recordset of 100,000 articles, every field by name", bench::compare(7, ours, limit), 2.5);
}

QString makeFile(const QTemporaryDir& folder, const QString& name)
{
    QString url = u"sqlite:"_s + folder.filePath(name);
    static_cast<void>(createStore(url, Database::Inputs));
    return url;
}

} // namespace

/// Runs all benchmarks, or the one that is named: select, insert or recordset.
int main(int argc, char** argv)
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
    const QTemporaryDir folder;
    const auto wanted = [&](const char* name) { return argc < 2 || std::strcmp(argv[1], name) == 0; };
    bool held = true;
    if (wanted("select")) {
        held = oneRowSelect(makeFile(folder, u"select.sqlite"_s)) && held;
    }
    if (wanted("insert")) {
        held = insert(makeFile(folder, u"ours.sqlite"_s), makeFile(folder, u"limit.sqlite"_s)) && held;
    }
    if (wanted("recordset")) {
        held = wholeRecordset(makeFile(folder, u"articles.sqlite"_s)) && held;
    }
    return held ? 0 : 1;
}
