#include "doubles/BoxDriver.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/FixedClock.h"
#include "doubles/MemorySettings.h"
#include "doubles/RecordedPrompts.h"
#include "doubles/ThrownError.h"

#include <QInputDialog>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;

namespace {

qint64 execute(ConexionDB& connection, const QString& statement)
{
    connection.setSql(statement);
    return connection.execute();
}

std::unique_ptr<Recordset> open(ConexionDB& connection, const QString& statement)
{
    bool ok = false;
    connection.setSql(statement);
    auto recordset = connection.openRecordset(ok);
    return ok ? std::move(recordset) : nullptr;
}

} // namespace

class tst_Doubles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void connectionGivesRowsOfLongestPrefix();
    void connectionAnswersInTurnAndKeepsTheLast();
    void connectionRefusesWhatIsNotScripted();
    void connectionFailsTheNthStatement();
    void connectionNotesBurstsAndCommits();
    void connectionFailsACommit();
    void promptsAnswerFromScript();
    void settingsTellAbsentFromEmpty();
    void clockStandsStill();
    void driverAnswersInOrder();
    void driverTypesIntoInputDialog();
    void driverReportsUnexpectedBoxAndClosesIt();
    void driverReportsMissingBox();
    void driverReportsBoxThatDoesNotClose();
};

void tst_Doubles::connectionGivesRowsOfLongestPrefix()
{
    FakeConexionDB connection;
    connection.willGiveRows(u"select"_s, {u"A"_s}, {{1}});
    connection.willGiveRows(u"select * from CAT"_s, {u"CATNRO"_s, u"CATDES"_s}, {{u"1"_s, u"Uno"_s}, {u"2"_s, {}}});

    const auto catalogs = open(connection, u"select * from CAT order by CATDES"_s);
    QVERIFY(catalogs);
    QCOMPARE(catalogs->recordCount(), 2);
    QCOMPARE(catalogs->value(u"catdes").toString(), u"Uno"_s);
    catalogs->moveNext();
    QVERIFY(!catalogs->value(u"CATDES").isValid());
    QCOMPARE(numberThrownBy([&] { (void)catalogs->value(u"PRDNRO"); }), 3265);
    catalogs->moveNext();
    QVERIFY(catalogs->atEof());
    QCOMPARE(numberThrownBy([&] { (void)catalogs->value(u"CATNRO"); }), 3021);
    QCOMPARE(numberThrownBy([&] { catalogs->moveNext(); }), 3021);
    catalogs->moveFirst();
    QCOMPARE(catalogs->value(u"CATNRO").toString(), u"1"_s);
    QCOMPARE(open(connection, u"select * from PRD"_s)->value(u"A").toInt(), 1);
}

void tst_Doubles::connectionAnswersInTurnAndKeepsTheLast()
{
    FakeConexionDB connection;
    connection.willAffect(u"update"_s, 3);
    connection.willThrow(u"update"_s, RuntimeError(13));
    connection.willAffect(u"update"_s, 1);
    QCOMPARE(execute(connection, u"update CAT"_s), 3);
    QCOMPARE(numberThrownBy([&] { execute(connection, u"update CAT"_s); }), 13);
    QCOMPARE(execute(connection, u"update CAT"_s), 1);
    QCOMPARE(execute(connection, u"update CAT"_s), 1);
    QCOMPARE(connection.statements().size(), 4);
}

void tst_Doubles::connectionRefusesWhatIsNotScripted()
{
    FakeConexionDB connection;
    connection.willGiveRows(u"select"_s, {}, {});
    QVERIFY(open(connection, u"select * from CAT"_s)->atEof());
    QCOMPARE(numberThrownBy([&] { execute(connection, u"select * from CAT"_s); }), 5);
    QVERIFY(!open(connection, u"delete from CAT"_s));
    QVERIFY(connection.lastError().description().contains(u"delete from CAT"_s));

    connection.willNotOpen(u"select * from RIP"_s, RuntimeError(3709));
    QVERIFY(!open(connection, u"select * from RIP"_s));
    QCOMPARE(connection.lastError().number(), 3709);
}

