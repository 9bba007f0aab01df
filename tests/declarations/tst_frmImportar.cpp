#include "controls/OpenForm.h"
#include "declarations/HostDeclaration.h"
#include "doubles/TestComponent.h"

#include <controls/OleColor.h>
#include <core/ErrorReport.h>
#include <declarations/frmImportar.h>

#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;

namespace {

constexpr quint32 Red = 255;
constexpr quint32 Blue = 16711680;

const QString exported = u"Articulos exportados correctamente."_s;

/// A connection whose write scope cannot be opened.
class LockedConnection final : public ConexionDB
{
public:
    void setSql(const QString&) override {}
    std::unique_ptr<Recordset> openRecordset(bool& ok) override
    {
        ok = false;
        return nullptr;
    }
    qint64 execute() override { throw RuntimeError(5); }
    std::unique_ptr<WriteBurst> beginBurst() override { throw RuntimeError(-2147467259, u"Bloqueada"_s); }
};

/// The screen over the scripted declaration, filled in unless a test changes it.
class Fixture
{
public:
    explicit Fixture(ImportRoutines routines = {}) : form(component, std::move(routines)) {}

    [[nodiscard]] QLineEdit& box(const QString& name) const { return *form.findChild<QLineEdit*>(name); }
    [[nodiscard]] QCheckBox& check(const QString& name) const { return *form.findChild<QCheckBox*>(name); }
    [[nodiscard]] QLabel& label(const QString& name) const { return *form.findChild<QLabel*>(name); }
    [[nodiscard]] QFrame& frame() const { return *form.findChild<QFrame*>(u"framProgress"_s); }
    [[nodiscard]] QProgressBar& bar() const { return *form.findChild<QProgressBar*>(u"ProgressBar1"_s); }
    [[nodiscard]] QString status() const { return label(u"lbTexto"_s).text(); }
    [[nodiscard]] QColor statusColor() const { return label(u"lbTexto"_s).palette().color(QPalette::WindowText); }
    [[nodiscard]] const QStringList& statements() const { return host.db->statements(); }
    [[nodiscard]] QList<RecordedPrompts::Box> boxes() const { return component.prompts.boxes(); }

    void fillIn() const
    {
        box(u"txtINTDCL"_s).setText(u"24001IT14000001A"_s);
        box(u"txtINTFOF"_s).setText(u"05/03/2024"_s);
        box(u"txtINTDES"_s).setText(u"Repuestos"_s);
        box(u"txtVEN"_s).setText(u"05/03/2026"_s);
    }

    /// Opens the form, fills it in, lets `change` change it, presses F11, and lets `look` see what came of it.
    void process(const std::function<void()>& change, const std::function<void()>& look)
    {
        QVERIFY(whileOpen(form, [&] {
            fillIn();
            change();
            pressKey(Qt::Key_F11);
            look();
        }));
    }

    TestComponent component;
    HostDeclaration host{component.state};
    frmImportar form;
};

RecordedPrompts::Box box(const QString& text, core::BoxStyle style)
{
    return {text, style, {}};
}

const std::function<void()> unchanged = [] {};

} // namespace

class tst_frmImportar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void controlsHaveTheirNamesAndTexts();
    void openingShowsTheHostsContext();
    void everyOpeningStartsFromTheDesignState();
    void tabOrderIsReadingOrder();
    void enterWalksTheTextBoxesWithTheirColors();
    void escapeCloses();

    void checksInTheirOrder_data();
    void checksInTheirOrder();
    void formWithoutTypedDatesStopsAtTheFirstCheck();

    void integrityFailureIsRedAndStops_data();
    void integrityFailureIsRedAndStops();
    void integrityLooksAtTheHostsInterno();
    void officialDateIsCheckedAfterTheIntegrity();
    void integrityFailureComesBeforeTheOfficialDate();
    void unknownStatusOfTheIntegrityCheck();

    void successIsBlueAndTold();
    void statementsInOrder_data();
    void statementsInOrder();
    void checkBoxesReachTheImport();
    void valuesOfTheScreenReachTheImport();
    void importFailureIsRedWithoutBox();
    void unknownStatusOfTheImport();
    void failureAtEveryStatement_data();
    void failureAtEveryStatement();

    void statusWhileVerifying();
    void progressIsHiddenUntilUsed();
    void progressOfOneItem();
    void pointerIsBusyWhileWorkingOnly();

    void wholeRunIsOneBurstEndedBeforeTheBox();
    void noBurstIsOpenWhileTheOfficialDateIsTold();
    void failureAtCommitIsNoSuccess();
    void failureAtBeginOfBurst();

    void f11WhileProcessingDoesNothing();
    void f11AfterARunRunsAgain();
    void runtimeErrorOfTheScreenIsReported();

    void hostileTextsInEveryBox_data();
    void hostileTextsInEveryBox();
    void apostropheInEveryBox_data();
    void apostropheInEveryBox();

    void statusIsReadableUnderADarkTheme();
    void longStatusWrapsWithoutWideningTheForm();
};

