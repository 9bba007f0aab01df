#include "controls/OpenForm.h"
#include "declarations/FakeDialog.h"
#include "doubles/BoxDriver.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/ListView.h>
#include <controls/OleColor.h>
#include <declarations/frmDIT.h>

#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

constexpr quint32 Black = 0;
constexpr quint32 Red = 255;
constexpr int SubItems = 6;

const QStringList columns{u"INTDCL"_s, u"INTNRO"_s, u"INTDES"_s, u"INTCTC"_s, u"INTFOF"_s, u"INTVEN"_s, u"INTIOK"_s};
const QString first = u"24073IT14000001A"_s;
const QString second = u"24073IT14000002B"_s;
const QString fresh = u"24073IT14000009Z"_s;

const QString listOf2024 =
    u"select * from INTINS where INTFOF between datevalue('01/01/2024') and datevalue ('31/12/2024')"_s;

const QString confirmRenumbering = u"Confirma cambiar el Número de Declaración?"_s;
const QString renumbered = u"Número de declaración cambiada con exito."_s;
const QString tooLong = u"El numero de declaración debe tener como maximo 17 caracteres"_s;

const QString headerHasNumber = u"select INTDCL from INTINS where INTDCL = '24073IT14000009Z'"_s;
const QString dischargeHasNumber = u"select ARTDCL from DIP where ARTDCL = '24073IT14000009Z'"_s;
const QString articleHasNumber = u"select INTDCL from INS where INTDCL = '24073IT14000009Z'"_s;
const QStringList checks{headerHasNumber, dischargeHasNumber, articleHasNumber};
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

const QString firstDateFault = u"El campo FECHA DESDE, debe tener una valor fecha valida"_s;
const QString lastDateFault = u"El campo FECHA HASTA, debe tener una valor fecha valida"_s;
const QString orderFault = u"El valor fecha DESDE debe ser menor al valor de HASTA"_s;

RecordedPrompts::Box critical(const QString& text)
{
    return {text, core::CriticalBox, {}};
}

RecordedPrompts::Box exclamation(const QString& text)
{
    return {text, core::ExclamationBox, {}};
}

RecordedPrompts::Box question(const QString& text)
{
    return {text, core::QuestionBox, {}};
}

RecordedPrompts::Box information(const QString& text)
{
    return {text, core::InformationBox, {}};
}

FakeConexionDB::Row declaration(const QString& number, const QVariant& available = 1)
{
    return {
        number,   QString(u"INT-"_s + number.right(2)), u"Chapas"_s, u"CTC-7"_s, QDate(2024, 3, 5), QDate(2026, 3, 5),
        available};
}

/// The browser over a connection that answers from a script: two declarations of 2024, the year of its clock. Its
/// dialogs note that they were opened and do what a test says.
struct Fixture
{
    explicit Fixture(const QList<FakeConexionDB::Row>& rows = {declaration(first), declaration(second)})
    {
        component.state.g_DBINS.assign(inputs);
        inputs->willGiveRows(u"select * from INTINS"_s, columns, rows);
        inputs->willGiveRows(u"select INTDCL"_s, {u"INTDCL"_s}); // no number exists
        inputs->willGiveRows(u"select ARTDCL"_s, {u"ARTDCL"_s});
        inputs->willAffect(u"update"_s, 1);
        inputs->willAffect(u"delete"_s, 1);
    }

    [[nodiscard]] ListView& list() const { return *static_cast<ListView*>(form.findChild<QTreeView*>(u"lstVDIT"_s)); }
    [[nodiscard]] QLineEdit& box(const QString& name) const { return *form.findChild<QLineEdit*>(name); }
    [[nodiscard]] QLabel& label(const QString& name) const { return *form.findChild<QLabel*>(name); }
    [[nodiscard]] core::CurrentDeclaration& current() { return component.state.declaration; }
    [[nodiscard]] QList<RecordedPrompts::Box> boxes() const { return component.prompts.boxes(); }
    [[nodiscard]] QStringList events() const { return inputs->events(); }

    [[nodiscard]] QStringList row(int row) const
    {
        QStringList texts;
        for (int column = 0; column < list().model()->columnCount(); ++column) {
            texts.append(list().text(row, column));
        }
        return texts;
    }
    [[nodiscard]] QStringList numbers() const
    {
        QStringList texts;
        for (int row = 0; row < list().rowCount(); ++row) {
            texts.append(list().text(row, 0));
        }
        return texts;
    }
    /// The colours of a row's cells; an invalid one is the theme's own.
    [[nodiscard]] QList<QColor> colors(int row) const
    {
        QList<QColor> colors;
        for (int column = 0; column < list().model()->columnCount(); ++column) {
            colors.append(list().model()->index(row, column).data(Qt::ForegroundRole).value<QColor>());
        }
        return colors;
    }

    void typeRange(const QString& from, const QString& to) const
    {
        box(u"txtDESDE"_s).setText(from);
        box(u"txtHASTA"_s).setText(to);
    }

    /// Opens the form, forgets what its loading did, and lets a test go on.
    void whileLoaded(const std::function<void()>& actions)
    {
        QVERIFY(whileOpen(form, [&] {
            inputs->clear();
            component.prompts.clear();
            actions();
        }));
    }
    /// Opens the form and renumbers the first declaration, with the confirmation given.
    void renumber(const QString& number, const std::function<void()>& look)
    {
        whileLoaded([&] {
            component.prompts.willAnswer(core::AnswerYes);
            component.prompts.willType(number);
            pressKey(Qt::Key_Return, Qt::ControlModifier);
            look();
        });
    }
    /// Opens the form and deletes the first declaration, with the confirmation given.
    void erase(const std::function<void()>& look)
    {
        whileLoaded([&] {
            component.prompts.willAnswer(core::AnswerYes);
            pressKey(Qt::Key_Delete);
            look();
        });
    }

    std::shared_ptr<FakeConexionDB> inputs = std::make_shared<FakeConexionDB>();
    TestComponent component;
    FakeDialog editor;
    FakeDialog articleListing;
    frmDIT form{component, {editor.factory(), articleListing.factory()}};
};

