#include "StockBase.h"
#include "doubles/FixedClock.h"
#include "doubles/ThrownError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QLocale>
#include <QTest>

#include <oveldra-datos/Vencimientos.h>
#include <tariff/CsvReader.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;

namespace {

using Options = QMap<QString, QString>;

const QDate today(2024, 3, 15);

Command command()
{
    return vencimientos(std::make_shared<doubles::FixedClock>(today));
}

QJsonDocument jsonOf(const StockBase& base, const Options& options = {})
{
    const CommandRun run(command(), {base.url()}, options, RecordedConsole::Format::Json);
    const QJsonDocument json = QJsonDocument::fromJson(run.console.written().toUtf8());
    const bool agrees = run.exitCode == (json[u"vencimientos"].toArray().isEmpty() ? Success : Findings);
    return agrees ? json : QJsonDocument();
}

/// The declarations listed, each as its number and days left.
QStringList listed(const StockBase& base, const Options& options = {})
{
    QStringList result;
    const QJsonDocument json = jsonOf(base, options);
    for (const QJsonValue declaration : json[u"vencimientos"].toArray()) {
        result.append(u"%1 %2"_s.arg(declaration[u"INTDCL"].toString()).arg(declaration[u"dias"].toInt()));
    }
    return json.isNull() ? QStringList(u"no JSON, or another exit code"_s) : result;
}

/// A declaration whose term ends so many days from today, with one article that is open.
void addOpen(StockBase& base, const Cell& number, int days)
{
    base.header(number, today.addDays(days));
    base.article(number, 1, 1, 10, 4);
}

QString refusal(const Options& options)
{
    try {
        static_cast<void>(CommandRun(command(), {u"sqlite:/no/such/file"_s}, options));
    } catch (const BadUsageError& error) {
        return error.text();
    }
    return {};
}

} // namespace

