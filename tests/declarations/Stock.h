#pragma once

#include "declarations/StoredDeclaration.h"

#include <store/StoreConnection.h>
#include <store/sqlite/SqliteEngine.h>

#include <QStringList>

namespace oVELDRA::declarations {

using Connection = std::shared_ptr<ConexionDB>;

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

inline store::SqliteEngine& engineOf(ConexionDB& connection)
{
    return dynamic_cast<store::SqliteEngine&>(dynamic_cast<store::StoreConnection&>(connection).engine());
}

/// Whether the database file is in order.
inline bool isWhole(ConexionDB& connection)
{
    store::RecordData check(std::make_shared<store::ColumnKinds>(1, dialect::ColumnKind::Text));
    engineOf(connection).prepare("PRAGMA integrity_check")->query({}, check);
    return check.rows() == 1 && check.variant(0, 0).toString() == QLatin1String("ok");
}

/// Makes every commit of a connection fail for as long as it lives.
class FailingCommits
{
public:
    explicit FailingCommits(ConexionDB& connection) : m_database(engineOf(connection).handle())
    {
        sqlite3_commit_hook(
            m_database, [](void*) { return 1; }, nullptr);
    }
    FailingCommits(const FailingCommits&) = delete;
    FailingCommits& operator=(const FailingCommits&) = delete;
    ~FailingCommits() { sqlite3_commit_hook(m_database, nullptr, nullptr); }

private:
    sqlite3* m_database;
};

} // namespace oVELDRA::declarations
