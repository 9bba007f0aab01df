#include "catalog/CatalogFormTest.h"
#include "catalog/EditorChecks.h"
#include "catalog/InputEditor.h"

#include <core/ErrorReport.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

const QString countQuery = u"select count(ARTNRO)"_s;
const QString showQuery = u"select * from RIP"_s;
const QString noQuantity = u"El campo Cantidad debe ser mayor a cero o tener un valor numérico"_s;
const QString nothingWritten = u"No se pudo agregar la relacion con el insumo"_s;
const QStringList relationColumns{u"CATNRO"_s, u"PRDNRO"_s, u"ARTNRO"_s, u"RPADES"_s, u"RIPCAN"_s,
                                  u"RIPMER"_s, u"RIPPER"_s, u"TRPMER"_s, u"TRPPER"_s, u"DIPOBL"_s};

/// Over a scripted connection on which everything succeeds unless a test says otherwise.
class Scripted : public InputEditor
{
public:
    Scripted()
    {
        inputs->willGiveRows(countQuery, {u"cantidad"_s}, {{0}});
        inputs->willGiveRows(showQuery, relationColumns,
                             {{u"MOTORES"_s, u"PM001"_s, u"AC-1"_s, u"  Chapa "_s, 1.5, 5.0, 0.25, -1, 0, -1}});
        inputs->willAffect(u"insert into RIP"_s, 1);
        inputs->willAffect(u"update RIP"_s, 1);
    }

    /// How many relations the count query finds.
    void related(int count) const { inputs->willGiveRows(countQuery + u" as"_s, {u"cantidad"_s}, {{count}}); }
};

} // namespace

class tst_frmAgregarInsumo : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
    void controlsHaveTheirNamesAndTexts();
    void openingToAddShowsCatalogAndProduct();
    void everyOpeningStartsFromTheDesignState();
    void tabOrderIsReadingOrder();
    void enterWalksTheTextBoxesWithTheirColors();
    void escapeLeavesTheSavedFlagFalse();
    void longCodesDoNotWidenTheForm();

    void relationIsShown_data();
    void relationIsShown();
    void nullFieldsAreShownEmpty();
    void flagIsCheckedWhenItIsNotZero_data();
    void flagIsCheckedWhenItIsNotZero();
    void showingFails_data();
    void showingFails();
    void apostropheInTheCurrentCodesIsReported();
    void errorOfTheLoadingItself();

    void checksInTheirOrder_data();
    void checksInTheirOrder();
    void quantityOfZeroIsRefused_data();
    void quantityOfZeroIsRefused();
    void quantityIsWrittenWithEightDecimals_data();
    void quantityIsWrittenWithEightDecimals();
    void wasteAndLossThatAreNoNumbersAreZero();

    void addingWritesTheStatementLetterForLetter_data();
    void addingWritesTheStatementLetterForLetter();
    void addingByKeyboardOnly();
    void modifyingWritesTheStatementLetterForLetter_data();
    void modifyingWritesTheStatementLetterForLetter();
    void flagsAreWrittenAsMinusOneAndZero_data();
    void flagsAreWrittenAsMinusOneAndZero();
    void addingARelatedInputIsRefused();
    void modifyingAnInputWithoutRelationIsRefused();
    void nothingWrittenIsTold_data();
    void nothingWrittenIsTold();
    void savedFlagIsResetByAFailedCheck();
    void countWithoutRecordset_data();
    void countWithoutRecordset();
    void failureAtEveryStatement_data();
    void failureAtEveryStatement();
    void apostropheInAnyTextIsReported_data();
    void apostropheInAnyTextIsReported();
    void hostileTextsStayInTheirLiterals();
    void noWriteScopeIsOpenWhileABoxIs();
    void missingConnectionIsReported();
    void realBoxOverTheEditor();
};

// --- the screen ---

