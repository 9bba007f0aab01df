#pragma once

#include <dialect/Value.h>

namespace oVELDRA::dialect {

/// The row that an expression is worked out on.
class RowSource
{
public:
    RowSource() = default;
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;
    virtual ~RowSource() = default;

    /// The value of a column of the table, by its index there.
    [[nodiscard]] virtual Value column(int index) const = 0;
    /// The value of an aggregate function of the select list.
    [[nodiscard]] virtual Value aggregate(const Expr& expr) const = 0;
};

/// What an expression is worked out with. Nothing is owned; `row` may be null for constant expressions.
struct Surroundings
{
    const Literals* literals = nullptr;
    const LazySeparators* separators = nullptr;
    const RowSource* row = nullptr;
};

/// The value of a resolved expression. Comparisons and logic know Null as neither true nor false.
///
/// Throws RuntimeError: 11 and 6 for divisions by zero, 13 or -2147217913 for types that do not fit, 94 for Null where
/// a value is needed.
[[nodiscard]] Value evaluate(const Expr& expr, const Surroundings& surroundings);

} // namespace oVELDRA::dialect