void tst_frmImportar::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_frmImportar::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- the screen ---

void tst_frmImportar::controlsHaveTheirNamesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmImportar"_s);
    QCOMPARE(fixture.form.windowTitle(), u"Exportar a Stock de Insumos"_s);
    const QList<std::pair<QString, QString>> labels{{u"txtINTNRO"_s, u"Interno"_s},
                                                    {u"txtINTDCL"_s, u"Nro. Declaración"_s},
                                                    {u"txtINTFOF"_s, u"Fecha Oficialización"_s},
                                                    {u"txtINTDES"_s, u"Descripción"_s},
                                                    {u"txtAduana"_s, u"Aduana"_s},
                                                    {u"txtVEN"_s, u"Vencimiento"_s}};
    const auto allLabels = fixture.form.findChildren<QLabel*>();
    for (const auto& [name, text] : labels) {
        const QLineEdit& box = fixture.box(name);
        QCOMPARE(box.accessibleName(), text);
        const bool labelled =
            std::any_of(allLabels.begin(), allLabels.end(), [&, expected = text](const QLabel* label) {
                return label->text() == expected && label->buddy() == &box;
            });
        QVERIFY2(labelled, qPrintable(name));
    }
    QCOMPARE(fixture.check(u"chkAjustes"_s).text(), u"Calcular con Ajustes"_s);
    QCOMPARE(fixture.check(u"chOK"_s).text(), u"Despacho disponible para descontar los insumos"_s);
    QCOMPARE(fixture.label(u"lbversion"_s).text(), u"version." OVELDRA_VERSION ""_s);
    QCOMPARE(fixture.label(u"lbversion"_s).text().count(u'.'), 3);
    QCOMPARE(fixture.bar().parentWidget(), &fixture.frame());
    const bool hinted = std::any_of(allLabels.begin(), allLabels.end(), [](const QLabel* label) {
        return label->text() == u"[F11] Procesar - [ESC] Salir";
    });
    QVERIFY(hinted);
}

void tst_frmImportar::openingShowsTheHostsContext()
{
    Fixture fixture;
    fixture.component.state.sInternoExt = u"INT-9"_s;
    fixture.component.state.g_sAduana = u"073"_s;
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.box(u"txtINTNRO"_s).text(), u"INT-9"_s);
        QCOMPARE(fixture.box(u"txtAduana"_s).text(), u"073"_s);
        for (const auto& name : {u"txtINTDCL"_s, u"txtINTFOF"_s, u"txtINTDES"_s, u"txtVEN"_s}) {
            QCOMPARE(fixture.box(name).text(), QString());
        }
        QVERIFY(!fixture.check(u"chkAjustes"_s).isChecked());
        QVERIFY(!fixture.check(u"chOK"_s).isChecked());
        QCOMPARE(fixture.status(), QString());
        typeText(u"24001"_s); // at once
        QCOMPARE(fixture.box(u"txtINTDCL"_s).text(), u"24001"_s);
        QCOMPARE(fixture.box(u"txtINTNRO"_s).text(), u"INT-9"_s);
    }));
    QVERIFY(fixture.statements().isEmpty());
}

