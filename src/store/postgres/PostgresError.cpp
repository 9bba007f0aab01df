#include "PostgresError.h"

#include "Libpq.h"

#include <store/StoreError.h>

#include <algorithm>
#include <array>

namespace oVELDRA::store {

using namespace Qt::StringLiterals;

namespace {

struct State
{
    QStringView beginning;
    Trouble trouble;
};

// SQLSTATE codes and classes, the longer ones first.
constexpr std::array states = {
    State{u"23505", Trouble::DuplicateKey}, State{u"25006", Trouble::ReadOnly},   State{u"53100", Trouble::DiskFull},
    State{u"55P03", Trouble::Locked},       State{u"40P01", Trouble::Locked},     State{u"40001", Trouble::Locked},
    State{u"42501", Trouble::NoPermission}, State{u"3D000", Trouble::NoDatabase}, State{u"XX001", Trouble::Damaged},
    State{u"XX002", Trouble::Damaged},      State{u"28", Trouble::NoPermission},  State{u"58", Trouble::Broken},
};

QString fieldOf(const pg_result* result, int field)
{
    return QString::fromUtf8(libpq().resultErrorField(result, field));
}

} // namespace

QString firstLine(const QString& words)
{
    return words.section(u'\n', 0, 0).trimmed();
}

bool endsConnection(const pg_result* result)
{
    const QString state = fieldOf(result, PG_DIAG_SQLSTATE);
    return state.isEmpty() || state.startsWith(u"57P") || state.startsWith(u"08");
}

RuntimeError postgresError(const pg_result* result)
{
    const QString state = fieldOf(result, PG_DIAG_SQLSTATE);
    const QString words = firstLine(fieldOf(result, PG_DIAG_MESSAGE_PRIMARY));
    if (state == u"22003") {
        return RuntimeError(6); // a number out of its range
    }
    if (state == u"53200") {
        return RuntimeError(7);
    }
    const auto* const found = std::find_if(states.begin(), states.end(),
                                           [&state](const State& known) { return state.startsWith(known.beginning); });
    if (found == states.end()) {
        return storeError(Trouble::Other, QString(state + u": " + words));
    }
    if (found->trouble == Trouble::DuplicateKey) {
        return storeError(found->trouble, fieldOf(result, PG_DIAG_TABLE_NAME));
    }
    const bool selfExplaining = found->trouble == Trouble::ReadOnly || found->trouble == Trouble::Locked;
    return storeError(found->trouble, selfExplaining ? QString() : words);
}

RuntimeError serverGone(const QString& detail)
{
    return storeError(Trouble::ServerGone, detail);
}

} // namespace oVELDRA::store
