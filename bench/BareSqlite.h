#pragma once

#include "Statements.h"

#include <oVELDRA/ConexionDB.h>

#include <store/StoreConnection.h>
#include <store/sqlite/SqliteEngine.h>

#include <cstdio>
#include <cstdlib>
#include <string>

/// The limit's side: SQLite's own interface on the store's connections, so that both run with the same settings.
namespace bench {

inline sqlite3* handleOf(oVELDRA::ConexionDB& db)
{
    auto& stored = dynamic_cast<oVELDRA::store::StoreConnection&>(db);
    return dynamic_cast<oVELDRA::store::SqliteEngine&>(stored.engine()).handle();
}

inline oVELDRA::store::SqliteStatementHandle prepare(sqlite3* database, const char* sql)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(database, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "%s\n", sqlite3_errmsg(database));
        std::exit(2);
    }
    return oVELDRA::store::SqliteStatementHandle(statement);
}

/// The text must outlive the statement's run.
inline void bindText(sqlite3_stmt* statement, int place, const std::string& text)
{
    sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

/// Steps through a query and reads its fields, each as what it is. The sum of what it found keeps the reading alive.
inline double readRows(sqlite3_stmt* statement)
{
    double sum = 0;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < columns; ++column) {
            switch (sqlite3_column_type(statement, column)) {
            case SQLITE_TEXT:
                sum += sqlite3_column_text(statement, column)[0];
                break;
            case SQLITE_INTEGER:
                sum += static_cast<double>(sqlite3_column_int64(statement, column));
                break;
            default:
                sum += sqlite3_column_double(statement, column);
            }
        }
    }
    sqlite3_reset(statement);
    return sum;
}

/// An article as a row of INS; `statement` is prepared from insertArticle.
struct Article
{
    std::string declaration;
    std::string code;
    std::string unit;
    double quantity = 0;
    double price = 0;
    std::string position;
    int item = 0;
    int subitem = 0;
};

inline constexpr const char* insertArticle =
    "INSERT INTO INS (INTDCL,ARTNRO,ARTUNI,ARTCAT,ARTPRE,ARTDSC,ARTNCM,ARTITM,ARTSBT) VALUES "
    "(?1,?2,?3,?4,?5,?6,?7,?8,?9)";

inline void insert(sqlite3_stmt* statement, const Article& article)
{
    bindText(statement, 1, article.declaration);
    bindText(statement, 2, article.code);
    bindText(statement, 3, article.unit);
    sqlite3_bind_double(statement, 4, article.quantity);
    sqlite3_bind_double(statement, 5, article.price);
    sqlite3_bind_double(statement, 6, article.quantity);
    bindText(statement, 7, article.position);
    sqlite3_bind_int(statement, 8, article.item);
    sqlite3_bind_int(statement, 9, article.subitem);
    sqlite3_step(statement);
    sqlite3_reset(statement);
}

} // namespace bench
