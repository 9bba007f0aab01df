#include "catalog/CatalogFormTest.h"
#include "catalog/EditorChecks.h"
#include "catalog/ScriptedProductEditor.h"
#include "controls/ListContents.h"

#include <core/ErrorReport.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

const QString showQuery = u"select * from PRD where CATNRO = 'MOTORES' and PRDNRO = 'PM001'"_s;
const QString savingKeys = u"[F11] Grabar - [ESC] Salir"_s;

} // namespace

class tst_frmAgregarProducto : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
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

    void operationsOfTheNomenclature();
    void realBoxOverTheEditor();
};

// --- the screen ---

void tst_frmAgregarProducto::controlsHaveTheirNamesAndTexts()
{
    const ProductEditor editor;
    QCOMPARE(editor.form.objectName(), u"frmAgregarProducto"_s);
    QCOMPARE(editor.form.windowTitle(), u"Relación Insumo - Producto"_s);
    QCOMPARE(editor.label(u"Label1"_s).text(), u"Relación Insumo - Producto"_s);
    const QStringList captions{u"Código de Producto"_s, u"Descripción"_s,   u"Posición"_s,
                               u"Multiplicador"_s,      u"Unidad"_s,        u"Precio unitario"_s,
                               u"Kilo Neto Unitario"_s, u"Pais de Origen"_s};
    for (qsizetype field = 0; field < boxNames.size(); ++field) {
        QVERIFY2(editor.isCaptioned(boxNames.at(field), captions.at(field)), qPrintable(boxNames.at(field)));
    }
    QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"SUFIJOS"_s);
    QCOMPARE(editor.label(u"lbInsumo"_s).text(), u"INS [Agregar Insumo]"_s);
    QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
    QCOMPARE(columnTitles(editor.list()), (QStringList{u"Insumo"_s, u"Descripcion"_s, u"Cantidad"_s}));
}

void tst_frmAgregarProducto::openingToAddIsEmpty()
{
    ScriptedProductEditor editor;
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.values(), QStringList(8, QString(u""_s)));
        QVERIFY(editor.text(u"txtPRDNRO"_s).hasFocus());
        QVERIFY(editor.boxesAreEnabled(true));
        QVERIFY(!editor.list().isVisible());
        QVERIFY(!editor.label(u"lbInsumo"_s).isVisible());
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"SUFIJOS"_s);
    }));
    QVERIFY(editor.inputs->statements().isEmpty());
}

void tst_frmAgregarProducto::everyOpeningStartsFromTheDesignState()
{
    ScriptedProductEditor editor;
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
    ScriptedProductEditor editor(true);
    QVERIFY(whileOpen(editor.form, [&] { QCOMPARE(tabOrder(9), boxNames + QStringList{u"lstVInsumos"_s}); }));
}

void tst_frmAgregarProducto::enterWalksTheTextBoxesWithTheirColors()
{
    ScriptedProductEditor editor;
    QVERIFY(whileOpen(editor.form, [&] {
        for (const QString& name : boxNames) {
            checkEnterLeaves(editor.text(name));
        }
    }));
}

void tst_frmAgregarProducto::escapeClosesAtAnyTime()
{
    ScriptedProductEditor editor;
    QVERIFY(!whileOpen(editor.form, [] { pressKey(Qt::Key_Escape); }));
    QVERIFY(!editor.state().productSaved);
    QVERIFY(!editor.afterSaving([] { pressKey(Qt::Key_Escape); }));
    QVERIFY(editor.state().productSaved);
}

