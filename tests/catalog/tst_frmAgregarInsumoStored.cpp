#include "catalog/CatalogFormTest.h"
#include "catalog/InputEditor.h"
#include "catalog/InputsStore.h"

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::catalog;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;

namespace {

/// Over a real database.
class Stored : public InputEditor
{
public:
    /// The fields of the relations, in table order.
    [[nodiscard]] QStringList relations(const QStringList& columns)
    {
        return store.rows(u"select * from RIP"_s, columns);
    }

    /// Opens the editor to add, fills it in and presses F11; answers whether it stayed open.
    bool add(const QString& code, const QString& description, const QString& quantity)
    {
        state().inputModify = false;
        state().inputSaved = false;
        state().currentInput.clear();
        return whileOpen(form, [&] {
            fillIn(code, description, quantity);
            pressKey(Qt::Key_F11);
        });
    }

    InputsStore store{state()};
};

} // namespace

class tst_frmAgregarInsumoStored : public CatalogFormTest
{
    Q_OBJECT

private Q_SLOTS:
    void storeKeepsOneRelationPerInputAndProduct();
    void storeKeepsNumbersAndFlags_data();
    void storeKeepsNumbersAndFlags();
    void storedRelationIsModified_data();
    void storedRelationIsModified();
    void storedCodeIsChangedInItsLetterCase();
    void storedCodeOfAnotherRelationIsADuplicate();
    void relationDeletedByAnotherSeat();
    void storeTakesDescriptionsOf255Characters();
    void smallestQuantityIsStored();
};

// --- over a real store ---

void tst_frmAgregarInsumoStored::storeKeepsOneRelationPerInputAndProduct()
{
    Stored editor;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"1"_s));
    QVERIFY(editor.add(u"AC-1"_s, u"Otra"_s, u"1"_s));
    QVERIFY(editor.add(u"ac-1 "_s, u"Otra"_s, u"1"_s)); // the store's texts differ in more than that
    QCOMPARE(editor.boxes().size(), 2);
    for (const auto& shown : editor.boxes()) {
        QCOMPARE(shown, box(u"Este insumo ya esta relacionado con el producto."_s, core::CriticalBox));
    }
    QVERIFY(!editor.add(u"ÁC-1"_s, u"Con acento"_s, u"1"_s));
    editor.state().currentProduct = u"PM002"_s;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"1"_s));
    editor.state().currentCatalog = u"VALV"_s;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"1"_s));
    QCOMPARE(
        editor.relations({u"CATNRO"_s, u"PRDNRO"_s, u"ARTNRO"_s}),
        (QStringList{u"MOTORES|PM001|AC-1"_s, u"MOTORES|PM001|ÁC-1"_s, u"MOTORES|PM002|AC-1"_s, u"VALV|PM002|AC-1"_s}));
}

void tst_frmAgregarInsumoStored::storeKeepsNumbersAndFlags_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<double>("stored");
    QTest::newRow("comma") << u"es_AR"_s << u"1,5"_s << 1.5;
    QTest::newRow("point") << u"en_US"_s << u"1.5"_s << 1.5;
    QTest::newRow("thousands with comma") << u"es_AR"_s << u"1.500"_s << 1500.0;
    QTest::newRow("negative") << u"es_AR"_s << u"-2,25"_s << -2.25;
    QTest::newRow("huge") << u"es_AR"_s << u"1E+20"_s << 1E20;
    QTest::newRow("rounded at eight decimals") << u"en_US"_s << u"0.123456785"_s << 0.12345679;
}

void tst_frmAgregarInsumoStored::storeKeepsNumbersAndFlags()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, typed);
    QFETCH(const double, stored);
    QLocale::setDefault(QLocale(locale));
    Stored editor;
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.fillIn(u"AC-1"_s, u"Ñandú"_s, typed, typed);
        editor.check(u"chPerdida"_s).setChecked(true);
        pressKey(Qt::Key_F11);
    }));
    const double waste = QLocale::c().toDouble(QLocale::c().toString(stored, 'f', 5));
    QCOMPARE(
        editor.relations({u"RPADES"_s, u"RIPCAN"_s, u"RIPMER"_s, u"RIPPER"_s, u"TRPMER"_s, u"TRPPER"_s, u"DIPOBL"_s}),
        QStringList{u"Ñandú|%1|%2|0|0|-1|0"_s.arg(QVariant(stored).toString(), QVariant(waste).toString())});
}

void tst_frmAgregarInsumoStored::storedRelationIsModified_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("es_AR") << u"es_AR"_s;
    QTest::newRow("en_US") << u"en_US"_s;
}