void tst_frmImportar::everyOpeningStartsFromTheDesignState()
{
    Fixture fixture;
    fixture.process(
        [&] {
            fixture.box(u"txtINTNRO"_s).setText(u"INT-1"_s);
            fixture.check(u"chkAjustes"_s).setChecked(true);
            fixture.check(u"chOK"_s).setChecked(true);
            fixture.check(u"chOK"_s).setFocus();
        },
        [&] { QCOMPARE(fixture.boxes(), QList{box(exported, core::InformationBox)}); });
    fixture.component.state.sInternoExt = u"INT-2"_s;
    QVERIFY(whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.box(u"txtINTNRO"_s).text(), u"INT-2"_s);
        QCOMPARE(fixture.box(u"txtINTDCL"_s).text(), QString());
        QVERIFY(fixture.box(u"txtINTDCL"_s).hasFocus());
        QVERIFY(!fixture.check(u"chkAjustes"_s).isChecked());
        QVERIFY(!fixture.check(u"chOK"_s).isChecked());
        QVERIFY(!fixture.frame().isVisible());
        QCOMPARE(fixture.status(), QString());
        QVERIFY(fixture.statusColor() != colorFromOle(Blue));
    }));
}

void tst_frmImportar::tabOrderIsReadingOrder()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.box(u"txtINTNRO"_s).setFocus();
        QStringList order;
        for (int step = 0; step < 8; ++step) {
            order.append(QApplication::focusWidget()->objectName());
            pressKey(Qt::Key_Tab);
        }
        QCOMPARE(order, (QStringList{u"txtINTNRO"_s, u"txtINTDCL"_s, u"txtINTFOF"_s, u"txtINTDES"_s, u"txtAduana"_s,
                                     u"txtVEN"_s, u"chkAjustes"_s, u"chOK"_s}));
        QVERIFY(fixture.box(u"txtINTNRO"_s).hasFocus());
    }));
}

void tst_frmImportar::enterWalksTheTextBoxesWithTheirColors()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&] {
        const QLineEdit& declaration = fixture.box(u"txtINTDCL"_s);
        QCOMPARE(declaration.palette().color(QPalette::Base), colorFromOle(12648384));
        pressKey(Qt::Key_Return);
        QVERIFY(fixture.box(u"txtINTFOF"_s).hasFocus());
        QCOMPARE(declaration.palette().color(QPalette::Base), colorFromOle(16777215));
    }));
}

void tst_frmImportar::escapeCloses()
{
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [] { pressKey(Qt::Key_Escape); }));
    QVERIFY(fixture.statements().isEmpty());
}

// --- checks ---

void tst_frmImportar::checksInTheirOrder_data()
{
    using Values = QMap<QString, QString>;
    QTest::addColumn<Values>("values");
    QTest::addColumn<QString>("message");
    const QString interno = u"Falta código de interno Tornel."_s;
    const QString declaration = u"Falta Numero de Declaración Maria."_s;
    const QString office = u"Falta codigo de aduana."_s;
    const QString expiry = u"Fecha de vencimiento debe tener una fecha válida"_s;
    const QString hyphen = u"No puede ingresar guiones ( - ) en el Número de Declaración"_s;
    QTest::newRow("interno before all others")
        << Values{{u"txtINTNRO"_s, {}}, {u"txtINTDCL"_s, {}}, {u"txtAduana"_s, {}}, {u"txtVEN"_s, {}}} << interno;
    QTest::newRow("declaration before office and expiry")
        << Values{{u"txtINTDCL"_s, {}}, {u"txtAduana"_s, {}}, {u"txtVEN"_s, {}}} << declaration;
    QTest::newRow("office before expiry and hyphen")
        << Values{{u"txtAduana"_s, {}}, {u"txtVEN"_s, {}}, {u"txtINTDCL"_s, u"1-2"_s}} << office;
    QTest::newRow("expiry before hyphen") << Values{{u"txtVEN"_s, {}}, {u"txtINTDCL"_s, u"1-2"_s}} << expiry;
    QTest::newRow("impossible expiry") << Values{{u"txtVEN"_s, u"31/02/2024"_s}} << expiry;
    QTest::newRow("expiry that is no date") << Values{{u"txtVEN"_s, u"pronto"_s}} << expiry;
    QTest::newRow("hyphen in the number") << Values{{u"txtINTDCL"_s, u"24001-IT14"_s}} << hyphen;
    QTest::newRow("hyphen before a bad official date")
        << Values{{u"txtINTDCL"_s, u"-"_s}, {u"txtINTFOF"_s, u"x"_s}} << hyphen;
}

