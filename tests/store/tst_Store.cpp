#include <oVELDRA/Store.h>

#include <store/StoreConnection.h>
#include <store/sqlite/SqliteEngine.h>

#include <QLockFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace oVELDRA;

namespace {

using Connection = std::shared_ptr<ConexionDB>;

Connection freshInputs()
{
    return createStore(u"sqlite::memory:"_s, Database::Inputs);
}

qint64 run(const Connection& connection, const QString& sql)
{
    connection->setSql(sql);
    return connection->execute();
}

std::unique_ptr<Recordset> open(const Connection& connection, const QString& sql)
{
    bool ok = false;
    connection->setSql(sql);
    std::unique_ptr<Recordset> rows = connection->openRecordset(ok);
    if (!ok) {
        throw RuntimeError(connection->lastError());
    }
    return rows;
}

QVariant one(const Connection& connection, const QString& sql, QStringView field)
{
    return open(connection, sql)->value(field);
}

qlonglong countOf(const Connection& connection, const QString& table)
{
    return one(connection, u"select count(*) as n from "_s + table, u"n").toLongLong();
}

/// The error that a body throws; number 0 when it throws none.
RuntimeError errorOf(const std::function<void()>& body)
{
    try {
        body();
    } catch (const RuntimeError& error) {
        return error;
    }
    return {0, {}};
}

store::SqliteEngine& engineOf(const Connection& connection)
{
    auto& stored = dynamic_cast<store::StoreConnection&>(*connection);
    return dynamic_cast<store::SqliteEngine&>(stored.engine());
}

QString insertHeader(const QString& declaration)
{
    return u"insert into INTINS (INTNRO,INTDCL,INTIOK) values ('T','"_s + declaration + u"',1)";
}

} // namespace

