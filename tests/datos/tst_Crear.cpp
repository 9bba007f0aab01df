#include "DatabasePlaces.h"
#include "FileSizeLimit.h"
#include "HookedConsole.h"
#include "RecordedConsole.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/Store.h>

#include <store/Engines.h>
#include <store/Schema.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <oveldra-datos/Command.h>
#include <tuple>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;
using doubles::thrownBy;

namespace {

constexpr int alreadyThere = 3010;

Arguments call(const QString& url, const QMap<QString, QString>& options = {})
{
    return {{url}, options};
}

const QMap<QString, QString>& tariffOptions()
{
    static const QMap<QString, QString> options{{u"base"_s, u"ncm"_s}, {u"con-arancel"_s, {}}};
    return options;
}

/// A value of a query's first row.
QVariant one(const QString& url, const QString& sql, QStringView field)
{
    const auto connection = connectStore(url, Access::ReadOnly);
    connection->setSql(sql);
    bool ok = false;
    const auto rows = connection->openRecordset(ok);
    if (!ok) {
        throw RuntimeError(connection->lastError());
    }
    return rows->atEof() ? QVariant() : rows->value(field);
}

int rowsIn(const QString& url, const QString& table)
{
    return one(url, u"select count(*) as n from "_s + table, u"n").toInt();
}

void execute(const QString& url, const QString& sql)
{
    const auto connection = connectStore(url);
    connection->setSql(sql);
    connection->execute();
}

QStringList tablesIn(const QString& url)
{
    QStringList names;
    const auto engine = store::openEngine(url, Access::ReadOnly, store::Opening::Existing);
    for (const dialect::Table& table : store::tablesOf(*engine).tables) {
        names.append(table.name);
    }
    return names;
}

} // namespace

/// The command that makes databases.
class tst_Crear : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }
    void everyBaseHasItsTables_data();
    void everyBaseHasItsTables();
    void theTariffIsWhole_data();
    void theTariffIsWhole();
    void theThreeBasesMayLiveTogether_data();
    void theThreeBasesMayLiveTogether();
    void existingTablesAreNeverTouched_data();
    void existingTablesAreNeverTouched();
    void whatCannotBeFilledIsNotThere();
    void anExistingFileThatCannotBeFilledStaysAsItWas();
    void anInterruptionLeavesNothing_data();
    void anInterruptionLeavesNothing();
    void twoWhoMakeTheSameFileDoNotHurtEachOther();
    void whatIsNoDatabaseIsRefused();
    void aMissingFolderIsRefused();
    void progressGoesToTheEnd();
    void callsThatMakeNoSenseAreRefused_data();
    void callsThatMakeNoSenseAreRefused();
    void anUnknownBaseIsNamed();
    void theResultIsGivenAsJson();

private:
    [[nodiscard]] QString freshUrl()
    {
        QFETCH(const QString, engine);
        return m_places.fresh(engine);
    }
    [[nodiscard]] QStringList filesThere() const { return QDir(m_folder->path()).entryList(QDir::Files); }
    int crear(const QString& url, const QMap<QString, QString>& options = {})
    {
        RecordedConsole console;
        return data::crear().run(call(url, options), console);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    DatabasePlaces m_places;
};

void tst_Crear::initTestCase()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_Crear::everyBaseHasItsTables_data()
{
    QTest::addColumn<QString>("engine");
    QTest::addColumn<QString>("base");
    QTest::addColumn<QStringList>("tables");
    const QStringList inputs{u"CAT"_s, u"PRD"_s, u"RIP"_s, u"INTINS"_s, u"INS"_s, u"DIP"_s};
    for (const QString& engine : {u"sqlite"_s, u"postgresql"_s}) {
        const auto row = [&engine](const QString& base, const QStringList& tables) {
            QTest::addRow("%s, %s", qPrintable(engine), qPrintable(base)) << engine << base << tables;
        };
        row({}, inputs);
        row(u"insumos"_s, inputs);
        row(u"ncm"_s, {u"NCM"_s, u"sufidos"_s});
        row(u"NCM"_s, {u"NCM"_s, u"sufidos"_s}); // in any case
        row(u"tornel"_s, {u"caratula"_s, u"item"_s, u"groupsubitems"_s});
    }
}

void tst_Crear::everyBaseHasItsTables()
{
    QFETCH(const QString, base);
    QFETCH(const QStringList, tables);
    const QString url = freshUrl();
    QCOMPARE(crear(url, base.isEmpty() ? QMap<QString, QString>() : QMap<QString, QString>{{u"base"_s, base}}), 0);
    QCOMPARE(tablesIn(url), tables);
    for (const QString& table : tables) {
        QCOMPARE(rowsIn(url, table), 0);
    }
}

