#include "HoverOver.h"
#include "StoredTariff.h"
#include "controls/OpenForm.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/InterruptedConexionDB.h"
#include "doubles/TestComponent.h"

#include <core/ErrorReport.h>
#include <nomenclature/FrmPosicion.h>

#include <QGuiApplication>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using nomenclature::FrmPosicion;
using nomenclature::hoverOver;
using nomenclature::StoredTariff;

namespace {

const QString searchStart =
    u"select [001]+ '.' +[002] + [003] as ncm,[012] as estadistica,[020] as deresp from ncm where [001] like '"_s;
const QString searchEnd = u"' order by [001],[002],[003]"_s;
const QStringList searchColumns{u"ncm"_s, u"estadistica"_s, u"deresp"_s};
const QString dataQuery = u"Select [010] as descrip"_s;
const QStringList dataColumns{u"descrip"_s, u"descrip1"_s, u"estadistica"_s, u"deresp"_s, u"059"_s, u"rein"_s};
const QString rulesQuery = u"select * from sufidos"_s;
const QStringList rulesColumns{u"sim"_s, u"sufijo"_s, u"detalle"_s};
const QString dataLocation = u"Sección [oVELDRA.FrmPosicion.MostrarDatos]"_s;

FakeConexionDB::Row found(const QString& position)
{
    return {position, u"07"_s, 16.0};
}

/// The form over a connection of its own.
struct Screen
{
    explicit Screen(std::shared_ptr<ConexionDB> tariff)
    {
        component.state.g_DBNCM.assign(std::move(tariff));
        component.prompts.whileShown = [] { QVERIFY(QGuiApplication::overrideCursor() == nullptr); };
    }

    [[nodiscard]] QLineEdit& box() const { return *form.findChild<QLineEdit*>(u"TxtNCMF"_s); }
    [[nodiscard]] QListView& list() const { return *form.findChild<QListView*>(u"LstNCM"_s); }
    [[nodiscard]] QListView& suffixes() const { return *form.findChild<QListView*>(u"LstSufijos"_s); }
    [[nodiscard]] QString description() const
    {
        return form.findChild<QPlainTextEdit*>(u"LbDescripcion"_s)->toPlainText();
    }
    [[nodiscard]] QString selected() const { return list().currentIndex().data().toString(); }

    [[nodiscard]] static QStringList lines(const QListView& list)
    {
        QStringList texts;
        for (int row = 0; row < list.model()->rowCount(); ++row) {
            texts.append(list.model()->index(row, 0).data().toString());
        }
        return texts;
    }

    /// As the opener searches.
    void search(const QString& text)
    {
        form.setSearchText(text);
        int enter = 13;
        form.TxtNCMF_KeyPress(enter);
    }

    TestComponent component;
    FrmPosicion form{component};
};

/// The form over a scripted connection.
struct Fixture : Screen
{
    Fixture() : Fixture(std::make_shared<FakeConexionDB>()) {}
    explicit Fixture(const std::shared_ptr<FakeConexionDB>& scripted) : Screen(scripted), tariff(scripted) {}

    /// Three positions found, the data of the last two and one rule each.
    void script() const
    {
        tariff->willGiveRows(searchStart, searchColumns,
                             {found(u"8471.30.11.000A"_s), found(u"8471.30.12.000B"_s), found(u"8471.30.19.000C"_s)});
        tariff->willGiveRows(dataQuery + u"%"_s, dataColumns);
        for (const auto& [subheading, text] :
             {std::pair(u"8471.30.12"_s, u"doce"_s), std::pair(u"8471.30.19"_s, u"diecinueve"_s)}) {
            tariff->willGiveRows(
                u"Select [010] as descrip,[004] as descrip1, [012] as estadistica,[020] as deresp, [059],[019] as rein from ncm where [001] = '"_s +
                    subheading,
                dataColumns, {{text, u"MÁQUINAS"_s, {}, {}, {}, {}}});
        }
        tariff->willGiveRows(rulesQuery, rulesColumns, {{u"84  .  .  .   "_s, u"AA"_s, u"MARCA"_s}});
    }

    std::shared_ptr<FakeConexionDB> tariff;
};

} // namespace