void tst_frmAgregarProducto::longTextsDoNotWidenTheForm()
{
    ScriptedProductEditor usual(true);
    QVERIFY(whileOpen(usual.form, [] {}));
    for (const auto& suffixes : {u"AB01-ZC(000150)-"_s.repeated(100), QString(10'000, u'x')}) {
        ScriptedProductEditor editor(true);
        editor.inputs->willGiveRows(
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
    ScriptedProductEditor editor(true);
    editor.state().productSaved = true;
    QVERIFY(whileOpen(editor.form, [&] {
        QVERIFY(!editor.state().productSaved);
        QCOMPARE(editor.values(), (QStringList{u"PM001"_s, u"Motor"_s, u"8501.10.19.000A"_s, numbers.at(0), u"07"_s,
                                               numbers.at(1), numbers.at(2), u"200"_s}));
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), u"ZC(000150)-"_s);
        QVERIFY(editor.list().isVisible());
        QVERIFY(!editor.label(u"lbInsumo"_s).isVisible());
        QCOMPARE(editor.list().rowCount(), 2);
        QCOMPARE(rowTexts(editor.list(), 0), (QStringList{u"AC-1"_s, u"Chapa"_s, numbers.at(3)}));
        QCOMPARE(editor.label(u"lbTeclas"_s).text(), savingKeys);
    }));
    QCOMPARE(editor.inputs->statements(), (QStringList{showQuery, listOfPM001}));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::nullFieldsAreShownEmpty()
{
    ScriptedProductEditor editor(true);
    editor.inputs->willGiveRows(showQuery, productColumns, {QVariantList(10)});
    editor.inputs->willGiveRows(listOfPM001, inputColumns, {QVariantList(3)});
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.values(), (QStringList{{}, {}, {}, {}, {}, u"00,0000"_s, u"00,000"_s, {}}));
        QCOMPARE(editor.label(u"lbSufijos"_s).text(), QString());
        QCOMPARE(rowTexts(editor.list(), 0), (QStringList{u""_s, u""_s, u""_s}));
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
    ScriptedProductEditor editor(true);
    if (what == 0) {
        editor.inputs->willNotOpen(showQuery, RuntimeError(-2147467259, u"Bloqueada"_s));
    } else if (what == 1) {
        editor.inputs->willGiveRows(showQuery, productColumns);
    } else {
        editor.inputs->willNotOpen(listOfPM001, RuntimeError(-2147467259, u"Bloqueada"_s));
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
        ScriptedProductEditor editor(true);
        (inCatalog ? editor.state().currentCatalog : editor.state().currentProduct) = u"x' or '1'='1"_s;
        QVERIFY(whileOpen(editor.form, [] {}));
        QCOMPARE(editor.boxes().size(), 1);
        QVERIFY(editor.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n-2147217900"_s + showPlace)));
        QVERIFY(editor.inputs->statements().isEmpty());
    }
}

// --- the position ---

void tst_frmAgregarProducto::enterReplacesCommasInThePositionAndMovesOn()
{
    for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
        ScriptedProductEditor editor;
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
        QVERIFY(editor.inputs->statements().isEmpty());
        QVERIFY(editor.boxes().isEmpty());
    }
    ScriptedProductEditor left;
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
    ScriptedProductEditor editor;
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
    ScriptedProductEditor editor;
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
    ScriptedProductEditor editor(modify);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.inputs->clear();
        editor.state().productSaved = true;
        editor.fillIn();
        for (const QString& name : empty) {
            editor.text(name).clear();
        }
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(message, core::ExclamationBox)});
        QVERIFY(!editor.state().productSaved);
    }));
    QVERIFY(editor.inputs->statements().isEmpty());
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
        ScriptedProductEditor editor(modify);
        QVERIFY(whileOpen(editor.form, [&] {
            editor.inputs->clear();
            editor.fillIn();
            editor.text(u"txtPRDMUL"_s).setText(multiplier);
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.boxes(),
                     QList{box(u"El campo MULTIPLICADOR debe ser numérico y mayor a cero"_s, core::ExclamationBox)});
            QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), multiplier);
        }));
        QVERIFY(editor.inputs->statements().isEmpty());
    }
}