void tst_Crear::theTariffIsWhole_data()
{
    DatabasePlaces::addEngines();
}

void tst_Crear::theTariffIsWhole()
{
    const QString url = freshUrl();
    RecordedConsole console;
    QCOMPARE(data::crear().run(call(url, tariffOptions()), console), 0);
    QVERIFY2(console.report().contains(u"33.110 posiciones y 4.607 sufijos"_s), qPrintable(console.report()));
    QCOMPARE(rowsIn(url, u"NCM"_s), 33110);
    QCOMPARE(rowsIn(url, u"sufidos"_s), 4607);
    const QString first = u"select * from NCM where [001] = '0101.21.00' and [002] = '100'"_s;
    QCOMPARE(one(url, first, u"003").toString(), u"W"_s);
    QCOMPARE(one(url, first, u"004").toString(), u"CABALLOS, ASNOS, MULOS Y BURDEGANOS, VIVOS."_s);
    QCOMPARE(one(url, first, u"010").toString(), u"Sangre pura de carrera"_s);
    QCOMPARE(one(url, first, u"019").toDouble(), 0.5);
    QCOMPARE(one(url, first, u"020").toDouble(), 0.0);
    QVERIFY(!one(url, first, u"059").isValid());
    QCOMPARE(one(url, u"select * from sufidos where sufijo = 'AX'"_s, u"sim").toString(), u"0101.  .  .   "_s);
}

void tst_Crear::theThreeBasesMayLiveTogether_data()
{
    DatabasePlaces::addEngines();
}

void tst_Crear::theThreeBasesMayLiveTogether()
{
    const QString url = freshUrl();
    QCOMPARE(crear(url), 0);
    execute(url, u"insert into CAT (CATNRO,CATDES) values ('A','Uno')"_s);
    QCOMPARE(crear(url, {{u"base"_s, u"ncm"_s}}), 0);
    QCOMPARE(crear(url, {{u"base"_s, u"tornel"_s}}), 0);
    QCOMPARE(tablesIn(url).size(), 11);
    QCOMPARE(rowsIn(url, u"CAT"_s), 1);
}

void tst_Crear::existingTablesAreNeverTouched_data()
{
    DatabasePlaces::addEngines();
}

void tst_Crear::existingTablesAreNeverTouched()
{
    const QString url = freshUrl();
    QCOMPARE(crear(url, {{u"base"_s, u"ncm"_s}}), 0);
    execute(url, u"insert into NCM ([001],[002],[003]) values ('1','2','3')"_s);
    const auto error = thrownBy([&] { crear(url, tariffOptions()); });
    QVERIFY(error);
    QCOMPARE(error->nativeNumber(), alreadyThere);
    QVERIFY(error->description().contains(u"NCM"_s));
    QCOMPARE(rowsIn(url, u"NCM"_s), 1);
    QCOMPARE(rowsIn(url, u"sufidos"_s), 0);
}

void tst_Crear::whatCannotBeFilledIsNotThere()
{
    const QString file = m_folder->filePath(u"base.sqlite"_s);
    {
        const FileSizeLimit diskFull(1'000'000);
        QVERIFY(thrownBy([&] { crear(u"sqlite:"_s + file, tariffOptions()); }));
    }
    QCOMPARE(filesThere(), QStringList());
    QCOMPARE(crear(u"sqlite:"_s + file, tariffOptions()), 0);
    QCOMPARE(filesThere(), QStringList(u"base.sqlite"_s));
}

void tst_Crear::anExistingFileThatCannotBeFilledStaysAsItWas()
{
    const QString url = u"sqlite:"_s + m_folder->filePath(u"base.sqlite"_s);
    QCOMPARE(crear(url), 0);
    {
        const FileSizeLimit diskFull(1'000'000);
        QVERIFY(thrownBy([&] { crear(url, tariffOptions()); }));
    }
    QCOMPARE(tablesIn(url).size(), 6);
}

void tst_Crear::anInterruptionLeavesNothing_data()
{
    DatabasePlaces::addEngines();
}

void tst_Crear::anInterruptionLeavesNothing()
{
    const QString url = freshUrl();
    HookedConsole console([](const QString&, qint64 done, qint64) {
        if (done == 5000) {
            std::raise(SIGTERM);
        }
    });
    const auto error = thrownBy([&] { data::crear().run(call(url, tariffOptions()), console); });
    QVERIFY(error);
    QCOMPARE(error->number(), 18);
    QVERIFY(!QFile::exists(url.mid(u"sqlite:"_s.size())));
    QCOMPARE(m_places.files().filter(u".parte"_s), QStringList());
    QCOMPARE(crear(url, {{u"base"_s, u"ncm"_s}}), 0); // none of its tables is there
}

