#include "catalog/NextDialog.h"
#include "controls/OpenForm.h"
#include "declarations/ArticlesStore.h"
#include "declarations/PdfText.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"
#include "doubles/ThrownError.h"

#include <controls/ListView.h>
#include <declarations/AvailableShare.h>
#include <declarations/frmDITART.h>

#include <QLabel>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::declarations;
using namespace oVELDRA::doubles;
using catalog::inNextDialog;

namespace {

const QStringList columns{u"ARTITM"_s, u"ARTSBT"_s, u"ARTNRO"_s, u"ARTUNI"_s, u"ARTCAT"_s, u"ARTPRE"_s, u"ARTDSC"_s};
const QStringList printColumns{u"pARTITM"_s, u"pARTSBT"_s, u"ARTNRO"_s,  u"ARTNCM"_s,  u"ARTCTC"_s,
                               u"ARTUNI"_s,  u"pARTCAT"_s, u"pARTPRE"_s, u"pARTDSC"_s, u"pPROC"_s};
const QString load = u"select * from INS where INTDCL = '24073IT14000123A' order by ARTITM,ARTSBT "_s;
const QString loadLocation = u" - [oVELDRA.frmDITART.lp_CargarListado]"_s;
const QString printLocation = u" - [oVELDRA.frmDITART.lp_Imprimir]"_s;
const QColor red(255, 0, 0);

RecordedPrompts::Box critical(const QString& text)
{
    return {text, core::CriticalBox, {}};
}

/// The form; its report is saved as the file of that path.
class Fixture
{
public:
    explicit Fixture(const std::shared_ptr<ConexionDB>& inputs)
    {
        component.state.g_DBINS.assign(inputs);
        component.state.g_sFmtCantidad = u"00.000000"_s;
        component.state.declaration.number = ArticlesStore::number;
        ReportDialogs dialogs;
        dialogs.pdfFile = [this](QWidget&, const QString& proposal) {
            proposed = proposal;
            return pdf();
        };
        form = std::make_unique<frmDITART>(component, dialogs);
    }

    [[nodiscard]] ListView& list() const { return *static_cast<ListView*>(form->findChild<QTreeView*>(u"lstV"_s)); }
    [[nodiscard]] QList<RecordedPrompts::Box> boxes() const { return component.prompts.boxes(); }
    [[nodiscard]] QString pdf() const { return folder.filePath(u"informe.pdf"_s); }

    [[nodiscard]] QStringList row(int row) const
    {
        QStringList cells;
        for (int column = 0; column < list().model()->columnCount(); ++column) {
            cells.append(list().text(row, column));
        }
        return cells;
    }

    /// The articles' codes, from top to bottom.
    [[nodiscard]] QStringList codes() const
    {
        QStringList codes;
        for (int row = 0; row < list().rowCount(); ++row) {
            codes.append(list().text(row, 2));
        }
        return codes;
    }

    /// Whether a row's sub-items are red.
    [[nodiscard]] bool isRed(int row) const
    {
        const auto color = list().model()->index(row, 1).data(Qt::ForegroundRole);
        return color.isValid() && color.value<QColor>() == red;
    }

    TestComponent component;
    QTemporaryDir folder;
    QString proposed;
    std::unique_ptr<frmDITART> form;
};

/// Over a connection that answers from a script; rows are read at once.
struct ScriptedFixture : Fixture
{
    ScriptedFixture() : ScriptedFixture(std::make_shared<FakeConexionDB>()) {}
    explicit ScriptedFixture(const std::shared_ptr<FakeConexionDB>& scripted) : Fixture(scripted), inputs(scripted) {}

    /// An article with these numbers, and what else there is.
    static FakeConexionDB::Row article(const QString& code, const QVariant& declared, const QVariant& available)
    {
        return {1, 0, code, u"07"_s, declared, 1.5, available};
    }

    std::shared_ptr<FakeConexionDB> inputs;
};

/// Over a database; rows are read when they are shown.
struct StoredFixture : Fixture
{
    StoredFixture() : StoredFixture(ArticlesStore()) {}
    explicit StoredFixture(const ArticlesStore& stored) : Fixture(stored.connection()), store(stored) {}

    ArticlesStore store;
};

} // namespace

