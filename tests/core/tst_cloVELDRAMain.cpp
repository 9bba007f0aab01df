#include "doubles/FakeConexionDB.h"
#include "doubles/FakeScreens.h"
#include "doubles/TestComponent.h"
#include "doubles/ThrownError.h"

#include <oVELDRA/cloVELDRAMain.h>

#include <core/MemberTable.h>

#include <QLocale>
#include <QTest>
#include <QThread>

#include <limits>
#include <vector>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using core::Entry;

namespace {

const QVariant null = QVariant::fromValue(nullptr);
const QVariant omitted;

QVariant argument(const std::shared_ptr<ConexionDB>& connection)
{
    return QVariant::fromValue(connection);
}

/// What ConectarDB() shows for an error.
QString conectarError(int number)
{
    return QString::number(number) + u" - "_s + RuntimeError(number).description() +
           u"\r\n\r\nSección [oVELDRA.cloVELDRAMain.ConectarDB]"_s;
}

void runInThread(const std::function<void()>& body)
{
    const std::unique_ptr<QThread> thread(QThread::create(body));
    thread->start();
    thread->wait();
}

} // namespace

class tst_cloVELDRAMain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void creationReadsTheFormats();
    void releaseDropsTheConnections();
    void readPropertiesGiveTheSharedState();
    void writePropertiesGoToTheSharedState();
    void instancesShareOneState();
    void idSUBIsConverted_data();
    void idSUBIsConverted();
    void conectarDBWithNullsSetsTheInputsOnly();
    void conectarDBSetsAllThree();
    void conectarDBNullKeepsAnEarlierConnection();
    void conectarDBWithOmittedOptionalsFailsWithTheInputsSet();
    void conectarDBFailsInOrder();
    void conectarDBRefusesWhatIsNoConnection_data();
    void conectarDBRefusesWhatIsNoConnection();
    void mostrarResetsAndShows();
    void mostrarCancelledKeepsPRDNRO();
    void importarWithoutInternoShowsTheMessage_data();
    void importarWithoutInternoShowsTheMessage();
    void importarShowsItsScreen();
    void otherEntriesShowTheirScreens();
    void entryErrorsGoToTheHost();
    void callsFromAnotherThreadAreRefused();
    void releaseInAnotherThreadHappensInTheUiThread();
};

void tst_cloVELDRAMain::creationReadsTheFormats()
{
    TestComponent component;
    component.settings.save(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s, u"S"_s);
    const cloVELDRAMain object(component);
    QVERIFY(component.state.g_bOpVDE);
    QCOMPARE(component.state.g_sFmtCantidad, u"00.00000000"_s);
}

void tst_cloVELDRAMain::releaseDropsTheConnections()
{
    TestComponent component;
    const std::shared_ptr<ConexionDB> connection = std::make_shared<FakeConexionDB>();
    {
        cloVELDRAMain object(component);
        QVERIFY(object.ConectarDB(argument(connection), argument(connection), argument(connection)));
        QCOMPARE(connection.use_count(), 4L);
    }
    QCOMPARE(connection.use_count(), 1L);
}

void tst_cloVELDRAMain::readPropertiesGiveTheSharedState()
{
    TestComponent component;
    const cloVELDRAMain object(component);
    QVERIFY(!object.get_OK());
    QCOMPARE(object.get_PRDPRE(), 0.0);
    component.state.g_bOK = true;
    component.state.g_sCATNRO = u"c"_s;
    component.state.g_sPRDNRO = u"n"_s;
    component.state.g_sPRDDES = u"d"_s;
    component.state.g_sPRDNCM = u"m"_s;
    component.state.g_sPRDPAI = u"p"_s;
    component.state.g_sPRDSUF = u"s"_s;
    component.state.g_sPRDUNI = u"u"_s;
    component.state.g_dPRDPRE = 12.5;
    QVERIFY(object.get_OK());
    QCOMPARE(object.get_CATNRO(), u"c"_s);
    QCOMPARE(object.get_PRDNRO(), u"n"_s);
    QCOMPARE(object.get_PRDDES(), u"d"_s);
    QCOMPARE(object.get_PRDNCM(), u"m"_s);
    QCOMPARE(object.get_PRDPAI(), u"p"_s);
    QCOMPARE(object.get_PRDSUF(), u"s"_s);
    QCOMPARE(object.get_PRDUNI(), u"u"_s);
    QCOMPARE(object.get_PRDPRE(), 12.5);
}

