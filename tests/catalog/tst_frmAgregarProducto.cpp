#include "catalog/InputsStore.h"
#include "catalog/NextDialog.h"
#include "controls/OpenForm.h"
#include "doubles/BoxDriver.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"
#include "nomenclature/StoredTariff.h"

#include <catalog/frmAgregarInsumo.h>
#include <catalog/frmAgregarProducto.h>
#include <controls/ListView.h>
#include <controls/OleColor.h>
#include <core/ErrorReport.h>

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using catalog::frmAgregarProducto;

namespace {

const QString addPlace = u" - Seccion [oVELDRA.frmAgregarProducto.lp_Agregar_Producto] ::"_s;
const QString modifyPlace = u" - Seccion [oVELDRA.frmAgregarProducto.lp_Modificar_Producto] ::"_s;
const QString showPlace = u" - Seccion [oVELDRA.frmAgregarProducto.lp_Mostrar_Producto] ::"_s;
const QString listPlace = u" - Seccion [oVELDRA.frmAgregarProducto.lp_InsumosLista]"_s;
const QString deletePlace = u" - Seccion [oVELDRA.frmAgregarProducto.lp_EliminarInsumo]"_s;

const QString showQuery = u"select * from PRD where CATNRO = 'MOTORES' and PRDNRO = 'PM001'"_s;
const QString countQuery = u"select count(PRDNRO) as Total"_s;
const QString listQuery = u"select ARTNRO, RPADES, RIPCAN from RIP"_s;
const QString listOfPM001 = u"select ARTNRO, RPADES, RIPCAN from RIP where PRDNRO = 'PM001' and CATNRO = 'MOTORES'"_s;

const QString savingKeys = u"[F11] Grabar - [ESC] Salir"_s;
const QString inputKeys = u"[INS] Agregar Insumos - [ESC] Salir"_s;

const QStringList boxNames{u"txtPRDNRO"_s, u"txtPRDDES"_s, u"txtPRDNCM"_s, u"txtPRDMUL"_s,
                           u"txtPRDUNI"_s, u"txtPRDPRE"_s, u"txtPRDKGU"_s, u"txtPRDPAI"_s};
const QStringList productColumns{u"CATNRO"_s, u"PRDNRO"_s, u"PRDDES"_s, u"PRDNCM"_s, u"PRDMUL"_s,
                                 u"PRDUNI"_s, u"PRDPRE"_s, u"PRDSUF"_s, u"PRDPAI"_s, u"PRDKGU"_s};
const QStringList inputColumns{u"ARTNRO"_s, u"RPADES"_s, u"RIPCAN"_s};

RecordedPrompts::Box box(const QString& text, core::BoxStyle style, const QString& title = {})
{
    return {text, style, title};
}

/// What was asked of the collaborators, and what they answer.
struct Collaborators
{
    QStringList searched;                            ///< the texts that positions were searched by
    QString chosen;                                  ///< the position that is chosen then
    QList<std::tuple<QString, QString, int>> checks; ///< position, suffixes and mode
    QString suffixes = u"AB01-"_s;
    std::function<void()> duringCheck = [] {};
    QStringList edited;        ///< the inputs that the input editor was opened for, "+" to add
    bool inputIsSaved = false; ///< by the input editor
};

/// The product editor in the catalog MOTORES, with doubles for the screens that it opens.
class Editor
{
public:
    Editor() { component.state.currentCatalog = u"MOTORES"_s; }

    [[nodiscard]] QLineEdit& text(const QString& name) const { return *form.findChild<QLineEdit*>(name); }
    [[nodiscard]] QLabel& label(const QString& name) const { return *form.findChild<QLabel*>(name); }
    [[nodiscard]] ListView& list() const
    {
        return *static_cast<ListView*>(form.findChild<QTreeView*>(u"lstVInsumos"_s));
    }
    [[nodiscard]] QStringList row(int row) const
    {
        return {list().text(row, 0), list().text(row, 1), list().text(row, 2)};
    }
    [[nodiscard]] core::SharedState& state() { return component.state; }
    [[nodiscard]] const QList<RecordedPrompts::Box>& boxes() const { return component.prompts.boxes(); }

    void modify(const QString& product)
    {
        state().productModify = true;
        state().currentProduct = product;
    }

    /// Fills the boxes in, in the order of boxNames.
    void fillIn(const QStringList& values) const
    {
        for (qsizetype field = 0; field < values.size(); ++field) {
            text(boxNames.at(field)).setText(values.at(field));
        }
    }
    void fillIn() const
    {
        fillIn({u"PM001"_s, u"Motor"_s, u"8501.10.19.000A"_s, u"1"_s, u"07"_s, u"3,5"_s, u"1,25"_s, u"200"_s});
    }
    [[nodiscard]] QStringList values() const
    {
        QStringList values;
        for (const QString& name : boxNames) {
            values.append(text(name).text());
        }
        return values;
    }
    [[nodiscard]] bool boxesAreEnabled(bool enabled) const
    {
        return std::all_of(boxNames.begin(), boxNames.end(),
                           [&](const QString& name) { return text(name).isEnabled() == enabled; });
    }

    Collaborators collaborators;
    TestComponent component;
    frmAgregarProducto form{component,
                            {.searchPosition =
                                 [this](const QString& text) {
                                     collaborators.searched.append(state().chosenPosition + text);
                                     state().chosenPosition = collaborators.chosen;
                                 },
                             .verifySuffixes =
                                 [this](const QString& position, const QString& suffixes, int mode) {
                                     collaborators.checks.append({position, suffixes, mode});
                                     collaborators.duringCheck();
                                     return collaborators.suffixes;
                                 },
                             .editInput =
                                 [this] {
                                     collaborators.edited.append(state().inputModify ? state().currentInput
                                                                                     : u"+"_s + state().currentInput);
                                     collaborators.edited.append(state().inputSaved ? u"saved"_s : u"clear"_s);
                                     state().inputSaved = collaborators.inputIsSaved;
                                 }}};
};

/// Over a scripted connection on which everything succeeds unless a test says otherwise.
class Scripted : public Editor
{
public:
    explicit Scripted(bool modifying = false)
    {
        state().g_DBINS.assign(db);
        db->willGiveRows(countQuery, {u"Total"_s}, {{modifying ? 1 : 0}});
        db->willGiveRows(u"select * from PRD"_s, productColumns,
                         {{u"MOTORES"_s, u"PM001"_s, u"Motor"_s, u"8501.10.19.000A"_s, 2.5, u"07"_s, 3.5,
                           u"ZC(000150)-"_s, u"200"_s, 1.25}});
        db->willGiveRows(listQuery, inputColumns, {{u"AC-1"_s, u"Chapa"_s, 1.5}, {u"AC-2"_s, u"Bulon"_s, 12}});
        db->willAffect(u"insert into PRD"_s, 1);
        db->willAffect(u"update PRD"_s, 1);
        db->willAffect(u"delete from RIP"_s, 1);
        if (modifying) {
            modify(u"PM001"_s);
        }
    }

    /// Opens the editor, saves the product, and lets `actions` go on from there.
    bool afterSaving(const std::function<void()>& actions)
    {
        return whileOpen(form, [&] {
            if (!state().productModify) {
                fillIn();
            }
            pressKey(Qt::Key_F11);
            QVERIFY(boxes().isEmpty());
            QVERIFY(state().productSaved);
            db->clear();
            actions();
        });
    }

    std::shared_ptr<FakeConexionDB> db = std::make_shared<FakeConexionDB>();
};

/// Over a real database.
struct Stored : Editor
{
    catalog::InputsStore store{component.state};
};

/// The editor with the component's own screens, over real databases.
struct OwnScreens
{
    OwnScreens()
    {
        component.state.currentCatalog = u"MOTORES"_s;
        component.state.g_DBNCM.assign(tariff.db);
    }

    [[nodiscard]] ListView& list() const
    {
        return *static_cast<ListView*>(form.findChild<QTreeView*>(u"lstVInsumos"_s));
    }

    TestComponent component;
    catalog::InputsStore store{component.state};
    nomenclature::StoredTariff tariff;
    frmAgregarProducto form{component};
};

} // namespace

