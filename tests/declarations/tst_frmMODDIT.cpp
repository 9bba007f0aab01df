#include "controls/OpenForm.h"
#include "declarations/FakeDialog.h"
#include "doubles/BoxDriver.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/OleColor.h>
#include <declarations/frmMODDIT.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

const QStringList columns{u"INTDCL"_s, u"INTNRO"_s, u"INTDES"_s, u"INTCTC"_s, u"INTFOF"_s, u"INTVEN"_s, u"INTIOK"_s};
const QStringList textBoxes{u"txtINTNRO"_s, u"txtINTDES"_s, u"txtINTCTC"_s, u"txtINTFOF"_s, u"txtINTVEN"_s};
const QString number = u"24073IT14000001A"_s;
const QString load = u"select * from INTINS where INTDCL = '24073IT14000001A'"_s;
const QString save = u"update INTINS set INTNRO = 'TOR1',INTDES = 'Chapas',INTCTC = 'C-1',INTFOF = "
                     "datevalue('05/03/2024'),INTVEN = datevalue('31/12/2026'),INTIOK = 1 where INTDCL = "
                     "'24073IT14000001A'"_s;
const QString dateFault = u"Debe ingresar una fecha valida en Fecha de Oficialización"_s;

RecordedPrompts::Box critical(const QString& text)
{
    return {text, core::CriticalBox, {}};
}

/// What fp_ModificarDIT() reports.
RecordedPrompts::Box saveFault(const QString& description, int error = -2147221504)
{
    return critical(QString(description + u"\r\n\r\n"_s + QString::number(error) +
                            u" - Sección [oVELDRA.frmMODDIT.fp_ModificarDIT]"_s));
}

/// What fp_CargarDIT() reports.
RecordedPrompts::Box loadFault(const QString& declaration)
{
    return critical(QString(u"-2147221504 - No existe la declaración "_s + declaration +
                            u" u ocurrio un error en su busqueda\r\n\r\nSección [oVELDRA.frmMODDIT.fpCargarDIT]"_s));
}

/// The editor over a connection that answers from a script, opened for a declaration that is there. Its listing notes
/// that it was opened and does what a test says.
struct Fixture
{
    explicit Fixture(const FakeConexionDB::Row& row = {number, u"TOR1"_s, u"Chapas"_s, u"C-1"_s, QDate(2024, 3, 5),
                                                       QDate(2026, 12, 31), 1})
    {
        component.state.g_DBINS.assign(inputs);
        component.state.declaration.number = number;
        inputs->willGiveRows(load, columns, {row});
        inputs->willAffect(u"update INTINS"_s, 1);
    }

    [[nodiscard]] QLineEdit& box(const QString& name) const { return *form.findChild<QLineEdit*>(name); }
    [[nodiscard]] QCheckBox& enabled() const { return *form.findChild<QCheckBox*>(u"chDITOK"_s); }
    [[nodiscard]] QLabel& numberLabel() const { return *form.findChild<QLabel*>(u"lbINTDCL"_s); }
    [[nodiscard]] core::CurrentDeclaration& current() { return component.state.declaration; }
    [[nodiscard]] QList<RecordedPrompts::Box> boxes() const { return component.prompts.boxes(); }
    [[nodiscard]] QStringList events() const { return inputs->events(); }
    [[nodiscard]] QStringList boxTexts() const
    {
        QStringList texts;
        for (const QString& name : textBoxes) {
            texts.append(box(name).text());
        }
        return texts;
    }

    /// Opens the form, forgets what its loading did, and lets a test go on. Answers whether it was still open then.
    bool whileLoaded(const std::function<void()>& actions)
    {
        return whileOpen(form, [&] {
            inputs->clear();
            component.prompts.clear();
            actions();
        });
    }
    /// Opens the form, types texts into boxes and presses F11. Answers whether it was still open then.
    bool saved(const QMap<QString, QString>& texts)
    {
        return !whileLoaded([&] {
            for (auto text = texts.begin(); text != texts.end(); ++text) {
                box(text.key()).setFocus();
                box(text.key()).selectAll();
                pressKey(Qt::Key_Delete);
                typeText(text.value());
            }
            pressKey(Qt::Key_F11);
        });
    }