void tst_frmAgregarInsumo::controlsHaveTheirNamesAndTexts()
{
    const InputEditor editor;
    QCOMPARE(editor.form.objectName(), u"frmAgregarInsumo"_s);
    const QList<std::pair<QString, QString>> labels{{u"txtARTNRO"_s, u"Código de Articulo"_s},
                                                    {u"txtRPADES"_s, u"Descripción"_s},
                                                    {u"txtRIPCAN"_s, u"Cantidad"_s},
                                                    {u"txtMerma"_s, u"Merma"_s},
                                                    {u"txtPerdida"_s, u"Perdida"_s}};
    for (const auto& [name, caption] : labels) {
        QVERIFY2(editor.isCaptioned(name, caption), qPrintable(name));
    }
    QCOMPARE(editor.check(u"chMerma"_s).text(), u"en porcentaje"_s);
    QCOMPARE(editor.check(u"chPerdida"_s).text(), u"en porcentaje"_s);
    QCOMPARE(editor.check(u"chObligatorio"_s).text(), u"Establecer como obligatorio"_s);
    QCOMPARE(editor.label(u"lbTit"_s).text(), u"Agrega Insumo"_s);
    QCOMPARE(editor.label(u"lbMSJ"_s).text(), u"Genera la relación con el producto seleccionado y un insumo"_s);
    QCOMPARE(editor.label(u"Label4"_s).text(), u"Relación Insumo-Producto"_s);
    QCOMPARE(editor.label(u"Label7"_s).text(), u"[F11] - Agregar - [ESC] Cerrar"_s);
    QVERIFY(editor.labelTexts().contains(u"Producto"));
}

void tst_frmAgregarInsumo::openingToAddShowsCatalogAndProduct()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.label(u"lbTit"_s).text(), u"Relación insumo producto"_s);
        QCOMPARE(editor.label(u"lbCatalogo"_s).text(), u"MOTORES"_s);
        QCOMPARE(editor.label(u"lbProducto"_s).text(), u"PM001"_s);
        QVERIFY(editor.text(u"txtARTNRO"_s).hasFocus());
    }));
    QVERIFY(editor.inputs->statements().isEmpty());
}

void tst_frmAgregarInsumo::everyOpeningStartsFromTheDesignState()
{
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-9"_s, u"Tornillo"_s, u"2"_s, u"3"_s, u"4"_s);
        for (const auto& name : {u"chMerma"_s, u"chPerdida"_s, u"chObligatorio"_s}) {
            editor.check(name).setChecked(true);
        }
        editor.check(u"chObligatorio"_s).setFocus();
        pressKey(Qt::Key_F11);
    }));
    editor.state().currentProduct = u"PM002"_s;
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.label(u"lbProducto"_s).text(), u"PM002"_s);
        for (const auto& name : {u"txtARTNRO"_s, u"txtRPADES"_s, u"txtRIPCAN"_s, u"txtMerma"_s, u"txtPerdida"_s}) {
            QCOMPARE(editor.text(name).text(), QString());
        }
        for (const auto& name : {u"chMerma"_s, u"chPerdida"_s, u"chObligatorio"_s}) {
            QVERIFY(!editor.check(name).isChecked());
        }
        QVERIFY(editor.text(u"txtARTNRO"_s).hasFocus());
    }));
}

void tst_frmAgregarInsumo::tabOrderIsReadingOrder()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(tabOrder(8), (QStringList{u"txtARTNRO"_s, u"txtRPADES"_s, u"txtRIPCAN"_s, u"txtMerma"_s, u"chMerma"_s,
                                           u"txtPerdida"_s, u"chPerdida"_s, u"chObligatorio"_s}));
    }));
}

void tst_frmAgregarInsumo::enterWalksTheTextBoxesWithTheirColors()
{
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        for (const auto& name : {u"txtARTNRO"_s, u"txtRPADES"_s, u"txtRIPCAN"_s, u"txtMerma"_s}) {
            checkEnterLeaves(editor.text(name));
        }
        QVERIFY(editor.check(u"chMerma"_s).hasFocus());
        pressKey(Qt::Key_Tab);
        QVERIFY(editor.text(u"txtPerdida"_s).hasFocus());
        QCOMPARE(editor.text(u"txtPerdida"_s).palette().color(QPalette::Base), colorFromOle(12648384));
    }));
}