class tst_frmAgregarProducto : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void controlsHaveTheirNamesAndTexts();
    void openingToAddIsEmpty();
    void everyOpeningStartsFromTheDesignState();
    void tabOrderIsReadingOrder();
    void enterWalksTheTextBoxesWithTheirColors();
    void escapeClosesAtAnyTime();
    void longTextsDoNotWidenTheForm();

    void productIsShown_data();
    void productIsShown();
    void nullFieldsAreShownEmpty();
    void showingFails_data();
    void showingFails();
    void apostropheInTheCurrentCodesIsReported();

    void enterReplacesCommasInThePositionAndMovesOn();
    void f6SearchesThePosition_data();
    void f6SearchesThePosition();
    void f6ElsewhereDoesNothing();

    void checksInTheirOrder_data();
    void checksInTheirOrder();
    void multiplierOfZeroIsRefused_data();
    void multiplierOfZeroIsRefused();
    void failedCheckRewritesNothing();
    void multiplierIsWritten_data();
    void multiplierIsWritten();
    void priceAndWeightAreRewritten_data();
    void priceAndWeightAreRewritten();

    void addingWritesTheStatementLetterForLetter_data();
    void addingWritesTheStatementLetterForLetter();
    void addingByKeyboardOnly();
    void modifyingWritesTheStatementLetterForLetter_data();
    void modifyingWritesTheStatementLetterForLetter();
    void addingAnExistingCodeIsRefused();
    void modifyingAMissingProductIsRefused();
    void suffixCheckGetsPositionAndCaption();
    void emptySuffixTextIsStored();
    void nothingWrittenIsTold_data();
    void nothingWrittenIsTold();
    void countWithoutRecordset_data();
    void countWithoutRecordset();
    void failureAtEveryStatement_data();
    void failureAtEveryStatement();
    void apostropheInAnyTextIsReported_data();
    void apostropheInAnyTextIsReported();
    void hostileTextsStayInTheirLiterals();
    void noWriteScopeIsOpenWhileABoxIs();
    void missingConnectionIsReported();

    void afterSavingTheInputsAreMaintained_data();
    void afterSavingTheInputsAreMaintained();
    void beforeSavingTheInputKeysDoNothing_data();
    void beforeSavingTheInputKeysDoNothing();
    void afterSavingF11DoesNothing();
    void changedCodeShowsTheInputsOfThatProduct();
    void shiftInsertStillPastesBeforeSaving();

    void insertOpensTheInputEditor_data();
    void insertOpensTheInputEditor();
    void enterOpensTheInputEditorForTheSelectedInput_data();
    void enterOpensTheInputEditorForTheSelectedInput();
    void emptyListIgnoresEnterAndDelete();
    void deletingAsksWithItsMisspeltTitle();
    void deletingRunsOneStatementAndReloads();
    void deletingFails_data();
    void deletingFails();
    void listThatCannotBeLoadedKeepsTheRowsBefore();
    void inputsAreShownInTheGivenOrder();

    void operationsOfTheNomenclature();
    void realBoxOverTheEditor();

    void storeAddsAndModifies_data();
    void storeAddsAndModifies();
    void storeKeepsOneProductPerCodeAndCatalog();
    void priceOfLettersIsStoredAsZero();
    void productDeletedByAnotherSeatWhileEdited();
    void productAddedByAnotherSeatDuringTheSuffixCheck();
    void storeTakesLongTexts();
    void deletingAnInputRemovesExactlyOneRow();

    void inputsAreMaintainedInTheRealEditor();
    void positionIsSearchedAndSuffixesAreEntered();
    void cancelledSuffixesAreStoredEmpty();
};

void tst_frmAgregarProducto::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_frmAgregarProducto::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- the screen ---

void tst_frmAgregarProducto::controlsHaveTheirNamesAndTexts()
{
    const Editor editor;
    QCOMPARE(editor.form.objectName(), u"frmAgregarProducto"_s);
    QCOMPARE(editor.form.windowTitle(), u"Relación Insumo - Producto"_s);
    QCOMPARE(editor.label(u"Label1"_s).text(), u"Relación Insumo - Producto"_s);
    const QStringList captions{u"Código de Producto"_s, u"Descripción"_s,   u"Posición"_s,
                               u"Multiplicador"_s,      u"Unidad"_s,        u"Precio unitario"_s,
                               u"Kilo Neto Unitario"_s, u"Pais de Origen"_s};
    const auto allLabels = editor.form.findChildren<QLabel*>();
    for (qsizetype field = 0; field < boxNames.size(); ++field) {
        const QLineEdit& line = editor.text(boxNames.at(field));
        QCOMPARE(line.accessibleName(), captions.at(field));
        const bool labelled = std::any_of(allLabels.begin(), allLabels.end(), [&](const QLabel* label) {
            return label->text() == captions.at(field) && label->buddy() == &line;
        });
        QVERIFY2(labelled, qPrintable(boxNames.at(field)));
    }
    QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"SUFIJOS"_s);
    QCOMPARE(editor.label(u"lbInsumo"_s).text(), u"INS [Agregar Insumo]"_s);
    QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
    QStringList titles;
    for (int column = 0; column < editor.list().model()->columnCount(); ++column) {
        titles.append(editor.list().model()->headerData(column, Qt::Horizontal).toString());
    }
    QCOMPARE(titles, (QStringList{u"Insumo"_s, u"Descripcion"_s, u"Cantidad"_s}));
}

void tst_frmAgregarProducto::openingToAddIsEmpty()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.values(), QStringList(8, QString(u""_s)));
        QVERIFY(editor.text(u"txtPRDNRO"_s).hasFocus());
        QVERIFY(editor.boxesAreEnabled(true));
        QVERIFY(!editor.list().isVisible());
        QVERIFY(!editor.label(u"lbInsumo"_s).isVisible());
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"SUFIJOS"_s);
    }));
    QVERIFY(editor.db->statements().isEmpty());
}

void tst_frmAgregarProducto::everyOpeningStartsFromTheDesignState()
{
    Scripted editor;
    QVERIFY(editor.afterSaving([&] { editor.form.lp_InsumosLista(u"PM001"_s, u"MOTORES"_s); }));
    QCOMPARE(editor.list().rowCount(), 2);
    editor.state().currentProduct.clear();
    editor.state().productSaved = false;
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.values(), QStringList(8, QString(u""_s)));
        QVERIFY(editor.boxesAreEnabled(true));
        QVERIFY(editor.text(u"txtPRDNRO"_s).hasFocus());
        QCOMPARE(editor.text(u"txtPRDDES"_s).palette().color(QPalette::Base), colorFromOle(16777215));
        QVERIFY(!editor.list().isVisible());
        QCOMPARE(editor.list().rowCount(), 0);
        QVERIFY(!editor.label(u"lbInsumo"_s).isVisible());
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"SUFIJOS"_s);
        QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
        pressKey(Qt::Key_Insert);
        QVERIFY(editor.collaborators.edited.isEmpty());
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"Debe ingresar el Codigo de Producto"_s, core::ExclamationBox)});
    }));
}

void tst_frmAgregarProducto::tabOrderIsReadingOrder()
{
    Scripted editor(true);
    QVERIFY(whileOpen(editor.form, [&] {
        QStringList order;
        for (int step = 0; step < 9; ++step) {
            order.append(QApplication::focusWidget()->objectName());
            pressKey(Qt::Key_Tab);
        }
        QCOMPARE(order, boxNames + QStringList{u"lstVInsumos"_s});
    }));
}

void tst_frmAgregarProducto::enterWalksTheTextBoxesWithTheirColors()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        for (const QString& name : boxNames) {
            const QLineEdit& line = editor.text(name);
            QVERIFY2(line.hasFocus(), qPrintable(name));
            QCOMPARE(line.palette().color(QPalette::Base), colorFromOle(12648384));
            pressKey(Qt::Key_Return);
            QCOMPARE(line.palette().color(QPalette::Base), colorFromOle(16777215));
        }
    }));
}

void tst_frmAgregarProducto::escapeClosesAtAnyTime()
{
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [] { pressKey(Qt::Key_Escape); }));
    QVERIFY(!editor.state().productSaved);
    QVERIFY(!editor.afterSaving([] { pressKey(Qt::Key_Escape); }));
    QVERIFY(editor.state().productSaved);
}