void tst_cloVELDRAMain::writePropertiesGoToTheSharedState()
{
    TestComponent component;
    cloVELDRAMain object(component);
    object.put_BaseNcm(u"/ncm.mdb"_s);
    object.put_BaseTornel(u"/tornel.mdb"_s);
    object.put_BaseInsumos(u"/insumos.mdb"_s);
    object.put_Interno_Externo(u"I-1"_s);
    object.put_ADUANA(u"001"_s);
    QCOMPARE(component.state.g_sBaseNcm, u"/ncm.mdb"_s);
    QCOMPARE(component.state.g_sBaseTornel, u"/tornel.mdb"_s);
    QCOMPARE(component.state.g_sBaseInsumos, u"/insumos.mdb"_s);
    QCOMPARE(component.state.sInternoExt, u"I-1"_s);
    QCOMPARE(component.state.g_sAduana, u"001"_s);
    // The paths change nothing else: no connection comes of them.
    QVERIFY(component.state.g_DBINS.assigned() == nullptr);
    QVERIFY(component.state.g_DBTOR.assigned() == nullptr);
    QVERIFY(component.state.g_DBNCM.assigned() == nullptr);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_cloVELDRAMain::instancesShareOneState()
{
    TestComponent component;
    cloVELDRAMain one(component);
    const cloVELDRAMain two(component);
    one.put_ADUANA(u"001"_s);
    component.state.g_sPRDNRO = u"7"_s;
    QCOMPARE(one.get_PRDNRO(), two.get_PRDNRO());
}

void tst_cloVELDRAMain::idSUBIsConverted_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("expected");
    for (const QString& locale : {u"es_AR"_s, u"en_US"_s}) {
        const auto row = [&locale](const char* name) -> QTestData& {
            return QTest::addRow("%s %s", qPrintable(locale), name) << locale;
        };
        row("123") << u"123"_s << 0 << 123;
        row("blanks around") << u" 45 "_s << 0 << 45;
        row("negative") << u"-7"_s << 0 << -7;
        row("greatest") << u"2147483647"_s << 0 << 2147483647;
        row("smallest") << u"-2147483648"_s << 0 << std::numeric_limits<int>::min();
        row("too great") << u"2147483648"_s << 6 << 99;
        row("no number") << u"abc"_s << 13 << 99;
        row("empty") << u""_s << 13 << 99;
    }
}

void tst_cloVELDRAMain::idSUBIsConverted()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, text);
    QFETCH(const int, error);
    QFETCH(const int, expected);
    QLocale::setDefault(QLocale(locale));
    TestComponent component;
    cloVELDRAMain object(component);
    component.state.g_lIdSUB = 99;
    QCOMPARE(numberThrownBy([&] { object.put_IdSUB(text); }), error);
    QCOMPARE(component.state.g_lIdSUB, expected);
    QVERIFY(component.prompts.boxes().isEmpty()); // the error is the host's
}

void tst_cloVELDRAMain::conectarDBWithNullsSetsTheInputsOnly()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> inputs = std::make_shared<FakeConexionDB>();
    QVERIFY(object.ConectarDB(argument(inputs), null, null));
    QCOMPARE(component.state.g_DBINS.assigned(), inputs.get());
    QVERIFY(component.state.g_DBNCM.assigned() == nullptr);
    QVERIFY(component.state.g_DBTOR.assigned() == nullptr);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_cloVELDRAMain::conectarDBSetsAllThree()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> inputs = std::make_shared<FakeConexionDB>();
    const std::shared_ptr<ConexionDB> nomenclature = std::make_shared<FakeConexionDB>();
    const std::shared_ptr<ConexionDB> host = std::make_shared<FakeConexionDB>();
    QVERIFY(object.ConectarDB(argument(inputs), argument(nomenclature), argument(host)));
    QCOMPARE(component.state.g_DBINS.assigned(), inputs.get());
    QCOMPARE(component.state.g_DBNCM.assigned(), nomenclature.get());
    QCOMPARE(component.state.g_DBTOR.assigned(), host.get());
}

