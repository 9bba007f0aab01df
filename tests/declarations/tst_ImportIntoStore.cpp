#include "SeatProcess.h"
#include "Stock.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;

namespace {

const QString number = u"26073IT14000011A"_s;

} // namespace

/// The import from a real host database into a real stock.
class tst_ImportIntoStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QLocale::setDefault(QLocale(u"es_AR"_s));
        m_host = emptyStore(Database::Host);
        m_inputs = emptyStore(Database::Inputs);
        run(*m_inputs, u"insert into CAT (CATNRO,CATDES) values ('A','uno')"_s);
        run(*m_inputs, u"insert into INTINS (INTNRO,INTDCL) values ('TOR9','25073IT14000001A')"_s);
        run(*m_inputs, u"insert into INS (INTDCL,ARTNRO) values ('25073IT14000001A','AC-9')"_s);
        m_state.sInternoExt = u"TOR1"_s;
        m_state.g_DBTOR.assign(m_host);
        m_state.g_DBINS.assign(m_inputs);
        m_before = content(*m_inputs);
    }

    void unitValuesKeepEveryDigit_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::newRow("comma") << u"es_AR"_s;
        QTest::newRow("point") << u"en_US"_s;
    }

    /// One subitem of FOB 100, freight 10, insurance 5 and quantity 3; two subitems of FOB 60 and 40, quantities 3 and
    /// 2; and an item without subitems.
    void unitValuesKeepEveryDigit()
    {
        QFETCH(QString, locale);
        run(*m_host,
            u"insert into caratula (interno,fobdivcambio,fletedivcambio,segurodivcambio) values ('TOR1',1,1,1)"_s);
        for (const int item : {0, 1, 2, 3}) {
            run(*m_host, u"insert into item (interno,id,FobTotal,itflete,itseguro,ajusteinc,ajusteded) values "
                         "('TOR1',%1,100,10,5,7,2)"_s.arg(item));
        }
        const auto subitem = [this](int item, int order, const QString& article, int quantity, int fob) {
            run(*m_host,
                u"insert into groupsubitems (interno,id,idsub,IDARTICULO,IDUNIDAD,CANTIDAD,PRECIOUNITARIO,NCM,FOB) "
                "values ('TOR1',%1,%2,'%3','01',%4,1,'7208.90.00.110H',%5)"_s.arg(item)
                    .arg(order)
                    .arg(article)
                    .arg(quantity)
                    .arg(fob));
        };
        subitem(1, 1, u"UNO"_s, 3, 100);
        subitem(2, 2, u"DOS-B"_s, 2, 40); // out of order on purpose
        subitem(2, 1, u"DOS-A"_s, 3, 60);
        QLocale::setDefault(QLocale(locale));
        QCOMPARE(importStored(m_state, number), u"OK"_s);
        const QStringList after = content(*m_inputs);
        QCOMPARE(after.filter(u"TOR1"_s),
                 QStringList{u"INTINS|TOR1|26073IT14000011A|2026-01-15|2028-01-15|prueba|073|1|"_s});
        QCOMPARE(after.filter(QRegularExpression(u"^INS\\|26073"_s)),
                 QStringList({u"INS|26073IT14000011A|UNO|01|3|38.333333|3|7208.90.00.110H|1|0"_s,
                              u"INS|26073IT14000011A|DOS-A|01|3|23|3|7208.90.00.110H|2|1"_s,
                              u"INS|26073IT14000011A|DOS-B|01|2|23|2|7208.90.00.110H|2|2"_s}));
    }

    void aDeclarationOfTheSameNumberInAnotherCaseIsRefused()
    {
        addDeclaration(*m_host, u"TOR1"_s, 1, 1);
        QVERIFY(_VerificarIntegridadInterno(m_state, u"25073it14000001a "_s).startsWith(u"ER ERROR 1 - El número"));
    }

    void subitemsWithoutArticleAreFoundInAnyForm_data()
    {
        QTest::addColumn<QString>("article");
        QTest::addColumn<bool>("refused");
        QTest::newRow("grouped") << u"'agrupado!'"_s << true;
        QTest::newRow("grouped, capitals") << u"'AGRUPADO!'"_s << true;
        QTest::newRow("empty") << u"''"_s << true;
        QTest::newRow("blanks") << u"'  '"_s << true;
        QTest::newRow("null") << u"Null"_s << true;
        QTest::newRow("a code") << u"'AC-1'"_s << false;
    }

    void subitemsWithoutArticleAreFoundInAnyForm()
    {
        QFETCH(QString, article);
        QFETCH(bool, refused);
        run(*m_host, u"insert into groupsubitems (interno,id,idsub,IDARTICULO) values ('TOR1',1,1,%1)"_s.arg(article));
        QCOMPARE(_VerificarIntegridadInterno(m_state, number).startsWith(u"ER"), refused);
    }

    void noHeaderRowOfTheHost()
    {
        addItem(*m_host, u"TOR1"_s, 1, 1);
        QVERIFY(importStored(m_state, number).startsWith(u"ER ERROR 3021 - "));
        QCOMPARE(content(*m_inputs), m_before);
    }

    void aQuantityOfZero()
    {
        addDeclaration(*m_host, u"TOR1"_s, 3, 2);
        run(*m_host, u"update groupsubitems set CANTIDAD = 0 where id = 3 and idsub = 2"_s);
        QCOMPARE(importStored(m_state, number), u"ER ERROR 11 - División por cero"_s);
        QCOMPARE(content(*m_inputs), m_before);
    }

    void aHostTextWithAnApostrophe()
    {
        addDeclaration(*m_host, u"TOR1"_s, 3, 2);
        run(*m_host, u"update groupsubitems set IDARTICULO = 'CAÑO 3/4''' where id = 3 and idsub = 2"_s);
        QVERIFY(importStored(m_state, number).startsWith(u"ER ERROR -2147217900 - "));
        QCOMPARE(content(*m_inputs), m_before);
    }

    void failureAtEveryStatement()
    {
        addDeclaration(*m_host, u"TOR1"_s, 3, 2);
        int failing = 0;
        const auto fail = [&failing](int statement) {
            if (statement == failing) {
                throw RuntimeError(-2147467259, u"inyectado"_s);
            }
        };
        int statements = 0;
        do {
            ++failing;
            for (const bool onHost : {false, true}) {
                const auto inputs = std::make_shared<doubles::InterruptedConexionDB>(
                    m_inputs, onHost ? doubles::InterruptedConexionDB::Hook([](int) {}) : fail);
                const auto host = std::make_shared<doubles::InterruptedConexionDB>(
                    m_host, onHost ? doubles::InterruptedConexionDB::Hook(fail) : [](int) {});
                m_state.g_DBINS.assign(inputs);
                m_state.g_DBTOR.assign(host);
                const QString status = importStored(m_state, number);
                const int seen = onHost ? host->statements() : inputs->statements();
                if (failing <= seen) {
                    QVERIFY2(status.startsWith(u"ER"), qPrintable(QString::number(failing)));
                    QCOMPARE(content(*m_inputs), m_before);
                    ++statements;
                } else {
                    QCOMPARE(status, u"OK"_s);
                    run(*m_inputs, u"delete from INTINS where INTDCL = '%1'"_s.arg(number));
                    run(*m_inputs, u"delete from INS where INTDCL = '%1'"_s.arg(number));
                }
            }
        } while (failing <= 7); // the header and six articles; the host's queries are five
        QCOMPARE(statements, 7 + 5);
    }

    void failureAtTheBurstsCommit()
    {
        addDeclaration(*m_host, u"TOR1"_s, 3, 2);
        const QString status = whileCommitsFail(*m_inputs, [this] { return importStored(m_state, number); });
        QVERIFY2(status.startsWith(u"ER ERROR -2147467259 - "), qPrintable(status));
        QCOMPARE(content(*m_inputs), m_before);
    }

    void failureOfTheScreensCommit()
    {
        addDeclaration(*m_host, u"TOR1"_s, 3, 2);
        doubles::TestComponent component;
        const QString status = whileCommitsFail(*m_inputs, [&] { return processed(component, {}); });
        QVERIFY2(status.startsWith(u"ER ERROR -2147467259 - "), qPrintable(status));
        QCOMPARE(content(*m_inputs), m_before);
    }

    void hostileTextsInEveryBox_data()
    {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("text");
        const QStringList texts{u"x' or 'a'='a"_s,
                                u"TOR9' or INTNRO<>'"_s,
                                u"x','y'); delete from CAT"_s,
                                u"a' & 'b"_s,
                                u"it''s"_s,
                                u"\"x\" ; -- /* # %"_s,
                                u"a\tb\u0001c"_s,
                                u"😀 Ñandú"_s,
                                QString(10000, u'x')};
        for (const QString& box :
             {u"txtINTNRO"_s, u"txtINTDCL"_s, u"txtINTDES"_s, u"txtAduana"_s, u"txtVEN"_s, u"txtINTFOF"_s}) {
            for (qsizetype i = 0; i < texts.size(); ++i) {
                QTest::addRow("%s, text %d", qPrintable(box), static_cast<int>(i)) << box << texts[i];
            }
        }
    }

    /// Whatever is typed: either exactly the row that was typed, or nothing and a message.
    void hostileTextsInEveryBox()
    {
        QFETCH(QString, box);
        QFETCH(QString, text);
        addDeclaration(*m_host, u"TOR1"_s, 1, 1);
        doubles::TestComponent component;
        const QString status = processed(component, {{box, text}});
        const QStringList after = content(*m_inputs);
        if (status == u"OK"_s) {
            QStringList added = after;
            for (const QString& row : m_before) {
                QVERIFY2(added.removeOne(row), qPrintable(row));
            }
            QVERIFY2(!added.isEmpty() && added.first().startsWith(u"INTINS|"), qPrintable(added.join(u'\n')));
            QVERIFY2(added.first().contains(u'|' + text + u'|'), qPrintable(added.first()));
        } else {
            QCOMPARE(after, m_before);
            QVERIFY2(status.startsWith(u"ER ERROR ") || !component.prompts.boxes().isEmpty(), qPrintable(status));
        }
    }

    void killedAtAnyStatementLeavesNothing()
    {
        addDeclaration(*m_host, u"TOR1"_s, 40, 5);
        clear(*m_inputs, Database::Inputs);
        QRandomGenerator random(20261120);
        for (int round = 0; round < roundsOf(25); ++round) {
            const int statement = round == 0 ? 1 : random.bounded(1, 203); // the check, the header and 200 articles
            SeatProcess seat(sharedUrl(Database::Inputs), importTask(u"TOR1"_s), AtStatement::Die, statement);
            QVERIFY(seat.died());
            QCOMPARE(intactArticles(), 0);
        }
        SeatProcess survivor(sharedUrl(Database::Inputs), importTask(u"TOR1"_s));
        QCOMPARE(survivor.outcome(), u"OK"_s);
        QCOMPARE(intactArticles(), 200);
    }

    /// Killed from outside at any instant, in the middle of a commit too: nothing or everything.
    void killedAtAnyInstantLeavesNothingOrAll()
    {
        addDeclaration(*m_host, u"TOR1"_s, 40, 5);
        QRandomGenerator random(11202026);
        for (int round = 0; round < roundsOf(25); ++round) {
            clear(*m_inputs, Database::Inputs);
            SeatProcess seat(sharedUrl(Database::Inputs), importTask(u"TOR1"_s), AtStatement::Wait, 1);
            QVERIFY(seat.waits());
            seat.goOn();
            seat.killAfter(random.bounded(0, 20)); // the instant is the random part
            const int articles = intactArticles();
            QVERIFY2(articles == 0 || articles == 200, qPrintable(QString::number(articles)));
        }
    }

    void twoSeatsImportingTheSameNumber_data()
    {
        QTest::addColumn<int>("statement");
        QTest::newRow("at the same moment") << 1;
        QTest::newRow("one amid the other's articles") << 20;
    }

    /// Of two host declarations under one number exactly one comes in, with all its rows and none of the other's.
    void twoSeatsImportingTheSameNumber()
    {
        QFETCH(const int, statement);
        addDeclaration(*m_host, u"TOR1"_s, 20, 4);
        addDeclaration(*m_host, u"TOR2"_s, 15, 3);
        const QString& url = sharedUrl(Database::Inputs);
        for (int round = 0; round < roundsOf(8); ++round) {
            clear(*m_inputs, Database::Inputs);
            SeatProcess one(url, importTask(u"TOR1"_s), AtStatement::Wait, statement);
            QVERIFY(one.waits());
            SeatProcess other(url, importTask(u"TOR2"_s), AtStatement::Wait, 1);
            QVERIFY(other.waits());
            other.goOn(); // amid the one's articles it has to wait here for the one
            one.goOn();
            const QStringList outcomes{one.outcome(), other.outcome()};
            QCOMPARE(outcomes.count(u"OK"_s), 1);
            QCOMPARE(outcomes.count(u"ER ERROR 1 - El número de Declaración ya esta en la base de datos"_s), 1);
            const bool isOnes = outcomes.constFirst() == u"OK";
            QVERIFY(isOnes || statement == 1);
            QCOMPARE(intactArticles(), isOnes ? 80 : 45);
            QCOMPARE(content(*m_inputs).filter(isOnes ? u"INTINS|TOR1|"_s : u"INTINS|TOR2|"_s).size(), 1);
        }
    }

