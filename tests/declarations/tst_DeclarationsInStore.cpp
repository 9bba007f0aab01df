#include "SeatProcess.h"
#include "Stock.h"
#include "catalog/NextDialog.h"
#include "declarations/FakeDialog.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/ListView.h>
#include <declarations/frmDIT.h>
#include <declarations/frmMODDIT.h>

#include <QRandomGenerator>
#include <QtTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

const QString first = u"24073IT14000001A"_s;
const QString second = u"24073IT14000002B"_s;
const QString fresh = u"24073IT14000009Z"_s;

const QString renumbered = u"Número de declaración cambiada con exito."_s;
const QString exists = u"El número de daclaración 24073IT14000009Z ya existe en la base de datos."_s;

const QString injected = u"inyectado\r\n\r\n-2147467259 - "_s;
const QString renumberingPlace = u"Seccion [oVELDRA.frmDIT.lp_ModificarDCL]"_s;
const QString deletionPlace = u"Sección [oVELDRA.frmDIT.f_EliminarDIT]"_s;

/// What a seat says that deleted the declaration: there is no box after the question.
const QString deleted = u"Confirma eliminar la DIT 24073IT14000001A"_s;

/// Two declarations with articles and discharges, under these numbers.
void fillStock(ConexionDB& inputs, const QString& firstNumber = first, const QString& secondNumber = second)
{
    addToStock(inputs, firstNumber, u"A"_s, 40, 30);
    addToStock(inputs, secondNumber, u"B"_s, 25, 20);
}

Connection newStock()
{
    Connection inputs = emptyStore(Database::Inputs);
    fillStock(*inputs);
    return inputs;
}

// What is expected is worked out by the same statements in memory, whichever engine the test runs on.

/// What a stock holds after statements on the two declarations.
QStringList contentAfter(const QStringList& statements)
{
    const Connection inputs = createStore(u"sqlite::memory:"_s, Database::Inputs);
    fillStock(*inputs);
    for (const QString& statement : statements) {
        run(*inputs, statement);
    }
    return content(*inputs);
}

QStringList contentUnder(const QString& firstNumber, const QString& secondNumber)
{
    const Connection inputs = createStore(u"sqlite::memory:"_s, Database::Inputs);
    fillStock(*inputs, firstNumber, secondNumber);
    return content(*inputs);
}

/// A host's connection that knows nothing of write bursts.
class PlainConnection final : public ConexionDB
{
public:
    explicit PlainConnection(Connection real) : m_real(std::move(real)) {}

    void setSql(const QString& text) override { m_real->setSql(text); }
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override { return m_real->openRecordset(ok); }
    qint64 execute() override { return m_real->execute(); }
    [[nodiscard]] RuntimeError lastError() const override { return m_real->lastError(); }

private:
    Connection m_real;
};

/// The browser of 2024 over a stock.
struct Browser
{
    explicit Browser(const Connection& inputs)
    {
        component.state.g_DBINS.assign(inputs);
        form.Form_Load();
    }

    [[nodiscard]] ListView& list() const { return *static_cast<ListView*>(form.findChild<QTreeView*>(u"lstVDIT"_s)); }
    [[nodiscard]] QString lastBox() const
    {
        return component.prompts.texts().value(component.prompts.boxes().size() - 1);
    }
    [[nodiscard]] QStringList numbers() const
    {
        QStringList texts;
        for (int row = 0; row < list().rowCount(); ++row) {
            texts.append(list().text(row, 0));
        }
        return texts;
    }

    /// Renumbers the selected declaration and answers the last box.
    QString renumber(const QString& number)
    {
        component.prompts.willAnswer(core::AnswerYes);
        component.prompts.willType(number);
        form.lp_ModificarDCL();
        return lastBox();
    }
    /// Deletes the selected declaration and answers the last box.
    QString erase()
    {
        component.prompts.willAnswer(core::AnswerYes);
        form.f_EliminarDIT();
        return lastBox();
    }

    TestComponent component;
    FakeDialog articleListing;
    FakeDialog dischargeListing;
    frmDIT form{
        component,
        {[this](core::Component& owner) { return std::make_unique<frmMODDIT>(owner, dischargeListing.factory()); },
         articleListing.factory()}};
};