void tst_frmAgregarProducto::longTextsDoNotWidenTheForm()
{
    Scripted usual(true);
    QVERIFY(whileOpen(usual.form, [] {}));
    for (const auto& suffixes : {u"AB01-ZC(000150)-"_s.repeated(100), QString(10'000, u'x')}) {
        Scripted editor(true);
        editor.db->willGiveRows(
            showQuery, productColumns,
            {{u"M"_s, u"P"_s, u"Ñ"_s.repeated(255), u"8501"_s, 1, u"07"_s, 1, suffixes, u"1"_s, 1}});
        QVERIFY(whileOpen(editor.form, [&] {
            QCOMPARE(editor.label(u"lbSufijos"_s).text(), suffixes);
            QCOMPARE(editor.label(u"lbSufijos"_s).toolTip(), suffixes);
            QCOMPARE(editor.form.size(), usual.form.size());
            QCOMPARE(editor.text(u"txtPRDDES"_s).text().size(), 255);
            QCOMPARE(editor.text(u"txtPRDDES"_s).cursorPosition(), 0);
        }));
    }
}

// --- showing ---

void tst_frmAgregarProducto::productIsShown_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("numbers");
    QTest::newRow("es_AR") << u"es_AR"_s << QStringList{u"2,5"_s, u"03,5000"_s, u"01,250"_s, u"01,50000000"_s};
    QTest::newRow("en_US") << u"en_US"_s << QStringList{u"2.5"_s, u"03.5000"_s, u"01.250"_s, u"01.50000000"_s};
}

void tst_frmAgregarProducto::productIsShown()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, numbers);
    QLocale::setDefault(QLocale(locale));
    Scripted editor(true);
    editor.state().productSaved = true;
    QVERIFY(whileOpen(editor.form, [&] {
        QVERIFY(!editor.state().productSaved);
        QCOMPARE(editor.values(), (QStringList{u"PM001"_s, u"Motor"_s, u"8501.10.19.000A"_s, numbers.at(0), u"07"_s,
                                               numbers.at(1), numbers.at(2), u"200"_s}));
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"ZC(000150)-"_s);
        QVERIFY(editor.list().isVisible());
        QVERIFY(!editor.label(u"lbInsumo"_s).isVisible());
        QCOMPARE(editor.list().rowCount(), 2);
        QCOMPARE(editor.row(0), (QStringList{u"AC-1"_s, u"Chapa"_s, numbers.at(3)}));
        QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
    }));
    QCOMPARE(editor.db->statements(), (QStringList{showQuery, listOfPM001}));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::nullFieldsAreShownEmpty()
{
    Scripted editor(true);
    editor.db->willGiveRows(showQuery, productColumns, {QVariantList(10)});
    editor.db->willGiveRows(listOfPM001, inputColumns, {QVariantList(3)});
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.values(), (QStringList{{}, {}, {}, {}, {}, u"00,0000"_s, u"00,000"_s, {}}));
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), QString());
        QCOMPARE(editor.row(0), (QStringList{u""_s, u""_s, u""_s}));
    }));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::showingFails_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QString>("text");
    QTest::newRow("product cannot be opened") << 0 << u"Bloqueada\r\n\r\n-2147467259"_s + showPlace;
    QTest::newRow("product is gone") << 1 << core::errorText(RuntimeError(3021), showPlace);
    QTest::newRow("inputs cannot be opened") << 2 << u"Bloqueada\r\n\r\n-2147467259"_s + listPlace;
}

void tst_frmAgregarProducto::showingFails()
{
    QFETCH(const int, what);
    QFETCH(const QString, text);
    Scripted editor(true);
    if (what == 0) {
        editor.db->willNotOpen(showQuery, RuntimeError(-2147467259, u"Bloqueada"_s));
    } else if (what == 1) {
        editor.db->willGiveRows(showQuery, productColumns);
    } else {
        editor.db->willNotOpen(listOfPM001, RuntimeError(-2147467259, u"Bloqueada"_s));
    }
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.boxes(), QList{box(text, core::CriticalBox)});
        QCOMPARE(editor.list().isVisible(), what == 2);
        QCOMPARE(editor.text(u"txtPRDNRO"_s).text(), what == 2 ? u"PM001"_s : QString());
        pressKey(Qt::Key_F11); // the form is not deaf
        QCOMPARE(editor.state().productSaved, what == 2);
    }));
}

void tst_frmAgregarProducto::apostropheInTheCurrentCodesIsReported()
{
    for (const bool inCatalog : {false, true}) {
        Scripted editor(true);
        (inCatalog ? editor.state().currentCatalog : editor.state().currentProduct) = u"x' or '1'='1"_s;
        QVERIFY(whileOpen(editor.form, [] {}));
        QCOMPARE(editor.boxes().size(), 1);
        QVERIFY(editor.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n-2147217900"_s + showPlace)));
        QVERIFY(editor.db->statements().isEmpty());
    }
}

// --- the position ---

void tst_frmAgregarProducto::enterReplacesCommasInThePositionAndMovesOn()
{
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        Scripted editor;
        QVERIFY(whileOpen(editor.form, [&] {
            editor.text(u"txtPRDNCM"_s).setFocus();
            typeText(u"8471,30,12"_s);
            pressKey(enter, enter == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);
            QCOMPARE(editor.text(u"txtPRDNCM"_s).text(), u"8471.30.12"_s);
            QVERIFY(editor.text(u"txtPRDMUL"_s).hasFocus());
            typeText(u"1,5"_s);
            pressKey(enter);
            QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), u"1,5"_s); // nowhere else
        }));
        QVERIFY(editor.db->statements().isEmpty());
        QVERIFY(editor.boxes().isEmpty());
    }
    Scripted left;
    QVERIFY(whileOpen(left.form, [&] {
        left.text(u"txtPRDNCM"_s).setFocus();
        typeText(u"8471,30"_s);
        pressKey(Qt::Key_Tab);
        QCOMPARE(left.text(u"txtPRDNCM"_s).text(), u"8471,30"_s);
    }));
}

void tst_frmAgregarProducto::f6SearchesThePosition_data()
{
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<QString>("left");
    QTest::newRow("chosen") << u"8471.30.12.000A"_s << u"8471.30.12.000A"_s;
    QTest::newRow("left without choosing") << QString() << u"8471.30"_s;
}

void tst_frmAgregarProducto::f6SearchesThePosition()
{
    QFETCH(const QString, chosen);
    QFETCH(const QString, left);
    Scripted editor;
    editor.collaborators.chosen = chosen;
    editor.state().chosenPosition = u"from an earlier search"_s;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.text(u"txtPRDNCM"_s).setFocus();
        typeText(u"8471,30"_s);
        pressKey(Qt::Key_F6);
        QCOMPARE(editor.collaborators.searched, QStringList{u"8471.30"_s});
        QCOMPARE(editor.text(u"txtPRDNCM"_s).text(), left);
        QVERIFY(editor.text(u"txtPRDNCM"_s).hasFocus());
    }));
}

void tst_frmAgregarProducto::f6ElsewhereDoesNothing()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_F6);
        QVERIFY(editor.collaborators.searched.isEmpty());
    }));
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_F6);
        QVERIFY(editor.collaborators.searched.isEmpty());
    }));
}

// --- checks ---

void tst_frmAgregarProducto::checksInTheirOrder_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<QStringList>("empty");
    QTest::addColumn<QString>("message");
    const QString code = u"Debe ingresar el Codigo de Producto"_s;
    const QString multiplier = u"El campo MULTIPLICADOR debe ser numérico y mayor a cero"_s;
    const QString position = u"Debe ingresar una posición válida"_s;
    const QString unit = u"Debe ingresar un codigo de unidad válido"_s;
    const QStringList all{u"txtPRDNRO"_s, u"txtPRDMUL"_s, u"txtPRDNCM"_s, u"txtPRDUNI"_s};
    QTest::newRow("add: code first") << false << all << code;
    QTest::newRow("add: then multiplier") << false << all.mid(1) << multiplier;
    QTest::newRow("add: then position") << false << all.mid(2) << position;
    QTest::newRow("add: then unit") << false << all.mid(3) << unit;
    QTest::newRow("modify: code first") << true << all << code;
    QTest::newRow("modify: then position") << true << all.mid(1) << position;
    QTest::newRow("modify: then multiplier") << true << QStringList{u"txtPRDMUL"_s, u"txtPRDUNI"_s} << multiplier;
    QTest::newRow("modify: then unit") << true << all.mid(3) << unit;
}

void tst_frmAgregarProducto::checksInTheirOrder()
{
    QFETCH(const bool, modify);
    QFETCH(const QStringList, empty);
    QFETCH(const QString, message);
    Scripted editor(modify);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.db->clear();
        editor.state().productSaved = true;
        editor.fillIn();
        for (const QString& name : empty) {
            editor.text(name).clear();
        }
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(message, core::ExclamationBox)});
        QVERIFY(!editor.state().productSaved);
    }));
    QVERIFY(editor.db->statements().isEmpty());
    QVERIFY(editor.collaborators.checks.isEmpty());
}

void tst_frmAgregarProducto::multiplierOfZeroIsRefused_data()
{
    QTest::addColumn<QString>("multiplier");
    QTest::newRow("0") << u"0"_s;
    QTest::newRow("00,000") << u"00,000"_s;
    QTest::newRow("letters") << u"dos"_s;
    QTest::newRow("number and letters") << u"2x"_s;
    QTest::newRow("too large for a number") << u"1E400"_s;
}

