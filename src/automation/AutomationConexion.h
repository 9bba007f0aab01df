#pragma once

#include "LateObject.h"

#include <oVELDRA/ConexionDB.h>

#include <optional>

namespace oVELDRA::automation {

/// A host's database-access object.
///
/// `SetSql(text)`, `OpenRecordset(ok)`, which puts True or False into `ok` and answers a recordset or Nothing, and
/// `Execute()`, which answers the number of records affected. A host's language may have no arguments by reference: an
/// `ok` that was left alone counts as True when there is a recordset. Optional: `LastErrorNumber` and
/// `LastErrorDescription`, and `BeginBurst()`, whose object has `Commit` and ends the burst when it is released.
class AutomationConexion final : public ConexionDB
{
public:
    explicit AutomationConexion(LateObject object);

    void setSql(const QString& text) override;
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override;
    qint64 execute() override;
    [[nodiscard]] RuntimeError lastError() const override;
    [[nodiscard]] std::unique_ptr<WriteBurst> beginBurst() override;

private:
    void sendSql();
    [[nodiscard]] std::optional<RuntimeError> reasonOfObject();

    LateObject m_object;
    QString m_text;
    std::optional<RuntimeError> m_lastError;
};

} // namespace oVELDRA::automation