/// Six sub-items of a colour behind a first cell of the theme's own.
QList<QColor> subItemsIn(const QColor& color)
{
    return QList<QColor>{QColor()} + QList<QColor>(SubItems, color);
}

} // namespace

class tst_frmDIT : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void controlsHaveTheirNamesTitlesAndTexts();
    void openingListsTheCurrentYear();
    void everyOpeningStartsFromTheDesignState();
    void tabOrderIsReadingOrder();
    void dateBoxesAreBound();
    void escapeClosesFromEveryControl();

    void rowsShowTheirColumns_data();
    void rowsShowTheirColumns();
    void availabilityOfZeroIsRed_data();
    void availabilityOfZeroIsRed();

    void f11ListsTheTypedRange();
    void rangeOfOneDay();
    void oddDatesAreTakenAsTyped_data();
    void oddDatesAreTakenAsTyped();
    void dateFaultsKeepTheOldRows_data();
    void dateFaultsKeepTheOldRows();
    void listIsHiddenAndEmptyWhileTheQueryRuns();
    void listThatCannotOpenIsReported();
    void errorInARowLeavesTheRowsBefore();
    void missingConnectionIsReported();
    void errorOfTheLoadIsReported();

    void enterOpensTheEditorForTheSelectedRow();
    void unsavedEditLeavesTheRow();
    void savedEditShowsInTheRow_data();
    void savedEditShowsInTheRow();
    void savedEditIsReadableUnderADarkTheme();
    void errorOfTheEditorIsReported();
    void enterGoesByItsModifiers_data();
    void enterGoesByItsModifiers();

    void renumberingAsksThenProposesTheCurrentNumber();
    void renumberingEndsWithNo();
    void renumberingEndsWithABlankAnswer_data();
    void renumberingEndsWithABlankAnswer();
    void numbersOf17And18Characters_data();
    void numbersOf17And18Characters();
    void numberThatExistsIsRefused_data();
    void numberThatExistsIsRefused();
    void currentNumberIsRefusedAsExisting();
    void numberOfArticlesAloneEndsSilently();
    void renumberingIsOneBurstEndedBeforeTheBox();
    void successNeedsAHeaderAndAnArticle_data();
    void successNeedsAHeaderAndAnArticle();
    void failureAtEveryStatementOfTheRenumbering_data();
    void failureAtEveryStatementOfTheRenumbering();
    void failureAtCommitIsNoSuccess();
    void newNumberWithApostropheWritesNothing_data();
    void newNumberWithApostropheWritesNothing();
    void oldNumberWithApostropheWritesNothing();
    void realBoxesOfTheRenumbering();

    void f6OpensTheArticlesOfTheSelectedRow();
    void errorOfTheArticleListingIsReported();

    void deletionAsksAndNoDeletesNothing();
    void deletionIsOneBurstAfterTheQuestion();
    void deletionSelectsTheNextRow();
    void deletionOfAHeaderThatIsGone();
    void failureAtEveryStatementOfTheDeletion_data();
    void failureAtEveryStatementOfTheDeletion();
    void failureAtCommitKeepsTheRow();
    void numberWithApostropheDeletesNothing();

    void pointerIsBusyWhileWorkingOnly();
    void listKeysOnAnEmptyListDoNothing();
    void listKeysBelongToTheList();
    void dialogsAreMadeOnceAndKept();
};

void tst_frmDIT::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_frmDIT::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- the screen ---

void tst_frmDIT::controlsHaveTheirNamesTitlesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmDIT"_s);
    QCOMPARE(fixture.form.windowTitle(), u"Listados de DIT's"_s);
    const QList<std::pair<QString, QString>> labels{
        {u"Label1"_s, u"[ENTER] - Modificar - [CTRL + ENTER] Modificar Nro Declaración - [F6] Ver Articulos - [DEL] "
                      "Eliminar - [ESC] Salir"_s},
        {u"Label2"_s, u"Seleccione los intervalos de fecha para el listados de DIT's"_s},
        {u"Label3"_s, u"Desde:"_s},
        {u"Label4"_s, u"Hasta:"_s},
        {u"Label5"_s, u"[F11] - Mostrar"_s},
        {u"Label6"_s, u"DISP.: (1) Habilitado - (2) Bloqueado"_s}};
    for (const auto& [name, text] : labels) {
        QCOMPARE(fixture.label(name).text(), text);
    }
    QCOMPARE(fixture.label(u"Label3"_s).buddy(), &fixture.box(u"txtDESDE"_s));
    QCOMPARE(fixture.label(u"Label4"_s).buddy(), &fixture.box(u"txtHASTA"_s));
    QCOMPARE(fixture.box(u"txtDESDE"_s).accessibleName(), u"Desde:"_s);
    QCOMPARE(fixture.box(u"txtHASTA"_s).accessibleName(), u"Hasta:"_s);
    QStringList titles;
    for (int column = 0; column < fixture.list().model()->columnCount(); ++column) {
        titles.append(fixture.list().model()->headerData(column, Qt::Horizontal).toString());
    }
    QCOMPARE(titles, (QStringList{u"Declaración"_s, u"Interno"_s, u"Descripción"_s, u"Nro CTC"_s, u"Fecha Ofic."_s,
                                  u"Fecha Venc."_s, u"Disp"_s}));
}

void tst_frmDIT::openingListsTheCurrentYear()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.box(u"txtDESDE"_s).text(), u"01/01/2024"_s);
        QCOMPARE(fixture.box(u"txtHASTA"_s).text(), u"31/12/2024"_s);
        QCOMPARE(fixture.numbers(), (QStringList{first, second}));
        QVERIFY(fixture.list().isVisible());
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.list().currentRow(), 0);
    }));
    QCOMPARE(fixture.events(), QStringList{listOf2024});
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDIT::everyOpeningStartsFromTheDesignState()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.typeRange(u"01/05/2020"_s, u"31/05/2020"_s);
        fixture.box(u"txtHASTA"_s).setFocus();
        pressKey(Qt::Key_F11);
    }));
    fixture.component.clock.set(QDate(2025, 12, 31));
    fixture.inputs->clear();
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.box(u"txtDESDE"_s).text(), u"01/01/2025"_s);
        QCOMPARE(fixture.box(u"txtHASTA"_s).text(), u"31/12/2025"_s);
        QVERIFY(fixture.list().hasFocus());
    }));
    QCOMPARE(fixture.events(), QStringList{u"select * from INTINS where INTFOF between datevalue('01/01/2025') and "
                                           "datevalue ('31/12/2025')"_s});
}