void tst_frmAgregarProducto::multiplierOfZeroIsRefused()
{
    QFETCH(const QString, multiplier);
    for (const bool modify : {false, true}) {
        Scripted editor(modify);
        QVERIFY(whileOpen(editor.form, [&] {
            editor.db->clear();
            editor.fillIn();
            editor.text(u"txtPRDMUL"_s).setText(multiplier);
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.boxes(),
                     QList{box(u"El campo MULTIPLICADOR debe ser numérico y mayor a cero"_s, core::ExclamationBox)});
            QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), multiplier);
        }));
        QVERIFY(editor.db->statements().isEmpty());
    }
}

void tst_frmAgregarProducto::failedCheckRewritesNothing()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn({u"PM001"_s, {}, u"8501"_s, u"1"_s, {}, u"x"_s, u"y"_s, {}});
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.text(u"txtPRDPRE"_s).text(), u"x"_s);
        QCOMPARE(editor.text(u"txtPRDKGU"_s).text(), u"y"_s);
    }));
}

void tst_frmAgregarProducto::multiplierIsWritten_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("modified");
    QTest::newRow("negative") << u"es_AR"_s << u"-2"_s << u"-2"_s << u"-02,000"_s;
    QTest::newRow("comma") << u"es_AR"_s << u"1,25"_s << u"1,25"_s << u"01,250"_s;
    QTest::newRow("point") << u"en_US"_s << u"1.25"_s << u"1.25"_s << u"01.250"_s;
    QTest::newRow("grouped") << u"es_AR"_s << u"1.500"_s << u"1500"_s << u"1500,000"_s;
    QTest::newRow("huge") << u"es_AR"_s << u"1E20"_s << u"1E+20"_s << u"100000000000000000000,000"_s;
    QTest::newRow("smaller than can be written") << u"en_US"_s << u"0.0001"_s << u"0.0001"_s << u"00.000"_s;
}

void tst_frmAgregarProducto::multiplierIsWritten()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, typed);
    QFETCH(const QString, added);
    QFETCH(const QString, modified);
    QLocale::setDefault(QLocale(locale));
    for (const bool modify : {false, true}) {
        Scripted editor(modify);
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            editor.text(u"txtPRDMUL"_s).setText(typed);
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), modify ? modified : typed);
        }));
        const QString expected =
            modify ? u",PRDMUL = '%1',"_s.arg(modified) : u"'8501.10.19.000A','%1','07'"_s.arg(added);
        QVERIFY2(editor.db->statements().constLast().contains(expected),
                 qPrintable(editor.db->statements().constLast()));
    }
}

void tst_frmAgregarProducto::priceAndWeightAreRewritten_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("written");
    QTest::newRow("3.5") << u"en_US"_s << QStringList{u"3.5"_s, u"1.25"_s} << QStringList{u"03.5000"_s, u"01.250"_s}
                         << QStringList{u"3.5"_s, u"1.25"_s};
    QTest::newRow("comma") << u"es_AR"_s << QStringList{u"3,5"_s, u"1,25"_s} << QStringList{u"03,5000"_s, u"01,250"_s}
                           << QStringList{u"3,5"_s, u"1,25"_s};
    QTest::newRow("letters") << u"es_AR"_s << QStringList{u"gratis"_s, u"nada"_s}
                             << QStringList{u"00,0000"_s, u"00,000"_s} << QStringList{u"0"_s, u"0"_s};
    QTest::newRow("empty") << u"en_US"_s << QStringList{{}, {}} << QStringList{u"00.0000"_s, u"00.000"_s}
                           << QStringList{u"0"_s, u"0"_s};
    QTest::newRow("rounded away from zero")
        << u"es_AR"_s << QStringList{u"1,00005"_s, u"-0,1235"_s} << QStringList{u"01,0001"_s, u"-00,124"_s}
        << QStringList{u"1,0001"_s, u"-0,124"_s};
    QTest::newRow("grouped") << u"es_AR"_s << QStringList{u"1.234,5"_s, u"1.500"_s}
                             << QStringList{u"1234,5000"_s, u"1500,000"_s} << QStringList{u"1234,5"_s, u"1500"_s};
    QTest::newRow("huge") << u"es_AR"_s << QStringList{u"1E20"_s, u"-1E16"_s}
                          << QStringList{u"100000000000000000000,0000"_s, u"-10000000000000000,000"_s}
                          << QStringList{u"1E+20"_s, u"-1E+16"_s};
}

void tst_frmAgregarProducto::priceAndWeightAreRewritten()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, typed);
    QFETCH(const QStringList, shown);
    QFETCH(const QStringList, written);
    QLocale::setDefault(QLocale(locale));
    for (const bool modify : {false, true}) {
        Scripted editor(modify);
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            editor.text(u"txtPRDPRE"_s).setText(typed.at(0));
            editor.text(u"txtPRDKGU"_s).setText(typed.at(1));
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.text(u"txtPRDPRE"_s).text(), shown.at(0));
            QCOMPARE(editor.text(u"txtPRDKGU"_s).text(), shown.at(1));
        }));
        const QString price = modify ? u"PRDPRE = cdbl('%1'),"_s : u"'07','%1','AB01-'"_s;
        const QString weight = modify ? u"PRDKGU = cdbl('%1') where"_s : u"'200','%1','MOTORES')"_s;
        QVERIFY2(editor.db->statements().constLast().contains(price.arg(written.at(0))),
                 qPrintable(editor.db->statements().constLast()));
        QVERIFY2(editor.db->statements().constLast().contains(weight.arg(written.at(1))),
                 qPrintable(editor.db->statements().constLast()));
    }
}

// --- writing ---

void tst_frmAgregarProducto::addingWritesTheStatementLetterForLetter_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("numbers");
    QTest::newRow("es_AR") << u"es_AR"_s << QStringList{u"1,5"_s, u"3,5"_s, u"1,25"_s};
    QTest::newRow("en_US") << u"en_US"_s << QStringList{u"1.5"_s, u"3.5"_s, u"1.25"_s};
}

void tst_frmAgregarProducto::addingWritesTheStatementLetterForLetter()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, numbers);
    QLocale::setDefault(QLocale(locale));
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(
            {u" pm1 "_s, u"Caño Ñ"_s, u"8501,10"_s, numbers.at(0), u"07"_s, numbers.at(1), numbers.at(2), u"200"_s});
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(
        editor.db->statements(),
        (QStringList{u"select count(PRDNRO) as Total from PRD where CATNRO = 'MOTORES' and PRDNRO = ' pm1 '"_s,
                     u"insert into PRD (PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU,CATNRO) values ("
                     "' pm1 ','Caño Ñ','8501,10','%1','07','%2','AB01-','200','%3','MOTORES')"_s.arg(
                         numbers.at(0), numbers.at(1), numbers.at(2))}));
    QCOMPARE(editor.state().currentProduct, u" pm1 "_s);
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::addingByKeyboardOnly()
{
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        for (const auto& typed : {u"PM7"_s, u"Bomba"_s, u"8413,70"_s, u"1"_s, u"07"_s, u"10,5"_s, u"2"_s, u"203"_s}) {
            typeText(typed);
            pressKey(Qt::Key_Return);
        }
        pressKey(Qt::Key_F11);
        QVERIFY(editor.list().hasFocus());
        pressKey(Qt::Key_Insert);
        QCOMPARE(editor.collaborators.edited.size(), 2);
        pressKey(Qt::Key_Escape);
    }));
    QVERIFY2(editor.db->statements().constLast().endsWith(
                 u"'PM7','Bomba','8413.70','1','07','10,5','AB01-','203','2','MOTORES')"),
             qPrintable(editor.db->statements().constLast()));
}

void tst_frmAgregarProducto::modifyingWritesTheStatementLetterForLetter_data()
{
    addingWritesTheStatementLetterForLetter_data();
}

void tst_frmAgregarProducto::modifyingWritesTheStatementLetterForLetter()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, numbers);
    QLocale::setDefault(QLocale(locale));
    const QString multiplier = u"02"_s + QLocale().decimalPoint() + u"500"_s;
    Scripted editor(true);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.db->clear();
        editor.text(u"txtPRDDES"_s).setText(u"Tablero Ñ"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.db->statements(),
             (QStringList{u"select count(PRDNRO) as Total from PRD where CATNRO = 'MOTORES' and PRDNRO = 'PM001'"_s,
                          u"update PRD set PRDDES = 'Tablero Ñ',PRDNCM = '8501.10.19.000A',PRDMUL = '%1',PRDUNI = "
                          "'07',PRDPRE = cdbl('%2'),PRDSUF = 'AB01-',PRDPAI = '200',PRDKGU = cdbl('%3') where CATNRO = "
                          "'MOTORES' and PRDNRO = 'PM001'"_s.arg(multiplier, numbers.at(1), numbers.at(2))}));
    QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), multiplier);
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::addingAnExistingCodeIsRefused()
{
    Scripted editor;
    editor.db->willGiveRows(countQuery + u" from"_s, {u"Total"_s}, {{1}});
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"El codigo de producto ya existe en este catalogo"_s, core::CriticalBox)});
        QVERIFY(!editor.list().isVisible());
        QVERIFY(editor.boxesAreEnabled(true));
        QCOMPARE(editor.text(u"txtPRDPRE"_s).text(), u"03,5000"_s); // rewritten already
    }));
    QCOMPARE(editor.db->statements().size(), 1);
    QVERIFY(editor.collaborators.checks.isEmpty());
    QVERIFY(!editor.state().productSaved);
}

