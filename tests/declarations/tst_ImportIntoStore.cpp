#include "StoredDeclaration.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <declarations/frmImportar.h>
#include <store/StoreConnection.h>
#include <store/sqlite/SqliteEngine.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::declarations;

namespace {

using Connection = std::shared_ptr<ConexionDB>;

const QString number = u"26073IT14000011A"_s;

/// Every row of the inputs database's declarations, as texts.
QStringList content(ConexionDB& db)
{
    QStringList result;
    const auto dump = [&](const QString& table, const QStringList& columns) {
        bool ok = false;
        db.setSql(u"select * from "_s + table);
        const auto rows = db.openRecordset(ok);
        for (; ok && !rows->atEof(); rows->moveNext()) {
            QStringList cells{table};
            for (const QString& column : columns) {
                cells << rows->value(column).toString();
            }
            result << cells.join(u'|');
        }
    };
    dump(u"INTINS"_s, {u"INTNRO"_s, u"INTDCL"_s, u"INTFOF"_s, u"INTVEN"_s, u"INTDES"_s, u"INTADU"_s, u"INTIOK"_s});
    dump(u"INS"_s, {u"INTDCL"_s, u"ARTNRO"_s, u"ARTUNI"_s, u"ARTCAT"_s, u"ARTPRE"_s, u"ARTDSC"_s, u"ARTNCM"_s,
                    u"ARTITM"_s, u"ARTSBT"_s});
    dump(u"CAT"_s, {u"CATNRO"_s});
    return result;
}

sqlite3* handleOf(const Connection& connection)
{
    auto& stored = dynamic_cast<store::StoreConnection&>(*connection);
    return dynamic_cast<store::SqliteEngine&>(stored.engine()).handle();
}

} // namespace

/// The import from a real host database into a real stock.
class tst_ImportIntoStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QLocale::setDefault(QLocale(u"es_AR"_s));
        m_host = createStore(u"sqlite::memory:"_s, Database::Host);
        m_inputs = createStore(u"sqlite::memory:"_s, Database::Inputs);
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
                 QStringList{u"INTINS|TOR1|26073IT14000011A|2026-01-15|2028-01-15|prueba|073|1"_s});
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
        sqlite3_commit_hook(
            handleOf(m_inputs), [](void*) { return 1; }, nullptr);
        const QString status = importStored(m_state, number);
        sqlite3_commit_hook(handleOf(m_inputs), nullptr, nullptr);
        QVERIFY2(status.startsWith(u"ER ERROR -2147467259 - "), qPrintable(status));
        QCOMPARE(content(*m_inputs), m_before);
    }

    void failureOfTheScreensCommit()
    {
        addDeclaration(*m_host, u"TOR1"_s, 3, 2);
        doubles::TestComponent component;
        component.state.sInternoExt = u"TOR1"_s;
        component.state.g_sAduana = u"073"_s;
        component.state.g_DBTOR.assign(m_host);
        component.state.g_DBINS.assign(m_inputs);
        sqlite3_commit_hook(
            handleOf(m_inputs), [](void*) { return 1; }, nullptr);
        const QString status = processed(component, {});
        sqlite3_commit_hook(handleOf(m_inputs), nullptr, nullptr);
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
        component.state.sInternoExt = u"TOR1"_s;
        component.state.g_sAduana = u"073"_s;
        component.state.g_DBTOR.assign(m_host);
        component.state.g_DBINS.assign(m_inputs);
        component.prompts.willAnswer(core::AnswerOk);
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
        const QTemporaryDir folder;
        const QString hostUrl = u"sqlite:"_s + folder.filePath(u"tornel.sqlite"_s);
        const QString inputsUrl = u"sqlite:"_s + folder.filePath(u"insumos.sqlite"_s);
        addDeclaration(*createStore(hostUrl, Database::Host), u"TOR1"_s, 40, 5);
        static_cast<void>(createStore(inputsUrl, Database::Inputs));
        QRandomGenerator random(20261120);
        for (int round = 0; round < 25; ++round) {
            QProcess victim;
            const int statement = round == 0 ? 1 : random.bounded(1, 202); // the header and 200 articles
            victim.start(QStringLiteral(OVELDRA_IMPORT_VICTIM), {hostUrl, inputsUrl, QString::number(statement)});
            QVERIFY(victim.waitForFinished());
            QCOMPARE(victim.exitStatus(), QProcess::CrashExit);
            QCOMPARE(intactArticles(inputsUrl), 0);
        }
        QProcess survivor;
        survivor.start(QStringLiteral(OVELDRA_IMPORT_VICTIM), {hostUrl, inputsUrl, u"0"_s});
        QVERIFY(survivor.waitForFinished());
        QCOMPARE(survivor.readAllStandardOutput().trimmed(), QByteArray("OK"));
        QCOMPARE(intactArticles(inputsUrl), 200);
    }

    /// Killed from outside at any instant, in the middle of a commit too: nothing or everything.
    void killedAtAnyInstantLeavesNothingOrAll()
    {
        const QTemporaryDir folder;
        const QString hostUrl = u"sqlite:"_s + folder.filePath(u"tornel.sqlite"_s);
        addDeclaration(*createStore(hostUrl, Database::Host), u"TOR1"_s, 40, 5);
        QRandomGenerator random(11202026);
        for (int round = 0; round < 25; ++round) {
            const QString inputsUrl = u"sqlite:"_s + folder.filePath(u"insumos%1.sqlite"_s.arg(round));
            static_cast<void>(createStore(inputsUrl, Database::Inputs));
            QProcess victim;
            victim.start(QStringLiteral(OVELDRA_IMPORT_VICTIM), {hostUrl, inputsUrl, u"0"_s});
            QVERIFY(victim.waitForStarted());
            victim.waitForFinished(random.bounded(1, 60)); // the instant is the random part
            victim.kill();
            victim.waitForFinished();
            const int articles = intactArticles(inputsUrl);
            QVERIFY2(articles == 0 || articles == 200, qPrintable(QString::number(articles)));
        }
    }

