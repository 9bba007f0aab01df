#include "DatabasePlaces.h"
#include "HookedConsole.h"
#include "RecordedConsole.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/Store.h>

#include <store/StoreError.h>

#include <QJsonObject>
#include <QtTest>

#include <oveldra-datos/Command.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::data;

namespace {

int run(const QString& origin, const QString& destination, Console& console, const QMap<QString, QString>& options = {})
{
    return copiar().run({{origin, destination}, options}, console);
}

qint64 execute(const QString& url, const QString& sql)
{
    const std::shared_ptr<ConexionDB> connection = connectStore(url);
    connection->setSql(sql);
    return connection->execute();
}

} // namespace

class tst_Copiar : public QObject
{
    Q_OBJECT

private:
    /// A database with the sample's rows.
    [[nodiscard]] QString filled(const QString& engine)
    {
        const QString url = m_places.fresh(engine);
        RecordedConsole console;
        const int code = migrar().run({{QStringLiteral(OVELDRA_TEST_DATA "/access/insumos.mdb"), url}, {}}, console);
        return code == Success ? url : QString();
    }

    DatabasePlaces m_places;

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Argentina)); }

    void everyRowIsTheSame_data()
    {
        QTest::addColumn<QString>("from");
        QTest::addColumn<QString>("to");
        const QStringList engines{u"sqlite"_s, u"postgresql"_s};
        for (const QString& from : engines) {
            for (const QString& to : engines) {
                QTest::addRow("%s to %s", qPrintable(from), qPrintable(to)) << from << to;
            }
        }
    }

    void everyRowIsTheSame()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        const QString origin = filled(from);
        execute(origin, u"update INTINS set INTIOK = -1 where INTNRO = 'INT00001'"_s);
        execute(origin, u"update INTINS set INTIOK = 7 where INTNRO = 'INT00002'"_s);
        execute(origin, u"insert into INS (INTDCL, ARTCAT) values ('24073IT14084580G', 0.1)"_s);
        const QString url = m_places.fresh(to);
        RecordedConsole console(RecordedConsole::Format::Json);
        QCOMPARE(run(origin, url, console), static_cast<int>(Success));
        for (const QString& table : {u"CAT"_s, u"PRD"_s, u"RIP"_s, u"INTINS"_s, u"INS"_s, u"DIP"_s}) {
            const Rows rows = DatabasePlaces::rowsOf(origin, table);
            QVERIFY(rows.size() >= 5);
            QVERIFY2(same(rows, DatabasePlaces::rowsOf(url, table)), qPrintable(table));
        }
        QCOMPARE(DatabasePlaces::rowsOf(url, u"INTINS"_s)[1][7].number, 7.0);
        const QJsonObject& result = console.results().first();
        QCOMPARE(result[u"committed"_s].toBool(), true);
        QCOMPARE(result[u"totals"_s][u"destination"_s][u"articles"_s].toInt(), 915);
        QCOMPARE(result[u"totals"_s][u"equal"_s].toBool(), true);
    }

    void thereAndBackIsTheSame()
    {
        const QString origin = filled(u"sqlite"_s);
        const QString server = m_places.fresh(u"postgresql"_s);
        const QString back = m_places.fresh(u"sqlite"_s);
        RecordedConsole console;
        QCOMPARE(run(origin, server, console), static_cast<int>(Success));
        QCOMPARE(run(server, back, console), static_cast<int>(Success));
        for (const QString& table : {u"CAT"_s, u"PRD"_s, u"RIP"_s, u"INTINS"_s, u"INS"_s, u"DIP"_s}) {
            QVERIFY(same(DatabasePlaces::rowsOf(origin, table), DatabasePlaces::rowsOf(back, table)));
        }
    }

    void whatOthersWriteMeanwhileIsNotCopied_data() { DatabasePlaces::addEngines(); }
    void whatOthersWriteMeanwhileIsNotCopied()
    {
        QFETCH(QString, engine);
        const QString origin = filled(engine);
        int writes = 0;
        HookedConsole console([&](const QString& what, qint64 /*done*/, qint64 /*total*/) {
            if (what == u"PRD"_s) {
                execute(origin, u"delete from DIP"_s);
                ++writes;
            }
        });
        const QString url = m_places.fresh(u"sqlite"_s);
        QCOMPARE(run(origin, url, console), static_cast<int>(Success));
        QVERIFY(writes > 0);
        QCOMPARE(DatabasePlaces::countOf(origin, u"DIP"_s), size_t{0});
        QCOMPARE(DatabasePlaces::countOf(url, u"DIP"_s), size_t{1582});
    }

    void aFilledDestinationIsRefused_data() { DatabasePlaces::addEngines(); }
    void aFilledDestinationIsRefused()
    {
        QFETCH(QString, engine);
        const QString origin = filled(u"sqlite"_s);
        const QString url = m_places.fresh(engine);
        RecordedConsole console;
        QCOMPARE(run(origin, url, console), static_cast<int>(Success));
        const auto error = doubles::thrownBy([&] { run(origin, url, console); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), static_cast<int>(store::Trouble::AlreadyThere));
        QCOMPARE(DatabasePlaces::countOf(url, u"INS"_s), size_t{914});
        QVERIFY(doubles::thrownBy([&] { run(url, url, console); })); // nor onto itself
    }

    void whatAnotherToolWroteIsRejected()
    {
        const QString origin = filled(u"sqlite"_s);
        store::openEngine(origin, Access::ReadWrite, store::Opening::Existing)
            ->run("UPDATE INS SET ARTCAT = 'mucho' WHERE rowid = 3");
        const QString url = m_places.fresh(u"sqlite"_s);
        RecordedConsole console;
        QCOMPARE(run(origin, url, console), static_cast<int>(Findings));
        QVERIFY(!QFile::exists(url.mid(7)));
        QVERIFY(console.report().contains(u"INS, fila 3 (INTDCL=24073IT14084580G, ARTITM=1, ARTSBT=3): ARTCAT: no es "
                                          "un número: «mucho»"_s));
        QCOMPARE(run(origin, url, console, {{u"aceptar-rechazos"_s, {}}}), static_cast<int>(Success));
        QCOMPARE(DatabasePlaces::countOf(url, u"INS"_s), size_t{913});
    }

    void severalBasesInOneFileAreCopiedOneByOne()
    {
        const QString origin = filled(u"sqlite"_s);
        RecordedConsole console;
        QCOMPARE(migrar().run({{QStringLiteral(OVELDRA_TEST_DATA "/access/tornel.mdb"), origin}, {}}, console),
                 static_cast<int>(Success));
        const QString url = m_places.fresh(u"sqlite"_s);
        QVERIFY_THROWS_EXCEPTION(BadUsageError, run(origin, url, console));
        QCOMPARE(run(origin, url, console, {{u"base"_s, u"tornel"_s}}), static_cast<int>(Success));
        QCOMPARE(DatabasePlaces::countOf(url, u"groupsubitems"_s), size_t{468});
        QVERIFY(console.lines().contains(u"ATENCIÓN: no se copió la tabla INS (914 filas)."_s));
    }

    void aMissingOriginIsSaid()
    {
        RecordedConsole console;
        const QString url = m_places.fresh(u"sqlite"_s);
        const auto error = doubles::thrownBy([&] { run(m_places.fresh(u"sqlite"_s), url, console); });
        QVERIFY(error);
        QCOMPARE(error->nativeNumber(), static_cast<int>(store::Trouble::NoFile));
        QVERIFY(!QFile::exists(url.mid(7)));
    }

    void anOriginWithoutKnownTablesIsSaid()
    {
        const QString origin = m_places.fresh(u"sqlite"_s);
        store::openEngine(origin, Access::ReadWrite, store::Opening::Create)->run("CREATE TABLE x (y INTEGER)");
        RecordedConsole console;
        const auto error = doubles::thrownBy([&] { run(origin, m_places.fresh(u"sqlite"_s), console); });
        QVERIFY(error);
        QCOMPARE(error->description(), u"El origen no tiene ninguna tabla de las bases insumos, ncm o tornel."_s);
    }
};

QTEST_GUILESS_MAIN(tst_Copiar)
#include "tst_Copiar.moc"