class tst_Vencimientos : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase_data() { FreshBases::addEngines(); }

    void initTestCase() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    void declarationsOfTheTermAreListedByItsEndAndThenByNumber()
    {
        StockBase base = inputs();
        addOpen(base, u"ayer", -1);
        addOpen(base, u"Ñ", 7);
        addOpen(base, u"último", 30);
        addOpen(base, u"fuera", 31);
        addOpen(base, u"hoy", 0);
        addOpen(base, u"O", 7);
        addOpen(base, u"n", 7);
        QCOMPARE(listed(base), QStringList({u"hoy 0"_s, u"n 7"_s, u"Ñ 7"_s, u"O 7"_s, u"último 30"_s}));
    }

    void theTermAndItsBeginningCanBeGiven()
    {
        StockBase base = inputs();
        addOpen(base, u"A", -1);
        addOpen(base, u"B", 0);
        addOpen(base, u"C", 1);
        addOpen(base, u"D", 90);
        QCOMPARE(listed(base, {{u"dias"_s, u"0"_s}}), QStringList(u"B 0"_s));
        QCOMPARE(listed(base, {{u"dias"_s, u"90"_s}}), QStringList({u"B 0"_s, u"C 1"_s, u"D 90"_s}));
        QCOMPARE(listed(base, {{u"desde"_s, u"2024-03-14"_s}, {u"dias"_s, u"1"_s}}), QStringList({u"A 0"_s, u"B 1"_s}));
        QCOMPARE(listed(base, {{u"desde"_s, u"2025-01-01"_s}}), QStringList());
    }

    void whatHasExpiredIsListedWhenAskedFor()
    {
        StockBase base = inputs();
        addOpen(base, u"A", -4000);
        addOpen(base, u"B", -1);
        addOpen(base, u"C", 3);
        addOpen(base, u"D", 31);
        base.header(u"cerrada", today.addDays(-2));
        base.article(u"cerrada", 1, 1, 10, 0);
        QCOMPARE(listed(base), QStringList(u"C 3"_s));
        QCOMPARE(listed(base, {{u"vencidas"_s, {}}}), QStringList({u"A -4000"_s, u"B -1"_s, u"C 3"_s}));
    }

    void onlyWhatIsOpenCounts()
    {
        StockBase base = inputs();
        base.header(u"26073Ñ01", today);
        base.article(u"26073ñ01 ", 1, 1, 100, 12.5, u"A", 3);
        base.article(u"26073Ñ01", 1, 2, 100, 0.1, u"A", 0.2);
        base.article(u"26073Ñ01", 1, 3, 100, 0, u"A", 1000);
        base.article(u"26073Ñ01", 1, 4, 100, -5, u"A", 1000);
        base.article(u"26073Ñ01", 1, 5, 100, 0.000000004, u"A", 1000);
        base.article(u"26073Ñ01", 1, 6, 100, {}, u"A", 1000);
        base.article(u"26073Ñ01", 1, 7, 100, 8, u"A", {});
        base.article(u"26073N01", 1, 1, 100, 77);
        base.article({}, 1, 1, 100, 77);
        const QJsonArray list = jsonOf(base)[u"vencimientos"].toArray();
        QCOMPARE(list.size(), 1);
        QCOMPARE(list[0][u"articulos"].toInt(), 3);
        QCOMPARE(list[0][u"cantidad"].toDouble(), 20.6);
        QCOMPARE(list[0][u"cif"].toDouble(), 37.52);
    }

    void declarationsWithNothingOpenOrWithoutATermAreNotListed()
    {
        StockBase base = inputs();
        base.header(u"sin artículos", today);
        base.header(u"cerrada", today);
        base.article(u"cerrada", 1, 1, 10, 0);
        base.header(u"negativa", today);
        base.article(u"negativa", 1, 1, 10, -3);
        base.header(u"sin plazo", {});
        base.article(u"sin plazo", 1, 1, 10, 10);
        base.header({}, today);
        base.article({}, 1, 1, 10, 10);
        QCOMPARE(listed(base, {{u"vencidas"_s, {}}}), QStringList());
    }

    void jsonHasTheTotals()
    {
        StockBase base = inputs();
        addOpen(base, u"A", 1);
        addOpen(base, u"B", 2);
        const QJsonDocument json = jsonOf(base, {{u"dias"_s, u"10"_s}});
        QCOMPARE(json[u"desde"].toString(), u"2024-03-15"_s);
        QCOMPARE(json[u"hasta"].toString(), u"2024-03-25"_s);
        QCOMPARE(json[u"vencidas"].toBool(true), false);
        QCOMPARE(json[u"declaraciones"].toInt(), 2);
        QCOMPARE(json[u"cantidad"].toDouble(), 8);
        QCOMPARE(json[u"cif"].toDouble(), 16);
        const QJsonObject first = json[u"vencimientos"][0].toObject();
        QCOMPARE(first[u"INTVEN"].toString(), u"2024-03-16"_s);
        QCOMPARE(first[u"INTNRO"].toString(), u"TOR1"_s);
        QCOMPARE(first[u"INTADU"].toString(), u"073"_s);
        QCOMPARE(first[u"INTDES"].toString(), u"Acero, \"laminado\""_s);
    }

    void csvHasPlainNumbersAndDates()
    {
        StockBase base = inputs();
        base.header(u"D1", today.addDays(2));
        base.article(u"D1", 1, 1, 10, 2.5, u"A", 1.5);
        const CommandRun run(command(), {base.url()}, {{u"formato"_s, u"csv"_s}});
        QCOMPARE(run.exitCode, int(Findings));
        QCOMPARE(run.console.written(), u"INTVEN,dias,INTDCL,INTNRO,INTADU,INTDES,articulos,cantidad,cif\r\n"
                                        u"2024-03-17,2,D1,TOR1,073,\"Acero, \"\"laminado\"\"\",1,2.5,3.75\r\n"_s);
    }

    void theTableIsForPeople()
    {
        StockBase base = inputs();
        base.header(u"D1", today.addDays(2));
        base.article(u"D1", 1, 1, 10, 2.5, u"A", 1.5);
        const CommandRun run(command(), {base.url()}, {{u"vencidas"_s, {}}});
        QCOMPARE(run.console.lines(),
                 QStringList({u"Declaraciones con saldo que vencen del 15/03/2024 al 14/04/2024, y las ya vencidas"_s,
                              u"  Vencimiento  Días  Declaración  Interno  Aduana  Descripción        Artículos  "
                              u"Cantidad   CIF"_s,
                              u"  17/03/2024      2  D1           TOR1     073     Acero, \"laminado\"          1  "
                              u"     2,5  3,75"_s,
                              {},
                              u"Declaraciones: 1 · cantidad abierta: 2,5 · CIF: 3,75"_s}));
        const CommandRun none(command(), {base.url()}, {{u"dias"_s, u"1"_s}});
        QCOMPARE(none.exitCode, int(Success));
        QCOMPARE(none.console.lines(),
                 QStringList(u"Declaraciones con saldo que vencen del 15/03/2024 al 16/03/2024: ninguna."_s));
    }

    void optionsThatMakeNoSenseAreRefused()
    {
        for (const QString& days : {u"-1"_s, u"1.5"_s, u"x"_s, u""_s, u"36501"_s}) {
            QCOMPARE(refusal({{u"dias"_s, days}}), u"--dias es un número de 0 a 36500; no '%1'."_s.arg(days));
        }
        for (const QString& date : {u"15/03/2024"_s, u"2024-02-30"_s, u"2024-3-5"_s, u""_s}) {
            QCOMPARE(refusal({{u"desde"_s, date}}), u"--desde es una fecha como 2024-03-15; no '%1'."_s.arg(date));
        }
    }

    void aDatabaseWithoutTheTablesIsNoStock()
    {
        const StockBase tariff(m_bases.url(), Database::Nomenclature);
        const auto error = doubles::thrownBy([&] { static_cast<void>(CommandRun(command(), {tariff.url()})); });
        QVERIFY(error);
        QCOMPARE(error->description(),
                 u"La base de datos no es una base de insumos: no tiene las tablas INTINS, INS."_s);
    }

    void anEndThatIsNoDateIsComplainedAbout()
    {
        QFETCH_GLOBAL(QString, engine);
        if (engine != u"sqlite"_s) {
            QSKIP("the server keeps nothing but dates in a column of dates");
        }
        StockBase base = inputs();
        base.header(u"D1", u"pronto");
        base.article(u"D1", 1, 1, 10, 10);
        base.header(u"D2", u"20/03/2024"); // as another program may have written it
        base.article(u"D2", 1, 1, 10, 10);
        const CommandRun run(command(), {base.url()}, {{u"formato"_s, u"csv"_s}});
        QCOMPARE(run.console.complaints(),
                 QStringList(u"El vencimiento de la declaración D1 no es una fecha: 'pronto'."_s));
        QVERIFY(run.console.written().contains(u"2024-03-20,5,D2"));
        QVERIFY(!run.console.written().contains(u"D1"));
    }

    void nothingIsWritten()
    {
        StockBase base = inputs();
        addOpen(base, u"A", 1);
        const QString before = base.content();
        QCOMPARE(listed(base), QStringList(u"A 1"_s));
        QCOMPARE(base.content(), before);
    }

private:
    StockBase inputs() { return {m_bases.url(), Database::Inputs}; }

    FreshBases m_bases;
};

QTEST_GUILESS_MAIN(tst_Vencimientos)
#include "tst_Vencimientos.moc"