void tst_frmDIT::tabOrderIsReadingOrder()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        QStringList order;
        for (int step = 0; step < 3; ++step) {
            pressKey(Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(order, (QStringList{u"txtDESDE"_s, u"txtHASTA"_s, u"lstVDIT"_s}));
    });
}

void tst_frmDIT::dateBoxesAreBound()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        const QLineEdit& from = fixture.box(u"txtDESDE"_s);
        pressKey(Qt::Key_Tab);
        QCOMPARE(from.palette().color(QPalette::Base), colorFromOle(12648384));
        QCOMPARE(from.selectedText(), u"01/01/2024"_s);
        pressKey(Qt::Key_Return);
        QVERIFY(fixture.box(u"txtHASTA"_s).hasFocus());
        QCOMPARE(from.palette().color(QPalette::Base), colorFromOle(16777215));
        pressKey(Qt::Key_Return);
        QVERIFY(fixture.list().hasFocus());
    });
    QCOMPARE(fixture.editor.shown, 0);
}

void tst_frmDIT::escapeClosesFromEveryControl()
{
    for (const auto& name : {u"txtDESDE"_s, u"txtHASTA"_s, u"lstVDIT"_s}) {
        Fixture fixture;
        QVERIFY(!whileOpen(fixture.form, [&] {
            fixture.form.findChild<QWidget*>(name)->setFocus();
            pressKey(Qt::Key_Escape);
        }));
    }
}

// --- rows ---

void tst_frmDIT::rowsShowTheirColumns_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("es_AR") << u"es_AR"_s;
    QTest::newRow("en_US") << u"en_US"_s;
}

void tst_frmDIT::rowsShowTheirColumns()
{
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    Fixture fixture({{first, u"TOR1"_s, u"Chapas y caños"_s, u"C-1"_s, QDate(2024, 3, 5), QDate(2026, 12, 31), 1},
                     {second, {}, {}, {}, {}, {}, {}}});
    fixture.form.Form_Load();
    QCOMPARE(fixture.row(0),
             (QStringList{first, u"TOR1"_s, u"Chapas y caños"_s, u"C-1"_s, u"05/03/2024"_s, u"31/12/2026"_s, u"1"_s}));
    QCOMPARE(fixture.row(1), (QStringList{second, {}, {}, {}, {}, {}, u"0"_s}));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDIT::availabilityOfZeroIsRed_data()
{
    QTest::addColumn<QVariant>("available");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("red");
    QTest::newRow("0") << QVariant(0) << u"0"_s << true;
    QTest::newRow("false") << QVariant(false) << u"0"_s << true;
    QTest::newRow("null") << QVariant() << u"0"_s << true;
    QTest::newRow("no number") << QVariant(u"x"_s) << u"0"_s << true;
    QTest::newRow("1") << QVariant(1) << u"1"_s << false;
    QTest::newRow("2, blocked by the legend") << QVariant(2) << u"2"_s << false;
    QTest::newRow("-1") << QVariant(-1) << u"-1"_s << false;
    QTest::newRow("true") << QVariant(true) << u"-1"_s << false;
}

void tst_frmDIT::availabilityOfZeroIsRed()
{
    QFETCH(const QVariant, available);
    QFETCH(const QString, text);
    QFETCH(const bool, red);
    Fixture fixture({declaration(first, available)});
    fixture.form.Form_Load();
    QCOMPARE(fixture.list().text(0, SubItems), text);
    QCOMPARE(fixture.colors(0), subItemsIn(red ? colorFromOle(Red) : QColor()));
}

// --- ranges ---

void tst_frmDIT::f11ListsTheTypedRange()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select * from INTINS"_s, columns, {declaration(fresh)});
    fixture.whileLoaded([&] {
        pressKey(Qt::Key_Tab);
        typeText(u"02/05/2023"_s);
        pressKey(Qt::Key_Return);
        typeText(u"03/06/2023"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(fixture.numbers(), QStringList{fresh});
        QVERIFY(fixture.box(u"txtHASTA"_s).hasFocus());
    });
    QCOMPARE(fixture.events(), QStringList{u"select * from INTINS where INTFOF between datevalue('02/05/2023') and "
                                           "datevalue ('03/06/2023')"_s});
}

void tst_frmDIT::rangeOfOneDay()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        fixture.typeRange(u"05/03/2024"_s, u"05/03/2024"_s);
        pressKey(Qt::Key_F11);
    });
    QCOMPARE(fixture.events().size(), 1);
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDIT::oddDatesAreTakenAsTyped_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("short") << u"1-3-24"_s << u"2.3.24"_s;
    QTest::newRow("named months") << u"1 de marzo de 2024"_s << u"2 mar 2024"_s;
    QTest::newRow("ISO") << u"2024-03-01"_s << u"2024-03-02"_s;
    QTest::newRow("only a swapped reading") << u"03/13/2024"_s << u"03/14/2024"_s;
    QTest::newRow("one day in two spellings") << u"5/3/24"_s << u" 05 03 2024 "_s;
    QTest::newRow("last century") << u"1/1/99"_s << u"1/1/00"_s;
}

void tst_frmDIT::oddDatesAreTakenAsTyped()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        Fixture fixture;
        fixture.typeRange(from, to);
        fixture.form.Cargar_INTINS();
        QVERIFY(fixture.boxes().isEmpty());
        QCOMPARE(fixture.events(), QStringList{u"select * from INTINS where INTFOF between datevalue('%1') and "
                                               "datevalue ('%2')"_s.arg(from, to)});
    }
}

