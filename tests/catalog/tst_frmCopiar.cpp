#include "catalog/CatalogFormTest.h"
#include "catalog/FormFixture.h"
#include "catalog/InputsStore.h"

#include <catalog/frmCopiar.h>

#include <QComboBox>
#include <QGuiApplication>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

const QStringList columns{u"CATNRO"_s, u"CATDES"_s};
const QString load = u"select * from CAT order by CATDES"_s;

QStringList items(const QComboBox& combo)
{
    QStringList items;
    for (int place = 0; place < combo.count(); ++place) {
        items.append(combo.itemText(place));
    }
    return items;
}

/// The dialog, opened for a product of catalog A1.
struct Fixture : FormFixture<frmCopiar>
{
    Fixture() { form.setOrigin(u"A1"_s, u"P-1"_s); }

    [[nodiscard]] QComboBox& names() const { return *form.findChild<QComboBox*>(u"cboCATNOM"_s); }
    [[nodiscard]] QComboBox& codes() const { return *form.findChild<QComboBox*>(u"cboCATNRO"_s); }
    [[nodiscard]] QLineEdit& product() const { return text(u"txtPRDNRO"_s); }

    void willListThree() const
    {
        inputs->willGiveRows(load, columns, {{u"B1"_s, u"Autos"_s}, {u"A1"_s, u"Barcos"_s}, {u"C1"_s, u"Trenes"_s}});
    }
};

/// Another window takes the focus and gives it back.
void visitAnotherWindow(QWidget& form)
{
    QWidget other(&form, Qt::Window); // a modal form lets its own children be active only
    other.show();
    other.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &other);
    other.hide();
    form.activateWindow();
    QTRY_COMPARE(QApplication::activeWindow(), &form);
}

} // namespace

class tst_frmCopiar : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
    void controlsHaveTheirNamesAndTexts();
    void openingShowsTheOriginAndTheCatalogs();
    void storedCatalogsComeInDescriptionOrderWithTheirCodes();
    void equalDescriptionsStayAligned();
    void emptyAndNullDescriptionsAreEmptyTexts();
    void preselectedCatalog_data();
    void preselectedCatalog();
    void choosingMovesBothCombos();
    void secondActivationLoadsNothing();
    void everyOpeningLoadsAnew();
    void withoutCatalogsTheCombosAreEmpty();
    void catalogsThatCannotBeReadAreReported();
    void errorInARowIsReportedWithAlignedCombos();
    void missingConnectionIsReportedOnce();
    void f11DoesNothing();
    void otherKeysDoNothing();
    void escapeCloses();
    void originWithMarkupIsPlainText();
};

void tst_frmCopiar::controlsHaveTheirNamesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmCopiar"_s);
    QCOMPARE(fixture.form.windowTitle(), u"  Copiar Producto"_s);
    QCOMPARE(fixture.label(u"Label1"_s).text(), u"ORIGEN"_s);
    QCOMPARE(fixture.label(u"Label6"_s).text(), u"DESTINO"_s);
    QCOMPARE(fixture.label(u"Label9"_s).text(), u"[F11] Copiar - [ESC] Cerrar"_s);
    QCOMPARE(fixture.label(u"lbCATNRO"_s).accessibleName(), u"Catalogo"_s);
    QCOMPARE(fixture.label(u"lbPRDNRO"_s).accessibleName(), u"Producto"_s);
    QCOMPARE(fixture.names().accessibleName(), u"Catalogo"_s);
    QCOMPARE(fixture.product().accessibleName(), u"Producto"_s);
    const QStringList labels = fixture.labelTexts();
    QCOMPARE(labels.count(u"Catalogo"_s), 2);
    QCOMPARE(labels.count(u"Producto"_s), 2);
}

void tst_frmCopiar::openingShowsTheOriginAndTheCatalogs()
{
    Fixture fixture;
    fixture.willListThree();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.label(u"lbCATNRO"_s).text(), u"A1"_s);
        QCOMPARE(fixture.label(u"lbPRDNRO"_s).text(), u"P-1"_s);
        QCOMPARE(items(fixture.names()), (QStringList{u"Autos"_s, u"Barcos"_s, u"Trenes"_s}));
        QCOMPARE(items(fixture.codes()), (QStringList{u"B1"_s, u"A1"_s, u"C1"_s}));
        QVERIFY(fixture.names().isVisible());
        QVERIFY(!fixture.codes().isVisible());
        QCOMPARE(fixture.product().text(), QString());
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCopiar::storedCatalogsComeInDescriptionOrderWithTheirCodes()
{
    Fixture fixture;
    InputsStore store(fixture.component.state);
    store.addCatalog(u"1"_s, u"Ostras"_s);
    store.addCatalog(u"2"_s, u"Ñandúes"_s);
    store.addCatalog(u"3"_s, u"nueces"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(items(fixture.names()), (QStringList{u"nueces"_s, u"Ñandúes"_s, u"Ostras"_s}));
        QCOMPARE(items(fixture.codes()), (QStringList{u"3"_s, u"2"_s, u"1"_s}));
    }));
}

