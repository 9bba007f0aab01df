#include "ListingColumns.h"
#include "controls/OpenForm.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"

#include <oVELDRA/RuntimeError.h>

#include <core/ErrorReport.h>
#include <listings/Pagination.h>
#include <listings/Printing.h>
#include <listings/frmListados.h>

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using namespace oVELDRA::listings;

namespace {

const RuntimeError refused(482, u"La impresora LASER no puede imprimir: está detenida."_s);

/// Printers that note what they are asked for. Texts of a document come as "[…]", pages as "<page>".
class RecordedPrinters final : public Printers
{
public:
    QStringList names{u"LASER"_s, u"MATRIZ"_s};
    QStringList events;
    std::optional<RuntimeError> failure; ///< of the next document
    std::optional<RuntimeError> listFailure;

    [[nodiscard]] QStringList deviceNames() const override
    {
        if (listFailure) {
            throw RuntimeError(*listFailure);
        }
        return names;
    }

    [[nodiscard]] std::unique_ptr<PrintDocument> begin(const QString& deviceName, const QString& title) override
    {
        if (failure) {
            throw RuntimeError(*failure);
        }
        events.append(u"<begin "_s + deviceName + u'|' + title + u'>');
        return std::make_unique<Document>(events);
    }

private:
    class Document final : public PrintDocument
    {
    public:
        explicit Document(QStringList& events) : m_events(events) {}
        void print(const QString& text) override { m_events.append(text); }
        void newPage() override { m_events.append(u"<page>"_s); }
        void end() override { m_events.append(u"<end>"_s); }

    private:
        QStringList& m_events;
    };
};

class RecordedSpooler final : public Spooler
{
public:
    struct Page
    {
        QString deviceName;
        QString text;
    };
    QList<Page> pages;
    std::optional<RuntimeError> failure;

    void send(const QString& deviceName, const QString& page) override
    {
        if (failure) {
            throw RuntimeError(*failure);
        }
        pages.append({deviceName, page});
    }
};

/// The screen over a connection and printers that answer from a script.
struct Fixture
{
    explicit Fixture(int discharges = 3)
    {
        component.state.g_DBINS.assign(inputs);
        component.state.g_sFmtCantidad = u"00.000000"_s;
        component.state.g_sFmtListado = u"00.000000"_s;
        component.state.declaration.number = u"26001IT14000533F"_s;
        component.state.declaration.internalNumber = u"IT260062"_s;
        component.state.declaration.officialDate = u"10/03/2026"_s;
        component.state.declaration.expiryDate = u"10/03/2027"_s;
        component.clock.set(QDate(2026, 11, 20));
        inputs->willGiveRows(header, {u"INTDCL"_s}, {{u"26001IT14000999Z"_s}});
        QList<FakeConexionDB::Row> rows;
        for (int i = 1; i <= discharges; ++i) {
            rows.append(listingRow(i));
        }
        inputs->willGiveRows(u"select * from DIP"_s, listingColumns, rows);
    }

    void set(const QString& key, const QString& value)
    {
        component.settings.save(u"oZENDALO"_s, u"IMPRESION"_s, key, value);
    }

    template <typename Control>
    [[nodiscard]] Control& control(const QString& name) const
    {
        return *form.findChild<Control*>(name);
    }
    [[nodiscard]] QString label(const QString& name) const { return control<QLabel>(name).text(); }

    /// Opens the form, sets the lines per page and prints with F12. Whether the form was still open then.
    bool print(const QString& linesPerPage, bool dos = false)
    {
        return whileOpen(form, [&] {
            if (dos) {
                control<QRadioButton>(u"opMODDOS"_s).click();
            }
            control<QLineEdit>(u"txtPAGLIN"_s).setText(linesPerPage);
            pressKey(Qt::Key_F12);
        });
    }

