#include "catalog/CatalogFormTest.h"
#include "catalog/InputsStore.h"
#include "catalog/ListFormChecks.h"
#include "catalog/NextDialog.h"
#include "controls/ListContents.h"

#include <catalog/frmCatalogo.h>

#include <QGuiApplication>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

const QStringList columns{u"CATNRO"_s, u"CATDES"_s};
const QString load = u"select * from CAT order by CATDES"_s;
const QString deleteProducts = u"delete from PRD where CATNRO = 'B1'"_s;
const QString deleteCatalog = u"delete from CAT where CATNRO = 'B1'"_s;
const Deletion deletion{load, u"Confirma eliminar el catalogo B1 y todos sus articulos"_s, deleteProducts,
                        deleteCatalog, u"Sección [oVELDRA.frmCatalogo.lp_Modificar_Eliminar]"_s};

/// The list, with another catalog current than those that it shows.
struct Fixture : FormFixture<frmCatalogo>
{
    Fixture() { state().currentCatalog = u"ANTES"_s; }

    [[nodiscard]] ListView& list() const { return listView(u"LstvCat"_s); }

    /// The shown rows, cells joined by "|".
    [[nodiscard]] QStringList rows() const
    {
        QStringList rows;
        for (int row = 0; row < list().rowCount(); ++row) {
            rows.append(rowTexts(list(), row).join(u'|'));
        }
        return rows;
    }

    void willList(const QList<FakeConexionDB::Row>& rows) const { inputs->willGiveRows(load, columns, rows); }
    /// In description order, which is not the order of the codes.
    void willListTwo() const { willList({{u"B1"_s, u"Autos"_s}, {u"A1"_s, u"Barcos"_s}}); }
};

QLineEdit& textBox(const Form& form, const QString& name)
{
    return *form.findChild<QLineEdit*>(name);
}

} // namespace

class tst_frmCatalogo : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
    void controlsHaveTheirNamesTitlesAndTexts();
    void everyRowCarriesTheImage();

    void loadListsTrimmedRowsAndSelectsTheFirst();
    void loadShowsNullAsEmpty();
    void storedCatalogsComeInDescriptionOrder();
    void equalDescriptionsBothAppearInTheDatabasesOrder();
    void everyOpeningLoadsAnew();
    void loadThatCannotOpenIsReported();
    void errorInARowLeavesTheRowsBefore();
    void missingConnectionIsReported();
    void pointerIsAnArrowWhenAnErrorIsShown();

    void emptyListHasNothingSelectedAndItsKeysDoNothing();
    void enterChoosesTheSelectedCatalog_data();
    void enterChoosesTheSelectedCatalog();
    void escapeChoosesNothing();

    void insertOpensTheDialogForAdding();
    void insertThenEscapeLeavesNoCurrentCatalog();
    void savedAddReloadsTheList();
    void f6OpensTheDialogForTheSelectedCatalog();
    void f6WithoutSavingLeavesTheCatalogCurrent();
    void savedModificationReloadsTheList();
    void failedSaveDoesNotReload();
    void focusIsBackOnTheListAfterTheDialog();

    void deleteAsksAndNoDeletesNothing();
    void deleteRunsBothStatementsInOneBurstAfterTheQuestion();
    void deleteOfNoCatalogDoesNotReload();
    void failureWhileDeletingIsReported_data();
    void failureWhileDeletingIsReported();
    void failedFirstDeleteLeavesTheCatalog();
    void failureAtCommitIsReportedWithoutReload();
    void deleteLeavesTheCurrentCatalogAsItWas();
    void deleteBelongsToTheListOnly();
    void storedDeleteTakesTheProductsAndLeavesTheRelations();
    void codeWithApostropheIsReportedAndDeletesNothing();
};

// --- the screen ---

void tst_frmCatalogo::controlsHaveTheirNamesTitlesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmCatalogo"_s);
    QCOMPARE(fixture.label(u"Label2"_s).text(), u"Catalogos"_s);
    QCOMPARE(fixture.list().accessibleName(), u"Catalogos"_s);
    QCOMPARE(columnTitles(fixture.list()), (QStringList{u"Codigo"_s, u"Descripcion"_s}));
}