class tst_Store : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QLocale::setDefault(QLocale(u"es_AR"_s));
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_folder->isValid());
    }

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

    void plainTextsAreFoundThroughTheIndex_data()
    {
        QTest::addColumn<QString>("query");
        QTest::addColumn<QString>("index");
        QTest::newRow("key")
            << u"SELECT 1 FROM PRD WHERE rtrim(\"CATNRO\") COLLATE NOCASE = ?1 AND rtrim(\"PRDNRO\") COLLATE NOCASE = ?2"_s
            << u"PRD_KEY (<expr>=? AND <expr>=?)"_s;
        QTest::newRow("declaration of an article")
            << u"SELECT 1 FROM INS WHERE rtrim(\"INTDCL\") COLLATE NOCASE = ?1 ORDER BY rowid"_s
            << u"INS_IDX1 (<expr>=?)"_s;
    }

    void plainTextsAreFoundThroughTheIndex()
    {
        QFETCH(QString, query);
        QFETCH(QString, index);
        const Connection db = freshInputs();
        store::RecordData plan(std::make_shared<store::ColumnKinds>(4, dialect::ColumnKind::Text));
        engineOf(db).prepare("EXPLAIN QUERY PLAN " + query.toUtf8())->query({}, plan);
        QCOMPARE(plan.rows(), 1); // and no sorting step
        const QString step = plan.variant(0, 3).toString();
        QVERIFY2(step.contains(index), qPrintable(step));
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

    void missingFile()
    {
        const QString file = m_folder->filePath(u"no está.sqlite"_s);
        const RuntimeError error = errorOf([&] { static_cast<void>(connectStore(u"sqlite:"_s + file)); });
        QCOMPARE(error.number(), -2147467259);
        QCOMPARE(error.nativeNumber(), 3024);
        QVERIFY(error.description().contains(file));
        QVERIFY(!QFile::exists(file));
    }

    void fileThatIsNoDatabase()
    {
        const RuntimeError error = errorOf([&] { static_cast<void>(connectStore(fileWith(QByteArray(5000, 'x')))); });
        QCOMPARE(error.nativeNumber(), 3343);
    }

    void damagedFile()
    {
        const QString file = m_folder->filePath(u"d.sqlite"_s);
        {
            const Connection db = createStore(u"sqlite:"_s + file, Database::Inputs);
            for (int i = 0; i < 500; ++i) {
                run(db, insertHeader(QString::number(i)));
            }
            engineOf(db).run("PRAGMA wal_checkpoint(TRUNCATE)");
        }
        QFile raw(file);
        QVERIFY(raw.open(QIODevice::ReadWrite));
        const qint64 size = raw.size();
        for (qint64 page = 4096; page < size; page += 4096) {
            raw.seek(page);
            raw.write(QByteArray(2000, '\x5a'));
        }
        raw.close();
        const RuntimeError error = errorOf([&] {
            const Connection db = connectStore(u"sqlite:"_s + file);
            static_cast<void>(open(db, u"select * from INTINS"_s));
        });
        QCOMPARE(error.nativeNumber(), 3049);
    }

    void unknownUrl()
    {
        QCOMPARE(errorOf([] { static_cast<void>(connectStore(u"oracle:x"_s)); }).number(), 5);
        QCOMPARE(errorOf([] { static_cast<void>(connectStore(u"sqlite:"_s)); }).number(), 5);
    }

    void networkFoldersAreKnownByTheirFileSystem()
    {
        for (const char* const name : {"nfs", "nfs4", "cifs", "smb3", "fuse.sshfs"}) {
            QVERIFY2(store::isNetworkFileSystem(name), name);
        }
        for (const char* const name : {"ext4", "xfs", "btrfs", "tmpfs", "NTFS", "overlay", ""}) {
            QVERIFY2(!store::isNetworkFileSystem(name), name);
        }
    }

    void readOnlyConnectionsWriteNothing()
    {
        const QString url = newFile();
        const Connection db = connectStore(url, Access::ReadOnly);
        const RuntimeError error = errorOf([&] { run(db, u"delete from CAT"_s); });
        QCOMPARE(error.number(), -2147467259);
        QCOMPARE(error.nativeNumber(), 3027);
        QCOMPARE(error.description(), u"La operación debe usar una consulta actualizable."_s);
        const auto burst = db->beginBurst();
        QCOMPARE(countOf(db, u"CAT"_s), 1);
        burst->commit();
    }

    void diskFullLeavesNothingOfTheStatement()
    {
        const Connection db = connectStore(newFile());
        engineOf(db).run("PRAGMA max_page_count = 30");
        RuntimeError error(0, {});
        int written = 0;
        for (; written < 10000 && error.number() == 0; ++written) {
            error = errorOf([&] { run(db, insertHeader(QString::number(written))); });
        }
        QCOMPARE(error.number(), -2147467259);
        QCOMPARE(error.nativeNumber(), 3026);
        QCOMPARE(countOf(db, u"INTINS"_s), written - 1);
    }

    void aTableMadeLaterIsFound()
    {
        const Connection db = freshInputs();
        QCOMPARE(errorOf([&] { static_cast<void>(open(db, u"select * from OTRA"_s)); }).number(), -2147217865);
        engineOf(db).run("CREATE TABLE OTRA (CODIGO VARCHAR(5), VALOR DOUBLE)");
        QCOMPARE(run(db, u"insert into OTRA (CODIGO,VALOR) values ('A','1,5')"_s), 1);
        QCOMPARE(one(db, u"select VALOR from OTRA where CODIGO = 'a'"_s, u"VALOR").toDouble(), 1.5);
    }

    void createStoreNeverTouchesWhatIsThere()
    {
        const QString url = newFile();
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
        const QString url = newFile();
        const Connection mine = connectStore(url);
        const Connection other = connectStore(url);
        engineOf(other).run("PRAGMA busy_timeout = 0");
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
        const QString url = newFile();
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
        const QString url = newFile();
        const Connection db = connectStore(url);
        {
            const auto burst = db->beginBurst();
            run(db, insertHeader(u"1"_s));
        }
        QCOMPARE(countOf(connectStore(url), u"INTINS"_s), 1);
    }

    void onlyTheOutermostBurstCounts()
    {
        const QString url = newFile();
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

    void aCommitThatFailsSaysSoAndLeavesNothing()
    {
        const QString url = newFile();
        const Connection db = connectStore(url);
        const auto burst = db->beginBurst();
        run(db, insertHeader(u"1"_s));
        sqlite3_commit_hook(
            engineOf(db).handle(), [](void*) { return 1; }, nullptr);
        QCOMPARE(errorOf([&] { burst->commit(); }).number(), -2147467259);
        sqlite3_commit_hook(engineOf(db).handle(), nullptr, nullptr);
        QCOMPARE(countOf(db, u"INTINS"_s), 0);
        QCOMPARE(run(db, insertHeader(u"2"_s)), 1); // and the connection goes on
    }

    void aTransactionThatTheEngineGaveUpIsNoSuccess()
    {
        const Connection db = connectStore(newFile());
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
        const QString url = newFile();
        const Connection db = connectStore(url);
        QCOMPARE(one(db, u"select * from CAT"_s, u"CATNRO").toString(), u"A"_s);
        engineOf(connectStore(url)).run("ALTER TABLE CAT ADD COLUMN NOTA VARCHAR(10)");
        QCOMPARE(one(db, u"select * from CAT"_s, u"CATNRO").toString(), u"A"_s);
        QVERIFY(!one(db, u"select NOTA from CAT"_s, u"NOTA").isValid());
    }

private:
    [[nodiscard]] QString fileWith(const QByteArray& content) const
    {
        QFile file(m_folder->filePath(u"otro.sqlite"_s));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("cannot write %s", qPrintable(file.fileName()));
        }
        return u"sqlite:"_s + file.fileName();
    }

    /// An inputs database in a file, with one catalog.
    [[nodiscard]] QString newFile() const
    {
        QString url = u"sqlite:"_s + m_folder->filePath(u"insumos.sqlite"_s);
        run(createStore(url, Database::Inputs), u"insert into CAT (CATNRO,CATDES) values ('A','uno')"_s);
        return url;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(tst_Store)
#include "tst_Store.moc"