private:
    /// Imports through the screen, with these texts in its boxes.
    [[nodiscard]] QString processed(doubles::TestComponent& component, const QMap<QString, QString>& boxes) const
    {
        component.state.sInternoExt = u"TOR1"_s;
        component.state.g_sAduana = u"073"_s;
        component.state.g_DBTOR.assign(m_host);
        component.state.g_DBINS.assign(m_inputs);
        return importOnScreen(component, boxes);
    }

    /// The import of a host declaration under the one number, as a seat's task.
    static QStringList importTask(const QString& interno)
    {
        return {u"import"_s, sharedUrl(Database::Host), interno, number};
    }

    /// The articles in the stock, after checking that the database is whole and that there is a header exactly when
    /// there are articles; -1 when that does not hold.
    static int intactArticles()
    {
        const Connection db = connectStore(sharedUrl(Database::Inputs));
        const QStringList rows = settledContent(*db);
        const qsizetype headers = rows.filter(u"INTINS|"_s).size();
        const qsizetype articles = rows.filter(QRegularExpression(u"^INS\\|"_s)).size();
        return isWhole(*db) && headers == (articles > 0 ? 1 : 0) ? static_cast<int>(articles) : -1;
    }

    Connection m_host;
    Connection m_inputs;
    core::SharedState m_state;
    QStringList m_before;
};

QTEST_MAIN(tst_ImportIntoStore)
#include "tst_ImportIntoStore.moc"