void tst_frmAgregarProducto::failedCheckRewritesNothing()
{
    ScriptedProductEditor editor;
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
        ScriptedProductEditor editor(modify);
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            editor.text(u"txtPRDMUL"_s).setText(typed);
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), modify ? modified : typed);
        }));
        const QString expected =
            modify ? u",PRDMUL = '%1',"_s.arg(modified) : u"'8501.10.19.000A','%1','07'"_s.arg(added);
        QVERIFY2(editor.inputs->statements().constLast().contains(expected),
                 qPrintable(editor.inputs->statements().constLast()));
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
        ScriptedProductEditor editor(modify);
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
        QVERIFY2(editor.inputs->statements().constLast().contains(price.arg(written.at(0))),
                 qPrintable(editor.inputs->statements().constLast()));
        QVERIFY2(editor.inputs->statements().constLast().contains(weight.arg(written.at(1))),
                 qPrintable(editor.inputs->statements().constLast()));
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
    ScriptedProductEditor editor;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(
            {u" pm1 "_s, u"Caño Ñ"_s, u"8501,10"_s, numbers.at(0), u"07"_s, numbers.at(1), numbers.at(2), u"200"_s});
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(
        editor.inputs->statements(),
        (QStringList{u"select count(PRDNRO) as Total from PRD where CATNRO = 'MOTORES' and PRDNRO = ' pm1 '"_s,
                     u"insert into PRD (PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU,CATNRO) values ("
                     "' pm1 ','Caño Ñ','8501,10','%1','07','%2','AB01-','200','%3','MOTORES')"_s.arg(
                         numbers.at(0), numbers.at(1), numbers.at(2))}));
    QCOMPARE(editor.state().currentProduct, u" pm1 "_s);
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::addingByKeyboardOnly()
{
    ScriptedProductEditor editor;
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
    QVERIFY2(editor.inputs->statements().constLast().endsWith(
                 u"'PM7','Bomba','8413.70','1','07','10,5','AB01-','203','2','MOTORES')"),
             qPrintable(editor.inputs->statements().constLast()));
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
    ScriptedProductEditor editor(true);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.inputs->clear();
        editor.text(u"txtPRDDES"_s).setText(u"Tablero Ñ"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.inputs->statements(),
             (QStringList{u"select count(PRDNRO) as Total from PRD where CATNRO = 'MOTORES' and PRDNRO = 'PM001'"_s,
                          u"update PRD set PRDDES = 'Tablero Ñ',PRDNCM = '8501.10.19.000A',PRDMUL = '%1',PRDUNI = "
                          "'07',PRDPRE = cdbl('%2'),PRDSUF = 'AB01-',PRDPAI = '200',PRDKGU = cdbl('%3') where CATNRO = "
                          "'MOTORES' and PRDNRO = 'PM001'"_s.arg(multiplier, numbers.at(1), numbers.at(2))}));
    QCOMPARE(editor.text(u"txtPRDMUL"_s).text(), multiplier);
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProducto::addingAnExistingCodeIsRefused()
{
    ScriptedProductEditor editor;
    editor.inputs->willGiveRows(countQuery + u" from"_s, {u"Total"_s}, {{1}});
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn();
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"El codigo de producto ya existe en este catalogo"_s, core::CriticalBox)});
        QVERIFY(!editor.list().isVisible());
        QVERIFY(editor.boxesAreEnabled(true));
        QCOMPARE(editor.text(u"txtPRDPRE"_s).text(), u"03,5000"_s); // rewritten already
    }));
    QCOMPARE(editor.inputs->statements().size(), 1);
    QVERIFY(editor.collaborators.checks.isEmpty());
    QVERIFY(!editor.state().productSaved);
}

void tst_frmAgregarProducto::modifyingAMissingProductIsRefused()
{
    ScriptedProductEditor editor(true);
    editor.inputs->willGiveRows(countQuery + u" from"_s, {u"Total"_s}, {{0}});
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"El codigo de producto no existe en este catalogo"_s, core::CriticalBox)});
        QVERIFY(editor.boxesAreEnabled(true));
    }));
    QVERIFY(editor.inputs->statements().filter(u"update"_s).isEmpty());
    QVERIFY(editor.collaborators.checks.isEmpty());
    QVERIFY(!editor.state().productSaved);
}

