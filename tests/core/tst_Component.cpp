#include "doubles/FakeConexionDB.h"
#include "doubles/FakeScreens.h"
#include "doubles/TestComponent.h"
#include "doubles/ThrownError.h"

#include <core/Component.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;
using core::Entry;

class tst_Component : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void formatsFollowTheSetting_data();
    void formatsFollowTheSetting();
    void changedSettingTakesEffectForANewObjectOnly();
    void endReleasesTheConnectionsButNotTheTexts();
    void endReleasesHostThenInputsThenNomenclature();
    void connectionsStayWhileAnotherObjectLives();
    void screenIsMadeOnFirstUseAndKept();
    void openScreenCannotBeShownAgain();
    void anotherScreenOpensOverAnOpenOne();
    void failedShowGoesToTheCallerAndLeavesTheScreenUsable();
    void failedMakingLeavesTheScreenUsable();
    void screensGoWithTheLastObject();
    void openScreenGoesWhenItCloses();
};

void tst_Component::formatsFollowTheSetting_data()
{
    QTest::addColumn<bool>("stored");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("opVDE");
    QTest::addColumn<QString>("format");
    QTest::newRow("absent") << false << QString() << false << u"00.000000"_s;
    QTest::newRow("N") << true << u"N"_s << false << u"00.000000"_s;
    QTest::newRow("S") << true << u"S"_s << true << u"00.00000000"_s;
    QTest::newRow("empty") << true << u""_s << true << u"00.00000000"_s;
    QTest::newRow("n") << true << u"n"_s << true << u"00.00000000"_s;
    QTest::newRow("N with a blank") << true << u"N "_s << true << u"00.00000000"_s;
}

void tst_Component::formatsFollowTheSetting()
{
    QFETCH(const bool, stored);
    QFETCH(const QString, value);
    QFETCH(const bool, opVDE);
    QFETCH(const QString, format);
    TestComponent component;
    component.settings.save(u"oZENDALO"_s, u"OTHER"_s, u"opVDE"_s, u"X"_s);
    component.settings.save(u"oVELDRA"_s, u"CONFIG"_s, u"opVDE"_s, u"X"_s);
    if (stored) {
        component.settings.save(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s, value);
    }
    component.start();
    QCOMPARE(component.state.g_bOpVDE, opVDE);
    QCOMPARE(component.state.g_sFmtCantidad, format);
    QCOMPARE(component.state.g_sFmtListado, format);
}

void tst_Component::changedSettingTakesEffectForANewObjectOnly()
{
    TestComponent component;
    component.start();
    component.settings.save(u"oZENDALO"_s, u"CONFIG"_s, u"opVDE"_s, u"S"_s);
    QVERIFY(!component.state.g_bOpVDE);
    component.end();
    component.start();
    QVERIFY(component.state.g_bOpVDE);
    QCOMPARE(component.state.g_sFmtListado, u"00.00000000"_s);
}

void tst_Component::endReleasesTheConnectionsButNotTheTexts()
{
    TestComponent component;
    component.start();
    const auto connection = std::make_shared<FakeConexionDB>();
    component.state.g_DBINS.assign(connection);
    component.state.g_DBTOR.assign(connection);
    component.state.g_DBNCM.assign(connection);
    component.state.sInternoExt = u"I1"_s;
    component.state.g_sPRDNRO = u"P1"_s;
    QCOMPARE(connection.use_count(), 4L);
    component.end();
    QCOMPARE(connection.use_count(), 1L);
    QCOMPARE(component.state.sInternoExt, u"I1"_s);
    QCOMPARE(component.state.g_sPRDNRO, u"P1"_s);
}

void tst_Component::endReleasesHostThenInputsThenNomenclature()
{
    TestComponent component;
    component.start();
    QStringList released;
    // The last reference is the component's own here, so each release shows as a destruction.
    const auto watched = [&released](const QString& name) {
        return std::shared_ptr<ConexionDB>(new FakeConexionDB, [&released, name](const ConexionDB* connection) {
            released.append(name);
            delete connection;
        });
    };
    component.state.g_DBINS.assign(watched(u"inputs"_s));
    component.state.g_DBTOR.assign(watched(u"host"_s));
    component.state.g_DBNCM.assign(watched(u"nomenclature"_s));
    component.end();
    QCOMPARE(released, QStringList({u"host"_s, u"inputs"_s, u"nomenclature"_s}));
}

