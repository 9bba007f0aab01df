#include "TariffQuery.h"

#include <core/Module1.h>

namespace oVELDRA::nomenclature {

std::unique_ptr<Recordset> queryTariff(core::SharedState& state, const QString& statement)
{
    std::unique_ptr<Recordset> rows;
    if (!core::AbrirRecordset(*state.g_DBNCM, statement, rows) && !rows) {
        throw RuntimeError(state.g_DBNCM->lastError());
    }
    return rows;
}

} // namespace oVELDRA::nomenclature