void tst_frmAgregarProducto::modifyingAMissingProductIsRefused()
{
    Scripted editor(true);
    editor.db->willGiveRows(countQuery + u" from"_s, {u"Total"_s}, {{0}});
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"El codigo de producto no existe en este catalogo"_s, core::CriticalBox)});
        QVERIFY(editor.boxesAreEnabled(true));
    }));
    QVERIFY(editor.db->statements().filter(u"update"_s).isEmpty());
    QVERIFY(editor.collaborators.checks.isEmpty());
    QVERIFY(!editor.state().productSaved);
}

void tst_frmAgregarProducto::suffixCheckGetsPositionAndCaption()
{
    Scripted adding;
    QVERIFY(adding.afterSaving([&] { QCOMPARE(adding.label(u"lbSufijos"_s).text(), u"AB01-"_s); }));
    QCOMPARE(adding.collaborators.checks,
             (QList<std::tuple<QString, QString, int>>{{u"8501.10.19.000A"_s, u"SUFIJOS"_s, 0}}));

    Scripted modifying(true);
    QVERIFY(modifying.afterSaving([&] { QCOMPARE(modifying.label(u"lbSufijos"_s).text(), u"AB01-"_s); }));
    QCOMPARE(modifying.collaborators.checks,
             (QList<std::tuple<QString, QString, int>>{{u"8501.10.19.000A"_s, u"ZC(000150)-"_s, 0}}));
}

void tst_frmAgregarProducto::emptySuffixTextIsStored()
{
    for (const bool modify : {false, true}) {
        Scripted editor(modify);
        editor.collaborators.suffixes.clear();
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.label(u"lbSufijos"_s).text(), QString());
            QVERIFY(editor.state().productSaved);
        }));
        const QString expected = modify ? u"PRDSUF = '',"_s : u"'3,5','','200'"_s;
        QVERIFY(editor.db->statements().constLast().contains(expected));
    }
}

void tst_frmAgregarProducto::nothingWrittenIsTold_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<QString>("message");
    QTest::newRow("add") << false << u"No se agrego ningun registro en la base de datos"_s;
    QTest::newRow("modify") << true << u"No se modifico ningun registro en la base de datos"_s;
}

void tst_frmAgregarProducto::nothingWrittenIsTold()
{
    QFETCH(const bool, modify);
    QFETCH(const QString, message);
    Scripted editor(modify);
    for (const int affected : {0, 1}) {
        editor.db->willAffect(u"insert into PRD ("_s, affected);
        editor.db->willAffect(u"update PRD set"_s, affected);
    }
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        const QString caption = editor.label(u"lbSufijos"_s).text();
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(message, core::CriticalBox)});
        QVERIFY(!editor.state().productSaved);
        QVERIFY(editor.boxesAreEnabled(true));
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), caption);
        QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
        pressKey(Qt::Key_F11); // again, and this time it is written
        QVERIFY(editor.state().productSaved);
    }));
}

void tst_frmAgregarProducto::countWithoutRecordset_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<QString>("text");
    const QString description = u"Error en crear registros\r\n\r\n-2147221504"_s;
    QTest::newRow("add") << false << description + addPlace;
    QTest::newRow("modify") << true << description + modifyPlace;
}

void tst_frmAgregarProducto::countWithoutRecordset()
{
    QFETCH(const bool, modify);
    QFETCH(const QString, text);
    Scripted editor(modify);
    editor.db->willNotOpen(countQuery + u" from"_s, RuntimeError(3709));
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(text, core::CriticalBox)});
    }));
    QVERIFY(!editor.state().productSaved);
    QVERIFY(editor.collaborators.checks.isEmpty());
}

void tst_frmAgregarProducto::failureAtEveryStatement_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<int>("failing");
    QTest::addColumn<QString>("text");
    const QString lost = u"Servidor perdido\r\n\r\n-2147467259"_s;
    const QString noRecordset = u"Error en crear registros\r\n\r\n-2147221504"_s;
    QTest::newRow("add: count") << false << 1 << noRecordset + addPlace;
    QTest::newRow("add: insert") << false << 2 << lost + addPlace;
    QTest::newRow("modify: show") << true << 1 << lost + showPlace;
    QTest::newRow("modify: list") << true << 2 << lost + listPlace;
    QTest::newRow("modify: count") << true << 3 << noRecordset + modifyPlace;
    QTest::newRow("modify: update") << true << 4 << lost + modifyPlace;
}

void tst_frmAgregarProducto::failureAtEveryStatement()
{
    QFETCH(const bool, modify);
    QFETCH(const int, failing);
    QFETCH(const QString, text);
    Scripted editor(modify);
    editor.db->failStatement(failing, RuntimeError(-2147467259, u"Servidor perdido"_s));
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        if (editor.boxes().isEmpty()) {
            pressKey(Qt::Key_F11);
            QVERIFY(!editor.state().productSaved);
            QVERIFY(editor.boxesAreEnabled(true));
            QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
        }
        QCOMPARE(editor.boxes(), QList{box(text, core::CriticalBox)});
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
        pressKey(Qt::Key_F11);
        QVERIFY(editor.state().productSaved);
        QVERIFY(editor.list().isVisible());
    }));
    QCOMPARE(editor.boxes().size(), 1);
}

void tst_frmAgregarProducto::apostropheInAnyTextIsReported_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<QString>("name");
    for (const bool modify : {false, true}) {
        for (const char* name : {"txtPRDNRO", "txtPRDDES", "txtPRDNCM", "txtPRDUNI", "txtPRDPAI", "suffixes"}) {
            QTest::addRow("%s %s", modify ? "modify" : "add", name) << modify << QString::fromLatin1(name);
        }
    }
}

void tst_frmAgregarProducto::apostropheInAnyTextIsReported()
{
    QFETCH(const bool, modify);
    QFETCH(const QString, name);
    const QString hostile = u"x'); delete from PRD where ('1'='1"_s;
    Scripted editor(modify);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        if (name == u"suffixes") {
            editor.collaborators.suffixes = hostile;
        } else {
            editor.text(name).setText(hostile);
        }
        pressKey(Qt::Key_F11);
        QVERIFY(editor.boxesAreEnabled(true));
    }));
    QCOMPARE(editor.boxes().size(), 1);
    QVERIFY(editor.boxes().constFirst().text.startsWith(u"Error de sintaxis"));
    QVERIFY(editor.boxes().constFirst().text.endsWith(
        QString(u"\r\n\r\n-2147217900"_s + (modify ? modifyPlace : addPlace))));
    for (const auto& verb : {u"insert"_s, u"update"_s, u"delete"_s}) {
        QVERIFY(editor.db->statements().filter(verb).isEmpty());
    }
    QVERIFY(!editor.state().productSaved);
}

void tst_frmAgregarProducto::hostileTextsStayInTheirLiterals()
{
    for (const auto& hostile : {u"\"x\""_s, u"x -- y"_s, u"/* x */"_s, u"%1 %2"_s, u"x; delete from PRD"_s,
                                u"\U0001F6A2 Ñandú \u202e"_s, QString(10'000, u'x')}) {
        Scripted editor;
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            editor.text(u"txtPRDDES"_s).setText(hostile);
            pressKey(Qt::Key_F11);
        }));
        const QString expected =
            u"insert into PRD (PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU,CATNRO) values ('PM001','"_s +
            hostile + u"','8501.10.19.000A','1','07','3,5','AB01-','200','1,25','MOTORES')"_s;
        QCOMPARE(editor.db->statements().constLast(), expected);
    }
}

void tst_frmAgregarProducto::noWriteScopeIsOpenWhileABoxIs()
{
    Scripted editor;
    bool openInBox = false;
    editor.component.prompts.whileShown = [&] { openInBox = openInBox || editor.db->burstIsOpen(); };
    editor.component.prompts.willAnswer(core::AnswerYes);
    editor.db->willAffect(u"insert into PRD ("_s, 0);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes().size(), 1);
    QVERIFY(!openInBox);
}