void tst_frmAgregarInsumo::escapeLeavesTheSavedFlagFalse()
{
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-9"_s, u"Tornillo"_s, u"2"_s);
        pressKey(Qt::Key_Escape);
    }));
    QVERIFY(!editor.state().inputSaved);
    QVERIFY(editor.inputs->statements().isEmpty());
}

void tst_frmAgregarInsumo::longCodesDoNotWidenTheForm()
{
    Scripted usual;
    QVERIFY(whileOpen(usual.form, [] {}));
    Scripted editor;
    editor.state().currentCatalog = u"M"_s.repeated(50);
    editor.state().currentProduct = u"<b>PM</b> "_s.repeated(5) + u"N"_s.repeated(500);
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.label(u"lbProducto"_s).text(), editor.state().currentProduct);
        QCOMPARE(editor.label(u"lbProducto"_s).textFormat(), Qt::PlainText);
        QCOMPARE(editor.form.width(), usual.form.width());
    }));
}

// --- showing ---

void tst_frmAgregarInsumo::relationIsShown_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QStringList>("numbers");
    QTest::newRow("es_AR") << u"es_AR"_s << QStringList{u"01,50000000"_s, u"5"_s, u"0,25"_s};
    QTest::newRow("en_US") << u"en_US"_s << QStringList{u"01.50000000"_s, u"5"_s, u"0.25"_s};
}

void tst_frmAgregarInsumo::relationIsShown()
{
    QFETCH(const QString, locale);
    QFETCH(const QStringList, numbers);
    QLocale::setDefault(QLocale(locale));
    Scripted editor;
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.text(u"txtARTNRO"_s).text(), u"AC-1"_s);
        QVERIFY(!editor.text(u"txtARTNRO"_s).isReadOnly());
        QCOMPARE(editor.text(u"txtRPADES"_s).text(), u"Chapa"_s);
        QCOMPARE(editor.text(u"txtRIPCAN"_s).text(), numbers.at(0));
        QCOMPARE(editor.text(u"txtMerma"_s).text(), numbers.at(1));
        QCOMPARE(editor.text(u"txtPerdida"_s).text(), numbers.at(2));
        QVERIFY(editor.check(u"chMerma"_s).isChecked());
        QVERIFY(!editor.check(u"chPerdida"_s).isChecked());
        QVERIFY(editor.check(u"chObligatorio"_s).isChecked());
    }));
    QCOMPARE(editor.inputs->statements(),
             QStringList{u"select * from RIP where CATNRO = 'MOTORES' and ARTNRO = 'AC-1' and "
                         "PRDNRO = 'PM001' and ARTNRO = 'AC-1'"_s});
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarInsumo::nullFieldsAreShownEmpty()
{
    Scripted editor;
    editor.modify(u"AC-1"_s);
    editor.inputs->willGiveRows(showQuery + u" where"_s, relationColumns, {QVariantList(10)});
    QVERIFY(whileOpen(editor.form, [&] {
        for (const auto& name : {u"txtARTNRO"_s, u"txtRPADES"_s, u"txtRIPCAN"_s, u"txtMerma"_s, u"txtPerdida"_s}) {
            QCOMPARE(editor.text(name).text(), QString());
        }
        for (const auto& name : {u"chMerma"_s, u"chPerdida"_s, u"chObligatorio"_s}) {
            QVERIFY(!editor.check(name).isChecked());
        }
    }));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarInsumo::flagIsCheckedWhenItIsNotZero_data()
{
    QTest::addColumn<QVariant>("flag");
    QTest::addColumn<bool>("checked");
    QTest::newRow("-1") << QVariant(-1) << true;
    QTest::newRow("1") << QVariant(1) << true;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("0") << QVariant(0) << false;
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("Null") << QVariant() << false;
}

void tst_frmAgregarInsumo::flagIsCheckedWhenItIsNotZero()
{
    QFETCH(const QVariant, flag);
    QFETCH(const bool, checked);
    Scripted editor;
    editor.modify(u"AC-1"_s);
    editor.inputs->willGiveRows(showQuery + u" where"_s, relationColumns,
                                {{u"M"_s, u"P"_s, u"A"_s, u"D"_s, 1, 1, 1, flag, flag, flag}});
    QVERIFY(whileOpen(editor.form, [&] {
        for (const auto& name : {u"chMerma"_s, u"chPerdida"_s, u"chObligatorio"_s}) {
            QCOMPARE(editor.check(name).isChecked(), checked);
        }
    }));
}

void tst_frmAgregarInsumo::showingFails_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<QString>("text");
    QTest::newRow("cannot be opened") << false << u"-2147467259 - Bloqueada\r\n\r\n"_s + inputEditorPlace;
    QTest::newRow("relation is gone") << true << core::errorText(RuntimeError(3021), inputEditorPlace);
}

