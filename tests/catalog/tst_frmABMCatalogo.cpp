#include "catalog/CatalogFormTest.h"
#include "catalog/EditorChecks.h"
#include "catalog/InputsStore.h"

#include <catalog/frmABMCatalogo.h>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

const QStringList columns{u"CATNRO"_s, u"CATDES"_s};

/// The dialog, told to add unless a test says otherwise.
struct Fixture : FormFixture<frmABMCatalogo>
{
    [[nodiscard]] QLineEdit& code() const { return text(u"txtCATNRO"_s); }
    [[nodiscard]] QLineEdit& description() const { return text(u"txtCATDES"_s); }

    void modify(const QString& catalog)
    {
        component.state.catalogModify = true;
        component.state.currentCatalog = catalog;
    }

    /// Types both texts with the keyboard, as a user adds a catalog.
    static void typeCatalog(const QString& code, const QString& description)
    {
        typeText(code);
        pressKey(Qt::Key_Return);
        typeText(description);
    }
};

} // namespace

class tst_frmABMCatalogo : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
    void controlsHaveTheirNamesAndTexts();
    void addingStartsEmptyWithoutAStatement();
    void enterWalksTheTextBoxesWithTheirColors();
    void everyOpeningStartsFromTheDesignState();

    void addWritesBothTextsAsTyped_data();
    void addWritesBothTextsAsTyped();
    void addWithoutCodeTellsAndWritesNothing();
    void addThatAffectsNothingLeavesTheDialogOpen();
    void addFailureIsReportedAndLeavesTheDialogOpen();
    void addClearsTheSavedFlagFirst();
    void existingCodeIsTheDatabasesError_data();
    void existingCodeIsTheDatabasesError();
    void apostropheIsReportedAndWritesNothing_data();
    void apostropheIsReportedAndWritesNothing();

    void modifyShowsTheCatalogWithItsCodeLocked();
    void modifyShowsNullAsEmpty();
    void modifyOfACatalogThatIsGoneShowsNothing();
    void modifyThatCannotBeShownIsReported();
    void modifyWritesTheDescriptionOnly_data();
    void modifyWritesTheDescriptionOnly();
    void modifyThatAffectsNothingLeavesTheDialogOpen();
    void modifyFailureIsReportedAndLeavesTheDialogOpen();
    void modifyOfACodeWithApostropheIsReported();

    void escapeLeavesWithoutSaving();
    void missingConnectionIsReported();
    void storedCatalogIsAddedAndModified();
};

// --- the screen ---

void tst_frmABMCatalogo::controlsHaveTheirNamesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmABMCatalogo"_s);
    QCOMPARE(fixture.code().accessibleName(), u"Codigo Catalogo"_s);
    QCOMPARE(fixture.description().accessibleName(), u"Descripción"_s);
    QCOMPARE(fixture.label(u"Label4"_s).text(), u"[F11] Grabar - [ESC] Salir"_s);
    const QStringList labels = fixture.labelTexts();
    QVERIFY(labels.contains(u"Altas y Modificación de Catalogos"));
    QVERIFY(labels.contains(u"Codigo Catalogo"));
    QVERIFY(labels.contains(u"Descripción"));
}

void tst_frmABMCatalogo::addingStartsEmptyWithoutAStatement()
{
    Fixture fixture;
    fixture.state().currentCatalog = u"OTRO"_s;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QVERIFY(fixture.code().hasFocus());
        QVERIFY(!fixture.code().isReadOnly());
        QCOMPARE(fixture.code().text(), QString());
        QCOMPARE(fixture.description().text(), QString());
    }));
    QVERIFY(fixture.inputs->events().isEmpty());
}

void tst_frmABMCatalogo::enterWalksTheTextBoxesWithTheirColors()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        checkEnterLeaves(fixture.code());
        QVERIFY(fixture.description().hasFocus());
        QCOMPARE(fixture.description().palette().color(QPalette::Base), colorFromOle(12648384));
    }));
}

void tst_frmABMCatalogo::everyOpeningStartsFromTheDesignState()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"A1"_s, u"Autos"_s}});
    fixture.modify(u"A1"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] { QVERIFY(fixture.code().isReadOnly()); }));
    fixture.state().catalogModify = false;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QVERIFY(!fixture.code().isReadOnly());
        QVERIFY(fixture.code().hasFocus());
        QCOMPARE(fixture.code().text(), QString());
        QCOMPARE(fixture.description().text(), QString());
    }));
}