    std::shared_ptr<FakeConexionDB> inputs = std::make_shared<FakeConexionDB>();
    TestComponent component;
    FakeDialog listing;
    frmMODDIT form{component, listing.factory()};
};

/// The texts of the shared declaration, the number and the flag aside.
QStringList handedBack(const core::CurrentDeclaration& declaration)
{
    return {declaration.internalNumber, declaration.description, declaration.ctc,
            declaration.officialDate,   declaration.expiryDate,  declaration.enabled};
}

} // namespace

class tst_frmMODDIT : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void controlsHaveTheirNamesAndTexts();
    void openingShowsTheDeclaration_data();
    void openingShowsTheDeclaration();
    void nullsShowAsEmpty();
    void enabledIsWhatIsNotZero_data();
    void enabledIsWhatIsNotZero();
    void everyOpeningStartsFromTheDesignState();
    void tabOrderIsReadingOrder();
    void enterWalksTheTextBoxesWithTheirColors();
    void escapeClosesWithoutSaving();

    void declarationThatIsNotThere_data();
    void declarationThatIsNotThere();
    void numberWithAnApostropheIsNotThere();
    void missingFieldIsReported();

    void savingWritesTheHeaderAndHandsItBack();
    void savingFromEveryControl();
    void uncheckedIsWrittenAsZero();
    void faultsInTheirOrder_data();
    void faultsInTheirOrder();
    void apostrophesOfNumberAndDescriptionBecomeAccents();
    void apostropheInTheCtcIsTheDatabasesError_data();
    void apostropheInTheCtcIsTheDatabasesError();
    void apostropheInADateIsNoDate();
    void hostileTextsStayInTheirLiterals();
    void oddDatesAreSavedAsTyped_data();
    void oddDatesAreSavedAsTyped();
    void declarationDeletedMeanwhileStaysOpen();
    void failureOfTheUpdateIsReported();
    void flagOfAnEarlierSaveIsCleared();

    void f12HandsTheDeclarationToTheListing();
    void f12ChecksBothDatesWithOneText_data();
    void f12ChecksBothDatesWithOneText();
    void f12SavesNothing();
    void listingIsMadeOnceAndKept();

    void realBoxStandsOverTheForm();
};

void tst_frmMODDIT::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_frmMODDIT::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- the screen ---

void tst_frmMODDIT::controlsHaveTheirNamesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmMODDIT"_s);
    QCOMPARE(fixture.form.windowTitle(), u"Modificar DIT"_s);
    const auto allLabels = fixture.form.findChildren<QLabel*>();
    const auto count = [&allLabels](const QString& text, const QWidget* buddy) {
        return std::count_if(allLabels.begin(), allLabels.end(),
                             [&](const QLabel* label) { return label->text() == text && label->buddy() == buddy; });
    };
    const QStringList labels{u"Interno"_s, u"Descripción"_s, u"Nro C.T.C."_s, u"Fecha Oficialización"_s,
                             u"Fecha Vencimiento"_s};
    for (qsizetype i = 0; i < labels.size(); ++i) {
        const QLineEdit& box = fixture.box(textBoxes.at(i));
        QCOMPARE(count(labels.at(i), &box), 1);
        QCOMPARE(box.accessibleName(), labels.at(i));
    }
    QCOMPARE(count(u"DIT Nro:"_s, &fixture.numberLabel()), 1);
    QCOMPARE(count(u"[F11] Guardar - [ESC] Salir"_s, nullptr), 1);
    QCOMPARE(count(u"[F12] - Impresión de exportaciones relacionadas a la DIT"_s, nullptr), 1);
    QCOMPARE(fixture.enabled().text(), u"Declaración habilitada"_s);
    QCOMPARE(fixture.numberLabel().accessibleName(), u"DIT Nro:"_s);
    QCOMPARE(fixture.numberLabel().textFormat(), Qt::PlainText);
}

