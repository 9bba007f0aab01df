#include "BurstObject.h"
#include "RecordsetObject.h"

#include <oVELDRA/Store.h>

#include <store/DatabaseName.h>

#include <array>
#include <automation/Object.h>
#include <automation/Texts.h>
#include <limits>
#include <memory>
#include <oVELDRAStore.h>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::hoststore {

namespace {

using automation::newText;
using automation::textFrom;

constexpr int Overflow = 6;
constexpr int NotConnected = 3709;

/// Unconnected at first: whatever is asked of it then is error 3709.
class ConexionObject final : public automation::Object<::_ConexionDB>
{
public:
    HRESULT STDMETHODCALLTYPE Open(BSTR url, VARIANT_BOOL readOnly) override
    {
        return guarded([&] {
            m_connection =
                connectStore(textFrom(url), readOnly != VARIANT_FALSE ? Access::ReadOnly : Access::ReadWrite);
        });
    }
    HRESULT STDMETHODCALLTYPE Create(BSTR url, BSTR database) override
    {
        return guarded([&] { m_connection = createStore(textFrom(url), store::databaseNamed(textFrom(database))); });
    }
    HRESULT STDMETHODCALLTYPE Close() override
    {
        return guarded([&] { m_connection.reset(); });
    }
    HRESULT STDMETHODCALLTYPE SetSql(BSTR text) override
    {
        return guarded([&] { m_text = textFrom(text); });
    }
    HRESULT STDMETHODCALLTYPE OpenRecordset(VARIANT* ok, ::_Recordset** records) override
    {
        return answer(records, [&]() -> ::_Recordset* {
            m_lastError.reset();
            std::unique_ptr<Recordset> found;
            try {
                ConexionDB& db = connection();
                db.setSql(m_text);
                bool opened = false;
                found = db.openRecordset(opened);
                if (!opened) {
                    m_lastError = db.lastError();
                }
            } catch (const RuntimeError& error) {
                m_lastError = error;
            }
            answerSuccess(ok, found != nullptr);
            return found ? new RecordsetObject(std::move(found)) : nullptr;
        });
    }
    HRESULT STDMETHODCALLTYPE Execute(LONG* affected) override
    {
        return answer(affected, [&] {
            ConexionDB& db = connection();
            db.setSql(m_text);
            const qint64 count = db.execute();
            if (count > std::numeric_limits<LONG>::max()) {
                throw RuntimeError(Overflow);
            }
            return static_cast<LONG>(count);
        });
    }
    HRESULT STDMETHODCALLTYPE BeginBurst(::_WriteBurst** burst) override
    {
        return answer(burst, [&]() -> ::_WriteBurst* {
            auto scope = connection().beginBurst();
            return new BurstObject(m_connection, std::move(scope));
        });
    }
    HRESULT STDMETHODCALLTYPE get_LastErrorNumber(LONG* value) override
    {
        return answer(value, [&] { return m_lastError ? static_cast<LONG>(m_lastError->number()) : 0; });
    }
    HRESULT STDMETHODCALLTYPE get_LastErrorDescription(BSTR* value) override
    {
        return answer(value, [&] { return newText(m_lastError ? m_lastError->description() : QString()); });
    }

private:
    [[nodiscard]] ConexionDB& connection() const
    {
        if (!m_connection) {
            throw RuntimeError(NotConnected);
        }
        return *m_connection;
    }

    /// An argument that was left out comes as an error value and stays what it is.
    static void answerSuccess(VARIANT* ok, bool success)
    {
        if (ok == nullptr || ok->vt == VT_ERROR) {
            return;
        }
        VariantClear(ok);
        ok->vt = VT_BOOL;
        ok->boolVal = success ? VARIANT_TRUE : VARIANT_FALSE;
    }

    std::shared_ptr<ConexionDB> m_connection;
    QString m_text;
    std::optional<RuntimeError> m_lastError; // of the last OpenRecordset() that gave nothing
};

IUnknown* makeObject()
{
    return static_cast<::_ConexionDB*>(new ConexionObject);
}

const std::array classes{automation::CreatableClass{__uuidof(::ConexionDB), L"oVELDRAStore.ConexionDB",
                                                    L"Conexión con una base de datos de oVELDRA", &makeObject}};
const std::array interfaces{automation::PublicInterface{__uuidof(::_ConexionDB), L"_ConexionDB"},
                            automation::PublicInterface{__uuidof(::_Recordset), L"_Recordset"},
                            automation::PublicInterface{__uuidof(::_WriteBurst), L"_WriteBurst"}};

bool nothingToEnd()
{
    return true;
}

} // namespace

} // namespace oVELDRA::hoststore

namespace oVELDRA::automation {

const Library& library()
{
    using namespace hoststore;
    static const Library description{LIBID_oVELDRAStore, L"oVELDRAStore", classes, interfaces, &nothingToEnd};
    return description;
}

} // namespace oVELDRA::automation