void tst_frmAgregarProducto::missingConnectionIsReported()
{
    Scripted editor(true);
    editor.state().g_DBINS.release();
    QVERIFY(whileOpen(editor.form, [] {}));
    QCOMPARE(editor.boxes(), QList{box(core::errorText(RuntimeError(3709), showPlace), core::CriticalBox)});
}

// --- from the product to its inputs ---

void tst_frmAgregarProducto::afterSavingTheInputsAreMaintained_data()
{
    QTest::addColumn<bool>("modify");
    QTest::newRow("add") << false;
    QTest::newRow("modify") << true;
}

void tst_frmAgregarProducto::afterSavingTheInputsAreMaintained()
{
    QFETCH(const bool, modify);
    Scripted editor(modify);
    QVERIFY(editor.afterSaving([&] {
        QVERIFY(editor.boxesAreEnabled(false));
        QCOMPARE(editor.label(u"lbTeclas"_s).text(), inputKeys);
        QCOMPARE(editor.label(u"lbTeclas"_s).accessibleName(), inputKeys);
        QVERIFY(editor.label(u"lbInsumo"_s).isVisible());
        QVERIFY(editor.list().isVisible());
        QVERIFY(editor.list().hasFocus());
        QVERIFY(editor.state().productSaved);
        QCOMPARE(editor.state().currentProduct, u"PM001"_s);
        QCOMPARE(editor.list().rowCount(), modify ? 2 : 0);
        for (const QString& name : boxNames) {
            const QPalette palette = editor.text(name).palette(); // it looks disabled, and can be read
            QCOMPARE(palette.color(QPalette::Disabled, QPalette::Base),
                     palette.color(QPalette::Active, QPalette::Window));
            QCOMPARE(palette.color(QPalette::Disabled, QPalette::Text),
                     palette.color(QPalette::Active, QPalette::WindowText));
        }
    }));
    QVERIFY(editor.db->statements().isEmpty());
}

void tst_frmAgregarProducto::beforeSavingTheInputKeysDoNothing_data()
{
    afterSavingTheInputsAreMaintained_data();
}

void tst_frmAgregarProducto::beforeSavingTheInputKeysDoNothing()
{
    QFETCH(const bool, modify);
    Scripted editor(modify);
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_Insert);
        if (modify) {
            editor.list().setFocus();
            QVERIFY(editor.list().hasFocus());
            QCOMPARE(editor.list().currentRow(), 0);
            for (const Qt::Key key : {Qt::Key_Insert, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete}) {
                pressKey(key);
            }
        }
    }));
    QVERIFY(editor.collaborators.edited.isEmpty());
    QVERIFY(editor.boxes().isEmpty());
    QVERIFY(editor.db->statements().filter(u"delete"_s).isEmpty());
}

void tst_frmAgregarProducto::afterSavingF11DoesNothing()
{
    Scripted editor;
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_F11);
        QVERIFY(editor.db->statements().isEmpty());
        QVERIFY(editor.state().productSaved);
    }));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::changedCodeShowsTheInputsOfThatProduct()
{
    Scripted editor(true);
    editor.db->willGiveRows(u"select ARTNRO, RPADES, RIPCAN from RIP where PRDNRO = 'PM002'"_s, inputColumns,
                            {{u"AC-9"_s, u"Tapa"_s, 1}});
    QVERIFY(whileOpen(editor.form, [&] {
        editor.text(u"txtPRDNRO"_s).setText(u"PM002"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.state().currentProduct, u"PM002"_s);
        QCOMPARE(editor.list().rowCount(), 1);
        QCOMPARE(editor.row(0).constFirst(), u"AC-9"_s);
        QVERIFY(editor.list().hasFocus());
    }));
    QVERIFY(editor.db->statements().at(3).endsWith(u"where CATNRO = 'MOTORES' and PRDNRO = 'PM002'"));
}

void tst_frmAgregarProducto::shiftInsertStillPastesBeforeSaving()
{
    Scripted editor;
    QGuiApplication::clipboard()->setText(u"PM9"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_Insert, Qt::ShiftModifier);
        QCOMPARE(editor.text(u"txtPRDNRO"_s).text(), u"PM9"_s);
    }));
}

// --- inputs ---

void tst_frmAgregarProducto::insertOpensTheInputEditor_data()
{
    QTest::addColumn<bool>("saved");
    QTest::newRow("saved") << true;
    QTest::newRow("left") << false;
}

void tst_frmAgregarProducto::insertOpensTheInputEditor()
{
    QFETCH(const bool, saved);
    Scripted editor;
    editor.collaborators.inputIsSaved = saved;
    QVERIFY(editor.afterSaving([&] {
        editor.state().inputSaved = true;
        editor.state().inputModify = true;
        editor.state().currentInput = u"from before"_s;
        pressKey(Qt::Key_Insert);
        QCOMPARE(editor.collaborators.edited, (QStringList{u"+"_s, u"clear"_s}));
        QCOMPARE(editor.db->statements(), saved ? QStringList{listOfPM001} : QStringList{});
        QCOMPARE(editor.list().rowCount(), saved ? 2 : 0);
        QVERIFY(editor.list().hasFocus());
    }));
}

void tst_frmAgregarProducto::enterOpensTheInputEditorForTheSelectedInput_data()
{
    insertOpensTheInputEditor_data();
}

void tst_frmAgregarProducto::enterOpensTheInputEditorForTheSelectedInput()
{
    QFETCH(const bool, saved);
    Scripted editor(true);
    editor.collaborators.inputIsSaved = saved;
    QVERIFY(editor.afterSaving([&] {
        editor.state().inputSaved = true;
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Enter);
        QCOMPARE(editor.collaborators.edited, (QStringList{u"AC-2"_s, u"clear"_s}));
        QCOMPARE(editor.db->statements(), saved ? QStringList{listOfPM001} : QStringList{});
    }));
}

void tst_frmAgregarProducto::emptyListIgnoresEnterAndDelete()
{
    Scripted editor;
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_Delete);
        QVERIFY(editor.collaborators.edited.isEmpty());
        QVERIFY(editor.boxes().isEmpty());
        QVERIFY(editor.db->statements().isEmpty());
    }));
}

void tst_frmAgregarProducto::deletingAsksWithItsMisspeltTitle()
{
    Scripted editor(true);
    editor.component.prompts.willAnswer(core::AnswerNo);
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.boxes(), QList{box(u"Confirma eliminar la relación con el artículo AC-1"_s, core::QuestionBox,
                                           u"Eliminar relaciósn"_s)});
        QVERIFY(editor.db->statements().isEmpty());
        QCOMPARE(editor.state().currentInput, u"AC-1"_s);
        QCOMPARE(editor.list().rowCount(), 2);
    }));
}

void tst_frmAgregarProducto::deletingRunsOneStatementAndReloads()
{
    Scripted editor(true);
    editor.component.prompts.willAnswer(core::AnswerYes);
    editor.db->willGiveRows(listOfPM001, inputColumns, {{u"AC-1"_s, u"Chapa"_s, 1}, {u"AC-2"_s, u"Bulon"_s, 1}});
    editor.db->willGiveRows(listOfPM001, inputColumns, {{u"AC-1"_s, u"Chapa"_s, 1}});
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.db->statements(),
                 (QStringList{u"delete from RIP where CATNRO = 'MOTORES' and PRDNRO = 'PM001' and ARTNRO = 'AC-2'"_s,
                              listOfPM001}));
        QCOMPARE(editor.list().rowCount(), 1);
        QCOMPARE(editor.list().currentRow(), 0);
        QVERIFY(editor.list().hasFocus());
    }));
}

void tst_frmAgregarProducto::deletingFails_data()
{
    QTest::addColumn<int>("failing");
    QTest::addColumn<QString>("text");
    QTest::newRow("delete") << 1 << u"Servidor perdido\r\n\r\n-2147467259"_s + deletePlace;
    QTest::newRow("reload") << 2 << u"Servidor perdido\r\n\r\n-2147467259"_s + listPlace;
}

void tst_frmAgregarProducto::deletingFails()
{
    QFETCH(const int, failing);
    QFETCH(const QString, text);
    Scripted editor(true);
    editor.component.prompts.willAnswer(core::AnswerYes);
    editor.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(editor.afterSaving([&] {
        editor.db->failStatement(failing, RuntimeError(-2147467259, u"Servidor perdido"_s));
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.boxes().size(), 2);
        QCOMPARE(editor.boxes().constLast(), box(text, core::CriticalBox));
        QVERIFY(editor.list().isVisible());
        QCOMPARE(editor.list().rowCount(), failing == 1 ? 2 : 0);
        pressKey(Qt::Key_Insert);
        QCOMPARE(editor.collaborators.edited.size(), 2);
    }));

    Scripted hostile(true);
    hostile.component.prompts.willAnswer(core::AnswerYes);
    hostile.db->willGiveRows(listOfPM001, inputColumns, {{u"x' or '1'='1"_s, u"D"_s, 1}});
    QVERIFY(hostile.afterSaving([&] {
        pressKey(Qt::Key_Delete);
        QVERIFY(hostile.boxes().constLast().text.endsWith(QString(u"\r\n\r\n-2147217900"_s + deletePlace)));
        QVERIFY(hostile.db->statements().isEmpty());
    }));
}