void tst_frmMODDIT::openingShowsTheDeclaration_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("es_AR") << u"es_AR"_s;
    QTest::newRow("en_US") << u"en_US"_s;
}

void tst_frmMODDIT::openingShowsTheDeclaration()
{
    QFETCH(const QString, locale);
    QLocale::setDefault(QLocale(locale));
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.numberLabel().text(), number);
        QCOMPARE(fixture.numberLabel().accessibleDescription(), number);
        QCOMPARE(fixture.boxTexts(), (QStringList{u"TOR1"_s, u"Chapas"_s, u"C-1"_s, u"05/03/2024"_s, u"31/12/2026"_s}));
        QVERIFY(fixture.enabled().isChecked());
        QVERIFY(fixture.box(u"txtINTNRO"_s).hasFocus());
    }));
    QCOMPARE(fixture.events(), QStringList{load});
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmMODDIT::nullsShowAsEmpty()
{
    Fixture fixture({number, {}, {}, {}, {}, {}, {}});
    QVERIFY(fixture.form.fp_CargarDIT());
    QCOMPARE(fixture.boxTexts(), QStringList(5, QString()));
    QVERIFY(!fixture.enabled().isChecked());
}

void tst_frmMODDIT::enabledIsWhatIsNotZero_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("checked");
    QTest::newRow("0") << QVariant(0) << false;
    QTest::newRow("1") << QVariant(1) << true;
    QTest::newRow("-1") << QVariant(-1) << true;
    QTest::newRow("2") << QVariant(2) << true;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("null") << QVariant() << false;
}

void tst_frmMODDIT::enabledIsWhatIsNotZero()
{
    QFETCH(const QVariant, stored);
    QFETCH(const bool, checked);
    Fixture fixture({number, {}, {}, {}, {}, {}, stored});
    QVERIFY(fixture.form.fp_CargarDIT());
    QCOMPARE(fixture.enabled().isChecked(), checked);
}

void tst_frmMODDIT::everyOpeningStartsFromTheDesignState()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.enabled().setFocus();
        fixture.box(u"txtINTDES"_s).setText(u"Otra"_s);
    }));
    fixture.current().number = u"NO"_s;
    fixture.inputs->willGiveRows(u"select * from INTINS where INTDCL = 'NO'"_s, columns);
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.numberLabel().text(), QString());
        QCOMPARE(fixture.numberLabel().accessibleDescription(), QString());
        QCOMPARE(fixture.boxTexts(), QStringList(5, QString()));
        QVERIFY(!fixture.enabled().isChecked());
        QVERIFY(fixture.box(u"txtINTNRO"_s).hasFocus());
    }));
}

void tst_frmMODDIT::tabOrderIsReadingOrder()
{
    Fixture fixture;
    fixture.whileLoaded([] {
        QStringList order;
        for (int step = 0; step < 6; ++step) {
            order.append(QApplication::focusWidget()->objectName());
            pressKey(Qt::Key_Tab);
        }
        QCOMPARE(order, textBoxes + QStringList{u"chDITOK"_s});
    });
}

