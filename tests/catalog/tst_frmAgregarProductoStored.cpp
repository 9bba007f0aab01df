#include "catalog/CatalogFormTest.h"
#include "catalog/InputsStore.h"
#include "catalog/NextDialog.h"
#include "catalog/ProductEditor.h"
#include "nomenclature/StoredTariff.h"

#include <core/ErrorReport.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

/// Over a real database.
struct Stored : ProductEditor
{
    InputsStore store{state()};
};

/// The editor with the component's own screens, over real databases.
struct OwnScreens : FormFixture<frmAgregarProducto>
{
    OwnScreens()
    {
        state().currentCatalog = u"MOTORES"_s;
        state().g_DBNCM.assign(tariff.db);
    }

    [[nodiscard]] ListView& list() const { return listView(u"lstVInsumos"_s); }

    InputsStore store{state()};
    nomenclature::StoredTariff tariff;
};

} // namespace

class tst_frmAgregarProductoStored : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
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

// --- over a real store ---

void tst_frmAgregarProductoStored::storeAddsAndModifies_data()
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

void tst_frmAgregarProductoStored::storeAddsAndModifies()
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

void tst_frmAgregarProductoStored::storeKeepsOneProductPerCodeAndCatalog()
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

void tst_frmAgregarProductoStored::priceOfLettersIsStoredAsZero()
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

void tst_frmAgregarProductoStored::productDeletedByAnotherSeatWhileEdited()
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

void tst_frmAgregarProductoStored::productAddedByAnotherSeatDuringTheSuffixCheck()
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

void tst_frmAgregarProductoStored::storeTakesLongTexts()
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

void tst_frmAgregarProductoStored::deletingAnInputRemovesExactlyOneRow()
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

void tst_frmAgregarProductoStored::inputsAreMaintainedInTheRealEditor()
{
    OwnScreens own;
    own.store.addProduct(u"MOTORES"_s, u"PM001"_s, u"Motor"_s);
    own.state().currentProduct = u"PM001"_s;
    own.state().productModify = true;
    const QString editor = u"frmAgregarInsumo"_s;
    QVERIFY(whileOpen(own.form, [&] {
        pressKey(Qt::Key_F11);
        inNextDialog(editor, [](Form&) {
            for (const auto& typed : {u"AC-1"_s, u"Chapa"_s, u"1,5"_s}) {
                typeText(typed);
                pressKey(Qt::Key_Return);
            }
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_Insert);
        returnTo(own.form);
        QCOMPARE(own.list().rowCount(), 1);
        QCOMPARE(own.list().text(0, 2), u"01,50000000"_s);
        QVERIFY(own.list().hasFocus());

        inNextDialog(editor, [](Form& form) {
            QCOMPARE(form.findChild<QLineEdit*>(u"txtARTNRO"_s)->text(), u"AC-1"_s);
            form.findChild<QLineEdit*>(u"txtRIPCAN"_s)->setText(u"2"_s);
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_Return);
        returnTo(own.form);
        QCOMPARE(own.list().text(0, 2), u"02,00000000"_s);

        inNextDialog(editor, [](Form& form) {
            QCOMPARE(form.findChild<QLineEdit*>(u"txtARTNRO"_s)->text(), QString());
            pressKey(Qt::Key_Escape);
        });
        pressKey(Qt::Key_Insert);
        returnTo(own.form);
        QCOMPARE(own.list().rowCount(), 1);

        own.component.prompts.willAnswer(core::AnswerYes);
        pressKey(Qt::Key_Delete);
        QCOMPARE(own.list().rowCount(), 0);
    }));
    QVERIFY(own.store.rows(u"select * from RIP"_s, {u"ARTNRO"_s}).isEmpty());
}

void tst_frmAgregarProductoStored::positionIsSearchedAndSuffixesAreEntered()
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
        inNextDialog(u"FrmPosicion"_s, [](Form&) {
            pressKey(Qt::Key_Down);
            pressKey(Qt::Key_Return);
        });
        pressKey(Qt::Key_F6);
        returnTo(own.form);
        QCOMPARE(own.text(u"txtPRDNCM"_s).text(), u"8471.30.19.000B"_s);
        QVERIFY(own.text(u"txtPRDNCM"_s).hasFocus());
        inNextDialog(u"FrmPosicion"_s, [](Form&) { pressKey(Qt::Key_Escape); });
        pressKey(Qt::Key_F6);
        returnTo(own.form);
        QCOMPARE(own.text(u"txtPRDNCM"_s).text(), u"8471.30.19.000B"_s);
        pressKey(Qt::Key_Return);
        typeText(u"1"_s);
        pressKey(Qt::Key_Return);
        typeText(u"07"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(own.label(u"lbSufijos"_s).text(), u"ZC(000150)-"_s);
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

void tst_frmAgregarProductoStored::cancelledSuffixesAreStoredEmpty()
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
        QCOMPARE(own.label(u"lbSufijos"_s).text(), QString());
        QVERIFY(own.state().productSaved);
    }));
    QCOMPARE(own.store.rows(u"select * from PRD"_s, {u"PRDNRO"_s, u"PRDSUF"_s}), QStringList{u"PM1|"_s});
}

QTEST_MAIN(tst_frmAgregarProductoStored)
#include "tst_frmAgregarProductoStored.moc"