void tst_frmAgregarInsumo::showingFails()
{
    QFETCH(const bool, opens);
    QFETCH(const QString, text);
    Scripted editor;
    editor.modify(u"AC-1"_s);
    if (opens) {
        editor.inputs->willGiveRows(showQuery + u" where"_s, relationColumns);
    } else {
        editor.inputs->willNotOpen(showQuery + u" where"_s, RuntimeError(-2147467259, u"Bloqueada"_s));
    }
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.boxes(), QList{box(text, core::CriticalBox)});
        QCOMPARE(editor.text(u"txtARTNRO"_s).text(), QString());
        pressKey(Qt::Key_F11); // the form is not deaf
        QCOMPARE(editor.boxes().constLast(),
                 box(u"El campo Código de Articulo no puede estar vacío"_s, core::ExclamationBox));
    }));
}

void tst_frmAgregarInsumo::apostropheInTheCurrentCodesIsReported()
{
    for (int which = 0; which < 3; ++which) {
        Scripted editor;
        editor.modify(which == 0 ? u"a'b"_s : u"AC-1"_s);
        editor.state().currentCatalog = which == 1 ? u"a'b"_s : u"MOTORES"_s;
        editor.state().currentProduct = which == 2 ? u"a'b"_s : u"PM001"_s;
        QVERIFY(whileOpen(editor.form, [] {}));
        QCOMPARE(editor.boxes().size(), 1);
        QVERIFY(editor.boxes().constFirst().text.startsWith(u"-2147217900 - "));
        QVERIFY(editor.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n"_s + inputEditorPlace)));
        QVERIFY(editor.inputs->statements().isEmpty());
    }
}

void tst_frmAgregarInsumo::errorOfTheLoadingItself()
{
    Scripted editor;
    editor.modify(u"AC-1"_s);
    editor.inputs->willNotOpen(showQuery + u" where"_s, RuntimeError(3709));
    editor.component.prompts.whileShown = [&] {
        if (editor.boxes().size() == 1) {
            throw RuntimeError(7); // the report of the first error fails, too
        }
    };
    QVERIFY(whileOpen(editor.form, [] {}));
    QCOMPARE(editor.boxes().size(), 2);
    QCOMPARE(editor.boxes().constLast(),
             box(u"Memoria insuficiente\r\n\r\n7 - Seccion [oVELDRA.frmAgregarInsumo.frm_load]"_s, core::CriticalBox));
}

// --- checks ---

void tst_frmAgregarInsumo::checksInTheirOrder_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("message");
    const QString code = u"El campo Código de Articulo no puede estar vacío"_s;
    const QString description = u"El campo Descripcion no puede estar vacío"_s;
    for (const bool modify : {false, true}) {
        const char* mode = modify ? "modify" : "add";
        QTest::addRow("%s: code first", mode) << modify << QStringList{{}, {}, {}} << code;
        QTest::addRow("%s: code before quantity", mode) << modify << QStringList{{}, u"D"_s, {}} << code;
        QTest::addRow("%s: description before quantity", mode)
            << modify << QStringList{u"A"_s, {}, u"0"_s} << description;
        QTest::addRow("%s: quantity", mode) << modify << QStringList{u"A"_s, u"D"_s, {}} << noQuantity;
    }
}

