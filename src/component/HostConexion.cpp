#include "HostConexion.h"

#include "LastFailure.h"
#include "Variants.h"

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace oVELDRA::cinterface {

namespace {

/// The host's functions with what they work on; released with the last of a connection, its recordsets and its scopes.
struct Host
{
    Host(const oveldra_host_connection& given, void* owner) : functions(given), object(owner) {}
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;
    ~Host()
    {
        if (functions.release != nullptr) {
            functions.release(object);
        }
    }

    oveldra_host_connection functions;
    void* object;
};

/// Calls a function of the host and throws what it says went wrong.
template <typename Function, typename... Arguments>
void call(Function function, Arguments... arguments)
{
    const quint64 failuresBefore = lastFailure().count;
    const qint32 number = function(arguments...);
    if (number == 0) {
        return;
    }
    const LastFailure& failure = lastFailure();
    if (failure.count != failuresBefore && failure.number == number) {
        throw RuntimeError(number, QString::fromUtf8(failure.description), QString::fromUtf8(failure.source),
                           failure.native);
    }
    throw RuntimeError(number); // the host said no more than the number
}

class HostRecordset final : public Recordset
{
public:
    HostRecordset(std::shared_ptr<const Host> host, void* records) : m_host(std::move(host)), m_records(records) {}
    HostRecordset(const HostRecordset&) = delete;
    HostRecordset& operator=(const HostRecordset&) = delete;
    ~HostRecordset() override { functions().release_recordset(m_records); }

    [[nodiscard]] bool atEof() const override
    {
        int32_t eof = 0;
        call(functions().at_eof, m_records, &eof);
        return eof != 0;
    }
    void moveNext() override { call(functions().move_next, m_records); }
    void moveFirst() override { call(functions().move_first, m_records); }
    [[nodiscard]] qsizetype recordCount() const override
    {
        int64_t count = 0;
        call(functions().record_count, m_records, &count);
        return static_cast<qsizetype>(count);
    }
    [[nodiscard]] QVariant value(QStringView field) const override
    {
        oveldra_variant answer{};
        call(functions().value, m_records, field.toUtf8().constData(), &answer);
        return fieldFrom(answer);
    }

private:
    [[nodiscard]] const oveldra_host_connection& functions() const { return m_host->functions; }

    std::shared_ptr<const Host> m_host;
    void* m_records;
};

class HostBurst final : public WriteBurst
{
public:
    explicit HostBurst(std::shared_ptr<const Host> host) : m_host(std::move(host))
    {
        call(m_host->functions.begin_burst, m_host->object, &m_burst);
    }
    HostBurst(const HostBurst&) = delete;
    HostBurst& operator=(const HostBurst&) = delete;
    ~HostBurst() override { m_host->functions.end_burst(m_burst); }

    void commit() override
    {
        if (!std::exchange(m_committed, true)) {
            call(m_host->functions.commit_burst, m_burst);
        }
    }

private:
    std::shared_ptr<const Host> m_host;
    void* m_burst = nullptr;
    bool m_committed = false;
};

class HostConexion final : public ConexionDB
{
public:
    explicit HostConexion(std::shared_ptr<const Host> host) : m_host(std::move(host)) {}

    void setSql(const QString& text) override
    {
        call(m_host->functions.set_sql, m_host->object, text.toUtf8().constData());
    }
    [[nodiscard]] std::unique_ptr<Recordset> openRecordset(bool& ok) override
    {
        void* records = nullptr;
        try {
            call(m_host->functions.open_recordset, m_host->object, &records);
        } catch (const RuntimeError& error) {
            m_lastError = error;
            ok = false;
            return nullptr;
        }
        ok = true;
        return std::make_unique<HostRecordset>(m_host, records);
    }
    qint64 execute() override
    {
        int64_t affected = 0;
        call(m_host->functions.execute, m_host->object, &affected);
        return affected;
    }
    [[nodiscard]] RuntimeError lastError() const override { return m_lastError.value_or(ConexionDB::lastError()); }
    [[nodiscard]] std::unique_ptr<WriteBurst> beginBurst() override
    {
        if (m_host->functions.begin_burst == nullptr) {
            return ConexionDB::beginBurst();
        }
        return std::make_unique<HostBurst>(m_host);
    }

private:
    std::shared_ptr<const Host> m_host;
    std::optional<RuntimeError> m_lastError;
};

bool isComplete(const oveldra_host_connection& functions)
{
    const auto& f = functions;
    const bool noBursts = f.begin_burst == nullptr && f.commit_burst == nullptr && f.end_burst == nullptr;
    const bool bursts = f.begin_burst != nullptr && f.commit_burst != nullptr && f.end_burst != nullptr;
    return f.set_sql != nullptr && f.open_recordset != nullptr && f.execute != nullptr && f.at_eof != nullptr &&
           f.move_next != nullptr && f.move_first != nullptr && f.record_count != nullptr && f.value != nullptr &&
           f.release_recordset != nullptr && (noBursts || bursts);
}

} // namespace

std::shared_ptr<ConexionDB> connectHost(const oveldra_host_connection* functions, void* host)
{
    // A table of a later version is longer; what this version knows stands at its beginning.
    if (functions == nullptr || functions->size < sizeof(oveldra_host_connection) || !isComplete(*functions)) {
        throw RuntimeError(5, u"A la tabla de funciones de la conexión le falta alguna."_s, u"oVELDRA"_s);
    }
    return std::make_shared<HostConexion>(std::make_shared<const Host>(*functions, host));
}

} // namespace oVELDRA::cinterface
