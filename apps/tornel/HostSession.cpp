#include "HostSession.h"

#include <QVariant>

using namespace Qt::StringLiterals;
using oVELDRA::Access;
using oVELDRA::Database;

namespace tornel {

HostSession::HostSession(const DataFolder& folder)
    : m_inputs(folder.connect(Database::Inputs, Access::ReadWrite)),
      m_nomenclature(folder.connect(Database::Nomenclature, Access::ReadOnly)),
      m_host(folder.connect(Database::Host, Access::ReadOnly))
{
    m_component.put_BaseInsumos(folder.file(Database::Inputs));
    m_component.put_BaseNcm(folder.file(Database::Nomenclature));
    m_component.put_BaseTornel(folder.file(Database::Host));
    // A refusal has been shown to the user by the component itself; every operation would then report its own error.
    m_component.ConectarDB(QVariant::fromValue(m_inputs), QVariant::fromValue(m_nomenclature),
                           QVariant::fromValue(m_host));
}

void HostSession::run(Operation operation, const HostContext& context)
{
    m_component.put_Interno_Externo(context.interno);
    m_component.put_ADUANA(context.customs);
    m_component.put_IdSUB(context.subitem.isEmpty() ? u"0"_s : context.subitem);
    switch (operation) {
    case Operation::PickProduct:
        m_component.Mostrar();
        break;
    case Operation::Import:
        m_component.Importar();
        break;
    case Operation::Declarations:
        m_component.MostrarDIT();
        break;
    case Operation::SubitemInputs:
        m_component.VerINSxSBT();
        break;
    }
}

PickedProduct HostSession::product() const
{
    return {m_component.get_OK(),     m_component.get_CATNRO(), m_component.get_PRDNRO(),
            m_component.get_PRDDES(), m_component.get_PRDNCM(), m_component.get_PRDPAI(),
            m_component.get_PRDPRE(), m_component.get_PRDSUF(), m_component.get_PRDUNI()};
}

oVELDRA::ConexionDB& HostSession::database(Database database) const
{
    switch (database) {
    case Database::Inputs:
        return *m_inputs;
    case Database::Nomenclature:
        return *m_nomenclature;
    case Database::Host:
        break;
    }
    return *m_host;
}

} // namespace tornel