    [[nodiscard]] QStringList numbers(const QString& text) const
    {
        QStringList found;
        for (const QString& line : text.split(u"\r\n"_s, Qt::SkipEmptyParts)) {
            found.append(line.mid(61, 9).trimmed()); // the quantity counts the records
        }
        return found;
    }

    const QString header = u"select INTDCL from INTINS"_s;
    std::shared_ptr<FakeConexionDB> inputs = std::make_shared<FakeConexionDB>();
    TestComponent component;
    RecordedPrinters printers;
    RecordedSpooler spooler;
    frmListados form{component, printers, spooler};
};

/// "01,000000" up to that number, as the quantity's column shows them.
QStringList quantities(int last)
{
    QStringList texts;
    for (int i = 1; i <= last; ++i) {
        texts.append(u"%1,000000"_s.arg(i, 2, 10, '0'_L1));
    }
    return texts;
}

} // namespace

class tst_frmListados : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QLocale::setDefault(QLocale(u"es_AR"_s)); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }

    void controlsHaveTheirNamesAndTexts();
    void declarationAndSettingsAreShownOnLoading();
    void withoutSettingsTheDefaultsAreShown();
    void storedPrinterIsPicked();
    void unknownStoredPrinterLeavesTheTextEmptyAndTheDefaultPrinterInUse_data();
    void unknownStoredPrinterLeavesTheTextEmptyAndTheDefaultPrinterInUse();
    void printersThatCannotBeListedAreReported();
    void withoutPrintersNothingIsPrinted();
    void enterInThePrintersGoesOn();
    void escapeCloses();
    void statementsLocateTheDeclarationByItsInterno();
    void declarationThatIsNotFoundIsReported_data();
    void declarationThatIsNotFoundIsReported();
    void withoutDischargesNothingIsPrinted_data();
    void withoutDischargesNothingIsPrinted();
    void internoWithApostropheIsReported();
    void fieldThatIsNotThereIsReported();
    void settingIsReadAnewAtEachRun();
    void windowsModePrintsHeadingAndRecordsPageByPage();
    void laterPagesRepeatTheFirstRecords();
    void dosModeSendsTheRecordsAlonePageByPage();
    void widePrecisionWidensTheColumns();
    void textSizeIsNotRead();
    void messagesFollowTheWork();
    void linesPerPageThatAreNoNumberAreReported_data();
    void linesPerPageThatAreNoNumberAreReported();
    void refusedDocumentIsReportedAndTheFormStays_data();
    void refusedDocumentIsReportedAndTheFormStays();
    void everyOpeningStartsAnew();
};

void tst_frmListados::controlsHaveTheirNamesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.control<QRadioButton>(u"opMODWIN"_s).text(), u"Impresión modo Windows"_s);
    QCOMPARE(fixture.control<QRadioButton>(u"opMODDOS"_s).text(), u"Impresión DOS con SPOOL API"_s);
    QCOMPARE(fixture.control<QComboBox>(u"cboImpresion"_s).accessibleName(), u"Impresoras"_s);
    QCOMPARE(fixture.control<QLineEdit>(u"txtIMPTAM"_s).accessibleName(), u"Tamaño Texto"_s);
    QCOMPARE(fixture.control<QLineEdit>(u"txtPAGLIN"_s).accessibleName(), u"Lineas por pagina"_s);
    QCOMPARE(fixture.form.findChild<QGroupBox*>()->title(), u"Configuración"_s);
    const auto labels = fixture.form.findChildren<QLabel*>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [](const QLabel* label) { return label->text() == u"[F12] - Imprimir - [ESC] Salir"; }));
}