/// A stock that other seats work on.
struct SharedStock
{
    SharedStock() { static_cast<void>(newStock()); }

    /// What it holds; nothing when the database is damaged.
    [[nodiscard]] QStringList content() const
    {
        const Connection inputs = connectStore(url);
        const QStringList rows = settledContent(*inputs);
        return isWhole(*inputs) ? rows : QStringList();
    }

    const QString& url = sharedUrl(Database::Inputs);
};

const QStringList renumberFirst{u"renumber"_s, first, fresh};
const QStringList renumberSecond{u"renumber"_s, second, fresh};
const QStringList deleteFirst{u"delete"_s, first};

} // namespace

/// The declaration browser and its editor on a real stock, alone and among other seats.
class tst_DeclarationsInStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void rangesFindTheDeclarationsOfTheirDays_data();
    void rangesFindTheDeclarationsOfTheirDays();
    void longListIsReadToItsLastRow();

    void renumberingTakesArticlesAndDischargesAlong();
    void numbersThatAreTaken_data();
    void numbersThatAreTaken();
    void numberOfArticlesAloneEndsSilently();
    void numbersOf17And18Characters();
    void hostileNewNumbers_data();
    void hostileNewNumbers();
    void renumberingWithoutArticlesTellsNoSuccess();
    void staleRowRenumbersNothing();

    void deletionTakesArticlesAndDischargesAlong();
    void deletionWithoutHeaderLeavesTheRest();

    void failureAtEveryStatementOfTheRenumbering_data();
    void failureAtEveryStatementOfTheRenumbering();
    void failureAtEveryStatementOfTheDeletion_data();
    void failureAtEveryStatementOfTheDeletion();
    void failureAtTheCommitOfTheRenumbering();
    void failureAtTheCommitOfTheDeletion();

    void editedDatesInOddForms_data();
    void editedDatesInOddForms();
    void hostileTextsInEveryBoxOfTheEditor_data();
    void hostileTextsInEveryBoxOfTheEditor();
    void declarationDeletedByAnotherSeatWhileTheEditorIsOpen();

    void killedAtEveryStatement_data();
    void killedAtEveryStatement();
    void killedAtAnyInstant_data();
    void killedAtAnyInstant();
    void twoSeatsRenumberingToTheSameNumber_data();
    void twoSeatsRenumberingToTheSameNumber();
    void renumberingToANumberThatAnotherSeatImports();
};

// --- the list ---

void tst_DeclarationsInStore::rangesFindTheDeclarationsOfTheirDays_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QStringList>("found");
    QTest::newRow("the day alone") << u"05/03/2024"_s << u"05/03/2024"_s << QStringList{first, second};
    QTest::newRow("the day before") << u"01/01/2024"_s << u"04/03/2024"_s << QStringList();
    QTest::newRow("the day after") << u"06/03/2024"_s << u"31/12/2024"_s << QStringList();
    QTest::newRow("short") << u"5-3-24"_s << u"6.3.24"_s << QStringList{first, second};
    QTest::newRow("named months") << u"5 de marzo de 2024"_s << u"5 mar 2024"_s << QStringList{first, second};
    QTest::newRow("ISO") << u"2024-03-05"_s << u"2024-12-31"_s << QStringList{first, second};
    QTest::newRow("day first, as ever") << u"03/05/2024"_s << u"31/12/2024"_s << QStringList();
    QTest::newRow("only a swapped reading") << u"02/29/2024"_s << u"03/13/2024"_s << QStringList{first, second};
}

void tst_DeclarationsInStore::rangesFindTheDeclarationsOfTheirDays()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    QFETCH(const QStringList, found);
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        const Connection inputs = newStock();
        run(*inputs, u"insert into INTINS (INTDCL) values ('SIN-FECHA')"_s);
        Browser browser(inputs);
        QCOMPARE(browser.numbers(), (QStringList{first, second}));
        browser.form.findChild<QLineEdit*>(u"txtDESDE"_s)->setText(from);
        browser.form.findChild<QLineEdit*>(u"txtHASTA"_s)->setText(to);
        browser.form.Cargar_INTINS();
        QCOMPARE(browser.numbers(), found);
        QVERIFY(browser.component.prompts.boxes().isEmpty());
        if (!found.isEmpty()) {
            QCOMPARE(browser.list().text(0, 4), u"05/03/2024"_s);
            QCOMPARE(browser.list().text(0, 5), u"05/03/2026"_s);
            QCOMPARE(browser.list().text(0, 6), u"1"_s);
        }
    }
}

