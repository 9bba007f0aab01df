#include "StoreCalls.h"
#include "doubles/TestStores.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using doubles::TestStores;

namespace {

Connection freshInputs()
{
    return createStore(TestStores::newUrl(), Database::Inputs);
}

/// An inputs database with one catalog.
QString filledUrl()
{
    QString url = TestStores::newUrl();
    run(createStore(url, Database::Inputs), u"insert into CAT (CATNRO,CATDES) values ('A','uno')"_s);
    return url;
}

} // namespace

/// What the store does, whatever the engine.
class tst_Store : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }

    // --- the recordset -------------------------------------------------------------------------------------------

    void recordsetIsOpenedOnItsFirstRow()
    {
        const Connection db = freshInputs();
        run(db, u"insert into CAT (CATNRO,CATDES) values ('A','uno')"_s);
        run(db, u"insert into CAT (CATNRO,CATDES) values ('B','dos')"_s);
        const auto rows = open(db, u"select CATNRO, CATDES from CAT"_s);
        QVERIFY(!rows->atEof());
        QCOMPARE(rows->recordCount(), 2);
        QCOMPARE(rows->value(u"catnro").toString(), u"A"_s);
        rows->moveNext();
        QCOMPARE(rows->value(u"CatDes").toString(), u"dos"_s);
        rows->moveNext();
        QVERIFY(rows->atEof());
        QCOMPARE(errorOf([&] { rows->moveNext(); }).number(), 3021);
        QCOMPARE(errorOf([&] { static_cast<void>(rows->value(u"CATNRO")); }).number(), 3021);
        rows->moveFirst();
        QCOMPARE(rows->value(u"CATNRO").toString(), u"A"_s);
        QCOMPARE(errorOf([&] { static_cast<void>(rows->value(u"OTRA")); }).number(), 3265);
    }

    void emptyResultIsOkWithoutARow()
    {
        const auto rows = open(freshInputs(), u"select * from CAT"_s);
        QVERIFY(rows->atEof());
        QCOMPARE(rows->recordCount(), 0);
        QCOMPARE(errorOf([&] { rows->moveFirst(); }).number(), 3021);
        QCOMPARE(errorOf([&] { static_cast<void>(rows->value(u"CATNRO")); }).number(), 3021);
    }

    void recordsetIsASnapshotThatOutlivesItsConnection()
    {
        Connection db = freshInputs();
        run(db, u"insert into CAT (CATNRO,CATDES) values ('A','uno')"_s);
        const auto rows = open(db, u"select * from CAT"_s);
        run(db, u"delete from CAT"_s);
        db.reset();
        QCOMPARE(rows->value(u"CATDES").toString(), u"uno"_s);
    }

    void valuesHaveTheTypesOfTheirColumns()
    {
        const Connection db = freshInputs();
        run(db, u"insert into INS (INTDCL,ARTCAT,ARTITM) values ('D','7','001')"_s);
        run(db, u"insert into RIP (CATNRO,TRPMER,TRPPER) values ('C',1,0)"_s);
        run(db, u"insert into INTINS (INTDCL,INTFOF,INTIOK) values ('D',datevalue('15/01/2026'),1)"_s);
        const auto article = open(db, u"select * from INS"_s);
        QCOMPARE(article->value(u"INTDCL"), QVariant(u"D"_s));
        QCOMPARE(article->value(u"ARTCAT"), QVariant(7.0));
        QCOMPARE(article->value(u"ARTITM"), QVariant(qlonglong{1}));
        QVERIFY(!article->value(u"ARTNRO").isValid());
        const auto relation = open(db, u"select * from RIP"_s);
        QCOMPARE(relation->value(u"TRPMER"), QVariant(-1));
        QCOMPARE(relation->value(u"TRPPER"), QVariant(0));
        const auto header = open(db, u"select * from INTINS"_s);
        QCOMPARE(header->value(u"INTFOF"), QVariant(QDate(2026, 1, 15)));
        QCOMPARE(header->value(u"INTIOK"), QVariant(1));
    }

    // --- numbers as texts, by the locale --------------------------------------------------------------------------

    void quotedNumbersLoseNoDigit_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("number");
        QTest::newRow("comma, six decimals") << u"es_AR"_s << u"38,333333"_s << 38.333333;
        QTest::newRow("comma, eight decimals") << u"es_AR"_s << u"00,00000001"_s << 0.00000001;
        QTest::newRow("comma, grouped") << u"es_AR"_s << u"1.234,5"_s << 1234.5;
        QTest::newRow("comma, never ten times too much") << u"es_AR"_s << u"1.5"_s << 1.5;
        QTest::newRow("point, six decimals") << u"en_US"_s << u"38.333333"_s << 38.333333;
        QTest::newRow("point, grouped") << u"en_US"_s << u"1,234.5"_s << 1234.5;
        QTest::newRow("fifteen digits") << u"es_AR"_s << u"123456789,012345"_s << 123456789.012345;
    }

    void quotedNumbersLoseNoDigit()
    {
        QFETCH(QString, locale);
        QFETCH(QString, text);
        QFETCH(double, number);
        QLocale::setDefault(QLocale(locale));
        const Connection db = freshInputs();
        run(db, u"insert into INS (INTDCL,ARTPRE) values ('D','"_s + text + u"')");
        QCOMPARE(one(db, u"select ARTPRE from INS"_s, u"ARTPRE").toDouble(), number);
        QCOMPARE(countOf(db, u"INS where ARTPRE = '"_s + text + u'\''), 1);
        QCOMPARE(run(db, u"update INS set ARTPRE = cdbl('"_s + text + u"')"), 1);
        QCOMPARE(one(db, u"select ARTPRE from INS"_s, u"ARTPRE").toDouble(), number);
    }

    void formattedColumnsFollowTheLocale()
    {
        const Connection db = freshInputs();
        run(db, u"insert into INS (INTDCL,ARTPRE) values ('D','38,333333')"_s);
        const QString sql = u"select format(ARTPRE,'00.00') as t from INS"_s;
        QCOMPARE(one(db, sql, u"t").toString(), u"38,33"_s);
        QLocale::setDefault(QLocale(u"en_US"_s));
        QCOMPARE(one(db, sql, u"t").toString(), u"38.33"_s);
    }

    // --- texts ----------------------------------------------------------------------------------------------------

    void hostileTextsAreJustTexts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("semicolon") << u"a; delete from CAT"_s;
        QTest::newRow("comment marks") << u"a -- b /* c */ #d#"_s;
        QTest::newRow("quotes and brackets") << u"[a] \"b\" (c)"_s;
        QTest::newRow("control characters") << u"a\u0001b\u0002\tc\u001f"_s;
        QTest::newRow("line breaks") << u"a\r\nb"_s;
        QTest::newRow("emoji and accents") << u"😀 Ñandú – Ø"_s;
        QTest::newRow("percent and question marks") << u"50% ?1 :x @y $z"_s;
        QTest::newRow("as wide as the column") << QString(255, u'ñ');
    }

    void hostileTextsAreJustTexts()
    {
        QFETCH(QString, text);
        const Connection db = freshInputs();
        run(db, u"insert into CAT (CATNRO,CATDES) values ('A','"_s + text + u"')");
        QCOMPARE(one(db, u"select CATDES from CAT where CATDES = '"_s + text + u'\'', u"CATDES").toString(), text);
        QCOMPARE(countOf(db, u"CAT"_s), 1);
    }

    void aTextThatDoesNotFitIsRefusedWhole()
    {
        const Connection db = freshInputs();
        const RuntimeError error = errorOf(
            [&] { run(db, u"insert into CAT (CATNRO,CATDES) values ('A','"_s + QString(10000, u'x') + u"')"); });
        QCOMPARE(error.nativeNumber(), 3163);
        QCOMPARE(countOf(db, u"CAT"_s), 0);
        run(db, u"insert into PRD (CATNRO,PRDNRO,PRDSUF) values ('A','B','"_s + QString(10000, u'x') + u"')");
        QCOMPARE(one(db, u"select PRDSUF from PRD"_s, u"PRDSUF").toString().size(), 10000);
    }

    void keysIgnoreCaseAndTrailingBlanksOnly()
    {
        const Connection db = freshInputs();
        run(db, u"insert into CAT (CATNRO) values ('Caño 1')"_s);
        QCOMPARE(errorOf([&] { run(db, u"insert into CAT (CATNRO) values ('CAÑO 1  ')"_s); }).nativeNumber(), 3022);
        QCOMPARE(errorOf([&] { run(db, u"insert into CAT (CATNRO) values ('caño 1')"_s); }).nativeNumber(), 3022);
        QCOMPARE(run(db, u"insert into CAT (CATNRO) values ('cano 1')"_s), 1);
        QCOMPARE(run(db, u"insert into CAT (CATNRO) values (' caño 1')"_s), 1);
        QCOMPARE(countOf(db, u"CAT"_s), 3);
    }

    void aKeyIsWholeWhateverOfItIsWritten()
    {
        const Connection db = freshInputs();
        run(db, u"insert into PRD (CATNRO,PRDNRO) values ('A','Pñ')"_s);
        run(db, u"insert into PRD (CATNRO,PRDNRO) values ('B','PÑ')"_s);
        const RuntimeError error = errorOf([&] { run(db, u"update PRD set CATNRO = 'A' where CATNRO = 'B'"_s); });
        QCOMPARE(error.nativeNumber(), 3022);
        QVERIFY2(error.description().endsWith(u"(PRD)"), qPrintable(error.description()));
        QCOMPARE(countOf(db, u"PRD where CATNRO = 'B'"_s), 1);
    }

    void nullIsNoKeyTwice()
    {
        const Connection db = freshInputs();
        run(db, u"insert into CAT (CATDES) values ('a')"_s);
        run(db, u"insert into CAT (CATDES) values ('b')"_s);
        QCOMPARE(run(db, u"insert into CAT (CATNRO,CATDES) values ('ñ','x')"_s), 1);
        QCOMPARE(countOf(db, u"CAT"_s), 3);
    }

    void trailingBlanksAreKeptButDoNotCount()
    {
        const Connection db = freshInputs();
        run(db, u"insert into CAT (CATNRO,CATDES) values ('A  ','x')"_s);
        QCOMPARE(one(db, u"select CATNRO from CAT where CATNRO = 'a'"_s, u"CATNRO").toString(), u"A  "_s);
        QCOMPARE(countOf(db, u"CAT where CATNRO = 'A '"_s), 1);
        QCOMPARE(countOf(db, u"CAT where CATNRO like 'a'"_s), 0); // like counts blanks
    }

    // --- order ----------------------------------------------------------------------------------------------------

    void rowsComeInTheOrderOfTheTable()
    {
        const Connection db = freshInputs();
        for (const char16_t letter : u"DBCA"_s.toStdU16String()) {
            run(db, u"insert into PRD (CATNRO,PRDNRO) values ('1','"_s + QChar(letter) + u"')");
        }
        QString order;
        for (const auto rows = open(db, u"select PRDNRO from PRD where CATNRO = '1'"_s); !rows->atEof();
             rows->moveNext()) {
            order += rows->value(u"PRDNRO").toString();
        }
        QCOMPARE(order, u"DBCA"_s);
    }

    void equalTextsKeepTheOrderOfTheTable()
    {
        const Connection db = freshInputs();
        for (const QString& code : {u"3"_s, u"1"_s, u"2"_s}) {
            run(db, u"insert into CAT (CATNRO,CATDES) values ('"_s + code + u"','Igual')");
        }
        QString order;
        for (const auto rows = open(db, u"select * from CAT order by CATDES"_s); !rows->atEof(); rows->moveNext()) {
            order += rows->value(u"CATNRO").toString();
        }
        QCOMPARE(order, u"312"_s);
    }

    void itemNumbersSortAsNumbersPastThreeDigits()
    {
        const Connection db = freshInputs();
        for (const QString& item : {u"1000"_s, u"999"_s, u"010"_s}) {
            run(db, u"insert into INS (INTDCL,ARTITM,ARTSBT) values ('D','"_s + item + u"','000')");
        }
        QStringList order;
        for (const auto rows = open(db, u"select format(ARTITM,'000') as i from INS order by ARTITM,ARTSBT "_s);
             !rows->atEof(); rows->moveNext()) {
            order << rows->value(u"i").toString();
        }
        QCOMPARE(order, QStringList({u"010"_s, u"999"_s, u"1000"_s}));
    }

    // --- what goes wrong ------------------------------------------------------------------------------------------

    void aQueryThatCannotBeOpenedThrowsNothing()
    {
        const Connection db = freshInputs();
        bool ok = true;
        db->setSql(u"select * from NADA"_s);
        QVERIFY(!db->openRecordset(ok));
        QVERIFY(!ok);
        QCOMPARE(db->lastError().number(), -2147217865);
        QVERIFY(db->lastError().description().contains(u"'NADA'"));
    }

    void queriesAndCommandsAreNotTakenForEachOther()
    {
        const Connection db = freshInputs();
        bool ok = true;
        db->setSql(u"delete from CAT"_s);
        QVERIFY(!db->openRecordset(ok));
        QCOMPARE(db->lastError().number(), -2147217900);
        QCOMPARE(errorOf([&] { run(db, u"select * from CAT"_s); }).number(), -2147217900);
    }

    void unknownUrl()
    {
        QCOMPARE(errorOf([] { static_cast<void>(connectStore(u"oracle:x"_s)); }).number(), 5);
        QCOMPARE(errorOf([] { static_cast<void>(connectStore(u"sqlite:"_s)); }).number(), 5);
    }

    void readOnlyConnectionsWriteNothing()
    {
        const QString url = filledUrl();
        const Connection db = connectStore(url, Access::ReadOnly);
        const RuntimeError error = errorOf([&] { run(db, u"delete from CAT"_s); });
        QCOMPARE(error.number(), -2147467259);
        QCOMPARE(error.nativeNumber(), 3027);
        QCOMPARE(error.description(), u"La operación debe usar una consulta actualizable."_s);
        const auto burst = db->beginBurst();
        QCOMPARE(countOf(db, u"CAT"_s), 1);
        burst->commit();
    }

    void aTableMadeLaterIsFound()
    {
        const Connection db = freshInputs();
        QCOMPARE(errorOf([&] { static_cast<void>(open(db, u"select * from OTRA"_s)); }).number(), -2147217865);
        engineOf(db).run(R"(CREATE TABLE "OTRA" ("CODIGO" VARCHAR(5), "VALOR" DOUBLE PRECISION))");
        QCOMPARE(run(db, u"insert into OTRA (CODIGO,VALOR) values ('A','1,5')"_s), 1);
        QCOMPARE(one(db, u"select VALOR from OTRA where CODIGO = 'a'"_s, u"VALOR").toDouble(), 1.5);
    }

    void createStoreNeverTouchesWhatIsThere()
    {
        const QString url = filledUrl();
        const RuntimeError error = errorOf([&] { static_cast<void>(createStore(url, Database::Inputs)); });
        QCOMPARE(error.nativeNumber(), 3010);
        QCOMPARE(countOf(connectStore(url), u"CAT"_s), 1);
        const Connection both = createStore(url, Database::Host); // other tables may join
        QCOMPARE(countOf(both, u"caratula"_s), 0);
        QCOMPARE(countOf(both, u"CAT"_s), 1);
    }

    // --- bursts ---------------------------------------------------------------------------------------------------

    void aBurstExcludesOtherWritersFromItsFirstStatement()
    {
        const QString url = filledUrl();
        const Connection mine = connectStore(url);
        const Connection other = connectStore(url);
        engineOf(other).run(TestStores::onServer() ? "SET lock_timeout TO '20ms'" : "PRAGMA busy_timeout = 0");
        const auto burst = mine->beginBurst();
        QCOMPARE(run(other, insertHeader(u"antes"_s)), 1); // nothing has been said in the burst yet
        QCOMPARE(countOf(mine, u"INTINS"_s), 1);           // the check reads inside the burst
        const RuntimeError error = errorOf([&] { run(other, insertHeader(u"durante"_s)); });
        QCOMPARE(error.nativeNumber(), 3218);
        QCOMPARE(run(mine, insertHeader(u"mía"_s)), 1);
        QCOMPARE(countOf(other, u"INTINS"_s), 1);
        burst->commit();
        QCOMPARE(countOf(other, u"INTINS"_s), 2);
        QCOMPARE(run(other, insertHeader(u"después"_s)), 1);
    }

    void aFailingStatementKeepsWhatWasDoneBefore()
    {
        const QString url = filledUrl();
        const Connection db = connectStore(url);
        {
            const auto burst = db->beginBurst();
            run(db, insertHeader(u"1"_s));
            QCOMPARE(errorOf([&] { run(db, insertHeader(u"1"_s)); }).nativeNumber(), 3022);
            QCOMPARE(errorOf([&] { run(db, u"insert into CAT (CATNRO) values ('ñ')"_s); }).number(), 0);
            QCOMPARE(errorOf([&] { run(db, u"insert into CAT (CATNRO) values ('Ñ')"_s); }).nativeNumber(), 3022);
            run(db, insertHeader(u"2"_s));
            burst->commit();
        }
        QCOMPARE(countOf(connectStore(url), u"INTINS"_s), 2);
        QCOMPARE(countOf(connectStore(url), u"CAT"_s), 2);
    }

    void leavingABurstKeepsWhatWasDone()
    {
        const QString url = filledUrl();
        const Connection db = connectStore(url);
        {
            const auto burst = db->beginBurst();
            run(db, insertHeader(u"1"_s));
        }
        QCOMPARE(countOf(connectStore(url), u"INTINS"_s), 1);
    }

    void onlyTheOutermostBurstCounts()
    {
        const QString url = filledUrl();
        const Connection db = connectStore(url);
        const Connection other = connectStore(url);
        const auto outer = db->beginBurst();
        {
            const auto inner = db->beginBurst();
            run(db, insertHeader(u"1"_s));
            inner->commit();
            inner->commit(); // a second call does nothing
        }
        QCOMPARE(countOf(other, u"INTINS"_s), 0);
        outer->commit();
        QCOMPARE(countOf(other, u"INTINS"_s), 1);
    }

    void aTransactionThatTheEngineGaveUpIsNoSuccess()
    {
        const Connection db = connectStore(filledUrl());
        const auto burst = db->beginBurst();
        run(db, insertHeader(u"1"_s));
        engineOf(db).rollback(); // what a full disk can do behind the store's back
        QCOMPARE(errorOf([&] { burst->commit(); }).number(), -2147467259);
        QCOMPARE(countOf(db, u"INTINS"_s), 0);
    }

    // --- plans ----------------------------------------------------------------------------------------------------

    void everNewShapesDoNotPileUp()
    {
        const Connection db = freshInputs();
        for (int i = 0; i < 2500; ++i) {
            QCOMPARE(countOf(db, u"CAT where "_s + QString(i % 1300, u' ') + u"CATNRO = 'x'"), 0);
        }
    }

    void aColumnAddedBehindAPlansBackDoesNoHarm()
    {
        const QString url = filledUrl();
        const Connection db = connectStore(url);
        QCOMPARE(one(db, u"select * from CAT"_s, u"CATNRO").toString(), u"A"_s);
        engineOf(connectStore(url)).run(R"(ALTER TABLE "CAT" ADD COLUMN "NOTA" VARCHAR(10))");
        QCOMPARE(one(db, u"select * from CAT"_s, u"CATNRO").toString(), u"A"_s);
        QVERIFY(!one(db, u"select NOTA from CAT"_s, u"NOTA").isValid());
    }
};

QTEST_GUILESS_MAIN(tst_Store)
#include "tst_Store.moc"