void tst_frmAgregarInsumoStored::storedRelationIsModified()
{
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    Stored editor;
    editor.store.run(u"insert into RIP (CATNRO,PRDNRO,ARTNRO,RPADES,RIPCAN,RIPMER,RIPPER,TRPMER,TRPPER,DIPOBL) values "
                     "('MOTORES','PM001','AC-1',' Chapa ',1.5,1234.56789,0.25,-1,0,-1)"_s);
    editor.modify(u"ac-1"_s); // the list may show it otherwise than it was typed
    QVERIFY(!whileOpen(editor.form, [&] {
        QCOMPARE(editor.text(u"txtARTNRO"_s).text(), u"AC-1"_s);
        editor.check(u"chPerdida"_s).setFocus();
        pressKey(Qt::Key_Space);
        pressKey(Qt::Key_F11);
    }));
    // What was not touched comes back as it was.
    QCOMPARE(editor.relations({u"ARTNRO"_s, u"RPADES"_s, u"RIPCAN"_s, u"RIPMER"_s, u"RIPPER"_s, u"TRPMER"_s,
                               u"TRPPER"_s, u"DIPOBL"_s}),
             (QStringList{u"AC-1|Chapa|1.5|1234.56789|0.25|-1|-1|-1"_s}));
    QVERIFY(editor.boxes().isEmpty());
}

void tst_frmAgregarInsumoStored::storedCodeIsChangedInItsLetterCase()
{
    Stored editor;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"1"_s));
    editor.modify(u"AC-1"_s);
    QVERIFY(!whileOpen(editor.form, [&] {
        editor.text(u"txtARTNRO"_s).setText(u"ac-1"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.relations({u"ARTNRO"_s}), (QStringList{u"ac-1"_s}));
}

void tst_frmAgregarInsumoStored::storedCodeOfAnotherRelationIsADuplicate()
{
    Stored editor;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"1"_s));
    QVERIFY(!editor.add(u"AC-2"_s, u"Bulon"_s, u"2"_s));
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        editor.text(u"txtARTNRO"_s).setText(u"AC-2"_s);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes().size(), 1);
    QVERIFY(editor.boxes().constFirst().text.startsWith(
        u"-2147467259 - Los cambios solicitados en la tabla no se realizaron correctamente"));
    QVERIFY(editor.boxes().constFirst().text.endsWith(inputEditorPlace));
    QVERIFY(!editor.state().inputSaved);
    QCOMPARE(editor.relations({u"ARTNRO"_s, u"RIPCAN"_s}), (QStringList{u"AC-1|1"_s, u"AC-2|2"_s}));
}

void tst_frmAgregarInsumoStored::relationDeletedByAnotherSeat()
{
    Stored editor;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"1"_s));
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.store.run(u"delete from RIP"_s), 1);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(editor.boxes(), QList{box(u"ERROR: No se encontro insumo en la base de datos"_s, core::CriticalBox)});
    QVERIFY(editor.relations({u"ARTNRO"_s}).isEmpty());
}

void tst_frmAgregarInsumoStored::storeTakesDescriptionsOf255Characters()
{
    Stored editor;
    QVERIFY(!editor.add(u"AC-1"_s, u"Ñ"_s.repeated(255), u"1"_s));
    QVERIFY(editor.add(u"AC-2"_s, u"Ñ"_s.repeated(256), u"1"_s));
    QCOMPARE(editor.boxes().size(), 1);
    QVERIFY(editor.boxes().constFirst().text.startsWith(u"-2147467259 - "));
    QVERIFY(editor.boxes().constFirst().text.endsWith(inputEditorPlace));
    QCOMPARE(editor.relations({u"RPADES"_s}), QStringList{u"Ñ"_s.repeated(255)});
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [&] {
        QCOMPARE(editor.text(u"txtRPADES"_s).text().size(), 255);
        QCOMPARE(editor.text(u"txtRPADES"_s).cursorPosition(), 0);
    }));
}

void tst_frmAgregarInsumoStored::smallestQuantityIsStored()
{
    QLocale::setDefault(QLocale(u"en_US"_s));
    Stored editor;
    QVERIFY(!editor.add(u"AC-1"_s, u"Chapa"_s, u"0.00000001"_s));
    QCOMPARE(editor.relations({u"RIPCAN"_s}), QStringList{u"1e-08"_s});
    editor.modify(u"AC-1"_s);
    QVERIFY(whileOpen(editor.form, [&] { QCOMPARE(editor.text(u"txtRIPCAN"_s).text(), u"00.00000001"_s); }));
}

QTEST_MAIN(tst_frmAgregarInsumoStored)
#include "tst_frmAgregarInsumoStored.moc"
