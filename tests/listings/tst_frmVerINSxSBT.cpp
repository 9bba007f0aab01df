#include "controls/OpenForm.h"
#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"

#include <controls/ListView.h>
#include <core/ErrorReport.h>
#include <listings/frmVerINSxSBT.h>

#include <QHeaderView>
#include <QLabel>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::controls;
using namespace oVELDRA::doubles;
using listings::frmVerINSxSBT;

namespace {

const QStringList columns{u"ARTDCL"_s, u"ARTNRO"_s, u"ARTITM"_s, u"ARTSBT"_s, u"RALCAN"_s, u"ARTPRE"_s};

/// The screen over a connection that answers from a script.
struct Fixture
{
    Fixture()
    {
        component.state.g_DBINS.assign(inputs);
        component.state.sInternoExt = u"EXP24001"_s;
        component.state.g_lIdSUB = 123;
        component.state.g_sFmtCantidad = u"00.000000"_s;
    }

    [[nodiscard]] const ListView& list() const
    {
        return *static_cast<ListView*>(form.findChild<QTreeView*>(u"lstView"_s));
    }

    [[nodiscard]] QStringList row(int row) const
    {
        QStringList cells;
        for (int column = 0; column < columns.size(); ++column) {
            cells.append(list().text(row, column));
        }
        return cells;
    }

    std::shared_ptr<FakeConexionDB> inputs = std::make_shared<FakeConexionDB>();
    TestComponent component;
    frmVerINSxSBT form{component};
};

} // namespace

class tst_frmVerINSxSBT : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void statementHasTheIdentifierBareAndTheInternoQuoted_data();
    void statementHasTheIdentifierBareAndTheInternoQuoted();
    void internoWithApostropheIsReportedAndRunsNothing();
    void rowsShowTrimmedCodesAndFormattedNumbers_data();
    void rowsShowTrimmedCodesAndFormattedNumbers();
    void nullFields();
    void twoDischargesOfOneInputAreTwoRowsInTheGivenOrder();
    void noRowsLeaveTheListEmpty();
    void queryThatCannotBeOpenedIsReported();
    void missingConnectionIsReported();
    void rowsOfTheLastOpeningAreGoneAfterAnError();
    void everyOpeningLoadsAnew();
    void escapeCloses();
    void controlsHaveTheirNamesTitlesAndTexts();
    void keyboardWalksTheList();
};

void tst_frmVerINSxSBT::init()
{
    QLocale::setDefault(QLocale(u"es_AR"_s));
}

void tst_frmVerINSxSBT::cleanup()
{
    QLocale::setDefault(QLocale::c());
}

void tst_frmVerINSxSBT::statementHasTheIdentifierBareAndTheInternoQuoted_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("interno");
    QTest::addColumn<qint32>("id");
    QTest::addColumn<QString>("statement");
    QTest::newRow("usual") << u"es_AR"_s << u"EXP24001"_s << 123
                           << u"select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where "
                              "EXTINT = 'EXP24001' and EXTSBT = 123 order by ARTDCL, ARTITM, ARTSBT"_s;
    QTest::newRow("large number without grouping")
        << u"en_US"_s << u"a b"_s << 2147483647
        << u"select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where "
           "EXTINT = 'a b' and EXTSBT = 2147483647 order by ARTDCL, ARTITM, ARTSBT"_s;
    QTest::newRow("nothing set, negative") << u"es_AR"_s << QString() << -7
                                           << u"select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where "
                                              "EXTINT = '' and EXTSBT = -7 order by ARTDCL, ARTITM, ARTSBT"_s;
    QTest::newRow("place markers are ordinary text")
        << u"es_AR"_s << u"%2 %1"_s << 1
        << u"select ARTDCL, ARTNRO, ARTITM, ARTSBT, RALCAN, ARTPRE from DIP where "
           "EXTINT = '%2 %1' and EXTSBT = 1 order by ARTDCL, ARTITM, ARTSBT"_s;
}

