#include "AccessCopy.h"
#include "DatabasePlaces.h"
#include "HookedConsole.h"
#include "ListedSource.h"
#include "RecordedConsole.h"
#include "doubles/ThrownError.h"

#include <store/StoreError.h>
#include <store/sqlite/SqliteEngine.h>

#include <QtTest>

#include <cmath>
#include <csignal>
#include <oveldra-datos/AccessFile.h>
#include <oveldra-datos/Interruption.h>
#include <oveldra-datos/Transfer.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using dialect::Value;
using dialect::ValueType;

namespace {

using EnginePointer = std::unique_ptr<store::EngineConnection>;

EnginePointer create(const QString& url)
{
    return store::openEngine(url, Access::ReadWrite, store::Opening::Create);
}

Value text(const QString& value)
{
    return Value::ofText(value);
}

Value number(double value)
{
    return Value::ofNumber(value);
}

const QStringList& headerColumns()
{
    static const QStringList columns{u"INTNRO"_s, u"INTDCL"_s, u"INTFOF"_s, u"INTIOK"_s};
    return columns;
}

const QStringList& articleColumns()
{
    static const QStringList columns{u"INTDCL"_s, u"ARTITM"_s, u"ARTSBT"_s, u"ARTCAT"_s, u"ARTPRE"_s, u"ARTDSC"_s};
    return columns;
}

std::vector<Value> article(const QString& declaration, double item, double quantity, double price)
{
    return {text(declaration), number(item), number(1), number(quantity), number(price), number(quantity)};
}

QStringList reasonsOf(const TransferReport& report)
{
    QStringList reasons;
    for (const Rejection& rejection : report.rejections) {
        reasons.append(rejection.reason);
    }
    return reasons;
}

const MovedTable& tableOf(const TransferReport& report, const QString& name)
{
    return *std::find_if(report.tables.begin(), report.tables.end(),
                         [&name](const MovedTable& table) { return table.table == name; });
}

class FailingListener final : public RejectionListener
{
public:
    void add(const Rejection& /*rejection*/) override {}
    void finish() override { throw RuntimeError(5); }
};

} // namespace

class tst_Transfer : public QObject
{
    Q_OBJECT

private:
    [[nodiscard]] TransferReport transfer(Source& source, const QString& url, bool acceptRejections = false,
                                          Database database = Database::Inputs)
    {
        const EnginePointer engine = create(url);
        return Transfer(source, *engine, database, m_console).run(acceptRejections);
    }

    /// Of a source with one table.
    [[nodiscard]] TransferReport accepted(ListedSource& source)
    {
        return transfer(source, m_places.fresh(u"sqlite"_s), true);
    }