void tst_Doubles::connectionFailsTheNthStatement()
{
    FakeConexionDB connection;
    connection.willAffect({}, 1);
    connection.willGiveRows({}, {}, {});
    execute(connection, u"a"_s);
    connection.failStatement(2, RuntimeError(11));
    QVERIFY(open(connection, u"b"_s));
    QCOMPARE(numberThrownBy([&] { execute(connection, u"c"_s); }), 11);
    QCOMPARE(execute(connection, u"d"_s), 1);
    QCOMPARE(connection.statements(), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
}

void tst_Doubles::connectionNotesBurstsAndCommits()
{
    FakeConexionDB connection;
    connection.willAffect({}, 1);
    {
        const auto outer = connection.beginBurst();
        QVERIFY(connection.burstIsOpen());
        const auto inner = connection.beginBurst();
        execute(connection, u"a"_s);
        inner->commit();
        QCOMPARE(connection.commits(), 0);
        outer->commit();
        outer->commit();
        QVERIFY(!connection.burstIsOpen());
    }
    {
        const auto left = connection.beginBurst();
    }
    QCOMPARE(connection.bursts(), 2);
    QCOMPARE(connection.commits(), 1);
    QCOMPARE(connection.events(), QStringList({u"<begin>"_s, u"a"_s, u"<commit>"_s, u"<begin>"_s, u"<end>"_s}));
}

void tst_Doubles::connectionFailsACommit()
{
    FakeConexionDB connection;
    connection.failCommit(RuntimeError(5));
    const auto burst = connection.beginBurst();
    QCOMPARE(numberThrownBy([&] { burst->commit(); }), 5);
    QCOMPARE(connection.commits(), 0);
    QVERIFY(!connection.burstIsOpen());
}

void tst_Doubles::promptsAnswerFromScript()
{
    RecordedPrompts prompts;
    int shown = 0;
    prompts.whileShown = [&] { ++shown; };
    prompts.willAnswer(core::AnswerYes);
    prompts.willType(u"x"_s);
    QCOMPARE(prompts.messageBox(u"a"_s, core::InformationBox), core::AnswerOk);
    QCOMPARE(prompts.messageBox(u"b"_s, core::QuestionBox, u"T"_s), core::AnswerYes);
    QCOMPARE(prompts.messageBox(u"c"_s, core::QuestionBox), core::AnswerNo);
    QCOMPARE(prompts.inputBox(u"p"_s, u"t"_s, u"q"_s), u"x"_s);
    QCOMPARE(prompts.inputBox(u"p"_s, u"t"_s), QString());
    QVERIFY(prompts.allAnswered());
    QCOMPARE(shown, 5);
    QCOMPARE(prompts.texts(), QStringList({u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(prompts.boxes().at(1), (RecordedPrompts::Box{u"b"_s, core::QuestionBox, u"T"_s}));
    QCOMPARE(prompts.inputBoxes().first(), (RecordedPrompts::InputBox{u"p"_s, u"t"_s, u"q"_s}));
}

void tst_Doubles::settingsTellAbsentFromEmpty()
{
    MemorySettings settings;
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"K"_s, u"N"_s), u"N"_s);
    settings.save(u"A"_s, u"S"_s, u"K"_s, u""_s);
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"K"_s, u"N"_s), u""_s);
    settings.remove(u"A"_s, u"S"_s, u"K"_s);
    QCOMPARE(settings.get(u"A"_s, u"S"_s, u"K"_s, u"N"_s), u"N"_s);
}

void tst_Doubles::clockStandsStill()
{
    FixedClock clock;
    QCOMPARE(clock.today(), QDate(2024, 3, 15));
    clock.set(QDate(2025, 1, 1));
    QCOMPARE(clock.today(), QDate(2025, 1, 1));
}

void tst_Doubles::driverAnswersInOrder()
{
    BoxDriver user;
    user.press(Qt::Key_Escape);
    user.press(Qt::Key_Return);
    user.close();
    bool looked = false;
    user.beforeNext([&] { looked = user.seen().size() == 1; });

    const auto ask = [](const QString& text) {
        QMessageBox box(QMessageBox::Question, u"Título"_s, text, QMessageBox::Yes | QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
        return box.exec();
    };
    QCOMPARE(ask(u"uno"_s), int(QMessageBox::No));
    QCOMPARE(ask(u"dos"_s), int(QMessageBox::Yes));
    QVERIFY(!user.done());
    QCOMPARE(ask(u"tres"_s), int(QMessageBox::No));
    QVERIFY(user.done());
    QVERIFY(looked);
    QCOMPARE(user.texts(), QStringList({u"uno"_s, u"dos"_s, u"tres"_s}));
    QCOMPARE(user.seen().first().title, u"Título"_s);
    QCOMPARE(user.seen().first().icon, QMessageBox::Question);
    QCOMPARE(user.seen().first().buttons.size(), 2);
}

void tst_Doubles::driverTypesIntoInputDialog()
{
    BoxDriver user;
    user.type(u"Ñandú 7"_s);
    user.type(u"nada"_s, Qt::Key_Escape);

    bool ok = false;
    QCOMPARE(QInputDialog::getText(nullptr, u"T"_s, u"¿Qué?"_s, QLineEdit::Normal, u"antes"_s, &ok), u"Ñandú 7"_s);
    QVERIFY(ok);
    QCOMPARE(QInputDialog::getText(nullptr, u"T"_s, u"¿Qué?"_s, QLineEdit::Normal, u"antes"_s, &ok), QString());
    QVERIFY(!ok);
    QVERIFY(user.done());
    QVERIFY(user.seen().first().input);
    QCOMPARE(user.seen().first().text, u"¿Qué?"_s);
    QCOMPARE(user.seen().first().proposal, u"antes"_s);
}

void tst_Doubles::driverReportsUnexpectedBoxAndClosesIt()
{
    QStringList failures;
    BoxDriver user(10s, [&](const QString& why) { failures.append(why); });
    QMessageBox box(QMessageBox::Question, u"T"_s, u"inesperado"_s, QMessageBox::Yes | QMessageBox::No);
    box.exec();
    QCOMPARE(failures, QStringList(u"a box without an answer: inesperado"_s));
    QVERIFY(user.done());
}

void tst_Doubles::driverReportsMissingBox()
{
    QStringList failures;
    {
        BoxDriver user(10s, [&](const QString& why) { failures.append(why); });
        user.press(Qt::Key_Return);
        QVERIFY(!user.done());
    }
    QCOMPARE(failures, QStringList(u"1 boxes did not come up"_s));

    failures.clear();
    BoxDriver user(50ms, [&](const QString& why) { failures.append(why); });
    user.press(Qt::Key_Return);
    QDialog form; // a modal form in which nothing ever opens the box
    form.exec();
    QCOMPARE(failures, QStringList(u"1 boxes did not come up in time"_s));
}

void tst_Doubles::driverReportsBoxThatDoesNotClose()
{
    QStringList failures;
    BoxDriver user(50ms, [&](const QString& why) { failures.append(why); });
    user.press(Qt::Key_F7);
    QMessageBox box(QMessageBox::NoIcon, u"T"_s, u"quieto"_s, QMessageBox::Ok);
    box.exec();
    QCOMPARE(failures, QStringList(u"the box did not close: quieto"_s));
    QVERIFY(user.done());
}

QTEST_MAIN(tst_Doubles)
#include "tst_Doubles.moc"