class tst_frmDITART : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void shareOfWhatIsAvailable_data();
    void shareOfWhatIsAvailable();
    void shareThatCannotBeWorkedOutIsAnError_data();
    void shareThatCannotBeWorkedOutIsAnError();

    void controlsHaveTheirNamesTitlesAndTexts();
    void statementNamesTheCurrentDeclarationAndItsOrder();
    void rowsShowFormattedNumbers_data();
    void rowsShowFormattedNumbers();
    void storedArticlesComeByItemAndSubitem();
    void nullFields();
    void lessThanThirtyPerCentIsRed_data();
    void lessThanThirtyPerCentIsRed();
    void onlySubItemsAreRed();
    void declarationWithoutArticlesIsAnEmptyList();
    void rowThatCannotBeDividedEndsTheListBeforeIt_data();
    void rowThatCannotBeDividedEndsTheListBeforeIt();
    void numberThatCannotBeShownEndsTheListBeforeIt();
    void errorOfTheDatabaseInARowLeavesTheRowsBefore();
    void queryThatCannotBeOpenedIsReported();
    void missingConnectionIsReported();
    void declarationWithApostropheIsReportedAndRunsNothing();
    void everyOpeningLoadsAnew();
    void rowsOfTheLastOpeningAreGoneAfterAnError();
    void pointerIsAnArrowWhenAnErrorIsShown();
    void fiftyThousandArticlesAreAllThere();
    void keyboardWalksTheListAndEscapeCloses();

    void f12RunsThePrintStatement();
    void reportHasTheDeclarationsNumberAndTheArticles();
    void reportHasTwoDecimalsWhateverTheListHas();
    void reportIsOfTheCurrentDeclaration();
    void focusIsBackOnTheListAfterTheReport();
    void everyReportReadsAnew();
    void noReportWithoutArticles();
    void noReportWhenItsQueryDoesNotOpen();
    void noReportWhenAShareCannotBeWorkedOut();
    void noReportWhenAFieldIsMissing();
};

void tst_frmDITART::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_frmDITART::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

// --- the share ---

void tst_frmDITART::shareOfWhatIsAvailable_data()
{
    QTest::addColumn<double>("open");
    QTest::addColumn<double>("declared");
    QTest::addColumn<double>("share");
    QTest::addColumn<bool>("scarce");
    QTest::newRow("exactly thirty") << 12.0 << 40.0 << 30.0 << false;
    QTest::newRow("twenty-nine") << 11.6 << 40.0 << 29.0 << true;
    QTest::newRow("all") << 40.0 << 40.0 << 100.0 << false;
    QTest::newRow("nothing") << 0.0 << 40.0 << 0.0 << true;
    QTest::newRow("shown as thirty") << 29.995 << 100.0 << 29.995 << false;
    QTest::newRow("shown as less") << 29.994 << 100.0 << 29.994 << true;
    QTest::newRow("taken too often") << -4.0 << 40.0 << -10.0 << true;
    QTest::newRow("less than nothing declared") << -12.0 << -40.0 << 30.0 << false;
}

void tst_frmDITART::shareOfWhatIsAvailable()
{
    QFETCH(const double, open);
    QFETCH(const double, declared);
    QFETCH(const double, share);
    QFETCH(const bool, scarce);
    QCOMPARE(availableShare(open, declared), share);
    QCOMPARE(isScarce(share), scarce);
}

void tst_frmDITART::shareThatCannotBeWorkedOutIsAnError_data()
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("open");
    QTest::addColumn<double>("declared");
    QTest::addColumn<int>("error");
    QTest::newRow("something of nothing") << 1.0 << 0.0 << 11;
    QTest::newRow("less than nothing of nothing") << -1.0 << 0.0 << 11;
    QTest::newRow("something of minus nothing") << 1.0 << -0.0 << 11;
    QTest::newRow("nothing of nothing") << 0.0 << 0.0 << 6;
    QTest::newRow("hundred times too much") << 1e307 << 1.0 << 6;
    QTest::newRow("of too little") << 1e300 << 1e-300 << 6;
    QTest::newRow("endless") << infinite << 1.0 << 6;
}

void tst_frmDITART::shareThatCannotBeWorkedOutIsAnError()
{
    QFETCH(const double, open);
    QFETCH(const double, declared);
    QFETCH(const int, error);
    QCOMPARE(numberThrownBy([&] { static_cast<void>(availableShare(open, declared)); }), error);
}

// --- the list ---

