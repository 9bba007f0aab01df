#include "doubles/FakeConexionDB.h"
#include "doubles/ThrownError.h"

#include <core/SharedState.h>

#include <QTest>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::doubles;

namespace {

/// A host's class that implements only what it must.
class MinimalConexion final : public ConexionDB
{
public:
    void setSql(const QString& /*text*/) override {}
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override
    {
        ok = false;
        return nullptr;
    }
    qint64 execute() override { return 0; }
};

} // namespace

class tst_SharedState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stateStartsEmpty();
    void slotWithoutConnectionIsUnconnected();
    void slotUsesTheHostsConnection();
    void releasedSlotLetsGoAndIsUnconnected();
    void defaultLastErrorIs91();
    void defaultBurstDoesNothing();
};

void tst_SharedState::stateStartsEmpty()
{
    const core::SharedState state;
    for (const core::ConnectionSlot* slot : {&state.g_DBINS, &state.g_DBTOR, &state.g_DBNCM}) {
        QVERIFY(slot->assigned() == nullptr);
    }
    for (const QString* text :
         {&state.g_sBaseNcm, &state.g_sBaseTornel, &state.g_sBaseInsumos, &state.sInternoExt, &state.g_sAduana,
          &state.g_sFmtCantidad, &state.g_sFmtListado, &state.g_sCATNRO, &state.g_sPRDNRO, &state.g_sPRDDES,
          &state.g_sPRDNCM, &state.g_sPRDUNI, &state.g_sPRDPAI, &state.g_sPRDSUF}) {
        QVERIFY(text->isEmpty());
    }
    QCOMPARE(state.g_lIdSUB, 0);
    QCOMPARE(state.g_dPRDPRE, 0.0);
    QVERIFY(!state.g_bOpVDE && !state.g_bOK);
}

void tst_SharedState::slotWithoutConnectionIsUnconnected()
{
    core::ConnectionSlot slot;
    slot->setSql(u"select * from CAT"_s);
    bool ok = true;
    QVERIFY(slot->openRecordset(ok) == nullptr);
    QVERIFY(!ok);
    QCOMPARE(slot->lastError().number(), 3709);
    const auto error = thrownBy([&] { slot->execute(); });
    QVERIFY(error);
    QCOMPARE(error->number(), 3709);
    QCOMPARE(error->description(), u"La conexión no se puede usar para realizar esta operación. Está cerrada o no es "
                                   u"válida en este contexto."_s);
    QVERIFY(slot.assigned() == nullptr);
}

void tst_SharedState::slotUsesTheHostsConnection()
{
    const auto connection = std::make_shared<FakeConexionDB>();
    connection->willAffect({}, 4);
    core::ConnectionSlot slot;
    QVERIFY(&*slot != connection.get()); // used before the host's came
    slot.assign(connection);
    QCOMPARE(slot.assigned(), connection.get());
    slot->setSql(u"delete from CAT"_s);
    QCOMPARE(slot->execute(), 4);
    QCOMPARE(connection->statements(), QStringList(u"delete from CAT"_s));
}

void tst_SharedState::releasedSlotLetsGoAndIsUnconnected()
{
    auto connection = std::make_shared<FakeConexionDB>();
    const std::weak_ptr<FakeConexionDB> watched = connection;
    core::ConnectionSlot slot;
    slot.assign(std::move(connection));
    QVERIFY(!watched.expired());
    slot.release();
    QVERIFY(watched.expired());
    QCOMPARE(numberThrownBy([&] { slot->execute(); }), 3709);
}

void tst_SharedState::defaultLastErrorIs91()
{
    QCOMPARE(MinimalConexion().lastError().number(), 91);
}

void tst_SharedState::defaultBurstDoesNothing()
{
    MinimalConexion connection;
    const auto burst = connection.beginBurst();
    QVERIFY(burst);
    QCOMPARE(numberThrownBy([&] { burst->commit(); }), 0);
}

QTEST_MAIN(tst_SharedState)
#include "tst_SharedState.moc"