void tst_frmListados::declarationAndSettingsAreShownOnLoading()
{
    Fixture fixture;
    fixture.set(u"IMPTAM"_s, u"12"_s);
    fixture.set(u"PAGLIN"_s, u"60"_s);
    whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.label(u"lbINTDCL"_s), u"26001IT14000533F"_s);
        QCOMPARE(fixture.label(u"lbINTFOF"_s), u"10/03/2026"_s);
        QCOMPARE(fixture.label(u"lbINTVEN"_s), u"10/03/2027"_s);
        QCOMPARE(fixture.label(u"lbMensaje"_s), QString());
        QCOMPARE(fixture.control<QLineEdit>(u"txtIMPTAM"_s).text(), u"12"_s);
        QCOMPARE(fixture.control<QLineEdit>(u"txtPAGLIN"_s).text(), u"60"_s);
        QVERIFY(fixture.control<QRadioButton>(u"opMODWIN"_s).isChecked());
    });
    QVERIFY(fixture.inputs->statements().isEmpty());
}

void tst_frmListados::withoutSettingsTheDefaultsAreShown()
{
    Fixture fixture;
    whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.control<QLineEdit>(u"txtIMPTAM"_s).text(), u"10"_s);
        QCOMPARE(fixture.control<QLineEdit>(u"txtPAGLIN"_s).text(), u"75"_s);
        const auto& printers = fixture.control<QComboBox>(u"cboImpresion"_s);
        QCOMPARE(printers.count(), 2);
        QCOMPARE(printers.itemText(0), u"LASER"_s);
        QCOMPARE(printers.itemText(1), u"MATRIZ"_s);
    });
}

void tst_frmListados::storedPrinterIsPicked()
{
    Fixture fixture;
    fixture.set(u"IMPNOM"_s, u"MATRIZ"_s);
    whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.control<QComboBox>(u"cboImpresion"_s).currentText(), u"MATRIZ"_s);
        pressKey(Qt::Key_F12);
    });
    QCOMPARE(fixture.printers.events.value(0), u"<begin MATRIZ|DIT 26001IT14000533F>"_s);
}

void tst_frmListados::unknownStoredPrinterLeavesTheTextEmptyAndTheDefaultPrinterInUse_data()
{
    QTest::addColumn<QString>("stored");
    QTest::newRow("nothing stored") << QString();
    QTest::newRow("another name") << u"TINTA"_s;
    QTest::newRow("another letter case") << u"laser"_s;
}

void tst_frmListados::unknownStoredPrinterLeavesTheTextEmptyAndTheDefaultPrinterInUse()
{
    QFETCH(const QString, stored);
    Fixture fixture;
    fixture.set(u"IMPNOM"_s, stored);
    whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.control<QComboBox>(u"cboImpresion"_s).currentText(), QString());
        pressKey(Qt::Key_F12);
    });
    QCOMPARE(fixture.printers.events.value(0), u"<begin |DIT 26001IT14000533F>"_s);
}

void tst_frmListados::printersThatCannotBeListedAreReported()
{
    Fixture fixture;
    fixture.printers.listFailure = RuntimeError(482, u"El sistema de impresión no responde."_s);
    whileOpen(fixture.form, [] {});
    QCOMPARE(fixture.component.prompts.texts(),
             QStringList(
                 core::errorText(*fixture.printers.listFailure, u"Sección [oZENDALO.frmImpresion.CargarImpresion]")));
}

void tst_frmListados::withoutPrintersNothingIsPrinted()
{
    Fixture fixture;
    fixture.printers.names.clear();
    fixture.print(u"30"_s);
    const QList<RecordedPrompts::Box> expected{{u"No hay Impresoras en el Sistema"_s, core::CriticalBox, {}}};
    QCOMPARE(fixture.component.prompts.boxes(), expected);
    QVERIFY(fixture.inputs->statements().isEmpty());
    QVERIFY(fixture.printers.events.isEmpty());
    QCOMPARE(fixture.label(u"lbMensaje"_s), QString());
}

void tst_frmListados::enterInThePrintersGoesOn()
{
    Fixture fixture;
    whileOpen(fixture.form, [&] {
        fixture.control<QComboBox>(u"cboImpresion"_s).setFocus();
        pressKey(Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), &fixture.control<QLineEdit>(u"txtIMPTAM"_s));
    });
}

