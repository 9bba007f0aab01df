#pragma once

#include <dialect/Value.h>

#include <QStringView>

#include <span>

namespace oVELDRA::dialect {

enum class FunctionId : quint8 {
    Format,
    Left,
    Right,
    Mid,
    Len,
    Trim,
    UCase,
    LCase,
    CDbl,
    CStr,
    Val,
    DateValue,
    IIf,
    Count,
    Sum,
    Min,
    Max
};

struct Function
{
    QStringView name;
    FunctionId id;
    int fewestArguments;
    int mostArguments;
    ValueType type; ///< Any: that of its arguments
    bool aggregate;
};

/// All functions of the dialect.
[[nodiscard]] std::span<const Function> functionTable();

/// Index of a function by name in any letter case, or -1.
[[nodiscard]] int findFunction(QStringView name);

/// An argument that counts characters, cut to a whole number. RuntimeError 5 for a negative one, 13 for no number.
[[nodiscard]] qsizetype countOf(const Value& value, const LazySeparators& separators);

/// The value of a function that is no aggregate and not iif (which does not look at all its arguments).
/// Throws RuntimeError 5, 13 or 94 as the automation runtime does.
[[nodiscard]] Value callFunction(FunctionId id, std::span<const Value> arguments, const LazySeparators& separators);

} // namespace oVELDRA::dialect
