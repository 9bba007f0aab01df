#include "ConnectionHandle.h"
#include "HostConexion.h"
#include "LastFailure.h"
#include "Variants.h"

#include <oVELDRA/Store.h>
#include <oVELDRA/cloVELDRAMain.h>
#include <oVELDRA/oveldra.h>

#include <core/Application.h>
#include <core/MemberTable.h>

#include <QCoreApplication>
#include <QThread>

#include <algorithm>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using namespace oVELDRA;
using namespace oVELDRA::cinterface;

struct oveldra_object
{
    cloVELDRAMain object;
};

namespace {

constexpr int WrongArgument = 5;
constexpr int OutOfRange = 9;
constexpr int NoObject = 91;

/// What a handle points to; RuntimeError 91 for a null pointer.
template <typename Handle>
Handle& required(Handle* handle)
{
    if (handle == nullptr) {
        throw RuntimeError(NoObject);
    }
    return *handle;
}

/// What a pointer of the caller's points to; RuntimeError 5 for a null pointer.
template <typename Value>
Value& given(Value* pointer)
{
    if (pointer == nullptr) {
        throw RuntimeError(WrongArgument);
    }
    return *pointer;
}

/// Puts what `make` gives where the caller wants it. Nothing is made, and nothing happens, when that is nowhere.
template <typename Answer, typename Make>
int32_t answer(Answer* where, Make make) noexcept
{
    return guarded([=] {
        Answer& place = given(where);
        place = make();
    });
}

/// A handle for what `connect` gives. Connections need no windows, but live on the same thread.
template <typename Connect>
oveldra_connection* newConnection(Connect connect)
{
    if (QCoreApplication::instance() == nullptr) {
        core::ensureApplication();
    }
    core::requireUiThread();
    return new oveldra_connection{connect()};
}

/// The connection behind a handle.
ConexionDB& connectionOf(oveldra_connection* connection)
{
    core::requireUiThread();
    return *required(connection).connection;
}

/// Ends what a handle owns on the thread that it belongs to: a language with a garbage collector ends things anywhere.
template <typename Handle>
void releaseOnItsThread(Handle* handle)
{
    auto* application = QCoreApplication::instance();
    if (application != nullptr && application->thread() != QThread::currentThread()) {
        QMetaObject::invokeMethod(
            application, [handle] { delete handle; }, Qt::QueuedConnection);
        return;
    }
    delete handle;
}

/// The rows behind a handle.
Recordset& recordsOf(const oveldra_recordset* recordset)
{
    core::requireUiThread();
    return *required(recordset).records;
}

Access accessFrom(int32_t access)
{
    switch (access) {
    case OVELDRA_READ_WRITE:
        return Access::ReadWrite;
    case OVELDRA_READ_ONLY:
        return Access::ReadOnly;
    default:
        throw RuntimeError(WrongArgument);
    }
}

Database databaseFrom(int32_t database)
{
    switch (database) {
    case OVELDRA_INPUTS:
        return Database::Inputs;
    case OVELDRA_NOMENCLATURE:
        return Database::Nomenclature;
    case OVELDRA_HOST:
        return Database::Host;
    default:
        throw RuntimeError(WrongArgument);
    }
}

/// A member by name: the one way in, also for the functions that are named after a member.
QVariant invoke(oveldra_object* object, const char* name, MemberKind kind, const QVariantList& arguments = {})
{
    return required(object).object.invoke(textFrom(name), kind, arguments);
}

int32_t getText(oveldra_object* object, const char* name, char** text) noexcept
{
    return answer(text, [=] { return newText(invoke(object, name, MemberKind::Get).toString()); });
}

int32_t putText(oveldra_object* object, const char* name, const char* text) noexcept
{
    return guarded([=] { invoke(object, name, MemberKind::Put, {textFrom(text)}); });
}

int32_t run(oveldra_object* object, const char* name) noexcept
{
    return guarded([=] { invoke(object, name, MemberKind::Call); });
}

int32_t kindOf(MemberKind kind)
{
    switch (kind) {
    case MemberKind::Get:
        return OVELDRA_GET;
    case MemberKind::Put:
        return OVELDRA_PUT;
    case MemberKind::Call:
        break;
    }
    return OVELDRA_CALL;
}

/// A connection as an argument; a null pointer is Null.
QVariant connectionArgument(const oveldra_connection* connection)
{
    return connection != nullptr ? QVariant::fromValue(connection->connection) : QVariant::fromValue(nullptr);
}

} // namespace

