#include "AdoConexion.h"

#include "AutomationRecordset.h"

#include <QScopeGuard>

#include <utility>

namespace oVELDRA::automation {

namespace {

// Of ADO: CursorLocationEnum, CommandTypeEnum and ExecuteOptionEnum, ObjectStateEnum.
constexpr qint32 useClient = 3;
constexpr qint32 commandText = 1;
constexpr qint32 executeNoRecords = 128;
constexpr qint64 stateClosed = 0;

} // namespace

AdoConexion::AdoConexion(LateObject object) : m_object(std::move(object)) {}

void AdoConexion::setSql(const QString& text)
{
    m_text = text;
}

std::unique_ptr<Recordset> AdoConexion::openRecordset(bool& ok)
{
    ok = false;
    m_lastError.reset();
    try {
        Variant before(static_cast<qint32>(m_object.call(L"CursorLocation").toInteger()));
        Variant client(useClient);
        m_object.put(L"CursorLocation", client);
        const auto restore = qScopeGuard([this, &before] {
            try {
                m_object.put(L"CursorLocation", before);
            } catch (const RuntimeError&) {
                // The statement's own error is the one to tell; a connection that broke refuses this, too.
            }
        });
        Variant text{QStringView(m_text)};
        Variant affected;
        Variant affectedByReference(*affected.place());
        Variant options(commandText);
        auto records = m_object.call(L"Execute", {&text, &affectedByReference, &options}).object();
        if (!records) {
            return nullptr;
        }
        LateObject recordset(std::move(records));
        // A statement that gives no rows leaves a recordset that is not open.
        if (recordset.knows({L"State"}) && recordset.call(L"State").toInteger() == stateClosed) {
            return nullptr;
        }
        ok = true;
        return std::make_unique<AutomationRecordset>(std::move(recordset));
    } catch (const RuntimeError& error) {
        m_lastError = error;
    }
    return nullptr;
}

qint64 AdoConexion::execute()
{
    Variant text{QStringView(m_text)};
    Variant affected;
    Variant affectedByReference(*affected.place());
    Variant options(commandText | executeNoRecords);
    m_object.call(L"Execute", {&text, &affectedByReference, &options});
    return affected.toInteger();
}

RuntimeError AdoConexion::lastError() const
{
    return m_lastError.value_or(ConexionDB::lastError());
}

} // namespace oVELDRA::automation