void tst_frmAgregarInsumo::checksInTheirOrder()
{
    QFETCH(const bool, modify);
    QFETCH(const QStringList, texts);
    QFETCH(const QString, message);
    Scripted editor;
    if (modify) {
        editor.modify(u"AC-1"_s);
    }
    QVERIFY(whileOpen(editor.form, [&] {
        editor.inputs->clear();
        editor.fillIn(texts.at(0), texts.at(1), texts.at(2));
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes(), QList{box(message, core::ExclamationBox)});
    QVERIFY(editor.inputs->statements().isEmpty());
    QVERIFY(!editor.state().inputSaved);
}

void tst_frmAgregarInsumo::quantityOfZeroIsRefused_data()
{
    QTest::addColumn<QString>("quantity");
    QTest::newRow("0") << u"0"_s;
    QTest::newRow("00,000") << u"00,000"_s;
    QTest::newRow("-0") << u"-0"_s;
    QTest::newRow("letters") << u"dos"_s;
    QTest::newRow("number and letters") << u"2 kg"_s;
    QTest::newRow("blank") << u"  "_s;
    QTest::newRow("too large for a number") << u"1E400"_s;
}

void tst_frmAgregarInsumo::quantityOfZeroIsRefused()
{
    QFETCH(const QString, quantity);
    Scripted editor;
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(u"A"_s, u"D"_s, quantity);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(noQuantity, core::ExclamationBox)});
    }));
    QVERIFY(editor.inputs->statements().isEmpty());
}

void tst_frmAgregarInsumo::quantityIsWrittenWithEightDecimals_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("written");
    QTest::newRow("smallest, comma") << u"es_AR"_s << u"0,00000001"_s << u"00,00000001"_s;
    QTest::newRow("smallest, point") << u"en_US"_s << u"0.00000001"_s << u"00.00000001"_s;
    QTest::newRow("smaller than can be written") << u"en_US"_s << u"0.000000001"_s << u"00.00000000"_s;
    QTest::newRow("negative") << u"es_AR"_s << u"-2"_s << u"-02,00000000"_s;
    QTest::newRow("grouped, comma") << u"es_AR"_s << u"1.234,5"_s << u"1234,50000000"_s;
    QTest::newRow("grouped, point") << u"en_US"_s << u"1,234.5"_s << u"1234.50000000"_s;
    QTest::newRow("point under a comma locale") << u"es_AR"_s << u"1.5"_s << u"01,50000000"_s;
    QTest::newRow("huge") << u"es_AR"_s << u"1E20"_s << u"100000000000000000000,00000000"_s;
}

void tst_frmAgregarInsumo::quantityIsWrittenWithEightDecimals()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, typed);
    QFETCH(const QString, written);
    QLocale::setDefault(QLocale(locale));
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"A"_s, u"D"_s, typed);
        pressKey(Qt::Key_F11);
    }));
    QVERIFY2(editor.inputs->statements().constLast().contains(QString(u"'D','"_s + written + u"',")),
             qPrintable(editor.inputs->statements().constLast()));
}

void tst_frmAgregarInsumo::wasteAndLossThatAreNoNumbersAreZero()
{
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"A"_s, u"D"_s, u"1"_s, u"poca"_s, u"-1,5"_s);
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(editor.inputs->statements().constLast().endsWith(u"'01,00000000','00,00000','-01,50000',0,0,0)"));
}

// --- writing ---

void tst_frmAgregarInsumo::addingWritesTheStatementLetterForLetter_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("statement");
    QTest::newRow("es_AR")
        << u"es_AR"_s
        << u"insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) values ("
           "'MOTORES','PM001',' AC-1','Caño Ñ','01,50000000','05,00000','00,00000',-1,0,-1)"_s;
    QTest::newRow("en_US")
        << u"en_US"_s
        << u"insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) values ("
           "'MOTORES','PM001',' AC-1','Caño Ñ','01.50000000','05.00000','00.00000',-1,0,-1)"_s;
}