void tst_frmDIT::dateFaultsKeepTheOldRows_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("fault");
    QTest::newRow("no first date") << QString() << u"31/12/2024"_s << firstDateFault;
    QTest::newRow("impossible first date") << u"31/02/2024"_s << u"31/12/2024"_s << firstDateFault;
    QTest::newRow("no last date") << u"01/01/2024"_s << QString() << lastDateFault;
    QTest::newRow("impossible last date") << u"01/01/2024"_s << u"30/02/2024"_s << lastDateFault;
    QTest::newRow("neither: the first") << u"ayer"_s << u"hoy"_s << firstDateFault;
    QTest::newRow("one day too early") << u"02/03/2024"_s << u"01/03/2024"_s << orderFault;
    QTest::newRow("too early, though not as texts") << u"01/12/2024"_s << u"31/01/2024"_s << orderFault;
    QTest::newRow("apostrophe in the first") << u"01/01/2024'"_s << u"31/12/2024"_s << firstDateFault;
    QTest::newRow("apostrophe in the last") << u"01/01/2024"_s << u"x' or 'a'='a"_s << lastDateFault;
}

void tst_frmDIT::dateFaultsKeepTheOldRows()
{
    QFETCH(const QString, from);
    QFETCH(const QString, to);
    QFETCH(const QString, fault);
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        Fixture fixture;
        bool visible = false;
        fixture.whileLoaded([&] {
            fixture.list().selectRow(1);
            fixture.component.prompts.whileShown = [&] { visible = fixture.list().isVisible(); };
            fixture.typeRange(from, to);
            pressKey(Qt::Key_F11);
            QCOMPARE(fixture.numbers(), (QStringList{first, second}));
            QCOMPARE(fixture.list().currentRow(), 1);
        });
        QVERIFY(visible);
        QCOMPARE(fixture.boxes(),
                 QList{critical(QString(fault + u"\r\n\r\n-2147221504 - Seccion [oVELDRA.frmDIT.Cargar_INTINS]"_s))});
        QVERIFY(fixture.events().isEmpty());
    }
}

void tst_frmDIT::listIsHiddenAndEmptyWhileTheQueryRuns()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        QStringList seen;
        fixture.component.state.g_DBINS.assign(std::make_shared<InterruptedConexionDB>(fixture.inputs, [&](int) {
            seen.append(fixture.list().isHidden() ? u"hidden"_s : u"shown"_s);
            seen.append(QString::number(fixture.list().rowCount()));
        }));
        pressKey(Qt::Key_F11);
        QCOMPARE(seen, (QStringList{u"hidden"_s, u"0"_s}));
        QVERIFY(fixture.list().isVisible());
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.list().rowCount(), 2);
    });
}

void tst_frmDIT::listThatCannotOpenIsReported()
{
    Fixture fixture;
    bool visible = false;
    fixture.whileLoaded([&] {
        fixture.component.prompts.whileShown = [&] { visible = fixture.list().isVisible(); };
        fixture.inputs->failStatement(1, RuntimeError(-2147217865, u"No está la tabla INTINS."_s));
        pressKey(Qt::Key_F11);
        QCOMPARE(fixture.list().rowCount(), 0);
    });
    QVERIFY(visible);
    QCOMPARE(fixture.boxes(), QList{critical(u"No está la tabla INTINS.\r\n\r\n-2147217865 - Seccion "
                                             "[oVELDRA.frmDIT.Cargar_INTINS]"_s)});
}

void tst_frmDIT::errorInARowLeavesTheRowsBefore()
{
    FakeConexionDB::Row broken = declaration(second);
    broken[4] = QVariant(QVariantList{1}); // no text, number or date
    Fixture fixture({declaration(first), broken, declaration(fresh)});
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.numbers(), QStringList{first});
        QVERIFY(fixture.list().isVisible());
    }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n13 - Seccion [oVELDRA.frmDIT.Cargar_INTINS]"));
}

void tst_frmDIT::missingConnectionIsReported()
{
    Fixture fixture;
    fixture.component.state.g_DBINS.release();
    QVERIFY(whileOpen(fixture.form, [] {}));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n3709 - Seccion [oVELDRA.frmDIT.Cargar_INTINS]"));
}

void tst_frmDIT::errorOfTheLoadIsReported()
{
    Fixture fixture;
    int boxes = 0;
    fixture.component.prompts.whileShown = [&] {
        if (++boxes == 1) {
            throw RuntimeError(7, u"D"_s); // in the report of a failed list
        }
    };
    fixture.component.state.g_DBINS.release();
    fixture.form.Form_Load();
    QCOMPARE(fixture.boxes().size(), 2);
    QCOMPARE(fixture.boxes().constLast(), critical(u"D\r\n\r\n7 - Sección [oVELDRA.frmDIT.form_load]"_s));
}

// --- modifying ---

void tst_frmDIT::enterOpensTheEditorForTheSelectedRow()
{
    Fixture fixture;
    fixture.current() = {u"x"_s, u"x"_s, u"x"_s, u"x"_s, u"x"_s, u"x"_s, u"x"_s, true};
    fixture.editor.whileShown = [&] {
        const core::CurrentDeclaration& current = fixture.current();
        QCOMPARE(current.number, second);
        for (const QString& text : {current.internalNumber, current.description, current.ctc, current.officialDate,
                                    current.expiryDate, current.enabled}) {
            QCOMPARE(text, QString());
        }
        QVERIFY(!current.saved);
    };
    fixture.whileLoaded([&] {
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Return);
    });
    QCOMPARE(fixture.editor.shown, 1);
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::unsavedEditLeavesTheRow()
{
    Fixture fixture;
    fixture.editor.whileShown = [&] { fixture.current().description = u"Otra"_s; };
    fixture.whileLoaded([&] {
        const QStringList before = fixture.row(0);
        pressKey(Qt::Key_Return);
        QCOMPARE(fixture.row(0), before);
        QCOMPARE(fixture.colors(0), subItemsIn({}));
    });
}