void tst_frmListados::escapeCloses()
{
    Fixture fixture;
    QVERIFY(!whileOpen(fixture.form, [] { pressKey(Qt::Key_Escape); }));
}

void tst_frmListados::statementsLocateTheDeclarationByItsInterno()
{
    Fixture fixture;
    QVERIFY(fixture.form.GenerarLineas());
    // The discharges are those of the number found, which need not be the one shown.
    QCOMPARE(fixture.inputs->statements(),
             QStringList({u"select INTDCL from INTINS where INTNRO = 'IT260062'"_s,
                          u"select * from DIP where ARTDCL = '26001IT14000999Z' order by EXTFOF"_s}));
    QCOMPARE(fixture.form.lines().size(), std::size_t{3});
    QCOMPARE(fixture.form.lines()[2].quantity, u"3"_s);
}

void tst_frmListados::declarationThatIsNotFoundIsReported_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<int>("error");
    QTest::newRow("no row") << true << 3021;
    QTest::newRow("query that cannot be opened") << false << -2147467259;
}

void tst_frmListados::declarationThatIsNotFoundIsReported()
{
    QFETCH(const bool, opens);
    QFETCH(const int, error);
    Fixture fixture;
    fixture.inputs = std::make_shared<FakeConexionDB>();
    fixture.component.state.g_DBINS.assign(fixture.inputs);
    if (opens) {
        fixture.inputs->willGiveRows(fixture.header, {u"INTDCL"_s});
    } else {
        fixture.inputs->willNotOpen(fixture.header, RuntimeError(-2147467259));
    }
    fixture.print(u"30"_s);
    const QList<RecordedPrompts::Box> expected{
        {u"No se puede acceder"_s, core::PlainBox, {}},
        {core::errorText(RuntimeError(error), u" - seccion [oVELDRA.frmListados_GenerarLineas]::"),
         core::CriticalBox,
         {}}};
    QCOMPARE(fixture.component.prompts.boxes(), expected);
    QVERIFY(fixture.printers.events.isEmpty());
}

void tst_frmListados::withoutDischargesNothingIsPrinted_data()
{
    QTest::addColumn<bool>("opens");
    QTest::newRow("no row") << true;
    QTest::newRow("query that cannot be opened") << false;
}

void tst_frmListados::withoutDischargesNothingIsPrinted()
{
    QFETCH(const bool, opens);
    Fixture fixture(0);
    if (!opens) {
        fixture.inputs->willNotOpen(u"select * from DIP where"_s, RuntimeError(-2147467259));
    }
    fixture.print(u"30"_s);
    const QList<RecordedPrompts::Box> expected{
        {u"No hay Exportaciones relacionadas con este DIT"_s, core::ExclamationBox, {}}};
    QCOMPARE(fixture.component.prompts.boxes(), expected);
    QVERIFY(fixture.printers.events.isEmpty());
    QCOMPARE(fixture.label(u"lbMensaje"_s), u"Preparando Impresora"_s);
}

void tst_frmListados::internoWithApostropheIsReported()
{
    Fixture fixture;
    fixture.component.state.declaration.internalNumber = u"IT'1"_s;
    QVERIFY(!fixture.form.GenerarLineas());
    QCOMPARE(fixture.component.prompts.boxes().size(), 1);
    QVERIFY(fixture.component.prompts.texts().first().contains(u"-2147217900"_s));
    QVERIFY(fixture.inputs->statements().isEmpty());
}

void tst_frmListados::fieldThatIsNotThereIsReported()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select * from DIP where"_s, {u"EXTNOF"_s}, {{u"x"_s}});
    fixture.print(u"30"_s);
    QCOMPARE(fixture.component.prompts.texts(),
             QStringList(core::errorText(RuntimeError(3265), u" - seccion [oVELDRA.frmListados_GenerarLineas]::")));
    QVERIFY(fixture.printers.events.isEmpty());
}