void tst_DeclarationsInStore::longListIsReadToItsLastRow()
{
    constexpr int rows = 3000;
    const Connection inputs = emptyStore(Database::Inputs);
    {
        const auto burst = inputs->beginBurst();
        for (int row = 1; row <= rows; ++row) {
            addToStock(*inputs, u"D%1"_s.arg(row), u"A"_s, row == rows ? 1 : 0, 0);
        }
        burst->commit();
    }
    Browser browser(inputs);
    QVERIFY(whileOpen(browser.form, [&] {
        QCOMPARE(browser.list().rowCount(), rows);
        pressKey(Qt::Key_End);
        QCOMPARE(browser.list().currentRow(), rows - 1);
        QCOMPARE(browser.list().text(rows - 1, 0), u"D3000"_s);
        QCOMPARE(browser.renumber(fresh), renumbered);
        pressKey(Qt::Key_Up);
        browser.erase();
        QCOMPARE(browser.list().rowCount(), rows - 1);
        QCOMPARE(browser.list().text(rows - 2, 0), fresh);
    }));
}

// --- renumbering ---

void tst_DeclarationsInStore::renumberingTakesArticlesAndDischargesAlong()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    QCOMPARE(browser.renumber(fresh), renumbered);
    QCOMPARE(content(*inputs), contentUnder(fresh, second));
    QCOMPARE(browser.numbers(), (QStringList{fresh, second}));
    QCOMPARE(browser.renumber(first), renumbered); // from the row as it is now
    QCOMPARE(content(*inputs), contentUnder(first, second));
}

void tst_DeclarationsInStore::numbersThatAreTaken_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("another's") << second;
    QTest::newRow("another's in another case") << second.toLower();
    QTest::newRow("another's and a blank") << QString(second + u' ');
    QTest::newRow("its own") << first;
    QTest::newRow("its own in another case") << first.toLower();
    QTest::newRow("a discharge's, without a header") << u"SOLO-DIP"_s;
}

void tst_DeclarationsInStore::numbersThatAreTaken()
{
    QFETCH(const QString, number);
    const Connection inputs = newStock();
    run(*inputs, u"insert into DIP (ARTDCL) values ('SOLO-DIP')"_s);
    const QStringList before = content(*inputs);
    Browser browser(inputs);
    QCOMPARE(browser.renumber(number),
             QString(u"El número de daclaración "_s + number + u" ya existe en la base de datos."));
    QCOMPARE(content(*inputs), before);
    QCOMPARE(browser.numbers(), (QStringList{first, second}));
}

void tst_DeclarationsInStore::numberOfArticlesAloneEndsSilently()
{
    const Connection inputs = newStock();
    run(*inputs, u"insert into INS (INTDCL,ARTNRO) values ('SOLO-INS','x')"_s);
    const QStringList before = content(*inputs);
    Browser browser(inputs);
    browser.renumber(u"SOLO-INS"_s);
    QCOMPARE(browser.component.prompts.boxes().size(), 1);
    QCOMPARE(content(*inputs), before);
}

void tst_DeclarationsInStore::numbersOf17And18Characters()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    QCOMPARE(browser.renumber(u"12345678901234567"_s), renumbered);
    QCOMPARE(content(*inputs), contentUnder(u"12345678901234567"_s, second));
    QCOMPARE(browser.renumber(u"123456789012345678"_s),
             u"El numero de declaración debe tener como maximo 17 caracteres"_s);
    QCOMPARE(content(*inputs), contentUnder(u"12345678901234567"_s, second));
}

void tst_DeclarationsInStore::hostileNewNumbers_data()
{
    QTest::addColumn<QString>("number");
    for (const QString& number : {u"'"_s, u"' or '1'='1"_s, u"x';delete DIP"_s, u"it''s"_s, u"\"x\" -- /* # %"_s,
                                  u"%"_s, u"[a-z]*?"_s, u"a\tb"_s, u" 24 "_s, u"Ñandú 😀"_s}) {
        QTest::newRow(qPrintable(number)) << number;
    }
}