void tst_frmCopiar::equalDescriptionsStayAligned()
{
    Fixture fixture;
    InputsStore store(fixture.component.state);
    store.addCatalog(u"Z"_s, u"Autos"_s);
    store.addCatalog(u"A"_s, u"Autos"_s);
    store.addCatalog(u"M"_s, u"Aceites"_s);
    fixture.form.setOrigin(u"A"_s, u"P-1"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(items(fixture.names()), (QStringList{u"Aceites"_s, u"Autos"_s, u"Autos"_s}));
        QCOMPARE(items(fixture.codes()), (QStringList{u"M"_s, u"Z"_s, u"A"_s}));
        QCOMPARE(fixture.names().currentIndex(), 2);
        fixture.names().setFocus();
        pressKey(Qt::Key_Up); // to the other one of the same description
        QCOMPARE(fixture.codes().currentText(), u"Z"_s);
    }));
}

void tst_frmCopiar::emptyAndNullDescriptionsAreEmptyTexts()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(load, columns, {{u"X"_s, {}}, {u"Y"_s, u""_s}, {{}, u"Autos"_s}});
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(items(fixture.names()), (QStringList{QString(), QString(), u"Autos"_s}));
        QCOMPARE(items(fixture.codes()), (QStringList{u"X"_s, u"Y"_s, QString()}));
    }));
}

void tst_frmCopiar::preselectedCatalog_data()
{
    QTest::addColumn<QString>("origin");
    QTest::addColumn<int>("place");
    QTest::newRow("the origin's own") << u"A1"_s << 1;
    QTest::newRow("the first when the origin's is gone") << u"X9"_s << 0;
    QTest::newRow("stored with blanks") << u"C1"_s << 2;
}

void tst_frmCopiar::preselectedCatalog()
{
    QFETCH(const QString, origin);
    QFETCH(const int, place);
    Fixture fixture;
    fixture.inputs->willGiveRows(load, columns,
                                 {{u"B1"_s, u"Autos"_s}, {u"A1"_s, u"Barcos"_s}, {u"C1  "_s, u"Trenes"_s}});
    fixture.form.setOrigin(origin, u"P-1"_s);
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.names().currentIndex(), place);
        QCOMPARE(fixture.codes().currentIndex(), place);
    }));
}

void tst_frmCopiar::choosingMovesBothCombos()
{
    Fixture fixture;
    fixture.willListThree();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.names().setFocus();
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.names().currentText(), u"Trenes"_s);
        QCOMPARE(fixture.codes().currentText(), u"C1"_s);
        fixture.codes().setCurrentIndex(0);
        QCOMPARE(fixture.names().currentText(), u"Autos"_s);
        pressKey(Qt::Key_Tab);
        QVERIFY(fixture.product().hasFocus());
        typeText(u"P-2"_s);
        QCOMPARE(fixture.product().text(), u"P-2"_s);
    }));
}

void tst_frmCopiar::secondActivationLoadsNothing()
{
    Fixture fixture;
    fixture.willListThree();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.names().setCurrentIndex(2);
        fixture.product().setText(u"P-2"_s);
        visitAnotherWindow(fixture.form);
        fixture.form.Form_Activate();
        QCOMPARE(fixture.inputs->events(), QStringList{load});
        QCOMPARE(fixture.names().count(), 3);
        QCOMPARE(fixture.codes().count(), 3);
        QCOMPARE(fixture.names().currentIndex(), 2);
        QCOMPARE(fixture.product().text(), u"P-2"_s);
    }));
}