class tst_FrmPosicion : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(QGuiApplication::overrideCursor() == nullptr); }

    // the search
    void searchStatement_data();
    void searchStatement();
    void enterOnAnEmptyOrBlankTextDoesNothing_data();
    void enterOnAnEmptyOrBlankTextDoesNothing();
    void otherKeysDoNothing();
    void searchListsEveryPositionTrimmedAndSelectsTheFirst();
    void searchLeavesTheTypedTextAsItIs();
    void searchAnewReplacesTheList();
    void notFoundTextsDiffer();
    void buscarNCMTakesAnEmptyText();
    void searchThatFailsIsReported();
    void searchThatBreaksOffKeepsWhatItAdded();
    void searchWithAnApostropheIsReportedAndRunsNothing();
    void searchIn8471Point3ListsInPositionOrder();
    void prefixPastTheTenthCharacterFindsNothing();
    void hourglassWhileStatementsRun();

    // the data of a position
    void dataStatements();
    void dataShowBothDescriptionsAndTheSuffixes();
    void nullDescriptionsShowAsEmpty();
    void unknownPositionShowsItsSuffixesOnly();
    void positionWithoutRulesHasAnEmptySuffixList();
    void suffixesComeInTableOrder();
    void dataAnewReplaceTheOldOnes();
    void dataThatFailAreReported();
    void rulesThatBreakOffKeepWhatTheyAdded();

    // the keys
    void searchBeforeOpeningIsThere();
    void searchDoesNotShowData();
    void focusStartsInTheTextWithoutLines();
    void enterSearchesInTheOpenForm();
    void arrowKeysShowDataOnRelease_data();
    void arrowKeysShowDataOnRelease();
    void heldArrowKeyShowsDataWhereItStops();
    void otherKeysShowNoData();
    void arrowKeysElsewhereShowNoData();
    void enterHandsThePositionBackAndCloses_data();
    void enterHandsThePositionBackAndCloses();
    void enterInAnEmptyListDoesNothing();
    void escapeAndControlCCloseWithoutAChoice_data();
    void escapeAndControlCCloseWithoutAChoice();
    void controlCWithMoreModifiersIsAnotherKey();
    void nothingOfAnEarlierOpeningIsLeft();
    void setSearchTextStartsAnew();

    // looks
    void controlsHaveTheirNamesAndKinds();
    void descriptionIsReadOnlyAndLetsTabThrough();
    void longSuffixShowsAsToolTip();
    void positionsAreNotCutOffInASmallForm();
    void thirtyThousandPositionsComeInAtOnce();
};

// --- the search ---

void tst_FrmPosicion::searchStatement_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("points are wildcards") << u"8471.3"_s << u"8471%3%"_s;
    QTest::newRow("no points") << u"84"_s << u"84%"_s;
    QTest::newRow("whole subheading") << u"8471.30.12"_s << u"8471%30%12%"_s;
    QTest::newRow("blanks are searched for") << u" 84 "_s << u" 84 %"_s;
    QTest::newRow("place markers are ordinary text") << u"%1 %2"_s << u"%1 %2%"_s;
}

void tst_FrmPosicion::searchStatement()
{
    QFETCH(const QString, typed);
    QFETCH(const QString, pattern);
    Fixture fixture;
    fixture.tariff->willGiveRows(u"select"_s, searchColumns, {found(u"8471.30.12.000A"_s)});
    fixture.search(typed);
    fixture.form.BuscarNCM();
    const QString statement = searchStart + pattern + searchEnd;
    QCOMPARE(fixture.tariff->statements(), (QStringList{statement, statement}));
}

void tst_FrmPosicion::enterOnAnEmptyOrBlankTextDoesNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("blank") << u"   "_s;
}

void tst_FrmPosicion::enterOnAnEmptyOrBlankTextDoesNothing()
{
    QFETCH(const QString, typed);
    Fixture fixture;
    fixture.search(typed);
    QVERIFY(whileOpen(fixture.form, [] { pressKey(Qt::Key_Return); }));
    QVERIFY(fixture.tariff->statements().isEmpty());
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_FrmPosicion::otherKeysDoNothing()
{
    Fixture fixture;
    fixture.form.setSearchText(u"84"_s);
    for (int key = 0; key < 256; ++key) {
        if (key != 13) {
            fixture.form.TxtNCMF_KeyPress(key);
        }
    }
    QVERIFY(fixture.tariff->statements().isEmpty());
}

void tst_FrmPosicion::searchListsEveryPositionTrimmedAndSelectsTheFirst()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(searchStart, searchColumns,
                                 {found(u" 8471.30.11.000A "_s), found(u"8471.30.12.000B"_s), {{}, {}, {}}});
    fixture.search(u"8471"_s);
    QCOMPARE(Screen::lines(fixture.list()), (QStringList{u"8471.30.11.000A"_s, u"8471.30.12.000B"_s, u""_s}));
    QCOMPARE(fixture.list().currentIndex().row(), 0);
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_FrmPosicion::searchLeavesTheTypedTextAsItIs()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QCOMPARE(fixture.box().text(), u"8471.3"_s);
}

