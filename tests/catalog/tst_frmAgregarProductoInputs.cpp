#include "catalog/CatalogFormTest.h"
#include "catalog/ScriptedProductEditor.h"
#include "controls/ListContents.h"

#include <core/ErrorReport.h>

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

const QString inputKeys = u"[INS] Agregar Insumos - [ESC] Salir"_s;

} // namespace

class tst_frmAgregarProductoInputs : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
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
};

// --- from the product to its inputs ---

void tst_frmAgregarProductoInputs::afterSavingTheInputsAreMaintained_data()
{
    QTest::addColumn<bool>("modify");
    QTest::newRow("add") << false;
    QTest::newRow("modify") << true;
}

void tst_frmAgregarProductoInputs::afterSavingTheInputsAreMaintained()
{
    QFETCH(const bool, modify);
    ScriptedProductEditor editor(modify);
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
    QVERIFY(editor.inputs->statements().isEmpty());
}

void tst_frmAgregarProductoInputs::beforeSavingTheInputKeysDoNothing_data()
{
    afterSavingTheInputsAreMaintained_data();
}

void tst_frmAgregarProductoInputs::beforeSavingTheInputKeysDoNothing()
{
    QFETCH(const bool, modify);
    ScriptedProductEditor editor(modify);
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
    QVERIFY(editor.inputs->statements().filter(u"delete"_s).isEmpty());
}

void tst_frmAgregarProductoInputs::afterSavingF11DoesNothing()
{
    ScriptedProductEditor editor;
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_F11);
        QVERIFY(editor.inputs->statements().isEmpty());
        QVERIFY(editor.state().productSaved);
    }));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarProductoInputs::changedCodeShowsTheInputsOfThatProduct()
{
    ScriptedProductEditor editor(true);
    editor.inputs->willGiveRows(u"select ARTNRO, RPADES, RIPCAN from RIP where PRDNRO = 'PM002'"_s, inputColumns,
                                {{u"AC-9"_s, u"Tapa"_s, 1}});
    QVERIFY(whileOpen(editor.form, [&] {
        editor.text(u"txtPRDNRO"_s).setText(u"PM002"_s);
        pressKey(Qt::Key_F11);
        QCOMPARE(editor.state().currentProduct, u"PM002"_s);
        QCOMPARE(editor.list().rowCount(), 1);
        QCOMPARE(rowTexts(editor.list(), 0).constFirst(), u"AC-9"_s);
        QVERIFY(editor.list().hasFocus());
    }));
    QVERIFY(editor.inputs->statements().at(3).endsWith(u"where CATNRO = 'MOTORES' and PRDNRO = 'PM002'"));
}

void tst_frmAgregarProductoInputs::shiftInsertStillPastesBeforeSaving()
{
    ScriptedProductEditor editor;
    QGuiApplication::clipboard()->setText(u"PM9"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        pressKey(Qt::Key_Insert, Qt::ShiftModifier);
        QCOMPARE(editor.text(u"txtPRDNRO"_s).text(), u"PM9"_s);
    }));
}

// --- inputs ---

void tst_frmAgregarProductoInputs::insertOpensTheInputEditor_data()
{
    QTest::addColumn<bool>("saved");
    QTest::newRow("saved") << true;
    QTest::newRow("left") << false;
}

void tst_frmAgregarProductoInputs::insertOpensTheInputEditor()
{
    QFETCH(const bool, saved);
    ScriptedProductEditor editor;
    editor.collaborators.inputIsSaved = saved;
    QVERIFY(editor.afterSaving([&] {
        editor.state().inputSaved = true;
        editor.state().inputModify = true;
        editor.state().currentInput = u"from before"_s;
        pressKey(Qt::Key_Insert);
        QCOMPARE(editor.collaborators.edited, (QStringList{u"+"_s, u"clear"_s}));
        QCOMPARE(editor.inputs->statements(), saved ? QStringList{listOfPM001} : QStringList{});
        QCOMPARE(editor.list().rowCount(), saved ? 2 : 0);
        QVERIFY(editor.list().hasFocus());
    }));
}

void tst_frmAgregarProductoInputs::enterOpensTheInputEditorForTheSelectedInput_data()
{
    insertOpensTheInputEditor_data();
}

void tst_frmAgregarProductoInputs::enterOpensTheInputEditorForTheSelectedInput()
{
    QFETCH(const bool, saved);
    ScriptedProductEditor editor(true);
    editor.collaborators.inputIsSaved = saved;
    QVERIFY(editor.afterSaving([&] {
        editor.state().inputSaved = true;
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Enter);
        QCOMPARE(editor.collaborators.edited, (QStringList{u"AC-2"_s, u"clear"_s}));
        QCOMPARE(editor.inputs->statements(), saved ? QStringList{listOfPM001} : QStringList{});
    }));
}

void tst_frmAgregarProductoInputs::emptyListIgnoresEnterAndDelete()
{
    ScriptedProductEditor editor;
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_Delete);
        QVERIFY(editor.collaborators.edited.isEmpty());
        QVERIFY(editor.boxes().isEmpty());
        QVERIFY(editor.inputs->statements().isEmpty());
    }));
}