void tst_frmCopiar::everyOpeningLoadsAnew()
{
    Fixture fixture;
    fixture.willListThree();
    fixture.inputs->willGiveRows(load, columns, {{u"D1"_s, u"Discos"_s}});
    QVERIFY(whileOpen(fixture.form, [&fixture] { fixture.product().setText(u"P-2"_s); }));
    fixture.form.setOrigin(u"D1"_s, u"P-9"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.label(u"lbCATNRO"_s).text(), u"D1"_s);
        QCOMPARE(fixture.label(u"lbPRDNRO"_s).text(), u"P-9"_s);
        QCOMPARE(items(fixture.names()), QStringList{u"Discos"_s});
        QCOMPARE(items(fixture.codes()), QStringList{u"D1"_s});
        QCOMPARE(fixture.product().text(), QString());
    }));
    QCOMPARE(fixture.inputs->events(), (QStringList{load, load}));
}

void tst_frmCopiar::withoutCatalogsTheCombosAreEmpty()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(load, columns);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.names().currentIndex(), -1);
        QCOMPARE(fixture.codes().currentIndex(), -1);
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.names().currentIndex(), -1);
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCopiar::catalogsThatCannotBeReadAreReported()
{
    Fixture fixture;
    fixture.inputs->willNotOpen(load, RuntimeError(-2147217865, u"No está la tabla CAT."_s));
    bool busy = true;
    fixture.component.prompts.whileShown = [&busy] { busy = QGuiApplication::overrideCursor() != nullptr; };
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.label(u"lbPRDNRO"_s).text(), u"P-1"_s);
        QCOMPARE(fixture.names().count(), 0);
    }));
    QCOMPARE(fixture.boxes(),
             QList{critical(u"No está la tabla CAT.\r\n\r\n-2147217865 - seccion[oVELDRA.frmCopiar_Activate]"_s)});
    QVERIFY(!busy);
}

void tst_frmCopiar::errorInARowIsReportedWithAlignedCombos()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(load, {u"CATDES"_s}, {{u"Autos"_s}});
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.names().count(), 0);
        QCOMPARE(fixture.codes().count(), 0);
    }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n3265 - seccion[oVELDRA.frmCopiar_Activate]"));
}

void tst_frmCopiar::missingConnectionIsReportedOnce()
{
    Fixture fixture;
    fixture.component.state.g_DBINS.release();
    QVERIFY(whileOpen(fixture.form, [&fixture] { visitAnotherWindow(fixture.form); }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.contains(u"\r\n\r\n3709 - seccion[oVELDRA.frmCopiar_Activate]"));
}

void tst_frmCopiar::f11DoesNothing()
{
    Fixture fixture;
    fixture.willListThree();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.product().setText(u"P-2"_s);
        for (QWidget* control : {static_cast<QWidget*>(&fixture.names()), static_cast<QWidget*>(&fixture.product())}) {
            control->setFocus();
            pressKey(Qt::Key_F11);
        }
        QVERIFY(fixture.form.isVisible());
        QCOMPARE(fixture.product().text(), u"P-2"_s);
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmCopiar::otherKeysDoNothing()
{
    Fixture fixture;
    fixture.willListThree();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.product().setFocus();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Insert, Qt::Key_F5, Qt::Key_F6, Qt::Key_F12}) {
            pressKey(key);
        }
        QVERIFY(fixture.form.isVisible());
        QVERIFY(fixture.product().hasFocus());
    }));
    QCOMPARE(fixture.inputs->events(), QStringList{load});
}

void tst_frmCopiar::escapeCloses()
{
    Fixture fixture;
    fixture.willListThree();
    QVERIFY(!whileOpen(fixture.form, [] { pressKey(Qt::Key_Escape); }));
    QVERIFY(!whileOpen(fixture.form, [&fixture] {
        fixture.product().setFocus();
        pressKey(Qt::Key_Escape);
    }));
}

void tst_frmCopiar::originWithMarkupIsPlainText()
{
    Fixture fixture;
    fixture.willListThree();
    fixture.form.setOrigin(u"<b>A1</b>"_s, u"&P"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        for (const auto& name : {u"lbCATNRO"_s, u"lbPRDNRO"_s}) {
            QCOMPARE(fixture.label(name).textFormat(), Qt::PlainText);
        }
        QCOMPARE(fixture.label(u"lbCATNRO"_s).text(), u"<b>A1</b>"_s);
        QCOMPARE(fixture.label(u"lbPRDNRO"_s).text(), u"&P"_s);
    }));
}

QTEST_MAIN(tst_frmCopiar)
#include "tst_frmCopiar.moc"