void tst_frmImportar::checksInTheirOrder()
{
    using Values = QMap<QString, QString>;
    QFETCH(const Values, values);
    QFETCH(const QString, message);
    Fixture fixture;
    fixture.process(
        [&] {
            for (auto value = values.begin(); value != values.end(); ++value) {
                fixture.box(value.key()).setText(value.value());
            }
        },
        [&] {
            QCOMPARE(fixture.boxes(), QList{box(message, core::ExclamationBox)});
            QCOMPARE(fixture.status(), QString());
            QVERIFY(!fixture.frame().isVisible());
        });
    QVERIFY(fixture.host.db->events().isEmpty());
}

void tst_frmImportar::formWithoutTypedDatesStopsAtTheFirstCheck()
{
    Fixture fixture;
    fixture.component.state.sInternoExt.clear();
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_F11); }));
    QCOMPARE(fixture.component.prompts.texts(), QStringList{u"Falta código de interno Tornel."_s});
}

// --- integrity and official date ---

void tst_frmImportar::integrityFailureIsRedAndStops_data()
{
    QTest::addColumn<int>("failing");
    QTest::addColumn<QString>("status");
    QTest::newRow("articles") << 1 << u"ER ERROR 1 - Error en acceder a los articulos"_s;
    QTest::newRow("stock") << 3 << u"ER ERROR 1 - Error en acceder al Stock de insumos"_s;
}

void tst_frmImportar::integrityFailureIsRedAndStops()
{
    QFETCH(const int, failing);
    QFETCH(const QString, status);
    Fixture fixture;
    fixture.host.db->failStatement(failing, RuntimeError(3709));
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), status);
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
        QVERIFY(!fixture.frame().isVisible());
    });
    QCOMPARE(fixture.statements().size(), failing);
}

void tst_frmImportar::integrityLooksAtTheHostsInterno()
{
    Fixture fixture;
    fixture.process([&] { fixture.box(u"txtINTNRO"_s).setText(u"OTRO"_s); },
                    [&] {
                        QVERIFY(fixture.statements().at(0).contains(u"interno = 'INT-1'"));
                        QVERIFY(fixture.statements().at(3).contains(u"interno = 'OTRO'"));
                    });
}

void tst_frmImportar::officialDateIsCheckedAfterTheIntegrity()
{
    for (const auto& date : {QString(), u"31/02/2024"_s, u"ayer"_s}) {
        Fixture fixture;
        fixture.process([&] { fixture.box(u"txtINTFOF"_s).setText(date); },
                        [&] {
                            QCOMPARE(fixture.boxes(),
                                     QList{box(u"El campo Fecha de Oficialización, debe tener una fecha valida"_s,
                                               core::ExclamationBox)});
                            QCOMPARE(fixture.status(), u"Fecha de oficialización inválida"_s);
                            QVERIFY(!fixture.frame().isVisible());
                        });
        QCOMPARE(fixture.statements().size(), 3);
    }
}

void tst_frmImportar::integrityFailureComesBeforeTheOfficialDate()
{
    Fixture fixture;
    fixture.host.db->failStatement(1, RuntimeError(3709));
    fixture.process([&] { fixture.box(u"txtINTFOF"_s).clear(); },
                    [&] {
                        QVERIFY(fixture.status().startsWith(u"ER"));
                        QVERIFY(fixture.boxes().isEmpty());
                    });
}

void tst_frmImportar::unknownStatusOfTheIntegrityCheck()
{
    Fixture fixture({.verify = [](core::SharedState&, const QString&) { return u"algo"_s; }});
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), u"(desconocido) algo"_s);
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
    });
    QVERIFY(fixture.statements().isEmpty());
}