void tst_frmCatalogo::everyRowCarriesTheImage()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.form.lp_Cargar_Catalogo();
    QCOMPARE(fixture.list().rowCount(), 2);
    checkRowImages(fixture.list());
}

// --- loading ---

void tst_frmCatalogo::loadListsTrimmedRowsAndSelectsTheFirst()
{
    Fixture fixture;
    fixture.willList({{u"  B1 "_s, u" Autos  "_s}, {u"A1"_s, u"Barcos"_s}});
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.rows(), (QStringList{u"B1|Autos"_s, u"A1|Barcos"_s}));
        QCOMPARE(fixture.list().currentRow(), 0);
        QVERIFY(fixture.list().selectionModel()->isRowSelected(0));
        QVERIFY(fixture.list().hasFocus());
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.list().currentRow(), 1);
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
}

void tst_frmCatalogo::loadShowsNullAsEmpty()
{
    Fixture fixture;
    fixture.willList({{{}, {}}, {u"A1"_s, {}}});
    fixture.form.lp_Cargar_Catalogo();
    QCOMPARE(fixture.rows(), (QStringList{u"|"_s, u"A1|"_s}));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCatalogo::storedCatalogsComeInDescriptionOrder()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"1"_s, u"Ostras"_s);
    store.addCatalog(u"2"_s, u"ñandúes"_s);
    store.addCatalog(u"3"_s, u"Nueces"_s);
    store.addCatalog(u"4"_s, u"Árboles"_s);
    store.addCatalog(u"5"_s, {});
    fixture.form.lp_Cargar_Catalogo();
    QCOMPARE(fixture.rows(), (QStringList{u"5|"_s, u"4|Árboles"_s, u"3|Nueces"_s, u"2|ñandúes"_s, u"1|Ostras"_s}));
}

void tst_frmCatalogo::equalDescriptionsBothAppearInTheDatabasesOrder()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"Z"_s, u"Autos"_s);
    store.addCatalog(u"A"_s, u"Autos"_s);
    store.addCatalog(u"M"_s, u"Aceites"_s);
    fixture.form.lp_Cargar_Catalogo();
    QCOMPARE(fixture.rows(), (QStringList{u"M|Aceites"_s, u"Z|Autos"_s, u"A|Autos"_s}));
}

void tst_frmCatalogo::everyOpeningLoadsAnew()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.willList({{u"C1"_s, u"Camiones"_s}});
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_Down); }));
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.rows(), QStringList{u"C1|Camiones"_s});
        QCOMPARE(fixture.list().currentRow(), 0);
    }));
}

void tst_frmCatalogo::loadThatCannotOpenIsReported()
{
    Fixture fixture;
    fixture.inputs->willNotOpen(load, RuntimeError(3021, u"D"_s));
    QVERIFY(whileOpen(fixture.form, [&fixture] { QCOMPARE(fixture.list().rowCount(), 0); }));
    QCOMPARE(fixture.boxes(), QList{critical(u"3021 - D\r\n\r\nSección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]"_s)});
}

void tst_frmCatalogo::errorInARowLeavesTheRowsBefore()
{
    /// Breaks down on its second row.
    class BreakingRows final : public Recordset
    {
    public:
        [[nodiscard]] bool atEof() const override { return false; }
        void moveNext() override { ++m_row; }
        void moveFirst() override { m_row = 0; }
        [[nodiscard]] qsizetype recordCount() const override { return 2; }
        [[nodiscard]] QVariant value(QStringView field) const override
        {
            if (m_row > 0) {
                throw RuntimeError(-2147467259, u"Sin servidor."_s);
            }
            return field.toString();
        }

    private:
        int m_row = 0;
    };
    class BreakingConnection final : public ConexionDB
    {
    public:
        void setSql(const QString&) override {}
        std::unique_ptr<Recordset> openRecordset(bool& ok) override
        {
            ok = true;
            return std::make_unique<BreakingRows>();
        }
        qint64 execute() override { return 0; }
    };
    Fixture fixture;
    fixture.state().g_DBINS.assign(std::make_shared<BreakingConnection>());
    fixture.form.lp_Cargar_Catalogo();
    QCOMPARE(fixture.rows(), QStringList{u"CATNRO|CATDES"_s});
    QCOMPARE(fixture.list().currentRow(), 0);
    QCOMPARE(fixture.boxes(),
             QList{critical(u"-2147467259 - Sin servidor.\r\n\r\nSección [oVELDRA.frmCatalogo.lp_Cargar_Catalogo]"_s)});
}