void tst_frmVerINSxSBT::statementHasTheIdentifierBareAndTheInternoQuoted()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, interno);
    QFETCH(const qint32, id);
    QFETCH(const QString, statement);
    QLocale::setDefault(QLocale(locale));
    Fixture fixture;
    fixture.component.state.sInternoExt = interno;
    fixture.component.state.g_lIdSUB = id;
    fixture.inputs->willGiveRows(u"select"_s, columns);
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.inputs->statements(), QStringList{statement});
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_frmVerINSxSBT::internoWithApostropheIsReportedAndRunsNothing()
{
    Fixture fixture;
    fixture.component.state.sInternoExt = u"x' or '1'='1"_s;
    fixture.form.Cargar_Insumos();
    QVERIFY(fixture.inputs->statements().isEmpty());
    QCOMPARE(fixture.component.prompts.boxes().size(), 1);
    const auto box = fixture.component.prompts.boxes().constFirst();
    QCOMPARE(box.style, core::CriticalBox);
    QVERIFY(box.text.endsWith(u"\r\n\r\n-2147217900 - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]"));
    QCOMPARE(fixture.list().rowCount(), 0);
}

void tst_frmVerINSxSBT::rowsShowTrimmedCodesAndFormattedNumbers_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("discharged");
    QTest::addColumn<QString>("unitCif");
    QTest::newRow("six decimals, comma") << u"es_AR"_s << u"00.000000"_s << u"1234,567800"_s << u"05,500000"_s;
    QTest::newRow("eight decimals, comma") << u"es_AR"_s << u"00.00000000"_s << u"1234,56780000"_s << u"05,500000"_s;
    QTest::newRow("six decimals, period") << u"en_US"_s << u"00.000000"_s << u"1234.567800"_s << u"05.500000"_s;
    QTest::newRow("eight decimals, period") << u"en_US"_s << u"00.00000000"_s << u"1234.56780000"_s << u"05.500000"_s;
}

void tst_frmVerINSxSBT::rowsShowTrimmedCodesAndFormattedNumbers()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, format);
    QFETCH(const QString, discharged);
    QFETCH(const QString, unitCif);
    QLocale::setDefault(QLocale(locale));
    Fixture fixture;
    fixture.component.state.g_sFmtCantidad = format;
    fixture.inputs->willGiveRows(u"select"_s, columns,
                                 {{u" 24001IT14 "_s, u"  ART 1 "_s, 1, u"002"_s, 1234.5678, 5.5}});
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.list().rowCount(), 1);
    QCOMPARE(fixture.row(0), (QStringList{u"ART 1"_s, u"24001IT14"_s, u"001"_s, u"002"_s, discharged, unitCif}));
}

void tst_frmVerINSxSBT::nullFields()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns,
                                 {{{}, {}, {}, {}, {}, {}}, {u"\tD"_s, u"   "_s, 12, 1234, 0, 0}});
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.row(0), (QStringList{u""_s, u""_s, u""_s, u""_s, u"00,000000"_s, u"00,000000"_s}));
    QCOMPARE(fixture.row(1), (QStringList{u""_s, u"\tD"_s, u"012"_s, u"1234"_s, u"00,000000"_s, u"00,000000"_s}));
}

void tst_frmVerINSxSBT::twoDischargesOfOneInputAreTwoRowsInTheGivenOrder()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns,
                                 {{u"24001"_s, u"ART"_s, 1, 0, 1, 1}, {u"24002"_s, u"ART"_s, 1, 0, 2, 1}});
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.list().rowCount(), 2);
    QCOMPARE(fixture.row(0).mid(0, 2), (QStringList{u"ART"_s, u"24001"_s}));
    QCOMPARE(fixture.row(1).mid(0, 2), (QStringList{u"ART"_s, u"24002"_s}));
}

void tst_frmVerINSxSBT::noRowsLeaveTheListEmpty()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns);
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QVERIFY(fixture.list().isVisible());
        QCOMPARE(fixture.list().rowCount(), 0);
    }));
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_frmVerINSxSBT::queryThatCannotBeOpenedIsReported()
{
    Fixture fixture;
    fixture.inputs->willNotOpen(u"select"_s, RuntimeError(-2147217865, u"No está la tabla DIP."_s));
    QVERIFY(whileOpen(fixture.form, [&fixture] { QCOMPARE(fixture.list().rowCount(), 0); }));
    const RecordedPrompts::Box box{
        u"No está la tabla DIP.\r\n\r\n-2147217865 - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]"_s,
        core::CriticalBox,
        {}};
    QCOMPARE(fixture.component.prompts.boxes(), QList{box});
}