void tst_FrmPosicion::searchAnewReplacesTheList()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(searchStart, searchColumns, {found(u"8471.30.11.000A"_s)});
    fixture.tariff->willGiveRows(searchStart, searchColumns, {found(u"8472.30.11.000A"_s)});
    fixture.tariff->willGiveRows(searchStart, searchColumns);
    fixture.search(u"8471"_s);
    fixture.form.BuscarNCM();
    QCOMPARE(Screen::lines(fixture.list()), QStringList{u"8472.30.11.000A"_s});
    fixture.form.BuscarNCM();
    QCOMPARE(fixture.list().model()->rowCount(), 0);
    QVERIFY(!fixture.list().currentIndex().isValid());
}

void tst_FrmPosicion::notFoundTextsDiffer()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(searchStart, searchColumns);
    fixture.search(u"9999"_s);
    fixture.form.BuscarNCM();
    const QList<RecordedPrompts::Box> boxes{{u"Posición no encontrada."_s, core::ExclamationBox, {}},
                                            {u"Posición no Encontrada."_s, core::ExclamationBox, {}}};
    QCOMPARE(fixture.component.prompts.boxes(), boxes);
}

void tst_FrmPosicion::buscarNCMTakesAnEmptyText()
{
    Fixture fixture;
    fixture.script();
    fixture.form.BuscarNCM();
    QCOMPARE(fixture.tariff->statements(), QStringList{searchStart + u"%"_s + searchEnd});
    QCOMPARE(fixture.list().model()->rowCount(), 3);
}

void tst_FrmPosicion::searchThatFailsIsReported()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"84"_s);
    fixture.tariff->failStatement(1, RuntimeError(-2147467259, u"El servidor no responde."_s));
    fixture.form.BuscarNCM();
    const RecordedPrompts::Box box{
        u"-2147467259 - El servidor no responde.\r\n\r\nSección []"_s, core::CriticalBox, {}};
    QCOMPARE(fixture.component.prompts.boxes(), QList{box});
    QCOMPARE(fixture.list().model()->rowCount(), 0);
    fixture.component.state.g_DBNCM.release();
    fixture.form.BuscarNCM();
    QCOMPARE(fixture.component.prompts.texts().constLast(), core::errorText(RuntimeError(3709), u"Sección []"));
}

void tst_FrmPosicion::searchThatBreaksOffKeepsWhatItAdded()
{
    /// Two positions, and a row that cannot be read.
    class Breaking final : public ConexionDB
    {
    public:
        class Rows final : public Recordset
        {
        public:
            [[nodiscard]] bool atEof() const override { return false; }
            void moveNext() override { ++m_row; }
            void moveFirst() override { m_row = 0; }
            [[nodiscard]] qsizetype recordCount() const override { return 3; }
            [[nodiscard]] QVariant value(QStringView /*field*/) const override
            {
                if (m_row == 2) {
                    throw RuntimeError(-2147467259, u"Conexión perdida."_s);
                }
                return m_row == 0 ? u"8471.30.11.000A"_s : u"8471.30.12.000B"_s;
            }

        private:
            int m_row = 0;
        };

        void setSql(const QString& /*text*/) override {}
        std::unique_ptr<Recordset> openRecordset(bool& ok) override
        {
            ok = true;
            return std::make_unique<Rows>();
        }
        qint64 execute() override { return 0; }
    };
    Screen screen(std::make_shared<Breaking>());
    screen.search(u"84"_s);
    QCOMPARE(Screen::lines(screen.list()), (QStringList{u"8471.30.11.000A"_s, u"8471.30.12.000B"_s}));
    QCOMPARE(screen.component.prompts.texts(), QStringList{u"-2147467259 - Conexión perdida.\r\n\r\nSección []"_s});
}

