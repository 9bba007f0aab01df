#pragma once

#include <dialect/Plan.h>

namespace oVELDRA::dialect {

/// SQLite's words. Besides SQLite's own it uses these, which the connection must define:
///
/// - function `oveldra_fold(text)`: dialect::folded();
/// - function `oveldra_like(text, pattern)`: LikePattern;
/// - function `oveldra_value(computation, column…)`: the value of a Computation, bound as a pointer of type
///   `computationPointerType`;
/// - collation `OVELDRA`: spanishOrder().
///
/// Indexes stand on `rtrim(column) COLLATE NOCASE`, so that other programs can read and write the file too: texts of
/// ASCII letters compare through them.
class SqlitePrinter final : public EnginePrinter
{
public:
    static constexpr const char* computationPointerType = "oVELDRA::Computation";

    void print(Plan& plan) const override;
    [[nodiscard]] QByteArray duplicateKeys(const Table& table) const override;
    [[nodiscard]] QByteArray scan(const Table& table, const TableScan& scan) const override;
    [[nodiscard]] QByteArray insertRows(const Table& table, const std::vector<int>& columns, int rows) const override;
    [[nodiscard]] std::vector<QByteArray> createTable(const Table& table,
                                                      const std::vector<std::vector<int>>& indexes) const override;
};

} // namespace oVELDRA::dialect