/// Whatever is typed: exactly this number, or nothing and a message.
void tst_DeclarationsInStore::hostileNewNumbers()
{
    QFETCH(const QString, number);
    const Connection inputs = newStock();
    Browser browser(inputs);
    const QString box = browser.renumber(number);
    if (number.contains(u'\'')) {
        QVERIFY2(box.endsWith(u"-2147217900 - "_s + renumberingPlace), qPrintable(box));
        QCOMPARE(content(*inputs), contentUnder(first, second));
    } else {
        QCOMPARE(box, renumbered);
        QCOMPARE(content(*inputs), contentUnder(number, second));
    }
}

void tst_DeclarationsInStore::renumberingWithoutArticlesTellsNoSuccess()
{
    const Connection inputs = newStock();
    run(*inputs, u"delete from INS where INTDCL = '%1'"_s.arg(first));
    Browser browser(inputs);
    browser.renumber(fresh);
    QCOMPARE(browser.component.prompts.boxes().size(), 1);
    QCOMPARE(browser.numbers(), (QStringList{first, second})); // the row waits for the next listing
    const QStringList after = content(*inputs);
    QVERIFY(after.filter(first).isEmpty());
    QCOMPARE(after.filter(fresh).size(), 1 + 30);
}

void tst_DeclarationsInStore::staleRowRenumbersNothing()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    Browser other(inputs);
    QCOMPARE(other.renumber(u"OTRO"_s), renumbered);
    browser.renumber(fresh);
    QCOMPARE(browser.component.prompts.boxes().size(), 1);
    QCOMPARE(content(*inputs), contentUnder(u"OTRO"_s, second));
}

// --- deleting ---

void tst_DeclarationsInStore::deletionTakesArticlesAndDischargesAlong()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    QCOMPARE(browser.erase(), deleted);
    QCOMPARE(browser.numbers(), QStringList{second});
    const QStringList after = content(*inputs);
    QCOMPARE(after.size(), 1 + 25 + 20);
    QCOMPARE(after.filter(second).size(), after.size());
}

void tst_DeclarationsInStore::deletionWithoutHeaderLeavesTheRest()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    const QString header = u"delete from INTINS where INTDCL = '%1'"_s.arg(first);
    run(*inputs, header);
    QCOMPARE(browser.erase(), QString(u"No pudo eliminar el interno "_s + first));
    QCOMPARE(browser.numbers(), (QStringList{first, second}));
    QCOMPARE(content(*inputs), contentAfter({header}));
}

// --- failures ---

namespace {

const QStringList updates{
    u"update DIP set ARTDCL = '24073IT14000009Z' where ARTDCL = '24073IT14000001A'"_s,
    u"update INS set INTDCL = '24073IT14000009Z' where INTDCL = '24073IT14000001A'"_s,
    u"update INTINS set INTDCL = '24073IT14000009Z' where INTDCL = '24073IT14000001A'"_s,
};
const QStringList deletes{
    u"delete from INTINS where INTDCL = '24073IT14000001A'"_s,
    u"delete from INS where INTDCL = '24073IT14000001A'"_s,
    u"delete from DIP where ARTDCL = '24073IT14000001A'"_s,
};

/// A failure at each of `count` statements, of the store's connection and of one without bursts.
void addFailures(int count)
{
    QTest::addColumn<bool>("bursts");
    QTest::addColumn<int>("failing");
    for (const bool bursts : {true, false}) {
        for (int failing = 1; failing <= count; ++failing) {
            QTest::addRow("statement %d, %s", failing, bursts ? "in a burst" : "one by one") << bursts << failing;
        }
    }
}

/// A stock's connection whose n-th statement fails.
Connection failingAt(int failing, const Connection& inputs, bool bursts)
{
    const Connection real = bursts ? inputs : std::make_shared<PlainConnection>(inputs);
    return std::make_shared<InterruptedConexionDB>(real, [failing](int statement) {
        if (statement == failing) {
            throw RuntimeError(-2147467259, u"inyectado"_s);
        }
    });
}

} // namespace

void tst_DeclarationsInStore::failureAtEveryStatementOfTheRenumbering_data()
{
    addFailures(6);
}