void tst_Component::connectionsStayWhileAnotherObjectLives()
{
    TestComponent component;
    component.start();
    component.start();
    component.state.g_DBINS.assign(std::make_shared<FakeConexionDB>());
    component.end();
    QVERIFY(component.state.g_DBINS.assigned() != nullptr);
    component.end();
    QVERIFY(component.state.g_DBINS.assigned() == nullptr);
}

void tst_Component::screenIsMadeOnFirstUseAndKept()
{
    FakeScreens screens;
    TestComponent component;
    screens.install(component, Entry::VerINSxSBT);
    QCOMPARE(screens[Entry::VerINSxSBT].made, 0);
    component.show(Entry::VerINSxSBT);
    component.show(Entry::VerINSxSBT);
    QCOMPARE(screens[Entry::VerINSxSBT].made, 1);
    QCOMPARE(screens[Entry::VerINSxSBT].shown, 2);
    QCOMPARE(screens[Entry::VerINSxSBT].dropped, 0);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_Component::openScreenCannotBeShownAgain()
{
    FakeScreens screens;
    TestComponent component;
    int number = 0;
    screens.install(component, Entry::Importar,
                    [&] { number = numberThrownBy([&] { component.show(Entry::Importar); }); });
    component.show(Entry::Importar);
    QCOMPARE(number, 400);
    QCOMPARE(screens[Entry::Importar].shown, 1);
    component.show(Entry::Importar); // closed by now
    QCOMPARE(screens[Entry::Importar].shown, 2);
}

void tst_Component::anotherScreenOpensOverAnOpenOne()
{
    FakeScreens screens;
    TestComponent component;
    screens.install(component, Entry::VerINSxSBT);
    screens.install(component, Entry::Importar, [&] { component.show(Entry::VerINSxSBT); });
    component.show(Entry::Importar);
    QCOMPARE(screens[Entry::VerINSxSBT].shown, 1);
}

void tst_Component::failedShowGoesToTheCallerAndLeavesTheScreenUsable()
{
    FakeScreens screens;
    TestComponent component;
    bool fail = true;
    screens.install(component, Entry::Mostrar, [&] {
        if (std::exchange(fail, false)) {
            throw RuntimeError(7);
        }
    });
    QCOMPARE(numberThrownBy([&] { component.show(Entry::Mostrar); }), 7);
    QCOMPARE(numberThrownBy([&] { component.show(Entry::Mostrar); }), 0);
    QCOMPARE(screens[Entry::Mostrar].shown, 2);
    QVERIFY(component.prompts.boxes().isEmpty());
}

void tst_Component::failedMakingLeavesTheScreenUsable()
{
    FakeScreens screens;
    TestComponent component;
    component.installScreen(Entry::Mostrar,
                            [](core::Component&) -> std::unique_ptr<core::Screen> { throw RuntimeError(7); });
    QCOMPARE(numberThrownBy([&] { component.show(Entry::Mostrar); }), 7);
    screens.install(component, Entry::Mostrar);
    QCOMPARE(numberThrownBy([&] { component.show(Entry::Mostrar); }), 0);
    QCOMPARE(screens[Entry::Mostrar].shown, 1);
}

void tst_Component::screensGoWithTheLastObject()
{
    FakeScreens screens;
    TestComponent component;
    screens.install(component, Entry::Importar);
    component.start();
    component.start();
    component.show(Entry::Importar);
    component.end();
    QCOMPARE(screens[Entry::Importar].dropped, 0);
    component.end();
    QCOMPARE(screens[Entry::Importar].dropped, 1);
    component.start();
    component.show(Entry::Importar);
    QCOMPARE(screens[Entry::Importar].made, 2);
}

void tst_Component::openScreenGoesWhenItCloses()
{
    FakeScreens screens;
    TestComponent component;
    component.start();
    int droppedWhileShown = -1;
    screens.install(component, Entry::Importar, [&] {
        component.end(); // a host that releases the object while its call still runs
        droppedWhileShown = screens[Entry::Importar].dropped;
    });
    component.show(Entry::Importar);
    QCOMPARE(droppedWhileShown, 0);
    QCOMPARE(screens[Entry::Importar].dropped, 1);
}

QTEST_MAIN(tst_Component)
#include "tst_Component.moc"
