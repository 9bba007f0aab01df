// What an import leaves when the server goes away or the disk is full under it.

#include "BusySeats.h"
#include "Stock.h"
#include "StoredDeclaration.h"
#include "doubles/PostgresServer.h"
#include "doubles/TestComponent.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;
using doubles::Durability;
using doubles::PostgresServer;

namespace {

const QString number = u"26073IT14000011A"_s;
const QString diskFull = u"ER ERROR -2147467259 - No hay espacio suficiente en el disco"_s;

/// A host's database of its own, with a declaration of that many rows.
QString hostWith(const QTemporaryDir& folder, const QString& interno, int items, int subitems)
{
    QString url = u"sqlite:"_s + folder.filePath(u"tornel.sqlite"_s);
    addDeclaration(*createStore(url, Database::Host), interno, items, subitems);
    return url;
}

qsizetype articlesIn(ConexionDB& stock)
{
    return content(stock).filter(QRegularExpression(u"^INS\\|"_s)).size();
}

} // namespace

class tst_ImportInTrouble : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    /// Nothing is half there, and no import that was reported is missing, however often the server dies.
    void theServerIsKilled()
    {
        constexpr int seats = 4;
        constexpr int imports = 15; // of each seat
        PostgresServer server(Durability::Full);
        server.start();
        const QString stockUrl = server.url(u"insumos"_s);
        static_cast<void>(createStore(stockUrl, Database::Inputs));
        const QTemporaryDir folder;
        const QString hostUrl = u"sqlite:"_s + folder.filePath(u"tornel.sqlite"_s);
        fillHost(*createStore(hostUrl, Database::Host));
        BusySeats working(stockUrl, hostUrl);
        for (int seat = 0; seat < seats; ++seat) {
            working.start({u"imports"_s, QString::number(imports)});
        }
        constexpr int patience = 60'000;
        // A seat that cannot even connect is another matter.
        QTRY_COMPARE_WITH_TIMEOUT(working.ledger().count(u"ready"_s), seats, patience);
        for (const int successes : {5, 20, 40}) {
            QTRY_VERIFY_WITH_TIMEOUT(working.ledger().count(u"imported"_s) >= successes, patience);
            server.stopAtOnce();
            server.start();
        }
        QVERIFY(working.ended());
        const SeatLedger ledger = working.ledger();
        qInfo().noquote() << ledger.summary();
        QCOMPARE(ledger.count(u"imported"_s), seats * imports);
        QVERIFY(ledger.count(u"failed"_s) > 0);
        QCOMPARE(ledger.faultsAfterCuts(*connectStore(stockUrl)).join(u'\n'), QString());
    }

    /// On the same connection, from the next statement on.
    void importingGoesOnWhenTheServerIsBack()
    {
        const QTemporaryDir folder;
        PostgresServer server;
        server.start();
        const Connection stock = createStore(server.url(u"insumos"_s), Database::Inputs);
        core::SharedState state;
        state.g_DBINS.assign(stock);
        state.g_DBTOR.assign(connectStore(hostWith(folder, u"TOR1"_s, 2, 3), Access::ReadOnly));
        state.sInternoExt = u"TOR1"_s;
        QCOMPARE(importStored(state, u"26073IT1A"_s), u"OK"_s);
        server.stopAtOnce();
        const QString gone = u"ER ERROR -2147467259 - No hay conexión con el servidor"_s;
        QVERIFY(importStored(state, u"26073IT2A"_s).startsWith(gone));
        QVERIFY(importStored(state, u"26073IT2A"_s).startsWith(gone));
        server.start();
        QCOMPARE(importStored(state, u"26073IT2A"_s), u"OK"_s);
        server.stopAtOnce();
        server.start();
        // The connection is broken, and the server there: one statement has to meet that.
        QVERIFY(importStored(state, u"26073IT3A"_s).startsWith(gone));
        QCOMPARE(importStored(state, u"26073IT3A"_s), u"OK"_s);
        QCOMPARE(articlesIn(*stock), 18);
    }

    void theDiskIsFullUnderAFile()
    {
        const QTemporaryDir folder;
        const Connection stock = createStore(u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s), Database::Inputs);
        addToStock(*stock, u"24073IT1A"_s, u"A"_s, 40, 30);
        const QStringList before = content(*stock);
        doubles::TestComponent component;
        component.state.g_DBINS.assign(stock);
        component.state.g_DBTOR.assign(connectStore(hostWith(folder, u"TOR1"_s, 40, 20), Access::ReadOnly));
        component.state.sInternoExt = u"TOR1"_s;
        component.state.g_sAduana = u"073"_s;
        const int pages = answers(*stock, "PRAGMA page_count").constFirst().toInt() + 5;
        engineOf(*stock).run("PRAGMA max_page_count = " + QByteArray::number(pages));
        const QString status = importOnScreen(component, {{u"txtINTDCL"_s, number}});
        QVERIFY2(status.startsWith(diskFull), qPrintable(status));
        QCOMPARE(content(*stock), before);
        QVERIFY(isWhole(*stock));
        engineOf(*stock).run("PRAGMA max_page_count = 1000000");
        QCOMPARE(importOnScreen(component, {{u"txtINTDCL"_s, number}}), u"OK"_s);
        QCOMPARE(articlesIn(*stock), 40 + 800);
    }

    void theDiskIsFullUnderAServer()
    {
        constexpr int pages = 130;
        const QTemporaryDir folder;
        PostgresServer server;
        server.limitFilesTo(pages);
        server.start();
        const QString stockUrl = server.url(u"insumos"_s);
        const Connection stock = createStore(stockUrl, Database::Inputs);
        addToStock(*stock, u"24073IT1A"_s, u"A"_s, 40, 30);
        const QStringList before = content(*stock);
        doubles::TestComponent component;
        component.state.g_DBINS.assign(stock);
        component.state.g_DBTOR.assign(connectStore(hostWith(folder, u"TOR1"_s, 110, 100), Access::ReadOnly));
        component.state.sInternoExt = u"TOR1"_s;
        component.state.g_sAduana = u"073"_s;
        const QString status = importOnScreen(component, {{u"txtINTDCL"_s, number}});
        QVERIFY2(status.startsWith(diskFull), qPrintable(status));
        QCOMPARE(content(*stock), before);
        QCOMPARE(content(*connectStore(stockUrl)), before);
        server.limitFilesTo(0);
        server.restart();
        bool ok = true;
        stock->setSql(u"select * from INTINS"_s);
        static_cast<void>(stock->openRecordset(ok));
        QVERIFY(!ok); // the restart broke the connection
        QCOMPARE(importOnScreen(component, {{u"txtINTDCL"_s, number}}), u"OK"_s);
        QCOMPARE(articlesIn(*stock), 40 + 11'000);
    }
};

QTEST_MAIN(tst_ImportInTrouble)
#include "tst_ImportInTrouble.moc"