void tst_frmDITART::controlsHaveTheirNamesTitlesAndTexts()
{
    const ScriptedFixture fixture;
    QCOMPARE(fixture.form->objectName(), u"frmDITART"_s);
    QCOMPARE(fixture.form->windowTitle(), u"Listado de articulos"_s);
    const auto* hint = fixture.form->findChild<QLabel*>(u"Label1"_s);
    QVERIFY(hint != nullptr);
    QCOMPARE(hint->text(), u"[F12] Imprimir - [ESC] Salir"_s);
    QStringList titles;
    for (int column = 0; column < fixture.list().model()->columnCount(); ++column) {
        titles.append(fixture.list().model()->headerData(column, Qt::Horizontal).toString());
    }
    QCOMPARE(titles, (QStringList{u"Item"_s, u"Subit"_s, u"Articulo"_s, u"Unidad"_s, u"Cantidad"_s, u"Unitario"_s,
                                  u"Disponible"_s, u"Disp %"_s}));
    QCOMPARE(fixture.list().accessibleName(), u"Listado de articulos"_s);
}

void tst_frmDITART::statementNamesTheCurrentDeclarationAndItsOrder()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns);
    QVERIFY(whileOpen(*fixture.form, [] {}));
    QCOMPARE(fixture.inputs->statements(), QStringList{load});
}

void tst_frmDITART::rowsShowFormattedNumbers_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QStringList>("cells");
    QTest::newRow("six decimals, comma") << u"es_AR"_s << u"00.000000"_s
                                         << QStringList{u"1234,567800"_s, u"05,500000"_s, u"617,283900"_s, u"50,00"_s};
    QTest::newRow("eight decimals, comma")
        << u"es_AR"_s << u"00.00000000"_s
        << QStringList{u"1234,56780000"_s, u"05,500000"_s, u"617,28390000"_s, u"50,00"_s};
    QTest::newRow("six decimals, period")
        << u"en_US"_s << u"00.000000"_s << QStringList{u"1234.567800"_s, u"05.500000"_s, u"617.283900"_s, u"50.00"_s};
    QTest::newRow("eight decimals, period")
        << u"en_US"_s << u"00.00000000"_s
        << QStringList{u"1234.56780000"_s, u"05.500000"_s, u"617.28390000"_s, u"50.00"_s};
}

void tst_frmDITART::rowsShowFormattedNumbers()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, format);
    QFETCH(const QStringList, cells);
    QLocale::setDefault(QLocale(locale));
    ScriptedFixture fixture;
    fixture.component.state.g_sFmtCantidad = format;
    fixture.inputs->willGiveRows(load, columns, {{1, u"002"_s, u" ART 1 "_s, u"07"_s, 1234.5678, 5.5, 617.2839}});
    fixture.form->lp_CargarListado();
    QCOMPARE(fixture.row(0), (QStringList{u"001"_s, u"002"_s, u" ART 1 "_s, u"07"_s} + cells));
}

void tst_frmDITART::storedArticlesComeByItemAndSubitem()
{
    StoredFixture fixture;
    fixture.store.add({2, 0, u"C"_s});
    fixture.store.add({1, 1, u"B"_s});
    fixture.store.add({10, 0, u"D"_s});
    fixture.store.add({1, 0, u"A"_s, u"40,125"_s, u"11,6"_s, u"0,1234567"_s, u"01"_s});
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        QCOMPARE(fixture.codes(), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s}));
        QCOMPARE(fixture.row(0), (QStringList{u"001"_s, u"000"_s, u"A"_s, u"01"_s, u"40,125000"_s, u"00,123457"_s,
                                              u"11,600000"_s, u"28,91"_s}));
        QCOMPARE(fixture.row(3).constFirst(), u"010"_s);
        QCOMPARE(fixture.list().currentRow(), 0);
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDITART::nullFields()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns, {{{}, {}, {}, {}, 2, {}, {}}});
    fixture.form->lp_CargarListado();
    QCOMPARE(fixture.row(0),
             (QStringList{u""_s, u""_s, u""_s, u""_s, u"02,000000"_s, u"00,000000"_s, u"00,000000"_s, u"00,00"_s}));
}