void tst_frmCatalogo::missingConnectionIsReported()
{
    Fixture fixture;
    fixture.state().g_DBINS.release();
    QVERIFY(whileOpen(fixture.form, [] {}));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.startsWith(u"3709 - "));
}

void tst_frmCatalogo::pointerIsAnArrowWhenAnErrorIsShown()
{
    Fixture fixture;
    fixture.inputs->willNotOpen(load, RuntimeError(3021));
    bool busy = true;
    bool hidden = true;
    fixture.component.prompts.whileShown = [&] {
        busy = QGuiApplication::overrideCursor() != nullptr;
        hidden = fixture.list().isHidden();
    };
    fixture.form.lp_Cargar_Catalogo();
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(!busy);
    QVERIFY(!hidden);
}

// --- choosing ---

void tst_frmCatalogo::emptyListHasNothingSelectedAndItsKeysDoNothing()
{
    Fixture fixture;
    fixture.willList({});
    fixture.state().catalogSaved = true;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.list().rowCount(), 0);
        QCOMPARE(fixture.list().currentRow(), -1);
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F6, Qt::Key_Delete, Qt::Key_Down, Qt::Key_F11}) {
            pressKey(key);
        }
        QVERIFY(fixture.form.isVisible());
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
    QVERIFY(fixture.boxes().isEmpty());
    QCOMPARE(fixture.state().currentCatalog, u"ANTES"_s);
    QVERIFY(fixture.state().catalogSaved);
}

void tst_frmCatalogo::enterChoosesTheSelectedCatalog_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<int>("down");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("first") << Qt::Key_Return << 0 << u"B1"_s;
    QTest::newRow("second") << Qt::Key_Return << 1 << u"A1"_s;
    QTest::newRow("with the keypad's Enter") << Qt::Key_Enter << 1 << u"A1"_s;
}

void tst_frmCatalogo::enterChoosesTheSelectedCatalog()
{
    QFETCH(const Qt::Key, key);
    QFETCH(const int, down);
    QFETCH(const QString, chosen);
    Fixture fixture;
    fixture.willList({{u" B1 "_s, u"Autos"_s}, {u"A1"_s, u"Barcos"_s}});
    QVERIFY(!whileOpen(fixture.form, [&] {
        for (int step = 0; step < down; ++step) {
            pressKey(Qt::Key_Down);
        }
        pressKey(key);
    }));
    QCOMPARE(fixture.state().currentCatalog, chosen);
    QCOMPARE(fixture.inputs->events(), QStringList{load});
}

void tst_frmCatalogo::escapeChoosesNothing()
{
    Fixture fixture;
    fixture.willListTwo();
    QVERIFY(!whileOpen(fixture.form, [] { pressKey(Qt::Key_Escape); }));
    QCOMPARE(fixture.state().currentCatalog, u"ANTES"_s);
}

// --- adding and modifying ---

void tst_frmCatalogo::insertOpensTheDialogForAdding()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.state().catalogSaved = true;
    fixture.state().catalogModify = true;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        inNextDialog(u"frmABMCatalogo"_s, [&fixture](Form& dialog) {
            QVERIFY(!fixture.state().catalogSaved);
            QVERIFY(!fixture.state().catalogModify);
            QCOMPARE(fixture.state().currentCatalog, QString());
            QCOMPARE(textBox(dialog, u"txtCATNRO"_s).text(), QString());
            pressKey(Qt::Key_Escape);
        });
        pressKey(Qt::Key_Insert);
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
}

void tst_frmCatalogo::insertThenEscapeLeavesNoCurrentCatalog()
{
    Fixture fixture;
    fixture.willListTwo();
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        inNextDialog(u"frmABMCatalogo"_s, [](Form&) { pressKey(Qt::Key_Escape); });
        pressKey(Qt::Key_Insert);
        returnTo(fixture.form);
        pressKey(Qt::Key_Escape);
    }));
    QCOMPARE(fixture.state().currentCatalog, QString());
}