// --- adding ---

void tst_frmABMCatalogo::addWritesBothTextsAsTyped_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("statement");
    QTest::newRow("usual") << u"A1"_s << u"Autos"_s << u"insert into CAT (CATNRO,CATDES) values ('A1','Autos')"_s;
    QTest::newRow("blanks and case stay")
        << u" a1 "_s << u"  auTos  "_s << u"insert into CAT (CATNRO,CATDES) values (' a1 ','  auTos  ')"_s;
    QTest::newRow("without description") << u"A1"_s << QString()
                                         << u"insert into CAT (CATNRO,CATDES) values ('A1','')"_s;
    QTest::newRow("a blank is a code") << u" "_s << u"x"_s << u"insert into CAT (CATNRO,CATDES) values (' ','x')"_s;
    QTest::newRow("double quotes and place markers are ordinary")
        << u"%1"_s << u"el \"%2\" \\ %"_s << u"insert into CAT (CATNRO,CATDES) values ('%1','el \"%2\" \\ %')"_s;
}

void tst_frmABMCatalogo::addWritesBothTextsAsTyped()
{
    QFETCH(const QString, code);
    QFETCH(const QString, description);
    QFETCH(const QString, statement);
    Fixture fixture;
    fixture.inputs->willAffect(u"insert"_s, 1);
    QVERIFY(!whileOpen(fixture.form, [&] {
        Fixture::typeCatalog(code, description);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{statement});
    QVERIFY(fixture.state().catalogSaved);
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmABMCatalogo::addWithoutCodeTellsAndWritesNothing()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        Fixture::typeCatalog({}, u"Autos"_s);
        pressKey(Qt::Key_F11);
        QVERIFY(fixture.description().hasFocus());
        QCOMPARE(fixture.description().text(), u"Autos"_s);
    }));
    QCOMPARE(fixture.boxes(), QList{box(u"Debe ingresar Código de catálogo"_s, core::ExclamationBox)});
    QVERIFY(fixture.inputs->events().isEmpty());
    QVERIFY(!fixture.state().catalogSaved);
}