void tst_frmDITART::lessThanThirtyPerCentIsRed_data()
{
    QTest::addColumn<double>("available");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("marked");
    QTest::newRow("thirty") << 12.0 << u"30,00"_s << false;
    QTest::newRow("twenty-nine") << 11.6 << u"29,00"_s << true;
    QTest::newRow("rounded up to thirty") << 11.998 << u"30,00"_s << false;
    QTest::newRow("rounded down from there") << 11.9976 << u"29,99"_s << true;
    QTest::newRow("nothing") << 0.0 << u"00,00"_s << true;
}

void tst_frmDITART::lessThanThirtyPerCentIsRed()
{
    QFETCH(const double, available);
    QFETCH(const QString, text);
    QFETCH(const bool, marked);
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns, {ScriptedFixture::article(u"A"_s, 40, available)});
    fixture.form->lp_CargarListado();
    QCOMPARE(fixture.list().text(0, 7), text);
    QCOMPARE(fixture.isRed(0), marked);
}

void tst_frmDITART::onlySubItemsAreRed()
{
    StoredFixture fixture;
    fixture.store.add({1, 0, u"A"_s, u"40"_s, u"12"_s});
    fixture.store.add({2, 0, u"B"_s, u"40"_s, u"11,6"_s});
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        const QAbstractItemModel& model = *fixture.list().model();
        for (int column = 0; column < model.columnCount(); ++column) {
            QVERIFY(!model.index(0, column).data(Qt::ForegroundRole).isValid());
            const QVariant color = model.index(1, column).data(Qt::ForegroundRole);
            QCOMPARE(color.isValid(), column > 0);
            QVERIFY(column == 0 || color.value<QColor>() == red);
        }
    }));
}

void tst_frmDITART::declarationWithoutArticlesIsAnEmptyList()
{
    const StoredFixture fixture;
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        QVERIFY(fixture.list().isVisible());
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.list().rowCount(), 0);
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDITART::rowThatCannotBeDividedEndsTheListBeforeIt_data()
{
    QTest::addColumn<bool>("inMemory");
    QTest::addColumn<QString>("available");
    QTest::addColumn<int>("rowsBefore");
    QTest::addColumn<QString>("message");
    for (const bool inMemory : {false, true}) {
        const char* const where = inMemory ? "in memory" : "read at once";
        QTest::addRow("in the middle, %s", where) << inMemory << u"5"_s << 2 << u"División por cero\r\n\r\n11"_s;
        QTest::addRow("first row, %s", where) << inMemory << u"5"_s << 0 << u"División por cero\r\n\r\n11"_s;
        QTest::addRow("nothing open either, %s", where) << inMemory << u"0"_s << 2 << u"Desbordamiento\r\n\r\n6"_s;
    }
}

void tst_frmDITART::rowThatCannotBeDividedEndsTheListBeforeIt()
{
    QFETCH(const bool, inMemory);
    QFETCH(const QString, available);
    QFETCH(const int, rowsBefore);
    QFETCH(const QString, message);
    // The row itself is not in the list: a row is added with all its columns, and this one has no percentage.
    ArticlesStore store;
    QList<FakeConexionDB::Row> rows;
    QStringList before;
    for (int item = 1; item <= 4; ++item) {
        const bool fails = item == rowsBefore + 1;
        const QString code = u"AC-%1"_s.arg(item);
        store.add({item, 0, code, fails ? u"0"_s : u"40"_s, fails ? available : u"40"_s});
        rows.append(ScriptedFixture::article(code, fails ? 0 : 40, fails ? available.toInt() : 40));
        if (item <= rowsBefore) {
            before.append(code);
        }
    }
    auto scripted = std::make_shared<FakeConexionDB>();
    scripted->willGiveRows(load, columns, rows);
    const Fixture fixture(inMemory ? store.connection() : scripted);
    QVERIFY(whileOpen(*fixture.form, [&] {
        QCOMPARE(fixture.codes(), before);
        QCOMPARE(fixture.list().currentRow(), rowsBefore > 0 ? 0 : -1);
        QVERIFY(fixture.list().isVisible());
    }));
    QCOMPARE(fixture.boxes(), QList{critical(message + loadLocation)});
}