void tst_frmAgregarInsumo::addingWritesTheStatementLetterForLetter()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, statement);
    QLocale::setDefault(QLocale(locale));
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u" AC-1"_s, u"Caño Ñ"_s, QLocale().toString(1.5), u"5"_s);
        editor.check(u"chMerma"_s).setChecked(true);
        editor.check(u"chObligatorio"_s).setChecked(true);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.inputs->statements(),
             (QStringList{u"select count(ARTNRO) as cantidad from RIP where CATNRO = 'MOTORES' and ARTNRO = ' AC-1' "
                          "and PRDNRO = 'PM001'"_s,
                          statement}));
    QVERIFY(editor.state().inputSaved);
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarInsumo::addingByKeyboardOnly()
{
    Scripted editor;
    QVERIFY(!whileOpen(editor.form, [] {
        for (const auto& text : {u"AC-7"_s, u"Bulon"_s, u"2,25"_s, u"10"_s}) {
            typeText(text);
            pressKey(Qt::Key_Return);
        }
        pressKey(Qt::Key_Space); // waste in per cent
        pressKey(Qt::Key_Tab);
        typeText(u"3"_s);
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_Tab);
        pressKey(Qt::Key_Space); // obligatory
        pressKey(Qt::Key_F11);
    }));
    QVERIFY2(editor.inputs->statements().constLast().endsWith(
                 u"'AC-7','Bulon','02,25000000','10,00000','03,00000',-1,0,-1)"),
             qPrintable(editor.inputs->statements().constLast()));
}

void tst_frmAgregarInsumo::modifyingWritesTheStatementLetterForLetter_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("statement");
    QTest::newRow("es_AR") << u"es_AR"_s
                           << u"update RIP set ARTNRO = 'ac-1',RPADES = 'Chapa fina',RIPCAN = '02,00000000', RIPMER = "
                              "'05,00000', RIPPER = '00,25000', TRPMER = -1,TRPPER = 0,DIPOBL = -1 where CATNRO = "
                              "'MOTORES'  and PRDNRO = 'PM001'  and ARTNRO = 'AC-1'"_s;
    QTest::newRow("en_US") << u"en_US"_s
                           << u"update RIP set ARTNRO = 'ac-1',RPADES = 'Chapa fina',RIPCAN = '02.00000000', RIPMER = "
                              "'05.00000', RIPPER = '00.25000', TRPMER = -1,TRPPER = 0,DIPOBL = -1 where CATNRO = "
                              "'MOTORES'  and PRDNRO = 'PM001'  and ARTNRO = 'AC-1'"_s;
}

void tst_frmAgregarInsumo::modifyingWritesTheStatementLetterForLetter()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, statement);
    QLocale::setDefault(QLocale(locale));
    Scripted editor;
    editor.modify(u"AC-1"_s);
    editor.related(1);
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.inputs->clear();
        editor.text(u"txtARTNRO"_s).setText(u"ac-1"_s);
        editor.text(u"txtRPADES"_s).setText(u"Chapa fina"_s);
        editor.text(u"txtRIPCAN"_s).setText(u"2"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.inputs->statements(),
             (QStringList{u"select count(ARTNRO) as cantidad from RIP where CATNRO = 'MOTORES' and ARTNRO = 'ac-1' "
                          "and PRDNRO = 'PM001'"_s,
                          statement}));
    QVERIFY(editor.state().inputSaved);
    QCOMPARE(editor.state().currentInput, u"AC-1"_s);
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarInsumo::flagsAreWrittenAsMinusOneAndZero_data()
{
    QTest::addColumn<int>("checked");
    for (int checked = 0; checked < 8; ++checked) {
        QTest::addRow("%d", checked) << checked;
    }
}

void tst_frmAgregarInsumo::flagsAreWrittenAsMinusOneAndZero()
{
    QFETCH(const int, checked);
    const QStringList names{u"chMerma"_s, u"chPerdida"_s, u"chObligatorio"_s};
    QStringList flags;
    for (int which = 0; which < 3; ++which) {
        flags.append((checked & (1 << which)) != 0 ? u"-1"_s : u"0"_s);
    }
    for (const bool modify : {false, true}) {
        Scripted editor;
        if (modify) {
            editor.modify(u"AC-1"_s);
            editor.related(1);
        }
        QVERIFY(!whileOpen(editor.form, [&] {
            editor.fillIn(u"A"_s, u"D"_s, u"1"_s);
            for (int which = 0; which < 3; ++which) {
                editor.check(names.at(which)).setChecked((checked & (1 << which)) != 0);
            }
            pressKey(Qt::Key_F11);
        }));
        const QString expected = modify ? u"TRPMER = %1,TRPPER = %2,DIPOBL = %3 where"_s : u"',%1,%2,%3)"_s;
        QVERIFY(editor.inputs->statements().constLast().contains(expected.arg(flags.at(0), flags.at(1), flags.at(2))));
    }
}