void tst_frmDIT::savedEditShowsInTheRow_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<QString>("enabled");
    QTest::addColumn<quint32>("color");
    QTest::newRow("enabled stays black") << 1 << u"1"_s << Black;
    QTest::newRow("red becomes black") << 0 << u"1"_s << Black;
    QTest::newRow("disabled becomes red") << 1 << u"0"_s << Red;
    QTest::newRow("anything but 1 is red") << 1 << u"2"_s << Red;
}

void tst_frmDIT::savedEditShowsInTheRow()
{
    QFETCH(const int, before);
    QFETCH(const QString, enabled);
    QFETCH(const quint32, color);
    Fixture fixture({declaration(first, before), declaration(second, before)});
    fixture.editor.whileShown = [&] {
        fixture.current() = {first, u"N"_s, u"D"_s, u"C"_s, u"5-3-24"_s, u"2026-03-05"_s, enabled, true};
    };
    fixture.whileLoaded([&] {
        const QStringList other = fixture.row(1);
        const QList<QColor> otherColors = fixture.colors(1);
        pressKey(Qt::Key_Return);
        QCOMPARE(fixture.row(0), (QStringList{first, u"N"_s, u"D"_s, u"C"_s, u"5-3-24"_s, u"2026-03-05"_s, enabled}));
        QCOMPARE(fixture.colors(0), subItemsIn(colorFromOle(color)));
        QCOMPARE(fixture.row(1), other);
        QCOMPARE(fixture.colors(1), otherColors);
    });
    QVERIFY(fixture.events().isEmpty()); // the row is not read again
}

void tst_frmDIT::savedEditIsReadableUnderADarkTheme()
{
    Fixture fixture({declaration(first, 0)});
    QPalette dark = fixture.list().palette();
    dark.setColor(QPalette::Base, QColor(40, 40, 40));
    fixture.list().setPalette(dark);
    fixture.editor.whileShown = [&] {
        fixture.current().enabled = u"1"_s;
        fixture.current().saved = true;
    };
    fixture.whileLoaded([&] {
        pressKey(Qt::Key_Return);
        QCOMPARE(fixture.colors(0), subItemsIn({}));
    });
}

void tst_frmDIT::errorOfTheEditorIsReported()
{
    Fixture fixture;
    fixture.editor.whileShown = [] { throw RuntimeError(400, u"D"_s); };
    fixture.whileLoaded([] { pressKey(Qt::Key_Return); });
    QCOMPARE(fixture.boxes(), QList{critical(u"D\r\n\r\n400 - Sección [oVELDRA.frmDIT.lp_ModificarDIT]"_s)});
}

void tst_frmDIT::enterGoesByItsModifiers_data()
{
    using Modifiers = Qt::KeyboardModifiers;
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Modifiers>("modifiers");
    QTest::addColumn<bool>("edits");
    QTest::addColumn<bool>("renumbers");
    QTest::newRow("Enter") << Qt::Key_Return << Modifiers() << true << false;
    QTest::newRow("keypad Enter") << Qt::Key_Enter << Modifiers(Qt::KeypadModifier) << true << false;
    QTest::newRow("Ctrl") << Qt::Key_Return << Modifiers(Qt::ControlModifier) << false << true;
    QTest::newRow("Ctrl, keypad") << Qt::Key_Enter << (Qt::ControlModifier | Qt::KeypadModifier) << false << true;
    QTest::newRow("Shift") << Qt::Key_Return << Modifiers(Qt::ShiftModifier) << false << false;
    QTest::newRow("Alt") << Qt::Key_Return << Modifiers(Qt::AltModifier) << false << false;
    QTest::newRow("Ctrl+Shift") << Qt::Key_Return << (Qt::ControlModifier | Qt::ShiftModifier) << false << false;
}

void tst_frmDIT::enterGoesByItsModifiers()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    QFETCH(const bool, edits);
    QFETCH(const bool, renumbers);
    Fixture fixture;
    fixture.whileLoaded([&] { pressKey(key, modifiers); });
    QCOMPARE(fixture.editor.shown, edits ? 1 : 0);
    QCOMPARE(fixture.component.prompts.texts(), renumbers ? QStringList{confirmRenumbering} : QStringList());
}

// --- renumbering ---

void tst_frmDIT::renumberingAsksThenProposesTheCurrentNumber()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        fixture.component.prompts.willAnswer(core::AnswerYes);
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Return, Qt::ControlModifier);
    });
    QCOMPARE(fixture.boxes(), QList{question(confirmRenumbering)});
    const RecordedPrompts::InputBox input{u"Ingrese el nuevo Número de Declaración"_s, u"Modificar"_s, second};
    QCOMPARE(fixture.component.prompts.inputBoxes(), QList{input});
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::renumberingEndsWithNo()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        fixture.component.prompts.willAnswer(core::AnswerNo);
        pressKey(Qt::Key_Return, Qt::ControlModifier);
    });
    QCOMPARE(fixture.boxes(), QList{question(confirmRenumbering)});
    QVERIFY(fixture.component.prompts.inputBoxes().isEmpty());
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::renumberingEndsWithABlankAnswer_data()
{
    QTest::addColumn<QString>("answer");
    QTest::newRow("cancelled or empty") << QString();
    QTest::newRow("blanks") << u"   "_s;
    QTest::newRow("more blanks than a number has characters") << QString(20, u' ');
}

void tst_frmDIT::renumberingEndsWithABlankAnswer()
{
    QFETCH(const QString, answer);
    Fixture fixture;
    fixture.renumber(answer, [] {});
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::numbersOf17And18Characters_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("17") << u"24073IT14000009Z7"_s << true;
    QTest::newRow("18") << u"24073IT14000009Z78"_s << false;
    QTest::newRow("17 and a blank") << u"24073IT14000009Z7 "_s << false;
    QTest::newRow("18 with an apostrophe") << u"24073IT14000009Z7'"_s << false;
}