void tst_frmAgregarProductoInputs::deletingAsksWithItsMisspeltTitle()
{
    ScriptedProductEditor editor(true);
    editor.component.prompts.willAnswer(core::AnswerNo);
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.boxes(), QList{box(u"Confirma eliminar la relación con el artículo AC-1"_s, core::QuestionBox,
                                           u"Eliminar relaciósn"_s)});
        QVERIFY(editor.inputs->statements().isEmpty());
        QCOMPARE(editor.state().currentInput, u"AC-1"_s);
        QCOMPARE(editor.list().rowCount(), 2);
    }));
}

void tst_frmAgregarProductoInputs::deletingRunsOneStatementAndReloads()
{
    ScriptedProductEditor editor(true);
    editor.component.prompts.willAnswer(core::AnswerYes);
    editor.inputs->willGiveRows(listOfPM001, inputColumns, {{u"AC-1"_s, u"Chapa"_s, 1}, {u"AC-2"_s, u"Bulon"_s, 1}});
    editor.inputs->willGiveRows(listOfPM001, inputColumns, {{u"AC-1"_s, u"Chapa"_s, 1}});
    QVERIFY(editor.afterSaving([&] {
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.inputs->statements(),
                 (QStringList{u"delete from RIP where CATNRO = 'MOTORES' and PRDNRO = 'PM001' and ARTNRO = 'AC-2'"_s,
                              listOfPM001}));
        QCOMPARE(editor.list().rowCount(), 1);
        QCOMPARE(editor.list().currentRow(), 0);
        QVERIFY(editor.list().hasFocus());
    }));
}

void tst_frmAgregarProductoInputs::deletingFails_data()
{
    QTest::addColumn<int>("failing");
    QTest::addColumn<QString>("text");
    QTest::newRow("delete") << 1 << u"Servidor perdido\r\n\r\n-2147467259"_s + deletePlace;
    QTest::newRow("reload") << 2 << u"Servidor perdido\r\n\r\n-2147467259"_s + listPlace;
}

void tst_frmAgregarProductoInputs::deletingFails()
{
    QFETCH(const int, failing);
    QFETCH(const QString, text);
    ScriptedProductEditor editor(true);
    editor.component.prompts.willAnswer(core::AnswerYes);
    editor.component.prompts.willAnswer(core::AnswerYes);
    QVERIFY(editor.afterSaving([&] {
        editor.inputs->failStatement(failing, RuntimeError(-2147467259, u"Servidor perdido"_s));
        pressKey(Qt::Key_Delete);
        QCOMPARE(editor.boxes().size(), 2);
        QCOMPARE(editor.boxes().constLast(), box(text, core::CriticalBox));
        QVERIFY(editor.list().isVisible());
        QCOMPARE(editor.list().rowCount(), failing == 1 ? 2 : 0);
        pressKey(Qt::Key_Insert);
        QCOMPARE(editor.collaborators.edited.size(), 2);
    }));

    ScriptedProductEditor hostile(true);
    hostile.component.prompts.willAnswer(core::AnswerYes);
    hostile.inputs->willGiveRows(listOfPM001, inputColumns, {{u"x' or '1'='1"_s, u"D"_s, 1}});
    QVERIFY(hostile.afterSaving([&] {
        pressKey(Qt::Key_Delete);
        QVERIFY(hostile.boxes().constLast().text.endsWith(QString(u"\r\n\r\n-2147217900"_s + deletePlace)));
        QVERIFY(hostile.inputs->statements().isEmpty());
    }));
}

void tst_frmAgregarProductoInputs::listThatCannotBeLoadedKeepsTheRowsBefore()
{
    ScriptedProductEditor editor;
    editor.inputs->willGiveRows(listOfPM001, inputColumns,
                                {{u"AC-1"_s, u"Chapa"_s, 1}, {u"AC-2"_s, u"Bulon"_s, QVariantMap()}});
    editor.form.lp_InsumosLista(u"PM001"_s, u"MOTORES"_s);
    QCOMPARE(editor.list().rowCount(), 1);
    QCOMPARE(rowTexts(editor.list(), 0).constFirst(), u"AC-1"_s);
    QCOMPARE(editor.boxes(), QList{box(core::errorText(RuntimeError(13), listPlace), core::CriticalBox)});
    QVERIFY(QGuiApplication::overrideCursor() == nullptr);
}

void tst_frmAgregarProductoInputs::inputsAreShownInTheGivenOrder()
{
    ScriptedProductEditor editor;
    editor.inputs->willGiveRows(listOfPM001, inputColumns,
                                {{u" Z "_s, u" z "_s, -0.5}, {u"A"_s, u"<b>"_s, 1E16}, {u"A"_s, {}, 0.123456789}});
    editor.form.lp_InsumosLista(u"PM001"_s, u"MOTORES"_s);
    QCOMPARE(editor.list().rowCount(), 3);
    QCOMPARE(rowTexts(editor.list(), 0), (QStringList{u" Z "_s, u" z "_s, u"-00,50000000"_s}));
    QCOMPARE(rowTexts(editor.list(), 1), (QStringList{u"A"_s, u"<b>"_s, u"10000000000000000,00000000"_s}));
    QCOMPARE(rowTexts(editor.list(), 2), (QStringList{u"A"_s, u""_s, u"00,12345679"_s}));
}

QTEST_MAIN(tst_frmAgregarProductoInputs)
#include "tst_frmAgregarProductoInputs.moc"