void tst_frmVerINSxSBT::missingConnectionIsReported()
{
    Fixture fixture;
    fixture.component.state.g_DBINS.release();
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.component.prompts.boxes().size(), 1);
    QCOMPARE(fixture.component.prompts.boxes().constFirst().text,
             core::errorText(RuntimeError(3709), u" - seccion [oVELDRA.frmVerINSxSBT.cargar_insumos]"));
}

void tst_frmVerINSxSBT::rowsOfTheLastOpeningAreGoneAfterAnError()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"24001"_s, u"ART"_s, 1, 0, 1, 1}});
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.list().rowCount(), 1);
    fixture.inputs->willGiveRows(u"select ARTDCL"_s, columns.mid(0, 4), {{u"24002"_s, u"OTRO"_s, 1, 0}});
    fixture.form.Cargar_Insumos();
    QCOMPARE(fixture.component.prompts.boxes().size(), 1);
    QVERIFY(fixture.component.prompts.boxes().constFirst().text.contains(u"\r\n\r\n3265 - seccion"));
    QCOMPARE(fixture.list().rowCount(), 0);
    QVERIFY(!fixture.list().isHidden());
}

void tst_frmVerINSxSBT::everyOpeningLoadsAnew()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"24001"_s, u"ART"_s, 1, 0, 1, 1}});
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"24002"_s, u"OTRO"_s, 1, 0, 1, 1}});
    QVERIFY(whileOpen(fixture.form, [&fixture] { QCOMPARE(fixture.row(0).constFirst(), u"ART"_s); }));
    fixture.component.state.sInternoExt = u"EXP24002"_s;
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QCOMPARE(fixture.list().rowCount(), 1);
        QCOMPARE(fixture.row(0).constFirst(), u"OTRO"_s);
    }));
    QVERIFY(fixture.inputs->statements().constLast().contains(u"EXTINT = 'EXP24002'"));
}

void tst_frmVerINSxSBT::escapeCloses()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns, {{u"24001"_s, u"ART"_s, 1, 0, 1, 1}});
    QVERIFY(!whileOpen(fixture.form, [] { pressKey(Qt::Key_Escape); }));
    QVERIFY(whileOpen(fixture.form, [] {
        pressKey(Qt::Key_Return);
        pressKey(Qt::Key_F11);
    }));
}

void tst_frmVerINSxSBT::controlsHaveTheirNamesTitlesAndTexts()
{
    const Fixture fixture;
    QCOMPARE(fixture.form.objectName(), u"frmVerINSxSBT"_s);
    const auto* title = fixture.form.findChild<QLabel*>(u"Label1"_s);
    QVERIFY(title != nullptr);
    QCOMPARE(title->text(), u"Insumos descargados para este subitem's"_s);
    QStringList titles;
    for (int column = 0; column < fixture.list().model()->columnCount(); ++column) {
        titles.append(fixture.list().model()->headerData(column, Qt::Horizontal).toString());
    }
    QCOMPARE(titles, (QStringList{u"Insumo"_s, u"D.I.T"_s, u"Item"_s, u"SubIt"_s, u"Descargado"_s, u"Cif Unitario"_s}));
    QCOMPARE(fixture.list().accessibleName(), title->text());
}

void tst_frmVerINSxSBT::keyboardWalksTheList()
{
    Fixture fixture;
    fixture.inputs->willGiveRows(u"select"_s, columns,
                                 {{u"24001"_s, u"ART"_s, 1, 0, 1, 1}, {u"24002"_s, u"ART"_s, 1, 0, 2, 1}});
    QVERIFY(whileOpen(fixture.form, [&fixture] {
        QVERIFY(fixture.list().hasFocus());
        QCOMPARE(fixture.list().currentRow(), 0);
        pressKey(Qt::Key_Down);
        QCOMPARE(fixture.list().currentRow(), 1);
    }));
}

QTEST_MAIN(tst_frmVerINSxSBT)
#include "tst_frmVerINSxSBT.moc"