void tst_frmAgregarProducto::suffixCheckGetsPositionAndCaption()
{
    ScriptedProductEditor adding;
    QVERIFY(adding.afterSaving([&] { QCOMPARE(adding.label(u"lbSufijos"_s).text(), u"AB01-"_s); }));
    QCOMPARE(adding.collaborators.checks,
             (QList<std::tuple<QString, QString, int>>{{u"8501.10.19.000A"_s, u"SUFIJOS"_s, 0}}));

    ScriptedProductEditor modifying(true);
    QVERIFY(modifying.afterSaving([&] { QCOMPARE(modifying.label(u"lbSufijos"_s).text(), u"AB01-"_s); }));
    QCOMPARE(modifying.collaborators.checks,
             (QList<std::tuple<QString, QString, int>>{{u"8501.10.19.000A"_s, u"ZC(000150)-"_s, 0}}));
}

void tst_frmAgregarProducto::emptySuffixTextIsStored()
{
    for (const bool modify : {false, true}) {
        ScriptedProductEditor editor(modify);
        editor.collaborators.suffixes.clear();
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            pressKey(Qt::Key_F11);
            QCOMPARE(editor.label(u"lbSufijos"_s).text(), QString());
            QVERIFY(editor.state().productSaved);
        }));
        const QString expected = modify ? u"PRDSUF = '',"_s : u"'3,5','','200'"_s;
        QVERIFY(editor.inputs->statements().constLast().contains(expected));
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
    ScriptedProductEditor editor(modify);
    for (const int affected : {0, 1}) {
        editor.inputs->willAffect(u"insert into PRD ("_s, affected);
        editor.inputs->willAffect(u"update PRD set"_s, affected);
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
    ScriptedProductEditor editor(modify);
    editor.inputs->willNotOpen(countQuery + u" from"_s, RuntimeError(3709));
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
    ScriptedProductEditor editor(modify);
    editor.inputs->failStatement(failing, RuntimeError(-2147467259, u"Servidor perdido"_s));
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
    ScriptedProductEditor editor(modify);
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
        QVERIFY(editor.inputs->statements().filter(verb).isEmpty());
    }
    QVERIFY(!editor.state().productSaved);
}

void tst_frmAgregarProducto::hostileTextsStayInTheirLiterals()
{
    for (const QString& hostile : hostileTexts()) {
        ScriptedProductEditor editor;
        QVERIFY(whileOpen(editor.form, [&] {
            editor.fillIn();
            editor.text(u"txtPRDDES"_s).setText(hostile);
            pressKey(Qt::Key_F11);
        }));
        const QString expected =
            u"insert into PRD (PRDNRO,PRDDES,PRDNCM,PRDMUL,PRDUNI,PRDPRE,PRDSUF,PRDPAI,PRDKGU,CATNRO) values ('PM001','"_s +
            hostile + u"','8501.10.19.000A','1','07','3,5','AB01-','200','1,25','MOTORES')"_s;
        QCOMPARE(editor.inputs->statements().constLast(), expected);
    }
}

void tst_frmAgregarProducto::noWriteScopeIsOpenWhileABoxIs()
{
    ScriptedProductEditor editor;
    editor.inputs->willAffect(u"insert into PRD ("_s, 0);
    checkNoWriteScopeWhileABoxIsOpen(editor, [&editor] { editor.fillIn(); });
}

void tst_frmAgregarProducto::missingConnectionIsReported()
{
    ScriptedProductEditor editor(true);
    editor.state().g_DBINS.release();
    QVERIFY(whileOpen(editor.form, [] {}));
    QCOMPARE(editor.boxes(), QList{box(core::errorText(RuntimeError(3709), showPlace), core::CriticalBox)});
}

// --- operations of the nomenclature ---

void tst_frmAgregarProducto::operationsOfTheNomenclature()
{
    ScriptedProductEditor editor;
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
    checkRealBoxOfAnEmptySave<frmAgregarProducto>(u"Debe ingresar el Codigo de Producto"_s);
}

QTEST_MAIN(tst_frmAgregarProducto)
#include "tst_frmAgregarProducto.moc"
