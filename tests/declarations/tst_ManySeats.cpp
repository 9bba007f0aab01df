// Eight seats at work on one stock. OVELDRA_SEATS_SECONDS keeps them at it for that long; otherwise each does a few
// dozen things.

#include "BusySeats.h"
#include "Stock.h"
#include "StoredDeclaration.h"
#include "doubles/TestStores.h"

#include <QTest>

#include <oveldra-datos/verification/StockVerification.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;
using doubles::TestStores;

namespace {

constexpr int seats = 8;
constexpr int operations = 60; ///< of each seat

/// What the data tool finds wrong with a stock, a sentence each.
QStringList verified(const QString& url)
{
    data::FindingSpool spool;
    data::RowTally tally([](qint64) {});
    static_cast<void>(data::verifyStock({url, std::nullopt, {}}, spool, tally));
    QStringList found;
    for (size_t kind = 0; kind < data::findingKinds; ++kind) {
        spool.forEach(static_cast<data::FindingKind>(kind),
                      [&found](const data::Finding& finding) { found << finding.text; });
    }
    return found;
}

/// Errors of the database other than that another seat was busy for too long.
QStringList realFailures(const SeatLedger& ledger)
{
    QStringList texts;
    for (const QStringList& failure : ledger.entries(u"failed"_s)) {
        if (!failure.at(1).contains(u"ocupada por otro puesto")) {
            texts << failure.join(u' ');
        }
    }
    return texts;
}

} // namespace

class tst_ManySeats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    void everyReportedSuccessIsThereAndNothingHalfDone()
    {
        const QString stockUrl = TestStores::created(Database::Inputs);
        const QString hostUrl = TestStores::created(Database::Host);
        fillHost(*connectStore(hostUrl));
        const QString seconds = qEnvironmentVariable("OVELDRA_SEATS_SECONDS", u"0"_s);
        BusySeats working(stockUrl, hostUrl);
        for (int seat = 0; seat < seats; ++seat) {
            working.start({u"mixed"_s, QString::number(operations), seconds});
        }
        QVERIFY(working.ended());
        const SeatLedger ledger = working.ledger();
        qInfo().noquote() << ledger.summary();
        const Connection stock = connectStore(stockUrl);
        QCOMPARE(ledger.faults(*stock).join(u'\n'), QString());
        QCOMPARE(verified(stockUrl).join(u'\n'), QString());
        QCOMPARE(realFailures(ledger).join(u'\n'), QString());
        QVERIFY(isWhole(*stock));
        for (const QString& word :
             {u"imported"_s, u"renumbered"_s, u"deleted"_s, u"discharged"_s, u"looked"_s, u"refused"_s}) {
            QVERIFY2(ledger.count(word) > 0, qPrintable(word));
        }
    }

    void theLedgerNotices_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::newRow("a lost import") << u"delete from INTINS where INTDCL = 'N1'"_s;
        QTest::newRow("a lost article") << u"delete from INS where INTDCL = 'N2' and ARTITM = 2 and ARTSBT = 3"_s;
        QTest::newRow("articles left behind") << u"update INS set INTDCL = 'N9' where INTDCL = 'N2'"_s;
        QTest::newRow("a lost discharge") << u"delete from DIP where EXTNOF = 'e.1'"_s;
        QTest::newRow("a discharge left behind") << u"update DIP set ARTDCL = 'N9'"_s;
        QTest::newRow("a discharge of another") << u"update DIP set ARTDCL = 'N1'"_s;
        QTest::newRow("a wrong balance") << u"update INS set ARTDSC = 2 where INTDCL = 'N2' and ARTITM = 2"_s;
        QTest::newRow("a renumbering undone") << u"update INTINS set INTDCL = 'N3' where INTDCL = 'N2'"_s;
        QTest::newRow("an import that nobody did")
            << u"insert into INTINS (INTNRO,INTDCL,INTDES) values ('TOR0','N8','x.1')"_s;
        QTest::newRow("another's declaration") << u"update INTINS set INTDES = 'x.1' where INTDCL = 'N1'"_s;
    }

    void theLedgerNotices()
    {
        QFETCH(const QString, statement);
        const Connection stock = connectStore(TestStores::created(Database::Inputs));
        const SeatLedger ledger = twoImportsAndADischarge(*stock);
        QCOMPARE(ledger.faults(*stock).join(u'\n'), QString());
        QVERIFY(run(*stock, statement) > 0);
        QVERIFY(!ledger.faults(*stock).isEmpty());
    }

private:
    /// N1, and N3 that has become N2, with what seats would have written down of it.
    static SeatLedger twoImportsAndADischarge(ConexionDB& stock)
    {
        const Connection host = createStore(u"sqlite::memory:"_s, Database::Host);
        fillHost(*host);
        core::SharedState state;
        state.g_DBINS.assign(std::shared_ptr<ConexionDB>(&stock, [](ConexionDB*) {}));
        state.g_DBTOR.assign(host);
        QTemporaryFile file;
        const bool opened = file.open();
        for (const QString& number : {u"N1"_s, u"N3"_s}) {
            state.sInternoExt = u"TOR2"_s;
            const QString token = u"s."_s + number;
            if (!opened || importStored(state, number) != u"OK") {
                qFatal("no import");
            }
            run(stock, u"update INTINS set INTDES = '%1' where INTDCL = '%2'"_s.arg(token, number));
            file.write(u"tried\t%1\t%2\nimported\t%1\t%2\n"_s.arg(token, number).toUtf8());
        }
        run(stock, u"update INS set INTDCL = 'N2' where INTDCL = 'N3'"_s);
        run(stock, u"update INTINS set INTDCL = 'N2' where INTDCL = 'N3'"_s);
        run(stock, u"update INS set ARTDSC = ARTDSC - 1 where INTDCL = 'N2' and ARTITM = 1 and ARTSBT = 1"_s);
        run(stock, u"insert into DIP (ARTDCL,ARTITM,ARTSBT,RALCAN,EXTINT,EXTNOF) values ('N2',1,1,1,'s.N3','e.1')"_s);
        file.write("renumbered\tN3\tN2\ndischarged\te.1\ts.N3\n");
        file.close();
        SeatLedger ledger;
        ledger.read(file.fileName());
        return ledger;
    }
};

QTEST_MAIN(tst_ManySeats)
#include "tst_ManySeats.moc"