void tst_FrmPosicion::searchWithAnApostropheIsReportedAndRunsNothing()
{
    Fixture fixture;
    fixture.search(u"84' or '1'='1"_s);
    QVERIFY(fixture.tariff->statements().isEmpty());
    QCOMPARE(fixture.component.prompts.boxes().size(), 1);
    const auto box = fixture.component.prompts.boxes().constFirst();
    QCOMPARE(box.style, core::CriticalBox);
    QVERIFY(box.text.startsWith(u"-2147217900 - "));
    QVERIFY(box.text.endsWith(u"\r\n\r\nSección []"));
}

void tst_FrmPosicion::searchIn8471Point3ListsInPositionOrder()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"100"_s, u"B"_s);
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s);
    tariff.addPosition(u"8471.30.11"_s, u"000"_s, u"C"_s);
    tariff.addPosition(u"8471.41.13"_s, u"000"_s, u"D"_s); // a 3 later on
    tariff.addPosition(u"8471.41.10"_s, u"000"_s, u"E"_s); // none
    tariff.addPosition(u"8472.30.10"_s, u"000"_s, u"F"_s);
    tariff.addPosition(u"0847.13.00"_s, u"000"_s, u"G"_s);
    Screen screen(tariff.db);
    screen.search(u"8471.3"_s);
    QCOMPARE(Screen::lines(screen.list()),
             (QStringList{u"8471.30.11.000C"_s, u"8471.30.12.000A"_s, u"8471.30.12.100B"_s, u"8471.41.13.000D"_s}));
    QCOMPARE(screen.selected(), u"8471.30.11.000C"_s);
    QVERIFY(screen.component.prompts.boxes().isEmpty());
}

void tst_FrmPosicion::prefixPastTheTenthCharacterFindsNothing()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s);
    Screen screen(tariff.db);
    screen.search(u"8471.30.12"_s);
    QCOMPARE(screen.list().model()->rowCount(), 1);
    screen.search(u"8471.30.12.0"_s);
    QCOMPARE(screen.list().model()->rowCount(), 0);
    QCOMPARE(screen.component.prompts.texts(), QStringList{u"Posición no encontrada."_s});
}

void tst_FrmPosicion::hourglassWhileStatementsRun()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s);
    int waits = 0;
    Screen screen(std::make_shared<InterruptedConexionDB>(tariff.db, [&waits](int /*statement*/) {
        const QCursor* pointer = QGuiApplication::overrideCursor();
        waits += pointer != nullptr && pointer->shape() == Qt::WaitCursor ? 1 : 0;
    }));
    screen.search(u"8471"_s);
    QCOMPARE(waits, 1);
    screen.form.MostrarDatos(screen.selected());
    QCOMPARE(waits, 3);
}

// --- the data of a position ---

void tst_FrmPosicion::dataStatements()
{
    Fixture fixture;
    fixture.script();
    fixture.form.MostrarDatos(u"8471.30.12.000B"_s);
    QCOMPARE(
        fixture.tariff->statements(),
        (QStringList{
            u"Select [010] as descrip,[004] as descrip1, [012] as estadistica,[020] as deresp, [059],[019] as rein from ncm where [001] = '8471.30.12' and [002] = '000' and [003] = 'B'"_s,
            u"select * from sufidos where sim in ('84  .  .  .   ','8471.  .  .   ','8471.30.  .   ','8471.30.12.000')"_s}));
}

void tst_FrmPosicion::dataShowBothDescriptionsAndTheSuffixes()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s, u"'Portátiles'"_s, u"'MÁQUINAS'"_s);
    tariff.addRule(u"84  .  .  .   "_s, u"AA"_s, u" MARCA "_s);
    tariff.addRule(u"8471.  .  .   "_s, u"NA01"_s, u"NUEVA"_s);
    tariff.addRule(u"8471.30.  .   "_s, u"AB012"_s, u"PESO"_s);
    tariff.addRule(u"8471.30.12.000"_s, u"ZC"_s, u"CANTIDAD"_s);
    tariff.addRule(u"8471.30.12.100"_s, u"ZD"_s, u"OTRA"_s);
    tariff.addRule(u"85  .  .  .   "_s, u"ZE"_s, u"OTRA"_s);
    Screen screen(tariff.db);
    screen.form.MostrarDatos(u"8471.30.12.000A"_s);
    QCOMPARE(screen.description(), u"Portátiles\n\nMÁQUINAS"_s);
    QCOMPARE(Screen::lines(screen.suffixes()),
             (QStringList{u"AA   MARCA"_s, u"NA01 NUEVA"_s, u"AB012PESO"_s, u"ZC   CANTIDAD"_s}));
}