void tst_frmListados::settingIsReadAnewAtEachRun()
{
    Fixture fixture;
    QVERIFY(fixture.form.GenerarLineas());
    QCOMPARE(fixture.form.lines()[1].waste, 2.5);
    fixture.component.settings.save(u"TORNEL"_s, u"OBJ"_s, u"VELDRA.RestarPerMer"_s, u"S"_s);
    QVERIFY(fixture.form.GenerarLineas());
    QCOMPARE(fixture.form.lines().size(), std::size_t{3});
    QCOMPARE(fixture.form.lines()[1].waste, 0.05); // 2.5 % of 2, because its flag is off
    QCOMPARE(fixture.form.lines()[1].loss, 1.25);
}

void tst_frmListados::windowsModePrintsHeadingAndRecordsPageByPage()
{
    Fixture fixture;
    fixture.set(u"IMPNOM"_s, u"LASER"_s);
    fixture.print(u"30"_s);
    const ListingLayout layout{false, u"00.000000"_s, u"00.000000"_s};
    const ListedDeclaration declaration{u"26001IT14000533F"_s, u"10/03/2026"_s, u"10/03/2027"_s};
    QCOMPARE(fixture.printers.events, QStringList({u"<begin LASER|DIT 26001IT14000533F>"_s,
                                                   pageHeading(1, 1, QDate(2026, 11, 20), declaration, layout),
                                                   recordLines(fixture.form.lines(), layout), u"<end>"_s}));
    QVERIFY(fixture.spooler.pages.isEmpty());
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_frmListados::laterPagesRepeatTheFirstRecords()
{
    Fixture fixture(60);
    fixture.print(u"30"_s);
    const QStringList& events = fixture.printers.events;
    QCOMPARE(events.size(), 7);
    QVERIFY(events[1].startsWith(u"Pagina 1 de 2 "_s));
    QCOMPARE(fixture.numbers(events[2]), quantities(25));
    QCOMPARE(events[3], u"<page>"_s);
    QVERIFY(events[4].startsWith(u"Pagina 2 de 2 "_s) && !events[4].contains(u"DIT NÚMERO"_s));
    QCOMPARE(fixture.numbers(events[5]), quantities(30));
    QCOMPARE(events[6], u"<end>"_s);
}

void tst_frmListados::dosModeSendsTheRecordsAlonePageByPage()
{
    Fixture fixture(60);
    fixture.set(u"IMPNOM"_s, u"MATRIZ"_s);
    fixture.print(u"30"_s, true);
    QCOMPARE(fixture.spooler.pages.size(), 2);
    QCOMPARE(fixture.spooler.pages[0].deviceName, u"MATRIZ"_s);
    QCOMPARE(fixture.numbers(fixture.spooler.pages[0].text), quantities(25));
    QCOMPARE(fixture.numbers(fixture.spooler.pages[1].text), quantities(30));
    QVERIFY(fixture.printers.events.isEmpty());
    QCOMPARE(fixture.label(u"lbMensaje"_s), u"Datos enviados a la impresora"_s);
}

void tst_frmListados::widePrecisionWidensTheColumns()
{
    Fixture fixture;
    fixture.component.state.g_bOpVDE = true;
    fixture.component.state.g_sFmtCantidad = u"00.00000000"_s;
    fixture.component.state.g_sFmtListado = u"00.00000000"_s;
    fixture.print(u"30"_s, true);
    const ListingLayout layout{true, u"00.00000000"_s, u"00.00000000"_s};
    QCOMPARE(fixture.spooler.pages.value(0).text, recordLines(fixture.form.lines(), layout));
}

void tst_frmListados::textSizeIsNotRead()
{
    Fixture fixture;
    whileOpen(fixture.form, [&] {
        fixture.control<QLineEdit>(u"txtIMPTAM"_s).setText(u"no es un número"_s);
        pressKey(Qt::Key_F12);
    });
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
    QCOMPARE(fixture.printers.events.size(), 4);
}

void tst_frmListados::messagesFollowTheWork()
{
    Fixture fixture(61);
    QStringList messages;
    class Watcher final : public QObject
    {
    public:
        Watcher(QLabel& label, QStringList& messages) : m_label(label), m_messages(messages)
        {
            label.installEventFilter(this);
        }
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (event->type() == QEvent::Paint && (m_messages.isEmpty() || m_messages.last() != m_label.text())) {
                m_messages.append(m_label.text());
            }
            return QObject::eventFilter(watched, event);
        }

    private:
        QLabel& m_label;
        QStringList& m_messages;
    } watcher(fixture.control<QLabel>(u"lbMensaje"_s), messages);
    fixture.print(u"30"_s);
    messages.removeAll(QString());
    // Each was painted while the printing went on.
    QCOMPARE(messages, QStringList({u"Preparando Impresora"_s, u"Imprimiendo 1 de 3"_s, u"Imprimiendo 2 de 3"_s,
                                    u"Imprimiendo 3 de 3"_s, u"Datos enviados a la impresora"_s}));
}