void tst_cloVELDRAMain::conectarDBNullKeepsAnEarlierConnection()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> first = std::make_shared<FakeConexionDB>();
    const std::shared_ptr<ConexionDB> second = std::make_shared<FakeConexionDB>();
    QVERIFY(object.ConectarDB(argument(first), argument(first), argument(first)));
    QVERIFY(object.ConectarDB(argument(second), null, null));
    QCOMPARE(component.state.g_DBINS.assigned(), second.get());
    QCOMPARE(component.state.g_DBNCM.assigned(), first.get());
    QCOMPARE(component.state.g_DBTOR.assigned(), first.get());
}

void tst_cloVELDRAMain::conectarDBWithOmittedOptionalsFailsWithTheInputsSet()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> inputs = std::make_shared<FakeConexionDB>();
    QVERIFY(!object.ConectarDB(argument(inputs)));
    QCOMPARE(component.state.g_DBINS.assigned(), inputs.get());
    QVERIFY(component.state.g_DBNCM.assigned() == nullptr);
    QVERIFY(component.state.g_DBTOR.assigned() == nullptr);
    QCOMPARE(
        component.prompts.boxes(),
        (QList{RecordedPrompts::Box{u"424 - Se requiere un objeto\r\n\r\nSección [oVELDRA.cloVELDRAMain.ConectarDB]"_s,
                                    core::CriticalBox,
                                    {}}}));
}

void tst_cloVELDRAMain::conectarDBFailsInOrder()
{
    const std::shared_ptr<ConexionDB> connection = std::make_shared<FakeConexionDB>();
    {
        // The host's comes before the nomenclature, although it is the third argument.
        TestComponent component;
        cloVELDRAMain object(component);
        QVERIFY(!object.ConectarDB(argument(connection), omitted, argument(connection)));
        QCOMPARE(component.state.g_DBTOR.assigned(), connection.get());
        QVERIFY(component.state.g_DBNCM.assigned() == nullptr);
    }
    TestComponent component;
    cloVELDRAMain object(component);
    QVERIFY(!object.ConectarDB(argument(connection), argument(connection), omitted));
    QCOMPARE(component.state.g_DBINS.assigned(), connection.get());
    QVERIFY(component.state.g_DBTOR.assigned() == nullptr);
    QVERIFY(component.state.g_DBNCM.assigned() == nullptr);
    QCOMPARE(component.prompts.boxes().size(), 1);
}

void tst_cloVELDRAMain::conectarDBRefusesWhatIsNoConnection_data()
{
    QTest::addColumn<QVariant>("wrong");
    QTest::addColumn<int>("number");
    QTest::newRow("Null") << null << 424;
    QTest::newRow("omitted") << omitted << 424;
    QTest::newRow("no object in the reference") << argument({}) << 91;
    QTest::newRow("object of another class") << QVariant::fromValue<QObject*>(this) << 430;
    QTest::newRow("text") << QVariant(u"sqlite:x"_s) << 424;
    QTest::newRow("number") << QVariant(7) << 424;
}

