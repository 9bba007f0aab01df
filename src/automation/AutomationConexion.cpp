#include "AutomationConexion.h"

#include "AutomationRecordset.h"
#include "Texts.h"

#include <utility>

namespace oVELDRA::automation {

namespace {

class AutomationBurst final : public WriteBurst
{
public:
    explicit AutomationBurst(LateObject object) : m_object(std::move(object)) {}

    void commit() override
    {
        if (!std::exchange(m_committed, true)) {
            m_object.call(L"Commit");
        }
    }

private:
    LateObject m_object;
    bool m_committed = false;
};

} // namespace

AutomationConexion::AutomationConexion(LateObject object) : m_object(std::move(object)) {}

void AutomationConexion::setSql(const QString& text)
{
    m_text = text;
}

void AutomationConexion::sendSql()
{
    // Just before it runs: one object of the host's may stand behind several connections.
    Variant text{QStringView(m_text)};
    m_object.call(L"SetSql", {&text});
}

std::unique_ptr<Recordset> AutomationConexion::openRecordset(bool& ok)
{
    ok = false;
    m_lastError.reset();
    try {
        sendSql();
        Variant success;
        Variant byReference(*success.place());
        const Variant answer = m_object.call(L"OpenRecordset", {&byReference});
        auto records = answer.object();
        if (records && (success.isEmpty() || success.toBool())) {
            ok = true;
            return std::make_unique<AutomationRecordset>(LateObject(std::move(records)));
        }
        m_lastError = reasonOfObject();
    } catch (const RuntimeError& error) {
        m_lastError = error;
    }
    return nullptr;
}

qint64 AutomationConexion::execute()
{
    sendSql();
    return m_object.call(L"Execute").toInteger();
}

RuntimeError AutomationConexion::lastError() const
{
    return m_lastError.value_or(ConexionDB::lastError());
}

std::optional<RuntimeError> AutomationConexion::reasonOfObject()
{
    if (!m_object.knows({L"LastErrorNumber", L"LastErrorDescription"})) {
        return {};
    }
    const auto number = static_cast<int>(m_object.call(L"LastErrorNumber").toInteger());
    if (number == 0) {
        return {};
    }
    const Variant description = m_object.call(L"LastErrorDescription");
    return (*description).vt == VT_BSTR ? RuntimeError(number, textFrom((*description).bstrVal)) : RuntimeError(number);
}

std::unique_ptr<WriteBurst> AutomationConexion::beginBurst()
{
    if (m_object.knows({L"BeginBurst"})) {
        if (auto burst = m_object.call(L"BeginBurst").object()) {
            return std::make_unique<AutomationBurst>(LateObject(std::move(burst)));
        }
    }
    return ConexionDB::beginBurst();
}

} // namespace oVELDRA::automation