void tst_frmMODDIT::enterWalksTheTextBoxesWithTheirColors()
{
    Fixture fixture;
    fixture.whileLoaded([&] {
        for (const QString& name : textBoxes) {
            const QLineEdit& box = fixture.box(name);
            QVERIFY(box.hasFocus());
            QCOMPARE(box.palette().color(QPalette::Base), colorFromOle(12648384));
            pressKey(Qt::Key_Return);
            QCOMPARE(box.palette().color(QPalette::Base), colorFromOle(16777215));
        }
        QVERIFY(fixture.enabled().hasFocus());
    });
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmMODDIT::escapeClosesWithoutSaving()
{
    Fixture fixture;
    QVERIFY(!fixture.whileLoaded([] {
        typeText(u"X"_s);
        pressKey(Qt::Key_Escape);
    }));
    QVERIFY(fixture.events().isEmpty());
    QVERIFY(!fixture.current().saved);
    QCOMPARE(handedBack(fixture.current()), QStringList(6, QString()));
}

// --- loading ---

void tst_frmMODDIT::declarationThatIsNotThere_data()
{
    QTest::addColumn<bool>("opens");
    QTest::newRow("no row") << true;
    QTest::newRow("cannot be opened") << false;
}

void tst_frmMODDIT::declarationThatIsNotThere()
{
    QFETCH(const bool, opens);
    Fixture fixture;
    const QString query = u"select * from INTINS where INTDCL = 'NO'"_s;
    fixture.current().number = u"NO"_s;
    if (opens) {
        fixture.inputs->willGiveRows(query, columns);
    } else {
        fixture.inputs->willNotOpen(query, RuntimeError(3709));
    }
    QVERIFY(!fixture.form.fp_CargarDIT());
    QVERIFY(whileOpen(fixture.form, [] {})); // it opens all the same
    QCOMPARE(fixture.boxes(), (QList{loadFault(u"NO"_s), loadFault(u"NO"_s)}));
}

void tst_frmMODDIT::numberWithAnApostropheIsNotThere()
{
    Fixture fixture;
    fixture.current().number = u"x' or '1'='1"_s;
    QVERIFY(!fixture.form.fp_CargarDIT());
    QCOMPARE(fixture.boxes(), QList{loadFault(u"x' or '1'='1"_s)});
    QVERIFY(fixture.events().isEmpty());
}

void tst_frmMODDIT::missingFieldIsReported()
{
    Fixture fixture;
    fixture.current().number = u"NO"_s;
    fixture.inputs->willGiveRows(u"select * from INTINS where INTDCL = 'NO'"_s, {u"INTDCL"_s}, {{u"NO"_s}});
    QVERIFY(!fixture.form.fp_CargarDIT());
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.startsWith(u"3265 - "));
}

// --- saving ---

void tst_frmMODDIT::savingWritesTheHeaderAndHandsItBack()
{
    Fixture fixture;
    QVERIFY(fixture.saved({{u"txtINTNRO"_s, u"TOR2"_s},
                           {u"txtINTDES"_s, u"Tubos"_s},
                           {u"txtINTCTC"_s, u"C-2"_s},
                           {u"txtINTFOF"_s, u"06/03/2024"_s},
                           {u"txtINTVEN"_s, u"01/01/2027"_s}}));
    QCOMPARE(fixture.events(), QStringList{u"update INTINS set INTNRO = 'TOR2',INTDES = 'Tubos',INTCTC = 'C-2',INTFOF "
                                           "= datevalue('06/03/2024'),INTVEN = datevalue('01/01/2027'),INTIOK = 1 "
                                           "where INTDCL = '24073IT14000001A'"_s});
    QVERIFY(fixture.current().saved);
    QCOMPARE(fixture.current().number, number);
    QCOMPARE(handedBack(fixture.current()),
             (QStringList{u"TOR2"_s, u"Tubos"_s, u"C-2"_s, u"06/03/2024"_s, u"01/01/2027"_s, u"1"_s}));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmMODDIT::savingFromEveryControl()
{
    for (const QString& name : textBoxes + QStringList{u"chDITOK"_s}) {
        Fixture fixture;
        QVERIFY(!fixture.whileLoaded([&] {
            fixture.form.findChild<QWidget*>(name)->setFocus();
            pressKey(Qt::Key_F11);
        }));
        QCOMPARE(fixture.events(), QStringList{save});
    }
}

void tst_frmMODDIT::uncheckedIsWrittenAsZero()
{
    Fixture fixture;
    QVERIFY(!fixture.whileLoaded([&] {
        fixture.enabled().setFocus();
        pressKey(Qt::Key_Space);
        pressKey(Qt::Key_F11);
    }));
    QCOMPARE(fixture.events(), QStringList{QString(save).replace(u"INTIOK = 1"_s, u"INTIOK = 0"_s)});
    QCOMPARE(fixture.current().enabled, u"0"_s);
}

void tst_frmMODDIT::faultsInTheirOrder_data()
{
    using Texts = QMap<QString, QString>;
    QTest::addColumn<Texts>("texts");
    QTest::addColumn<QString>("fault");
    const QString internalNumber = u"Debe ingresar algun valor en Nro de INTERNO."_s;
    const QString officialDate = u"El valor ingresado en la fecha de oficialización de inválida."_s;
    const QString expiryDate = u"El valor ingresado en la fecha de vencimiento de inválida."_s;
    QTest::newRow("internal number before both dates")
        << Texts{{u"txtINTNRO"_s, {}}, {u"txtINTFOF"_s, {}}, {u"txtINTVEN"_s, {}}} << internalNumber;
    QTest::newRow("official date before expiry date")
        << Texts{{u"txtINTFOF"_s, u"31/02/2024"_s}, {u"txtINTVEN"_s, {}}} << officialDate;
    QTest::newRow("expiry date") << Texts{{u"txtINTVEN"_s, u"pronto"_s}} << expiryDate;
    QTest::newRow("expiry date before the statement")
        << Texts{{u"txtINTVEN"_s, {}}, {u"txtINTCTC"_s, u"'"_s}} << expiryDate;
}

void tst_frmMODDIT::faultsInTheirOrder()
{
    using Texts = QMap<QString, QString>;
    QFETCH(const Texts, texts);
    QFETCH(const QString, fault);
    Fixture fixture;
    QVERIFY(!fixture.saved(texts));
    QCOMPARE(fixture.boxes(), QList{saveFault(fault)});
    QVERIFY(fixture.events().isEmpty());
    QVERIFY(!fixture.current().saved);
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        QCOMPARE(fixture.box(text.key()).text(), text.value()); // the edits are kept
    }
    QCOMPARE(handedBack(fixture.current()), QStringList(6, QString()));
}