private:
    /// Fills the import screen with a declaration that can be imported, changes boxes, presses F11 and answers the
    /// status line.
    static QString processed(doubles::TestComponent& component, const QMap<QString, QString>& changes)
    {
        component.prompts.willAnswer(core::AnswerOk);
        frmImportar form(component);
        form.Form_Load();
        QMap<QString, QString> texts{{u"txtINTDCL"_s, number},
                                     {u"txtINTFOF"_s, u"15/01/2026"_s},
                                     {u"txtVEN"_s, u"15/01/2028"_s},
                                     {u"txtINTDES"_s, u"prueba"_s}};
        texts.insert(changes);
        for (auto it = texts.cbegin(); it != texts.cend(); ++it) {
            form.findChild<QLineEdit*>(it.key())->setText(it.value());
        }
        form.lp_Procesar();
        return form.findChild<QLabel*>(u"lbTexto"_s)->text();
    }

    /// The articles in a stock, after checking that the file is whole and that there is a header exactly when there are
    /// articles; -1 when that does not hold.
    static int intactArticles(const QString& url)
    {
        const Connection db = connectStore(url);
        store::RecordData check(std::make_shared<store::ColumnKinds>(1, dialect::ColumnKind::Text));
        auto& stored = dynamic_cast<store::StoreConnection&>(*db);
        stored.engine().prepare("PRAGMA integrity_check")->query({}, check);
        const QStringList rows = content(*db);
        const qsizetype headers = rows.filter(u"INTINS|"_s).size();
        const qsizetype articles = rows.filter(QRegularExpression(u"^INS\\|"_s)).size();
        const bool whole = check.rows() == 1 && check.variant(0, 0).toString() == u"ok"_s;
        return whole && headers == (articles > 0 ? 1 : 0) ? static_cast<int>(articles) : -1;
    }

    Connection m_host;
    Connection m_inputs;
    core::SharedState m_state;
    QStringList m_before;
};

QTEST_MAIN(tst_ImportIntoStore)
#include "tst_ImportIntoStore.moc"
