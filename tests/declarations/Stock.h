#pragma once

#include "declarations/StoredDeclaration.h"
#include "doubles/TestStores.h"

#include <store/Schema.h>
#include <store/StoreConnection.h>
#include <store/sqlite/SqliteEngine.h>

#include <QMap>
#include <QStringList>

namespace oVELDRA::declarations {

using Connection = std::shared_ptr<ConexionDB>;

/// The URL of the program's one database of a schema. Other seats can open it. It is not made anew for each test, which
/// takes a server longer than most tests do: see emptyStore().
inline const QString& sharedUrl(Database schema)
{
    static QMap<Database, QString> urls;
    QString& url = urls[schema];
    if (url.isEmpty()) {
        url = doubles::TestStores::created(schema);
    }
    return url;
}

/// How often a race of processes is run. On the server less often: its seats take three times as long to start, and a
/// seat's end can cut off no write there, only leave a message unsent.
inline int roundsOf(int onFiles)
{
    constexpr int longer = 3;
    return doubles::TestStores::onServer() ? (onFiles + longer - 1) / longer : onFiles;
}

/// Deletes every row, when the seats that write, those killed a moment ago too, have come to their end.
inline void clear(ConexionDB& db, Database schema)
{
    const auto burst = db.beginBurst();
    for (const store::TableSchema& table : store::schemaOf(schema)) {
        run(db, QStringLiteral("delete from ") + table.table.name);
    }
    burst->commit();
}

/// A new connection to the program's one database of a schema, which is empty now.
inline Connection emptyStore(Database schema)
{
    Connection db = connectStore(sharedUrl(schema));
    clear(*db, schema);
    return db;
}

/// A declaration of 5 March 2024 with its articles and discharges, whose codes begin with `mark`.
inline void addToStock(ConexionDB& inputs, const QString& number, const QString& mark, int articles, int discharges)
{
    const auto burst = inputs.beginBurst();
    run(inputs, QStringLiteral("insert into INTINS (INTNRO,INTDCL,INTFOF,INTVEN,INTDES,INTADU,INTCTC,INTIOK) values "
                               "('%1','%2',datevalue('05/03/2024'),datevalue('05/03/2026'),'de %1','073','C-%1',1)")
                    .arg(mark, number));
    for (int article = 1; article <= articles; ++article) {
        run(inputs, QStringLiteral("insert into INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) "
                                   "values ('%1','%2-%3','01','9','2','9','7208.90.00.110H','%3','0')")
                        .arg(number, mark)
                        .arg(article));
    }
    for (int discharge = 1; discharge <= discharges; ++discharge) {
        run(inputs, QStringLiteral("insert into DIP (ARTDCL,ARTNRO,ARTITM,ARTSBT,EXTNOF) values "
                                   "('%1','%2-1','1','0','%2-EC%3')")
                        .arg(number, mark)
                        .arg(discharge));
    }
    burst->commit();
}

/// Every row of the inputs database's declarations (and catalogs, which nothing here may touch), as texts.
inline QStringList content(ConexionDB& inputs)
{
    QStringList result;
    const auto dump = [&](const QString& table, const QStringList& columns) {
        bool ok = false;
        inputs.setSql(QStringLiteral("select * from ") + table);
        const auto rows = inputs.openRecordset(ok);
        for (; ok && !rows->atEof(); rows->moveNext()) {
            QStringList cells{table};
            for (const QString& column : columns) {
                cells << rows->value(column).toString();
            }
            result << cells.join(QLatin1Char('|'));
        }
    };
    const auto names = [](const char* columns) { return QString::fromLatin1(columns).split(QLatin1Char(' ')); };
    dump(QStringLiteral("INTINS"), names("INTNRO INTDCL INTFOF INTVEN INTDES INTADU INTIOK INTCTC"));
    dump(QStringLiteral("INS"), names("INTDCL ARTNRO ARTUNI ARTCAT ARTPRE ARTDSC ARTNCM ARTITM ARTSBT"));
    dump(QStringLiteral("DIP"), names("ARTDCL ARTNRO ARTITM ARTSBT EXTNOF"));
    dump(QStringLiteral("CAT"), names("CATNRO"));
    return result;
}

/// The same when no seat writes any more: a server can still be busy with the last words of one that was killed.
inline QStringList settledContent(ConexionDB& inputs)
{
    const auto burst = inputs.beginBurst();
    QStringList rows = content(inputs);
    burst->commit();
    return rows;
}

inline store::EngineConnection& engineOf(ConexionDB& connection)
{
    return dynamic_cast<store::StoreConnection&>(connection).engine();
}

/// The rows of an engine's own query of one column.
inline QStringList answers(ConexionDB& connection, const QByteArray& query)
{
    store::RecordData data(std::make_shared<store::ColumnKinds>(1, dialect::ColumnKind::Text));
    engineOf(connection).prepare(query)->query({}, data);
    QStringList result;
    for (qsizetype row = 0; row < data.rows(); ++row) {
        result << data.variant(row, 0).toString();
    }
    return result;
}

/// Whether the database is in order below its rows: the whole file, or the server's tables and their indexes.
inline bool isWhole(ConexionDB& connection)
{
    if (!doubles::TestStores::onServer()) {
        return answers(connection, "PRAGMA integrity_check") == QStringList{QStringLiteral("ok")};
    }
    if (answers(connection, "SELECT 1 FROM pg_extension WHERE extname = 'amcheck'").isEmpty()) {
        engineOf(connection).run("CREATE EXTENSION amcheck SCHEMA pg_catalog");
    }
    const QByteArray ours = " WHERE relnamespace = current_schema()::regnamespace AND relkind = ";
    try {
        return !answers(connection, "SELECT bt_index_check(oid, true) FROM pg_class" + ours + "'i'").isEmpty() &&
               answers(connection, "SELECT msg FROM pg_class, verify_heapam(oid)" + ours + "'r'").isEmpty();
    } catch (const RuntimeError&) {
        return false; // the first damaged index is an error of the check
    }
}

/// Answers what `body` answers, run while every commit of a connection fails that writes headers of declarations.
template <typename Body>
QString whileCommitsFail(ConexionDB& connection, const Body& body)
{
    store::EngineConnection& engine = engineOf(connection);
    if (auto* const file = dynamic_cast<store::SqliteEngine*>(&engine)) {
        sqlite3_commit_hook(
            file->handle(), [](void*) { return 1; }, nullptr);
        QString answer = body();
        sqlite3_commit_hook(file->handle(), nullptr, nullptr);
        return answer;
    }
    engine.run("CREATE FUNCTION refuse() RETURNS trigger LANGUAGE plpgsql AS "
               "$$ BEGIN RAISE EXCEPTION 'inyectado'; END $$");
    engine.run("CREATE CONSTRAINT TRIGGER refused AFTER INSERT OR UPDATE OR DELETE ON \"INTINS\" "
               "DEFERRABLE INITIALLY DEFERRED FOR EACH ROW EXECUTE FUNCTION refuse()");
    QString answer = body();
    engine.run("DROP TRIGGER refused ON \"INTINS\"; DROP FUNCTION refuse()");
    return answer;
}

} // namespace oVELDRA::declarations