void tst_DeclarationsInStore::failureAtEveryStatementOfTheRenumbering()
{
    QFETCH(const bool, bursts);
    QFETCH(const int, failing);
    const Connection inputs = newStock();
    Browser browser(inputs);
    browser.component.state.g_DBINS.assign(failingAt(failing, inputs, bursts));
    QCOMPARE(browser.renumber(fresh), QString(injected + renumberingPlace));
    QCOMPARE(content(*inputs), contentAfter(updates.mid(0, std::max(0, failing - 4)))); // nothing is rolled back
    QCOMPARE(browser.numbers(), (QStringList{first, second}));
}

void tst_DeclarationsInStore::failureAtEveryStatementOfTheDeletion_data()
{
    addFailures(3);
}

void tst_DeclarationsInStore::failureAtEveryStatementOfTheDeletion()
{
    QFETCH(const bool, bursts);
    QFETCH(const int, failing);
    const Connection inputs = newStock();
    Browser browser(inputs);
    browser.component.state.g_DBINS.assign(failingAt(failing, inputs, bursts));
    QCOMPARE(browser.erase(), QString(injected + deletionPlace));
    QCOMPARE(content(*inputs), contentAfter(deletes.mid(0, failing - 1)));
    QCOMPARE(browser.numbers(), (QStringList{first, second}));
}

void tst_DeclarationsInStore::failureAtTheCommitOfTheRenumbering()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    const QString box = whileCommitsFail(*inputs, [&] { return browser.renumber(fresh); });
    QVERIFY2(box.endsWith(u"\r\n\r\n-2147467259 - "_s + renumberingPlace), qPrintable(box));
    QCOMPARE(content(*inputs), contentUnder(first, second));
    QCOMPARE(browser.numbers(), (QStringList{first, second}));
}

void tst_DeclarationsInStore::failureAtTheCommitOfTheDeletion()
{
    const Connection inputs = newStock();
    Browser browser(inputs);
    const QString box = whileCommitsFail(*inputs, [&] { return browser.erase(); });
    QVERIFY2(box.endsWith(u"\r\n\r\n-2147467259 - "_s + deletionPlace), qPrintable(box));
    QCOMPARE(content(*inputs), contentUnder(first, second));
    QCOMPARE(browser.numbers(), (QStringList{first, second}));
}

// --- the editor ---

void tst_DeclarationsInStore::editedDatesInOddForms_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    QTest::newRow("usual") << u"06/03/2024"_s << u"2024-03-06"_s;
    QTest::newRow("short") << u"6-3-24"_s << u"2024-03-06"_s;
    QTest::newRow("last century") << u"6.3.99"_s << u"1999-03-06"_s;
    QTest::newRow("named month") << u"6 de marzo de 2024"_s << u"2024-03-06"_s;
    QTest::newRow("ISO") << u"2024-03-06"_s << u"2024-03-06"_s;
    QTest::newRow("only a swapped reading") << u"03/16/2024"_s << u"2024-03-16"_s;
    QTest::newRow("leap day") << u"29/02/2024"_s << u"2024-02-29"_s;
}

void tst_DeclarationsInStore::editedDatesInOddForms()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, stored);
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        const Connection inputs = newStock();
        Browser browser(inputs);
        QVERIFY(whileOpen(browser.form, [&] {
            catalog::inNextDialog(u"frmMODDIT"_s, [&](Form& editor) {
                editor.findChild<QLineEdit*>(u"txtINTFOF"_s)->setText(typed);
                editor.findChild<QLineEdit*>(u"txtINTDES"_s)->setText(u"O'Brien"_s);
                pressKey(Qt::Key_F11);
            });
            pressKey(Qt::Key_Return);
            QCOMPARE(browser.list().text(0, 2), u"O´Brien"_s);
            QCOMPARE(browser.list().text(0, 4), typed);
        }));
        QVERIFY(browser.component.prompts.boxes().isEmpty());
        QStringList expected = contentUnder(first, second);
        expected[0] = u"INTINS|A|%1|%2|2026-03-05|O´Brien|073|1|C-A"_s.arg(first, stored);
        QCOMPARE(content(*inputs), expected);
    }
}