// --- import ---

void tst_frmImportar::successIsBlueAndTold()
{
    Fixture fixture;
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), u"OK"_s);
        QCOMPARE(fixture.statusColor(), colorFromOle(Blue));
        QCOMPARE(fixture.boxes(), QList{box(exported, core::InformationBox)});
    });
}

void tst_frmImportar::statementsInOrder_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("unitValue");
    QTest::newRow("es_AR") << u"es_AR"_s << u"38,333333"_s;
    QTest::newRow("en_US") << u"en_US"_s << u"38.333333"_s;
}

void tst_frmImportar::statementsInOrder()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, unitValue);
    QLocale::setDefault(QLocale(locale));
    Fixture fixture;
    fixture.process(unchanged, unchanged);
    QCOMPARE(fixture.statements().size(), 11);
    QVERIFY(fixture.statements().at(0).startsWith(HostDeclaration::withoutCode));
    QCOMPARE(fixture.statements().at(2),
             u"select count(INTDCL) as Total from INTINS where INTDCL = '24001IT14000001A'"_s);
    QVERIFY(fixture.statements().at(3).startsWith(HostDeclaration::factors));
    QCOMPARE(
        fixture.statements().at(4),
        u"insert into INTINS (INTNRO,INTDCL,INTFOF,INTDES,INTVEN,INTADU,INTIOK) values ('INT-1','24001IT14000001A',"
        "datevalue('05/03/2024'),'Repuestos',datevalue('05/03/2026'),'001',0)"_s);
    QCOMPARE(fixture.statements().at(7),
             QString(u"insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) values "
                     "('24001IT14000001A','ART1','KG','3','"_s +
                     unitValue + u"','3','8471','001','000')"));
}

void tst_frmImportar::checkBoxesReachTheImport()
{
    Fixture fixture;
    fixture.process(
        [&] {
            fixture.check(u"chkAjustes"_s).setFocus();
            pressKey(Qt::Key_Space);
            fixture.check(u"chOK"_s).setFocus();
            pressKey(Qt::Key_Space);
        },
        [&] {
            QVERIFY(fixture.statements().at(4).endsWith(u"'001',1)"));
            QVERIFY(fixture.statements().at(7).contains(u"'3','40','3'")); // (115 + 7 - 2) / 3
        });
}

void tst_frmImportar::valuesOfTheScreenReachTheImport()
{
    QStringList seen;
    Fixture fixture(
        {.import = [&seen](core::SharedState&, ImportProgress&, const QString& interno, const QString& declaration,
                           const QString& officialDate, const QString& description, const QString& expiry,
                           const QString& customsOffice, qint16 available, bool adjustments) {
            seen = {interno,
                    declaration,
                    officialDate,
                    description,
                    expiry,
                    customsOffice,
                    QString::number(available),
                    adjustments ? u"ajustes"_s : u"sin ajustes"_s};
            return u"OK"_s;
        }});
    fixture.process([&] { fixture.check(u"chOK"_s).setChecked(true); }, unchanged);
    QCOMPARE(seen, (QStringList{u"INT-1"_s, u"24001IT14000001A"_s, u"05/03/2024"_s, u"Repuestos"_s, u"05/03/2026"_s,
                                u"001"_s, u"1"_s, u"sin ajustes"_s}));
}

void tst_frmImportar::importFailureIsRedWithoutBox()
{
    Fixture fixture;
    fixture.host.db->failStatement(6, RuntimeError(3709));
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), u"ER Error en acceder a los Item's del despacho"_s);
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
    });
}

void tst_frmImportar::unknownStatusOfTheImport()
{
    Fixture fixture({.import = [](auto&&...) { return QString(); }});
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), u"(desconocido) "_s);
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
    });
}

void tst_frmImportar::failureAtEveryStatement_data()
{
    QTest::addColumn<int>("ordinal");
    for (int ordinal = 1; ordinal <= 11; ++ordinal) {
        QTest::addRow("%d", ordinal) << ordinal;
    }
}