void tst_FrmPosicion::nullDescriptionsShowAsEmpty()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s);
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"B"_s, u"Null"_s, u"'MÁQUINAS'"_s);
    Screen screen(tariff.db);
    screen.form.MostrarDatos(u"8471.30.12.000A"_s);
    QCOMPARE(screen.description(), u"\n\n"_s);
    screen.form.MostrarDatos(u"8471.30.12.000B"_s);
    QCOMPARE(screen.description(), u"\n\nMÁQUINAS"_s);
    QVERIFY(screen.component.prompts.boxes().isEmpty());
}

void tst_FrmPosicion::unknownPositionShowsItsSuffixesOnly()
{
    StoredTariff tariff;
    tariff.addRule(u"84  .  .  .   "_s, u"AA"_s, u"MARCA"_s);
    Screen screen(tariff.db);
    screen.form.MostrarDatos(u"8471.30.12.000A"_s);
    QCOMPARE(screen.description(), QString());
    QCOMPARE(Screen::lines(screen.suffixes()), QStringList{u"AA   MARCA"_s});
}

void tst_FrmPosicion::positionWithoutRulesHasAnEmptySuffixList()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s, u"'Portátiles'"_s, u"'MÁQUINAS'"_s);
    Screen screen(tariff.db);
    screen.form.MostrarDatos(u"8471.30.12.000A"_s);
    QCOMPARE(screen.description(), u"Portátiles\n\nMÁQUINAS"_s);
    QCOMPARE(screen.suffixes().model()->rowCount(), 0);
    QVERIFY(screen.component.prompts.boxes().isEmpty());
}

void tst_FrmPosicion::suffixesComeInTableOrder()
{
    StoredTariff tariff;
    tariff.addRule(u"8471.30.12.000"_s, u"ZC"_s, u"TRES"_s);
    tariff.addRule(u"84  .  .  .   "_s, u"AA"_s, u"UNO"_s);
    tariff.addRule(u"8471.30.12.000"_s, u"AB"_s, u"DOS"_s);
    Screen screen(tariff.db);
    screen.form.MostrarDatos(u"8471.30.12.000A"_s);
    QCOMPARE(Screen::lines(screen.suffixes()), (QStringList{u"ZC   TRES"_s, u"AA   UNO"_s, u"AB   DOS"_s}));
}

void tst_FrmPosicion::dataAnewReplaceTheOldOnes()
{
    StoredTariff tariff;
    tariff.addPosition(u"8471.30.12"_s, u"000"_s, u"A"_s, u"'Portátiles'"_s);
    tariff.addRule(u"84  .  .  .   "_s, u"AA"_s, u"MARCA"_s);
    Screen screen(tariff.db);
    screen.form.MostrarDatos(u"8471.30.12.000A"_s);
    screen.form.MostrarDatos(u"0101.21.00.100W"_s);
    QCOMPARE(screen.description(), QString());
    QCOMPARE(screen.suffixes().model()->rowCount(), 0);
}

void tst_FrmPosicion::dataThatFailAreReported()
{
    Fixture fixture;
    fixture.script();
    fixture.form.MostrarDatos(u"8471.30.12.000B"_s);
    fixture.tariff->failStatement(1, RuntimeError(-2147467259, u"El servidor no responde."_s));
    fixture.form.MostrarDatos(u"8471.30.19.000C"_s);
    QCOMPARE(fixture.description(), QString());
    QCOMPARE(fixture.suffixes().model()->rowCount(), 0);
    fixture.tariff->failStatement(2, RuntimeError(-2147217865, u"No está la tabla sufidos."_s));
    fixture.form.MostrarDatos(u"8471.30.19.000C"_s);
    QCOMPARE(fixture.description(), u"diecinueve\n\nMÁQUINAS"_s);
    fixture.form.MostrarDatos(u"'"_s);
    QCOMPARE(fixture.component.prompts.boxes().size(), 3);
    for (const auto& box : fixture.component.prompts.boxes()) {
        QCOMPARE(box.style, core::CriticalBox);
        QVERIFY(box.text.endsWith(QString(u"\r\n\r\n"_s + dataLocation)));
    }
    QVERIFY(fixture.component.prompts.texts().constFirst().startsWith(u"-2147467259 - El servidor no responde."));
}

