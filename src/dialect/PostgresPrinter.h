#pragma once

#include <dialect/Plan.h>

namespace oVELDRA::dialect {

/// PostgreSQL's words. A database needs setUp() before its tables:
///
/// - function `oveldra_wait`, a trigger of each table of createTable(): what writes waits for a write scope of another
///   connection to end, which holds the lock of lockKey() alone;
/// - collation `oveldra`: Spanish alphabetical order by ICU, letters of both cases alike;
/// - domain `oveldra_yes_no`: what tells a yes/no column from one that keeps a small integer;
/// - in each table of createTable() the column `rowMark`, which keeps the order of the rows and that `select *` does
///   not show. Tables that somebody else made are read in the order of their places on disk.
///
/// Texts are equal when they are after their trailing blanks are off and ICU has put them into lower case; unique and
/// other indexes stand on that form. What has no words here (the dialect's functions in a condition, say) is worked out
/// on this side (see WorkedHere).
class PostgresPrinter final : public EnginePrinter
{
public:
    static constexpr const char* rowMark = "\"oveldra_row\"";
    static constexpr const char* yesNoDomain = "oveldra_yes_no";
    /// The mark of the rows of a table without that column.
    static constexpr const char* placeMark = "ctid";

    /// The key of the lock of a schema, whose name is the value of that SQL expression.
    [[nodiscard]] static QByteArray lockKey(const char* schema);

    void print(Plan& plan) const override;
    [[nodiscard]] QByteArray duplicateKeys(const Table& /*table*/) const override { return {}; }
    [[nodiscard]] QByteArray scan(const Table& table, const TableScan& scan) const override;
    [[nodiscard]] QByteArray insertRows(const Table& table, const std::vector<int>& columns, int rows) const override;
    [[nodiscard]] std::vector<QByteArray> setUp() const override;
    [[nodiscard]] std::vector<QByteArray> createTable(const Table& table,
                                                      const std::vector<std::vector<int>>& indexes) const override;
};

} // namespace oVELDRA::dialect
