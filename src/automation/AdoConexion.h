#pragma once

#include "LateObject.h"

#include <oVELDRA/ConexionDB.h>

#include <optional>

namespace oVELDRA::automation {

/// A connection object of ADO that the host opened and owns.
///
/// Queries are opened as client-side cursors, which are static and know their number of records; the host's own
/// CursorLocation is as it was afterwards. Statements run one by one: a transaction on the host's connection would be
/// in the way of its own.
class AdoConexion final : public ConexionDB
{
public:
    explicit AdoConexion(LateObject object);

    void setSql(const QString& text) override;
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override;
    qint64 execute() override;
    [[nodiscard]] RuntimeError lastError() const override;

private:
    LateObject m_object;
    QString m_text;
    std::optional<RuntimeError> m_lastError;
};

} // namespace oVELDRA::automation