void tst_frmDITART::numberThatCannotBeShownEndsTheListBeforeIt()
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const QList<FakeConexionDB::Row> unshowable{{2, 0, u"X"_s, u"07"_s, infinite, 1, 1},
                                                {2, 0, u"X"_s, u"07"_s, 1, infinite, 1},
                                                {2, 0, u"X"_s, u"07"_s, 1, 1, infinite}};
    for (const FakeConexionDB::Row& row : unshowable) {
        const ScriptedFixture fixture;
        fixture.inputs->willGiveRows(load, columns, {ScriptedFixture::article(u"A"_s, 40, 40), row});
        fixture.form->lp_CargarListado();
        QCOMPARE(fixture.codes(), QStringList{u"A"_s});
        QCOMPARE(fixture.boxes(), QList{critical(u"Desbordamiento\r\n\r\n6"_s + loadLocation)});
    }
}

void tst_frmDITART::errorOfTheDatabaseInARowLeavesTheRowsBefore()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns.mid(0, 6), {{1, 0, u"A"_s, u"07"_s, 40, 1}});
    fixture.form->lp_CargarListado();
    QCOMPARE(fixture.list().rowCount(), 0);
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n3265"_s + loadLocation));

    const ScriptedFixture unread;
    QStringList withoutCode = columns;
    withoutCode.removeAt(2);
    unread.inputs->willGiveRows(load, withoutCode, {{1, 0, u"07"_s, 40, 1, 40}});
    unread.form->lp_CargarListado();
    QCOMPARE(unread.list().rowCount(), 0);
    QCOMPARE(unread.boxes().size(), 1);
    QVERIFY(unread.boxes().constFirst().text.endsWith(u"\r\n\r\n3265"_s + loadLocation));
}

void tst_frmDITART::queryThatCannotBeOpenedIsReported()
{
    const ScriptedFixture fixture;
    fixture.inputs->willNotOpen(load, RuntimeError(-2147217865, u"No está la tabla INS."_s));
    QVERIFY(whileOpen(*fixture.form, [&fixture] { QCOMPARE(fixture.list().rowCount(), 0); }));
    QCOMPARE(fixture.boxes(), QList{critical(u"No está la tabla INS.\r\n\r\n-2147217865"_s + loadLocation)});
}

void tst_frmDITART::missingConnectionIsReported()
{
    ScriptedFixture fixture;
    fixture.component.state.g_DBINS.release();
    QVERIFY(whileOpen(*fixture.form, [] { pressKey(Qt::Key_F12); }));
    QCOMPARE(fixture.boxes().size(), 2);
    QVERIFY(fixture.boxes().at(0).text.endsWith(u"\r\n\r\n3709"_s + loadLocation));
    QVERIFY(fixture.boxes().at(1).text.endsWith(u"\r\n\r\n3709"_s + printLocation));
}

void tst_frmDITART::declarationWithApostropheIsReportedAndRunsNothing()
{
    ScriptedFixture fixture;
    fixture.component.state.declaration.number = u"x' or '1'='1"_s;
    QVERIFY(whileOpen(*fixture.form, [] { pressKey(Qt::Key_F12); }));
    QVERIFY(fixture.inputs->statements().isEmpty());
    QCOMPARE(fixture.boxes().size(), 2);
    QVERIFY(fixture.boxes().at(0).text.endsWith(u"\r\n\r\n-2147217900"_s + loadLocation));
    QVERIFY(fixture.boxes().at(1).text.endsWith(u"\r\n\r\n-2147217900"_s + printLocation));
}

void tst_frmDITART::everyOpeningLoadsAnew()
{
    ScriptedFixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {ScriptedFixture::article(u"A"_s, 40, 40)});
    fixture.inputs->willGiveRows(u"select"_s, columns, {ScriptedFixture::article(u"B"_s, 40, 40)});
    QVERIFY(whileOpen(*fixture.form, [&fixture] { QCOMPARE(fixture.codes(), QStringList{u"A"_s}); }));
    fixture.component.state.declaration.number = u"OTRA"_s;
    QVERIFY(whileOpen(*fixture.form, [&fixture] { QCOMPARE(fixture.codes(), QStringList{u"B"_s}); }));
    QCOMPARE(fixture.inputs->statements(),
             (QStringList{load, u"select * from INS where INTDCL = 'OTRA' order by ARTITM,ARTSBT "_s}));
}

void tst_frmDITART::rowsOfTheLastOpeningAreGoneAfterAnError()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns, {ScriptedFixture::article(u"A"_s, 40, 40)});
    fixture.inputs->willNotOpen(load, RuntimeError(3021));
    fixture.form->lp_CargarListado();
    QCOMPARE(fixture.list().rowCount(), 1);
    fixture.form->lp_CargarListado();
    QCOMPARE(fixture.list().rowCount(), 0);
    QVERIFY(!fixture.list().isHidden());
    QCOMPARE(fixture.boxes().size(), 1);
}