void tst_cloVELDRAMain::conectarDBRefusesWhatIsNoConnection()
{
    QFETCH(const QVariant, wrong);
    QFETCH(const int, number);
    const std::shared_ptr<ConexionDB> earlier = std::make_shared<FakeConexionDB>();
    const std::shared_ptr<ConexionDB> connection = std::make_shared<FakeConexionDB>();
    TestComponent component;
    cloVELDRAMain object(component);
    QVERIFY(object.ConectarDB(argument(earlier), argument(earlier), argument(earlier)));

    QVERIFY(!object.ConectarDB(wrong, argument(connection), argument(connection)));
    QCOMPARE(component.prompts.texts(), QStringList(conectarError(number)));
    QCOMPARE(component.state.g_DBINS.assigned(), earlier.get());
    QCOMPARE(component.state.g_DBTOR.assigned(), earlier.get());
    QCOMPARE(component.state.g_DBNCM.assigned(), earlier.get());

    if (core::isNullArgument(wrong)) {
        return; // behind the first argument Null is no error
    }
    component.prompts.clear();
    QVERIFY(!object.ConectarDB(argument(connection), argument(connection), wrong));
    QVERIFY(!object.ConectarDB(argument(connection), wrong, argument(connection)));
    QCOMPARE(component.prompts.texts(), QStringList({conectarError(number), conectarError(number)}));
    QCOMPARE(component.state.g_DBINS.assigned(), connection.get());
    QCOMPARE(component.state.g_DBTOR.assigned(), connection.get()); // by the second call
    QCOMPARE(component.state.g_DBNCM.assigned(), earlier.get());
}

void tst_cloVELDRAMain::mostrarResetsAndShows()
{
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    // What the product picker does when the user picks.
    screens.install(component, Entry::Mostrar, [&] {
        component.state.g_sCATNRO = u"1"_s;
        component.state.g_sPRDNRO = u"2"_s;
        component.state.g_bOK = true;
    });
    object.Mostrar();
    QCOMPARE(screens[Entry::Mostrar].shown, 1);
    QVERIFY(object.get_OK());
    QCOMPARE(object.get_CATNRO(), u"1"_s);
    QCOMPARE(object.get_PRDNRO(), u"2"_s);
}

void tst_cloVELDRAMain::mostrarCancelledKeepsPRDNRO()
{
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    screens.install(component, Entry::Mostrar);
    auto& state = component.state;
    state.g_bOK = true;
    state.g_sCATNRO = state.g_sPRDNRO = state.g_sPRDDES = state.g_sPRDNCM = state.g_sPRDPAI = state.g_sPRDSUF =
        state.g_sPRDUNI = u"x"_s;
    state.g_dPRDPRE = 3;
    state.sInternoExt = u"I1"_s;
    object.Mostrar();
    QVERIFY(!object.get_OK());
    QCOMPARE(object.get_CATNRO(), u""_s);
    QCOMPARE(object.get_PRDDES(), u""_s);
    QCOMPARE(object.get_PRDNCM(), u""_s);
    QCOMPARE(object.get_PRDPAI(), u""_s);
    QCOMPARE(object.get_PRDSUF(), u""_s);
    QCOMPARE(object.get_PRDUNI(), u""_s);
    QCOMPARE(object.get_PRDPRE(), 0.0);
    QCOMPARE(object.get_PRDNRO(), u"x"_s);
    QCOMPARE(state.sInternoExt, u"I1"_s);
}

void tst_cloVELDRAMain::importarWithoutInternoShowsTheMessage_data()
{
    QTest::addColumn<bool>("written");
    QTest::newRow("never written") << false;
    QTest::newRow("written as an empty text") << true;
}

void tst_cloVELDRAMain::importarWithoutInternoShowsTheMessage()
{
    QFETCH(const bool, written);
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    screens.install(component, Entry::Importar);
    if (written) {
        object.put_Interno_Externo(u"I1"_s);
        object.put_Interno_Externo(u""_s);
    }
    object.Importar();
    QCOMPARE(component.prompts.boxes(),
             (QList{RecordedPrompts::Box{u"El parametro sInternoExt esta vacío"_s, core::CriticalBox, {}}}));
    QCOMPARE(screens[Entry::Importar].made, 0);
}

