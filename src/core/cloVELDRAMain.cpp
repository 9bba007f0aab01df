#include <oVELDRA/cloVELDRAMain.h>

#include <core/Application.h>
#include <core/Component.h>
#include <core/ErrorReport.h>
#include <core/MemberTable.h>
#include <runtime/Numbers.h>

#include <QCoreApplication>
#include <QMetaType>
#include <QObject>
#include <QThread>

using namespace Qt::StringLiterals;

namespace oVELDRA {

namespace {

using Connection = std::shared_ptr<ConexionDB>;

/// The connection in an argument of ConectarDB().
Connection toConnection(const QVariant& argument)
{
    if (argument.metaType() == QMetaType::fromType<Connection>()) {
        auto connection = argument.value<Connection>();
        if (!connection) {
            throw RuntimeError(91);
        }
        return connection;
    }
    // An object of another class is told apart from a value that is no object at all.
    throw RuntimeError(argument.metaType().flags().testFlag(QMetaType::PointerToQObject) ? 430 : 424);
}

} // namespace

_cloVELDRAMain::~_cloVELDRAMain() = default;

cloVELDRAMain::cloVELDRAMain(core::Component& component) : m_component(component)
{
    core::ensureApplication();
    core::requireUiThread();
    m_component.start();
}

cloVELDRAMain::~cloVELDRAMain()
{
    auto* application = QCoreApplication::instance();
    if (application != nullptr && application->thread() != QThread::currentThread()) {
        // The last release destroys windows, which only their own thread may do; a destructor cannot refuse.
        QMetaObject::invokeMethod(
            application, [&component = m_component] { component.end(); }, Qt::QueuedConnection);
        return;
    }
    m_component.end();
}

bool cloVELDRAMain::get_OK() const
{
    core::requireUiThread();
    return m_component.state.g_bOK;
}

QString cloVELDRAMain::get_CATNRO() const
{
    core::requireUiThread();
    return m_component.state.g_sCATNRO;
}

QString cloVELDRAMain::get_PRDDES() const
{
    core::requireUiThread();
    return m_component.state.g_sPRDDES;
}

QString cloVELDRAMain::get_PRDNCM() const
{
    core::requireUiThread();
    return m_component.state.g_sPRDNCM;
}

QString cloVELDRAMain::get_PRDPAI() const
{
    core::requireUiThread();
    return m_component.state.g_sPRDPAI;
}

double cloVELDRAMain::get_PRDPRE() const
{
    core::requireUiThread();
    return m_component.state.g_dPRDPRE;
}

QString cloVELDRAMain::get_PRDSUF() const
{
    core::requireUiThread();
    return m_component.state.g_sPRDSUF;
}

QString cloVELDRAMain::get_PRDUNI() const
{
    core::requireUiThread();
    return m_component.state.g_sPRDUNI;
}

void cloVELDRAMain::put_BaseNcm(const QString& path)
{
    core::requireUiThread();
    m_component.state.g_sBaseNcm = path;
}

void cloVELDRAMain::put_BaseTornel(const QString& path)
{
    core::requireUiThread();
    m_component.state.g_sBaseTornel = path;
}

void cloVELDRAMain::put_BaseInsumos(const QString& path)
{
    core::requireUiThread();
    m_component.state.g_sBaseInsumos = path;
}

void cloVELDRAMain::put_Interno_Externo(const QString& interno)
{
    core::requireUiThread();
    m_component.state.sInternoExt = interno;
}

bool cloVELDRAMain::ConectarDB(const QVariant& po_DBINS, const QVariant& po_DBNCM, const QVariant& po_DBTOR)
{
    core::requireWindows(); // not under the trap: its box is a window, too
    auto& state = m_component.state;
    return core::trap(m_component.prompts(), u"Sección [oVELDRA.cloVELDRAMain.ConectarDB]", [&] {
        state.g_DBINS.assign(toConnection(po_DBINS));
        if (!core::isNullArgument(po_DBTOR)) {
            state.g_DBTOR.assign(toConnection(po_DBTOR));
        }
        if (!core::isNullArgument(po_DBNCM)) {
            state.g_DBNCM.assign(toConnection(po_DBNCM));
        }
    });
}

void cloVELDRAMain::Mostrar()
{
    core::requireWindows();
    auto& state = m_component.state;
    state.g_bOK = false;
    // Not g_sPRDNRO: after a cancelled pick it still names the earlier one.
    for (QString* field :
         {&state.g_sCATNRO, &state.g_sPRDDES, &state.g_sPRDNCM, &state.g_sPRDPAI, &state.g_sPRDSUF, &state.g_sPRDUNI}) {
        field->clear();
    }
    state.g_dPRDPRE = 0;
    m_component.show(core::Entry::Mostrar);
}

void cloVELDRAMain::Importar()
{
    core::requireWindows();
    if (m_component.state.sInternoExt.isEmpty()) {
        m_component.prompts().messageBox(u"El parametro sInternoExt esta vacío"_s, core::CriticalBox);
        return;
    }
    m_component.show(core::Entry::Importar);
}

void cloVELDRAMain::MostrarDIT()
{
    core::requireWindows();
    m_component.show(core::Entry::MostrarDIT);
}

QString cloVELDRAMain::get_PRDNRO() const
{
    core::requireUiThread();
    return m_component.state.g_sPRDNRO;
}

void cloVELDRAMain::put_ADUANA(const QString& aduana)
{
    core::requireUiThread();
    m_component.state.g_sAduana = aduana;
}

void cloVELDRAMain::VerINSxSBT()
{
    core::requireWindows();
    m_component.show(core::Entry::VerINSxSBT);
}

void cloVELDRAMain::put_IdSUB(const QString& id)
{
    core::requireUiThread();
    m_component.state.g_lIdSUB = runtime::CLng(id);
}

QVariant cloVELDRAMain::invoke(QStringView name, MemberKind kind, const QVariantList& arguments)
{
    core::requireUiThread();
    const core::Member* member = core::findMember(name, kind);
    if (member == nullptr) {
        throw RuntimeError(438);
    }
    return core::callMember(*member, *this, arguments);
}

} // namespace oVELDRA