int32_t oveldra_interface(void)
{
    return OVELDRA_INTERFACE;
}

const char* oveldra_version(void)
{
    return OVELDRA_VERSION;
}

int32_t oveldra_error_number(void)
{
    return lastFailure().number;
}

const char* oveldra_error_description(void)
{
    return lastFailure().description.constData();
}

const char* oveldra_error_source(void)
{
    return lastFailure().source.constData();
}

int32_t oveldra_error_native(void)
{
    return lastFailure().native;
}

int32_t oveldra_fail(int32_t number, int32_t native, const char* description)
{
    return guarded([=] {
        const int shown = number != 0 ? number : WrongArgument;
        const QString text =
            description != nullptr ? QString::fromUtf8(description) : RuntimeError(shown).description();
        throw RuntimeError(shown, text, {}, native);
    });
}

void oveldra_variant_clear(oveldra_variant* result)
{
    if (result == nullptr) {
        return;
    }
    if (result->kind == OVELDRA_TEXT || result->kind == OVELDRA_DATE) {
        delete[] result->value.text;
    }
    *result = {};
}

void oveldra_text_release(const char* text)
{
    delete[] text;
}

int32_t oveldra_connection_open(const char* url, int32_t access, oveldra_connection** connection)
{
    return answer(connection,
                  [=] { return newConnection([=] { return connectStore(textFrom(url), accessFrom(access)); }); });
}

int32_t oveldra_connection_create(const char* url, int32_t database, oveldra_connection** connection)
{
    return answer(connection,
                  [=] { return newConnection([=] { return createStore(textFrom(url), databaseFrom(database)); }); });
}

int32_t oveldra_connection_from_host(const oveldra_host_connection* functions, void* host,
                                     oveldra_connection** connection)
{
    return answer(connection, [=] { return newConnection([=] { return connectHost(functions, host); }); });
}

void oveldra_connection_release(oveldra_connection* connection)
{
    releaseOnItsThread(connection);
}

int32_t oveldra_execute(oveldra_connection* connection, const char* sql, int64_t* affected)
{
    return answer(affected, [=] {
        ConexionDB& db = connectionOf(connection);
        db.setSql(textFrom(sql));
        return db.execute();
    });
}

int32_t oveldra_open(oveldra_connection* connection, const char* sql, oveldra_recordset** recordset)
{
    return answer(recordset, [=] {
        ConexionDB& db = connectionOf(connection);
        db.setSql(textFrom(sql));
        bool ok = false;
        auto records = db.openRecordset(ok);
        if (!ok) {
            throw RuntimeError(db.lastError());
        }
        return new oveldra_recordset{std::move(records)};
    });
}

int32_t oveldra_at_eof(const oveldra_recordset* recordset, int32_t* eof)
{
    return answer(eof, [=] { return recordsOf(recordset).atEof() ? 1 : 0; });
}

int32_t oveldra_move_next(oveldra_recordset* recordset)
{
    return guarded([=] { recordsOf(recordset).moveNext(); });
}

int32_t oveldra_move_first(oveldra_recordset* recordset)
{
    return guarded([=] { recordsOf(recordset).moveFirst(); });
}

int32_t oveldra_record_count(const oveldra_recordset* recordset, int64_t* count)
{
    return answer(count, [=] { return recordsOf(recordset).recordCount(); });
}

int32_t oveldra_value(const oveldra_recordset* recordset, const char* field, oveldra_variant* value)
{
    return answer(value, [=] { return variantFrom(recordsOf(recordset).value(textFrom(field)), OVELDRA_NULL); });
}

void oveldra_recordset_release(oveldra_recordset* recordset)
{
    releaseOnItsThread(recordset);
}

int32_t oveldra_create(oveldra_object** object)
{
    return answer(object, [=] { return new oveldra_object; });
}

void oveldra_release(oveldra_object* object)
{
    delete object; // which knows its thread by itself
}

int32_t oveldra_get_OK(oveldra_object* object, int32_t* value)
{
    return answer(value, [=] { return invoke(object, "OK", MemberKind::Get).toBool() ? 1 : 0; });
}

int32_t oveldra_get_CATNRO(oveldra_object* object, char** text)
{
    return getText(object, "CATNRO", text);
}

int32_t oveldra_get_PRDDES(oveldra_object* object, char** text)
{
    return getText(object, "PRDDES", text);
}