void tst_frmDITART::pointerIsAnArrowWhenAnErrorIsShown()
{
    ScriptedFixture fixture;
    fixture.inputs->willNotOpen(u"select"_s, RuntimeError(3021));
    int boxes = 0;
    bool busy = false;
    fixture.component.prompts.whileShown = [&] {
        ++boxes;
        busy = busy || QGuiApplication::overrideCursor() != nullptr || fixture.list().isHidden();
    };
    fixture.form->lp_CargarListado();
    fixture.form->lp_Imprimir();
    QCOMPARE(boxes, 2);
    QVERIFY(!busy);
}

void tst_frmDITART::fiftyThousandArticlesAreAllThere()
{
    StoredFixture fixture;
    fixture.store.addMany(50'000);
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        QCOMPARE(fixture.list().rowCount(), 50'000);
        pressKey(Qt::Key_End);
        QCOMPARE(fixture.list().currentRow(), 49'999);
        QCOMPARE(fixture.row(49'999).mid(0, 3), (QStringList{u"50000"_s, u"000"_s, u"AC-50000"_s}));
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDITART::keyboardWalksTheListAndEscapeCloses()
{
    StoredFixture fixture;
    fixture.store.addMany(3);
    QVERIFY(!whileOpen(*fixture.form, [&fixture] {
        QVERIFY(fixture.list().hasFocus());
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.list().currentRow(), 1);
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_F11);
        QVERIFY(fixture.form->isVisible());
        pressKey(Qt::Key_Escape);
    }));
}

// --- the report ---

void tst_frmDITART::f12RunsThePrintStatement()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns);
    fixture.inputs->willGiveRows(ArticlesStore::printStatement, printColumns);
    QVERIFY(whileOpen(*fixture.form, [] { pressKey(Qt::Key_F12); }));
    QCOMPARE(fixture.inputs->statements(), (QStringList{load, ArticlesStore::printStatement}));
}

void tst_frmDITART::reportHasTheDeclarationsNumberAndTheArticles()
{
    StoredFixture fixture;
    fixture.component.clock.set(QDate(2026, 7, 9));
    fixture.store.add({2, 0, u"BR-7"_s, u"50"_s, u"10"_s});
    fixture.store.add({1, 0, u"AC-1"_s, u"40"_s, u"12"_s});
    QString title;
    QVERIFY(whileOpen(*fixture.form, [&] {
        inNextDialog(u"drDITART"_s, [&title](Form& preview) {
            title = preview.windowTitle();
            pressKey(Qt::Key_F11);
        });
        pressKey(Qt::Key_F12);
    }));
    QCOMPARE(title, u"Rerporte DIT"_s);
    QCOMPARE(QFileInfo(fixture.proposed).fileName(), u"DIT 24073IT14000123A.pdf"_s);
    const auto pages = pdfPages(fixture.pdf());
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages.constFirst(),
             (QStringList{u"Declaración nro.: 24073IT14000123A"_s,
                          u"Item SubIt Nro Articulo Unid Cantidad Unitario Disponible Disp % Posición Nro CTC"_s,
                          u"001 000 AC-1 07 40,00 01,500000 12,00 30,00 8471.30.12.000A CTC-1"_s,
                          u"002 000 BR-7 07 50,00 01,500000 10,00 20,00 8471.30.12.000A CTC-1"_s,
                          u"oVELDRA Página 1 de 1 Impreso el 09/07/2026"_s}));
}

void tst_frmDITART::reportHasTwoDecimalsWhateverTheListHas()
{
    StoredFixture fixture;
    fixture.component.state.g_sFmtCantidad = u"00.00000000"_s;
    fixture.store.add({1, 0, u"AC-1"_s, u"40,125"_s, u"11,6"_s});
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        QCOMPARE(fixture.list().text(0, 4), u"40,12500000"_s);
        inNextDialog(u"drDITART"_s, [](Form&) { pressKey(Qt::Key_F11); });
        pressKey(Qt::Key_F12);
    }));
    QVERIFY(pdfPages(fixture.pdf()).constFirst().at(2).contains(u" 40,13 01,500000 11,60 28,91 "_s));
}