void tst_frmAgregarInsumo::addingARelatedInputIsRefused()
{
    Scripted editor;
    editor.related(1);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-1"_s, u"D"_s, u"1"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"Este insumo ya esta relacionado con el producto."_s, core::CriticalBox)});
        QCOMPARE(editor.text(u"txtARTNRO"_s).text(), u"AC-1"_s);
    }));
    QCOMPARE(editor.inputs->statements().size(), 1);
    QVERIFY(!editor.state().inputSaved);
}

void tst_frmAgregarInsumo::modifyingAnInputWithoutRelationIsRefused()
{
    Scripted editor;
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.text(u"txtARTNRO"_s).setText(u"AC-2"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(u"ERROR: No se encontro insumo en la base de datos"_s, core::CriticalBox)});
    }));
    QVERIFY(editor.inputs->statements().constLast().contains(u"ARTNRO = 'AC-2'"));
    QVERIFY(editor.inputs->statements().filter(u"update"_s).isEmpty());
    QVERIFY(!editor.state().inputSaved);
}

void tst_frmAgregarInsumo::nothingWrittenIsTold_data()
{
    QTest::addColumn<bool>("modify");
    QTest::newRow("add") << false;
    QTest::newRow("modify") << true;
}

void tst_frmAgregarInsumo::nothingWrittenIsTold()
{
    QFETCH(const bool, modify);
    Scripted editor;
    if (modify) {
        editor.modify(u"AC-1"_s);
        editor.related(1);
    }
    editor.inputs->willAffect(u"insert into RIP ("_s, 0);
    editor.inputs->willAffect(u"insert into RIP ("_s, 1);
    editor.inputs->willAffect(u"update RIP set"_s, 0);
    editor.inputs->willAffect(u"update RIP set"_s, 1);
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-1"_s, u"D"_s, u"1"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.boxes(), QList{box(nothingWritten, core::CriticalBox, u"Agregar RIP"_s)});
        QVERIFY(editor.form.isVisible());
        QVERIFY(!editor.state().inputSaved);
        pressKey(Qt::Key_F11); // again, and this time it is written
    }));
    QVERIFY(editor.state().inputSaved);
}

void tst_frmAgregarInsumo::savedFlagIsResetByAFailedCheck()
{
    Scripted editor;
    editor.state().inputSaved = true;
    QVERIFY(whileOpen(editor.form, [] { pressKey(Qt::Key_F11); }));
    QVERIFY(!editor.state().inputSaved);
}

void tst_frmAgregarInsumo::countWithoutRecordset_data()
{
    nothingWrittenIsTold_data();
}

void tst_frmAgregarInsumo::countWithoutRecordset()
{
    QFETCH(const bool, modify);
    Scripted editor;
    if (modify) {
        editor.modify(u"AC-1"_s);
    }
    editor.inputs->willNotOpen(countQuery + u" as"_s, RuntimeError(3709));
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-1"_s, u"D"_s, u"1"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes(),
             QList{box(u"-2147221504 - No se genero el recordset\r\n\r\n"_s + inputEditorPlace, core::CriticalBox)});
    QVERIFY(!editor.state().inputSaved);
}

void tst_frmAgregarInsumo::failureAtEveryStatement_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<int>("failing");
    QTest::addColumn<QString>("text");
    const QString lost = u"-2147467259 - Servidor perdido\r\n\r\n"_s + inputEditorPlace;
    const QString noRecordset = u"-2147221504 - No se genero el recordset\r\n\r\n"_s + inputEditorPlace;
    QTest::newRow("add: count") << false << 1 << noRecordset;
    QTest::newRow("add: insert") << false << 2 << lost;
    QTest::newRow("modify: show") << true << 1 << lost;
    QTest::newRow("modify: count") << true << 2 << noRecordset;
    QTest::newRow("modify: update") << true << 3 << lost;
}