int32_t oveldra_get_PRDNCM(oveldra_object* object, char** text)
{
    return getText(object, "PRDNCM", text);
}

int32_t oveldra_get_PRDPAI(oveldra_object* object, char** text)
{
    return getText(object, "PRDPAI", text);
}

int32_t oveldra_get_PRDPRE(oveldra_object* object, double* value)
{
    return answer(value, [=] { return invoke(object, "PRDPRE", MemberKind::Get).toDouble(); });
}

int32_t oveldra_get_PRDSUF(oveldra_object* object, char** text)
{
    return getText(object, "PRDSUF", text);
}

int32_t oveldra_get_PRDUNI(oveldra_object* object, char** text)
{
    return getText(object, "PRDUNI", text);
}

int32_t oveldra_put_BaseNcm(oveldra_object* object, const char* path)
{
    return putText(object, "BaseNcm", path);
}

int32_t oveldra_put_BaseTornel(oveldra_object* object, const char* path)
{
    return putText(object, "BaseTornel", path);
}

int32_t oveldra_put_BaseInsumos(oveldra_object* object, const char* path)
{
    return putText(object, "BaseInsumos", path);
}

int32_t oveldra_put_Interno_Externo(oveldra_object* object, const char* interno)
{
    return putText(object, "Interno_Externo", interno);
}

int32_t oveldra_ConectarDB(oveldra_object* object, oveldra_connection* po_DBINS, oveldra_connection* po_DBNCM,
                           oveldra_connection* po_DBTOR, int32_t* connected)
{
    return answer(connected, [=] {
        const QVariantList connections{connectionArgument(po_DBINS), connectionArgument(po_DBNCM),
                                       connectionArgument(po_DBTOR)};
        return invoke(object, "ConectarDB", MemberKind::Call, connections).toBool() ? 1 : 0;
    });
}

int32_t oveldra_Mostrar(oveldra_object* object)
{
    return run(object, "Mostrar");
}

int32_t oveldra_Importar(oveldra_object* object)
{
    return run(object, "Importar");
}

int32_t oveldra_MostrarDIT(oveldra_object* object)
{
    return run(object, "MostrarDIT");
}

int32_t oveldra_get_PRDNRO(oveldra_object* object, char** text)
{
    return getText(object, "PRDNRO", text);
}

int32_t oveldra_put_ADUANA(oveldra_object* object, const char* aduana)
{
    return putText(object, "ADUANA", aduana);
}

int32_t oveldra_VerINSxSBT(oveldra_object* object)
{
    return run(object, "VerINSxSBT");
}

int32_t oveldra_put_IdSUB(oveldra_object* object, const char* id)
{
    return putText(object, "IdSUB", id);
}

int32_t oveldra_member_at(int32_t slot, oveldra_member* member)
{
    return answer(member, [=] {
        const auto table = core::memberTable();
        if (slot < 1 || static_cast<std::size_t>(slot) > table.size()) {
            throw RuntimeError(OutOfRange);
        }
        const core::Member& found = table[static_cast<std::size_t>(slot) - 1];
        oveldra_member result{};
        result.name = found.name.data(); // of a literal, which ends with a null character
        result.kind = kindOf(found.kind);
        result.parameters = static_cast<int32_t>(found.parameters.size());
        result.required = static_cast<int32_t>(std::ranges::count(found.parameters, false, &core::Parameter::optional));
        return result;
    });
}

int32_t oveldra_get(oveldra_object* object, const char* name, oveldra_variant* result)
{
    return answer(result, [=] { return variantFrom(invoke(object, name, MemberKind::Get), OVELDRA_OMITTED); });
}

int32_t oveldra_put(oveldra_object* object, const char* name, const oveldra_variant* value)
{
    return guarded([=] { invoke(object, name, MemberKind::Put, {argumentFrom(given(value))}); });
}

int32_t oveldra_call(oveldra_object* object, const char* name, const oveldra_variant* arguments, size_t count,
                     oveldra_variant* result)
{
    return guarded([=] {
        QVariantList list;
        for (size_t i = 0; i < count; ++i) {
            list.append(argumentFrom((&given(arguments))[i]));
        }
        const QVariant answer = invoke(object, name, MemberKind::Call, list);
        if (result != nullptr) {
            *result = variantFrom(answer, OVELDRA_OMITTED);
        }
    });
}