void tst_frmCatalogo::savedAddReloadsTheList()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"B1"_s, u"Barcos"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        inNextDialog(u"frmABMCatalogo"_s, [](Form&) {
            typeText(u"A1"_s);
            pressKey(Qt::Key_Return);
            typeText(u"Autos"_s);
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_Insert);
        QCOMPARE(fixture.rows(), (QStringList{u"A1|Autos"_s, u"B1|Barcos"_s}));
        QCOMPARE(fixture.list().currentRow(), 0);
        QCOMPARE(fixture.state().currentCatalog, QString());
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCatalogo::f6OpensTheDialogForTheSelectedCatalog()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.inputs->willGiveRows(u"select * from CAT where"_s, columns, {{u"A1"_s, u"Barcos"_s}});
    fixture.state().catalogSaved = true;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        pressKey(Qt::Key_Down);
        inNextDialog(u"frmABMCatalogo"_s, [&fixture](Form& dialog) {
            QVERIFY(!fixture.state().catalogSaved);
            QVERIFY(fixture.state().catalogModify);
            QCOMPARE(textBox(dialog, u"txtCATNRO"_s).text(), u"A1"_s);
        });
        pressKey(Qt::Key_F6);
    }));
    QCOMPARE(fixture.inputs->events(), (QStringList{load, u"select * from CAT where CATNRO = 'A1'"_s}));
}

void tst_frmCatalogo::f6WithoutSavingLeavesTheCatalogCurrent()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.inputs->willGiveRows(u"select * from CAT where"_s, columns, {{u"A1"_s, u"Barcos"_s}});
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        pressKey(Qt::Key_Down);
        inNextDialog(u"frmABMCatalogo"_s, [](Form&) { pressKey(Qt::Key_Escape); });
        pressKey(Qt::Key_F6);
        returnTo(fixture.form);
        pressKey(Qt::Key_Escape);
    }));
    QCOMPARE(fixture.state().currentCatalog, u"A1"_s);
    QCOMPARE(fixture.inputs->events().size(), 2);
}

void tst_frmCatalogo::savedModificationReloadsTheList()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    store.addCatalog(u"A1"_s, u"Autos"_s);
    store.addCatalog(u"B1"_s, u"Barcos"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        inNextDialog(u"frmABMCatalogo"_s, [](Form& dialog) {
            textBox(dialog, u"txtCATDES"_s).setText(u"Zapatos"_s);
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_F6);
        QCOMPARE(fixture.rows(), (QStringList{u"B1|Barcos"_s, u"A1|Zapatos"_s}));
        QCOMPARE(fixture.list().currentRow(), 0);
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCatalogo::failedSaveDoesNotReload()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.inputs->willThrow(u"insert"_s, RuntimeError(5));
    QVERIFY(whileOpen(fixture.form, [] {
        inNextDialog(u"frmABMCatalogo"_s, [](Form& dialog) {
            typeText(u"B1"_s);
            pressKey(Qt::Key_F11);
            QVERIFY(dialog.isVisible());
            pressKey(Qt::Key_Escape);
        });
        pressKey(Qt::Key_Insert);
    }));
    QCOMPARE(fixture.inputs->statements(), (QStringList{load, u"insert into CAT (CATNRO,CATDES) values ('B1','')"_s}));
}

void tst_frmCatalogo::focusIsBackOnTheListAfterTheDialog()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        for (const auto& code : {u"A1"_s, u"B1"_s}) {
            inNextDialog(u"frmABMCatalogo"_s, [&code](Form&) {
                typeText(code);
                pressKey(Qt::Key_F11);
            });
            pressKey(Qt::Key_Insert);
            returnTo(fixture.form);
            QVERIFY(fixture.list().hasFocus());
        }
    }));
    QCOMPARE(fixture.list().rowCount(), 2);
}

// --- deleting ---

void tst_frmCatalogo::deleteAsksAndNoDeletesNothing()
{
    Fixture fixture;
    checkNoDeletesNothing(fixture, deletion);
}