void tst_frmAgregarInsumo::failureAtEveryStatement()
{
    QFETCH(const bool, modify);
    QFETCH(const int, failing);
    QFETCH(const QString, text);
    Scripted editor;
    if (modify) {
        editor.modify(u"AC-1"_s);
        editor.related(1);
    }
    editor.inputs->failStatement(failing, RuntimeError(-2147467259, u"Servidor perdido"_s));
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-1"_s, u"D"_s, u"1"_s);
        if (editor.boxes().isEmpty()) {
            pressKey(Qt::Key_F11);
            QVERIFY(editor.form.isVisible());
            QVERIFY(!editor.state().inputSaved);
        }
        QCOMPARE(editor.boxes(), QList{box(text, core::CriticalBox)});
        QVERIFY(QGuiApplication::overrideCursor() == nullptr);
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(editor.state().inputSaved);
    QCOMPARE(editor.boxes().size(), 1);
}

void tst_frmAgregarInsumo::apostropheInAnyTextIsReported_data()
{
    QTest::addColumn<bool>("modify");
    QTest::addColumn<QString>("name");
    for (const bool modify : {false, true}) {
        for (const char* name : {"txtARTNRO", "txtRPADES"}) {
            QTest::addRow("%s %s", modify ? "modify" : "add", name) << modify << QString::fromLatin1(name);
        }
    }
}

void tst_frmAgregarInsumo::apostropheInAnyTextIsReported()
{
    QFETCH(const bool, modify);
    QFETCH(const QString, name);
    Scripted editor;
    if (modify) {
        editor.modify(u"AC-1"_s);
        editor.related(1);
    }
    QVERIFY(whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-1"_s, u"D"_s, u"1"_s);
        editor.text(name).setText(u"x','','','','',0,0,0); delete from RIP where ('1'='1"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes().size(), 1);
    QVERIFY(editor.boxes().constFirst().text.startsWith(u"-2147217900 - Error de sintaxis"));
    QVERIFY(editor.boxes().constFirst().text.endsWith(QString(u"\r\n\r\n"_s + inputEditorPlace)));
    QVERIFY(editor.inputs->statements().filter(u"delete"_s).isEmpty());
    QVERIFY(editor.inputs->statements().filter(u"insert"_s).isEmpty());
    QVERIFY(editor.inputs->statements().filter(u"update"_s).isEmpty());
    QVERIFY(!editor.state().inputSaved);
}

void tst_frmAgregarInsumo::hostileTextsStayInTheirLiterals()
{
    for (const QString& text : hostileTexts()) {
        Scripted editor;
        QVERIFY(!whileOpen(editor.form, [&] {
            editor.fillIn(u"AC-1"_s, text, u"1"_s);
            pressKey(Qt::Key_F11);
        }));
        const QString expected =
            u"insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) values ("
            "'MOTORES','PM001','AC-1','"_s +
            text + u"','01,00000000','00,00000','00,00000',0,0,0)"_s;
        QCOMPARE(editor.inputs->statements().constLast(), expected);
    }
}

void tst_frmAgregarInsumo::noWriteScopeIsOpenWhileABoxIs()
{
    Scripted editor;
    editor.inputs->willAffect(u"insert into RIP ("_s, 0);
    checkNoWriteScopeWhileABoxIsOpen(editor, [&editor] { editor.fillIn(u"AC-1"_s, u"D"_s, u"1"_s); });
}

void tst_frmAgregarInsumo::missingConnectionIsReported()
{
    Scripted editor;
    editor.state().g_DBINS.release();
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [] {}));
    QCOMPARE(editor.boxes(), QList{box(core::errorText(RuntimeError(3709), inputEditorPlace), core::CriticalBox)});
}

void tst_frmAgregarInsumo::realBoxOverTheEditor()
{
    checkRealBoxOfAnEmptySave<frmAgregarInsumo>(u"El campo Código de Articulo no puede estar vacío"_s);
}

QTEST_MAIN(tst_frmAgregarInsumo)
#include "tst_frmAgregarInsumo.moc"