void tst_frmDIT::numbersOf17And18Characters()
{
    QFETCH(const QString, number);
    QFETCH(const bool, accepted);
    Fixture fixture;
    fixture.renumber(number, [&] { QCOMPARE(fixture.numbers(), (QStringList{accepted ? number : first, second})); });
    QCOMPARE(fixture.boxes().constLast(), accepted ? information(renumbered) : exclamation(tooLong));
    QCOMPARE(fixture.events().isEmpty(), !accepted);
}

void tst_frmDIT::numberThatExistsIsRefused_data()
{
    QTest::addColumn<QString>("query");
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("a header's") << headerHasNumber << checks.mid(0, 1);
    QTest::newRow("a discharge's, without a header") << dischargeHasNumber << checks.mid(0, 2);
}

void tst_frmDIT::numberThatExistsIsRefused()
{
    QFETCH(const QString, query);
    QFETCH(const QStringList, statements);
    Fixture fixture;
    fixture.inputs->willGiveRows(query, {u"INTDCL"_s}, {{fresh}});
    bool burstInBox = true;
    fixture.component.prompts.whileShown = [&] { burstInBox = fixture.inputs->burstIsOpen(); };
    fixture.renumber(fresh, [&] { QCOMPARE(fixture.numbers(), (QStringList{first, second})); });
    QCOMPARE(fixture.boxes().mid(1),
             QList{exclamation(u"El número de daclaración 24073IT14000009Z ya existe en la base de datos."_s)});
    QVERIFY(!burstInBox);
    QCOMPARE(fixture.events(), QStringList{u"<begin>"_s} + statements + QStringList{u"<end>"_s});
}

void tst_frmDIT::currentNumberIsRefusedAsExisting()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select INTDCL from INTINS where INTDCL = '24073IT14000001A'"_s, {u"INTDCL"_s},
                                 {{first}});
    fixture.renumber(first, [] {});
    QCOMPARE(fixture.boxes().constLast(),
             exclamation(u"El número de daclaración 24073IT14000001A ya existe en la base de datos."_s));
    QCOMPARE(fixture.inputs->statements().size(), 1);
}

void tst_frmDIT::numberOfArticlesAloneEndsSilently()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(articleHasNumber, {u"INTDCL"_s}, {{fresh}});
    fixture.renumber(fresh, [&] { QCOMPARE(fixture.numbers(), (QStringList{first, second})); });
    QCOMPARE(fixture.boxes().size(), 1);
    QCOMPARE(fixture.inputs->statements(), checks);
}

void tst_frmDIT::renumberingIsOneBurstEndedBeforeTheBox()
{
    Fixture fixture;
    QStringList atTheQuestions;
    QStringList atTheEnd;
    fixture.component.prompts.whileShown = [&] {
        (fixture.events().isEmpty() ? atTheQuestions : atTheEnd).append(fixture.numbers().constFirst());
        QVERIFY(!fixture.inputs->burstIsOpen());
    };
    fixture.renumber(fresh, [&] { QCOMPARE(fixture.numbers(), (QStringList{fresh, second})); });
    QCOMPARE(atTheQuestions.last(), first);
    QCOMPARE(atTheEnd, QStringList{fresh}); // the row has the new number before its box
    QCOMPARE(fixture.boxes(), (QList{question(confirmRenumbering), information(renumbered)}));
    QCOMPARE(fixture.events(), QStringList{u"<begin>"_s} + checks + updates + QStringList{u"<commit>"_s});
}

void tst_frmDIT::successNeedsAHeaderAndAnArticle_data()
{
    QTest::addColumn<int>("discharges");
    QTest::addColumn<int>("articles");
    QTest::addColumn<int>("headers");
    QTest::addColumn<bool>("success");
    QTest::newRow("all") << 3 << 2 << 1 << true;
    QTest::newRow("no discharges") << 0 << 2 << 1 << true;
    QTest::newRow("no articles") << 3 << 0 << 1 << false;
    QTest::newRow("header gone") << 3 << 2 << 0 << false;
    QTest::newRow("nothing") << 0 << 0 << 0 << false;
}

void tst_frmDIT::successNeedsAHeaderAndAnArticle()
{
    QFETCH(const int, discharges);
    QFETCH(const int, articles);
    QFETCH(const int, headers);
    QFETCH(const bool, success);
    Fixture fixture;
    fixture.inputs->willAffect(updates.at(0), discharges);
    fixture.inputs->willAffect(updates.at(1), articles);
    fixture.inputs->willAffect(updates.at(2), headers);
    fixture.renumber(fresh, [&] { QCOMPARE(fixture.numbers(), (QStringList{success ? fresh : first, second})); });
    QCOMPARE(fixture.boxes().mid(1), success ? QList{information(renumbered)} : QList<RecordedPrompts::Box>());
    QCOMPARE(fixture.events(), QStringList{u"<begin>"_s} + checks + updates + QStringList{u"<commit>"_s});
}

void tst_frmDIT::failureAtEveryStatementOfTheRenumbering_data()
{
    QTest::addColumn<int>("failing");
    for (int statement = 1; statement <= 6; ++statement) {
        QTest::addRow("statement %d", statement) << statement;
    }
}

void tst_frmDIT::failureAtEveryStatementOfTheRenumbering()
{
    QFETCH(const int, failing);
    Fixture fixture;
    bool burstInBox = true;
    fixture.component.prompts.whileShown = [&] { burstInBox = fixture.inputs->burstIsOpen(); };
    fixture.whileLoaded([&] {
        fixture.inputs->failStatement(failing, RuntimeError(-2147467259, u"Bloqueada."_s));
        fixture.component.prompts.willAnswer(core::AnswerYes);
        fixture.component.prompts.willType(fresh);
        pressKey(Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(fixture.numbers(), (QStringList{first, second}));
    });
    QVERIFY(!burstInBox);
    QCOMPARE(fixture.boxes().mid(1),
             QList{critical(u"Bloqueada.\r\n\r\n-2147467259 - Seccion [oVELDRA.frmDIT.lp_ModificarDCL]"_s)});
    QCOMPARE(fixture.events(),
             QStringList{u"<begin>"_s} + (checks + updates).mid(0, failing) + QStringList{u"<end>"_s});
}

void tst_frmDIT::failureAtCommitIsNoSuccess()
{
    Fixture fixture;
    fixture.inputs->failCommit(RuntimeError(-2147467259, u"Disco lleno."_s));
    fixture.renumber(fresh, [&] { QCOMPARE(fixture.numbers(), (QStringList{first, second})); });
    QCOMPARE(fixture.boxes().mid(1),
             QList{critical(u"Disco lleno.\r\n\r\n-2147467259 - Seccion [oVELDRA.frmDIT.lp_ModificarDCL]"_s)});
}

void tst_frmDIT::newNumberWithApostropheWritesNothing_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("alone") << u"'"_s;
    QTest::newRow("inside") << u"24073IT'4000009Z"_s;
    QTest::newRow("doubled") << u"24073IT''000009Z"_s;
    QTest::newRow("a condition") << u"' or '1'='1"_s;
}