void tst_FrmPosicion::rulesThatBreakOffKeepWhatTheyAdded()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(dataQuery, dataColumns);
    fixture.tariff->willGiveRows(rulesQuery, {u"sim"_s, u"sufijo"_s}, {{u"84  .  .  .   "_s, u"AA"_s}});
    fixture.form.MostrarDatos(u"8471.30.12.000A"_s);
    QCOMPARE(fixture.component.prompts.texts(), QStringList{core::errorText(RuntimeError(3265), dataLocation)});
    QCOMPARE(fixture.suffixes().model()->rowCount(), 0);
}

// --- the keys ---

void tst_FrmPosicion::searchBeforeOpeningIsThere()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.box().text(), u"8471.3"_s);
        QCOMPARE(fixture.list().model()->rowCount(), 3);
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.selected(), u"8471.30.11.000A"_s);
        QVERIFY(fixture.list().selectionModel()->isSelected(fixture.list().currentIndex()));
    }));
    QCOMPARE(fixture.tariff->statements().size(), 1);
}

void tst_FrmPosicion::searchDoesNotShowData()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.description(), QString());
        QCOMPARE(fixture.suffixes().model()->rowCount(), 0);
    }));
}

void tst_FrmPosicion::focusStartsInTheTextWithoutLines()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&fixture] { QVERIFY(fixture.box().hasFocus()); }));
}

void tst_FrmPosicion::enterSearchesInTheOpenForm()
{
    Fixture fixture;
    fixture.script();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        typeText(u"8471.3"_s);
        pressKey(Qt::Key_Return);
        QCOMPARE(fixture.selected(), u"8471.30.11.000A"_s);
        pressKey(Qt::Key_Enter);
    }));
    const QString statement = searchStart + u"8471%3%"_s + searchEnd;
    QCOMPARE(fixture.tariff->statements(), (QStringList{statement, statement}));
}

void tst_FrmPosicion::arrowKeysShowDataOnRelease_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");
    // From the second line.
    QTest::newRow("down") << static_cast<int>(Qt::Key_Down) << u"diecinueve\n\nMÁQUINAS"_s;
    QTest::newRow("up") << static_cast<int>(Qt::Key_Up) << u""_s;
    QTest::newRow("left") << static_cast<int>(Qt::Key_Left) << u"doce\n\nMÁQUINAS"_s;
    QTest::newRow("right") << static_cast<int>(Qt::Key_Right) << u"doce\n\nMÁQUINAS"_s;
}

void tst_FrmPosicion::arrowKeysShowDataOnRelease()
{
    QFETCH(const int, key);
    QFETCH(const QString, text);
    Fixture fixture;
    fixture.script();
    fixture.tariff->willGiveRows(dataQuery, dataColumns);
    fixture.search(u"8471.3"_s);
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.list().setCurrentIndex(fixture.list().model()->index(1, 0));
        fixture.tariff->clear();
        QTest::keyPress(QApplication::focusWidget(), static_cast<Qt::Key>(key));
        QVERIFY(fixture.tariff->statements().isEmpty());
        QTest::keyRelease(QApplication::focusWidget(), static_cast<Qt::Key>(key));
        QCOMPARE(fixture.tariff->statements().size(), 2);
        QCOMPARE(fixture.description(), text);
        QCOMPARE(Screen::lines(fixture.suffixes()), QStringList{u"AA   MARCA"_s});
    }));
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_FrmPosicion::heldArrowKeyShowsDataWhereItStops()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.tariff->clear();
        QTest::keyPress(QApplication::focusWidget(), Qt::Key_Down);
        for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent repeated(type, Qt::Key_Down, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(QApplication::focusWidget(), &repeated);
        }
        QVERIFY(fixture.tariff->statements().isEmpty());
        QTest::keyRelease(QApplication::focusWidget(), Qt::Key_Down);
        QCOMPARE(fixture.tariff->statements().size(), 2);
        QCOMPARE(fixture.description(), u"diecinueve\n\nMÁQUINAS"_s);
    }));
}