void tst_cloVELDRAMain::importarShowsItsScreen()
{
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    screens.install(component, Entry::Importar);
    object.put_Interno_Externo(u" "_s); // a blank is not empty
    object.Importar();
    QCOMPARE(screens[Entry::Importar].shown, 1);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_cloVELDRAMain::otherEntriesShowTheirScreens()
{
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    screens.install(component, Entry::MostrarDIT);
    screens.install(component, Entry::VerINSxSBT);
    object.MostrarDIT();
    QCOMPARE(screens[Entry::MostrarDIT].shown, 1);
    QCOMPARE(screens[Entry::VerINSxSBT].shown, 0);
    object.VerINSxSBT();
    QCOMPARE(screens[Entry::VerINSxSBT].shown, 1);
}

void tst_cloVELDRAMain::entryErrorsGoToTheHost()
{
    FakeScreens screens;
    TestComponent component;
    cloVELDRAMain object(component);
    object.put_Interno_Externo(u"I1"_s);
    for (const Entry entry : {Entry::Mostrar, Entry::Importar, Entry::MostrarDIT, Entry::VerINSxSBT}) {
        screens.install(component, entry, [] { throw RuntimeError(7); });
    }
    QCOMPARE(numberThrownBy([&] { object.Mostrar(); }), 7);
    QCOMPARE(numberThrownBy([&] { object.Importar(); }), 7);
    QCOMPARE(numberThrownBy([&] { object.MostrarDIT(); }), 7);
    QCOMPARE(numberThrownBy([&] { object.VerINSxSBT(); }), 7);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_cloVELDRAMain::callsFromAnotherThreadAreRefused()
{
    TestComponent component;
    cloVELDRAMain object(component);
    const std::shared_ptr<ConexionDB> connection = std::make_shared<FakeConexionDB>();
    const std::vector<std::function<void()>> calls{
        [&] { (void)object.get_OK(); },
        [&] { (void)object.get_CATNRO(); },
        [&] { (void)object.get_PRDDES(); },
        [&] { (void)object.get_PRDNCM(); },
        [&] { (void)object.get_PRDPAI(); },
        [&] { (void)object.get_PRDPRE(); },
        [&] { (void)object.get_PRDSUF(); },
        [&] { (void)object.get_PRDUNI(); },
        [&] { object.put_BaseNcm(u"x"_s); },
        [&] { object.put_BaseTornel(u"x"_s); },
        [&] { object.put_BaseInsumos(u"x"_s); },
        [&] { object.put_Interno_Externo(u"x"_s); },
        [&] { object.ConectarDB(argument(connection), null, null); },
        [&] { object.Mostrar(); },
        [&] { object.Importar(); },
        [&] { object.MostrarDIT(); },
        [&] { (void)object.get_PRDNRO(); },
        [&] { object.put_ADUANA(u"x"_s); },
        [&] { object.VerINSxSBT(); },
        [&] { object.put_IdSUB(u"1"_s); },
        [&] { object.invoke(u"OK", MemberKind::Get); },
        [&] { const cloVELDRAMain another(component); },
    };
    QList<int> numbers;
    runInThread([&] {
        for (const auto& call : calls) {
            numbers.append(numberThrownBy(call));
        }
    });
    QCOMPARE(numbers, QList<int>(qsizetype(calls.size()), 5));
    QVERIFY(component.prompts.boxes().isEmpty());
    QVERIFY(component.state.sInternoExt.isEmpty());
    QVERIFY(component.state.g_DBINS.assigned() == nullptr);
}

void tst_cloVELDRAMain::releaseInAnotherThreadHappensInTheUiThread()
{
    FakeScreens screens;
    TestComponent component;
    screens.install(component, Entry::VerINSxSBT);
    auto object = std::make_unique<cloVELDRAMain>(component);
    object->VerINSxSBT();
    runInThread([&] { object.reset(); });
    QCOMPARE(screens[Entry::VerINSxSBT].dropped, 0);
    QTRY_COMPARE(screens[Entry::VerINSxSBT].dropped, 1);
}

QTEST_MAIN(tst_cloVELDRAMain)
#include "tst_cloVELDRAMain.moc"