void tst_frmDIT::newNumberWithApostropheWritesNothing()
{
    QFETCH(const QString, number);
    Fixture fixture;
    fixture.renumber(number, [&] { QCOMPARE(fixture.numbers(), (QStringList{first, second})); });
    QCOMPARE(fixture.boxes().size(), 2);
    const RecordedPrompts::Box report = fixture.boxes().constLast();
    QCOMPARE(report.style, core::CriticalBox);
    QVERIFY(report.text.startsWith(u"Error de sintaxis"));
    QVERIFY(report.text.endsWith(u"\r\n\r\n-2147217900 - Seccion [oVELDRA.frmDIT.lp_ModificarDCL]"));
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::oldNumberWithApostropheWritesNothing()
{
    Fixture fixture({declaration(u"x' or '1'='1"_s)});
    fixture.renumber(fresh, [] {});
    QVERIFY(
        fixture.boxes().constLast().text.endsWith(u"\r\n\r\n-2147217900 - Seccion [oVELDRA.frmDIT.lp_ModificarDCL]"));
    QCOMPARE(fixture.inputs->statements(), checks);
}

void tst_frmDIT::realBoxesOfTheRenumbering()
{
    const Fixture fixture; // only its connection is used
    core::ScreenPrompts prompts;
    MemorySettings settings;
    const FixedClock clock;
    core::Component component(prompts, settings, clock);
    component.state.g_DBINS.assign(fixture.inputs);
    frmDIT form(component, {});
    BoxDriver user;
    user.press(Qt::Key_Return); // Sí
    user.type(fresh);
    user.press(Qt::Key_Return);
    QVERIFY(whileOpen(form, [] { pressKey(Qt::Key_Return, Qt::ControlModifier); }));
    QVERIFY(user.done());
    QCOMPARE(user.texts(), (QStringList{confirmRenumbering, u"Ingrese el nuevo Número de Declaración"_s, renumbered}));
    QCOMPARE(user.seen().at(0).icon, QMessageBox::Question);
    QCOMPARE(user.seen().at(1).title, u"Modificar"_s);
    QCOMPARE(user.seen().at(1).proposal, first);
    QCOMPARE(user.seen().at(2).icon, QMessageBox::Information);
    QCOMPARE(fixture.inputs->statements().mid(1), checks + updates);
}

// --- the articles ---

void tst_frmDIT::f6OpensTheArticlesOfTheSelectedRow()
{
    Fixture fixture;
    QString shown;
    fixture.articleListing.whileShown = [&] { shown = fixture.current().number; };
    fixture.whileLoaded([&] {
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_F6);
    });
    QCOMPARE(shown, second);
    QCOMPARE(fixture.editor.shown, 0);
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::errorOfTheArticleListingIsReported()
{
    Fixture fixture;
    fixture.articleListing.whileShown = [] { throw RuntimeError(400, u"D"_s); };
    fixture.whileLoaded([] { pressKey(Qt::Key_F6); });
    QCOMPARE(fixture.boxes(), QList{critical(u"D\r\n\r\n400 - Sección [oVELDRA.frmDIT.lp_Ver_DITART]"_s)});
}

// --- deleting ---

void tst_frmDIT::deletionAsksAndNoDeletesNothing()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        fixture.component.prompts.willAnswer(core::AnswerNo);
        pressKey(Qt::Key_Delete);
        QCOMPARE(fixture.numbers(), (QStringList{first, second}));
    });
    QCOMPARE(fixture.boxes(), QList{question(u"Confirma eliminar la DIT 24073IT14000001A"_s)});
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmDIT::deletionIsOneBurstAfterTheQuestion()
{
    Fixture fixture;
    fixture.inputs->willAffect(deletes.at(1), 0); // neither articles
    fixture.inputs->willAffect(deletes.at(2), 0); // nor discharges are needed
    QStringList atTheQuestion{u"?"_s};
    fixture.component.prompts.whileShown = [&] { atTheQuestion = fixture.events(); };
    fixture.erase([&] { QCOMPARE(fixture.numbers(), QStringList{second}); });
    QVERIFY(atTheQuestion.isEmpty());
    QCOMPARE(fixture.events(), QStringList{u"<begin>"_s} + deletes + QStringList{u"<commit>"_s});
    QCOMPARE(fixture.boxes().size(), 1);
}

void tst_frmDIT::deletionSelectsTheNextRow()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        fixture.component.prompts.willAnswer(core::AnswerYes);
        fixture.component.prompts.willAnswer(core::AnswerYes);
        QVERIFY(fixture.form.f_EliminarDIT());
        QCOMPARE(fixture.list().currentRow(), 0);
        pressKey(Qt::Key_Delete);
        QCOMPARE(fixture.list().rowCount(), 0);
        QVERIFY(!fixture.form.f_EliminarDIT());
    });
    QCOMPARE(fixture.boxes().size(), 2);
}