void tst_frmDITART::reportIsOfTheCurrentDeclaration()
{
    StoredFixture fixture;
    fixture.store.addMany(3);
    fixture.component.state.declaration.number = u"OTRA"_s;
    run(*fixture.store.connection(), u"insert into INS (INTDCL,ARTNRO,ARTCAT,ARTDSC) values ('OTRA','X-9','1','1')"_s);
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        QCOMPARE(fixture.codes(), QStringList{u"X-9"_s});
        inNextDialog(u"drDITART"_s, [](Form&) { pressKey(Qt::Key_F11); });
        pressKey(Qt::Key_F12);
    }));
    const QStringList lines = pdfPages(fixture.pdf()).constFirst();
    QCOMPARE(lines.constFirst(), u"Declaración nro.: OTRA"_s);
    QCOMPARE(lines.size(), 4);
    QVERIFY(lines.at(2).startsWith(u"X-9 "_s));
}

void tst_frmDITART::focusIsBackOnTheListAfterTheReport()
{
    StoredFixture fixture;
    fixture.store.addMany(3);
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        pressKey(Qt::Key_Down);
        inNextDialog(u"drDITART"_s, [](Form&) { pressKey(Qt::Key_Escape); });
        pressKey(Qt::Key_F12);
        catalog::returnTo(*fixture.form);
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.list().currentRow(), 1);
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDITART::everyReportReadsAnew()
{
    StoredFixture fixture;
    fixture.store.addMany(1);
    const auto pressF12 = [&fixture](const QString& position) {
        QString shown;
        inNextDialog(u"drDITART"_s,
                     [&shown](Form& preview) { shown = preview.findChild<QLabel*>(u"lbPagina"_s)->text(); });
        pressKey(Qt::Key_F12);
        catalog::returnTo(*fixture.form);
        QVERIFY2(shown.startsWith(position), qPrintable(shown));
    };
    QVERIFY(whileOpen(*fixture.form, [&] {
        pressF12(u"Página 1 de 1 - "_s);
        fixture.store.addMany(100);
        pressF12(u"Página 1 de 2 - "_s);
    }));
}

void tst_frmDITART::noReportWithoutArticles()
{
    const StoredFixture fixture;
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        pressKey(Qt::Key_F12);
        QCOMPARE(QApplication::activeModalWidget(), fixture.form.get());
    }));
    QVERIFY(fixture.boxes().isEmpty());
}

void tst_frmDITART::noReportWhenItsQueryDoesNotOpen()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns, {ScriptedFixture::article(u"A"_s, 40, 40)});
    fixture.inputs->willNotOpen(u"select format"_s, RuntimeError(-2147467259, u"Sin servidor."_s));
    QVERIFY(whileOpen(*fixture.form, [&fixture] {
        pressKey(Qt::Key_F12);
        QCOMPARE(QApplication::activeModalWidget(), fixture.form.get());
        QCOMPARE(fixture.codes(), QStringList{u"A"_s});
    }));
    QCOMPARE(fixture.boxes(), QList{critical(u"Sin servidor.\r\n\r\n-2147467259"_s + printLocation)});
}

void tst_frmDITART::noReportWhenAShareCannotBeWorkedOut()
{
    StoredFixture fixture;
    fixture.store.add({1, 0, u"A"_s, u"40"_s, u"40"_s});
    fixture.store.add({2, 0, u"B"_s, u"0"_s, u"5"_s});
    QVERIFY(whileOpen(*fixture.form, [] { pressKey(Qt::Key_F12); }));
    QCOMPARE(fixture.boxes(), (QList{critical(u"División por cero\r\n\r\n11"_s + loadLocation),
                                     critical(u"División por cero\r\n\r\n11"_s + printLocation)}));
}

void tst_frmDITART::noReportWhenAFieldIsMissing()
{
    const ScriptedFixture fixture;
    fixture.inputs->willGiveRows(load, columns);
    fixture.inputs->willGiveRows(u"select format"_s, printColumns.mid(1), {QVariantList(9, u"x"_s)});
    QVERIFY(whileOpen(*fixture.form, [] { pressKey(Qt::Key_F12); }));
    QCOMPARE(fixture.boxes().size(), 1);
    QVERIFY(fixture.boxes().constFirst().text.endsWith(u"\r\n\r\n3265"_s + printLocation));
}

QTEST_MAIN(tst_frmDITART)
#include "tst_frmDITART.moc"