void tst_FrmPosicion::otherKeysShowNoData()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    fixture.tariff->clear();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        for (const Qt::Key key : {Qt::Key_End, Qt::Key_Home, Qt::Key_PageDown, Qt::Key_8, Qt::Key_F5}) {
            pressKey(key);
        }
        QVERIFY(fixture.list().hasFocus());
    }));
    QVERIFY(fixture.tariff->statements().isEmpty());
}

void tst_FrmPosicion::arrowKeysElsewhereShowNoData()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    fixture.tariff->clear();
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.box().setFocus();
        pressKey(Qt::Key_Down);
        pressKey(Qt::Key_Left);
        fixture.suffixes().setFocus();
        pressKey(Qt::Key_Down);
    }));
    QVERIFY(fixture.tariff->statements().isEmpty());
}

void tst_FrmPosicion::enterHandsThePositionBackAndCloses_data()
{
    QTest::addColumn<int>("downs");
    QTest::addColumn<int>("enter");
    QTest::addColumn<QString>("position");
    QTest::newRow("first") << 0 << static_cast<int>(Qt::Key_Return) << u"8471.30.11.000A"_s;
    QTest::newRow("last, with the keypad") << 2 << static_cast<int>(Qt::Key_Enter) << u"8471.30.19.000C"_s;
}

void tst_FrmPosicion::enterHandsThePositionBackAndCloses()
{
    QFETCH(const int, downs);
    QFETCH(const int, enter);
    QFETCH(const QString, position);
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QVERIFY(!whileOpen(fixture.form, [=] {
        for (int i = 0; i < downs; ++i) {
            pressKey(Qt::Key_Down);
        }
        pressKey(static_cast<Qt::Key>(enter));
    }));
    QCOMPARE(fixture.component.state.chosenPosition, position);
}

void tst_FrmPosicion::enterInAnEmptyListDoesNothing()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        fixture.list().setFocus();
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_Down);
    }));
    QCOMPARE(fixture.component.state.chosenPosition, QString());
    QVERIFY(fixture.tariff->statements().isEmpty());
}

void tst_FrmPosicion::escapeAndControlCCloseWithoutAChoice_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("key");
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    for (const auto& control : {u"TxtNCMF"_s, u"LstNCM"_s, u"LbDescripcion"_s, u"LstSufijos"_s}) {
        QTest::addRow("Escape in %s", qPrintable(control))
            << control << static_cast<int>(Qt::Key_Escape) << Qt::KeyboardModifiers();
        QTest::addRow("Ctrl+C in %s", qPrintable(control))
            << control << static_cast<int>(Qt::Key_C) << Qt::KeyboardModifiers(Qt::ControlModifier);
    }
}

void tst_FrmPosicion::escapeAndControlCCloseWithoutAChoice()
{
    QFETCH(const QString, control);
    QFETCH(const int, key);
    QFETCH(const Qt::KeyboardModifiers, modifiers);
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QVERIFY(!whileOpen(fixture.form, [&] {
        fixture.form.findChild<QWidget*>(control)->setFocus();
        pressKey(static_cast<Qt::Key>(key), modifiers);
    }));
    QCOMPARE(fixture.component.state.chosenPosition, QString());
}

void tst_FrmPosicion::controlCWithMoreModifiersIsAnotherKey()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [] {
        pressKey(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        pressKey(Qt::Key_C);
    }));
}

void tst_FrmPosicion::nothingOfAnEarlierOpeningIsLeft()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        pressKey(Qt::Key_Down);
        QVERIFY(!fixture.description().isEmpty());
    }));
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.box().text(), QString());
        QCOMPARE(fixture.list().model()->rowCount(), 0);
        QCOMPARE(fixture.description(), QString());
        QCOMPARE(fixture.suffixes().model()->rowCount(), 0);
        QVERIFY(fixture.box().hasFocus());
    }));
}

void tst_FrmPosicion::setSearchTextStartsAnew()
{
    Fixture fixture;
    fixture.script();
    fixture.search(u"8471.3"_s);
    fixture.form.MostrarDatos(u"8471.30.12.000B"_s);
    fixture.form.setSearchText(u"85"_s);
    QCOMPARE(fixture.box().text(), u"85"_s);
    QCOMPARE(fixture.list().model()->rowCount(), 0);
    QCOMPARE(fixture.description(), QString());
    QCOMPARE(fixture.suffixes().model()->rowCount(), 0);
}