void tst_frmListados::linesPerPageThatAreNoNumberAreReported_data()
{
    QTest::addColumn<QString>("linesPerPage");
    QTest::addColumn<int>("error");
    QTest::newRow("empty") << QString() << 13;
    QTest::newRow("text") << u"treinta"_s << 13;
    QTest::newRow("zero") << u"0"_s << 11;
    QTest::newRow("negative") << u"-5"_s << 5;
    QTest::newRow("out of range") << u"99999999999"_s << 6;
}

void tst_frmListados::linesPerPageThatAreNoNumberAreReported()
{
    QFETCH(const QString, linesPerPage);
    QFETCH(const int, error);
    Fixture fixture;
    fixture.print(linesPerPage);
    QCOMPARE(fixture.component.prompts.texts(),
             QStringList(core::errorText(RuntimeError(error), u" - seccion [oveldra.frmlistados_Imprimir]::")));
    QVERIFY(fixture.printers.events.isEmpty());
}

void tst_frmListados::refusedDocumentIsReportedAndTheFormStays_data()
{
    QTest::addColumn<bool>("dos");
    QTest::newRow("Windows mode") << false;
    QTest::newRow("DOS mode") << true;
}

void tst_frmListados::refusedDocumentIsReportedAndTheFormStays()
{
    QFETCH(const bool, dos);
    Fixture fixture;
    fixture.printers.failure = refused;
    fixture.spooler.failure = refused;
    QVERIFY(fixture.print(u"30"_s, dos));
    QCOMPARE(fixture.component.prompts.texts(),
             QStringList(core::errorText(refused, u" - seccion [oveldra.frmlistados_Imprimir]::")));
    QCOMPARE(fixture.label(u"lbMensaje"_s),
             u"Imprimiendo 1 de 1"_s.repeated(dos ? 1 : 0) + u"Preparando Impresora"_s.repeated(dos ? 0 : 1));
    fixture.printers.failure.reset();
    fixture.spooler.failure.reset();
    fixture.print(u"30"_s, dos);
    QCOMPARE(fixture.label(u"lbMensaje"_s), u"Datos enviados a la impresora"_s);
}

void tst_frmListados::everyOpeningStartsAnew()
{
    Fixture fixture;
    fixture.print(u"30"_s, true);
    fixture.component.state.declaration.number = u"26073IT14000588P"_s;
    whileOpen(fixture.form, [&] {
        QCOMPARE(fixture.label(u"lbINTDCL"_s), u"26073IT14000588P"_s);
        QCOMPARE(fixture.label(u"lbMensaje"_s), QString());
        QVERIFY(fixture.control<QRadioButton>(u"opMODWIN"_s).isChecked());
        QCOMPARE(fixture.control<QLineEdit>(u"txtPAGLIN"_s).text(), u"75"_s);
    });
}

QTEST_MAIN(tst_frmListados)
#include "tst_frmListados.moc"