void tst_frmImportar::failureAtEveryStatement()
{
    QFETCH(const int, ordinal);
    Fixture fixture;
    fixture.host.db->failStatement(ordinal, RuntimeError(-2147467259, u"Disco lleno"_s));
    fixture.process(unchanged, [&] {
        QVERIFY2(fixture.status().startsWith(u"ER"), qPrintable(fixture.status()));
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
    });
    const bool undone = ordinal > 3; // the integrity check writes nothing
    QCOMPARE(fixture.statements().filter(u"delete from"_s).size(), undone ? 2 : 0);
    QCOMPARE(fixture.host.db->commits(), 0);
    QVERIFY(!fixture.host.db->burstIsOpen());
}

// --- while it works ---

void tst_frmImportar::statusWhileVerifying()
{
    QString shown;
    const Fixture* seen = nullptr;
    Fixture fixture({.verify = [&](core::SharedState&, const QString& declaration) {
        shown = seen->status() + u'|' + declaration;
        return u"ER x"_s;
    }});
    seen = &fixture;
    fixture.process(unchanged, unchanged);
    QCOMPARE(shown, u"Verificando Integridad|24001IT14000001A"_s);
}

void tst_frmImportar::progressIsHiddenUntilUsed()
{
    Fixture fixture;
    fixture.process([&] { QVERIFY(!fixture.frame().isVisible()); },
                    [&] {
                        QVERIFY(fixture.frame().isVisible());
                        QCOMPARE(fixture.bar().minimum(), 1);
                        QCOMPARE(fixture.bar().maximum(), 2);
                        QCOMPARE(fixture.bar().value(), 2);
                    });
}

void tst_frmImportar::progressOfOneItem()
{
    QList<int> values;
    const Fixture* seen = nullptr;
    Fixture fixture({.import = [&](core::SharedState&, ImportProgress& progress, auto&&...) {
        values.append(seen->frame().isVisible() ? 1 : 0);
        progress.limits(0, 1);
        values.append(seen->bar().maximum());
        progress.advance();
        values.append(seen->bar().value());
        return u"OK"_s;
    }});
    seen = &fixture;
    fixture.process(unchanged, unchanged);
    QCOMPARE(values, (QList{1, 1, 1}));
}

void tst_frmImportar::pointerIsBusyWhileWorkingOnly()
{
    bool busyInImport = false;
    bool busyInBox = true;
    Fixture fixture({.import = [&](auto&&...) {
        busyInImport = QGuiApplication::overrideCursor() != nullptr;
        return u"OK"_s;
    }});
    fixture.component.prompts.whileShown = [&] { busyInBox = QGuiApplication::overrideCursor() != nullptr; };
    fixture.process(unchanged, [&] { QVERIFY(QGuiApplication::overrideCursor() == nullptr); });
    QVERIFY(busyInImport);
    QVERIFY(!busyInBox);
}

// --- the write burst ---

void tst_frmImportar::wholeRunIsOneBurstEndedBeforeTheBox()
{
    Fixture fixture;
    bool openInBox = true;
    int commitsInBox = 0;
    fixture.component.prompts.whileShown = [&] {
        openInBox = fixture.host.db->burstIsOpen();
        commitsInBox = fixture.host.db->commits();
    };
    fixture.process(unchanged, unchanged);
    QVERIFY(!openInBox);
    QCOMPARE(commitsInBox, 1);
    QCOMPARE(fixture.host.db->events(), QStringList{u"<begin>"_s} + fixture.statements() + QStringList{u"<commit>"_s});
}

void tst_frmImportar::noBurstIsOpenWhileTheOfficialDateIsTold()
{
    Fixture fixture;
    bool openInBox = true;
    fixture.component.prompts.whileShown = [&] { openInBox = fixture.host.db->burstIsOpen(); };
    fixture.process([&] { fixture.box(u"txtINTFOF"_s).clear(); }, unchanged);
    QVERIFY(!openInBox);
    QCOMPARE(fixture.host.db->bursts(), 1);
}