void tst_frmABMCatalogo::addThatAffectsNothingLeavesTheDialogOpen()
{
    Fixture fixture;
    fixture.inputs->willAffect(u"insert"_s, 0);
    QVERIFY(whileOpen(fixture.form, [] {
        Fixture::typeCatalog(u"A1"_s, u"Autos"_s);
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(!fixture.state().catalogSaved);
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmABMCatalogo::addFailureIsReportedAndLeavesTheDialogOpen()
{
    Fixture fixture;
    fixture.inputs->willThrow(u"insert"_s, RuntimeError(-2147467259, u"Sin espacio."_s));
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        Fixture::typeCatalog(u"A1"_s, u"Autos"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(fixture.code().text(), u"A1"_s);
        QCOMPARE(fixture.description().text(), u"Autos"_s);
    }));
    QCOMPARE(
        fixture.boxes(),
        QList{critical(u"Sin espacio.\r\n\r\n-2147467259 - Sección [oVELDRA.frmABMCatalogo.lp_Agregar_Catalogo]"_s)});
    QVERIFY(!fixture.state().catalogSaved);
}

void tst_frmABMCatalogo::addClearsTheSavedFlagFirst()
{
    Fixture fixture;
    fixture.state().catalogSaved = true;
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_F11); }));
    QVERIFY(!fixture.state().catalogSaved);

    fixture.inputs->willThrow(u"insert"_s, RuntimeError(5));
    fixture.state().catalogSaved = true;
    QVERIFY(whileOpen(fixture.form, [] {
        Fixture::typeCatalog(u"A1"_s, {});
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(!fixture.state().catalogSaved);
}

void tst_frmABMCatalogo::existingCodeIsTheDatabasesError_data()
{
    QTest::addColumn<QString>("code");
    QTest::newRow("same") << u"A1"_s;
    QTest::newRow("other case") << u"a1"_s;
}

void tst_frmABMCatalogo::existingCodeIsTheDatabasesError()
{
    QFETCH(const QString, code);
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"A1"_s, u"Autos"_s);
    QVERIFY(whileOpen(fixture.form, [&] {
        Fixture::typeCatalog(code, u"Otros"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.boxes().size(), 1);
    QCOMPARE(fixture.boxes().constFirst().style, core::CriticalBox);
    QVERIFY(fixture.boxes().constFirst().text.contains(u"valores duplicados"));
    QVERIFY(fixture.boxes().constFirst().text.endsWith(
        u"\r\n\r\n-2147467259 - Sección [oVELDRA.frmABMCatalogo.lp_Agregar_Catalogo]"));
    QCOMPARE(store.rows(u"select * from CAT"_s, columns), QStringList{u"A1|Autos"_s});
}

void tst_frmABMCatalogo::apostropheIsReportedAndWritesNothing_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("description");
    QTest::newRow("code") << u"A'1"_s << u"Autos"_s;
    QTest::newRow("description") << u"A2"_s << u"O'Higgins"_s;
    QTest::newRow("another statement") << u"A2"_s << u"x'); delete from CAT where ('1'='1"_s;
}

void tst_frmABMCatalogo::apostropheIsReportedAndWritesNothing()
{
    QFETCH(const QString, code);
    QFETCH(const QString, description);
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"A1"_s, u"Autos"_s);
    QVERIFY(whileOpen(fixture.form, [&] {
        Fixture::typeCatalog(code, description);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(
        u"\r\n\r\n-2147217900 - Sección [oVELDRA.frmABMCatalogo.lp_Agregar_Catalogo]"));
    QVERIFY(!fixture.state().catalogSaved);

    fixture.modify(u"A1"_s);
    fixture.component.prompts.clear();
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.description().setText(u"l'autre"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(
        u"\r\n\r\n-2147217900 - Sección [oVELDRA.frmABMCatalogo.lp_Modificar_Catalogo]"));
    QCOMPARE(store.rows(u"select * from CAT"_s, columns), QStringList{u"A1|Autos"_s});
}

// --- modifying ---

void tst_frmABMCatalogo::modifyShowsTheCatalogWithItsCodeLocked()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u" A1 "_s, u"  Autos  "_s}, {u"A2"_s, u"Barcos"_s}});
    fixture.modify(u"A1"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.code().text(), u" A1 "_s);
        QCOMPARE(fixture.description().text(), u"Autos"_s);
        QVERIFY(fixture.code().isReadOnly());
        QVERIFY(!fixture.description().isReadOnly());
        QVERIFY(fixture.description().hasFocus());
        typeText(u"Camiones"_s); // over the old one, which is selected
        QCOMPARE(fixture.description().text(), u"Camiones"_s);
        fixture.code().setFocus();
        typeText(u"Z"_s);
        pressKey(Qt::Key_Delete);
        QCOMPARE(fixture.code().text(), u" A1 "_s);
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{u"select * from CAT where CATNRO = 'A1'"_s});
}

void tst_frmABMCatalogo::modifyShowsNullAsEmpty()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{{}, {}}});
    fixture.modify({});
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.code().text(), QString());
        QVERIFY(fixture.code().isReadOnly());
        QCOMPARE(fixture.description().text(), QString());
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{u"select * from CAT where CATNRO = ''"_s});
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmABMCatalogo::modifyOfACatalogThatIsGoneShowsNothing()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns);
    fixture.modify(u"A1"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.code().text(), QString());
        QVERIFY(!fixture.code().isReadOnly());
        QCOMPARE(fixture.description().text(), QString());
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmABMCatalogo::modifyThatCannotBeShownIsReported()
{
    Fixture fixture;
    fixture.inputs->willNotOpen(u"select"_s, RuntimeError(3021, u"D"_s));
    fixture.modify(u"A1"_s);
    QVERIFY(whileOpen(fixture.form, [] {}));
    QCOMPARE(fixture.boxes(),
             QList{critical(u"D\r\n\r\n3021 - Sección [oVELDRA.frmABMCatalogo.lp_Mostrar_Catalogo]"_s)});
}