    DatabasePlaces m_places;
    RecordedConsole m_console;

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina)); }

    void cleanup() { const Interruption forgetsTheLastRequest; }

    void everyRowArrives_data() { DatabasePlaces::addEngines(); }
    void everyRowArrives()
    {
        QFETCH(QString, engine);
        const QString url = m_places.fresh(engine);
        AccessFile source(QStringLiteral(OVELDRA_TEST_DATA "/access/insumos.mdb"));
        const TransferReport report = transfer(source, url);
        QVERIFY(report.committed);
        QCOMPARE(report.rejectionCount, 0);
        QCOMPARE(report.failures, QStringList());
        for (const QString& name : source.tables()) {
            const Rows arrived = DatabasePlaces::rowsOf(url, name);
            const auto original = source.open(name);
            SourceRow row;
            size_t rows = 0;
            while (original->next(row)) {
                if (name == u"INTINS"_s) {
                    row.cells[7] = {ValueType::Boolean, row.cells[7].number != 0 ? 1.0 : 0.0, {}, {}};
                }
                QVERIFY(same({row.cells}, {arrived.at(rows)}));
                ++rows;
            }
            QCOMPARE(arrived.size(), rows);
            QCOMPARE(static_cast<size_t>(tableOf(report, name).written), rows);
        }
        QCOMPARE(std::round(report.written.all().quantity.value() * 100), 232626860.0);
        QCOMPARE(std::round(report.written.all().cif.value() * 100), 34778797077.0);
        QCOMPARE(report.written.declarations().size(), size_t{36});
    }

    void theStockAddsUpAfterwards()
    {
        const QString url = m_places.fresh(u"sqlite"_s);
        AccessFile source(QStringLiteral(OVELDRA_TEST_DATA "/access/insumos.mdb"));
        QVERIFY(transfer(source, url).committed);
        std::map<std::tuple<QString, double, double>, double> discharged;
        for (const auto& row : DatabasePlaces::rowsOf(url, u"DIP"_s)) {
            discharged[{row[0].text, row[2].number, row[3].number}] += row[5].number;
        }
        size_t found = 0;
        for (const auto& row : DatabasePlaces::rowsOf(url, u"INS"_s)) {
            const auto sum = discharged.find({row[0].text, row[7].number, row[8].number});
            found += sum == discharged.end() ? size_t{0} : size_t{1};
            const double expected = sum == discharged.end() ? 0 : sum->second;
            QVERIFY(std::abs(row[3].number - row[5].number - expected) < 0.01);
        }
        QCOMPARE(found, discharged.size());
    }

    void aSecondRunRefuses_data() { DatabasePlaces::addEngines(); }
    void aSecondRunRefuses()
    {
        QFETCH(QString, engine);
        const QString url = m_places.fresh(engine);
        ListedSource source;
        source.add(u"CAT"_s, {u"CATNRO"_s}).add({text(u"A"_s)});
        QVERIFY(transfer(source, url).committed);
        const auto error = doubles::thrownBy([&] { static_cast<void>(transfer(source, url)); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), static_cast<int>(store::Trouble::AlreadyThere));
        QVERIFY(error->description().startsWith(u"La base de destino ya tiene filas en CAT; no se mezclan"_s));
        QCOMPARE(DatabasePlaces::countOf(url, u"CAT"_s), size_t{1});
    }

    void theThreeBasesShareADatabase()
    {
        const QString url = m_places.fresh(u"sqlite"_s);
        ListedSource source;
        source.add(u"CAT"_s, {u"CATNRO"_s}).add({text(u"A"_s)});
        QVERIFY(transfer(source, url).committed);
        ListedSource host;
        host.add(u"caratula"_s, {u"interno"_s}).add({text(u"T1"_s)});
        QVERIFY(transfer(host, url, false, Database::Host).committed);
        QCOMPARE(DatabasePlaces::countOf(url, u"caratula"_s), size_t{1});
    }

    void anIncompleteDestinationIsRefused()
    {
        const QString url = m_places.fresh(u"sqlite"_s);
        {
            const EnginePointer engine = create(url);
            store::createTables(*engine, Database::Inputs);
            engine->run("DROP TABLE DIP");
            engine->run("ALTER TABLE CAT DROP COLUMN CATDES");
        }
        ListedSource source;
        source.add(u"CAT"_s, {u"CATNRO"_s}).add({text(u"A"_s)});
        const auto error = doubles::thrownBy([&] { static_cast<void>(transfer(source, url)); });
        QVERIFY(error);
        QCOMPARE(error->description(),
                 u"La base de destino no está completa, falta CAT.CATDES, DIP. No se modificó."_s);
    }

    void yesNoBecomesWhatTheProgramWrites()
    {
        ListedSource source;
        ListedTable& headers = source.add(u"INTINS"_s, headerColumns());
        headers.add({text(u"1"_s), text(u"D1"_s), {}, Value::ofBoolean(true)});
        headers.add({text(u"2"_s), text(u"D2"_s), {}, Value::ofBoolean(false)});
        headers.add({text(u"3"_s), text(u"D3"_s), {}, number(-1)}); // a number is kept as it is
        ListedTable& relations =
            source.add(u"RIP"_s, {u"CATNRO"_s, u"PRDNRO"_s, u"ARTNRO"_s, u"TRPMER"_s, u"DIPOBL"_s});
        relations.add({text(u"C"_s), text(u"P"_s), text(u"A"_s), Value::ofBoolean(true), number(7)});
        const QString url = m_places.fresh(u"sqlite"_s);
        QVERIFY(transfer(source, url).committed);
        const Rows stored = DatabasePlaces::rowsOf(url, u"INTINS"_s);
        QCOMPARE(stored[0][7].number, 1.0);
        QCOMPARE(stored[1][7].number, 0.0);
        QCOMPARE(stored[2][7].number, -1.0);
        const Rows flags = DatabasePlaces::rowsOf(url, u"RIP"_s);
        QCOMPARE(flags[0][7].number, -1.0);
        QVERIFY(flags[0][8].isNull());
        QCOMPARE(flags[0][9].number, -1.0);
    }

    void columnsBelongTogetherInAnyCaseAndOthersAreReported()
    {
        ListedSource source;
        ListedTable& catalogs = source.add(u"cat"_s, {u"catNRO"_s, u"OBS"_s, u"VACIA"_s, u"MARCA"_s});
        catalogs.add({text(u"A"_s), text(u"algo"_s), {}, Value::ofBoolean(false)});
        catalogs.rows.push_back({{text(u"B"_s), {}, {}, Value::ofBoolean(false)}, {{1, u"su tipo no se admite"_s}}});
        catalogs.add({text(u"C"_s), {}, {}, Value::ofBoolean(false)});
        source.add(u"Clientes"_s, {u"nombre"_s}).add({text(u"x"_s)});
        source.add(u"Vacia"_s, {u"nombre"_s}).announced = 0;
        const QString url = m_places.fresh(u"sqlite"_s);
        const TransferReport report = transfer(source, url);
        QVERIFY(report.committed);
        QCOMPARE(DatabasePlaces::rowsOf(url, u"CAT"_s)[2][0].text, u"C"_s);
        const MovedTable& moved = report.tables[0];
        QCOMPARE(moved.missingColumns, QStringList{u"CATDES"_s});
        QCOMPARE(moved.uncopied.size(), size_t{3});
        QCOMPARE(moved.uncopied[0].column, u"OBS"_s);
        QCOMPARE(moved.uncopied[0].filled, 2);
        QCOMPARE(moved.uncopied[1].filled, 0);
        QCOMPARE(moved.uncopied[2].filled, 0);
        QVERIFY(!tableOf(report, u"DIP"_s).inSource);
        QCOMPARE(report.uncopiedTables.size(), size_t{2});
        QCOMPARE(report.uncopiedTables[0].table, u"Clientes"_s);
        QCOMPARE(report.uncopiedTables[0].rows, std::optional<qint64>(1));
        QCOMPARE(report.uncopiedTables[1].rows, std::optional<qint64>(0));
    }

    void troubleOfTheSourceRejectsItsRow()
    {
        ListedSource source;
        ListedTable& headers = source.add(u"INTINS"_s, headerColumns());
        headers.rows.push_back({{text(u"1"_s), text(u"D1"_s), {}, {}}, {{2, u"la fecha tiene hora: x"_s}}});
        headers.add({text(u"2"_s), text(u"D2"_s), {}, {}});
        const TransferReport report = accepted(source);
        QCOMPARE(report.rejections.size(), size_t{1});
        QCOMPARE(report.rejections[0].table, u"INTINS"_s);
        QCOMPARE(report.rejections[0].row, 1);
        QCOMPARE(report.rejections[0].key, u"INTDCL=D1"_s);
        QCOMPARE(report.rejections[0].reason, u"INTFOF: la fecha tiene hora: x"_s);
        QCOMPARE(tableOf(report, u"INTINS"_s).written, 1);
    }

    void repeatedKeysKeepTheFirst_data() { DatabasePlaces::addEngines(); }
    void repeatedKeysKeepTheFirst()
    {
        QFETCH(QString, engine);
        ListedSource source;
        ListedTable& products = source.add(u"PRD"_s, {u"CATNRO"_s, u"PRDNRO"_s, u"PRDDES"_s});
        products.add({text(u"Ñu"_s), text(u"P1"_s), text(u"primero"_s)});
        products.add({text(u"ñU "_s), text(u"p1"_s), text(u"repetido"_s)});
        products.add({text(u"Nu"_s), text(u"P1"_s), text(u"otra letra"_s)});
        products.add({text(u"ÑuP"_s), text(u"1"_s), text(u"otra división"_s)});
        products.add({text(u"A"_s), {}, text(u"sin código"_s)});
        products.add({text(u"A"_s), {}, text(u"tampoco"_s)});
        const QString url = m_places.fresh(engine);
        const TransferReport report = transfer(source, url, true);
        QVERIFY(report.committed);
        QCOMPARE(reasonsOf(report),
                 QStringList{u"clave repetida: es la de la fila 1 (no se distinguen mayúsculas ni blancos finales)"_s});
        QCOMPARE(report.rejections[0].key, u"CATNRO=ñU , PRDNRO=p1"_s);
        const Rows stored = DatabasePlaces::rowsOf(url, u"PRD"_s);
        QCOMPARE(stored.size(), size_t{5});
        QCOMPARE(stored[0][2].text, u"primero"_s);
    }

    void aRejectedRowDoesNotTakeItsKey()
    {
        ListedSource source;
        ListedTable& catalogs = source.add(u"CAT"_s, {u"CATNRO"_s, u"CATDES"_s});
        catalogs.add({text(u"A"_s), text(QString(256, u'x'))});
        catalogs.add({text(u"A"_s), text(u"bien"_s)});
        const TransferReport report = accepted(source);
        QCOMPARE(report.rejectionCount, 1);
        QCOMPARE(report.rejections[0].row, 1);
    }

    void rejectionsStopItUnlessAccepted_data() { DatabasePlaces::addEngines(); }
    void rejectionsStopItUnlessAccepted()
    {
        QFETCH(QString, engine);
        ListedSource source;
        ListedTable& articles = source.add(u"INS"_s, articleColumns());
        articles.add(article(u"D1"_s, 1, 10, 2));
        articles.add(article(u"D1"_s, 1.5, 3, 7));
        articles.add(article(u"D2"_s, 1, 0.1, 0.2));
        const QString url = m_places.fresh(engine);
        const TransferReport stopped = transfer(source, url);
        QVERIFY(!stopped.committed);
        QCOMPARE(stopped.failures, QStringList());
        QVERIFY(doubles::thrownBy([&] { static_cast<void>(DatabasePlaces::rowsOf(url, u"INS"_s)); }) ||
                DatabasePlaces::countOf(url, u"INS"_s) == 0);

        const TransferReport taken = transfer(source, url, true);
        QVERIFY(taken.committed);
        QCOMPARE(DatabasePlaces::countOf(url, u"INS"_s), size_t{2});
        QCOMPARE(taken.kept.of(u"D1"_s).cif.value(), 20.0);
        QCOMPARE(taken.rejected.of(u"D1"_s).cif.value(), 21.0);
        QCOMPARE(taken.written.of(u"D1"_s).cif.value(), 20.0);
        QCOMPARE(taken.written.of(u"D2"_s).quantity.value(), 0.1);
        QCOMPARE(taken.written.of(u"D1"_s).articles, 1);
    }

    void aSourceThatHasLessThanItSaysProvesNothing()
    {
        ListedSource source;
        ListedTable& catalogs = source.add(u"CAT"_s, {u"CATNRO"_s});
        catalogs.add({text(u"A"_s)});
        catalogs.announced = 2;
        const QString url = m_places.fresh(u"sqlite"_s);
        const TransferReport report = transfer(source, url, true);
        QVERIFY(!report.committed);
        QCOMPARE(report.failures, QStringList{u"tabla CAT: el origen anuncia 2 filas y se pudieron leer 1"_s});
        QCOMPARE(DatabasePlaces::countOf(url, u"CAT"_s), size_t{0});
        catalogs.announced = 0; // Access writes that after a crash
        QVERIFY(transfer(source, url).committed);
    }

    void aDestinationThatKeepsSomethingElseProvesNothing_data()
    {
        QTest::addColumn<QByteArray>("trigger");
        QTest::addColumn<QString>("failure");
        const QByteArray onArticle = "CREATE TRIGGER t AFTER INSERT ON INS BEGIN ";
        QTest::newRow("quantity") << QByteArray(onArticle + "UPDATE INS SET ARTCAT = ARTCAT + 0.0000001; END")
                                  << u"declaración 'D1': cantidad 10"_s;
        QTest::newRow("balance") << QByteArray(onArticle + "UPDATE INS SET ARTDSC = 9; END")
                                 << u"declaración 'D1': saldo 10 en el origen y 9 en el destino"_s;
        QTest::newRow("value") << QByteArray(onArticle + "UPDATE INS SET ARTPRE = 3; END")
                               << u"declaración 'D1': CIF 20 en el origen y 30 en el destino"_s;
        QTest::newRow("declaration") << QByteArray(onArticle + "UPDATE INS SET INTDCL = 'd1'; END")
                                     << u"declaración 'D1': artículos 1 en el origen y 0 en el destino"_s;
        QTest::newRow("lost") << QByteArray(onArticle + "DELETE FROM INS; END")
                              << u"tabla INS: se leyeron 1 filas, se rechazaron 0 y el destino tiene 0"_s;
        QTest::newRow("discharged") << QByteArray(
                                           "CREATE TRIGGER t AFTER INSERT ON DIP BEGIN UPDATE DIP SET RALCAN = 1; END")
                                    << u"declaración 'D1': descargado 4 en el origen y 1 en el destino"_s;
    }

    void aDestinationThatKeepsSomethingElseProvesNothing()
    {
        QFETCH(QByteArray, trigger);
        QFETCH(QString, failure);
        const QString url = m_places.fresh(u"sqlite"_s);
        const EnginePointer engine = create(url);
        store::createTables(*engine, Database::Inputs);
        engine->run(trigger);
        ListedSource source;
        source.add(u"INS"_s, articleColumns()).add(article(u"D1"_s, 1, 10, 2));
        source.add(u"DIP"_s, {u"ARTDCL"_s, u"RALCAN"_s}).add({text(u"D1"_s), number(4)});
        const TransferReport report = Transfer(source, *engine, Database::Inputs, m_console).run(true);
        QVERIFY(!report.committed);
        QVERIFY2(report.failures.front().startsWith(failure), qPrintable(report.failures.join(u'\n')));
        QCOMPARE(DatabasePlaces::countOf(url, u"INS"_s), size_t{0});
        QCOMPARE(DatabasePlaces::countOf(url, u"DIP"_s), size_t{0});
    }

    void sumsDoNotDependOnSize()
    {
        CompensatedSum sum;
        sum.add(1e16);
        for (int i = 0; i < 1000; ++i) {
            sum.add(0.1);
        }
        sum.add(-1e16);
        QVERIFY(std::abs(sum.value() - 100) < 1e-9);
    }

    void aFullDiskLeavesNothing()
    {
        const QString url = m_places.fresh(u"sqlite"_s);
        const EnginePointer engine = create(url);
        auto& sqlite = dynamic_cast<store::SqliteEngine&>(*engine);
        QCOMPARE(sqlite3_exec(sqlite.handle(), "PRAGMA max_page_count = 60", nullptr, nullptr, nullptr), SQLITE_OK);
        AccessFile source(QStringLiteral(OVELDRA_TEST_DATA "/access/insumos.mdb"));
        const auto error = doubles::thrownBy(
            [&] { static_cast<void>(Transfer(source, *engine, Database::Inputs, m_console).run(false)); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), static_cast<int>(store::Trouble::DiskFull));
        QVERIFY(error->description().startsWith(u"No hay espacio suficiente en el disco"_s));
        QVERIFY(!engine->inTransaction());
        QVERIFY(store::tablesOf(*engine).tables.empty());
    }

    void aRequestToStopLeavesNothing_data() { DatabasePlaces::addEngines(); }
    void aRequestToStopLeavesNothing()
    {
        QFETCH(QString, engine);
        const QString url = m_places.fresh(engine);
        const EnginePointer destination = create(url);
        AccessFile source(QStringLiteral(OVELDRA_TEST_DATA "/access/insumos.mdb"));
        HookedConsole console([](const QString& what, qint64 /*done*/, qint64 /*total*/) {
            if (what == u"INS"_s) {
                std::raise(SIGTERM);
            }
        });
        const Interruption interruption;
        const auto error = doubles::thrownBy(
            [&] { static_cast<void>(Transfer(source, *destination, Database::Inputs, console).run(false)); });
        QVERIFY(error);
        QCOMPARE(error->number(), 18);
        QVERIFY(store::tablesOf(*destination).tables.empty());
    }

    void nothingIsLeftOutWhenItsListFails()
    {
        ListedSource source;
        source.add(u"INS"_s, articleColumns()).add(article(u"D1"_s, 1.5, 10, 2));
        const QString url = m_places.fresh(u"sqlite"_s);
        const EnginePointer engine = create(url);
        FailingListener listener;
        Transfer transfer(source, *engine, Database::Inputs, m_console);
        transfer.setListener(&listener);
        QCOMPARE(doubles::numberThrownBy([&] { static_cast<void>(transfer.run(true)); }), 5);
        QVERIFY(store::tablesOf(*engine).tables.empty());
    }

    void onlyTheFirstRejectionsAreKept()
    {
        ListedSource source;
        ListedTable& articles = source.add(u"INS"_s, articleColumns());
        for (int i = 0; i < 1200; ++i) {
            articles.add(article(u"D1"_s, 0.5, 1, 1));
        }
        const TransferReport report = accepted(source);
        QCOMPARE(report.rejectionCount, 1200);
        QCOMPARE(report.rejections.size(), TransferReport::rejectionsKept);
    }
};

QTEST_GUILESS_MAIN(tst_Transfer)
#include "tst_Transfer.moc"