void tst_frmImportar::failureAtCommitIsNoSuccess()
{
    Fixture fixture;
    fixture.host.db->failCommit(RuntimeError(-2147467259, u"Disco lleno"_s));
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), u"ER ERROR -2147467259 - Disco lleno"_s);
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
    });
    QVERIFY(!fixture.host.db->burstIsOpen());
}

void tst_frmImportar::failureAtBeginOfBurst()
{
    Fixture fixture;
    fixture.component.state.g_DBINS.assign(std::make_shared<LockedConnection>());
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.status(), u"ER ERROR -2147467259 - Bloqueada"_s);
        QCOMPARE(fixture.statusColor(), colorFromOle(Red));
        QVERIFY(fixture.boxes().isEmpty());
    });
    QVERIFY(fixture.statements().isEmpty());
}

// --- keys and errors ---

void tst_frmImportar::f11WhileProcessingDoesNothing()
{
    Fixture fixture;
    int boxesUp = 0;
    fixture.component.prompts.whileShown = [&] {
        ++boxesUp;
        QTest::keyClick(&fixture.form, Qt::Key_F11);
    };
    fixture.process(unchanged, unchanged);
    QCOMPARE(boxesUp, 1);
    QCOMPARE(fixture.statements().size(), 11);

    Fixture nested({.import = [&](auto&&...) {
        QTest::keyClick(&nested.form, Qt::Key_F11);
        return u"OK"_s;
    }});
    nested.process(unchanged, unchanged);
    QCOMPARE(nested.statements().size(), 3);
}

void tst_frmImportar::f11AfterARunRunsAgain()
{
    Fixture fixture;
    fixture.process(unchanged, [&] {
        pressKey(Qt::Key_F11);
        QCOMPARE(fixture.boxes().size(), 2);
        QCOMPARE(fixture.statements().size(), 22);
    });
}

void tst_frmImportar::runtimeErrorOfTheScreenIsReported()
{
    Fixture fixture;
    fixture.component.prompts.whileShown = [&] {
        if (fixture.boxes().size() == 1) {
            throw RuntimeError(7, u"Memoria insuficiente"_s);
        }
    };
    fixture.process(unchanged, [&] {
        QCOMPARE(fixture.boxes().size(), 2);
        QCOMPARE(
            fixture.boxes().constLast(),
            box(u"7 - Memoria insuficiente\r\n\r\nSección [oVELDRA.frmImportar.lp_Procesar]"_s, core::CriticalBox));
        fixture.component.prompts.whileShown = {};
        pressKey(Qt::Key_F11); // the error has not left it deaf
        QCOMPARE(fixture.boxes().constLast(), box(exported, core::InformationBox));
    });
}

// --- hostile texts ---

void tst_frmImportar::hostileTextsInEveryBox_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"txtINTNRO", "txtINTDCL", "txtINTFOF", "txtINTDES", "txtAduana", "txtVEN"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_frmImportar::hostileTextsInEveryBox()
{
    QFETCH(const QString, name);
    Fixture usual;
    usual.process(unchanged, unchanged);
    const QMap<QString, QString> usualText{{u"txtINTNRO"_s, u"INT-1"_s},
                                           {u"txtINTDCL"_s, u"24001IT14000001A"_s},
                                           {u"txtINTDES"_s, u"Repuestos"_s},
                                           {u"txtAduana"_s, u"001"_s}};
    for (const QString& text : hostileTexts()) {
        Fixture fixture;
        fixture.host.db->willGiveRows(u"select IDARTICULO"_s, HostDeclaration::subitemColumns);
        QString taken;
        fixture.process(
            [&] {
                fixture.box(name).setText(text);
                taken = fixture.box(name).text();
            },
            unchanged);
        const bool isDate = name == u"txtINTFOF" || name == u"txtVEN";
        const bool hasHyphen = name == u"txtINTDCL" && taken.contains(u'-');
        if (isDate || hasHyphen) {
            QCOMPARE(fixture.boxes().size(), 1);
            QCOMPARE(fixture.boxes().constFirst().style, core::ExclamationBox);
            QVERIFY(fixture.statements().size() <= 3); // at most the integrity check
            QVERIFY(fixture.statements().filter(u"insert"_s).isEmpty());
            continue;
        }
        QCOMPARE(fixture.status(), u"OK"_s);
        // Every statement is one of the usual ones with this text in its literal, and none besides.
        QStringList expected;
        for (QString statement : usual.statements()) {
            const bool ofTheHostsInterno =
                statement.startsWith(HostDeclaration::withoutCode) || statement.startsWith(HostDeclaration::nullCode);
            const bool inHeaderOnly = name == u"txtAduana" && !statement.startsWith(HostDeclaration::header);
            if (!ofTheHostsInterno && !inHeaderOnly) {
                statement.replace(QString(u'\'' + usualText.value(name) + u'\''), QString(u'\'' + taken + u'\''));
            }
            expected.append(statement);
        }
        if (name == u"txtINTNRO") {
            // The host knows no subitems of another interno.
            expected.removeIf([](const QString& statement) { return statement.startsWith(HostDeclaration::article); });
        }
        QCOMPARE(fixture.statements(), expected);
    }
}