void tst_frmMODDIT::apostrophesOfNumberAndDescriptionBecomeAccents()
{
    Fixture fixture;
    QVERIFY(fixture.saved({{u"txtINTNRO"_s, u"T'1'"_s}, {u"txtINTDES"_s, u"O'Brien"_s}}));
    QVERIFY(fixture.events().constFirst().startsWith(u"update INTINS set INTNRO = 'T´1´',INTDES = 'O´Brien',"));
    QCOMPARE(fixture.current().internalNumber, u"T´1´"_s);
    QCOMPARE(fixture.current().description, u"O´Brien"_s);
}

void tst_frmMODDIT::apostropheInTheCtcIsTheDatabasesError_data()
{
    QTest::addColumn<QString>("ctc");
    QTest::newRow("alone") << u"'"_s;
    QTest::newRow("inside") << u"C'1"_s;
    QTest::newRow("doubled") << u"C''1"_s;
    QTest::newRow("another statement") << u"x' where '1'='1"_s;
    QTest::newRow("another field") << u"x',INTDCL = 'y"_s;
}

void tst_frmMODDIT::apostropheInTheCtcIsTheDatabasesError()
{
    QFETCH(const QString, ctc);
    Fixture fixture;
    QVERIFY(!fixture.saved({{u"txtINTCTC"_s, ctc}}));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.startsWith(u"Error de sintaxis"));
    QVERIFY(fixture.boxes().constFirst().text.endsWith(
        u"\r\n\r\n-2147217900 - Sección [oVELDRA.frmMODDIT.fp_ModificarDIT]"));
    QVERIFY(fixture.events().isEmpty());
    QVERIFY(!fixture.current().saved);
    QCOMPARE(fixture.box(u"txtINTCTC"_s).text(), ctc);
}

void tst_frmMODDIT::apostropheInADateIsNoDate()
{
    for (const auto& name : {u"txtINTFOF"_s, u"txtINTVEN"_s}) {
        Fixture fixture;
        QVERIFY(!fixture.saved({{name, u"05/03/2024'"_s}}));
        QCOMPARE(fixture.boxes().size(), 1);
        QVERIFY(fixture.events().isEmpty());
    }
}