void tst_frmAgregarProducto::listThatCannotBeLoadedKeepsTheRowsBefore()
{
    Scripted editor;
    editor.db->willGiveRows(listOfPM001, inputColumns,
                            {{u"AC-1"_s, u"Chapa"_s, 1}, {u"AC-2"_s, u"Bulon"_s, QVariantMap()}});
    editor.form.lp_InsumosLista(u"PM001"_s, u"MOTORES"_s);
    QCOMPARE(editor.list().rowCount(), 1);
    QCOMPARE(editor.row(0).constFirst(), u"AC-1"_s);
    QCOMPARE(editor.boxes(), QList{box(core::errorText(RuntimeError(13), listPlace), core::CriticalBox)});
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

void tst_frmAgregarProducto::inputsAreShownInTheGivenOrder()
{
    Scripted editor;
    editor.db->willGiveRows(listOfPM001, inputColumns,
                            {{u" Z "_s, u" z "_s, -0.5}, {u"A"_s, u"<b>"_s, 1E16}, {u"A"_s, {}, 0.123456789}});
    editor.form.lp_InsumosLista(u"PM001"_s, u"MOTORES"_s);
    QCOMPARE(editor.list().rowCount(), 3);
    QCOMPARE(editor.row(0), (QStringList{u" Z "_s, u" z "_s, u"-00,50000000"_s}));
    QCOMPARE(editor.row(1), (QStringList{u"A"_s, u"<b>"_s, u"10000000000000000,00000000"_s}));
    QCOMPARE(editor.row(2), (QStringList{u"A"_s, u""_s, u"00,12345679"_s}));
}

// --- operations of the nomenclature ---

void tst_frmAgregarProducto::operationsOfTheNomenclature()
{
    Scripted editor;
    QVERIFY(!frmAgregarProducto::f_ValirNCM().isValid());
    QCOMPARE(editor.form.m_sVALSUF(u" rojo/azul ñ é "_s), u"ROJO/AZUL Ñ  "_s);
    QCOMPARE(editor.form.m_sVALCHAR(u"-"_s), u" "_s);
    QCOMPARE(editor.form.VerificarSufijos(u"8501"_s, u"AB01-"_s, 1), u"AB01-"_s);
    QCOMPARE(editor.collaborators.checks, (QList<std::tuple<QString, QString, int>>{{u"8501"_s, u"AB01-"_s, 1}}));
    QString position = u"8471,30"_s;
    QCOMPARE(editor.form.ProcesarNCM(position), QString());
    QCOMPARE(editor.boxes(), QList{box(u"Error en la estructura de la posición"_s, core::ExclamationBox)});
}

void tst_frmAgregarProducto::realBoxOverTheEditor()
{
    core::ScreenPrompts prompts;
    MemorySettings settings;
    const FixedClock clock;
    core::Component component(prompts, settings, clock);
    frmAgregarProducto form(component);
    BoxDriver user;
    user.press(Qt::Key_Return);
    QVERIFY(whileOpen(form, [] { pressKey(Qt::Key_F11); }));
    QVERIFY(user.done());
    QCOMPARE(user.seen().constFirst().text, u"Debe ingresar el Codigo de Producto"_s);
    QCOMPARE(user.seen().constFirst().icon, QMessageBox::Warning);
    QCOMPARE(user.seen().constFirst().title, u"oVELDRA"_s);
}

// --- over a real store ---

void tst_frmAgregarProducto::storeAddsAndModifies_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("numbers");
    QTest::addColumn<QString>("added");
    QTest::addColumn<QString>("modified");
    const auto row = [](const char* name, const QString& locale, const QStringList& numbers, const QString& added,
                        const QString& modified) { QTest::newRow(name) << locale << numbers << added << modified; };
    row("comma", u"es_AR"_s, {u"1,2345"_s, u"3,5"_s, u"0,125"_s}, u"1.2345|3.5|0.125"_s, u"1.235|3.5|0.125"_s);
    row("point", u"en_US"_s, {u"1.2345"_s, u"3.5"_s, u"0.125"_s}, u"1.2345|3.5|0.125"_s, u"1.235|3.5|0.125"_s);
    row("negative", u"es_AR"_s, {u"-2"_s, u"-3,5"_s, u"-1"_s}, u"-2|-3.5|-1"_s, u"-2|-3.5|-1"_s);
    row("huge", u"es_AR"_s, {u"1E20"_s, u"1E20"_s, u"1E16"_s}, u"1e+20|1e+20|1e+16"_s, u"1e+20|1e+20|1e+16"_s);
}

void tst_frmAgregarProducto::storeAddsAndModifies()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, numbers);
    QFETCH(const QString, added);
    QFETCH(const QString, modified);
    QLocale::setDefault(QLocale(locale));
    const QStringList texts{u"CATNRO"_s, u"PRDNRO"_s, u"PRDDES"_s, u"PRDNCM"_s, u"PRDUNI"_s, u"PRDSUF"_s, u"PRDPAI"_s};
    const QStringList numeric{u"PRDMUL"_s, u"PRDPRE"_s, u"PRDKGU"_s};
    Stored editor;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(
            {u"Ñ-1"_s, u"Ñandú"_s, u"8501"_s, numbers.at(0), u"07"_s, numbers.at(1), numbers.at(2), u"200"_s});
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(editor.boxes().isEmpty());
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, texts), (QStringList{u"MOTORES|Ñ-1|Ñandú|8501|07|AB01-|200"_s}));
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, numeric), QStringList{added});

    editor.modify(u"Ñ-1"_s);
    editor.collaborators.suffixes = u"SIN SUFIJOS"_s;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.text(u"txtPRDDES"_s).setText(u"Otro"_s);
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(editor.boxes().isEmpty());
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, texts),
             (QStringList{u"MOTORES|Ñ-1|Otro|8501|07|SIN SUFIJOS|200"_s}));
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, numeric), QStringList{modified});
}

void tst_frmAgregarProducto::storeKeepsOneProductPerCodeAndCatalog()
{
    Stored editor;
    editor.store.addProduct(u"MOTORES"_s, u"PM001"_s, u"Motor"_s);
    for (const auto& code : {u"PM001"_s, u"pm001"_s, u"Pm001  "_s}) {
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            editor.text(u"txtPRDNRO"_s).setText(code);
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.boxes().constLast(),
                     box(u"El codigo de producto ya existe en este catalogo"_s, core::CriticalBox));
        }));
        QVERIFY(!editor.state().productSaved);
    }
    QCOMPARE(editor.boxes().size(), 3);
    editor.state().currentCatalog = u"VALV"_s;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(editor.state().productSaved);
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, {u"CATNRO"_s, u"PRDNRO"_s}),
             (QStringList{u"MOTORES|PM001"_s, u"VALV|PM001"_s}));
}

void tst_frmAgregarProducto::priceOfLettersIsStoredAsZero()
{
    Stored editor;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        editor.text(u"txtPRDPRE"_s).setText(u"gratis"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.text(u"txtPRDPRE"_s).text(), u"00,0000"_s);
    }));
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, {u"PRDPRE"_s}), (QStringList{u"0"_s}));
}

void tst_frmAgregarProducto::productDeletedByAnotherSeatWhileEdited()
{
    Stored editor;
    editor.store.addProduct(u"MOTORES"_s, u"PM001"_s, u"Motor"_s);
    editor.modify(u"PM001"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.text(u"txtPRDDES"_s).text(), u"Motor"_s);
        QCOMPARE(editor.store.run(u"delete from PRD"_s), 1);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"El codigo de producto no existe en este catalogo"_s, core::CriticalBox)});
        QVERIFY(!editor.state().productSaved);
        QVERIFY(editor.boxesAreEnabled(true));
    }));
    QVERIFY(whileOpen(editor.form, [] {})); // and it is not there to be shown any more
    QCOMPARE(editor.boxes().constLast(), box(core::errorText(RuntimeError(3021), showPlace), core::CriticalBox));

    Stored saved;
    saved.store.addProduct(u"MOTORES"_s, u"PM001"_s, u"Motor"_s);
    saved.modify(u"PM001"_s);
    QVERIFY(whileOpen(saved.form, [&] {
        pressKey(Qt::Key_F11);
        QCOMPARE(saved.store.run(u"delete from PRD"_s), 1);
        pressKey(Qt::Key_Insert);
        QCOMPARE(saved.collaborators.edited.size(), 2);
    }));
}