void tst_frmImportar::apostropheInEveryBox_data()
{
    hostileTextsInEveryBox_data();
}

void tst_frmImportar::apostropheInEveryBox()
{
    QFETCH(const QString, name);
    for (const auto& text : {u"'"_s, u"x' or 'a'='a"_s, u"'); delete from INS where ('1'='1"_s}) {
        Fixture fixture;
        fixture.process([&] { fixture.box(name).setText(text); },
                        [&] {
                            if (name == u"txtINTFOF" || name == u"txtVEN") {
                                QCOMPARE(fixture.boxes().size(), 1);
                                return;
                            }
                            QVERIFY(fixture.status().startsWith(u"ER ERROR -2147217900 - "));
                            QCOMPARE(fixture.statusColor(), colorFromOle(Red));
                            QVERIFY(fixture.boxes().isEmpty());
                        });
        QVERIFY(fixture.statements().size() <= 3);
        QVERIFY(fixture.statements().filter(u"insert"_s).isEmpty());
        QVERIFY(fixture.statements().filter(u"delete"_s).isEmpty());
        QVERIFY(fixture.statements().filter(text).isEmpty() || text == u"'");
    }
}

// --- looks ---

void tst_frmImportar::statusIsReadableUnderADarkTheme()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(30, 30, 30)));
    {
        Fixture fixture;
        fixture.process(unchanged, [&] {
            const QPalette& palette = fixture.label(u"lbTexto"_s).palette();
            QVERIFY(palette.color(QPalette::Window).lightness() > 200);
            QVERIFY(fixture.label(u"lbTexto"_s).autoFillBackground());
            QCOMPARE(palette.color(QPalette::WindowText), colorFromOle(Blue));
        });
    }
    QApplication::setPalette(before);
}

void tst_frmImportar::longStatusWrapsWithoutWideningTheForm()
{
    QString status;
    Fixture fixture({.verify = [&status](core::SharedState&, const QString&) { return status; }});
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.fillIn();
        const QSize before = fixture.form.size();
        for (const auto& text : {QString(u"ER ERROR "_s + u"palabra "_s.repeated(40)), u"ER "_s.repeated(4000),
                                 QString(u"ER "_s + QString(10'000, u'x'))}) {
            status = text;
            pressKey(Qt::Key_F11);
            QCoreApplication::processEvents();
            QCOMPARE(fixture.status(), text);
            QCOMPARE(fixture.form.size(), before);
        }
        const QLabel& label = fixture.label(u"lbTexto"_s);
        QVERIFY(label.wordWrap());
        QCOMPARE(label.textFormat(), Qt::PlainText);
        // Room for the longest sentences that databases have.
        QVERIFY(label.heightForWidth(label.width()) > 0);
        status = u"ER ERROR "_s + u"palabra "_s.repeated(40);
        pressKey(Qt::Key_F11);
        QVERIFY(label.heightForWidth(label.width()) <= label.height());
    }));
}

QTEST_MAIN(tst_frmImportar)
#include "tst_frmImportar.moc"
