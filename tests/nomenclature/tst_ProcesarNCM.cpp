#include "doubles/FakeConexionDB.h"
#include "doubles/TestComponent.h"

#include <core/ErrorReport.h>
#include <nomenclature/ProcesarNCM.h>

#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using nomenclature::ProcesarNCM;

namespace {

const QStringList columns{u"001"_s, u"002"_s, u"003"_s, u"uest"_s, u"lapi"_s};
const QString location = u"Sección [Morvesta.frmModificar.ProcesarNCM]"_s;

struct Fixture
{
    Fixture()
    {
        component.state.g_DBNCM.assign(tariff);
        component.prompts.whileShown = [] { QVERIFY(QGuiApplication::overrideCursor() == nullptr); };
    }

    std::shared_ptr<FakeConexionDB> tariff = std::make_shared<FakeConexionDB>();
    TestComponent component;
};

} // namespace

class tst_ProcesarNCM : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(QGuiApplication::overrideCursor() == nullptr); }

    void statement_data();
    void statement();
    void storedFormIsAnsweredAsTheColumnsHaveIt();
    void commasBecomePointsInTheCallersVariableToo();
    void wrongLengthIsToldWithoutAQuery_data();
    void wrongLengthIsToldWithoutAQuery();
    void unknownPositionIsTold();
    void queryThatCannotBeOpenedIsReported();
    void missingConnectionIsReported();
    void missingColumnIsReported();
    void apostropheIsReportedAndRunsNothing();
    void hourglassWhileTheQueryRuns();
};

void tst_ProcesarNCM::statement_data()
{
    QTest::addColumn<QString>("position");
    QTest::addColumn<QString>("condition");
    QTest::newRow("15 characters") << u"8471.30.12.000A"_s
                                   << u" [001] = '8471.30.12' and [002] = '000'  and [003] = 'A'"_s;
    QTest::newRow("14 characters: the last one counts twice")
        << u"8471.30.12.00A"_s << u" [001] = '8471.30.12' and [002] = '00A'  and [003] = 'A'"_s;
    QTest::newRow("with commas") << u"8471,30,12,000A"_s
                                 << u" [001] = '8471.30.12' and [002] = '000'  and [003] = 'A'"_s;
}

void tst_ProcesarNCM::statement()
{
    QFETCH(QString, position);
    QFETCH(const QString, condition);
    Fixture fixture;
    fixture.tariff->willGiveRows(u"select"_s, columns, {{u"8471.30.12"_s, u"000"_s, u"A"_s, u"07"_s, QVariant()}});
    QCOMPARE(ProcesarNCM(fixture.component, position), u"8471.30.12.000A"_s);
    QCOMPARE(fixture.tariff->statements(),
             QStringList{u"select [001],[002],[003],[012] as uest ,[059] as lapi from NCM where "_s + condition});
    QVERIFY(fixture.component.prompts.boxes().isEmpty());
}

void tst_ProcesarNCM::storedFormIsAnsweredAsTheColumnsHaveIt()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(
        u"select"_s, columns,
        {{u"8471.30.12"_s, u"000"_s, u"A"_s, u"07"_s, u"1"_s}, {u"9999.99.99"_s, u"999"_s, u"Z"_s, u"07"_s, u"1"_s}});
    QString position = u"8471.30.12.000a"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), u"8471.30.12.000A"_s);
    QCOMPARE(position, u"8471.30.12.000a"_s);
}

void tst_ProcesarNCM::commasBecomePointsInTheCallersVariableToo()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(u"select"_s, columns, {{u"8471.30.12"_s, u"000"_s, u"A"_s, QVariant(), QVariant()}});
    QString position = u"8471,30,12,000A"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), u"8471.30.12.000A"_s);
    QCOMPARE(position, u"8471.30.12.000A"_s);
}

void tst_ProcesarNCM::wrongLengthIsToldWithoutAQuery_data()
{
    QTest::addColumn<QString>("position");
    QTest::newRow("13 characters") << u"8471,30,12,00"_s;
    QTest::newRow("16 characters") << u"8471,30,12,000AB"_s;
    QTest::newRow("empty") << u""_s;
}