void tst_Crear::twoWhoMakeTheSameFileDoNotHurtEachOther()
{
    const QString file = m_folder->filePath(u"base.sqlite"_s);
    HookedConsole console([&file](const QString& what, qint64 done, qint64) {
        if (what.contains(u"sufidos"_s) && done == 1) {
            std::ignore = createStore(u"sqlite:"_s + file, Database::Inputs);
        }
    });
    const auto error = thrownBy([&] { data::crear().run(call(u"sqlite:"_s + file, tariffOptions()), console); });
    QVERIFY(error);
    QCOMPARE(error->nativeNumber(), alreadyThere);
    QCOMPARE(filesThere(), QStringList(u"base.sqlite"_s));
    QCOMPARE(tablesIn(u"sqlite:"_s + file).size(), 6);
}

void tst_Crear::whatIsNoDatabaseIsRefused()
{
    const QString path = m_folder->filePath(u"carta.txt"_s);
    const QByteArray text(4000, 'x');
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
    file.close();
    const auto error = thrownBy([&] { crear(u"sqlite:"_s + path); });
    QVERIFY(error);
    QCOMPARE(error->nativeNumber(), 3343);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), text);
}

void tst_Crear::aMissingFolderIsRefused()
{
    const auto error = thrownBy([&] { crear(u"sqlite:"_s + m_folder->filePath(u"no/esta/base.sqlite"_s)); });
    QVERIFY(error);
    QVERIFY2(error->description().endsWith(u"no existe la carpeta."_s), qPrintable(error->description()));
}

void tst_Crear::progressGoesToTheEnd()
{
    RecordedConsole console;
    QCOMPARE(data::crear().run(call(u"sqlite:"_s + m_folder->filePath(u"base.sqlite"_s), tariffOptions()), console), 0);
    QCOMPARE(console.progressReports().size(), 33110 + 4607);
    const RecordedConsole::Progress last = console.progressReports().constLast();
    QCOMPARE(last.what, u"Escribiendo sufidos"_s);
    QCOMPARE(last.done, 4607);
    QCOMPARE(last.total, 4607);
}

void tst_Crear::callsThatMakeNoSenseAreRefused_data()
{
    using Options = QMap<QString, QString>;
    QTest::addColumn<QString>("url");
    QTest::addColumn<Options>("options");
    QTest::newRow("unknown base") << u"sqlite:x.sqlite"_s << Options{{u"base"_s, u"insumo"_s}};
    QTest::newRow("tariff in another base") << u"sqlite:x.sqlite"_s << Options{{u"con-arancel"_s, {}}};
    QTest::newRow("in memory") << u"sqlite::memory:"_s << Options();
}

void tst_Crear::callsThatMakeNoSenseAreRefused()
{
    using Options = QMap<QString, QString>;
    QFETCH(const QString, url);
    QFETCH(const Options, options);
    QVERIFY_THROWS_EXCEPTION(BadUsageError, crear(url, options));
    QVERIFY(!QFile::exists(u"x.sqlite"_s));
}

void tst_Crear::anUnknownBaseIsNamed()
{
    try {
        crear(u"sqlite:x.sqlite"_s, {{u"base"_s, u"insumo"_s}});
        QFAIL("it was made");
    } catch (const BadUsageError& error) {
        QCOMPARE(error.text(), u"No existe la base 'insumo': elija insumos, ncm o tornel."_s);
    }
}

void tst_Crear::theResultIsGivenAsJson()
{
    const QString url = u"sqlite:"_s + m_folder->filePath(u"base.sqlite"_s);
    RecordedConsole console(RecordedConsole::Format::Json);
    QCOMPARE(data::crear().run(call(url, tariffOptions()), console), 0);
    QCOMPARE(console.results().size(), 1);
    const QJsonObject result = console.results()[0];
    QCOMPARE(result[u"url"_s].toString(), url);
    QCOMPARE(result[u"database"_s].toString(), u"ncm"_s);
    QCOMPARE(result[u"tables"_s].toVariant().toStringList(), QStringList({u"NCM"_s, u"sufidos"_s}));
    QCOMPARE(result[u"rows"_s][u"NCM"_s].toInt(), 33110);
}

QTEST_GUILESS_MAIN(tst_Crear)
#include "tst_Crear.moc"