void tst_frmAgregarProducto::productAddedByAnotherSeatDuringTheSuffixCheck()
{
    Stored editor;
    editor.collaborators.duringCheck = [&] { editor.store.addProduct(u"MOTORES"_s, u"pm001"_s, u"Otro"_s); };
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes().size(), 1);
        QVERIFY(editor.boxes().constFirst().text.startsWith(
            u"Los cambios solicitados en la tabla no se realizaron correctamente"));
        QVERIFY(editor.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n-2147467259"_s + addPlace)));
        QVERIFY(editor.boxesAreEnabled(true));
    }));
    QVERIFY(!editor.state().productSaved);
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, {u"PRDNRO"_s}), QStringList{u"pm001"_s});
}

void tst_frmAgregarProducto::storeTakesLongTexts()
{
    Stored editor;
    editor.collaborators.suffixes = u"AB01-"_s.repeated(400); // a memo
    const QString longest = u"Ñ"_s.repeated(255);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        editor.text(u"txtPRDDES"_s).setText(u"Ñ"_s.repeated(256));
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes().size(), 1);
        QVERIFY(editor.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n-2147467259"_s + addPlace)));
        editor.text(u"txtPRDDES"_s).setText(longest);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes().size(), 1);
    }));
    QCOMPARE(editor.store.rows(u"select * from PRD"_s, {u"PRDDES"_s, u"PRDSUF"_s}),
             QStringList{longest + u'|' + editor.collaborators.suffixes});
    editor.modify(u"pm001"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.text(u"txtPRDDES"_s).text(), longest);
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), editor.collaborators.suffixes);
    }));
}

void tst_frmAgregarProducto::deletingAnInputRemovesExactlyOneRow()
{
    Stored editor;
    editor.store.addProduct(u"MOTORES"_s, u"PM001"_s, u"Motor"_s);
    for (const auto& input : {u"AC-1"_s, u"AC-2"_s, u"ÁC-1"_s}) {
        editor.store.addRelation(u"MOTORES"_s, u"PM001"_s, input);
    }
    editor.store.addRelation(u"MOTORES"_s, u"PM002"_s, u"AC-1"_s);
    editor.store.addRelation(u"VALV"_s, u"PM001"_s, u"AC-1"_s);
    editor.modify(u"PM001"_s);
    editor.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.list().rowCount(), 3);
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.list().rowCount(), 2);
        QCOMPARE(editor.list().text(0, 0), u"AC-2"_s);
    }));
    QCOMPARE(
        editor.store.rows(u"select * from RIP"_s, {u"CATNRO"_s, u"PRDNRO"_s, u"ARTNRO"_s}),
        (QStringList{u"MOTORES|PM001|AC-2"_s, u"MOTORES|PM001|ÁC-1"_s, u"MOTORES|PM002|AC-1"_s, u"VALV|PM001|AC-1"_s}));
}

// --- with the component's own screens ---

void tst_frmAgregarProducto::inputsAreMaintainedInTheRealEditor()
{
    OwnScreens own;
    own.store.addProduct(u"MOTORES"_s, u"PM001"_s, u"Motor"_s);
    own.component.state.currentProduct = u"PM001"_s;
    own.component.state.productModify = true;
    const QString editor = u"frmAgregarInsumo"_s;
    QVERIFY(whileOpen(own.form, [&] {
        pressKey(Qt::Key_F11);
        catalog::inNextDialog(editor, [](Form&) {
            for (const auto& typed : {u"AC-1"_s, u"Chapa"_s, u"1,5"_s}) {
                typeText(typed);
                pressKey(Qt::Key_Return);
            }
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_Insert);
        catalog::returnTo(own.form);
        QCOMPARE(own.list().rowCount(), 1);
        QCOMPARE(own.list().text(0, 2), u"01,50000000"_s);
        QVERIFY(own.list().hasFocus());

        catalog::inNextDialog(editor, [](Form& form) {
            QCOMPARE(form.findChild<QLineEdit*>(u"txtARTNRO"_s)->text(), u"AC-1"_s);
            form.findChild<QLineEdit*>(u"txtRIPCAN"_s)->setText(u"2"_s);
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_Return);
        catalog::returnTo(own.form);
        QCOMPARE(own.list().text(0, 2), u"02,00000000"_s);

        catalog::inNextDialog(editor, [](Form& form) {
            QCOMPARE(form.findChild<QLineEdit*>(u"txtARTNRO"_s)->text(), QString());
            pressKey(Qt::Key_Escape);
        });
        pressKey(Qt::Key_Insert);
        catalog::returnTo(own.form);
        QCOMPARE(own.list().rowCount(), 1);

        own.component.prompts.willAnswer(core::AnswerYes);
        pressKey(Qt::Key_Delete);
        QCOMPARE(own.list().rowCount(), 0);
    }));
    QVERIFY(own.store.rows(u"select * from RIP"_s, {u"ARTNRO"_s}).isEmpty());
}

void tst_frmAgregarProducto::positionIsSearchedAndSuffixesAreEntered()
{
    OwnScreens own;
    own.tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s);
    own.tariff.addPosition(u"8471.30.19"_s, u"000"_s, u"B"_s);
    own.tariff.addRule(u"8471.  .  .   "_s, u"ZC"_s, u"Capacidad"_s);
    own.component.prompts.willType(u"150"_s);
    QVERIFY(whileOpen(own.form, [&] {
        for (const auto& typed : {u"PM1"_s, u"Portatil"_s}) {
            typeText(typed);
            pressKey(Qt::Key_Return);
        }
        typeText(u"8471,30"_s);
        catalog::inNextDialog(u"FrmPosicion"_s, [](Form&) {
            pressKey(Qt::Key_Down);
            pressKey(Qt::Key_Return);
        });
        pressKey(Qt::Key_F6);
        catalog::returnTo(own.form);
        QCOMPARE(own.form.findChild<QLineEdit*>(u"txtPRDNCM"_s)->text(), u"8471.30.19.000B"_s);
        QVERIFY(own.form.findChild<QLineEdit*>(u"txtPRDNCM"_s)->hasFocus());
        catalog::inNextDialog(u"FrmPosicion"_s, [](Form&) { pressKey(Qt::Key_Escape); });
        pressKey(Qt::Key_F6);
        catalog::returnTo(own.form);
        QCOMPARE(own.form.findChild<QLineEdit*>(u"txtPRDNCM"_s)->text(), u"8471.30.19.000B"_s);
        pressKey(Qt::Key_Return);
        typeText(u"1"_s);
        pressKey(Qt::Key_Return);
        typeText(u"07"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(own.form.findChild<QLabel*>(u"lbSufijos"_s)->text(), u"ZC(000150)-"_s);
    }));
    // A whole position is too long to search by; the caption of a new product is no suffix text.
    QCOMPARE(own.component.prompts.texts(),
             (QStringList{u"Posición no encontrada."_s,
                          u"Se encontro diferencias entre los Sufijos de Subitem y el nomenclador."_s}));
    QCOMPARE(own.store.rows(u"select * from PRD"_s, {u"PRDNRO"_s, u"PRDNCM"_s, u"PRDSUF"_s}),
             QStringList{u"PM1|8471.30.19.000B|ZC(000150)-"_s});
    QString position = u"8471,30,12,000A"_s;
    QCOMPARE(own.form.ProcesarNCM(position), u"8471.30.12.000A"_s);
    QCOMPARE(position, u"8471.30.12.000A"_s);
}

void tst_frmAgregarProducto::cancelledSuffixesAreStoredEmpty()
{
    OwnScreens own;
    own.tariff.addRule(u"84  .  .  .   "_s, u"ZC"_s, u"Capacidad"_s);
    own.component.prompts.willAnswer(core::AnswerYes); // to cancel, after the input box was left empty
    QVERIFY(whileOpen(own.form, [&] {
        for (const auto& typed : {u"PM1"_s, u"Portatil"_s, u"8471.30.12.000A"_s, u"1"_s, u"07"_s}) {
            typeText(typed);
            pressKey(Qt::Key_Return);
        }
        pressKey(Qt::Key_F11);
        QCOMPARE(own.form.findChild<QLabel*>(u"lbSufijos"_s)->text(), QString());
        QVERIFY(own.component.state.productSaved);
    }));
    QCOMPARE(own.store.rows(u"select * from PRD"_s, {u"PRDNRO"_s, u"PRDSUF"_s}), QStringList{u"PM1|"_s});
}

QTEST_MAIN(tst_frmAgregarProducto)
#include "tst_frmAgregarProducto.moc"