void tst_DeclarationsInStore::hostileTextsInEveryBoxOfTheEditor_data()
{
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("text");
    const QStringList texts{u"'"_s,       u"x' where 'a'='a"_s,   u"x',INTDCL = 'y"_s,
                            u"it''s"_s,   u"\"x\" ; -- /* # %"_s, u"a\tb\u0001c"_s,
                            u"😀 Ñandú"_s, QString(10000, u'x')};
    for (const QString& box : {u"txtINTNRO"_s, u"txtINTDES"_s, u"txtINTCTC"_s, u"txtINTFOF"_s, u"txtINTVEN"_s}) {
        for (qsizetype i = 0; i < texts.size(); ++i) {
            QTest::addRow("%s, text %d", qPrintable(box), static_cast<int>(i)) << box << texts[i];
        }
    }
}

/// Whatever is typed: exactly this text (with accents for apostrophes where that is the rule), or nothing and a
/// message.
void tst_DeclarationsInStore::hostileTextsInEveryBoxOfTheEditor()
{
    QFETCH(const QString, box);
    QFETCH(const QString, text);
    const Connection inputs = newStock();
    TestComponent component;
    component.state.g_DBINS.assign(inputs);
    component.state.declaration.number = first;
    frmMODDIT form(component, {});
    form.Form_Load();
    form.findChild<QLineEdit*>(box)->setText(text);
    QStringList expected = contentUnder(first, second);
    if (form.fp_ModificarDIT()) {
        const QString written = QString(text).replace(u'\'', u'´');
        const int place = box == u"txtINTNRO" ? 1 : box == u"txtINTDES" ? 5 : 8;
        QStringList cells = expected.constFirst().split(u'|');
        cells[place] = written;
        expected[0] = cells.join(u'|');
        QVERIFY(component.prompts.boxes().isEmpty());
        QVERIFY(box != u"txtINTCTC" || !text.contains(u'\''));
    } else {
        QCOMPARE(component.prompts.boxes().size(), 1);
    }
    QCOMPARE(content(*inputs), expected);
}

void tst_DeclarationsInStore::declarationDeletedByAnotherSeatWhileTheEditorIsOpen()
{
    const SharedStock stock;
    Browser browser(connectStore(stock.url));
    QStringList afterDeletion;
    QVERIFY(whileOpen(browser.form, [&] {
        const QString before = browser.list().text(0, 2);
        catalog::inNextDialog(u"frmMODDIT"_s, [&](Form& editor) {
            editor.findChild<QLineEdit*>(u"txtINTDES"_s)->setText(u"Otra"_s);
            SeatProcess other(stock.url, deleteFirst);
            QCOMPARE(other.outcome(), deleted);
            afterDeletion = stock.content();
            pressKey(Qt::Key_F11);
            QVERIFY(editor.isVisible());
            QCOMPARE(editor.findChild<QLineEdit*>(u"txtINTDES"_s)->text(), u"Otra"_s);
            pressKey(Qt::Key_Escape);
        });
        pressKey(Qt::Key_Return);
        QCOMPARE(browser.list().text(0, 2), before);
        catalog::returnTo(browser.form);

        catalog::inNextDialog(u"frmMODDIT"_s, [&](Form&) { pressKey(Qt::Key_Escape); });
        pressKey(Qt::Key_Return); // and once more, now that it is gone
    }));
    QCOMPARE(browser.component.prompts.texts(),
             QStringList{u"-2147221504 - No existe la declaración 24073IT14000001A u ocurrio un error en su "
                         "busqueda\r\n\r\nSección [oVELDRA.frmMODDIT.fpCargarDIT]"_s});
    QCOMPARE(afterDeletion.size(), 1 + 25 + 20);
    QCOMPARE(stock.content(), afterDeletion);
    QCOMPARE(browser.erase(), QString(u"No pudo eliminar el interno "_s + first));
}

// --- seats that die ---

void tst_DeclarationsInStore::killedAtEveryStatement_data()
{
    QTest::addColumn<QStringList>("task");
    QTest::addColumn<int>("statements");
    QTest::addColumn<QString>("outcome");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("renumbering") << renumberFirst << 6 << renumbered << contentUnder(fresh, second);
    QTest::newRow("deletion") << deleteFirst << 3 << deleted << contentAfter(deletes);
}

