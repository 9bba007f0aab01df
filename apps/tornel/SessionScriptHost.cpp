#include "SessionScriptHost.h"

#include "HostLists.h"

#include <QDate>
#include <QLocale>
#include <QVariant>

using namespace Qt::StringLiterals;
using oVELDRA::Database;

namespace tornel {

namespace {

Database storeDatabase(ScriptDatabase database)
{
    switch (database) {
    case ScriptDatabase::Inputs:
        return Database::Inputs;
    case ScriptDatabase::Nomenclature:
        return Database::Nomenclature;
    case ScriptDatabase::Host:
        break;
    }
    return Database::Host;
}

/// Numbers as the user writes them, dates as day/month/year, Null as nothing.
QString fieldText(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double: {
        QLocale locale;
        locale.setNumberOptions(QLocale::OmitGroupSeparator);
        return locale.toString(value.toDouble(), 'g', 15);
    }
    case QMetaType::QDate:
        return value.toDate().toString(u"dd/MM/yyyy"_s);
    default:
        return value.toString();
    }
}

} // namespace

ScriptAnswer SessionScriptHost::ask(ScriptDatabase database, const QString& statement, const QString& column)
{
    try {
        const auto rows = lists::open(m_session.database(storeDatabase(database)), statement);
        ScriptAnswer answer;
        answer.rows = rows->recordCount();
        if (!column.isEmpty() && !rows->atEof()) {
            answer.value = fieldText(rows->value(column));
        }
        return answer;
    } catch (const oVELDRA::RuntimeError& error) {
        return {u"%1 - %2"_s.arg(QString::number(error.number()), error.description()), 0, {}};
    }
}

} // namespace tornel