void tst_frmMODDIT::hostileTextsStayInTheirLiterals()
{
    for (const QString& text : {u"\"x\""_s, u"x; delete from INS"_s, u"x -- y"_s, u"/* x */"_s, u"%1 %2"_s, u"Ñandú"_s,
                                QString(10'000, u'x')}) {
        for (const auto& name : {u"txtINTNRO"_s, u"txtINTDES"_s, u"txtINTCTC"_s}) {
            Fixture fixture;
            fixture.form.fp_CargarDIT();
            fixture.box(name).setText(text);
            const QString usual = name == u"txtINTNRO"   ? u"'TOR1'"_s
                                  : name == u"txtINTDES" ? u"'Chapas'"_s
                                                         : u"'C-1'"_s;
            QVERIFY(fixture.form.fp_ModificarDIT());
            QCOMPARE(fixture.inputs->statements().constLast(),
                     QString(save).replace(usual, QString(u'\'' + text + u'\'')));
        }
    }
}

void tst_frmMODDIT::oddDatesAreSavedAsTyped_data()
{
    QTest::addColumn<QString>("date");
    QTest::newRow("short") << u"5-3-24"_s;
    QTest::newRow("named month") << u"5 de marzo de 2024"_s;
    QTest::newRow("ISO") << u"2024-03-05"_s;
    QTest::newRow("only a swapped reading") << u"03/13/2024"_s;
    QTest::newRow("blanks around") << u" 05/03/2024 "_s;
}

void tst_frmMODDIT::oddDatesAreSavedAsTyped()
{
    QFETCH(const QString, date);
    for (const auto& locale : {u"es_AR"_s, u"en_US"_s}) {
        QLocale::setDefault(QLocale(locale));
        Fixture fixture;
        QVERIFY(fixture.saved({{u"txtINTFOF"_s, date}, {u"txtINTVEN"_s, date}}));
        QVERIFY(
            fixture.events().constFirst().contains(u"INTFOF = datevalue('%1'),INTVEN = datevalue('%1'),"_s.arg(date)));
        QCOMPARE(fixture.current().officialDate, date);
        QCOMPARE(fixture.current().expiryDate, date);
    }
}

void tst_frmMODDIT::declarationDeletedMeanwhileStaysOpen()
{
    Fixture fixture;
    fixture.inputs->willAffect(save, 0);
    QVERIFY(!fixture.saved({}));
    QVERIFY(!fixture.form.fp_ModificarDIT());
    QCOMPARE(fixture.inputs->statements(), (QStringList{save, save}));
    QVERIFY(!fixture.current().saved);
    QCOMPARE(handedBack(fixture.current()), QStringList(6, QString()));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmMODDIT::failureOfTheUpdateIsReported()
{
    Fixture fixture;
    fixture.inputs->willThrow(save, RuntimeError(-2147467259, u"Bloqueada."_s));
    QVERIFY(!fixture.saved({}));
    QCOMPARE(fixture.boxes(), QList{saveFault(u"Bloqueada."_s, -2147467259)});
    QVERIFY(!fixture.current().saved);
}

void tst_frmMODDIT::flagOfAnEarlierSaveIsCleared()
{
    Fixture fixture;
    fixture.current().saved = true;
    QVERIFY(!fixture.saved({{u"txtINTNRO"_s, {}}}));
    QVERIFY(!fixture.current().saved);
}

// --- the discharge listing ---

void tst_frmMODDIT::f12HandsTheDeclarationToTheListing()
{
    Fixture fixture;
    QStringList seen;
    fixture.listing.whileShown = [&] {
        const core::CurrentDeclaration& current = fixture.current();
        seen = {current.internalNumber, current.number, current.officialDate, current.expiryDate};
    };
    QVERIFY(fixture.whileLoaded([&] {
        typeText(u"TOR'2"_s); // what the boxes say, saved or not
        fixture.box(u"txtINTVEN"_s).setText(u"1-1-27"_s);
        pressKey(Qt::Key_F12);
    }));
    QCOMPARE(seen, (QStringList{u"TOR'2"_s, number, u"05/03/2024"_s, u"1-1-27"_s}));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmMODDIT::f12ChecksBothDatesWithOneText_data()
{
    QTest::addColumn<QString>("officialDate");
    QTest::addColumn<QString>("expiryDate");
    QTest::addColumn<int>("boxes");
    QTest::addColumn<bool>("opens");
    QTest::newRow("both dates") << u"05/03/2024"_s << u"31/12/2026"_s << 0 << true;
    QTest::newRow("expiry date is none") << u"05/03/2024"_s << u"31/02/2026"_s << 1 << false;
    QTest::newRow("official date is none") << u"ayer"_s << u"31/12/2026"_s << 1 << true;
    QTest::newRow("neither") << QString() << QString() << 2 << false;
}

void tst_frmMODDIT::f12ChecksBothDatesWithOneText()
{
    QFETCH(const QString, officialDate);
    QFETCH(const QString, expiryDate);
    QFETCH(const int, boxes);
    QFETCH(const bool, opens);
    Fixture fixture;
    QVERIFY(fixture.whileLoaded([&] {
        fixture.box(u"txtINTFOF"_s).setText(officialDate);
        fixture.box(u"txtINTVEN"_s).setText(expiryDate);
        fixture.current().expiryDate = u"before"_s;
        pressKey(Qt::Key_F12);
    }));
    QCOMPARE(fixture.boxes(),
             QList<RecordedPrompts::Box>(boxes, RecordedPrompts::Box{dateFault, core::ExclamationBox, {}}));
    QCOMPARE(fixture.listing.shown, opens ? 1 : 0);
    QCOMPARE(fixture.current().internalNumber, u"TOR1"_s);
    QCOMPARE(fixture.current().number, number);
    QCOMPARE(fixture.current().officialDate, officialDate);
    QCOMPARE(fixture.current().expiryDate, opens ? expiryDate : u"before"_s);
}

void tst_frmMODDIT::f12SavesNothing()
{
    Fixture fixture;
    fixture.whileLoaded([] { pressKey(Qt::Key_F12); });
    QVERIFY(fixture.events().isEmpty());
    QVERIFY(!fixture.current().saved);
}

void tst_frmMODDIT::listingIsMadeOnceAndKept()
{
    Fixture fixture;
    QCOMPARE(fixture.listing.made, 0);
    for (int opening = 0; opening < 2; ++opening) {
        fixture.whileLoaded([] {
            pressKey(Qt::Key_F12);
            pressKey(Qt::Key_F12);
        });
    }
    QCOMPARE(fixture.listing.made, 1);
    QCOMPARE(fixture.listing.shown, 4);
}

// --- real boxes ---

void tst_frmMODDIT::realBoxStandsOverTheForm()
{
    const Fixture fixture; // only its connection is used
    core::ScreenPrompts prompts;
    MemorySettings settings;
    const FixedClock clock;
    core::Component component(prompts, settings, clock);
    component.state.g_DBINS.assign(fixture.inputs);
    component.state.declaration.number = number;
    frmMODDIT form(component, {});
    BoxDriver user;
    user.press(Qt::Key_Return);
    QVERIFY(whileOpen(form, [] {
        pressKey(Qt::Key_Delete); // the selected internal number
        pressKey(Qt::Key_F11);
    }));
    QVERIFY(user.done());
    QCOMPARE(user.seen().constFirst().icon, QMessageBox::Critical);
    QCOMPARE(user.seen().constFirst().title, u"oVELDRA"_s);
    QCOMPARE(user.seen().constFirst().parent, &form);
    QVERIFY(user.texts().constFirst().startsWith(u"Debe ingresar algun valor en Nro de INTERNO."));
}

QTEST_MAIN(tst_frmMODDIT)
#include "tst_frmMODDIT.moc"