void tst_frmDIT::deletionOfAHeaderThatIsGone()
{
    Fixture fixture;
    fixture.inputs->willAffect(deletes.at(0), 0);
    bool burstInBox = true;
    fixture.component.prompts.whileShown = [&] { burstInBox = fixture.inputs->burstIsOpen(); };
    fixture.erase([&] { QCOMPARE(fixture.numbers(), (QStringList{first, second})); });
    QVERIFY(!burstInBox);
    QCOMPARE(fixture.boxes().mid(1), QList{exclamation(u"No pudo eliminar el interno 24073IT14000001A"_s)});
    QCOMPARE(fixture.inputs->statements(), deletes.mid(0, 1));
}

void tst_frmDIT::failureAtEveryStatementOfTheDeletion_data()
{
    QTest::addColumn<int>("failing");
    for (int statement = 1; statement <= 3; ++statement) {
        QTest::addRow("statement %d", statement) << statement;
    }
}

void tst_frmDIT::failureAtEveryStatementOfTheDeletion()
{
    QFETCH(const int, failing);
    Fixture fixture;
    bool burstInBox = true;
    fixture.component.prompts.whileShown = [&] { burstInBox = fixture.inputs->burstIsOpen(); };
    fixture.whileLoaded([&] {
        fixture.inputs->failStatement(failing, RuntimeError(-2147467259, u"Bloqueada."_s));
        fixture.component.prompts.willAnswer(core::AnswerYes);
        QVERIFY(!fixture.form.f_EliminarDIT());
        QCOMPARE(fixture.numbers(), (QStringList{first, second}));
    });
    QVERIFY(!burstInBox);
    QCOMPARE(fixture.boxes().mid(1),
             QList{critical(u"Bloqueada.\r\n\r\n-2147467259 - Sección [oVELDRA.frmDIT.f_EliminarDIT]"_s)});
    QCOMPARE(fixture.events(), QStringList{u"<begin>"_s} + deletes.mid(0, failing) + QStringList{u"<end>"_s});
}

void tst_frmDIT::failureAtCommitKeepsTheRow()
{
    Fixture fixture;
    fixture.inputs->failCommit(RuntimeError(-2147467259, u"Disco lleno."_s));
    fixture.erase([&] { QCOMPARE(fixture.numbers(), (QStringList{first, second})); });
    QCOMPARE(fixture.boxes().mid(1),
             QList{critical(u"Disco lleno.\r\n\r\n-2147467259 - Sección [oVELDRA.frmDIT.f_EliminarDIT]"_s)});
}

void tst_frmDIT::numberWithApostropheDeletesNothing()
{
    Fixture fixture({declaration(u"x' or '1'='1"_s)});
    fixture.erase([&] { QCOMPARE(fixture.list().rowCount(), 1); });
    QVERIFY(fixture.boxes().constLast().text.endsWith(u"\r\n\r\n-2147217900 - Sección [oVELDRA.frmDIT.f_EliminarDIT]"));
    QVERIFY(fixture.events().isEmpty());
}

// --- pointer and keys ---

void tst_frmDIT::pointerIsBusyWhileWorkingOnly()
{
    Fixture fixture;
    const auto isBusy = [] { return QGuiApplication::overrideCursor() != nullptr; };
    fixture.whileLoaded([&] {
        QList<bool> inStatements;
        QList<bool> inBoxes;
        fixture.component.state.g_DBINS.assign(
            std::make_shared<InterruptedConexionDB>(fixture.inputs, [&](int) { inStatements.append(isBusy()); }));
        fixture.component.prompts.whileShown = [&] { inBoxes.append(isBusy()); };
        for (int box = 0; box < 2; ++box) {
            fixture.component.prompts.willAnswer(core::AnswerYes);
        }
        fixture.component.prompts.willType(fresh);
        fixture.form.Cargar_INTINS();
        fixture.form.lp_ModificarDCL();
        fixture.list().selectRow(1);
        fixture.form.f_EliminarDIT();
        QCOMPARE(inStatements, QList<bool>(1 + 6 + 3, true));
        QCOMPARE(inBoxes, QList<bool>(4, false));
        QVERIFY(!isBusy());
    });
}

void tst_frmDIT::listKeysOnAnEmptyListDoNothing()
{
    Fixture fixture(QList<FakeConexionDB::Row>{});
    fixture.whileLoaded([&] {
        QVERIFY(fixture.list().hasFocus());
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_Return, Qt::ControlModifier);
        pressKey(Qt::Key_F6);
        pressKey(Qt::Key_Delete);
        QVERIFY(fixture.form.isVisible());
    });
    QVERIFY(fixture.boxes().isEmpty());
    QVERIFY(fixture.events().isEmpty());
    QCOMPARE(fixture.editor.made, 0);
    QCOMPARE(fixture.articleListing.made, 0);
}

void tst_frmDIT::listKeysBelongToTheList()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        for (const auto& name : {u"txtDESDE"_s, u"txtHASTA"_s}) {
            fixture.box(name).setFocus();
            pressKey(Qt::Key_F6);
            pressKey(Qt::Key_Delete);
            QCOMPARE(fixture.box(name).text(), QString()); // the box's own: it deletes the selected text
            pressKey(Qt::Key_Return, Qt::ControlModifier);
            QVERIFY(fixture.box(name).hasFocus());
        }
    });
    QVERIFY(fixture.boxes().isEmpty());
    QVERIFY(fixture.events().isEmpty());
    QCOMPARE(fixture.editor.shown + fixture.articleListing.shown, 0);
}

void tst_frmDIT::dialogsAreMadeOnceAndKept()
{
    Fixture fixture;
    QCOMPARE(fixture.editor.made + fixture.articleListing.made, 0);
    for (int opening = 0; opening < 2; ++opening) {
        fixture.whileLoaded([&] {
            for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F6, Qt::Key_Return, Qt::Key_F6}) {
                pressKey(key);
            }
        });
    }
    QCOMPARE(fixture.editor.made, 1);
    QCOMPARE(fixture.articleListing.made, 1);
    QCOMPARE(fixture.editor.shown, 4);
    QCOMPARE(fixture.articleListing.shown, 4);
}

QTEST_MAIN(tst_frmDIT)
#include "tst_frmDIT.moc"