void tst_frmABMCatalogo::modifyWritesTheDescriptionOnly_data()
{
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("statement");
    QTest::newRow("usual") << u"Camiones"_s << u"update CAT set CATDES = 'Camiones' where CATNRO = 'A1'"_s;
    QTest::newRow("emptied") << QString() << u"update CAT set CATDES = '' where CATNRO = 'A1'"_s;
    QTest::newRow("blanks stay") << u" x "_s << u"update CAT set CATDES = ' x ' where CATNRO = 'A1'"_s;
}

void tst_frmABMCatalogo::modifyWritesTheDescriptionOnly()
{
    QFETCH(const QString, description);
    QFETCH(const QString, statement);
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"A1"_s, u"Autos"_s}});
    fixture.inputs->willAffect(u"update"_s, 1);
    fixture.modify(u"A1"_s);
    QVERIFY(!whileOpen(fixture.form, [&] {
        fixture.description().clear();
        typeText(description);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.inputs->events().constLast(), statement);
    QCOMPARE(fixture.inputs->events().size(), 2);
    QVERIFY(fixture.state().catalogSaved);
}

void tst_frmABMCatalogo::modifyThatAffectsNothingLeavesTheDialogOpen()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"A1"_s, u"Autos"_s}});
    fixture.inputs->willAffect(u"update"_s, 0);
    fixture.modify(u"A1"_s);
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_F11); }));
    QVERIFY(!fixture.state().catalogSaved);
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmABMCatalogo::modifyFailureIsReportedAndLeavesTheDialogOpen()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"A1"_s, u"Autos"_s}});
    fixture.inputs->willThrow(u"update"_s, RuntimeError(-2147467259, u"Solo lectura."_s));
    fixture.modify(u"A1"_s);
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_F11); }));
    QCOMPARE(fixture.boxes(),
             QList{critical(
                 u"Solo lectura.\r\n\r\n-2147467259 - Sección [oVELDRA.frmABMCatalogo.lp_Modificar_Catalogo]"_s)});
    QVERIFY(!fixture.state().catalogSaved);
}

void tst_frmABMCatalogo::modifyOfACodeWithApostropheIsReported()
{
    Fixture fixture;
    fixture.modify(u"O'1"_s);
    QVERIFY(whileOpen(fixture.form, [] {}));
    QVERIFY(fixture.inputs->events().isEmpty());
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(
        u"\r\n\r\n-2147217900 - Sección [oVELDRA.frmABMCatalogo.lp_Mostrar_Catalogo]"));
}

// --- both ---

void tst_frmABMCatalogo::escapeLeavesWithoutSaving()
{
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [] {
        Fixture::typeCatalog(u"A1"_s, u"Autos"_s);
        pressKey(Qt::Key_Escape);
    }));
    QVERIFY(fixture.inputs->events().isEmpty());
    QVERIFY(!fixture.state().catalogSaved);
}

void tst_frmABMCatalogo::missingConnectionIsReported()
{
    Fixture fixture;
    fixture.state().g_DBINS.release();
    QVERIFY(whileOpen(fixture.form, [] {
        Fixture::typeCatalog(u"A1"_s, u"Autos"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(
        u"\r\n\r\n3709 - Sección [oVELDRA.frmABMCatalogo.lp_Agregar_Catalogo]"));
}

void tst_frmABMCatalogo::storedCatalogIsAddedAndModified()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"B1"_s, u"Barcos"_s);
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        fixture.code().setText(u"ñ-1"_s);
        fixture.description().setText(u"Ñandúes y \"otros\""_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(store.rows(u"select * from CAT"_s, columns), (QStringList{u"B1|Barcos"_s, u"ñ-1|Ñandúes y \"otros\""_s}));

    fixture.modify(u"Ñ-1"_s);
    fixture.state().catalogSaved = false;
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.code().text(), u"ñ-1"_s);
        fixture.description().setText(u"Águilas"_s);
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(fixture.state().catalogSaved);
    QCOMPARE(store.rows(u"select * from CAT"_s, columns), (QStringList{u"B1|Barcos"_s, u"ñ-1|Águilas"_s}));
    QVERIFY(fixture.boxes().isEmpty());
}

QTEST_MAIN(tst_frmABMCatalogo)
#include "tst_frmABMCatalogo.moc"