void tst_DeclarationsInStore::killedAtEveryStatement()
{
    QFETCH(const QStringList, task);
    QFETCH(const int, statements);
    QFETCH(const QString, outcome);
    QFETCH(const QStringList, after);
    const SharedStock stock;
    for (int statement = 1; statement <= statements; ++statement) {
        SeatProcess seat(stock.url, task, AtStatement::Die, statement);
        QVERIFY(seat.died());
        QCOMPARE(stock.content(), contentUnder(first, second));
    }
    SeatProcess survivor(stock.url, task);
    QCOMPARE(survivor.outcome(), outcome);
    QCOMPARE(stock.content(), after);
}

void tst_DeclarationsInStore::killedAtAnyInstant_data()
{
    QTest::addColumn<QStringList>("task");
    QTest::addColumn<QStringList>("after");
    QTest::newRow("renumbering") << renumberFirst << contentUnder(fresh, second);
    QTest::newRow("deletion") << deleteFirst << contentAfter(deletes);
}

/// In the middle of the commit, too: everything or nothing.
void tst_DeclarationsInStore::killedAtAnyInstant()
{
    QFETCH(const QStringList, task);
    QFETCH(const QStringList, after);
    QRandomGenerator random(20261120);
    for (int round = 0; round < roundsOf(25); ++round) {
        const SharedStock stock;
        SeatProcess seat(stock.url, task, AtStatement::Wait, 1);
        QVERIFY(seat.waits());
        seat.goOn();
        seat.killAfter(random.bounded(0, 8)); // the instant is the random part
        const QStringList found = stock.content();
        QVERIFY(found == after || found == contentUnder(first, second));
    }
}

// --- seats at the same moment ---

void tst_DeclarationsInStore::twoSeatsRenumberingToTheSameNumber_data()
{
    QTest::addColumn<int>("statement");
    QTest::addColumn<int>("rounds");
    QTest::newRow("at the same moment") << 1 << 20;
    QTest::newRow("one between the other's checks and updates") << 4 << 3;
    QTest::newRow("one amid the other's updates") << 6 << 3;
}

/// Exactly one of two declarations gets the number, with all its articles and discharges and none of the other's.
void tst_DeclarationsInStore::twoSeatsRenumberingToTheSameNumber()
{
    QFETCH(const int, statement);
    QFETCH(const int, rounds);
    for (int round = 0; round < roundsOf(rounds); ++round) {
        const SharedStock stock;
        SeatProcess one(stock.url, renumberFirst, AtStatement::Wait, statement);
        SeatProcess other(stock.url, renumberSecond, AtStatement::Wait, 1);
        QVERIFY(one.waits());
        QVERIFY(other.waits());
        other.goOn(); // past the one's first statement it has to wait here for the one
        one.goOn();
        const QStringList outcomes{one.outcome(), other.outcome()};
        const bool isOnes = outcomes.constFirst() == renumbered;
        QCOMPARE(outcomes, isOnes ? QStringList({renumbered, exists}) : QStringList({exists, renumbered}));
        QVERIFY(isOnes || statement == 1);
        QCOMPARE(stock.content(), isOnes ? contentUnder(fresh, second) : contentUnder(first, fresh));
    }
}

void tst_DeclarationsInStore::renumberingToANumberThatAnotherSeatImports()
{
    const SharedStock stock;
    addDeclaration(*emptyStore(Database::Host), u"TOR1"_s, 3, 2);
    constexpr int amidTheArticles = 5;
    const QStringList import{u"import"_s, sharedUrl(Database::Host), u"TOR1"_s, fresh};
    SeatProcess importing(stock.url, import, AtStatement::Wait, amidTheArticles);
    QVERIFY(importing.waits());
    SeatProcess renumbering(stock.url, renumberFirst, AtStatement::Wait, 1);
    QVERIFY(renumbering.waits());
    renumbering.goOn();
    importing.goOn();
    QCOMPARE(importing.outcome(), u"OK"_s);
    QCOMPARE(renumbering.outcome(), exists);
    QStringList kept = stock.content();
    kept.removeIf([](const QString& row) { return row.contains(fresh); });
    QCOMPARE(kept, contentUnder(first, second));
    QCOMPARE(stock.content().size() - kept.size(), 1 + 6);
}

QTEST_MAIN(tst_DeclarationsInStore)
#include "tst_DeclarationsInStore.moc"