// --- looks ---

void tst_FrmPosicion::controlsHaveTheirNamesAndKinds()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"FrmPosicion"_s);
    QCOMPARE(fixture.form.windowTitle(), u"Buscar Posición"_s);
    for (const auto& name : {u"TxtNCMF"_s, u"LstNCM"_s, u"LbDescripcion"_s, u"LstSufijos"_s}) {
        QVERIFY(!fixture.form.findChild<QWidget*>(name)->accessibleName().isEmpty());
    }
    QVERIFY(fixture.list().uniformItemSizes());
    for (const QListView* list : {&fixture.list(), &fixture.suffixes()}) {
        QCOMPARE(list->editTriggers(), QListView::NoEditTriggers);
    }
}

void tst_FrmPosicion::descriptionIsReadOnlyAndLetsTabThrough()
{
    Fixture fixture;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QStringList walk;
        for (int i = 0; i < 5; ++i) {
            walk.append(QApplication::focusWidget()->objectName());
            pressKey(Qt::Key_Tab);
        }
        QCOMPARE(walk, (QStringList{u"TxtNCMF"_s, u"LstNCM"_s, u"LbDescripcion"_s, u"LstSufijos"_s, u"TxtNCMF"_s}));
        fixture.form.findChild<QWidget*>(u"LbDescripcion"_s)->setFocus();
        typeText(u"x"_s);
        QCOMPARE(fixture.description(), QString());
    }));
}

void tst_FrmPosicion::longSuffixShowsAsToolTip()
{
    const QString detail = u"palabra "_s.repeated(40).trimmed();
    Fixture fixture;
    fixture.tariff->willGiveRows(dataQuery, dataColumns);
    fixture.tariff->willGiveRows(rulesQuery, rulesColumns, {{{}, u"AA"_s, detail}, {{}, u"AB"_s, u"CORTO"_s}});
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.form.MostrarDatos(u"8471.30.12.000A"_s);
        hoverOver(fixture.suffixes(), 0);
        QTRY_COMPARE(fixture.suffixes().toolTip(), QString(u"AA   "_s + detail));
    }));
}

void tst_FrmPosicion::positionsAreNotCutOffInASmallForm()
{
    const QString widest = u"8888.88.88.888W"_s;
    Fixture fixture;
    fixture.tariff->willGiveRows(searchStart, searchColumns, QList<FakeConexionDB::Row>(100, found(widest)));
    fixture.search(u"8"_s);
    QVERIFY(whileOpen(fixture.form, [&] {
        fixture.form.resize(fixture.form.minimumSizeHint());
        QCoreApplication::processEvents();
        QVERIFY(fixture.list().viewport()->width() > fixture.list().fontMetrics().horizontalAdvance(widest) + 4);
        QVERIFY(fixture.list().visualRect(fixture.list().currentIndex()).width() <= fixture.list().viewport()->width());
    }));
}

void tst_FrmPosicion::thirtyThousandPositionsComeInAtOnce()
{
    QList<FakeConexionDB::Row> rows;
    for (int i = 0; i < 33'110; ++i) {
        rows.append(found(u"8471.%1.%2.000A"_s.arg(i / 100, 3).arg(i % 100, 2)));
    }
    Fixture fixture;
    fixture.tariff->willGiveRows(searchStart, searchColumns, rows);
    int resets = 0;
    QObject::connect(fixture.list().model(), &QAbstractItemModel::modelReset, &fixture.form, [&resets] { ++resets; });
    QObject::connect(fixture.list().model(), &QAbstractItemModel::rowsInserted, &fixture.form, [&resets] { ++resets; });
    fixture.search(u"84"_s);
    QCOMPARE(resets, 3); // the text's, the search's emptying and the fill
    QVERIFY(whileOpen(fixture.form, [&] {
                QCOMPARE(fixture.list().model()->rowCount(), rows.size());
                pressKey(Qt::Key_End);
                QCOMPARE(fixture.list().currentIndex().row(), rows.size() - 1);
                pressKey(Qt::Key_Return);
            }) == false);
    QCOMPARE(fixture.component.state.chosenPosition, rows.constLast().constFirst().toString());
}

QTEST_MAIN(tst_FrmPosicion)
#include "tst_FrmPosicion.moc"