void tst_frmCatalogo::deleteRunsBothStatementsInOneBurstAfterTheQuestion()
{
    Fixture fixture;
    checkYesDeletesInOneBurstAndReloads(fixture, deletion);
}

void tst_frmCatalogo::deleteOfNoCatalogDoesNotReload()
{
    Fixture fixture;
    checkRowThatIsGoneIsNoReload(fixture, deletion);
}

void tst_frmCatalogo::failureWhileDeletingIsReported_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::newRow("products") << QStringList{deleteProducts};
    QTest::newRow("catalog") << QStringList{deleteProducts, deleteCatalog};
}

void tst_frmCatalogo::failureWhileDeletingIsReported()
{
    QFETCH(const QStringList, statements);
    Fixture fixture;
    checkDeletionFailure(fixture, deletion, statements);
}

void tst_frmCatalogo::failedFirstDeleteLeavesTheCatalog()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.inputs->willAffect(deleteCatalog, 1);
    fixture.inputs->willThrow(deleteProducts, RuntimeError(5));
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_Delete); }));
    QVERIFY(!fixture.inputs->statements().contains(deleteCatalog));
    QCOMPARE(fixture.boxes().size(), 2);
}

void tst_frmCatalogo::failureAtCommitIsReportedWithoutReload()
{
    Fixture fixture;
    checkDeletionFailureAtCommit(fixture);
}

void tst_frmCatalogo::deleteLeavesTheCurrentCatalogAsItWas()
{
    Fixture fixture;
    fixture.willListTwo();
    fixture.inputs->willAffect(u"delete"_s, 1);
    fixture.state().currentCatalog = u"B1"_s;
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(!whileOpen(fixture.form, [] {
        pressKey(Qt::Key_Delete);
        pressKey(Qt::Key_Escape);
    }));
    QCOMPARE(fixture.state().currentCatalog, u"B1"_s);
}

void tst_frmCatalogo::deleteBelongsToTheListOnly()
{
    Fixture fixture;
    fixture.willListTwo();
    QVERIFY(whileOpen(fixture.form, [&fixture] { QTest::keyClick(&fixture.form, Qt::Key_Delete); }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCatalogo::storedDeleteTakesTheProductsAndLeavesTheRelations()
{
    Fixture fixture;
    InputsStore store(fixture.state());
    for (const auto& catalog : {u"A1"_s, u"B1"_s}) {
        store.addCatalog(catalog, u"Catálogo "_s + catalog);
        store.addProduct(catalog, u"P1"_s, u"uno"_s);
        store.addProduct(catalog, u"P2"_s, u"dos"_s);
        store.addRelation(catalog, u"P1"_s, u"I1"_s);
    }
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        pressKey(Qt::Key_Delete);
        QCOMPARE(fixture.rows(), QStringList{u"B1|Catálogo B1"_s});
        QCOMPARE(fixture.list().currentRow(), 0);
    }));
    QCOMPARE(fixture.component.prompts.texts(),
             QStringList{u"Confirma eliminar el catalogo A1 y todos sus articulos"_s});
    QCOMPARE(store.rows(u"select * from CAT"_s, {u"CATNRO"_s}), QStringList{u"B1"_s});
    QCOMPARE(store.rows(u"select * from PRD"_s, {u"CATNRO"_s, u"PRDNRO"_s}), (QStringList{u"B1|P1"_s, u"B1|P2"_s}));
    QCOMPARE(store.rows(u"select * from RIP"_s, {u"CATNRO"_s, u"PRDNRO"_s}), (QStringList{u"A1|P1"_s, u"B1|P1"_s}));
}

void tst_frmCatalogo::codeWithApostropheIsReportedAndDeletesNothing()
{
    Fixture fixture;
    fixture.willList({{u"x' or '1'='1"_s, u"Autos"_s}});
    fixture.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_Delete); }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
    QVERIFY(fixture.boxes().constLast().text.startsWith(u"-2147217900 - "));
    QVERIFY(fixture.boxes().constLast().text.endsWith(u"\r\n\r\nSección [oVELDRA.frmCatalogo.lp_Modificar_Eliminar]"));
}

QTEST_MAIN(tst_frmCatalogo)
#include "tst_frmCatalogo.moc"