void tst_ProcesarNCM::wrongLengthIsToldWithoutAQuery()
{
    QFETCH(const QString, position);
    Fixture fixture;
    QString typed = position;
    QCOMPARE(ProcesarNCM(fixture.component, typed), QString());
    QCOMPARE(typed, position); // its commas, too
    QVERIFY(fixture.tariff->statements().isEmpty());
    const RecordedPrompts::Box box{u"Error en la estructura de la posición"_s, core::ExclamationBox, {}};
    QCOMPARE(fixture.component.prompts.boxes(), QList{box});
}

void tst_ProcesarNCM::unknownPositionIsTold()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(u"select"_s, columns);
    QString position = u"8471,30,12,000A"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), QString());
    QCOMPARE(position, u"8471.30.12.000A"_s);
    const RecordedPrompts::Box box{u"Posición no encontrada en Nomenclador"_s, core::ExclamationBox, {}};
    QCOMPARE(fixture.component.prompts.boxes(), QList{box});
}

void tst_ProcesarNCM::queryThatCannotBeOpenedIsReported()
{
    Fixture fixture;
    fixture.tariff->willNotOpen(u"select"_s, RuntimeError(-2147217865, u"No está la tabla NCM."_s));
    QString position = u"8471.30.12.000A"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), QString());
    const RecordedPrompts::Box box{
        u"-2147217865 - No está la tabla NCM.\r\n\r\nSección [Morvesta.frmModificar.ProcesarNCM]"_s,
        core::CriticalBox,
        {}};
    QCOMPARE(fixture.component.prompts.boxes(), QList{box});
}

void tst_ProcesarNCM::missingConnectionIsReported()
{
    Fixture fixture;
    fixture.component.state.g_DBNCM.release();
    QString position = u"8471.30.12.000A"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), QString());
    QCOMPARE(fixture.component.prompts.texts(), QStringList{core::errorText(RuntimeError(3709), location)});
}

void tst_ProcesarNCM::missingColumnIsReported()
{
    Fixture fixture;
    fixture.tariff->willGiveRows(u"select"_s, {u"001"_s, u"002"_s}, {{u"8471.30.12"_s, u"000"_s}});
    QString position = u"8471.30.12.000A"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), QString());
    QCOMPARE(fixture.component.prompts.texts(), QStringList{core::errorText(RuntimeError(3265), location)});
}

void tst_ProcesarNCM::apostropheIsReportedAndRunsNothing()
{
    for (const auto& hostile : {u"' or '1'='1 or '"_s, u"8471.30.12.00'A"_s, u"8471.30.12.000'"_s}) {
        Fixture fixture;
        QString position = hostile.left(15);
        QCOMPARE(ProcesarNCM(fixture.component, position), QString());
        QVERIFY(fixture.tariff->statements().isEmpty());
        QCOMPARE(fixture.component.prompts.boxes().size(), 1);
        const auto box = fixture.component.prompts.boxes().constFirst();
        QCOMPARE(box.style, core::CriticalBox);
        QVERIFY(box.text.startsWith(u"-2147217900 - "));
        QVERIFY(box.text.endsWith(QString(u"\r\n\r\n"_s + location)));
    }
}

void tst_ProcesarNCM::hourglassWhileTheQueryRuns()
{
    class Looking final : public ConexionDB
    {
    public:
        void setSql(const QString& /*text*/) override {}
        std::unique_ptr<Recordset> openRecordset(bool& ok) override
        {
            const QCursor* pointer = QGuiApplication::overrideCursor();
            sawHourglass = pointer != nullptr && pointer->shape() == Qt::WaitCursor;
            ok = false;
            return nullptr;
        }
        qint64 execute() override { return 0; }

        bool sawHourglass = false;
    };
    const auto looking = std::make_shared<Looking>();
    Fixture fixture;
    fixture.component.state.g_DBNCM.assign(looking);
    QString position = u"8471.30.12.000A"_s;
    QCOMPARE(ProcesarNCM(fixture.component, position), QString());
    QVERIFY(looking->sawHourglass);
    QCOMPARE(fixture.component.prompts.texts(), QStringList{core::errorText(RuntimeError(91), location)});
}

QTEST_MAIN(tst_ProcesarNCM)
#include "tst_ProcesarNCM.moc"
